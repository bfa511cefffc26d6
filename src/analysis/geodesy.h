// Positions reduced to metres north and east of a reference, on WGS 84.
//
// A flat-earth reduction at the reference latitude, good for the metres to kilometres that a
// receiver wanders. Longitudes are not wrapped at the 180th meridian.
#pragma once

namespace fathomline {

inline constexpr double kSemiMajorAxis = 6378137.0;  // metres
inline constexpr double kEccentricitySquared = 0.0066943799901413165;

struct NorthEast {
  float North = 0.0F;  // metres
  float East = 0.0F;
};

// From a reference to a position, all four in radians. Raises Overflow where a result does not fit
// a single.
NorthEast DifferenceToNorthEast(double refLat, double refLon, double lat, double lon);

// The same on an ellipsoid given by its semi-major axis in metres and its eccentricity squared.
NorthEast DifferenceToNorthEastOnEllipsoid(double refLat, double refLon, double lat, double lon,
                                           double semiMajorAxis, double eccentricitySquared);

}  // namespace fathomline
