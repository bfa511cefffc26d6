#pragma once

#include <algorithm>
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
    std::copy_n(types.begin(), std::min(types.size(), list.size()), list.begin());
    records.SetMessageFlags(system);
    // A test may want more of them at once than a setup can hold.
    for (const std::string_view type : types) {
      records.CommSetups[system].*FindAnalyseFlag(SentenceTypeOf(type))->flag = true;
    }
  }

  // A sentence without its "$" and checksum.
  void Feed(std::string_view body, int system = 1) {
    program.engine.pipeline.ProcessSentence(system, Sentence(body));
  }

  Program program{{face, clock, settings, [this] { ended = true; }}};
  Records& records = program.engine.records;
};

}  // namespace fathomline
