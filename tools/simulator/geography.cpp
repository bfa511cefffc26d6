#include "simulator/geography.h"

#include <cmath>
#include <numbers>

#include "simulator/portable_math.h"

namespace fathomline::simulator {

DegreeLengths DegreeLengthsAt(double latitude) {
  constexpr double kSemiMajorAxis = 6378137.0;
  constexpr double kFlattening = 1.0 / 298.257223563;
  constexpr double kEccentricitySquared = kFlattening * (2.0 - kFlattening);
  constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
  const auto [sine, cosine] = SineCosineOfDegrees(latitude);
  const double squared = 1.0 - kEccentricitySquared * sine * sine;
  const double transverse = kSemiMajorAxis / std::sqrt(squared);
  const double meridional = transverse * (1.0 - kEccentricitySquared) / squared;
  return {meridional * kRadiansPerDegree, transverse * cosine * kRadiansPerDegree};
}

}  // namespace fathomline::simulator
