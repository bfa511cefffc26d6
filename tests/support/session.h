#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "pipeline/program.h"
#include "platform/files.h"
#include "platform/headless/headless_links.h"
#include "platform/headless/scripted_face.h"
#include "setup/setup_file.h"
#include "support/temporary_folder.h"

namespace fathomline {

inline constexpr const char* kModeQuestion =
    "Are you sure you want to change mode ? All statistics and timeseries wil be reset.";

// A user's machine on which the program is started, ended and started again, with a frozen clock,
// scripted answers and links of our own.
class Session {
 public:
  ~Session() { EXPECT_TRUE(face.Exhausted()) << "a box, file or action was expected"; }

  // Writes the setup file that the next start finds.
  void Prepare(const std::function<void(Records&)>& fill) {
    Records records;
    records.SetDefaultSetup();
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].Name = "Bridge";
    fill(records);
    folder.Write(kSetupFileName, WriteSetup(records));
  }

  bool Start(StartOptions options = {}) {
    options.programFolder = folder.Path();
    program.reset();
    program = std::make_unique<Program>(
        Surroundings{face, clock, settings, [this] { ended = true; }, &links});
    return program->startUp.Start(options);
  }

  Records& records() { return program->records; }
  frmMain& mainWindow() { return program->mainWindow; }
  const SystemSetup& Flags(int system) { return program->records.SystemSetups[system]; }

  // Lets the links deliver what has arrived.
  void Deliver() { face.Advance(std::chrono::milliseconds(50)); }

  static constexpr DateTime kNow{46024.127835648148};  // 2 January 2026, 03:04:05

  TemporaryFolder folder;
  ScriptedFace face;
  FrozenClock clock{kNow};
  SettingsStore settings;
  HeadlessLinks links;
  bool ended = false;
  std::unique_ptr<Program> program;
};

}  // namespace fathomline
