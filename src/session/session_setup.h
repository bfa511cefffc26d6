// What the setup dialog needs of the session.
#pragma once

#include <cstdint>

#include "records/records.h"
#include "session/session_control.h"
#include "session/windows.h"
#include "setup/setup_session.h"
#include "sources/live_input.h"
#include "toolkit/links.h"

namespace fathomline {

class SessionSetup : public SetupSession {
 public:
  SessionSetup(const Records& records, Links& links, LiveInput& input, SessionControl& session,
               Windows& windows)
      : records_(records), links_(links), input_(input), session_(session), windows_(windows) {}

  void CloseLinks(int system) override { input_.CloseLinks(system); }
  void OpenLink(int system) override { input_.OpenPort(system); }
  bool CanBindUdp(int system, std::int32_t port) override;
  void ResetAll() override { session_.ResetAll(); }
  void ShowSetups() override;
  void ShowComportInfo() override { windows_.comportInfo.Show(); }

 private:
  const Records& records_;
  Links& links_;
  LiveInput& input_;
  SessionControl& session_;
  Windows& windows_;
};

}  // namespace fathomline
