#include "pipeline/session_control.h"

#include <array>

namespace fathomline {
namespace {

constexpr const char* kModeQuestion =
    "Are you sure you want to change mode ? All statistics and timeseries wil be reset.";

void Call(const std::function<void()>& hook) {
  if (hook) hook();
}

}  // namespace

SessionControl::SessionControl(Records& records, Statistics& statistics, Desktop& desktop,
                               frmMain& mainWindow, frmOfflineStatus& offlineStatus,
                               NumericsWindows& numericsWindows,
                               StatisticsWindows& statisticsWindows,
                               StatisticsSNRWindows& statisticsSNRWindows, LiveInput& input,
                               RawLog& log, const ViewHooks& hooks)
    : records_(records),
      statistics_(statistics),
      desktop_(desktop),
      mainWindow_(mainWindow),
      offlineStatus_(offlineStatus),
      numericsWindows_(numericsWindows),
      statisticsWindows_(statisticsWindows),
      statisticsSNRWindows_(statisticsSNRWindows),
      input_(input),
      log_(log),
      hooks_(hooks) {}

bool SessionControl::MayChangeMode(const MenuItem& modeInForce) {
  if (!modeInForce.Checked()) return true;
  return desktop_.Ask({.text = kModeQuestion,
                       .icon = BoxIcon::Question,
                       .buttons = BoxButtons::YesNo,
                       .defaultNo = true}) == Answer::Yes;
}

void SessionControl::CancelSetup() {
  if (hooks_.setupDialog != nullptr) hooks_.setupDialog->Close();
}

void SessionControl::ClickModeOffline() {
  if (mainWindow_.mnuModeOffline.Checked()) return;
  if (!MayChangeMode(mainWindow_.mnuModeOnline)) return;
  CancelSetup();
  records_.Mode = kOffline;
  mainWindow_.ShowMode();
  records_.OnlinePaused = false;
  input_.CloseForOffline();
  if (records_.LoggingOn) ToggleLog();
  // An offline session holds the primary system alone, whose file is the only one that is read.
  for (int system = 2; system <= kSystems; ++system) records_.CommSetups[system].Enabled = false;
  ResetAll();
  offlineStatus_.Show();
}

void SessionControl::ClickModeOnline() {
  if (mainWindow_.mnuModeOnline.Checked()) return;
  if (!MayChangeMode(mainWindow_.mnuModeOffline)) return;
  CancelSetup();
  records_.Mode = kOnline;
  if (records_.OfflineRunning) records_.OfflineStopped = true;
  offlineStatus_.Close();
  mainWindow_.ShowMode();
  ResetAll();
  input_.OpenPorts();
}

void SessionControl::Press(std::string_view key) {
  struct Work {
    std::string_view key;
    bool asks;
    void (*run)(SessionControl& session);
  };
  static constexpr std::array<Work, 6> kWork = {{
      {"START", false, [](SessionControl& session) { session.records_.OnlinePaused = false; }},
      {"PAUSE", false, [](SessionControl& session) { session.Pause(); }},
      {"RESET ALL", true, [](SessionControl& session) { session.ResetAll(); }},
      {"Reset Statistics", true, [](SessionControl& session) { session.ResetStatisticsAll(); }},
      {"Reset Graphics", true,
       [](SessionControl& session) {
         session.ResetTimeSeries();
         session.ResetScatter();
       }},
      {"LOG", false, [](SessionControl& session) { session.ToggleLog(); }},
  }};
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
  mainWindow_.tbOnline.SetButtonEnabled(frmMain::kStartButton, true);
  mainWindow_.tbOnline.SetCaption(frmMain::kStartButton, "CONTINUE");
}

void SessionControl::ToggleLog() {
  struct Shown {
    frmMain& mainWindow;
    ~Shown() { mainWindow.ShowLogging(); }
  } const shown{mainWindow_};
  log_.StartStopLogging();
}

void SessionControl::ResetAll() {
  ResetNumerics();
  ResetStatisticsAll();
  ResetTimeSeries();
  ResetScatter();
  ResetSkyplot();
  ResetARPA();
  ResetAIS();
}

void SessionControl::ResetNumerics() {
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.SystemSetups[system][WindowFlag::Numerics]) Reopen(*numericsWindows_[system]);
  }
}

void SessionControl::ResetStatisticsAll() {
  for (int system = 1; system <= kSystems; ++system) {
    statistics_[system].Reset();
    // Closing a window clears its flag.
    const bool statistics = records_.SystemSetups[system][WindowFlag::Statistics];
    const bool snr = records_.SystemSetups[system][WindowFlag::StatisticsSNR] ||
                     (statistics && records_.CommSetups[system].AnalyseGSV);
    if (statistics) Reopen(*statisticsWindows_[system]);
    if (snr) Reopen(*statisticsSNRWindows_[system]);
  }
}

void SessionControl::ResetTimeSeries() {
  Call(hooks_.resetTimeSeries);
}
void SessionControl::ResetScatter() {
  Call(hooks_.resetScatter);
}
void SessionControl::ResetSkyplot() {
  Call(hooks_.resetSkyplot);
}
void SessionControl::ResetARPA() {
  Call(hooks_.resetARPA);
}
void SessionControl::ResetAIS() {
  Call(hooks_.resetAIS);
}

void SessionControl::Reopen(Window& window) {
  if (records_.ReloadWindows) window.Close();
  window.Show();
}

}  // namespace fathomline
