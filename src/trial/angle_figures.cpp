#include "trial/angle_figures.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace fathomline::trial {
namespace {

// Unit vectors whose sum is shorter than this share of their number have no direction.
constexpr double kCancelled = 1e-9;

constexpr double kRadians = std::numbers::pi / 180.0;

double InRange(double degrees, AngleRange range) {
  const double wrapped = Wrapped(degrees);
  return range == AngleRange::Full && wrapped < 0.0 ? wrapped + 360.0 : wrapped;
}

}  // namespace

ValueSeries::ValueSeries(const ValueSamples& samples, const TrialClock& clock, const Window& window)
    : name(samples.name) {
  std::vector<std::uint32_t> order;
  const auto timeOf = [&](std::uint32_t i) { return clock.TimeOf(samples.epochs[i]); };
  for (std::uint32_t i = 0; i < samples.epochs.size(); ++i) {
    if (window.Holds(timeOf(i))) order.push_back(i);
  }
  const auto byTime = [&](std::uint32_t a, std::uint32_t b) { return timeOf(a) < timeOf(b); };
  if (!std::is_sorted(order.begin(), order.end(), byTime)) {
    std::stable_sort(order.begin(), order.end(), byTime);
  }
  times.reserve(order.size());
  values.reserve(order.size());
  for (const std::uint32_t i : order) {
    times.push_back(timeOf(i));
    values.push_back(samples.values[i]);
  }
}

ValueSeries ValueSeries::OnePerTime() const {
  ValueSeries series;
  series.name = name;
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (i > 0 && times[i] == times[i - 1]) continue;
    series.times.push_back(times[i]);
    series.values.push_back(values[i]);
  }
  return series;
}

Value MeanAngle(const std::vector<double>& degrees, AngleRange range) {
  double cosines = 0.0;
  double sines = 0.0;
  for (const double angle : degrees) {
    cosines += std::cos(angle * kRadians);
    sines += std::sin(angle * kRadians);
  }
  if (std::hypot(cosines, sines) <= kCancelled * static_cast<double>(degrees.size())) {
    return std::nullopt;
  }
  return InRange(std::atan2(sines, cosines) / kRadians, range);
}

AngleErrors AngleErrorsOf(const ValueSeries& series, Value reference, AngleRange range,
                          const TrialClock& clock) {
  AngleErrors figures;
  figures.name = series.name;
  figures.n = static_cast<Count>(series.values.size());
  figures.mean = MeanAngle(series.values, range);
  if (!reference) reference = figures.mean;
  if (!reference) {
    figures.why = why::kNoMean;
    return figures;
  }
  figures.reference = InRange(*reference, range);
  const auto n = static_cast<double>(series.values.size());
  if (figures.mean) {
    figures.bias = Wrapped(*figures.mean - *reference);
    double squares = 0.0;
    for (const double value : series.values) {
      const double deviation = Wrapped(value - *figures.mean);
      squares += deviation * deviation;
    }
    if (figures.n > 1) figures.std = std::sqrt(squares / (n - 1.0));
    // What would be written as 360 is 0.
    if (Rounded(*figures.mean, decimals::kLength) >= 360.0) figures.mean = 0.0;
  }
  if (Rounded(*figures.reference, decimals::kLength) >= 360.0) figures.reference = 0.0;

  std::vector<double> deviations;
  deviations.reserve(series.values.size());
  double squares = 0.0;
  for (std::size_t i = 0; i < series.values.size(); ++i) {
    const double deviation = Wrapped(series.values[i] - *reference);
    squares += deviation * deviation;
    deviations.push_back(std::abs(deviation));
    if (figures.largest && std::abs(deviation) <= std::abs(*figures.largest)) continue;
    figures.largest = deviation;
    figures.largestAt = clock.MomentOf(series.times[i]);
  }
  figures.rms = std::sqrt(squares / n);
  const auto percents = PercentFigures(deviations);
  figures.p50 = percents[0];
  figures.p68 = percents[1];
  figures.p95 = percents[2];
  figures.p99 = percents[3];
  return figures;
}

AngleTrack AngleTrackOf(const ValueSeries& series, const AngleErrors& figures) {
  AngleTrack track;
  track.name = series.name;
  if (!figures.reference) return track;
  track.times = series.times;
  track.deviations.reserve(series.values.size());
  for (const double value : series.values) {
    track.deviations.push_back(Wrapped(value - *figures.reference));
  }
  return track;
}

SeriesFigures SeriesFiguresOf(const ValueSeries& series, const TrialClock& clock) {
  SeriesFigures figures;
  figures.name = series.name;
  const Spread spread = SpreadOf(series.values);
  figures.n = static_cast<Count>(spread.n);
  figures.mean = spread.mean;
  figures.std = spread.std;
  const auto [least, greatest] = std::minmax_element(series.values.begin(), series.values.end());
  // minmax_element gives the last of equal greatest ones.
  const auto firstGreatest = std::find(series.values.begin(), series.values.end(), *greatest);
  const auto momentAt = [&](auto at) {
    return clock.MomentOf(series.times[static_cast<std::size_t>(at - series.values.begin())]);
  };
  figures.least = *least;
  figures.leastAt = momentAt(least);
  figures.greatest = *greatest;
  figures.greatestAt = momentAt(firstGreatest);
  const Times times = series.OnePerTime().times;
  figures.gaps = GapsOf(times, MedianStep(times), clock);
  return figures;
}

const ValueSeries* ChosenHeading(const std::vector<ValueSeries>& headings) {
  const auto rank = [](const ValueSeries& series) {
    return std::tuple(series.name != kAttitudeName, series.values.size());
  };
  const auto chosen = std::ranges::max_element(headings, {}, rank);
  return chosen == headings.end() ? nullptr : &*chosen;
}

AngleErrors HeadingDifferences(const ValueSeries* first, const ValueSeries* second,
                               const TrialClock& firstClock, const TrialClock& secondClock) {
  AngleErrors none;
  if (first == nullptr || second == nullptr) {
    none.why = why::kNoneSent;
    return none;
  }
  const ValueSeries a = first->OnePerTime();
  const ValueSeries b = second->OnePerTime();
  const Value ofFirst = MedianStep(a.times);
  const Value ofSecond = MedianStep(b.times);
  const bool atSecond = ofSecond.value_or(HUGE_VAL) > ofFirst.value_or(HUGE_VAL);
  const ValueSeries& base = atSecond ? b : a;
  const ValueSeries& other = atSecond ? a : b;
  const Value interval = atSecond ? ofFirst : ofSecond;

  ValueSeries differences;
  differences.name = a.name + "-" + b.name;
  std::size_t next = 0;
  const bool isComparable = firstClock.IsDated() == secondClock.IsDated();
  for (std::size_t i = 0; i < base.times.size() && isComparable; ++i) {
    const std::int64_t time = base.times[i];
    while (next < other.times.size() && other.times[next] < time) ++next;
    if (next == other.times.size()) break;
    double value = other.values[next];
    if (other.times[next] != time) {
      if (next == 0 || !MayInterpolate(other.times[next - 1], other.times[next], interval)) {
        continue;
      }
      const std::int64_t from = other.times[next - 1];
      const double part =
          static_cast<double>(time - from) / static_cast<double>(other.times[next] - from);
      value = other.values[next - 1] + part * Wrapped(value - other.values[next - 1]);
    }
    differences.times.push_back(time);
    differences.values.push_back(
        Wrapped(atSecond ? base.values[i] - value : value - base.values[i]));
  }
  if (differences.times.empty()) {
    none.why = why::kNoOverlap;
    return none;
  }
  return AngleErrorsOf(differences, 0.0, AngleRange::Signed, firstClock);
}

}  // namespace fathomline::trial
