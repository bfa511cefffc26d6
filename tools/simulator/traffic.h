// The other vessels, aids to navigation and base stations around.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/geography.h"
#include "simulator/random.h"
#include "simulator/route.h"
#include "simulator/scenario.h"

namespace fathomline::simulator {

enum class TargetKind { ClassA, ClassB, AidToNavigation, BaseStation };

// What does not change about a target.
struct TargetIdentity {
  TargetKind kind = TargetKind::ClassA;
  std::int32_t mmsi = 0;
  std::int32_t imo = 0;
  std::string name;
  std::string callSign;
  std::string destination;
  int shipType = 0;  // of ITU-R M.1371, or the type of an aid to navigation
  int toBow = 0;     // metres from the antenna
  int toStern = 0;
  int toPort = 0;
  int toStarboard = 0;
  int draughtDecimetres = 0;
  int navStatus = 0;
  int etaDay = 0;
  bool extendedReport = false;  // class B: tells its name with id 19 instead of id 24
  bool isVirtual = false;       // an aid to navigation that is not there
};

struct TargetMotion {
  MapPoint place;
  double course = 0.0;      // degrees
  double speed = 0.0;       // knots
  double rateOfTurn = 0.0;  // degrees per minute
};

// Our own vessel as others see it.
TargetIdentity OwnIdentity();

class Traffic {
 public:
  Traffic(const Scenario& scenario, std::uint64_t seed);

  // Ships come first: those that a radar sees.
  int Count() const { return static_cast<int>(targets_.size()); }
  int ShipCount() const { return shipCount_; }
  const TargetIdentity& Identity(int target) const { return At(target).identity; }
  TargetMotion Motion(int target, double seconds) const;

 private:
  struct Target {
    TargetIdentity identity;
    int lane = -1;       // -1 where it lies still
    double speed = 0.0;  // knots, negative against the direction of the lane
    double start = 0.0;  // metres along the lane, at the start
    MapPoint place;      // where it lies still
  };
  const Target& At(int target) const { return targets_[static_cast<std::size_t>(target)]; }
  void AddShip(Random& random, TargetKind kind, bool anchored);
  void AddAid(Random& random, int number);
  void AddBaseStation(int number);
  // Somewhere along a lane that is `factor` times as far out as the vessel's round.
  MapPoint Beside(Random& random, double factor) const;

  std::vector<Route> lanes_;
  std::vector<Target> targets_;
  int shipCount_ = 0;
};

}  // namespace fathomline::simulator
