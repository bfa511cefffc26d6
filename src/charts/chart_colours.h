// The colours of the series. They must be told apart on a plotting area of light grey.
#pragma once

#include <array>
#include <cstddef>

#include "base/colour.h"

namespace fathomline {

inline constexpr Colour kNavy = RedGreenBlue(0, 0, 128);
inline constexpr Colour kOrange = RedGreenBlue(230, 120, 0);
inline constexpr Colour kDarkGreen = RedGreenBlue(0, 128, 0);
inline constexpr Colour kDarkRed = RedGreenBlue(170, 0, 0);
inline constexpr Colour kTeal = RedGreenBlue(0, 128, 128);
inline constexpr Colour kBandColour = RedGreenBlue(205, 225, 255);

inline constexpr std::array<Colour, 20> kSatelliteColours = {
    RedGreenBlue(31, 78, 160),   RedGreenBlue(214, 39, 40),  RedGreenBlue(44, 140, 44),
    RedGreenBlue(255, 127, 14),  RedGreenBlue(128, 60, 180), RedGreenBlue(140, 86, 75),
    RedGreenBlue(227, 60, 180),  RedGreenBlue(0, 255, 0),    RedGreenBlue(150, 150, 20),
    RedGreenBlue(0, 255, 255),   RedGreenBlue(0, 0, 0),      RedGreenBlue(0, 0, 255),
    RedGreenBlue(255, 0, 0),     RedGreenBlue(255, 255, 0),  RedGreenBlue(170, 110, 40),
    RedGreenBlue(70, 0, 110),    RedGreenBlue(0, 128, 128),  RedGreenBlue(128, 0, 0),
    RedGreenBlue(100, 160, 255), RedGreenBlue(255, 80, 120)};

// Beyond the first twenty the first nineteen return.
constexpr Colour SatelliteColour(int slot) {
  const int last = static_cast<int>(kSatelliteColours.size()) - 1;
  return kSatelliteColours[static_cast<std::size_t>(slot > last ? slot % last : slot)];
}

}  // namespace fathomline
