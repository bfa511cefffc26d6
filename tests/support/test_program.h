#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>

#include "session/program.h"
#include "support/scripted_face.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {

// A user's machine: a folder of its own, a frozen clock and scripted answers.
struct TestMachine {
  ~TestMachine() { EXPECT_TRUE(face.Exhausted()) << "a box, file or action was expected"; }

  static constexpr DateTime kNow{46024.127835648148};  // 2 January 2026, 03:04:05

  TemporaryFolder folder;
  ScriptedFace face;
  FrozenClock clock{kNow};
  SettingsStore settings;
  bool ended = false;
};

// The whole program, wired and not started.
class TestProgram : public TestMachine {
 public:
  TestProgram() {
    program.UseProgramFolder(folder.Path());
    records.SetDefaultSetup();
    records.CoordinateDecimals = 4;
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].Name = "DGPS";
  }

  void Analyse(std::initializer_list<std::string_view> types, int system = 1) {
    MessageList& list = records.MessagesToAnalyse[system];
    list = {};
    std::size_t row = 0;
    for (const std::string_view type : types) list[row++] = type;
    records.SetMessageFlags(system);
  }

  // A sentence without its "$" and checksum.
  void Feed(std::string_view body, int system = 1) {
    program.engine.pipeline.ProcessSentence(system, Sentence(body));
  }

  Program program{{face, clock, settings, [this] { ended = true; }}};
  Records& records = program.engine.records;
};

}  // namespace fathomline
