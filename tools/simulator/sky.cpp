#include "simulator/sky.h"

#include <cmath>

namespace fathomline::simulator {
namespace {

constexpr double kSecondsPerTurnOfEarth = 86164.0905;
// A sphere will do for where the satellites stand.
constexpr double kEarthRadius = 6371.0;  // kilometres, as the orbits

// Evenly filled orbital planes, as the published constellation designs give them.
struct OrbitTable {
  std::size_t constellation;
  int firstId;
  int planes;
  int perPlane;
  double inclination;  // degrees
  double radius;
  double period;   // seconds
  double phasing;  // turns by which each plane is ahead of the one before
};
constexpr OrbitTable kOrbits[] = {
    {0, 1, 6, 5, 55.0, 26560.0, 43082.0, 0.11},
    {1, 65, 3, 8, 64.8, 25508.0, 40544.0, 0.0417},
    {2, 106, 3, 8, 55.0, 27906.0, 46391.0, 0.0417},
};

struct GeostationaryTable {
  std::size_t constellation;
  int id;
  double longitude;  // degrees
};
constexpr GeostationaryTable kGeostationary[] = {
    {0, 36, 31.5}, {0, 49, 5.0}, {2, 101, 140.0}, {2, 102, 80.0}, {2, 105, 58.75},
};
constexpr double kGeostationaryRadius = 42164.0;

}  // namespace

Sky::Sky(GeoPoint observer)
    : latitude_(SineCosineOfDegrees(observer.latitude)),
      longitude_(SineCosineOfDegrees(observer.longitude)) {
  observer_ = {kEarthRadius * latitude_.cosine * longitude_.cosine,
               kEarthRadius * latitude_.cosine * longitude_.sine, kEarthRadius * latitude_.sine};
}

void Sky::Update(double absoluteSeconds) {
  for (auto& list : visible_) list.clear();
  for (const GeostationaryTable& row : kGeostationary) {
    const auto [sine, cosine] = SineCosineOfDegrees(row.longitude);
    Look(row.id, row.constellation,
         {kGeostationaryRadius * cosine, kGeostationaryRadius * sine, 0.0});
  }
  const double earth = absoluteSeconds / kSecondsPerTurnOfEarth;
  for (const OrbitTable& orbit : kOrbits) {
    const SineCosine inclination = SineCosineOfDegrees(orbit.inclination);
    for (int number = 0; number < orbit.planes * orbit.perPlane; ++number) {
      const int plane = number % orbit.planes;
      const int slot = number / orbit.planes;
      const SineCosine node = SineCosineOfTurns(static_cast<double>(plane) / orbit.planes - earth);
      const SineCosine along =
          SineCosineOfTurns(static_cast<double>(slot) / orbit.perPlane + plane * orbit.phasing +
                            absoluteSeconds / orbit.period);
      const double across = along.sine * inclination.cosine;
      Look(orbit.firstId + number, orbit.constellation,
           {orbit.radius * (node.cosine * along.cosine - node.sine * across),
            orbit.radius * (node.sine * along.cosine + node.cosine * across),
            orbit.radius * along.sine * inclination.sine});
    }
  }
}

void Sky::Look(int id, std::size_t constellation, const Vector& satellite) {
  const double x = satellite.x - observer_.x;
  const double y = satellite.y - observer_.y;
  const double z = satellite.z - observer_.z;
  const double distance = std::sqrt(x * x + y * y + z * z);
  const double outward = x * longitude_.cosine + y * longitude_.sine;
  const double up = (outward * latitude_.cosine + z * latitude_.sine) / distance;
  if (up <= 0.0) return;
  VisibleSatellite seen;
  seen.id = id;
  seen.up = up;
  seen.direction.east = (y * longitude_.cosine - x * longitude_.sine) / distance;
  seen.direction.north = (z * latitude_.cosine - outward * latitude_.sine) / distance;
  seen.elevation = DirectionDegrees(up, std::sqrt(1.0 - up * up));
  seen.azimuth = FullCircle(DirectionDegrees(seen.direction.east, seen.direction.north));
  auto& list = visible_[constellation];
  auto place = list.end();
  while (place != list.begin() && std::prev(place)->id > id) --place;
  list.insert(place, seen);
}

Dilution DilutionOf(std::span<const VisibleSatellite> satellites) {
  if (satellites.size() < 4) return {};
  // The covariance of east, north, up and clock is the inverse of the normal matrix; Gauss-Jordan
  // needs no pivots here, since the matrix is symmetric and positive definite.
  double matrix[4][8] = {};
  for (const VisibleSatellite& satellite : satellites) {
    const double row[4] = {satellite.direction.east, satellite.direction.north, satellite.up, 1.0};
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) matrix[i][j] += row[i] * row[j];
    }
  }
  for (int i = 0; i < 4; ++i) matrix[i][4 + i] = 1.0;
  for (int i = 0; i < 4; ++i) {
    const double pivot = matrix[i][i];
    if (pivot < 1e-9) return {};
    for (double& value : matrix[i]) value /= pivot;
    for (int other = 0; other < 4; ++other) {
      if (other == i) continue;
      const double factor = matrix[other][i];
      for (int column = 0; column < 8; ++column) {
        matrix[other][column] -= factor * matrix[i][column];
      }
    }
  }
  const double horizontal = matrix[0][4] + matrix[1][5];
  const double vertical = matrix[2][6];
  return {std::sqrt(horizontal + vertical), std::sqrt(horizontal), std::sqrt(vertical)};
}

}  // namespace fathomline::simulator
