// The trial as JSON, whose keys and their order docs/trial.schema.json tells.
//
// Numbers are rounded to the decimals of their figure and written with as few digits as tell them
// apart from others of these decimals.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "trial/trial_figures.h"

namespace fathomline::trial {

nlohmann::ordered_json ToJson(const TrialFigures& figures);

// As the file holds it.
std::string JsonText(const TrialFigures& figures);

}  // namespace fathomline::trial
