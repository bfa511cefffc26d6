// A pseudo-terminal that is opened like a serial port.
#pragma once

#include <string>

#include "simulator/file_descriptor.h"
#include "simulator/outlets.h"

namespace fathomline::simulator {

// Without a reader lines are lost, as on a cable that leads nowhere; so they are behind a reader that
// does not read, and `log` is told once.
class TerminalOutlet : public Outlet {
 public:
  // With a path, a symbolic link there leads to the terminal as long as the outlet lives. A link
  // that stands there already is replaced; anything else is a fault.
  TerminalOutlet(std::string linkPath, std::ostream& log);
  ~TerminalOutlet() override;

  std::string Where() const override;
  void Watch(std::vector<pollfd>& watched) const override;
  void Serve() override;
  void Send(const LineBatch& lines) override;
  bool HasPeer() const override;
  std::size_t Backlog() const override { return queue_.Stalled() ? 0 : queue_.Size(); }
  // A reader sees the end of the terminal before what it has not read of it.
  bool Drained() const override;

  const std::string& Path() const { return path_; }

 private:
  std::ostream& log_;
  std::string path_;
  std::string linkPath_;
  FileDescriptor master_;
  SendQueue queue_;
  bool lossTold_ = false;
};

}  // namespace fathomline::simulator
