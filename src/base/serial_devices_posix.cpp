#include "base/fault.h"
#include "base/serial_devices.h"

namespace fathomline {
namespace {

struct DeviceRange {
  int firstPort;
  std::string_view device;
};
constexpr DeviceRange kRanges[] = {{11, "/dev/ttyACM"}, {5, "/dev/ttyUSB"}, {1, "/dev/ttyS"}};

}  // namespace

std::string UsualSerialDevice(int port) {
  for (const DeviceRange& range : kRanges) {
    if (port < range.firstPort) continue;
    return std::string(range.device) + std::to_string(port - range.firstPort);
  }
  Raise(FaultNumber::OutOfRange);
}

std::string_view UsualSerialDevicesText() {
  return "COM1 to COM4 :  /dev/ttyS0 to ttyS3\r\n"
         "COM5 to COM10 :  /dev/ttyUSB0 to ttyUSB5\r\n"
         "COM11 to COM16 :  /dev/ttyACM0 to ttyACM5";
}

std::string_view SerialDeviceExample() {
  return "COM5=/dev/serial/by-id/...";
}

}  // namespace fathomline
