#include "base/serial_devices.h"

#include <array>

#include "base/fault.h"
#include "base/serial_ports.h"

namespace fathomline {
namespace {

struct DeviceRange {
  int firstPort;
  std::string_view device;
};
constexpr std::array<DeviceRange, 3> kRanges = {
    {{11, "/dev/ttyACM"}, {5, "/dev/ttyUSB"}, {1, "/dev/ttyS"}}};

}  // namespace

std::string SerialDevice(const SettingsStore& settings, int port) {
  if (port < 1 || port > kSerialPorts) Raise(FaultNumber::OutOfRange);
  if (auto device = settings.Get(kComportsSection, "COM" + std::to_string(port))) return *device;
  for (const DeviceRange& range : kRanges) {
    if (port < range.firstPort) continue;
    return std::string(range.device) + std::to_string(port - range.firstPort);
  }
  Raise(FaultNumber::OutOfRange);
}

}  // namespace fathomline
