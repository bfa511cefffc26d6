// The replay of a recorded file, as fast as the lines can be processed or as their times tell.
#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

#include "base/clock.h"
#include "base/fault_log.h"
#include "base/files.h"
#include "records/records.h"
#include "sources/line_sink.h"
#include "sources/replay_pace.h"
#include "toolkit/bars.h"
#include "toolkit/desktop.h"
#include "toolkit/task.h"
#include "windows/offline_status.h"

namespace fathomline {

// A task of the event pump: in each slice it gives lines of file 1 to the sink, always for system
// 1, and looks at the flags before each of them. The files of the other systems stand open unread.
// While a line is inside the sink (a message box stands), the replay is held. Where file 1 is a
// pipe, the slices wait for its lines.
//
// Driven by the keys of the tool bar, and through OfflineStopped by whoever sets it.
class OfflineReplay : public Task {
 public:
  OfflineReplay(Records& records, FileTable& files, const Clock& clock, Desktop& desktop,
                ToolBar& tbOffline, frmOfflineStatus& status, LineSink& sink, SessionReset& session,
                FaultLog& faults);

  // A key of the tool bar: "PLAY", "CONT", "Step", "PAUSE", "STOP"; any other does nothing.
  void Press(std::string_view key);

  // As in ReplayPace; at any time, also within a run.
  void SetSpeed(int times) { pace_.SetSpeed(times); }

  bool RunSlice(std::chrono::steady_clock::time_point until) override;

 private:
  void Play();
  void Continue();
  void Step();
  void Pause();
  void Stop();

  void Begin();
  enum class Ahead { Line, Nothing, End };
  Ahead LookAhead(std::chrono::steady_clock::time_point until);
  bool LineDue();
  bool TakeLine();
  void ShowProgress();
  void End();
  void SetFirstButton(std::string_view key);
  bool Logged(const Fault& fault);

  Records& records_;
  FileTable& files_;
  const Clock& clock_;
  Desktop& desktop_;
  ToolBar& tbOffline_;
  frmOfflineStatus& status_;
  LineSink& sink_;
  SessionReset& session_;
  FaultLog& faults_;
  ReplayPace pace_;
  std::uint64_t statusLoad_ = 0;  // of the status window, when the run began
  bool unreadable_ = false;       // file 1 cannot be read; the fault has been logged
  bool playWhenEnded_ = false;    // PLAY came before a stopped run had ended
};

}  // namespace fathomline
