#include "analysis/geodesy.h"

#include <cmath>

#include "base/numbers.h"

namespace fathomline {
namespace {

// Rounded from a(1 - e2) once and for all; the general routine multiplies it out.
constexpr double kNorthAxis = 6335439.3272928195;

// Both radii are divided by W to the first power, the north one too: figures compare with those
// of earlier sessions only as long as that stays.
double W(double refLat, double eccentricitySquared) {
  const double s = std::sin(refLat);
  return std::sqrt(1.0 - s * eccentricitySquared * s);
}

}  // namespace

NorthEast DifferenceToNorthEast(double refLat, double refLon, double lat, double lon) {
  const double dLat = lat - refLat;
  const double dLon = lon - refLon;
  const double w = W(refLat, kEccentricitySquared);
  return {ToSingle(dLat * kNorthAxis / w), ToSingle(std::cos(refLat) * kSemiMajorAxis * dLon / w)};
}

NorthEast DifferenceToNorthEastOnEllipsoid(double refLat, double refLon, double lat, double lon,
                                           double semiMajorAxis, double eccentricitySquared) {
  const double dLat = lat - refLat;
  const double dLon = lon - refLon;
  const double w = W(refLat, eccentricitySquared);
  return {ToSingle((1.0 - eccentricitySquared) * semiMajorAxis * dLat / w),
          ToSingle(std::cos(refLat) * semiMajorAxis * dLon / w)};
}

}  // namespace fathomline
