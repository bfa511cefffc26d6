#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "setup/setup_dialog.h"
#include "support/headless_links.h"
#include "support/scripted_face.h"
#include "support/temporary_folder.h"

namespace fathomline {

// A session that notes what is asked of it.
class NotingSession : public SetupSession {
 public:
  explicit NotingSession(Records& records) : records_(records) {}

  std::vector<std::string> calls;
  bool udpPortIsFree = true;

  void CloseLinks(int system) override {
    Note("close", system);
    const int port = records_.CommSetups[system].ComPort;
    if (port != 0) records_.Comport(port).System = 0;
  }
  void OpenLink(int system) override { Note("open", system); }
  bool CanBindUdp(int, std::int32_t port) override {
    Note("bind", port);
    return udpPortIsFree;
  }
  void ResetAll() override { calls.emplace_back("reset"); }
  void ShowSetups() override { calls.emplace_back("show"); }
  void ShowComportInfo() override { calls.emplace_back("info"); }

 private:
  void Note(const char* what, std::int32_t number) {
    calls.push_back(std::string(what) + NumberText(number));
  }

  Records& records_;
};

inline constexpr const char* kSure =
    "Are you sure? All statistics and graphics will be reset.(Remember to open relevant windows "
    "for display under Window)";

// The dialog with all that it stands on.
class SetupDesk : public testing::Test {
 protected:
  SetupDesk() {
    records.ProgramFolder = folder.Path();
    records.SetDefaultSetup();
    records.CoordinateDecimals = 4;
    for (int port = 1; port <= kSerialPorts; ++port) links.MSComm1(port).info.present = port <= 3;
  }
  ~SetupDesk() override { EXPECT_TRUE(face.Exhausted()) << "a box or a file was expected"; }

  CommSetup& SetupOf(int system) { return records.CommSetups[system]; }
  std::string LastBox() const { return face.Boxes().empty() ? "" : face.Boxes().back().text; }

  TemporaryFolder folder;
  Records records;
  FrozenClock clock{DateTime{46024.127835648148}};
  Statistics statistics{records, clock};
  HeadlessLinks links;
  ScriptedFace face;
  Desktop desktop{face};
  NotingSession session{records};
};

}  // namespace fathomline
