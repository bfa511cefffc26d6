#include "simulator/traffic.h"

#include <array>
#include <cmath>
#include <string_view>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

constexpr int kLanes = 9;
constexpr double kLaneTurnRadius = 700.0;

// Real country codes, so that flags show, and numbers that look made up.
constexpr std::array kCountryCodes{257, 258, 219, 265, 211, 244, 232, 311, 636, 538};
constexpr std::array<std::string_view, 20> kFirstNames{
    "AMBER", "BOREAL", "CORAL", "DRIFTING", "EASTERN", "FAIR",  "GENTLE",
    "HAZEL", "IRON",   "JADE",  "KEEN",     "LITTLE",  "MERRY", "NOBLE",
    "OLDEN", "PALE",   "QUIET", "RESTLESS", "SILVER",  "TALL"};
constexpr std::array<std::string_view, 20> kLastNames{
    "ALBATROSS", "BEACON", "CURLEW", "DUNLIN", "EIDER",   "FULMAR", "GANNET",
    "HERON",     "IBIS",   "JAEGER", "KNOT",   "LAPWING", "MERLIN", "NODDY",
    "OSPREY",    "PETREL", "QUAIL",  "RAVEN",  "SKUA",    "TERN"};
constexpr std::array<std::string_view, 6> kDestinations{"EASTHAVEN",  "NORTH SOUND",   "LONGHOLM",
                                                        "SKERRY BAY", "PORT MERIDIAN", "FISHING"};
// Cargo, tanker, passenger, high-speed, tug, pilot; then pleasure, sailing and fishing for class B.
constexpr std::array kShipTypes{70, 71, 79, 80, 82, 60, 69, 40, 52, 50};
constexpr std::array kBoatTypes{37, 36, 30};
constexpr std::array<std::string_view, 4> kAidNames{"INNER GROUNDS", "MIDDLE SHOAL", "OUTER LIGHT",
                                                    "FAIRWAY BUOY OF THE NORTHERN SOUND"};
constexpr std::array kAidTypes{20, 21, 5, 30};

template <class Table>
auto Pick(Random& random, const Table& table) {
  return table[static_cast<std::size_t>(random.Index(static_cast<int>(table.size())))];
}

std::int32_t Number(Random& random, int below) {
  return random.Index(below);
}

constexpr int kMooredStatus = 5;
constexpr int kAnchoredStatus = 1;
constexpr int kFishingStatus = 7;
constexpr int kFishingVessel = 30;

}  // namespace

TargetIdentity OwnIdentity() {
  TargetIdentity own;
  own.mmsi = 257'000'001;
  own.imo = 9'000'003;
  own.name = "SOUNDING PROVER";
  own.callSign = "LAXX1";
  own.destination = "ROUND TRIP";
  own.shipType = 90;
  own.toBow = 31;
  own.toStern = 38;
  own.toPort = 6;
  own.toStarboard = 8;
  own.draughtDecimetres = 52;
  own.etaDay = 28;
  return own;
}

Traffic::Traffic(const Scenario& scenario, std::uint64_t seed) {
  if (scenario.route.empty()) return;
  for (int lane = 0; lane < kLanes; ++lane) {
    const double factor =
        scenario.laneInner + (scenario.laneOuter - scenario.laneInner) * lane / (kLanes - 1);
    std::vector<MapPoint> corners(scenario.route.begin(), scenario.route.end());
    for (MapPoint& corner : corners) corner = {corner.east * factor, corner.north * factor};
    lanes_.emplace_back(corners, kLaneTurnRadius);
  }
  Random random(seed, RandomStream::Traffic);
  for (int i = 0; i < scenario.traffic.classA; ++i) AddShip(random, TargetKind::ClassA, false);
  for (int i = 0; i < scenario.traffic.anchored; ++i) AddShip(random, TargetKind::ClassA, true);
  for (int i = 0; i < scenario.traffic.classB; ++i) AddShip(random, TargetKind::ClassB, false);
  shipCount_ = Count();
  for (int i = 0; i < scenario.traffic.aidsToNavigation; ++i) AddAid(random, i);
  for (int i = 0; i < scenario.traffic.baseStations; ++i) AddBaseStation(i);
}

MapPoint Traffic::Beside(Random& random, double factor) const {
  const Route& lane = lanes_.back();
  const MapPoint point = lane.At(random.Uniform(0.0, lane.Length())).place;
  return {point.east * factor, point.north * factor};
}

void Traffic::AddShip(Random& random, TargetKind kind, bool anchored) {
  Target target;
  TargetIdentity& identity = target.identity;
  const bool small = kind == TargetKind::ClassB;
  const int serial = Count();
  identity.kind = kind;
  identity.mmsi = Pick(random, kCountryCodes) * 1'000'000 + 101 + serial;
  identity.imo = small ? 0 : 9'000'100 + serial;
  // Each pair of names comes once among the first four hundred.
  const auto first = static_cast<std::size_t>(serial) % kFirstNames.size();
  const auto last =
      (static_cast<std::size_t>(serial) / kFirstNames.size() + first * 7) % kLastNames.size();
  identity.name.append(kFirstNames[first]).append(" ").append(kLastNames[last]);
  identity.callSign = std::to_string(1000 + serial).insert(0, 1, 'X');
  identity.destination = Pick(random, kDestinations);
  identity.shipType = small ? Pick(random, kBoatTypes) : Pick(random, kShipTypes);
  const int length = small ? 6 + Number(random, 14) : 40 + Number(random, 260);
  identity.toStern = length / 5 + Number(random, length / 5);
  identity.toBow = length - identity.toStern;
  identity.toPort = length / 14 + 1;
  identity.toStarboard = length / 14 + Number(random, 3);
  identity.draughtDecimetres = small ? 0 : 30 + Number(random, 100);
  identity.etaDay = 1 + Number(random, 28);
  identity.extendedReport = small && serial % 2 == 0;
  if (anchored) {
    identity.navStatus = serial % 3 == 0 ? kMooredStatus : kAnchoredStatus;
    target.place = Beside(random, 1.02);
  } else {
    if (!small && identity.shipType == kFishingVessel) identity.navStatus = kFishingStatus;
    target.lane = random.Index(kLanes);
    const double speed = small ? random.Uniform(3.0, 9.0) : random.Uniform(7.0, 21.0);
    target.speed = random.Uniform() < 0.5 ? speed : -speed;
    target.start = random.Uniform(0.0, lanes_[static_cast<std::size_t>(target.lane)].Length());
  }
  targets_.push_back(std::move(target));
}

void Traffic::AddAid(Random& random, int number) {
  Target target;
  TargetIdentity& identity = target.identity;
  const std::size_t row = static_cast<std::size_t>(number) % kAidNames.size();
  identity.kind = TargetKind::AidToNavigation;
  identity.isVirtual = number % 4 == 2;
  identity.mmsi = 992'570'001 + number + (identity.isVirtual ? 6000 : 1000);
  identity.name = kAidNames[row];
  identity.shipType = kAidTypes[row];
  identity.toBow = identity.toStern = identity.toPort = identity.toStarboard =
      identity.isVirtual ? 0 : 2;
  target.place = Beside(random, 0.98);
  targets_.push_back(std::move(target));
}

void Traffic::AddBaseStation(int number) {
  Target target;
  target.identity.kind = TargetKind::BaseStation;
  target.identity.mmsi = 2'570'001 + number;
  target.place = {900.0 + 2500.0 * number, -300.0};
  targets_.push_back(std::move(target));
}

TargetMotion Traffic::Motion(int index, double seconds) const {
  const Target& target = At(index);
  TargetMotion motion;
  if (target.lane < 0) {
    motion.place = target.place;
    return motion;
  }
  const double metresPerSecond = target.speed * kMetresPerSecondPerKnot;
  const RoutePoint point =
      lanes_[static_cast<std::size_t>(target.lane)].At(target.start + metresPerSecond * seconds);
  motion.place = point.place;
  motion.speed = std::fabs(target.speed);
  motion.course = target.speed < 0.0 ? FullCircle(point.course + 180.0) : point.course;
  motion.rateOfTurn = point.degreesPerMetre * metresPerSecond * 60.0;
  return motion;
}

}  // namespace fathomline::simulator
