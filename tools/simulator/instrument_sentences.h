// The sentences of gyro compass, attitude sensor, log, echo sounder and radar.
#pragma once

#include <array>
#include <cstdint>

#include "simulator/random.h"
#include "simulator/sentence_writer.h"
#include "simulator/traffic.h"
#include "simulator/truth.h"
#include "simulator/vessel.h"

namespace fathomline::simulator {

class Instruments {
 public:
  Instruments(const Scenario& scenario, std::uint64_t seed);

  // Writes the sentences of one kind, HDT to TTM, and notes what they say. Does nothing for others.
  void Write(SentenceKind kind, SentenceWriter& writer, const VesselState& vessel,
             const Traffic& traffic, double seconds, const UtcMoment& moment,
             SimulationTruth& truth);

 private:
  void WriteHDT(SentenceWriter& writer, const VesselState& vessel, SimulationTruth& truth);
  void WriteROT(SentenceWriter& writer, const VesselState& vessel, SimulationTruth& truth);
  void WriteATT(SentenceWriter& writer, const VesselState& vessel, SimulationTruth& truth);
  void WriteVHW(SentenceWriter& writer, const VesselState& vessel, SimulationTruth& truth);
  void WriteDBT(SentenceWriter& writer, const VesselState& vessel, SimulationTruth& truth);
  void WriteTTM(SentenceWriter& writer, const VesselState& vessel, const Traffic& traffic,
                double seconds, const UtcMoment& moment);

  // The radar follows a few of the nearest ships, each under its number.
  struct Track {
    int target = -1;
    bool isNew = false;
  };
  void AcquireTargets(const VesselState& vessel, const Traffic& traffic, double seconds);

  const Scenario& scenario_;
  Random gyroRandom_;
  Random attitudeRandom_;
  Random logRandom_;
  Random sounderRandom_;
  Random radarRandom_;
  std::array<Track, 8> tracks_;
};

}  // namespace fathomline::simulator
