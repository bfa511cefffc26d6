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
                "COM1 to COM4 :  /dev/ttyS0 to ttyS3\r\n"
                "COM5 to COM10 :  /dev/ttyUSB0 to ttyUSB5\r\n"
                "COM11 to COM16 :  /dev/ttyACM0 to ttyACM5\r\n\r\n"
                "To use another device, name it in the section [Comports]\r\n"
                "of the settings file, such as COM5=/dev/serial/by-id/..."};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
};

}  // namespace fathomline
