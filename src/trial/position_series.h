// Places in order of time, and where a system was at a time between two of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "trial/percent_figures.h"
#include "trial/samples.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// From `from` to before `to`, as Moment::milliseconds; without them everything.
struct Window {
  std::optional<std::int64_t> from, to;

  bool Holds(std::int64_t time) const { return (!from || time >= *from) && (!to || time < *to); }
};

// Degrees; metres above what HeightKind says, NaN without a height.
struct Place {
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
};

// The samples of a stream that lie in the window: in order of time, the first that arrived of each
// time. Looks into the samples and the clock, which must outlive it.
class PositionSeries {
 public:
  PositionSeries(const PositionSamples& samples, const TrialClock& clock, const Window& window);

  const std::string& Name() const { return samples_->name; }
  SentenceType Type() const { return samples_->type; }
  const TrialClock& Clock() const { return *clock_; }
  std::size_t size() const { return order_.size(); }

  std::int64_t TimeOf(std::size_t i) const { return clock_->TimeOf(samples_->epochs[order_[i]]); }
  // When it arrived, among the others.
  std::uint32_t ArrivalOf(std::size_t i) const { return order_[i]; }
  Place PlaceOf(std::size_t i) const;  // NaN where there is none
  // As in GGA; 0 where there is no place.
  int QualityOf(std::size_t i) const;
  bool IsFixAt(std::size_t i) const { return IsFix(QualityOf(i)); }

  Count Fixes() const { return fixes_; }
  Count Conflicting() const { return conflicting_; }
  HeightKind Heights() const { return heights_; }
  Value Interval() const { return interval_; }  // milliseconds
  Times AllTimes() const;

 private:
  bool HasPlace(std::uint32_t sample) const;
  void DecideHeights();

  const PositionSamples* samples_;
  const TrialClock* clock_;
  std::vector<std::uint32_t> order_;
  Count fixes_ = 0;
  Count conflicting_ = 0;
  HeightKind heights_ = HeightKind::None;
  Value interval_;
};

// Between which times a value is interpolated: at most two intervals and five seconds apart.
// Without an interval nothing is.
constexpr bool MayInterpolate(std::int64_t from, std::int64_t to, Value interval) {
  return interval && static_cast<double>(to - from) <= 2.0 * *interval && to - from <= 5000;
}

// Where a system was, by its fixes.
class FixWalker {
 public:
  struct Found {
    Place place;
    bool sameTime;
  };

  explicit FixWalker(const PositionSeries& series);
  // The fix of the time, or linearly between its neighbours, along the shorter arc. Quickest for
  // times that rise.
  std::optional<Found> At(std::int64_t time);

 private:
  const PositionSeries* series_;
  std::vector<std::uint32_t> fixes_;  // places in the series
  Times times_;
  std::size_t next_ = 0;
};

// The difference of two angles in degrees, brought into (-180, 180].
double Wrapped(double degrees);

}  // namespace fathomline::trial
