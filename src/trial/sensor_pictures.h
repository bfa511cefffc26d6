// Pictures of angles, AIS and the lines themselves. Each is one <svg>, or empty if
// there is nothing to draw.
#pragma once

#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

// Deviations of heading, pitch and roll over time, by name. Number: of the system, from 1.
std::string AnglePicture(const SystemFigures& system, std::size_t number);
// When each talker and type was heard.
std::string AvailabilityPicture(const SystemFigures& system, std::size_t number);
// Messages by their number.
std::string AisPicture(const TrialFigures& trial);
// What became of the lines.
std::string LinesPicture(const TrialFigures& trial);

}  // namespace fathomline::trial
