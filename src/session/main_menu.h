// The work behind the entries of the main window's menus and behind its online tool bar.
#pragma once

#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/session_control.h"
#include "session/start_up.h"
#include "session/windows.h"
#include "setup/setup_dialog.h"
#include "toolkit/desktop.h"

namespace fathomline {

class MainMenu {
 public:
  MainMenu(Engine& engine, Desktop& desktop, SettingsStore& settings, Windows& windows,
           frmSetup& setupDialog, SessionControl& session, StartUp& startUp);

 private:
  void PlugFileMenu();
  void PlugSetupMenu();
  void PlugWindowMenu();
  void PlugOptionsAndHelp();

  void Open();
  void Save();
  void SaveAs();
  void WriteSetup(const std::string& path);
  void ExpectStorable() const;
  void Print();
  void OpenSetupDialog(int system);
  void NewWindow();
  void ToggleBinaryStandard();
  void ShowLook();
  void Help(HelpStart start);

  Records& records_;
  Desktop& desktop_;
  SettingsStore& settings_;
  frmMain& mainWindow_;
  SessionControl& session_;
  StartUp& startUp_;
  SessionReport& report_;
  AISDecoder& ais_;
  Windows& windows_;
  frmSetup& setupDialog_;
  bool printing_ = false;
};

}  // namespace fathomline
