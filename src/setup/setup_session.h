// What an applied setup needs of the session around it.
#pragma once

#include <cstdint>

namespace fathomline {

class SetupSession {
 public:
  virtual ~SetupSession() = default;

  // Closes whatever link the system has and frees its row of Comports.
  virtual void CloseLinks(int system) = 0;
  // Opens the link of the system. What cannot be opened is told in a box and disables the system.
  virtual void OpenLink(int system) = 0;
  // Whether the port could be bound for the system, whose own socket is closed.
  virtual bool CanBindUdp(int system, std::int32_t port) = 0;
  // Brings the session back to its start; the windows whose flags are set open again.
  virtual void ResetAll() = 0;
  // Writes what the main window, the monitor and the replay status show of the setups.
  virtual void ShowSetups() = 0;
  // Opens frmComportInfo.
  virtual void ShowComportInfo() = 0;
};

}  // namespace fathomline
