// The trial in some thirty lines of text, for a terminal.
#pragma once

#include <iosfwd>
#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

void WriteSummary(const TrialFigures& figures, std::ostream& out);

// "missed: A: horizontal.reference.r95_m<=1.5, is 2.1", or "kept: ...".
std::string LimitText(const LimitFigures& limit);

}  // namespace fathomline::trial
