// Satellites in view and in use, by constellation and signal, from GSV and GSA.
//
// Everything of an epoch is taken at its end: the groups of GSV that ended in it, against the GSA
// of it or of the latest epoch that had one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "trial/trial_clock.h"
#include "trial/trial_figures.h"
#include "trial/trial_reader.h"

namespace fathomline::trial {

// In the order of their names.
enum class Constellation : std::uint8_t {
  BeiDou,
  GLONASS,
  GPS,
  Galileo,
  NavIC,
  QZSS,
  SBAS,
  Unknown
};
inline constexpr std::size_t kConstellationCount = 8;
std::string_view ToText(Constellation constellation);

// The constellation of a satellite, by who tells it and its number (NMEA 0183 and common practice).
Constellation ConstellationOf(std::string_view talker, int number);

class SatelliteRecorder {
 public:
  // Sentences that are used, with the epoch they belong to.
  void TakeGSV(const Sentence& sentence, Epoch epoch);
  void TakeGSA(const Sentence& sentence, Epoch epoch);
  // Before an epoch begins: the one that ends.
  void EndEpoch(const TrialClock& clock);

  // As if the recording ended here.
  Satellites Figures(const TrialClock& clock) const;
  // The samples of each satellite, in the order of the figures. They look into this recorder.
  std::vector<SatelliteTrack> Tracks(const TrialClock& clock) const;
  std::size_t Bytes() const;

 private:
  using Signal = std::uint32_t;  // place in signals_; 0 is none

  struct Running {
    Count n = 0;
    double mean = 0.0, squares = 0.0, least = 0.0, greatest = 0.0;
    void Add(double value);
    Value Mean() const { return n > 0 ? Value(mean) : Value(); }
    Value Std() const;
  };

  struct SatelliteState {
    Constellation constellation{};
    int number = 0;
    Signal signal = 0;
    std::uint32_t elevations = 0;  // place of its constellation and signal
    Count n = 0;
    Count used = 0;
    std::int64_t firstAt = 0, lastAt = 0;  // as the clock keeps them
    Running cn0;
  };

  struct ElevationState {
    Constellation constellation{};
    Signal signal = 0;
    std::array<Running, 9> bins;
  };

  struct Range {
    Count sum = 0, least = 0, greatest = 0;
    void Add(Count value, bool isFirst);
    CountRange Figures(Count n) const;
  };
  struct ConstellationState {
    Count epochs = 0;
    Range inView, inUse;
  };

  struct Listed {
    int number;
    Signal signal;
    double elevation, azimuth, cn0;
  };
  // What has come of the group of a talker.
  struct Group {
    enum class State { None, Open, Broken };
    State state = State::None;
    int count = 0;
    int next = 0;
    std::vector<Signal> signals;  // each once
    std::vector<Listed> listed;   // each number and signal once
  };
  struct Talker {
    std::string name;
    Group group;
    std::map<Signal, Count> groupsOf;  // whole ones in an epoch, by the signals in them
  };

  // A satellite of a whole group of the epoch that goes on.
  struct Pending {
    std::uint32_t satellite;
    std::uint32_t sample;
    double elevation, cn0;
    bool inUse;
  };

  struct Used {
    Epoch epoch = TrialClock::kNone;
    std::vector<int> numbers;
    void Begin(Epoch present);
    bool Has(int number, Epoch present, const TrialClock& clock) const;
  };

  // What the end of an epoch changes, so that the figures can end one on a copy.
  struct State {
    std::vector<Pending> pending;
    std::array<bool, kConstellationCount> groupOfTalker{};
    std::vector<SatelliteState> satellites;
    std::vector<ElevationState> elevations;
    std::array<ConstellationState, kConstellationCount> constellations;
  };

  void EndEpoch(State& state, const TrialClock& clock) const;
  // Whether the sentence may stand in a group; cuts its satellites off.
  bool ReadGroupLine(const Sentence& sentence, Group& group);
  void TakeWholeGroup(std::uint32_t talker, Epoch epoch);
  std::uint32_t PlaceOf(Constellation constellation, int number, Signal signal);
  std::uint32_t TalkerOf(const Sentence& sentence);
  Signal SignalOf(std::string_view text);
  SignalFigures FiguresOf(const ElevationState& elevations) const;
  SatelliteFigures FiguresOf(const SatelliteState& satellite, Count groups,
                             const TrialClock& clock) const;
  // Of the satellites, by constellation, signal and number.
  std::vector<std::uint32_t> Order() const;

  std::vector<Talker> talkers_;
  std::vector<std::string> signals_{""};
  std::unordered_map<std::uint64_t, std::uint32_t> places_;  // of satellites
  std::vector<std::vector<std::uint32_t>> listedBy_;         // talkers of each satellite
  std::vector<std::vector<SatelliteSample>> samples_;        // of each satellite
  Count groupsWhole_ = 0;
  Count groupsBroken_ = 0;
  bool useWasSent_ = false;  // in an epoch
  bool anythingWasSent_ = false;
  std::array<Used, kConstellationCount> used_;
  State state_;
};

}  // namespace fathomline::trial
