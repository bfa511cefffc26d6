// Colours as blue-green-red integers: red in the lowest byte. How they are painted is in look.h.
#pragma once

#include <cstdint>

namespace fathomline {

using Colour = std::int32_t;

// Each part is 0 to 255.
constexpr Colour RedGreenBlue(int red, int green, int blue) {
  return blue << 16 | green << 8 | red;
}

inline constexpr Colour kBlack = RedGreenBlue(0, 0, 0);
inline constexpr Colour kRed = RedGreenBlue(255, 0, 0);
inline constexpr Colour kGreen = RedGreenBlue(0, 255, 0);
inline constexpr Colour kYellow = RedGreenBlue(255, 255, 0);
inline constexpr Colour kBlue = RedGreenBlue(0, 0, 255);
inline constexpr Colour kMagenta = RedGreenBlue(255, 0, 255);
inline constexpr Colour kCyan = RedGreenBlue(0, 255, 255);
inline constexpr Colour kWhite = RedGreenBlue(255, 255, 255);
inline constexpr Colour kDarkGreen = RedGreenBlue(0, 128, 0);
inline constexpr Colour kDarkYellow = RedGreenBlue(192, 192, 0);
inline constexpr Colour kDarkRed = RedGreenBlue(170, 0, 0);
inline constexpr Colour kOrange = RedGreenBlue(230, 120, 0);
inline constexpr Colour kTeal = RedGreenBlue(0, 128, 128);
inline constexpr Colour kNavy = RedGreenBlue(0, 0, 128);

}  // namespace fathomline
