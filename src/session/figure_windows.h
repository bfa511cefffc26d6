// All windows in which a recording shows something, side by side.
#pragma once

#include "session/windows.h"
#include "toolkit/desktop.h"

namespace fathomline {

// Opens statistics, numerics, charts, scatter, sky plot and target lists of a system, as far as
// what it analyses feeds them, and tiles them over the status of the replay. Those that there is no
// room for, the ones that say least, stand as icons under the others.
void OpenFigureWindows(Desktop& desktop, Windows& windows, int system);

}  // namespace fathomline
