// frmMain: the frame in which all views stand, with its tool bars and its status bar.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/bars.h"
#include "platform/window.h"

namespace fathomline {

class frmMain : public Window {
 public:
  explicit frmMain(Desktop& desktop);

  // Panels of the status bar that belong to a system.
  static constexpr int kChecksumPanel = 3;  // of system n: kChecksumPanel + n
  static constexpr int kIgnoredPanel = 8;   // likewise

  void ShowChecksumErrors(int system, std::int32_t count);

  ToolBar tbOffline{*this,
                    "tbOffline",
                    {{"PLAY", "PLAY"},
                     {"Step", "Step"},
                     {"PAUSE", "PAUSE", false},
                     {"STOP", "STOP", false},
                     {"Real time", "Real time"},
                     {"QUICK", "QUICK"}}};
  StatusBar sbStatusBar{*this,
                        "sbStatusBar",
                        {"Mode : ONLINE", "Logging : Off", "  Checksum errors :  ", "n/a", "n/a",
                         "n/a", "n/a", "Ignored msg : ", "n/a", "n/a", "n/a", "n/a", ""}};
};

}  // namespace fathomline
