#include "trial/percent_figures.h"

#include <algorithm>
#include <cmath>

namespace fathomline::trial {
namespace {

// From each time to the next, in milliseconds.
std::vector<double> StepsOf(const Times& times) {
  if (times.empty()) return {};
  std::vector<double> steps(times.size() - 1);
  std::transform(times.begin() + 1, times.end(), times.begin(), steps.begin(),
                 [](auto time, auto before) { return static_cast<double>(time - before); });
  return steps;
}

}  // namespace

Value PercentFigure(std::vector<double>& values, std::size_t percent) {
  if (values.size() < LeastForPercent(percent)) return std::nullopt;
  const auto rank =
      values.begin() + static_cast<std::ptrdiff_t>(PercentRank(percent, values.size()) - 1);
  std::nth_element(values.begin(), rank, values.end());
  return *rank;
}

std::array<Value, 4> PercentFigures(std::vector<double>& values) {
  constexpr auto kPercents = std::to_array<std::size_t>({50, 68, 95, 99});
  std::array<Value, 4> figures;
  // What lies below one figure needs no look for the next.
  auto sorted = values.begin();
  for (std::size_t i = 0; i < kPercents.size(); ++i) {
    if (values.size() < LeastForPercent(kPercents[i])) continue;
    const auto rank =
        values.begin() + static_cast<std::ptrdiff_t>(PercentRank(kPercents[i], values.size()) - 1);
    std::nth_element(sorted, rank, values.end());
    figures[i] = *rank;
    sorted = rank;
  }
  return figures;
}

Value MedianStep(const Times& times) {
  std::vector<double> steps = StepsOf(times);
  return PercentFigure(steps, 50);
}

Value StepJitter(const Times& times, double median) {
  std::vector<double> deviations = StepsOf(times);
  for (double& step : deviations) step = std::abs(step - median);
  return PercentFigure(deviations, 95);
}

Gaps GapsOf(const Times& times, Value median, const TrialClock& clock) {
  Gaps gaps;
  if (!median) {
    gaps.why = why::kTooFew;
    return gaps;
  }
  std::int64_t longest = 0;
  std::int64_t sum = 0;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const std::int64_t step = times[i] - times[i - 1];
    if (static_cast<double>(step) <= 3.0 * *median || step > kJump) continue;
    ++gaps.n;
    sum += step;
    if (step <= longest) continue;
    longest = step;
    gaps.longest = static_cast<double>(step) / 1000.0;
    gaps.longestAt = clock.MomentOf(times[i - 1]);
  }
  gaps.sum = static_cast<double>(sum) / 1000.0;
  return gaps;
}

Spread SpreadOf(const std::vector<double>& values) {
  Spread spread;
  spread.n = values.size();
  if (values.empty()) return spread;
  double sum = 0.0;
  for (const double value : values) sum += value - values.front();
  const auto n = static_cast<double>(values.size());
  spread.mean = values.front() + sum / n;
  if (values.size() < 2) return spread;
  double squares = 0.0;
  for (const double value : values) squares += (value - spread.mean) * (value - spread.mean);
  spread.std = std::sqrt(squares / (n - 1.0));
  return spread;
}

}  // namespace fathomline::trial
