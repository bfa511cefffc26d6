// Turns the layout of a plain window into widgets.
#pragma once

#include <memory>
#include <vector>

#include "faces/qt/control_view.h"
#include "toolkit/layout.h"

namespace fathomline {

struct BuiltContent {
  QWidget* body = nullptr;
  QWidget* foot = nullptr;  // the row of buttons that ends a dialog; none elsewhere
  std::vector<std::unique_ptr<ControlView>> views;
  bool scrollsDownOnly = false;
};

// All controls of the window but its menu items. Those that the layout does not place stand below
// it, in the order in which they were built; tool bars and status bars that it does not place are
// left to the caller: they are among the views, without a parent.
BuiltContent BuildContent(ViewContext& context);

}  // namespace fathomline
