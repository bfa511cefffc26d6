// The questions that a trial's document answers, one section each.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "trial/trial_figures.h"

namespace fathomline::trial {

struct HtmlSection {
  std::string_view id;
  std::string_view question;
  std::string_view absent;  // what is missing if the body is empty
  std::string body;         // pictures and tables as HTML
};

std::vector<HtmlSection> PositionSections(const TrialFigures& trial);
std::vector<HtmlSection> SensorSections(const TrialFigures& trial);

// A picture with its caption below; nothing for no picture.
std::string HtmlFigure(const std::string& picture, const std::string& caption);

// "System A", or nothing where there is but one.
std::string SystemTitle(const TrialFigures& trial, const SystemFigures& system);
// "System A: " before a caption, or nothing.
std::string SystemPrefix(const TrialFigures& trial, const SystemFigures& system);

}  // namespace fathomline::trial
