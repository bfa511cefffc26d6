#include "faces/qt/qt_links.h"

#include "base/serial_devices.h"
#include "faces/qt/serial_link.h"
#include "faces/qt/socket_links.h"

namespace fathomline {
namespace {

template <class Kind, std::size_t Count>
Kind& At(std::array<std::unique_ptr<Kind>, Count>& links, int number) {
  if (number < 1 || number > static_cast<int>(Count)) Raise(FaultNumber::OutOfRange);
  return *links[static_cast<std::size_t>(number - 1)];
}

}  // namespace

QtLinks::QtLinks(const SettingsStore& settings) : settings_(settings) {
  int port = 0;
  for (auto& link : serial_) {
    ++port;
    link = MakeSerialLink([this, port] { return SerialDevice(settings_, port); });
  }
  for (auto& link : tcp_) link = std::make_unique<QtTcpLink>();
  for (auto& link : udp_) link = std::make_unique<QtUdpLink>();
}

QtLinks::~QtLinks() = default;

SerialLink& QtLinks::MSComm1(int port) {
  return At(serial_, port);
}

TcpLink& QtLinks::Winsock1(int system) {
  return At(tcp_, system);
}

UdpLink& QtLinks::WinsockUDP(int system) {
  return At(udp_, system);
}

SerialPortInfo QtLinks::Probe(int port) {
  SerialPortInfo info;
  info.device = SerialDevice(settings_, port);
  info.description = DescribeSerialDevice(info.device);
  if (MSComm1(port).PortOpen()) {
    info.present = info.busy = true;
  } else {
    ProbeSerialDevice(info);
  }
  return info;
}

}  // namespace fathomline
