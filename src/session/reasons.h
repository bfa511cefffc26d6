// Tells in the main window and in the status of the replay why nothing shows, and leads to the
// place where that can be mended.
#pragma once

#include "pipeline/engine.h"
#include "session/windows.h"
#include "setup/setup_dialog.h"
#include "windows/why_nothing.h"

namespace fathomline {

class Reasons {
 public:
  Reasons(Engine& engine, Desktop& desktop, Windows& windows, frmSetup& setupDialog);

  // The activity of the sources has been reset; the counts of errors have not.
  void Restart();

 private:
  WhyNothing Look() const;
  void Lead();

  Records& records_;
  const Watch& watch_;
  Desktop& desktop_;
  frmSetup& setupDialog_;
  PerSystem<std::int32_t> errorsBefore_;
};

}  // namespace fathomline
