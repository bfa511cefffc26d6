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
#include "analysis/statistics_window.h"
#include "pipeline/error_log.h"
#include "pipeline/main_window.h"
#include "pipeline/records.h"
#include "pipeline/sentence_pipeline.h"
#include "pipeline/session_control.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/settings.h"
#include "sources/offline_replay.h"
#include "sources/offline_status.h"

namespace fathomline {

// What the program finds around it. All of it outlives the program.
struct Surroundings {
  Face& face;
  const Clock& clock;
  SettingsStore& settings;
  // Ends the process at once, where the user does not want to go on after a fault.
  std::function<void()> endProcess;
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

  void Listen(LineListener* listener);

 private:
  class Views;
  class Lines;
  std::unique_ptr<Views> views_;
  std::unique_ptr<Lines> lines_;

 public:
  Records records;
  FileTable files;
  Desktop desktop;
  Statistics statistics;
  AISDecoder ais;
  AISStore targets;
  StatisticsWindows statisticsWindows;
  frmMain mainWindow;
  frmOfflineStatus offlineStatus;
  MessageDriver driver;
  SentencePipeline pipeline;
  SessionReport report;
  SessionControl session;
  ErrorLog errorLog;
  OfflineReplay replay;
};

}  // namespace fathomline
