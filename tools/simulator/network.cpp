// What is the same on every system.
#include "simulator/network.h"

#include "base/fault.h"
#include "base/system.h"

namespace fathomline::simulator {

bool Socket::Set(int level, int option, int value) const {
  return ::setsockopt(number_, level, option, reinterpret_cast<const char*>(&value),
                      sizeof value) == 0;
}

void RaiseSystemFault(std::string_view action, std::string_view object, std::error_code error) {
  std::string text = "cannot ";
  text.append(action).append(" ").append(object).append(": ");
  Raise(FaultNumber::DeviceError, text + SystemMessage(error));
}

}  // namespace fathomline::simulator
