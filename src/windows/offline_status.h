// frmOfflineStatus: how far the replay of a recording has come.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "base/clock.h"
#include "base/colour.h"
#include "records/records.h"
#include "toolkit/controls.h"
#include "toolkit/timer.h"
#include "toolkit/window.h"
#include "windows/why_nothing.h"

namespace fathomline {

class frmOfflineStatus : public Window {
 public:
  frmOfflineStatus(Desktop& desktop, const Records& records, const Clock& clock);

  void ShowStatus(std::string_view text, Colour colour);
  // The replay begins: its times stand at their start and the timer runs.
  void ShowStart();
  // Bytes read so far; a size of 0 where it is not known.
  void ShowProgress(std::uint64_t position, std::uint64_t size);

  void Refresh() override;

  Label lblFileName{*this, "lblFileName", "no file selected", Label::Look::Path};
  Label lblStatus{*this, "lblStatus", "not started"};
  Label lblStartTime{*this, "lblStartTime", "   n/a"};
  Label lblTimeHeader{*this, "lblTimeHeader", "Current time :"};
  Label lblCurrentTime{*this, "lblCurrentTime", "   n/a"};
  Label lblProcessingTime{*this, "lblProcessingTime", "   n/a"};
  Label lblPause{*this, "lblPause", "including pause)"};
  ProgressBar prgRead{*this, "prgRead"};
  // Tells why nothing would show, and leads to where that can be mended.
  Label lblReason{*this, "lblReason", "", Label::Look::Line};
  Button cmdReason{*this, "cmdReason", ""};
  std::function<WhyNothing()> onAskWhy;
  Timer Timer1{*this, "Timer1", 1000};

 protected:
  void Load() override;
  void Resize() override;

 private:
  void Tick();

  const Records& records_;
  const Clock& clock_;
};

}  // namespace fathomline
