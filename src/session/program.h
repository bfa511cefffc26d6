// The program: makes all its pieces and plugs them together, in the order of the house.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ais/ais_decoder.h"
#include "ais/target_store.h"
#include "analysis/message_driver.h"
#include "analysis/session_report.h"
#include "analysis/statistics.h"
#include "base/clock.h"
#include "base/files.h"
#include "base/settings.h"
#include "charts/chart_windows.h"
#include "pipeline/sentence_pipeline.h"
#include "records/records.h"
#include "session/error_log.h"
#include "session/main_menu.h"
#include "session/session_control.h"
#include "session/session_setup.h"
#include "session/start_up.h"
#include "setup/setup_dialog.h"
#include "sources/live_input.h"
#include "sources/offline_replay.h"
#include "sources/raw_log.h"
#include "toolkit/desktop.h"
#include "toolkit/links.h"
#include "windows/about_box.h"
#include "windows/ais_extra_info.h"
#include "windows/ais_targets_window.h"
#include "windows/arpa_targets_window.h"
#include "windows/comport_info.h"
#include "windows/coordinate_format.h"
#include "windows/main_window.h"
#include "windows/monitor_window.h"
#include "windows/numerics_window.h"
#include "windows/offline_status.h"
#include "windows/session_text.h"
#include "windows/statistics_snr_window.h"
#include "windows/statistics_window.h"
#include "windows/view_selection.h"

namespace fathomline {

// What the program finds around it. All of it outlives the program.
struct Surroundings {
  Face& face;
  const Clock& clock;
  SettingsStore& settings;
  // Ends the process at once, where the user does not want to go on after a fault.
  std::function<void()> endProcess;
  // Where live data come from; none: nothing ever arrives.
  Links* links = nullptr;
};

// Called behind each line that has gone through the gate, whatever became of it.
class LineListener {
 public:
  virtual ~LineListener() = default;
  virtual void LineDone() = 0;
};

class Program {
 public:
  explicit Program(const Surroundings& surroundings);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The folder of the program's files, made with all above it if need be. Raises the system's
  // fault where that cannot be done.
  void UseProgramFolder(std::string folder);

  // Opens every window of a system whose sentences are analysed.
  void OpenAnalysedWindows(int system);
  // Opens a view of a system, or brings it forward.
  void OpenView(ViewKind kind, int system);

  void Listen(LineListener* listener);

 private:
  class Views;
  class Lines;
  std::unique_ptr<Views> views_;
  std::unique_ptr<Lines> lines_;
  std::unique_ptr<Links> noLinks_;
  Links& links_;
  bool logFailureTold_ = false;

  void MakeViews(SettingsStore& settings);
  void HandleFault(const Fault& fault, const Window* window);

 public:
  Records records;
  FileTable files;
  Desktop desktop;
  Statistics statistics;
  AISDecoder ais;
  AISStore targets;
  NumericsWindows numericsWindows;
  StatisticsWindows statisticsWindows;
  StatisticsSNRWindows statisticsSNRWindows;
  SystemWindows<frmNMEA> monitorWindows;
  frmAISExtraInfo aisExtraInfo;
  AISTargetsWindows aisTargetsWindows;
  ARPATargetsWindows arpaTargetsWindows;
  ChartWindows charts;
  frmMain mainWindow;
  frmOfflineStatus offlineStatus;
  frmNewWindow newWindow;
  frmDocument document;
  frmGeoFormat geoFormat;
  frmComportInfo comportInfo;
  frmAbout about;
  MessageDriver driver;
  SentencePipeline pipeline;
  SessionReport report;
  ErrorLog errorLog;
  RawLog rawLog;
  LiveInput input;
  SessionControl session;
  SessionSetup sessionSetup;
  frmSetup setupDialog;
  OfflineReplay replay;
  StartUp startUp;
  MainMenu menu;
};

}  // namespace fathomline
