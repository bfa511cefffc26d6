#include "windows/comport_info.h"

#include "base/serial_devices.h"

namespace fathomline {

frmComportInfo::frmComportInfo(Desktop& desktop, const SettingsStore& settings)
    : Window(desktop, {.name = "frmComportInfo",
                       .caption = "Comport Info",
                       .place = {3000, 2500, 6800, 4200},
                       .style = WindowStyle::Dialog,
                       .resizable = false}) {
  lblInfo.SetText(
      "Only comports with a number up to 16 are served.\r\n"
      "Ports with higher numbers are ignored by the setup.\r\n\r\n" +
      std::string(UsualSerialDevicesText()));
  const std::string location = settings.Location();
  lblOtherDevices.SetText(
      "\r\nTo give a number to another device, exit the program and write two lines\r\n"
      "such as these at the end of " +
      (location.empty() ? "the settings file" : location) +
      " :\r\n\r\n[Comports]\r\n" + std::string(SerialDeviceExample()));
  cmdOk.onClick = [this] { Close(); };
  SetContent(Layout::Column({lblInfo, lblOtherDevices, Layout::Row({Layout::Space(), cmdOk})}));
}

}  // namespace fathomline
