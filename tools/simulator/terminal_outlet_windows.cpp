#include "base/fault.h"
#include "simulator/outlets.h"

namespace fathomline::simulator {

std::unique_ptr<Outlet> MakeTerminalOutlet(const std::string& /*linkPath*/, std::ostream& /*log*/) {
  Raise(FaultNumber::DeviceError, "cannot make a pseudo-terminal: Windows has none");
}

}  // namespace fathomline::simulator
