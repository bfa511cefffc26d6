// The work behind the entries of the main window's menus and behind its online tool bar.
#pragma once

#include "ais/ais_decoder.h"
#include "analysis/session_report.h"
#include "pipeline/about_box.h"
#include "pipeline/main_window.h"
#include "pipeline/records.h"
#include "pipeline/session_control.h"
#include "pipeline/start_up.h"
#include "platform/desktop.h"
#include "platform/settings.h"
#include "setup/coordinate_format.h"
#include "setup/session_text.h"
#include "setup/setup_dialog.h"
#include "setup/view_selection.h"

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
