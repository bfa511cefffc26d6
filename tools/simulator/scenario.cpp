#include "simulator/scenario.h"

#include <algorithm>

namespace fathomline::simulator {
namespace {

using enum SentenceKind;

constexpr SentenceRate kMooredSentences[] = {
    {ZDA, 1}, {GGA, 1}, {GNS, 1}, {GLL, 1}, {RMC, 1}, {VTG, 1},
    {GSA, 1}, {GSV, 1}, {GST, 1}, {HDT, 1}, {ROT, 1}, {ATT, 1},
};
constexpr SentenceRate kVoyageSentences[] = {
    {ZDA, 1}, {GGA, 1}, {GNS, 1}, {GLL, 1}, {RMC, 1},   {VTG, 1},   {GSA, 1},   {GSV, 1}, {GST, 1},
    {HDT, 1}, {ROT, 1}, {ATT, 1}, {VHW, 1}, {DBT, 0.5}, {TTM, 0.2}, {VDO, 0.1}, {VDM, 1},
};
constexpr SentenceRate kTrafficSentences[] = {
    {ZDA, 1}, {GGA, 1}, {RMC, 1}, {VTG, 1}, {HDT, 1}, {TTM, 0.5}, {VDO, 0.1}, {VDM, 1},
};
constexpr SentenceRate kAttitudeSentences[] = {
    {ZDA, 1}, {GGA, 1}, {RMC, 1}, {VTG, 1}, {HDT, 5}, {ROT, 5}, {ATT, 10}, {VHW, 1},
};

// Once around the islands of Kvitsøy, in deep water all the way.
constexpr MapPoint kAroundTheIslands[] = {
    {-4500, -6200}, {-6900, -3100}, {-7300, 400}, {-4800, 5100},
    {600, 6700},    {4200, 4800},   {6400, 1200}, {4600, -5900},
};
// A survey box in the open North Sea.
constexpr MapPoint kSurveyBox[] = {{-9000, -6000}, {-9000, 6000}, {9000, 7500}, {9000, -7500}};
// A long triangle across a shipping lane.
constexpr MapPoint kAcrossTheLane[] = {{-8000, -9000}, {-2000, 9000}, {11000, 2500}, {7000, -8000}};

constexpr Scenario kScenarios[] = {
    {.name = "moored",
     .summary = "a vessel made fast: every deviation is the receiver's own",
     .origin = {58.9726, 5.7315},
     .route = {},
     .speed = 0.0,
     .heading = 137.25,
     .antennaHeight = 18.25,
     .geoidalSeparation = 44.3,
     .depth = 9.5,
     .depthVariation = 0.0,
     .magneticVariation = 2.1,
     .swell = {0.15, 0.08, 0.05, 0.0},
     .traffic = {},
     .laneInner = 1.0,
     .laneOuter = 1.0,
     .qualityWeights = {0.06, 0.24, 0.40, 0.10, 0.20},
     .sentences = kMooredSentences},
    {.name = "voyage",
     .summary = "under way around an archipelago, with traffic",
     .origin = {59.0650, 5.4150},
     .route = kAroundTheIslands,
     .speed = 12.0,
     .heading = 0.0,
     .antennaHeight = 18.25,
     .geoidalSeparation = 44.2,
     .depth = 180.0,
     .depthVariation = 110.0,
     .magneticVariation = 2.1,
     .swell = {1.8, 0.7, 0.6, 0.20},
     .traffic = {16, 10, 3, 4, 1},
     .laneInner = 0.97,
     .laneOuter = 1.10,
     .qualityWeights = {0.10, 0.25, 0.45, 0.08, 0.12},
     .sentences = kVoyageSentences},
    {.name = "traffic",
     .summary = "hundreds of vessels around a crossing of shipping lanes",
     .origin = {57.9500, 5.4000},
     .route = kAcrossTheLane,
     .speed = 14.0,
     .heading = 0.0,
     .antennaHeight = 18.25,
     .geoidalSeparation = 42.6,
     .depth = 270.0,
     .depthVariation = 40.0,
     .magneticVariation = 2.2,
     .swell = {2.5, 1.0, 0.8, 0.40},
     .traffic = {280, 110, 24, 12, 2},
     .laneInner = 0.20,
     .laneOuter = 1.60,
     .qualityWeights = {0.02, 0.38, 0.60, 0.0, 0.0},
     .sentences = kTrafficSentences},
    {.name = "attitude",
     .summary = "rolling and pitching in a long swell",
     .origin = {58.2500, 3.2000},
     .route = kSurveyBox,
     .speed = 6.0,
     .heading = 0.0,
     .antennaHeight = 18.25,
     .geoidalSeparation = 42.9,
     .depth = 85.0,
     .depthVariation = 8.0,
     .magneticVariation = 1.7,
     .swell = {9.0, 3.2, 2.0, 1.60},
     .traffic = {},
     .laneInner = 1.0,
     .laneOuter = 1.0,
     .qualityWeights = {0.02, 0.18, 0.60, 0.08, 0.12},
     .sentences = kAttitudeSentences},
};

}  // namespace

std::span<const Scenario> Scenarios() {
  return kScenarios;
}

const Scenario* FindScenario(std::string_view name) {
  const auto found = std::find_if(std::begin(kScenarios), std::end(kScenarios),
                                  [&](const Scenario& scenario) { return scenario.name == name; });
  return found == std::end(kScenarios) ? nullptr : &*found;
}

}  // namespace fathomline::simulator
