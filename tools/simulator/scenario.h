// What can be simulated: the sentences and the scenarios, as tables.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "simulator/geography.h"

namespace fathomline::simulator {

// In the order in which the sentences of one moment are sent. The date comes first, so that a
// reader that goes by it meets midnight at the right sentence.
enum class SentenceKind {
  ZDA,
  GGA,
  GNS,
  GLL,
  RMC,
  VTG,
  GSA,
  GSV,
  GST,
  HDT,
  ROT,
  ATT,
  VHW,
  DBT,
  TTM,
  VDO,
  VDM,
};

struct SentenceKindRow {
  std::string_view name;
  // Follows the rate asked for as it is; the others come once a second at most.
  bool fast;
};

inline constexpr std::array<SentenceKindRow, 17> kSentenceKinds{{
    {"ZDA", false},
    {"GGA", true},
    {"GNS", true},
    {"GLL", true},
    {"RMC", true},
    {"VTG", true},
    {"GSA", false},
    {"GSV", false},
    {"GST", true},
    {"HDT", true},
    {"ROT", true},
    {"ATT", true},
    {"VHW", false},
    {"DBT", false},
    {"TTM", false},
    {"VDO", false},
    {"VDM", false},
}};

constexpr std::string_view SentenceName(SentenceKind kind) {
  return kSentenceKinds[static_cast<std::size_t>(kind)].name;
}

// How often a sentence comes, in Hz. For VDM it is a factor on the reporting intervals of the
// ships instead, which ITU-R M.1371 sets for each: 1 is as it sets them.
struct SentenceRate {
  SentenceKind kind;
  double rate;
};

// How good the receiver's fix is: the quality indicator of GGA, the standard deviations of the
// position noise in metres, and how long it stays so on the average.
struct FixQuality {
  int indicator;      // 0 none, 1 autonomous, 2 differential, 4 fixed RTK, 5 float RTK
  char mode;          // mode indicator of GNS, GLL, RMC and VTG
  double horizontal;  // of north and of east
  double vertical;
  double meanSeconds;
};

inline constexpr std::array<FixQuality, 5> kFixQualities{{
    {0, 'N', 0.0, 0.0, 12.0},
    {1, 'A', 1.20, 2.20, 80.0},
    {2, 'D', 0.45, 0.80, 180.0},
    {5, 'F', 0.15, 0.25, 40.0},
    {4, 'R', 0.012, 0.020, 150.0},
}};

// The vessel's motion in the swell: amplitudes.
struct Swell {
  double roll;   // degrees
  double pitch;  // degrees
  double yaw;    // degrees
  double heave;  // metres
};

// Who else is about.
struct TrafficMix {
  int classA;
  int classB;
  int anchored;
  int aidsToNavigation;
  int baseStations;
};

struct Scenario {
  std::string_view name;
  std::string_view summary;
  GeoPoint origin;
  std::span<const MapPoint> route;  // corners of the vessel's round; empty where it lies still
  double speed;                     // knots
  double heading;                   // degrees, where it lies still
  double antennaHeight;             // metres above the geoid
  double geoidalSeparation;         // metres
  double depth;                     // metres, mean
  double depthVariation;            // metres
  double magneticVariation;         // degrees, east positive
  Swell swell;
  TrafficMix traffic;
  double laneInner;  // lanes of the traffic: the vessel's round made smaller
  double laneOuter;  // or larger by these factors
  std::array<double, kFixQualities.size()> qualityWeights;
  std::span<const SentenceRate> sentences;
};

std::span<const Scenario> Scenarios();
// Null where there is none of that name.
const Scenario* FindScenario(std::string_view name);

}  // namespace fathomline::simulator
