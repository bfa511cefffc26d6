// frmComportInfo: which serial ports are served, and how another device gets a number.
#pragma once

#include "base/settings.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmComportInfo : public Window {
 public:
  frmComportInfo(Desktop& desktop, const SettingsStore& settings);

  Label lblInfo{*this, "lblInfo"};
  Label lblOtherDevices{*this, "lblOtherDevices"};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
};

}  // namespace fathomline
