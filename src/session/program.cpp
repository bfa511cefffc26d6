#include "session/program.h"

#include <utility>

#include "toolkit/no_links.h"

namespace fathomline {

// The views that follow the sentences.
class Program::Views : public MessageViews {
 public:
  explicit Views(Program& program) : program_(program) {}

  void UpdateNumerics(int system, SentenceType type) override {
    program_.windows.numerics[system]->UpdateNumerics(type);
  }

  void UpdateARPATargets(int system, SentenceType type) override {
    program_.windows.arpaTargets[system]->UpdateARPATargets(type);
  }

  void UpdateAISTargets(int system, SentenceType type) override {
    program_.windows.aisTargets[system]->UpdateAISTargets(type);
  }

  void UpdateStatisticsView(int system, SentenceType type) override {
    const SystemSetup& open = program_.engine.records.SystemSetups[system];
    if (open[WindowFlag::Statistics]) {
      program_.windows.statistics[system]->UpdateStatisticsView(type);
    }
    if (open[WindowFlag::StatisticsSNR]) {
      program_.windows.statisticsSNR[system]->UpdateStatisticsView(type);
    }
  }

  void UpdateTimeSeries(int system, SentenceType type) override {
    program_.windows.charts.UpdateTimeSeries(system, type);
  }
  void RestartSeries(int system) override { program_.windows.charts.StartSeriesAfresh(system); }

  void UpdateScatter(int system, SentenceType type) override {
    program_.windows.charts.UpdateScatter(system, type);
  }

  void UpdateSkyplot(int system) override { program_.windows.charts.UpdateSkyplot(system); }

  void UpdateSatelliteTracking(int system) override {
    program_.windows.charts.UpdateSatelliteTracking(system);
  }

 private:
  Program& program_;
};

// What comes into the gate, and who watches it.
class Program::Lines : public LineSink, public LineObservers {
 public:
  explicit Lines(Program& program) : program_(program) {}

  void ProcessSentence(int system, std::string_view line) override {
    program_.engine.watch.Take(system, line, program_.desktop.SliceTime());
    program_.session.trial.TakeLine(system, line);
    if (listener == nullptr) {
      program_.engine.pipeline.ProcessSentence(system, line);
      return;
    }
    struct Done {
      ~Done() { listener->LineDone(); }
      LineListener* listener;
    } const done{listener};
    program_.engine.pipeline.ProcessSentence(system, line);
  }

  void BeginReplay() override {
    program_.engine.driver.BeginReplay();
    program_.session.trial.BeginReplay();
  }

  void ShowInput(int system, std::string_view text) override {
    program_.windows.monitors[system]->ShowInput(text);
  }

  void ShowIgnoredMessages(int system, std::int32_t count) override {
    program_.windows.main.ShowIgnoredMessages(system, count);
  }

  void MonitorLine(int system, std::string_view line) override {
    program_.windows.monitors[system]->MonitorLine(line);
  }

  void LogRawData(int system, std::string_view line) override {
    program_.session.rawLog.LogRawData(system, line);
  }

  void ShowChecksumErrors(int system, std::int32_t count) override {
    program_.windows.main.ShowChecksumErrors(system, count);
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
      engine(surroundings.clock, desktop, *views_, *lines_),
      windows({desktop, engine.records, surroundings.settings}, engine, surroundings.clock,
              [this](int system) { return session.input.TcpState(system); }),
      session({engine, desktop, windows, surroundings.clock, surroundings.settings, links_, *lines_,
               surroundings.endProcess}) {
  windows.main.tbOffline.onClick = [this](const std::string& key) { session.replay.Press(key); };
  desktop.onFault = [this](const Fault& fault, Window* window) { HandleFault(fault, window); };
}

Program::~Program() = default;

void Program::UseProgramFolder(std::string folder) {
  MakeProgramFolder(std::move(folder), engine.records);
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
        session.errorLog.WriteErrorLog(fault);
        logFailureTold_ = false;
      },
      [&](const Fault& cause) {
        if (std::exchange(logFailureTold_, true)) return;
        desktop.Ask({.text = "The error log cannot be written: " + cause.Description() +
                             "\r\nThe fault was: " + fault.Description(),
                     .icon = BoxIcon::Exclamation});
      });
}

void Program::Listen(LineListener* listener) {
  lines_->listener = listener;
}

}  // namespace fathomline
