// The work behind the entries of the main window's menus and behind its online tool bar.
#pragma once

#include "ais/ais_decoder.h"
#include "analysis/session_report.h"
#include "base/settings.h"
#include "records/records.h"
#include "session/session_control.h"
#include "session/start_up.h"
#include "setup/setup_dialog.h"
#include "toolkit/desktop.h"
#include "windows/about_box.h"
#include "windows/coordinate_format.h"
#include "windows/main_window.h"
#include "windows/session_text.h"
#include "windows/view_selection.h"

namespace fathomline {

class MainMenu {
 public:
  struct Dialogs {
    frmNewWindow& newWindow;
    frmDocument& document;
    frmGeoFormat& geoFormat;
    frmAbout& about;
    frmSetup& setup;
  };

  MainMenu(Records& records, Desktop& desktop, SettingsStore& settings, frmMain& mainWindow,
           SessionControl& session, StartUp& startUp, SessionReport& report, AISDecoder& ais,
           const Dialogs& dialogs);

 private:
  void PlugFileMenu();
  void PlugSetupMenu();
  void PlugWindowMenu();
  void PlugOptionsAndHelp();

  void Open();
  void Save();
  void SaveAs();
  void WriteSetup(const std::string& path);
  void Print();
  void OpenSetupDialog(int system);
  void NewWindow();
  void ToggleBinaryStandard();
  void Help(HelpStart start);

  Records& records_;
  Desktop& desktop_;
  SettingsStore& settings_;
  frmMain& mainWindow_;
  SessionControl& session_;
  StartUp& startUp_;
  SessionReport& report_;
  AISDecoder& ais_;
  Dialogs dialogs_;
  bool printing_ = false;
};

}  // namespace fathomline
