// A label that shows a figure once there is one.
#pragma once

#include <string_view>

#include "base/numbers.h"
#include "toolkit/controls.h"

namespace fathomline {

class FigureLabel : public Label {
 public:
  FigureLabel(Parent parent, std::string_view name) : Label(parent, name, kNotAvailable) {}
};

}  // namespace fathomline
