// Positions, and the small flat map that a scenario is sailed on.
#pragma once

namespace fathomline::simulator {

// WGS 84, degrees, north and east positive.
struct GeoPoint {
  double latitude = 0.0;
  double longitude = 0.0;
};

// Metres on the map.
struct MapPoint {
  double east = 0.0;
  double north = 0.0;
};

inline constexpr double kMetresPerNauticalMile = 1852.0;
inline constexpr double kMetresPerSecondPerKnot = kMetresPerNauticalMile / 3600.0;

// Metres per degree of latitude and longitude by the meridional and the transverse radius of
// curvature of the WGS 84 ellipsoid (a = 6378137 m, 1/f = 298.257223563).
struct DegreeLengths {
  double latitude;
  double longitude;
};
DegreeLengths DegreeLengthsAt(double latitude);

// A map that is true to scale at its origin and within a few parts in a thousand some twenty
// kilometres around it.
class LocalMap {
 public:
  explicit LocalMap(GeoPoint origin)
      : origin_(origin), lengths_(DegreeLengthsAt(origin.latitude)) {}

  GeoPoint ToGeo(MapPoint point) const {
    return {origin_.latitude + point.north / lengths_.latitude,
            origin_.longitude + point.east / lengths_.longitude};
  }
  MapPoint ToMap(GeoPoint point) const {
    return {(point.longitude - origin_.longitude) * lengths_.longitude,
            (point.latitude - origin_.latitude) * lengths_.latitude};
  }

 private:
  GeoPoint origin_;
  DegreeLengths lengths_;
};

}  // namespace fathomline::simulator
