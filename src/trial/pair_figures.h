// One system or stream against another, and what a receiver claims against what happened.
#pragma once

#include <string_view>
#include <vector>

#include "trial/position_figures.h"
#include "trial/position_series.h"
#include "trial/samples.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// The second less the first, in the frame of the first.
struct Differences {
  PositionErrors errors;  // at every place of the base, fix or not
  Count of = 0;           // fixes of the one at whose times they are
  Count sameTime = 0;
  Count interpolated = 0;
};

// At every place of `base`, the fixes of the other interpolated.
enum class BaseIs { First, Second };
Differences DifferencesAt(const PositionSeries& base, const PositionSeries& other, BaseIs baseIs);
// The fixes of the one with the longer interval, of equal ones those of the first.
Differences DifferencesOf(const PositionSeries& first, const PositionSeries& second);

// Without name and heading. Either may be missing.
PairFigures PairOf(const PositionSeries* first, const PositionSeries* second);

// Median distance of a stream from another, in metres, and how many times it is made of.
struct StreamDistance {
  Count matched = 0;
  Value median;
};
StreamDistance DistanceOf(const PositionSeries& first, const PositionSeries& second);

// The claims of the talker, or of that with most, against the errors at the same times. `whyNone`
// says why there are no errors, if there are none.
Claim ClaimOf(const std::vector<ClaimSamples>& claims, std::string_view talker,
              const PositionErrors& errors, std::string_view whyNone, const TrialClock& clock,
              const Window& window);

}  // namespace fathomline::trial
