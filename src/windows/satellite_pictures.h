// The pictures of the satellites window.
#pragma once

#include <vector>

#include "toolkit/picture.h"
#include "watch/satellites_in_view.h"

namespace fathomline {

// The sky as a circle: north up, the zenith in the middle, the horizon at the rim. Each satellite
// with the mark of its constellation, filled where it is used, and the way it has come.
void DrawSky(Picture& picture, const std::vector<SatellitesInView::Satellite>& satellites);

// A bar for each signal that is tracked, side by side for one satellite, as high as its C/N0; in
// outline where the satellite is not used. Rows as the width asks for, and a legend above.
void DrawSignals(Picture& picture, const std::vector<SatellitesInView::Satellite>& satellites);

}  // namespace fathomline
