// UTC of each sentence of a recording.
//
// An epoch is a run of sentences of one time of day; sentences that tell none belong to the epoch
// in which they stand. A date holds for the whole of its epoch, those before it included; an epoch
// without one lies within 12 hours of its predecessor. Sentences are told by the number of their
// epoch, since the date of an epoch may come behind them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "trial/moment.h"

namespace fathomline::trial {

using Epoch = std::uint32_t;

class TrialClock {
 public:
  static constexpr Epoch kNone = 0xFFFF'FFFF;  // before the first epoch

  // Whether a sentence of this time of day, in milliseconds, begins an epoch.
  bool Begins(std::int64_t timeOfDay) const { return times_.empty() || timeOfDay != timeOfDay_; }
  void BeginEpoch(std::int64_t timeOfDay);
  // A date of the present epoch, in days since 1970. The first of an epoch counts; before the first
  // epoch there is none to hold for.
  void TellDate(std::int64_t day);

  Epoch Present() const { return times_.empty() ? kNone : static_cast<Epoch>(times_.size() - 1); }
  bool IsDated() const { return offset_.has_value(); }

  // Milliseconds as in Moment. Those of the present epoch may still move by whole days, and all of
  // them until the first date is told.
  std::int64_t TimeOf(Epoch epoch) const { return times_[epoch] + Offset(); }
  Moment MomentOf(std::int64_t milliseconds) const { return {milliseconds, IsDated()}; }

  // From the times as they are kept to those of TimeOf.
  std::int64_t Offset() const { return offset_.value_or(0); }
  const std::vector<std::int64_t>& KeptTimes() const { return times_; }

  void Clear() { *this = TrialClock(); }

 private:
  // From the beginning of the day of the first epoch.
  std::vector<std::int64_t> times_;
  std::int64_t timeOfDay_ = 0;
  bool presentHasDate_ = false;
  std::optional<std::int64_t> offset_;
};

}  // namespace fathomline::trial
