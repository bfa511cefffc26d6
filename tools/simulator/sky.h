// The navigation satellites above the horizon.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "simulator/geography.h"
#include "simulator/portable_math.h"

namespace fathomline::simulator {

// Satellite systems as NMEA 0183 numbers them: GPS 1 to 32 and SBAS 33 to 64 under one talker,
// GLONASS 65 to 96; BeiDou 101 to 132 as receivers without system ids send it.
inline constexpr std::size_t kConstellationCount = 3;
inline constexpr std::array<std::string_view, kConstellationCount> kGSVAddresses{"$GPGSV", "$GLGSV",
                                                                                 "$GBGSV"};

struct VisibleSatellite {
  int id = 0;
  double elevation = 0.0;  // degrees, above 0
  double azimuth = 0.0;    // degrees
  MapPoint direction;      // unit vector to the satellite: east and north ...
  double up = 0.0;         // ... and up
};

// Dilutions of precision of a set of satellites. All 0 where it allows no fix.
struct Dilution {
  double position = 0.0;
  double horizontal = 0.0;
  double vertical = 0.0;
};

// Circular orbits; the geostationary ones stand still.
class Sky {
 public:
  explicit Sky(GeoPoint observer);

  // Moves the satellites to a moment, in seconds since a fixed moment of the past.
  void Update(double absoluteSeconds);

  // In the order of their numbers.
  std::span<const VisibleSatellite> Visible(std::size_t constellation) const {
    return visible_[constellation];
  }

 private:
  struct Vector {
    double x;
    double y;
    double z;
  };
  void Look(int id, std::size_t constellation, const Vector& satellite);

  Vector observer_;
  SineCosine latitude_;
  SineCosine longitude_;
  std::array<std::vector<VisibleSatellite>, kConstellationCount> visible_;
};

Dilution DilutionOf(std::span<const VisibleSatellite> satellites);

}  // namespace fathomline::simulator
