#include "session/main_menu.h"

#include <string>

#include "setup/setup_file.h"
#include "setup/setup_values.h"
#include "toolkit/window_places.h"

namespace fathomline {
namespace {

constexpr const char* kSetupFilter = "Fathomline setup files (*.ini)|*.ini";
constexpr const char* kSetupExtension = ".ini";
constexpr std::string_view kLookKey = "Look";
constexpr const char* kNoHelp =
    "Unable to display Help Contents. There is no Help associated with this project.";

}  // namespace

MainMenu::MainMenu(Engine& engine, Desktop& desktop, SettingsStore& settings, Windows& windows,
                   frmSetup& setupDialog, SessionControl& session, StartUp& startUp)
    : records_(engine.records),
      desktop_(desktop),
      settings_(settings),
      mainWindow_(windows.main),
      session_(session),
      startUp_(startUp),
      report_(engine.report),
      ais_(engine.ais),
      windows_(windows),
      setupDialog_(setupDialog) {
  PlugFileMenu();
  mainWindow_.mnuModeOnline.onClick = [this] { session_.ClickModeOnline(); };
  mainWindow_.mnuModeOffline.onClick = [this] { session_.ClickModeOffline(); };
  PlugSetupMenu();
  PlugWindowMenu();
  PlugOptionsAndHelp();
  mainWindow_.tbOnline.onClick = [this](const std::string& key) { session_.Press(key); };
}

void MainMenu::PlugFileMenu() {
  mainWindow_.mnuFileNew.onClick = [this] { startUp_.NewSetup(); };
  mainWindow_.mnuFileOpen.onClick = [this] { Open(); };
  mainWindow_.mnuFileSave.onClick = [this] { Save(); };
  mainWindow_.mnuFileSaveAs.onClick = [this] { SaveAs(); };
  mainWindow_.mnuFilePageSetup.onClick = [this] { desktop_.ShowPageSetup(); };
  mainWindow_.mnuFilePrintPreview.onClick = [this] {
    desktop_.Say("Print Preview Code goes here!");
  };
  mainWindow_.mnuFilePrint.onClick = [this] { Print(); };
  mainWindow_.mnuFileMRU.onClick = [this] { desktop_.Say("MRU Code goes here!"); };
  mainWindow_.mnuFileExit.onClick = [this] { mainWindow_.Close(CloseReason::User); };
}

void MainMenu::PlugSetupMenu() {
  mainWindow_.mnuSetupPrimarySystem.onClick = [this] { OpenSetupDialog(1); };
  for (int system = 2; system <= kSystems; ++system) {
    mainWindow_.mnuSetupSystem(system).onClick = [this, system] { OpenSetupDialog(system); };
  }
}

void MainMenu::PlugWindowMenu() {
  mainWindow_.mnuWindowNewWindow.onClick = [this] { NewWindow(); };
  const auto arrange = [this](MenuItem& item, Arrangement arrangement) {
    item.onClick = [this, arrangement] { desktop_.Arrange(arrangement); };
  };
  arrange(mainWindow_.mnuWindowCascade, Arrangement::Cascade);
  arrange(mainWindow_.mnuWindowTileHorizontal, Arrangement::TileHorizontally);
  arrange(mainWindow_.mnuWindowTileVertical, Arrangement::TileVertically);
  arrange(mainWindow_.mnuWindowArrangeIcons, Arrangement::Icons);
  mainWindow_.mnuWindowNext.onClick = [this] { desktop_.RaiseNext(); };
  mainWindow_.mnuToolsPlay.onClick = [this] { mainWindow_.PressPlayOrPause(); };
  mainWindow_.mnuToolsStep.onClick = [this] { mainWindow_.PressStep(); };
  mainWindow_.mnuToolsStop.onClick = [this] { mainWindow_.PressStop(); };
}

void MainMenu::PlugOptionsAndHelp() {
  mainWindow_.mnuOptionLatLonFormat.onClick = [this] { windows_.geoFormat.Show(); };
  mainWindow_.mnuOptionsSessionInformation.onClick = [this] { windows_.document.Show(); };
  mainWindow_.mnuOptionsBinaryStandardIALA.onClick = [this] { ToggleBinaryStandard(); };
  for (std::size_t i = 0; i < kLookChoices.size(); ++i) {
    MenuItem& item = mainWindow_.mnuOptionsLookChoice(static_cast<int>(i));
    item.SetText(kLookChoices[i].caption);
    item.onClick = [this, i] {
      settings_.Set(kSettingsSection, kLookKey, kLookChoices[i].key);
      ShowLook();
    };
  }
  ShowLook();
  mainWindow_.mnuHelpContents.onClick = [this] { Help(HelpStart::Contents); };
  mainWindow_.mnuHelpSearch.onClick = [this] { Help(HelpStart::Search); };
  mainWindow_.mnuHelpAbout.onClick = [this] { windows_.about.Show(); };
}

void MainMenu::Open() {
  const auto path = desktop_.ChooseFile({.title = "Open Setup File",
                                         .filter = kSetupFilter,
                                         .defaultExtension = kSetupExtension,
                                         .folder = records_.ProgramFolder});
  if (path && !startUp_.OpenSetup(*path)) desktop_.Say("File " + *path + " do not exist.");
}

// The fault goes on to the error log; whoever saves should not learn of it there alone.
void MainMenu::WriteSetup(const std::string& path) {
  try {
    ExpectStorable();
    WriteSetupFile(path, records_);
  } catch (const Fault& fault) {
    desktop_.Ask({.text = "Setup not saved. " + fault.Description(), .icon = BoxIcon::Exclamation});
    throw;
  }
  desktop_.Say("Setup saved as " + path);
}

void MainMenu::Save() {
  WriteSetup(records_.ProgramFolder + std::string(kSetupFileName));
  startUp_.KeepPassing();
}

void MainMenu::SaveAs() {
  const auto path = desktop_.ChooseFile({.title = "Save Setup As",
                                         .filter = kSetupFilter,
                                         .defaultExtension = kSetupExtension,
                                         .folder = records_.ProgramFolder,
                                         .save = true});
  if (path) WriteSetup(*path);
}

// The name of a recording that was opened need not be one that the file can hold.
void MainMenu::ExpectStorable() const {
  for (const CommSetup& setup : records_.CommSetups) {
    if (CanBeStored(setup.OfflineFile)) continue;
    throw Fault(FaultNumber::PathAccess,
                setup.OfflineFile + " has a character that the setup file cannot hold");
  }
}

void MainMenu::Print() {
  if (printing_) return;
  const OnStack guard(printing_);
  if (!records_.SessionInfo.empty()) {
    const Answer answer = desktop_.Ask(
        {.text = "Session info : \r\n" + records_.SessionInfo + "\r\n Do you wan't to edit?",
         .icon = BoxIcon::Question,
         .buttons = BoxButtons::YesNo});
    if (answer == Answer::Yes) {
      windows_.document.Show();
      desktop_.RunUntil([this] { return !windows_.document.Visible(); });
      if (desktop_.Quitting()) return;
    }
  }
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.CommSetups[system].Enabled) report_.Print_Report(system);
  }
}

void MainMenu::OpenSetupDialog(int system) {
  if (setupDialog_.Loaded()) {
    desktop_.Say("Only one system setup window at the time can be opened");
  } else {
    setupDialog_.Open(system);
  }
}

void MainMenu::NewWindow() {
  if (records_.CommSetups[1].Enabled) {
    windows_.newWindow.Show();
  } else {
    desktop_.Say("No primary system are defined. Go to Setup first !");
  }
}

void MainMenu::ToggleBinaryStandard() {
  const bool iala = !ais_.BinaryStandardIALA();
  ais_.SetBinaryStandardIALA(iala);
  mainWindow_.mnuOptionsBinaryStandardIALA.SetChecked(iala);
  settings_.Set(kSettingsSection, kBinaryStandardIALA, iala ? 1 : 0);
}

void MainMenu::ShowLook() {
  const std::string chosen = settings_.Get(kSettingsSection, kLookKey, "");
  std::size_t look = 0;
  for (std::size_t i = 0; i < kLookChoices.size(); ++i) {
    if (kLookChoices[i].key == chosen) look = i;
  }
  for (std::size_t i = 0; i < kLookChoices.size(); ++i) {
    mainWindow_.mnuOptionsLookChoice(static_cast<int>(i)).SetChecked(i == look);
  }
  desktop_.SetLook(kLookChoices[look].choice);
}

void MainMenu::Help(HelpStart start) {
  if (!desktop_.ShowHelp(start)) desktop_.Say(kNoHelp);
}

}  // namespace fathomline
