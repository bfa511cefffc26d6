// frmComportInfo: which serial ports are served, and how another device gets a number.
#pragma once

#include "base/settings.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmComportInfo : public Window {
 public:
  frmComportInfo(Desktop& desktop, const SettingsStore& settings);

  Label lblInfo{*this, "lblInfo",
                "Only comports with a number up to 16 are served.\r\n"
                "Ports with higher numbers are ignored by the setup.\r\n\r\n"
                "COM1 to COM4 :  /dev/ttyS0 to ttyS3\r\n"
                "COM5 to COM10 :  /dev/ttyUSB0 to ttyUSB5\r\n"
                "COM11 to COM16 :  /dev/ttyACM0 to ttyACM5"};
  Label lblOtherDevices{*this, "lblOtherDevices"};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
};

}  // namespace fathomline
