// Pictures of positions: where they lie, how the errors run over time, how large they are and how
// often. Each is one <svg>, or empty if there is nothing to draw.
#pragma once

#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

// A square for each system, with R50, R95 and the ellipse of 95%.
std::string ScatterPicture(const TrialFigures& trial);
// How the share of the errors grows with their size, all systems in one: horizontal, vertical.
std::string SharesPicture(const TrialFigures& trial);
// North, east and up over time upon the qualities of the fixes. Number: of the system, from 1.
std::string ErrorPicture(const SystemFigures& system, std::size_t number);
// The second system less the first: north, east and up over time. Number: of the pair, from 1.
std::string PairPicture(const PairFigures& pair, std::size_t number, bool dated);
// Shares of errors within one and two claimed standard deviations.
std::string ClaimPicture(const TrialFigures& trial);

}  // namespace fathomline::trial
