// frmAbout: what this program is.
#pragma once

#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmAbout : public Window {
 public:
  explicit frmAbout(Desktop& desktop);

  Label lblTitle{*this, "lblTitle"};
  Label lblVersion{*this, "lblVersion"};
  Label lblDescription{*this, "lblDescription",
                       "Statistical analysis of NMEA 0183 navigation data,\r\n"
                       "live from serial ports and networks or from recordings."};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
};

}  // namespace fathomline
