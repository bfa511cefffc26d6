#include "trial/trial_clock.h"

namespace fathomline::trial {

void TrialClock::BeginEpoch(std::int64_t timeOfDay) {
  std::int64_t time = timeOfDay;
  if (!times_.empty()) {
    // The step from the predecessor, brought into (-12 h, 12 h].
    std::int64_t step = (timeOfDay - times_.back()) % kDayMilliseconds;
    if (step > kDayMilliseconds / 2) step -= kDayMilliseconds;
    if (step <= -kDayMilliseconds / 2) step += kDayMilliseconds;
    time = times_.back() + step;
  }
  times_.push_back(time);
  timeOfDay_ = timeOfDay;
  presentHasDate_ = false;
}

void TrialClock::TellDate(std::int64_t day) {
  if (times_.empty() || presentHasDate_) return;
  presentHasDate_ = true;
  const std::int64_t told = day * kDayMilliseconds + timeOfDay_;
  // The first date moves all that came before it, since their steps are known.
  if (!offset_) offset_ = told - times_.back();
  times_.back() = told - *offset_;
}

}  // namespace fathomline::trial
