// Which device stands behind the name of a serial port.
#pragma once

#include <string>
#include <string_view>

#include "base/settings.h"

namespace fathomline {

// In the settings store; the keys are "COM1" to "COM16", the texts devices.
inline constexpr std::string_view kComportsSection = "Comports";

// The device of a port, 1 to 16: what the settings say, else the usual one. Raises OutOfRange.
std::string SerialDevice(const SettingsStore& settings, int port);

// The following differ from system to system.

// COM1 to COM4 are ttyS0 to ttyS3, COM5 to COM10 ttyUSB0 to ttyUSB5, COM11 to COM16 ttyACM0 to
// ttyACM5; on Windows each is itself.
std::string UsualSerialDevice(int port);
// Lines that tell the user the same, and a line of the settings that names another device.
std::string_view UsualSerialDevicesText();
std::string_view SerialDeviceExample();

}  // namespace fathomline
