// A trial as a document: one HTML file that needs nothing beside it and no script, for a screen by
// day and night, a telephone and paper. It is well-formed XML too.
#pragma once

#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

// The same figures give the same bytes.
std::string ToHtml(const TrialFigures& trial);

}  // namespace fathomline::trial
