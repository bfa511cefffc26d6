#include "session/session_setup.h"

namespace fathomline {

bool SessionSetup::CanBindUdp(int system, std::int32_t port) {
  UdpLink& link = links_.WinsockUDP(system);
  bool bound = false;
  ResumeNext([&] {
    link.Bind(port);
    bound = true;
  });
  link.Close();
  return bound;
}

void SessionSetup::ShowSetups() {
  windows_.main.ShowSystems();
  for (auto& monitor : windows_.monitors) monitor->ShowLink();
  const std::string& file = records_.CommSetups[1].OfflineFile;
  if (windows_.offlineStatus.Loaded() && !file.empty()) {
    windows_.offlineStatus.lblFileName.SetText(file);
  }
}

}  // namespace fathomline
