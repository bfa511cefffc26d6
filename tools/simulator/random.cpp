#include "simulator/random.h"

#include <bit>
#include <cmath>

#include "simulator/portable_math.h"

namespace fathomline::simulator {

Random::Random(std::uint64_t seed, RandomStream stream) : state_{} {
  std::uint64_t counter = seed + (static_cast<std::uint64_t>(stream) << 56);
  for (std::uint64_t& word : state_) {
    counter += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = counter;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    word = mixed ^ (mixed >> 31);
  }
}

std::uint64_t Random::Bits() {
  const std::uint64_t result = std::rotl(state_[1] * 5, 7) * 9;
  const std::uint64_t shifted = state_[1] << 17;
  state_[2] ^= state_[0];
  state_[3] ^= state_[1];
  state_[1] ^= state_[2];
  state_[0] ^= state_[3];
  state_[2] ^= shifted;
  state_[3] = std::rotl(state_[3], 45);
  return result;
}

double Random::Uniform() {
  return static_cast<double>(Bits() >> 11) * 0x1.0p-53;
}

double Random::Normal() {
  if (hasSpare_) {
    hasSpare_ = false;
    return spare_;
  }
  for (;;) {
    const double x = Uniform(-1.0, 1.0);
    const double y = Uniform(-1.0, 1.0);
    const double square = x * x + y * y;
    if (square >= 1.0 || square < 1e-300) continue;
    const double factor = std::sqrt(-2.0 * Logarithm(square) / square);
    spare_ = y * factor;
    hasSpare_ = true;
    return x * factor;
  }
}

CorrelatedNoise::CorrelatedNoise(Random& random, double timeConstantSeconds)
    : timeConstant_(timeConstantSeconds), value_(random.Normal()) {}

double CorrelatedNoise::Next(Random& random, double stepSeconds) {
  if (stepSeconds != step_) {
    step_ = stepSeconds;
    keep_ = Exponential(-stepSeconds / timeConstant_);
    renew_ = std::sqrt(1.0 - keep_ * keep_);
  }
  value_ = keep_ * value_ + renew_ * random.Normal();
  return value_;
}

}  // namespace fathomline::simulator
