#include "base/serial_devices.h"

#include "base/fault.h"
#include "base/serial_ports.h"

namespace fathomline {

std::string SerialDevice(const SettingsStore& settings, int port) {
  if (port < 1 || port > kSerialPorts) Raise(FaultNumber::OutOfRange);
  if (auto device = settings.Get(kComportsSection, "COM" + std::to_string(port))) return *device;
  return UsualSerialDevice(port);
}

}  // namespace fathomline
