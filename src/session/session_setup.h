// What the setup dialog needs of the session.
#pragma once

#include <cstdint>

#include "records/records.h"
#include "session/session_control.h"
#include "setup/setup_session.h"
#include "sources/live_input.h"
#include "toolkit/links.h"
#include "windows/comport_info.h"
#include "windows/main_window.h"
#include "windows/monitor_window.h"
#include "windows/offline_status.h"

namespace fathomline {

class SessionSetup : public SetupSession {
 public:
  struct Shown {
    frmMain& mainWindow;
    frmOfflineStatus& offlineStatus;
    SystemWindows<frmNMEA>& monitors;
    frmComportInfo& comportInfo;
  };
  SessionSetup(const Records& records, Links& links, LiveInput& input, SessionControl& session,
               const Shown& shown)
      : records_(records), links_(links), input_(input), session_(session), shown_(shown) {}

  void CloseLinks(int system) override { input_.CloseLinks(system); }
  void OpenLink(int system) override { input_.OpenPort(system); }
  bool CanBindUdp(int system, std::int32_t port) override;
  void ResetAll() override { session_.ResetAll(); }
  void ShowSetups() override;
  void ShowComportInfo() override { shown_.comportInfo.Show(); }

 private:
  const Records& records_;
  Links& links_;
  LiveInput& input_;
  SessionControl& session_;
  Shown shown_;
};

}  // namespace fathomline
