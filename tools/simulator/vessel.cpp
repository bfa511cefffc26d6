#include "simulator/vessel.h"

#include <numbers>
#include <span>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

constexpr double kTurnRadius = 900.0;
// The hull points along the chord between these many metres before and behind its middle, which
// makes it swing into a turn instead of starting to turn at once.
constexpr double kHalfHull = 60.0;

// A motion in the swell: a sum of waves of unit amplitude together.
struct Wave {
  double share;
  double period;  // seconds
  double phase;   // turns
};
constexpr Wave kRollWaves[] = {{0.60, 9.1, 0.0}, {0.28, 11.7, 0.3}, {0.12, 6.9, 0.7}};
constexpr Wave kPitchWaves[] = {{0.65, 6.4, 0.2}, {0.25, 8.3, 0.6}, {0.10, 5.1, 0.9}};
constexpr Wave kYawWaves[] = {{0.70, 14.2, 0.1}, {0.30, 23.5, 0.5}};
constexpr Wave kHeaveWaves[] = {{0.70, 8.7, 0.4}, {0.30, 10.9, 0.8}};

struct Swing {
  double value = 0.0;
  double perSecond = 0.0;
};

Swing At(std::span<const Wave> waves, double amplitude, double seconds) {
  Swing swing;
  for (const Wave& wave : waves) {
    const auto [sine, cosine] = SineCosineOfTurns(seconds / wave.period + wave.phase);
    swing.value += amplitude * wave.share * sine;
    swing.perSecond += amplitude * wave.share * cosine * (2.0 * std::numbers::pi / wave.period);
  }
  return swing;
}

// The bottom rises and falls with the place, a little differently in each direction.
double BottomProfile(MapPoint place) {
  return 0.6 * SineCosineOfTurns(place.east / 7100.0 + 0.1).sine +
         0.4 * SineCosineOfTurns((place.north - 0.3 * place.east) / 3300.0).sine;
}

double Direction(MapPoint from, MapPoint to) {
  return DirectionDegrees(to.east - from.east, to.north - from.north);
}

}  // namespace

Vessel::Vessel(const Scenario& scenario) : scenario_(scenario), map_(scenario.origin) {
  if (!scenario.route.empty()) route_.emplace(scenario.route, kTurnRadius);
}

VesselState Vessel::At(double seconds) const {
  VesselState state;
  const Swell& swell = scenario_.swell;
  const Swing yaw = simulator::At(kYawWaves, swell.yaw, seconds);
  double heading = scenario_.heading;
  double turning = 0.0;
  if (route_) {
    // The speed swings by a tenth every quarter of an hour; the distance is its integral.
    constexpr double kPeriod = 900.0;
    const double metresPerSecond = scenario_.speed * kMetresPerSecondPerKnot;
    const auto [sine, cosine] = SineCosineOfTurns(seconds / kPeriod);
    const double distance =
        metresPerSecond * (seconds + 0.1 * (1.0 - cosine) * kPeriod / (2.0 * std::numbers::pi));
    state.speed = scenario_.speed * (1.0 + 0.1 * sine);
    const RoutePoint here = route_->At(distance);
    const RoutePoint bow = route_->At(distance + kHalfHull);
    const RoutePoint stern = route_->At(distance - kHalfHull);
    state.place = here.place;
    state.course = here.course;
    heading = Direction(stern.place, bow.place);
    turning = (HalfCircle(bow.course - stern.course) / (2.0 * kHalfHull)) * state.speed *
              kMetresPerSecondPerKnot;
    // A current of less than a knot, setting north.
    state.waterSpeed = state.speed - 0.6 * SineCosineOfDegrees(heading).cosine;
  }
  state.position = map_.ToGeo(state.place);
  state.heading = FullCircle(heading + yaw.value);
  state.rateOfTurn = 60.0 * (turning + yaw.perSecond);
  state.roll = simulator::At(kRollWaves, swell.roll, seconds).value;
  state.pitch = simulator::At(kPitchWaves, swell.pitch, seconds).value;
  state.antennaHeight =
      scenario_.antennaHeight + simulator::At(kHeaveWaves, swell.heave, seconds).value;
  state.depth = scenario_.depth + scenario_.depthVariation * BottomProfile(state.place);
  return state;
}

}  // namespace fathomline::simulator
