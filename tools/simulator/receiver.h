// The GNSS receiver: what it makes of the true motion and the sky.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "simulator/random.h"
#include "simulator/sentence_writer.h"
#include "simulator/sky.h"
#include "simulator/truth.h"
#include "simulator/vessel.h"

namespace fathomline::simulator {

// A fix as the receiver has it.
struct ReceiverFix {
  FixTruth truth;
  const FixQuality* quality = kFixQualities.data();
  bool hasPosition = false;  // false where an outage leaves the fields empty
  GeoPoint position;
  double altitude = 0.0;  // metres above the geoid
  double speed = 0.0;     // knots
  double course = 0.0;    // degrees
  int satellites = 0;     // used
  Dilution dilution;

  bool Usable() const { return quality->indicator != 0; }
  // Autonomous fixes have neither age nor station.
  bool Differential() const { return quality->indicator > 1; }
};

struct TrackedSatellite {
  VisibleSatellite view;
  int snr = 0;  // dB-Hz, 0 where it is not tracked
  bool used = false;
};

class GNSSReceiver {
 public:
  GNSSReceiver(const Scenario& scenario, std::uint64_t seed, std::int64_t startSecond);

  // The fix at a moment, which must not lie before the one asked for last.
  const ReceiverFix& Measure(SimulatedTime time, const VesselState& vessel);
  const ReceiverFix& Fix() const { return fix_; }
  double GeoidalSeparation() const { return scenario_.geoidalSeparation; }
  double MagneticVariation() const { return scenario_.magneticVariation; }

  std::span<const TrackedSatellite> Satellites(std::size_t constellation) const {
    return satellites_[constellation];
  }

 private:
  // A while of one quality. Corrections may stop coming towards its end.
  struct Phase {
    std::size_t quality = 0;
    double start = 0.0;
    double end = 0.0;
    double correctionsEnd = 0.0;
    int station = 0;
    bool emptyFields = false;
  };
  void BeginPhase(double seconds);
  void WatchSky(SimulatedTime time);
  void Position(const VesselState& vessel, double step);
  double CorrectionAge(double seconds) const;

  const Scenario& scenario_;
  std::int64_t startSecond_;
  Sky sky_;
  Random positionRandom_;
  Random qualityRandom_;
  Random velocityRandom_;
  Random signalRandom_;
  std::array<CorrelatedNoise, 3> drift_;  // east, north, up
  Phase phase_;
  SimulatedTime lastTime_ = 0;
  std::int64_t skyInterval_ = -1;
  std::int64_t signalSecond_ = -1;
  bool signalsLost_ = false;
  std::array<std::vector<TrackedSatellite>, kConstellationCount> satellites_;
  std::vector<VisibleSatellite> usedViews_;
  Dilution dilution_;
  ReceiverFix fix_;
};

}  // namespace fathomline::simulator
