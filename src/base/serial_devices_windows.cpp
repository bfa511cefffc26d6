#include "base/serial_devices.h"

namespace fathomline {

std::string UsualSerialDevice(int port) {
  return "COM" + std::to_string(port);
}

std::string_view UsualSerialDevicesText() {
  return "COM1 to COM16 :  those of the device manager";
}

std::string_view SerialDeviceExample() {
  return "COM5=COM23";
}

}  // namespace fathomline
