// Figures of angles, which are directions on a circle, and of plain series of values.
#pragma once

#include <string>
#include <vector>

#include "trial/percent_figures.h"
#include "trial/position_series.h"
#include "trial/samples.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// The samples of one name in the window, in order of time, several at one time in that of arrival.
struct ValueSeries {
  std::string name;
  Times times;
  std::vector<double> values;

  ValueSeries() = default;
  ValueSeries(const ValueSamples& samples, const TrialClock& clock, const Window& window);
  // The first sample of each time.
  ValueSeries OnePerTime() const;
};

// Directions are written from 0 to below 360, deviations above -180 to 180.
enum class AngleRange { Full, Signed };

// The direction of the summed unit vectors, in degrees; none where these cancel out.
Value MeanAngle(const std::vector<double>& degrees, AngleRange range);

// About the reference, or about the mean where there is none. The name is that of the series.
AngleErrors AngleErrorsOf(const ValueSeries& series, Value reference, AngleRange range,
                          const TrialClock& clock);
// Deviations from the reference that the figures are about; empty where they have none.
AngleTrack AngleTrackOf(const ValueSeries& series, const AngleErrors& figures);

SeriesFigures SeriesFiguresOf(const ValueSeries& series, const TrialClock& clock);

// That of HDT before that of ATT, then that of most samples, of equal ones the first; none of none.
const ValueSeries* ChosenHeading(const std::vector<ValueSeries>& headings);

// The second less the first, at the times of the one with the longer interval, the other
// interpolated along the shorter arc. Either may be missing.
AngleErrors HeadingDifferences(const ValueSeries* first, const ValueSeries* second,
                               const TrialClock& firstClock, const TrialClock& secondClock);

}  // namespace fathomline::trial
