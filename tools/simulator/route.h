// A closed course over the map: straight legs joined by circular turns.
#pragma once

#include <span>
#include <vector>

#include "simulator/geography.h"

namespace fathomline::simulator {

struct RoutePoint {
  MapPoint place;
  double course = 0.0;           // degrees from north
  double degreesPerMetre = 0.0;  // change of course along the way, positive to starboard
};

class Route {
 public:
  // At least three corners, in metres. Turns have the given radius, less where legs are too short.
  Route(std::span<const MapPoint> corners, double turnRadius);

  double Length() const { return length_; }
  // The point `distance` metres along the course, which goes round and round.
  RoutePoint At(double distance) const;

 private:
  struct Stretch {
    double start;  // metres along the course
    MapPoint from;
    double course;
    double degreesPerMetre;
  };
  std::vector<Stretch> stretches_;
  double length_ = 0.0;
};

}  // namespace fathomline::simulator
