#include "session/session_control.h"

#include <array>

#include "toolkit/window_places.h"

namespace fathomline {
namespace {

constexpr const char* kModeQuestion =
    "Are you sure you want to change mode ? All statistics and timeseries wil be reset.";

}  // namespace

// What a reset finds it brings back as it stood. The status of the replay stands in front.
class SessionControl::Kept {
 public:
  explicit Kept(SessionControl& session) : status_{session}, arrangement_(session.desktop_) {}

 private:
  struct StatusInFront {
    SessionControl& session;
    ~StatusInFront() {
      frmOfflineStatus& status = session.windows_.offlineStatus;
      if (status.Visible()) session.desktop_.Raise(status);
    }
  } status_;
  KeptArrangement arrangement_;  // goes first
};

bool SessionControl::MayChangeMode(const MenuItem& modeInForce) {
  if (!modeInForce.Checked()) return true;
  return desktop_.Ask({.text = kModeQuestion,
                       .icon = BoxIcon::Question,
                       .buttons = BoxButtons::YesNo,
                       .defaultNo = true}) == Answer::Yes;
}

void SessionControl::ClickModeOffline() {
  if (windows_.main.mnuModeOffline.Checked()) return;
  if (!MayChangeMode(windows_.main.mnuModeOnline)) return;
  setupDialog_.Close();
  records_.Mode = kOffline;
  windows_.main.ShowMode();
  records_.OnlinePaused = false;
  input_.CloseForOffline();
  if (records_.LoggingOn) ToggleLog();
  // An offline session holds the primary system alone, whose file is the only one that is read.
  for (int system = 2; system <= kSystems; ++system) records_.CommSetups[system].Enabled = false;
  ResetAll();
  windows_.offlineStatus.Show();
}

void SessionControl::ClickModeOnline() {
  if (windows_.main.mnuModeOnline.Checked()) return;
  if (!MayChangeMode(windows_.main.mnuModeOffline)) return;
  setupDialog_.Close();
  records_.Mode = kOnline;
  if (records_.OfflineRunning) records_.OfflineStopped = true;
  windows_.offlineStatus.Close();
  windows_.main.ShowMode();
  ResetAll();
  input_.OpenPorts();
}

void SessionControl::Press(std::string_view key) {
  struct Work {
    std::string_view key;
    bool asks;
    void (*run)(SessionControl& session);
  };
  static constexpr auto kWork = std::to_array<Work>({
      {"START", false, [](SessionControl& session) { session.records_.OnlinePaused = false; }},
      {"PAUSE", false, [](SessionControl& session) { session.Pause(); }},
      {"RESET ALL", true, [](SessionControl& session) { session.ResetAll(); }},
      {"Reset Statistics", true,
       [](SessionControl& session) {
         const Kept kept(session);
         session.ResetStatisticsAll();
       }},
      {"Reset Graphics", true,
       [](SessionControl& session) {
         const Kept kept(session);
         session.ResetTimeSeries();
         session.ResetScatter();
       }},
      {"LOG", false, [](SessionControl& session) { session.ToggleLog(); }},
  });
  for (const Work& work : kWork) {
    if (work.key == key && (!work.asks || Sure())) work.run(*this);
  }
}

bool SessionControl::Sure() {
  return desktop_.Ask({.text = "Are you sure ?", .buttons = BoxButtons::YesNo}) == Answer::Yes;
}

// The caption stays when the pause has ended.
void SessionControl::Pause() {
  records_.OnlinePaused = true;
  windows_.main.tbOnline.SetButtonEnabled(frmMain::kStartButton, true);
  windows_.main.tbOnline.SetCaption(frmMain::kStartButton, "CONTINUE");
}

void SessionControl::ToggleLog() {
  struct Shown {
    frmMain& mainWindow;
    ~Shown() { mainWindow.ShowLogging(); }
  } const shown{windows_.main};
  log_.StartStopLogging();
}

void SessionControl::ResetAll() {
  const Kept kept(*this);
  watch_.Reset();
  ResetNumerics();
  ResetStatisticsAll();
  ResetTimeSeries();
  ResetScatter();
  ResetSkyplot();
  ResetARPA();
  ResetAIS();
}

template <class SystemViews>
void SessionControl::ResetFlagged(WindowFlag flag, const SystemViews& views) {
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.SystemSetups[system][flag]) views[system]->Reset(ViewState::Shown);
  }
}

void SessionControl::ResetNumerics() {
  ResetFlagged(WindowFlag::Numerics, windows_.numerics);
}

void SessionControl::ResetStatisticsAll() {
  if (onReset) onReset();
  for (int system = 1; system <= kSystems; ++system) {
    statistics_[system].Reset();
    // Closing a window clears its flag.
    const bool statistics = records_.SystemSetups[system][WindowFlag::Statistics];
    const bool snr = records_.SystemSetups[system][WindowFlag::StatisticsSNR] ||
                     (statistics && records_.CommSetups[system].AnalyseGSV);
    if (statistics) windows_.statistics[system]->Reset(ViewState::Shown);
    if (snr) windows_.statisticsSNR[system]->Reset(ViewState::Shown);
  }
}

void SessionControl::ResetTimeSeries() {
  windows_.charts.ResetTimeSeries();
}
void SessionControl::ResetScatter() {
  windows_.charts.ResetScatter();
}
void SessionControl::ResetSkyplot() {
  windows_.charts.ResetSkyplot();
}
void SessionControl::ResetARPA() {
  ResetFlagged(WindowFlag::ARPATargets, windows_.arpaTargets);
}
void SessionControl::ResetAIS() {
  ResetFlagged(WindowFlag::AISTargets, windows_.aisTargets);
}

}  // namespace fathomline
