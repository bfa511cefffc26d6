// Elementary functions that give the same bits on every machine.
//
// The functions of the C library differ in the last place between versions and processors, which
// would let the same seed write different recordings. These use additions, multiplications,
// divisions and square roots only, whose results are fixed by IEEE 754. They are good to about
// 1e-15 relative to the size of their result.
#pragma once

namespace fathomline::simulator {

struct SineCosine {
  double sine;
  double cosine;
};

// Of an angle in turns (1 is a full circle). The reduction is exact, however large the angle.
SineCosine SineCosineOfTurns(double turns);
inline SineCosine SineCosineOfDegrees(double degrees) {
  return SineCosineOfTurns(degrees / 360.0);
}

// The direction of (cosine, sine) in degrees, -180 to 180. 0 where both are 0.
double DirectionDegrees(double sine, double cosine);

// Natural logarithm of a positive, normal number.
double Logarithm(double value);
// e to the power of `exponent`, for exponents from -700 to 700.
double Exponential(double exponent);

// An angle brought to 0 (included) to 360, or to -180 (included) to 180.
double FullCircle(double degrees);
double HalfCircle(double degrees);

}  // namespace fathomline::simulator
