// How windows are built and what they begin with, as the lines of words.lst tell it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/window.h"

namespace fathomline {

// The name that all members of a control array have.
std::string WithoutIndex(std::string name);

// The texts in a line; where many are the same, one of them and how many: "50 x *".
std::string Counted(const std::vector<std::string>& texts, std::string_view between);

// A line each for the window's place and the like, for its layout, and for the controls that are
// not as usual; those of a control array share one.
std::string StatesOf(const Window& window);

}  // namespace fathomline
