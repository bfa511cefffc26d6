// How much of the time a stream told a fix.
#pragma once

#include "trial/position_series.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// From the first fix in order of arrival, since a receiver may not know the time before it; without
// any fix of all epochs.
Availability AvailabilityOf(const PositionSeries& series);

}  // namespace fathomline::trial
