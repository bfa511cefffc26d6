#include "charts/chart_tables.h"

namespace fathomline {
namespace {

struct Step {
  std::int32_t above;
  std::int16_t count;
};

template <std::size_t Size>
std::int16_t CountAbove(const std::array<Step, Size>& steps, std::int32_t value) {
  for (const Step& step : steps) {
    if (value > step.above) return step.count;
  }
  return 0;
}

// One follows the points already drawn, the other the span chosen; they differ on purpose.
constexpr auto kByPoints = std::to_array<Step>({{7200, 20}, {3600, 10}, {1800, 5}, {600, 2}});
constexpr auto kByWindow = std::to_array<Step>({{3600, 20}, {1800, 10}, {900, 5}});

}  // namespace

ChartSettings& ChartTables::operator()(int system, int windowIndex) {
  if (windowIndex < 0 || windowIndex > kLastWindowIndex) Raise(FaultNumber::OutOfRange);
  return rows_[system][windowIndex];
}

std::int16_t FilterCountFromPoints(int points) {
  return CountAbove(kByPoints, points);
}

std::int16_t FilterCountFromWindow(std::int32_t seconds) {
  return CountAbove(kByWindow, seconds);
}

}  // namespace fathomline
