#include "session/program.h"

#include <utility>

#include "toolkit/no_links.h"

namespace fathomline {

// The views that follow the sentences.
class Program::Views : public MessageViews {
 public:
  explicit Views(Program& program) : program_(program) {}

  void UpdateNumerics(int system, SentenceType type) override {
    program_.numericsWindows[system]->UpdateNumerics(type);
  }

  void UpdateARPATargets(int system, SentenceType type) override {
    program_.arpaTargetsWindows[system]->UpdateARPATargets(type);
  }

  void UpdateAISTargets(int system, SentenceType type) override {
    program_.aisTargetsWindows[system]->UpdateAISTargets(type);
  }

  void UpdateStatisticsView(int system, SentenceType type) override {
    const SystemSetup& open = program_.records.SystemSetups[system];
    if (open[WindowFlag::Statistics]) {
      program_.statisticsWindows[system]->UpdateStatisticsView(type);
    }
    if (open[WindowFlag::StatisticsSNR]) {
      program_.statisticsSNRWindows[system]->UpdateStatisticsView(type);
    }
  }

  void UpdateTimeSeries(int system, SentenceType type) override {
    program_.charts.UpdateTimeSeries(system, type);
  }

  void UpdateScatter(int system, SentenceType type) override {
    program_.charts.UpdateScatter(system, type);
  }

  void UpdateSkyplot(int system) override { program_.charts.UpdateSkyplot(system); }

  void UpdateSatelliteTracking(int system) override {
    program_.charts.UpdateSatelliteTracking(system);
  }

 private:
  Program& program_;
};

// What comes into the gate, and who watches it.
class Program::Lines : public LineSink, public LineObservers {
 public:
  explicit Lines(Program& program) : program_(program) {}

  void ProcessSentence(int system, std::string_view line) override {
    if (listener == nullptr) {
      program_.pipeline.ProcessSentence(system, line);
      return;
    }
    struct Done {
      ~Done() { listener->LineDone(); }
      LineListener* listener;
    } const done{listener};
    program_.pipeline.ProcessSentence(system, line);
  }

  void ShowInput(int system, std::string_view text) override {
    program_.monitorWindows[system]->ShowInput(text);
  }

  void ShowIgnoredMessages(int system, std::int32_t count) override {
    program_.mainWindow.ShowIgnoredMessages(system, count);
  }

  void MonitorLine(int system, std::string_view line) override {
    program_.monitorWindows[system]->MonitorLine(line);
  }

  void LogRawData(int system, std::string_view line) override {
    program_.rawLog.LogRawData(system, line);
  }

  void ShowChecksumErrors(int system, std::int32_t count) override {
    program_.mainWindow.ShowChecksumErrors(system, count);
  }

  LineListener* listener = nullptr;

 private:
  Program& program_;
};

Program::Program(const Surroundings& surroundings)
    : views_(std::make_unique<Views>(*this)),
      lines_(std::make_unique<Lines>(*this)),
      noLinks_(surroundings.links == nullptr ? std::make_unique<NoLinks>() : nullptr),
      links_(surroundings.links == nullptr ? *noLinks_ : *surroundings.links),
      desktop(surroundings.face),
      statistics(records, surroundings.clock),
      ais(surroundings.clock),
      targets(desktop),
      aisExtraInfo(desktop, records, targets),
      charts({desktop, records, surroundings.settings}, statistics, surroundings.clock),
      mainWindow(desktop, records, surroundings.clock, surroundings.settings),
      offlineStatus(desktop, records, surroundings.clock),
      newWindow(desktop, records, [this](ViewKind kind, int system) { OpenView(kind, system); }),
      document(desktop, records),
      geoFormat(desktop, records),
      comportInfo(desktop, surroundings.settings),
      about(desktop),
      driver(records, statistics, surroundings.clock, desktop, *views_),
      pipeline(records, ais, targets, driver, *lines_, desktop),
      report(records, statistics, files, surroundings.clock, desktop),
      errorLog(records, files, surroundings.clock, desktop, surroundings.endProcess),
      rawLog(records, files, surroundings.clock, desktop),
      input(records, links_, desktop, *lines_, errorLog),
      session(records, statistics, desktop, input, rawLog,
              {mainWindow, offlineStatus, setupDialog, numericsWindows, statisticsWindows,
               statisticsSNRWindows, charts, arpaTargetsWindows, aisTargetsWindows}),
      sessionSetup(records, links_, input, session,
                   {mainWindow, offlineStatus, monitorWindows, comportInfo}),
      setupDialog(desktop, records, statistics, surroundings.clock, links_, sessionSetup),
      replay(records, files, surroundings.clock, desktop, mainWindow.tbOffline, offlineStatus,
             *lines_, session, errorLog),
      startUp(records, statistics, desktop, surroundings.clock, surroundings.settings, mainWindow,
              session, input, ais, setupDialog),
      menu(records, desktop, surroundings.settings, mainWindow, session, startUp, report, ais,
           {newWindow, document, geoFormat, about, setupDialog}) {
  MakeViews(surroundings.settings);
  mainWindow.tbOffline.onClick = [this](const std::string& key) { replay.Press(key); };
  desktop.onFault = [this](const Fault& fault, Window* window) { HandleFault(fault, window); };
}

Program::~Program() = default;

void Program::MakeViews(SettingsStore& settings) {
  const ViewSurroundings around{desktop, records, settings};
  for (int system = 1; system <= kSystems; ++system) {
    numericsWindows[system] = std::make_unique<frmNumerics>(around, system);
    statisticsWindows[system] = std::make_unique<frmStatistics>(around, system, statistics);
    statisticsSNRWindows[system] = std::make_unique<frmStatisticsSNR>(around, system, statistics);
    monitorWindows[system] = std::make_unique<frmNMEA>(
        around, system, [this](int asked) { return input.TcpState(asked); });
    aisTargetsWindows[system] =
        std::make_unique<frmAISTargets>(around, system, ais, targets, aisExtraInfo);
    arpaTargetsWindows[system] = std::make_unique<frmARPATargets>(around, system);
  }
}

void Program::UseProgramFolder(std::string folder) {
  MakeProgramFolder(std::move(folder), records);
}

// A fault of a dialog is its user's; any other belongs into the error log. Where that cannot be
// written, one box says so until it can again.
void Program::HandleFault(const Fault& fault, const Window* window) {
  if (window != nullptr && window->Style() == WindowStyle::Dialog) {
    desktop.Ask({.text = fault.Description(), .icon = BoxIcon::Exclamation});
    return;
  }
  ResumeNext(
      [&] {
        errorLog.WriteErrorLog(fault);
        logFailureTold_ = false;
      },
      [&](const Fault& cause) {
        if (std::exchange(logFailureTold_, true)) return;
        desktop.Ask({.text = "The error log cannot be written: " + cause.Description() +
                             "\r\nThe fault was: " + fault.Description(),
                     .icon = BoxIcon::Exclamation});
      });
}

void Program::OpenAnalysedWindows(int system) {
  OpenView(ViewKind::Numerics, system);
  OpenView(ViewKind::Statistics, system);
  charts.OpenAnalysed(system);
  const CommSetup& setup = records.CommSetups[system];
  if (setup.AnalyseTTM) OpenView(ViewKind::ARPATargets, system);
  if (setup.AnalyseVDM) OpenView(ViewKind::AISTargets, system);
}

void Program::OpenView(ViewKind kind, int system) {
  switch (kind) {
    case ViewKind::Numerics:
      numericsWindows[system]->ShowView();
      break;
    case ViewKind::Statistics:
      statisticsWindows[system]->ShowView();
      if (records.CommSetups[system].AnalyseGSV) statisticsSNRWindows[system]->ShowView();
      break;
    case ViewKind::TimeSeries:
      charts.OpenTimeSeries(system);
      break;
    case ViewKind::Scatter:
      charts.OpenScatter(system);
      break;
    case ViewKind::Skyplot:
      charts.OpenSkyplot(system);
      break;
    case ViewKind::ARPATargets:
      arpaTargetsWindows[system]->ShowView();
      break;
    case ViewKind::AISTargets:
      aisTargetsWindows[system]->ShowView();
      break;
    case ViewKind::NMEA:
      monitorWindows[system]->ShowView();
      break;
    case ViewKind::SNRGPS:
    case ViewKind::SNRSBAS:
    case ViewKind::SNRGLONASS:
    case ViewKind::SNRBeiDou:
    case ViewKind::SNRGalileo:
      charts.OpenSNR(system, 1 + static_cast<int>(kind) - static_cast<int>(ViewKind::SNRGPS));
      break;
  }
}

void Program::Listen(LineListener* listener) {
  lines_->listener = listener;
}

}  // namespace fathomline
