#include "windows/main_window.h"

#include <algorithm>
#include <string>

#include "base/dialogs.h"
#include "base/numbers.h"
#include "base/text.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{1000, 1000, 13000, 13000};

const std::string kCaption = std::string(kProgramTitle) + " - Version : " + kVersionText;

// Of a menu entry that names a system, this much stands in front of the name.
constexpr std::size_t kPrimaryCaption = 26;
constexpr std::size_t kSecondaryCaption = 22;
constexpr std::string_view kNotDefined = "not defined";

// A caption that shows the name as it is, though "&" marks a mnemonic there.
std::string AsCaption(std::string_view name) {
  std::string caption;
  for (const char c : name) caption.append(c == '&' ? 2 : 1, c);
  return caption;
}

constexpr std::string_view kNoSystem =
    "No system is defined yet.\r\n\r\n"
    "1.  Choose Mode > Online for a live source, or Mode > Offline for a recorded file.\r\n"
    "2.  Define the primary system under Setup > Primary System.\r\n"
    "3.  Open views under Window > New Window.\r\n\r\n"
    "Or open a setup file with File > Open.";
constexpr std::string_view kNoViewOnline =
    "No view is open.\r\n\r\nOpen views under Window > New Window.";
constexpr std::string_view kNoViewOffline =
    "No view is open.\r\n\r\n"
    "Open views under Window > New Window, then press PLAY to replay the recording.";

}  // namespace

frmMain::frmMain(Desktop& desktop, const Records& records, const Clock& clock,
                 SettingsStore& settings)
    : Window(desktop, {.name = "frmMain",
                       .caption = kCaption,
                       .place = kDefaultPlace,
                       .style = WindowStyle::Main}),
      records_(records),
      clock_(clock),
      settings_(settings) {
  for (int system = mnuSetupSystem.First(); system <= mnuSetupSystem.Last(); ++system) {
    mnuSetupSystem(system).SetText("Secondary System &" + PlainText(system - 1) + " - not defined");
  }
  for (MenuItem& item : mnuFileRecentRecording) item.SetVisible(false);
  mnuFileRecentRecordings.SetEnabled(false);
  for (int item = 1; const ReplaySpeed& speed : kReplaySpeeds) {
    mnuToolsReplaySpeedOf(item).MakeOption();
    mnuToolsReplaySpeedOf(item).SetChecked(item == 1);
    mnuToolsReplaySpeedOf(item++).SetText(speed.caption);
  }
  for (int system = 1; system <= kSystems; ++system) {
    sbStatusBar.SetPanelVisible(kSourcePanel + system, false);
  }
  clockTimer.onTick = [this] {
    ShowClock();
    if (onSecond) onSecond();
  };
  SetContent(Layout::Column({lblHint, lblReason, Layout::Row({cmdReason, Layout::Space()})}));
}

void frmMain::Load() {
  RestorePlace(*this, settings_, "Main", kDefaultPlace);
  ShowClock();
  ShowLogging();
  if (onMenus) onMenus();
  if (onOpen) onOpen();
  if (onSecond) onSecond();
}

bool frmMain::QueryUnload(CloseReason reason) {
  closeReason_ = reason;
  if (onClosing) onClosing();
  return true;
}

void frmMain::Unload() {
  const auto report = [this](const Fault& fault) { OwningDesktop().Report(fault, this); };
  if (onUnload) ResumeNext(onUnload, report);
  if (closeReason_ != CloseReason::Program) SavePlace(*this, settings_, "Main");
  ResumeNext([this] { settings_.Save(); }, report);
  OwningDesktop().Quit();
}

void frmMain::ShowClock() {
  sbStatusBar.SetPanelText(kClockPanel, TimeOfDayText(clock_.NowLocal()));
}

void frmMain::ShowChecksumErrors(int system, std::int32_t count) {
  sbStatusBar.SetPanelText(kChecksumPanel + system, PlainText(count));
}

void frmMain::ShowIgnoredMessages(int system, std::int32_t count) {
  sbStatusBar.SetPanelText(kIgnoredPanel + system, PlainText(count));
}

void frmMain::ShowSource(int system, std::string_view text, Colour colour,
                         std::string_view toolTip) {
  const int panel = kSourcePanel + system;
  sbStatusBar.SetPanelText(panel, text);
  sbStatusBar.SetPanelColour(panel, colour);
  sbStatusBar.SetPanelToolTip(panel, toolTip);
  sbStatusBar.SetPanelVisible(panel, true);
}

void frmMain::HideSource(int system) {
  sbStatusBar.SetPanelVisible(kSourcePanel + system, false);
}

void frmMain::ShowUnsaved(std::string_view name) {
  std::string caption = kCaption;
  if (!name.empty()) caption.append("- ").append(name).append(" (not saved)");
  SetCaption(caption);
}

void frmMain::ShowRecentRecordings(const std::vector<std::string>& paths) {
  mnuFileRecentRecordings.SetEnabled(!paths.empty());
  for (int item = 1; item <= kRecentRecordings; ++item) {
    const auto at = static_cast<std::size_t>(item - 1);
    MenuItem& entry = mnuFileRecentRecording(item);
    entry.SetVisible(at < paths.size());
    if (at < paths.size()) entry.SetText("&" + PlainText(item) + "  " + AsCaption(paths[at]));
  }
}

void frmMain::ShowReplaySpeed(int times) {
  for (int item = 1; const ReplaySpeed& speed : kReplaySpeeds) {
    mnuToolsReplaySpeedOf(item++).SetChecked(speed.times == times);
  }
}

void frmMain::ShowMode() {
  const bool offline = records_.Offline();
  mnuModeOffline.SetChecked(offline);
  mnuModeOnline.SetChecked(!offline);
  tbOnline.SetVisible(!offline);
  tbOffline.SetVisible(offline);
  sbStatusBar.SetPanelText(kModePanel, "Mode : " + records_.Mode);
  for (MenuItem& item : mnuSetupSystem) item.SetEnabled(!offline);
}

void frmMain::ShowLogging() {
  tbOnline.SetCaption(kLogButton, records_.LoggingOn ? "LOG Off" : "LOG On");
  sbStatusBar.SetPanelText(kLoggingPanel, records_.LoggingOn ? "Logging : On" : "Logging : Off");
}

MenuItem& frmMain::SetupItem(int system) {
  return system == 1 ? mnuSetupPrimarySystem : mnuSetupSystem(system);
}

void frmMain::ShowSystems() {
  const auto count = [](bool counted) { return counted ? "0" : kNotAvailable; };
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records_.CommSetups[system];
    sbStatusBar.SetPanelVisible(kChecksumPanel + system, setup.Enabled);
    sbStatusBar.SetPanelVisible(kIgnoredPanel + system, setup.Enabled);
    sbStatusBar.SetPanelText(kChecksumPanel + system, count(records_.ChecksumTest[system]));
    sbStatusBar.SetPanelText(kIgnoredPanel + system, count(records_.Emptybuffer[system]));

    MenuItem& item = SetupItem(system);
    const std::size_t kept = system == 1 ? kPrimaryCaption : kSecondaryCaption;
    std::string caption(FirstCharacters(item.Text(), kept));
    caption += setup.Name.empty() ? std::string(kNotDefined) : AsCaption(setup.Name);
    item.SetText(caption);
  }
}

bool frmMain::AnyViewVisible() const {
  const auto& windows = OwningDesktop().Windows();
  return std::any_of(windows.begin(), windows.end(), [](const Window* window) {
    return window->Style() == WindowStyle::Child && window->Index() != 0 && window->Visible();
  });
}

const ToolBar::Button& frmMain::PlayOrPause() const {
  if (!records_.Offline()) {
    return tbOnline.ButtonAt(records_.OnlinePaused ? kStartButton : kPauseButton);
  }
  const ToolBar::Button& pause = tbOffline.ButtonAt(kReplayPause);
  return pause.enabled ? pause : tbOffline.ButtonAt(kReplayPlay);
}

void frmMain::PressPlayOrPause() {
  (records_.Offline() ? tbOffline : tbOnline).Click(PlayOrPause().key);
}
void frmMain::PressStep() {
  if (records_.Offline()) tbOffline.Click(tbOffline.ButtonAt(kReplayStep).key);
}
void frmMain::PressStop() {
  if (records_.Offline()) tbOffline.Click(tbOffline.ButtonAt(kReplayStop).key);
}

void frmMain::Refresh() {
  const auto usable = [this](int button) {
    return records_.Offline() && tbOffline.ButtonAt(button).enabled;
  };
  mnuToolsPlay.SetEnabled(PlayOrPause().enabled);
  mnuToolsStep.SetEnabled(usable(kReplayStep));
  mnuToolsStop.SetEnabled(usable(kReplayStop));
  const bool defined = records_.CommSetups[1].Enabled;
  lblHint.SetVisible(!defined || !AnyViewVisible());
  const WhyNothing why = lblHint.Visible() && onAskWhy ? onAskWhy() : WhyNothing();
  lblReason.SetText(why.text);
  lblReason.SetVisible(!why.text.empty());
  cmdReason.SetText(why.Button());
  cmdReason.SetVisible(!why.text.empty());
  if (!defined) {
    lblHint.SetText(kNoSystem);
  } else {
    lblHint.SetText(records_.Offline() ? kNoViewOffline : kNoViewOnline);
  }
}

}  // namespace fathomline
