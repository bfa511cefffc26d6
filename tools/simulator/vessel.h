// The true motion of our own vessel.
#pragma once

#include <optional>

#include "simulator/route.h"
#include "simulator/scenario.h"

namespace fathomline::simulator {

struct VesselState {
  MapPoint place;
  GeoPoint position;           // of the antenna
  double antennaHeight = 0.0;  // metres above the geoid
  double heading = 0.0;        // degrees true
  double pitch = 0.0;          // degrees, bow up positive
  double roll = 0.0;           // degrees, starboard down positive
  double rateOfTurn = 0.0;     // degrees per minute, to starboard positive
  double course = 0.0;         // degrees true, over ground
  double speed = 0.0;          // knots, over ground
  double waterSpeed = 0.0;     // knots, ahead
  double depth = 0.0;          // metres below the transducer
};

class Vessel {
 public:
  explicit Vessel(const Scenario& scenario);

  // A function of the time alone, so the truth is the same at every rate.
  VesselState At(double seconds) const;
  const LocalMap& Map() const { return map_; }

 private:
  const Scenario& scenario_;
  LocalMap map_;
  std::optional<Route> route_;
};

}  // namespace fathomline::simulator
