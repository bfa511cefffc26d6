// frmMain: the frame in which all views stand, with its menus, tool bars and status bar.
//
// It holds what is to be seen; MainMenu gives the entries their work and StartUp what happens when
// the window opens and closes.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/look.h"
#include "base/settings.h"
#include "records/records.h"
#include "toolkit/bars.h"
#include "toolkit/controls.h"
#include "toolkit/timer.h"
#include "toolkit/window.h"
#include "windows/why_nothing.h"

namespace fathomline {

inline constexpr const char* kVersionText = "v 3.02a - 26 Sep 2019 ";

// How many times as fast as it was made a recording is replayed; 0: as fast as possible.
struct ReplaySpeed {
  int times;
  std::string_view caption;
};
inline constexpr auto kReplaySpeeds = std::to_array<ReplaySpeed>(
    {{0, "As Fast as &Possible"}, {1, "&1x"}, {2, "&2x"}, {10, "1&0x"}, {60, "&60x"}});

class frmMain : public Window {
 public:
  frmMain(Desktop& desktop, const Records& records, const Clock& clock, SettingsStore& settings);

  // In the menu, the latest first.
  static constexpr int kRecentRecordings = 8;

  // Panels of the status bar.
  static constexpr int kModePanel = 1;
  static constexpr int kLoggingPanel = 2;
  static constexpr int kChecksumPanel = 3;  // of system n: kChecksumPanel + n
  static constexpr int kIgnoredPanel = 8;   // likewise
  static constexpr int kClockPanel = 13;
  static constexpr int kSourcePanel = 13;  // of system n: kSourcePanel + n

  void ShowChecksumErrors(int system, std::int32_t count);
  void ShowIgnoredMessages(int system, std::int32_t count);
  // The mark of a system's source at the right end of the status bar.
  void ShowSource(int system, std::string_view text, Colour colour, std::string_view toolTip);
  void HideSource(int system);
  void ShowReplaySpeed(int times);
  // Menu checks, tool bars and panel 1, by the mode of the records.
  void ShowMode();
  // The button and panel 2, by the records.
  void ShowLogging();
  // The panels and the menu entry of each system, by the records.
  void ShowSystems();

  // In the title, behind the program's own: what has been opened and is not saved; empty: nothing.
  void ShowUnsaved(std::string_view name);
  // The latest first; as many as the menu has room for.
  void ShowRecentRecordings(const std::vector<std::string>& paths);

  void Refresh() override;

  // The entries of the menu Tools that press a button of the tool bar in use.
  void PressPlayOrPause();
  void PressStep();
  void PressStop();

  // Fills those menus that show more than their design.
  std::function<void()> onMenus;
  // What opening does beyond the window itself, what is done before it goes, and when it goes.
  std::function<void()> onOpen;
  std::function<void()> onClosing;
  std::function<void()> onUnload;
  // Run with every second of the clock.
  std::function<void()> onSecond;

  MenuItem mnuFile{*this, "mnuFile", "&File"};
  MenuItem mnuFileNew{mnuFile, "mnuFileNew", "&New"};
  MenuItem mnuFileOpen{mnuFile, "mnuFileOpen", "&Open...", "Ctrl+O"};
  MenuItem mnuFileBar1{mnuFile, "mnuFileBar1", "-"};
  MenuItem mnuFileSave{mnuFile, "mnuFileSave", "&Save", "Ctrl+S"};
  MenuItem mnuFileSaveAs{mnuFile, "mnuFileSaveAs", "Save &As..."};
  MenuItem mnuFileBar2{mnuFile, "mnuFileBar2", "-"};
  MenuItem mnuFilePageSetup{mnuFile, "mnuFilePageSetup", "Page Set&up..."};
  MenuItem mnuFilePrintPreview{mnuFile, "mnuFilePrintPreview", "Print Pre&view"};
  MenuItem mnuFilePrint{mnuFile, "mnuFilePrint", "&Print Report", "Ctrl+P"};
  MenuItem mnuFileBar3{mnuFile, "mnuFileBar3", "-"};
  MenuItem mnuFileMRU{mnuFile, "mnuFileMRU", "&Recent Files"};
  MenuItem mnuFileBar4{mnuFile, "mnuFileBar4", "-"};
  MenuItem mnuFileExit{mnuFile, "mnuFileExit", "E&xit", "Ctrl+Q"};
  MenuItem mnuFileBar5{mnuFile, "mnuFileBar5", "-"};
  MenuItem mnuFileOpenRecording{mnuFile, "mnuFileOpenRecording", "Open Recordin&g...", "Ctrl+R"};
  MenuItem mnuFileRecentRecordings{mnuFile, "mnuFileRecentRecordings", "Recen&t Recordings"};
  ControlArray<MenuItem> mnuFileRecentRecording{mnuFileRecentRecordings, "mnuFileRecentRecording",
                                                1, kRecentRecordings, ""};

  MenuItem mnuMode{*this, "mnuMode", "&Mode"};
  MenuItem mnuModeOnline{mnuMode, "mnuModeOnline", "O&nline"};
  MenuItem mnuModeOffline{mnuMode, "mnuModeOffline", "O&ffline"};

  MenuItem mnuSetup{*this, "mnuSetup", "&Setup"};
  MenuItem mnuSetupPrimarySystem{mnuSetup, "mnuSetupPrimarySystem",
                                 "&Primary System         - not defined"};
  // Systems 2 to 4.
  ControlArray<MenuItem> mnuSetupSystem{mnuSetup, "mnuSetupSystem", 2, kSystems, ""};

  MenuItem mnuWindow{*this, "mnuWindow", "&Window"};
  MenuItem mnuWindowNewWindow{mnuWindow, "mnuWindowNewWindow", "&New Window..."};
  MenuItem mnuWindowBar1{mnuWindow, "mnuWindowBar1", "-"};
  MenuItem mnuWindowCascade{mnuWindow, "mnuWindowCascade", "&Cascade", "Ctrl+1"};
  MenuItem mnuWindowTileHorizontal{mnuWindow, "mnuWindowTileHorizontal", "Tile &Horizontal",
                                   "Ctrl+2"};
  MenuItem mnuWindowTileVertical{mnuWindow, "mnuWindowTileVertical", "Tile &Vertical", "Ctrl+3"};
  MenuItem mnuWindowArrangeIcons{mnuWindow, "mnuWindowArrangeIcons", "&Arrange Icons"};
  MenuItem mnuWindowBar2{mnuWindow, "mnuWindowBar2", "-"};
  MenuItem mnuWindowNext{mnuWindow, "mnuWindowNext", "Ne&xt Window", "Ctrl+F6"};
  MenuItem mnuWindowReopen{mnuWindow, "mnuWindowReopen", "&Reopen Closed Window", "Ctrl+Shift+T"};
  MenuItem mnuWindowLayouts{mnuWindow, "mnuWindowLayouts", "&Layouts..."};

  MenuItem mnuOptions{*this, "mnuOptions", "&Options"};
  MenuItem mnuOptionLatLonFormat{mnuOptions, "mnuOptionLatLonFormat", "&Lat/Lon Format..."};
  MenuItem mnuOptionsSessionInformation{mnuOptions, "mnuOptionsSessionInformation",
                                        "&Session Information..."};
  MenuItem mnuOptionsBinaryStandardIALA{mnuOptions, "mnuOptionsBinaryStandardIALA",
                                        "AIS Binary Messages by &IALA Proposal"};
  MenuItem mnuOptionsBar1{mnuOptions, "mnuOptionsBar1", "-"};
  MenuItem mnuOptionsReconnect{mnuOptions, "mnuOptionsReconnect", "&Reconnect Lost Links"};
  MenuItem mnuOptionsReopen{mnuOptions, "mnuOptionsReopen",
                            "Reopen the &Windows of the Last Session"};
  MenuItem mnuOptionsLook{mnuOptions, "mnuOptionsLook", "L&ook"};
  // In the order of kLookChoices; the one in force is checked.
  ControlArray<MenuItem> mnuOptionsLookChoice{mnuOptionsLook, "mnuOptionsLookChoice", 0,
                                              static_cast<int>(kLookChoices.size()) - 1, ""};

  MenuItem mnuTools{*this, "mnuTools", "&Tools"};
  MenuItem mnuToolsSources{mnuTools, "mnuToolsSources", "&Sources"};
  MenuItem mnuToolsSentenceLog{mnuTools, "mnuToolsSentenceLog", "Sentence &Log"};
  MenuItem mnuToolsSatellites{mnuTools, "mnuToolsSatellites", "Sa&tellites"};
  MenuItem mnuToolsBar1{mnuTools, "mnuToolsBar1", "-"};
  MenuItem mnuToolsTrialReport{mnuTools, "mnuToolsTrialReport", "Trial &Report..."};
  MenuItem mnuToolsKeepSamples{mnuTools, "mnuToolsKeepSamples", "&Keep Samples for a Trial Report"};
  MenuItem mnuToolsBar2{mnuTools, "mnuToolsBar2", "-"};
  MenuItem mnuToolsPlay{mnuTools, "mnuToolsPlay", "&Play or Pause", "F5"};
  MenuItem mnuToolsStep{mnuTools, "mnuToolsStep", "St&ep", "F6"};
  MenuItem mnuToolsStop{mnuTools, "mnuToolsStop", "St&op", "F7"};
  MenuItem mnuToolsReplaySpeed{mnuTools, "mnuToolsReplaySpeed", "Repla&y Speed"};
  // In the order of kReplaySpeeds.
  ControlArray<MenuItem> mnuToolsReplaySpeedOf{mnuToolsReplaySpeed, "mnuToolsReplaySpeedOf", 1,
                                               static_cast<int>(kReplaySpeeds.size()), ""};

  MenuItem mnuHelp{*this, "mnuHelp", "&Help"};
  MenuItem mnuHelpContents{mnuHelp, "mnuHelpContents", "&Contents", "F1"};
  MenuItem mnuHelpSearch{mnuHelp, "mnuHelpSearch", "&Search for Help On..."};
  MenuItem mnuHelpBar1{mnuHelp, "mnuHelpBar1", "-"};
  MenuItem mnuHelpAbout{mnuHelp, "mnuHelpAbout", "&About Fathomline..."};

  ToolBar tbOnline{*this,
                   "tbOnline",
                   {{"START", "START"},
                    {"PAUSE", "PAUSE"},
                    {"RESET ALL", "RESET ALL"},
                    {"Reset Statistics", "Reset Statistics"},
                    {"Reset Graphics", "Reset Graphics"},
                    {"LOG", "LOG On"},
                    {"Connect 1", "Connect System1"}}};
  static constexpr int kStartButton = 1;
  static constexpr int kPauseButton = 2;
  static constexpr int kLogButton = 6;

  ToolBar tbOffline{*this,
                    "tbOffline",
                    {{"PLAY", "PLAY"},
                     {"Step", "Step"},
                     {"PAUSE", "PAUSE", false},
                     {"STOP", "STOP", false},
                     {"Real time", "Real time"},
                     {"QUICK", "QUICK"}}};
  static constexpr int kReplayPlay = 1;
  static constexpr int kReplayStep = 2;
  static constexpr int kReplayPause = 3;
  static constexpr int kReplayStop = 4;

  // Tells what to do next while no view is open.
  Label lblHint{*this, "lblHint"};
  // Tells why nothing would show, and leads to where that can be mended.
  Label lblReason{*this, "lblReason"};
  Button cmdReason{*this, "cmdReason", ""};
  std::function<WhyNothing()> onAskWhy;

  StatusBar sbStatusBar{
      *this,
      "sbStatusBar",
      {"Mode : ONLINE", "Logging : Off", "  Checksum errors :  ", "n/a", "n/a", "n/a", "n/a",
       "Ignored msg : ", "n/a", "n/a", "n/a", "n/a", "", "", "", "", ""},
      kSystems};
  Timer clockTimer{*this, "clockTimer", 1000, true};

 protected:
  void Load() override;
  bool QueryUnload(CloseReason reason) override;
  void Unload() override;

 private:
  MenuItem& SetupItem(int system);
  bool AnyViewVisible() const;
  // The button that "Play or Pause" presses.
  const ToolBar::Button& PlayOrPause() const;
  void ShowClock();

  const Records& records_;
  const Clock& clock_;
  SettingsStore& settings_;
  CloseReason closeReason_ = CloseReason::User;
};

}  // namespace fathomline
