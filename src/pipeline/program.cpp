#include "pipeline/program.h"

#include <filesystem>
#include <system_error>

namespace fathomline {

// The views that follow the sentences.
class Program::Views : public MessageViews {
 public:
  explicit Views(Program& program) : program_(program) {}

  void UpdateStatisticsView(int system, SentenceType type) override {
    program_.statisticsWindows[system]->UpdateStatisticsView(type);
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
      desktop(surroundings.face),
      statistics(records, surroundings.clock),
      ais(surroundings.clock),
      targets(desktop),
      mainWindow(desktop),
      offlineStatus(desktop, records, surroundings.clock),
      driver(records, statistics, surroundings.clock, desktop, *views_),
      pipeline(records, ais, targets, driver, *lines_, desktop),
      report(records, statistics, files, surroundings.clock, desktop),
      session(records, statistics, statisticsWindows),
      errorLog(records, files, surroundings.clock, desktop, surroundings.endProcess),
      replay(records, files, surroundings.clock, desktop, mainWindow.tbOffline, offlineStatus,
             *lines_, session, errorLog) {
  for (int system = 1; system <= kSystems; ++system) {
    statisticsWindows[system] = std::make_unique<frmStatistics>(desktop, system, records,
                                                                statistics, surroundings.settings);
  }
  mainWindow.tbOffline.onClick = [this](const std::string& key) { replay.Press(key); };
}

Program::~Program() = default;

void Program::UseProgramFolder(std::string folder) {
  if (!folder.ends_with('/')) folder.push_back('/');
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) Raise(FaultNumber::PathAccess, error.message() + ": " + folder);
  records.ProgramFolder = std::move(folder);
}

void Program::OpenAnalysedWindows(int system) {
  statisticsWindows[system]->Show();
}

void Program::Listen(LineListener* listener) {
  lines_->listener = listener;
}

}  // namespace fathomline
