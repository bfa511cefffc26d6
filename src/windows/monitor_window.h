// frmNMEA: the raw lines of one system as they arrive, counters of what was seen, and the state of
// its link.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "toolkit/bars.h"
#include "toolkit/controls.h"
#include "toolkit/links.h"
#include "toolkit/timer.h"
#include "views/system_view.h"

namespace fathomline {

class frmNMEA : public SystemView {
 public:
  // `tcpState` asks the system's TCP link.
  frmNMEA(const ViewSurroundings& surroundings, int system,
          std::function<LinkState(int system)> tcpState);

  // One received line, with its line ending if it came from a live source. Counts it whether or
  // not the view is frozen.
  void MonitorLine(std::string_view line);
  // What the input buffer of the link holds.
  void ShowInput(std::string_view text);

  // The texts of the system's link, after a change of its setup or of the mode.
  void ShowLink();

  // Shows the counters and the input. Brings the window's flag back, which saving the setup clears,
  // when the window has been brought forward since.
  void Refresh() override;

  Label lblInputBuffer1{*this, "lblInputBuffer1"};
  Label lblInputBuffer2{*this, "lblInputBuffer2", "", Label::Look::Line};
  TextBox txtNMEA{*this, "txtNMEA", "", TextBox::Lines::Many};
  Label lblMessages{*this, "lblMessages", "0"};
  Label lblNMEACount{*this, "lblNMEACount", "0"};
  Label lblAISCount{*this, "lblAISCount", "0"};
  Label lblCheckSumOK{*this, "lblCheckSumOK", "0"};
  Label lblCheckSumError{*this, "lblCheckSumError", "0"};
  Button cmdFreeze{*this, "cmdFreeze", "Freeze"};
  Button cmdCLS{*this, "cmdCLS", "Clear "};
  Button cmdResetCounters{*this, "cmdResetCounters", "Reset Counters"};
  StatusBar StatusBar1{*this, "StatusBar1"};
  Timer timer_State{*this, "timer_State", 200};

 protected:
  void LoadView() override;
  void Resize() override;

 private:
  struct Counters {
    std::int32_t MonitorMessages = 0;
    std::int32_t MonitorNMEACount = 0;
    std::int32_t MonitorAISCount = 0;
    std::int32_t MonitorChecksumOK = 0;
    std::int32_t MonitorChecksumError = 0;
  };

  void ShowLine(std::string_view line);
  void CountSentence(std::string_view line);
  void Freeze();
  void Clear();
  void ResetCounters();
  void LayOutStatusBar();
  void ShowState();
  bool Frozen() const;

  std::function<LinkState(int)> tcpState_;
  Counters counters_;
  std::string input_;
  bool inputDue_ = false;
  bool shownOffline_ = false;
  std::uint64_t seenFrontOrder_ = 0;
};

}  // namespace fathomline
