// What the setup dialog needs of the session.
#pragma once

#include <cstdint>

#include "pipeline/main_window.h"
#include "pipeline/records.h"
#include "pipeline/session_control.h"
#include "platform/links.h"
#include "setup/setup_session.h"
#include "sources/comport_info.h"
#include "sources/live_input.h"
#include "sources/offline_status.h"
#include "views/monitor_window.h"

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
