// Figures of which p percent are at or below, and what times are made of: steps, jitter and gaps.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "trial/trial_clock.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// Which value, counted from 1 in rising order, is the smallest one that at least `percent` of the n
// are at or below.
constexpr std::size_t PercentRank(std::size_t percent, std::size_t n) {
  return (percent * n + 99) / 100;
}

// How many values a percent figure needs.
constexpr std::size_t LeastForPercent(std::size_t percent) {
  return percent >= 99 ? 100 : percent >= 95 ? 20 : 5;
}

// None of too few. Reorders the values.
Value PercentFigure(std::vector<double>& values, std::size_t percent);

// 50, 68, 95 and 99 percent.
std::array<Value, 4> PercentFigures(std::vector<double>& values);

// The times of something, in milliseconds, rising and each once.
using Times = std::vector<std::int64_t>;

// The median step in milliseconds; none of fewer than five.
Value MedianStep(const Times& times);

// The 95% figure of |step - median|, in milliseconds.
Value StepJitter(const Times& times, double median);

// Steps above this are a jump and no gap.
inline constexpr std::int64_t kJump = kDayMilliseconds / 2;

// Steps longer than three medians, jumps aside; `clock` tells how a moment is written.
Gaps GapsOf(const Times& times, Value median, const TrialClock& clock);

// Milliseconds as seconds.
inline Value Seconds(Value milliseconds) {
  return milliseconds ? Value(*milliseconds / 1000.0) : Value();
}

// Mean and standard deviation of n - 1, by differences from the first.
struct Spread {
  std::size_t n = 0;
  double mean = 0.0;
  Value std;
};
Spread SpreadOf(const std::vector<double>& values);

}  // namespace fathomline::trial
