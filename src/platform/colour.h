// Colours as blue-green-red integers: red in the lowest byte.
#pragma once

#include <cstdint>

namespace fathomline {

using Colour = std::int32_t;

inline constexpr Colour kBlack = 0;
inline constexpr Colour kRed = 255;
inline constexpr Colour kGreen = 65280;
inline constexpr Colour kYellow = 65535;
inline constexpr Colour kBlue = 16711680;
inline constexpr Colour kMagenta = 16711935;
inline constexpr Colour kCyan = 16776960;
inline constexpr Colour kWhite = 16777215;

}  // namespace fathomline
