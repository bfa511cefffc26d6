#include "sources/offline_replay.h"

namespace fathomline {
namespace {

// Buttons of the tool bar.
constexpr int kPlayButton = 1;
constexpr int kStepButton = 2;
constexpr int kPauseButton = 3;
constexpr int kStopButton = 4;

constexpr int kReplayedFile = 1;
constexpr int kReplayedSystem = 1;
// Reading the clock costs as much as a short line does.
constexpr int kLinesPerLookAtTheClock = 16;

}  // namespace

OfflineReplay::OfflineReplay(Records& records, FileTable& files, const Clock& clock,
                             Desktop& desktop, ToolBar& tbOffline, frmOfflineStatus& status,
                             LineSink& sink, SessionReset& session, FaultLog& faults)
    : records_(records),
      files_(files),
      clock_(clock),
      desktop_(desktop),
      tbOffline_(tbOffline),
      status_(status),
      sink_(sink),
      session_(session),
      faults_(faults) {}

void OfflineReplay::Press(std::string_view key) {
  if (key == "PLAY") Play();
  if (key == "CONT") Continue();
  if (key == "Step") Step();
  if (key == "PAUSE") Pause();
  if (key == "STOP") Stop();
}

void OfflineReplay::Play() {
  if (records_.OfflineRunning && records_.OfflineStopped) {
    playWhenEnded_ = true;
    return;
  }
  tbOffline_.SetButtonEnabled(kPlayButton, false);
  tbOffline_.SetButtonEnabled(kStepButton, false);
  tbOffline_.SetButtonEnabled(kPauseButton, true);
  tbOffline_.SetButtonEnabled(kStopButton, true);
  records_.OfflineStopped = false;
  records_.OfflinePaused = false;
  records_.OfflineStartTime = clock_.NowLocal();
  status_.ShowStatus("PROCESSING IN PROGRESS", kBlack);
  status_.ShowStart();
  session_.ResetAll();
  if (!records_.OfflineRunning) Begin();
}

void OfflineReplay::Continue() {
  tbOffline_.SetButtonEnabled(kPlayButton, false);
  tbOffline_.SetButtonEnabled(kStepButton, false);
  tbOffline_.SetButtonEnabled(kPauseButton, true);
  records_.OfflinePaused = false;
  status_.ShowStatus("PROCESSING IN PROGRESS", kBlack);
  status_.Timer1.SetEnabled(true);
}

// A step from rest opens the file and stands behind one line. The first button then continues, so
// that what was stepped is not reset. OfflineStopped is left alone: behind a run that has ended, a
// step ends at once.
void OfflineReplay::Step() {
  tbOffline_.SetButtonEnabled(kStopButton, true);
  records_.OfflineStep = true;
  pace_.Restart();
  if (records_.OfflineRunning) return;
  records_.OfflinePaused = true;
  records_.OfflineStartTime = clock_.NowLocal();
  SetFirstButton("CONT");
  Begin();
}

void OfflineReplay::Pause() {
  tbOffline_.SetButtonEnabled(kPlayButton, true);
  tbOffline_.SetButtonEnabled(kStepButton, true);
  tbOffline_.SetButtonEnabled(kPauseButton, false);
  SetFirstButton("CONT");
  records_.OfflinePaused = true;
  status_.ShowStatus("PROCESSING PAUSED", kRed);
}

void OfflineReplay::Stop() {
  const Answer answer = desktop_.Ask({.text = "Are you sure?", .buttons = BoxButtons::YesNo});
  if (answer != Answer::Yes) return;
  tbOffline_.SetButtonEnabled(kPlayButton, true);
  tbOffline_.SetButtonEnabled(kStepButton, true);
  tbOffline_.SetButtonEnabled(kPauseButton, false);
  tbOffline_.SetButtonEnabled(kStopButton, false);
  SetFirstButton("PLAY");
  records_.OfflinePaused = false;
  records_.OfflineStopped = true;
  status_.ShowStatus("PROCESSING STOPPED", kRed);
}

void OfflineReplay::SetFirstButton(std::string_view key) {
  tbOffline_.SetKey(kPlayButton, key);
  tbOffline_.SetCaption(kPlayButton, key);
}

void OfflineReplay::Begin() {
  records_.OfflineRunning = true;
  statusLoad_ = status_.Loads();
  unreadable_ = false;
  pace_.Restart();
  sink_.BeginReplay();
  for (int system = 1; system <= kSystems; ++system) {
    const std::string& file = records_.CommSetups[system].OfflineFile;
    if (file.empty()) continue;
    ResumeNext([&] { files_.OpenForInput(system, file); },
               [&](const Fault& fault) {
                 const bool logged = Logged(fault);
                 if (system == kReplayedFile || !logged) unreadable_ = true;
               });
  }
  desktop_.Start(*this);
}

bool OfflineReplay::RunSlice(std::chrono::steady_clock::time_point until) {
  for (int line = 0;; ++line) {
    if (desktop_.Quitting()) return false;
    if (line == kLinesPerLookAtTheClock) {
      ShowProgress();
      if (desktop_.Now() >= until) return true;
      line = 0;
    }
    // The end comes before a pause: a step through the last line ends the run.
    const Ahead ahead = LookAhead(until);
    if (ahead != Ahead::End && records_.OfflinePaused && !records_.OfflineStep) return false;
    if (ahead == Ahead::Nothing) return true;
    if (ahead == Ahead::Line && pace_.Waits() && !records_.OfflineStep && !LineDue()) {
      ShowProgress();
      return false;
    }
    if (ahead == Ahead::End || !TakeLine()) {
      End();
      return false;
    }
  }
}

OfflineReplay::Ahead OfflineReplay::LookAhead(std::chrono::steady_clock::time_point until) {
  if (unreadable_ || records_.OfflineStopped) return Ahead::End;
  try {
    LineReader& file = files_.Reader(kReplayedFile);
    if (!file.Ready(until)) return Ahead::Nothing;
    return file.AtEnd() ? Ahead::End : Ahead::Line;
  } catch (const Fault& fault) {
    Logged(fault);
    return Ahead::End;
  }
}

// A fault is left to the taking of the line, which tells it.
bool OfflineReplay::LineDue() {
  bool due = true;
  ResumeNext([&] { due = pace_.Due(files_.Reader(kReplayedFile).Peek(), desktop_.Now()); });
  return due;
}

// False where the run cannot go on.
bool OfflineReplay::TakeLine() {
  std::string_view line;
  try {
    line = files_.Reader(kReplayedFile).Next();
  } catch (const Fault& fault) {
    Logged(fault);
    return false;
  }
  bool goesOn = true;
  ResumeNext(
      [&] {
        if (records_.SystemSetups[kReplayedSystem][WindowFlag::NMEA]) {
          records_.MonitorSystem = kReplayedSystem;
          sink_.ShowInput(kReplayedSystem, line);
        }
        sink_.ProcessSentence(kReplayedSystem, line);
      },
      [&](const Fault& fault) { goesOn = Logged(fault); });
  records_.OfflineStep = false;
  return goesOn;
}

void OfflineReplay::ShowProgress() {
  // A window that has been opened since, with another setup, tells of a run to come.
  if (!files_.IsOpen(kReplayedFile) || status_.Loads() != statusLoad_) return;
  const LineReader& file = files_.Reader(kReplayedFile);
  status_.ShowProgress(file.Position(), file.Size());
}

void OfflineReplay::End() {
  desktop_.Stop(*this);
  ShowProgress();
  desktop_.Beep();
  if (!records_.OfflineStopped) status_.ShowStatus("END OF FILE REACHED", kRed);
  status_.Timer1.SetEnabled(false);
  tbOffline_.SetButtonEnabled(kPlayButton, true);
  tbOffline_.SetButtonEnabled(kStepButton, true);
  tbOffline_.SetButtonEnabled(kPauseButton, false);
  tbOffline_.SetButtonEnabled(kStopButton, false);
  SetFirstButton("PLAY");
  records_.OfflineRunning = false;
  records_.OfflineEndTime = clock_.NowLocal();
  records_.OfflinePaused = false;
  records_.OfflineStep = false;
  // Stands until the next PLAY, so that a step from rest ends at once.
  records_.OfflineStopped = true;
  files_.CloseAll();
  if (playWhenEnded_) {
    playWhenEnded_ = false;
    Play();
  }
}

// Where the log itself cannot be written, one box says so and the replay ends.
bool OfflineReplay::Logged(const Fault& fault) {
  try {
    faults_.WriteErrorLog(fault);
    return true;
  } catch (const Fault& cause) {
    desktop_.Ask({.text = "The error log cannot be written: " + cause.Description() +
                          "\r\nThe replay ends here. Its fault was: " + fault.Description(),
                  .icon = BoxIcon::Exclamation});
    return false;
  }
}

}  // namespace fathomline
