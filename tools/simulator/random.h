// A source of chance that is the same on every machine.
#pragma once

#include <array>
#include <cstdint>

namespace fathomline::simulator {

// What draws from a source of its own, so that leaving one sentence type out of a recording does
// not change the others.
enum class RandomStream : std::uint64_t {
  PositionNoise,
  FixQuality,
  Velocity,
  SignalStrength,
  Gyro,
  Attitude,
  Log,
  EchoSounder,
  Radar,
  Traffic,
};

// The generator xoshiro256** of Blackman and Vigna, seeded by their SplitMix64.
class Random {
 public:
  Random(std::uint64_t seed, RandomStream stream);

  std::uint64_t Bits();
  // 0 (included) to 1.
  double Uniform();
  double Uniform(double from, double to) { return from + (to - from) * Uniform(); }
  // 0 to count - 1.
  int Index(int count) { return static_cast<int>(Uniform() * count); }
  // Mean 0 and standard deviation 1, by the polar method.
  double Normal();

 private:
  std::array<std::uint64_t, 4> state_;
  double spare_ = 0.0;
  bool hasSpare_ = false;
};

// Noise of mean 0 and standard deviation 1 that forgets itself with a time constant: a first-order
// Gauss-Markov process.
class CorrelatedNoise {
 public:
  CorrelatedNoise(Random& random, double timeConstantSeconds);

  // Its value `stepSeconds` after the one before. Draws from the random source.
  double Next(Random& random, double stepSeconds);

 private:
  double timeConstant_;
  double value_;
  double step_ = 0.0;
  double keep_ = 1.0;
  double renew_ = 0.0;
};

}  // namespace fathomline::simulator
