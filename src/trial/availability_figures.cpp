#include "trial/availability_figures.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace fathomline::trial {
namespace {

// Steps from fix to fix, or to the last epoch, that are longer than three intervals. A jump of the
// time between two epochs is none of the receiver's.
Gaps FixGapsOf(const Times& epochs, const std::vector<bool>& isFix, double interval,
               const TrialClock& clock) {
  Gaps gaps;
  std::int64_t longest = 0;
  std::int64_t sum = 0;
  const std::int64_t* lastFix = nullptr;
  for (std::size_t i = 0; i < epochs.size(); ++i) {
    if (i > 0 && epochs[i] - epochs[i - 1] > kJump) lastFix = nullptr;
    const bool isLast = i + 1 == epochs.size();
    if (!isFix[i] && !isLast) continue;
    if (lastFix != nullptr) {
      const std::int64_t step = epochs[i] - *lastFix;
      if (static_cast<double>(step) > 3.0 * interval) {
        ++gaps.n;
        sum += step;
        if (step > longest) {
          longest = step;
          gaps.longest = static_cast<double>(step) / 1000.0;
          gaps.longestAt = clock.MomentOf(*lastFix);
        }
      }
    }
    if (isFix[i]) lastFix = &epochs[i];
  }
  gaps.sum = static_cast<double>(sum) / 1000.0;
  return gaps;
}

}  // namespace

Availability AvailabilityOf(const PositionSeries& series) {
  std::optional<std::uint32_t> firstFix;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (!series.IsFixAt(i)) continue;
    firstFix = std::min(firstFix.value_or(series.ArrivalOf(i)), series.ArrivalOf(i));
  }
  Availability figures;
  Times epochs;
  std::vector<bool> isFix;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (firstFix && series.ArrivalOf(i) < *firstFix) {
      ++figures.beforeFirstFix;
      continue;
    }
    epochs.push_back(series.TimeOf(i));
    isFix.push_back(series.IsFixAt(i));
  }
  figures.epochs = static_cast<Count>(epochs.size());
  figures.fixes = series.Fixes();
  const Value interval = MedianStep(epochs);
  figures.interval = Seconds(interval);
  double intervals = 0.0;
  for (std::size_t i = 1; i < epochs.size(); ++i) {
    const std::int64_t step = epochs[i] - epochs[i - 1];
    if (step > kJump) {
      ++figures.jumps;
    } else if (interval) {
      intervals += static_cast<double>(step) / *interval;
    }
  }
  if (!interval) {
    figures.gaps.why = firstFix ? why::kTooFew : why::kNoFix;
    return figures;
  }
  figures.expected = 1 + figures.jumps + static_cast<Count>(std::floor(intervals + 0.5));
  figures.share =
      std::min(1.0, static_cast<double>(figures.fixes) / static_cast<double>(*figures.expected));
  if (firstFix) {
    figures.gaps = FixGapsOf(epochs, isFix, *interval, series.Clock());
  } else {
    figures.gaps.why = why::kNoFix;
  }
  return figures;
}

}  // namespace fathomline::trial
