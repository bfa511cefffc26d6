// The program's own constants between degrees and radians. They are not each other's inverse to
// the last bit, and figures depend on them as they are.
#pragma once

namespace fathomline {

inline constexpr double kRadiansPerDegree = 0.017453292519944444;
inline constexpr double kDegreesPerRadian = 57.29577951307855;

}  // namespace fathomline
