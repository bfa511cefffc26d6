// The style sheet of a trial's document: the tokens of the one table of colours as variables, by
// day, in the dark and on paper.
#pragma once

#include <string>

namespace fathomline::trial {

std::string StyleSheet();

}  // namespace fathomline::trial
