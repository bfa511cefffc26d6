// Pictures of satellites and their signals. Each is one <svg>, or empty if there is nothing to
// draw.
#pragma once

#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

// Where the satellites of each system went over the sky.
std::string SkyPicture(const TrialFigures& trial);
// C/N0 of each satellite and signal as a band over time.
std::string SignalPicture(const SystemFigures& system, std::size_t number);
// Mean C/N0 by elevation, for each constellation and signal of a system.
std::string ElevationPicture(const SystemFigures& system, std::size_t number);

}  // namespace fathomline::trial
