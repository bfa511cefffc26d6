#include "platform/serial_devices.h"

#include "support/expect_fault.h"

namespace fathomline {
namespace {

TEST(SerialDevice, EveryPortHasADeviceUntilTheSettingsNameAnother) {
  SettingsStore settings;
  EXPECT_EQ(SerialDevice(settings, 1), "/dev/ttyS0");
  EXPECT_EQ(SerialDevice(settings, 4), "/dev/ttyS3");
  EXPECT_EQ(SerialDevice(settings, 5), "/dev/ttyUSB0");
  EXPECT_EQ(SerialDevice(settings, 10), "/dev/ttyUSB5");
  EXPECT_EQ(SerialDevice(settings, 11), "/dev/ttyACM0");
  EXPECT_EQ(SerialDevice(settings, 16), "/dev/ttyACM5");
  settings.Set("Comports", "COM5", "/dev/serial/by-id/usb-gyro");
  EXPECT_EQ(SerialDevice(settings, 5), "/dev/serial/by-id/usb-gyro");
  for (const int port : {0, 17}) {
    ExpectFault(FaultNumber::OutOfRange, [&] { SerialDevice(settings, port); });
  }
}

}  // namespace
}  // namespace fathomline
