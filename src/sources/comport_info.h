// frmComportInfo: which serial ports are served.
#pragma once

#include "platform/controls.h"
#include "platform/window.h"

namespace fathomline {

class frmComportInfo : public Window {
 public:
  explicit frmComportInfo(Desktop& desktop);

  Label lblInfo{*this, "lblInfo",
                "Only comports with a number up to 16 are served.\r\n"
                "Ports with higher numbers are ignored by the setup.\r\n\r\n"
                "COM1 to COM4 are the devices /dev/ttyS0 to ttyS3, COM5 to COM10 /dev/ttyUSB0 to "
                "ttyUSB5, and COM11 to COM16 /dev/ttyACM0 to ttyACM5.\r\n"
                "A line such as COM5=/dev/serial/by-id/... in the section [Comports] of the "
                "settings file names another device."};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
};

}  // namespace fathomline
