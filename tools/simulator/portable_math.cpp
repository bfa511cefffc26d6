#include "simulator/portable_math.h"

#include <cmath>
#include <numbers>

namespace fathomline::simulator {
namespace {

// Sums x^first/first! - x^(first+2)/(first+2)! + ... from its smallest term.
double AlternatingFactorialSeries(double x, int first, int last) {
  const double square = x * x;
  double sum = 1.0;
  for (int n = last; n > first; n -= 2) sum = 1.0 - sum * square / (n * (n - 1));
  return first == 0 ? sum : sum * x;
}

}  // namespace

SineCosine SineCosineOfTurns(double turns) {
  const double quarters = std::floor(turns * 4.0 + 0.5);
  const double angle = (turns - quarters / 4.0) * (2.0 * std::numbers::pi);
  const double sine = AlternatingFactorialSeries(angle, 1, 17);
  const double cosine = AlternatingFactorialSeries(angle, 0, 16);
  switch (static_cast<int>(quarters - std::floor(quarters / 4.0) * 4.0)) {
    case 0:
      return {sine, cosine};
    case 1:
      return {cosine, -sine};
    case 2:
      return {-sine, -cosine};
    default:
      return {-cosine, sine};
  }
}

double DirectionDegrees(double sine, double cosine) {
  if (sine == 0.0 && cosine == 0.0) return 0.0;
  const bool steep = std::fabs(sine) > std::fabs(cosine);
  double slope = steep ? cosine / sine : sine / cosine;
  // Halving the angle twice brings the slope below 0.2, where the series is short.
  slope /= 1.0 + std::sqrt(1.0 + slope * slope);
  slope /= 1.0 + std::sqrt(1.0 + slope * slope);
  const double square = slope * slope;
  double sum = 0.0;
  for (int n = 23; n >= 1; n -= 2) sum = 1.0 / n - square * sum;
  const double angle = 4.0 * slope * sum * (180.0 / std::numbers::pi);
  if (steep) return (sine > 0.0 ? 90.0 : -90.0) - angle;
  if (cosine > 0.0) return angle;
  return sine >= 0.0 ? angle + 180.0 : angle - 180.0;
}

double Logarithm(double value) {
  int exponent = 0;
  double mantissa = std::frexp(value, &exponent);
  if (mantissa < std::numbers::sqrt2 / 2.0) {
    mantissa *= 2.0;
    --exponent;
  }
  const double ratio = (mantissa - 1.0) / (mantissa + 1.0);
  const double square = ratio * ratio;
  double sum = 0.0;
  for (int n = 21; n >= 1; n -= 2) sum = 1.0 / n + square * sum;
  return 2.0 * ratio * sum + exponent * std::numbers::ln2;
}

double Exponential(double exponent) {
  const double twos = std::floor(exponent / std::numbers::ln2 + 0.5);
  const double rest = exponent - twos * std::numbers::ln2;
  double sum = 1.0;
  for (int n = 16; n >= 1; --n) sum = 1.0 + sum * rest / n;
  return std::ldexp(sum, static_cast<int>(twos));
}

double FullCircle(double degrees) {
  const double angle = degrees - std::floor(degrees / 360.0) * 360.0;
  return angle < 360.0 ? angle : 0.0;
}

double HalfCircle(double degrees) {
  return FullCircle(degrees + 180.0) - 180.0;
}

}  // namespace fathomline::simulator
