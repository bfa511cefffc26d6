#include "simulator/route.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

double Distance(MapPoint a, MapPoint b) {
  const double east = b.east - a.east;
  const double north = b.north - a.north;
  return std::sqrt(east * east + north * north);
}

MapPoint Ahead(MapPoint from, double course, double metres) {
  const auto [sine, cosine] = SineCosineOfDegrees(course);
  return {from.east + sine * metres, from.north + cosine * metres};
}

}  // namespace

Route::Route(std::span<const MapPoint> corners, double turnRadius) {
  const std::size_t count = corners.size();
  const auto corner = [&](std::size_t i) { return corners[i % count]; };
  struct Turn {
    double approach;  // metres of the leg that the turn takes on either side of its corner
    double angle;
    double incoming;
  };
  std::vector<Turn> turns;
  for (std::size_t i = 0; i < count; ++i) {
    const MapPoint before = corner(i + count - 1);
    const MapPoint here = corner(i);
    const MapPoint after = corner(i + 1);
    const double incoming = DirectionDegrees(here.east - before.east, here.north - before.north);
    const double outgoing = DirectionDegrees(after.east - here.east, after.north - here.north);
    const double angle = HalfCircle(outgoing - incoming);
    const auto [sine, cosine] = SineCosineOfDegrees(std::fabs(angle) / 2.0);
    const double room = 0.45 * std::min(Distance(before, here), Distance(here, after));
    turns.push_back({std::min(turnRadius * sine / cosine, room), angle, incoming});
  }
  for (std::size_t i = 0; i < count; ++i) {
    const Turn& turn = turns[i];
    const Turn& next = turns[(i + 1) % count];
    const auto [sine, cosine] = SineCosineOfDegrees(std::fabs(turn.angle) / 2.0);
    if (turn.approach > 0.0) {
      const double radius = turn.approach * cosine / sine;
      const double perMetre = (turn.angle > 0.0 ? 1.0 : -1.0) * kDegreesPerRadian / radius;
      stretches_.push_back(
          {length_, Ahead(corner(i), turn.incoming, -turn.approach), turn.incoming, perMetre});
      length_ += turn.angle / perMetre;
    }
    const double outgoing = turn.incoming + turn.angle;
    stretches_.push_back({length_, Ahead(corner(i), outgoing, turn.approach), outgoing, 0.0});
    length_ += Distance(corner(i), corner(i + 1)) - turn.approach - next.approach;
  }
}

RoutePoint Route::At(double distance) const {
  const double along = distance - std::floor(distance / length_) * length_;
  const auto behind =
      std::upper_bound(stretches_.begin(), stretches_.end(), along,
                       [](double value, const Stretch& stretch) { return value < stretch.start; });
  const Stretch& stretch = *std::prev(behind);
  const double into = along - stretch.start;
  RoutePoint point;
  point.degreesPerMetre = stretch.degreesPerMetre;
  point.course = stretch.course + stretch.degreesPerMetre * into;
  if (stretch.degreesPerMetre == 0.0) {
    point.place = Ahead(stretch.from, point.course, into);
  } else {
    const double radius = kDegreesPerRadian / stretch.degreesPerMetre;
    const MapPoint centre = Ahead(stretch.from, stretch.course + 90.0, radius);
    point.place = Ahead(centre, point.course + 90.0, -radius);
  }
  point.course = FullCircle(point.course);
  return point;
}

}  // namespace fathomline::simulator
