// Which device stands behind the name of a serial port.
#pragma once

#include <string>
#include <string_view>

#include "base/settings.h"

namespace fathomline {

// In the settings store; the keys are "COM1" to "COM16", the texts paths of devices.
inline constexpr std::string_view kComportsSection = "Comports";

// The device of a port, 1 to 16: what the settings say, else COM1 to COM4 are ttyS0 to ttyS3, COM5
// to COM10 ttyUSB0 to ttyUSB5, COM11 to COM16 ttyACM0 to ttyACM5. Raises OutOfRange.
std::string SerialDevice(const SettingsStore& settings, int port);

}  // namespace fathomline
