// The serial ports of the machine: by Qt SerialPort where there is one, else by the system itself.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "toolkit/links.h"

namespace fathomline {

// The device is asked for whenever the port is opened.
std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string()> device);

// What the hardware behind a device calls itself, where the system knows it.
std::string DescribeSerialDevice(const std::string& device);
// Whether the device of `info`, which this program does not hold, is present and busy.
void ProbeSerialDevice(SerialPortInfo& info);

}  // namespace fathomline
