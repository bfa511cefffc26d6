#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/files.h"
#include "setup/setup_file.h"
#include "support/headless_links.h"
#include "support/test_program.h"

namespace fathomline {

inline constexpr const char* kModeQuestion =
    "Are you sure you want to change mode ? All statistics and timeseries wil be reset.";

// The program as its user has it: started, ended and started again, with links of our own.
class Session : public TestMachine {
 public:
  // Writes the setup file that the next start finds.
  void Prepare(const std::function<void(Records&)>& fill) {
    folder.Write(kSetupFileName, SetupOf(fill));
  }
  static std::string SetupOf(const std::function<void(Records&)>& fill) {
    Records records;
    records.SetDefaultSetup();
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].Name = "Bridge";
    fill(records);
    return WriteSetup(records);
  }

  bool Start(StartOptions options = {}) {
    options.programFolder = folder.Path();
    program.reset();
    program = std::make_unique<Program>(
        Surroundings{face, clock, settings, [this] { ended = true; }, &links});
    return program->session.startUp.Start(options);
  }

  Records& records() { return program->engine.records; }
  frmMain& mainWindow() { return program->windows.main; }
  const SystemSetup& Flags(int system) { return program->engine.records.SystemSetups[system]; }

  // The views that are shown, such as "frmNumerics-1", the one in front last.
  std::vector<std::string> Views() {
    std::vector<Window*> windows = program->desktop.Windows();
    std::erase_if(windows, [](const Window* w) { return !w->Visible() || w->Index() == 0; });
    std::sort(windows.begin(), windows.end(),
              [](const Window* a, const Window* b) { return a->FrontOrder() < b->FrontOrder(); });
    std::vector<std::string> names;
    for (const Window* window : windows) names.push_back(window->FullName());
    return names;
  }

  // Lets the links deliver what has arrived.
  void Deliver() { face.Advance(std::chrono::milliseconds(50)); }
  // Lets the replay run to its end.
  void RunToTheEnd() {
    program->desktop.RunUntil([this] { return !records().OfflineRunning; });
  }

  HeadlessLinks links;
  std::unique_ptr<Program> program;
};

}  // namespace fathomline
