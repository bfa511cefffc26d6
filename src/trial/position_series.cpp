#include "trial/position_series.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fathomline::trial {

double Wrapped(double degrees) {
  const double wrapped = std::remainder(degrees, 360.0);
  return wrapped <= -180.0 ? 180.0 : wrapped;
}

PositionSeries::PositionSeries(const PositionSamples& samples, const TrialClock& clock,
                               const Window& window)
    : samples_(&samples), clock_(&clock) {
  const auto timeOf = [&](std::uint32_t sample) { return clock.TimeOf(samples.epochs[sample]); };
  order_.reserve(samples.size());
  for (std::uint32_t i = 0; i < samples.size(); ++i) {
    if (window.Holds(timeOf(i))) order_.push_back(i);
  }
  const auto byTime = [&](std::uint32_t a, std::uint32_t b) { return timeOf(a) < timeOf(b); };
  if (!std::is_sorted(order_.begin(), order_.end(), byTime)) {
    std::stable_sort(order_.begin(), order_.end(), byTime);
  }
  std::size_t kept = 0;
  for (const std::uint32_t sample : order_) {
    if (kept == 0 || timeOf(order_[kept - 1]) != timeOf(sample)) {
      order_[kept++] = sample;
      continue;
    }
    const std::uint32_t first = order_[kept - 1];
    if (HasPlace(first) && HasPlace(sample) &&
        (samples.latitude[first] != samples.latitude[sample] ||
         samples.longitude[first] != samples.longitude[sample])) {
      ++conflicting_;
    }
  }
  order_.resize(kept);
  for (std::size_t i = 0; i < size(); ++i) fixes_ += IsFixAt(i) ? 1 : 0;
  interval_ = MedianStep(AllTimes());
  DecideHeights();
}

bool PositionSeries::HasPlace(std::uint32_t sample) const {
  return !std::isnan(samples_->latitude[sample]);
}

int PositionSeries::QualityOf(std::size_t i) const {
  return HasPlace(order_[i]) ? samples_->quality[order_[i]] : 0;
}

Times PositionSeries::AllTimes() const {
  Times times(size());
  for (std::size_t i = 0; i < size(); ++i) times[i] = TimeOf(i);
  return times;
}

void PositionSeries::DecideHeights() {
  if (samples_->altitude.empty()) return;
  Count withAltitude = 0;
  Count withBoth = 0;
  for (std::size_t i = 0; i < size(); ++i) {
    if (!IsFixAt(i) || std::isnan(samples_->altitude[order_[i]])) continue;
    ++withAltitude;
    if (!std::isnan(samples_->separation[order_[i]])) ++withBoth;
  }
  const bool aboveEllipsoid = 2 * withBoth >= withAltitude;
  const Count withHeight = aboveEllipsoid ? withBoth : withAltitude;
  if (withHeight == 0 || 2 * withHeight < fixes_) return;
  heights_ = aboveEllipsoid ? HeightKind::Ellipsoid : HeightKind::Geoid;
}

Place PositionSeries::PlaceOf(std::size_t i) const {
  const std::uint32_t sample = order_[i];
  Place place{samples_->latitude[sample], samples_->longitude[sample],
              std::numeric_limits<double>::quiet_NaN()};
  if (heights_ != HeightKind::None) place.height = samples_->altitude[sample];
  if (heights_ == HeightKind::Ellipsoid) place.height += samples_->separation[sample];
  return place;
}

FixWalker::FixWalker(const PositionSeries& series) : series_(&series) {
  for (std::uint32_t i = 0; i < series.size(); ++i) {
    if (!series.IsFixAt(i)) continue;
    fixes_.push_back(i);
    times_.push_back(series.TimeOf(i));
  }
}

std::optional<FixWalker::Found> FixWalker::At(std::int64_t time) {
  if (next_ > 0 && times_[next_ - 1] >= time) {
    next_ = static_cast<std::size_t>(std::lower_bound(times_.begin(), times_.end(), time) -
                                     times_.begin());
  }
  while (next_ < times_.size() && times_[next_] < time) ++next_;
  if (next_ == times_.size()) return std::nullopt;
  const Place after = series_->PlaceOf(fixes_[next_]);
  if (times_[next_] == time) return Found{after, true};
  if (next_ == 0) return std::nullopt;
  const std::int64_t from = times_[next_ - 1];
  const std::int64_t to = times_[next_];
  if (!MayInterpolate(from, to, series_->Interval())) return std::nullopt;
  const Place before = series_->PlaceOf(fixes_[next_ - 1]);
  const double part = static_cast<double>(time - from) / static_cast<double>(to - from);
  return Found{
      {.latitude = before.latitude + part * (after.latitude - before.latitude),
       .longitude = Wrapped(before.longitude + part * Wrapped(after.longitude - before.longitude)),
       .height = before.height + part * (after.height - before.height)},
      false};
}

}  // namespace fathomline::trial
