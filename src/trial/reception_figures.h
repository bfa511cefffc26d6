// Figures of what was received from satellites and from other ships. Each block lists its figures
// as figure_layout.h says.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "trial/figure_layout.h"

namespace fathomline::trial {

struct CountRange {
  std::string_view why;
  Value mean;
  std::optional<Count> least, greatest;

  static constexpr auto Layout() {
    using B = CountRange;
    return std::tuple{Figure{"mean", &B::mean, decimals::kMeanCount}, Figure{"least", &B::least},
                      Figure{"greatest", &B::greatest}};
  }
};

// C/N0 of satellites within ten degrees of elevation.
struct ElevationBin {
  Count fromDegrees = 0;
  Count n = 0;
  Value mean, std;

  static constexpr auto Layout() {
    using B = ElevationBin;
    return std::tuple{Figure{"from_deg", &B::fromDegrees}, Figure{"n", &B::n},
                      Figure{"mean_dbhz", &B::mean, decimals::kSignal},
                      Figure{"std_dbhz", &B::std, decimals::kSignal}};
  }
};

struct SignalFigures {
  std::optional<std::string> signal;
  std::array<ElevationBin, 9> byElevation;
};

struct ConstellationFigures {
  std::string name;
  Count epochs = 0;
  CountRange inView, inUse;
  std::vector<SignalFigures> signals;
};

struct SignalStrength {
  std::string_view why;
  Count n = 0;
  Value mean, std, least, greatest;

  static constexpr auto Layout() {
    using B = SignalStrength;
    constexpr int kD = decimals::kSignal;
    return std::tuple{Figure{"n", &B::n}, Figure{"mean_dbhz", &B::mean, kD},
                      Figure{"std_dbhz", &B::std, kD}, Figure{"least_dbhz", &B::least, kD},
                      Figure{"greatest_dbhz", &B::greatest, kD}};
  }
};

struct SatelliteFigures {
  std::string constellation;
  std::optional<std::string> signal;
  Count number = 0;
  Count n = 0;
  At firstAt, lastAt;
  Value inViewShare, inUseShare;
  SignalStrength cn0;

  static constexpr auto Layout() {
    using B = SatelliteFigures;
    return std::tuple{Figure{"constellation", &B::constellation},
                      Figure{"signal", &B::signal},
                      Figure{"number", &B::number},
                      Figure{"n", &B::n},
                      Figure{"first_at", &B::firstAt},
                      Figure{"last_at", &B::lastAt},
                      Figure{"in_view_share", &B::inViewShare, decimals::kShare},
                      Figure{"in_use_share", &B::inUseShare, decimals::kShare},
                      Figure{"cn0", &B::cn0}};
  }
};

struct Satellites {
  std::string_view why;
  Count groupsWhole = 0;
  Count groupsBroken = 0;
  std::vector<ConstellationFigures> constellations;
  std::vector<SatelliteFigures> satellites;
};

struct AisIdCount {
  Count id = 0;
  std::optional<std::string> channel;
  Count n = 0;

  static constexpr auto Layout() {
    using B = AisIdCount;
    return std::tuple{Figure{"id", &B::id}, Figure{"channel", &B::channel}, Figure{"n", &B::n}};
  }
};

struct AisStations {
  Count base = 0, aton = 0, sar = 0, classA = 0, classB = 0, other = 0;

  static constexpr auto Layout() {
    using B = AisStations;
    return std::tuple{Figure{"base", &B::base},      Figure{"aton", &B::aton},
                      Figure{"sar", &B::sar},        Figure{"class_a", &B::classA},
                      Figure{"class_b", &B::classB}, Figure{"other", &B::other}};
  }
};

struct OwnPosition {
  std::string_view why;
  Count n = 0;
  Count of = 0;
  Value r50, r95, largest;

  static constexpr auto Layout() {
    using B = OwnPosition;
    return std::tuple{
        Figure{"n", &B::n}, Figure{"of", &B::of}, Figure{"r50_m", &B::r50, decimals::kAis},
        Figure{"r95_m", &B::r95, decimals::kAis}, Figure{"largest_m", &B::largest, decimals::kAis}};
  }
};

struct Ais {
  std::string_view why;
  Count messages = 0;
  Count ownMessages = 0;
  Count incomplete = 0;
  Count tooShort = 0;
  std::vector<AisIdCount> byId;
  AisStations stations;
  OwnPosition ownPosition;

  static constexpr auto Layout() {
    using B = Ais;
    return std::tuple{Figure{"messages", &B::messages},
                      Figure{"own_messages", &B::ownMessages},
                      Figure{"incomplete", &B::incomplete},
                      Figure{"short", &B::tooShort},
                      Figure{"by_id", &B::byId},
                      Figure{"stations", &B::stations},
                      Figure{"own_position", &B::ownPosition}};
  }
};

}  // namespace fathomline::trial
