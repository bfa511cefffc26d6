#include "faces/qt/qt_links.h"

#include <QFile>
#include <QSerialPortInfo>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "base/serial_devices.h"
#include "faces/qt/conversions.h"
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
    link = std::make_unique<QtSerialLink>([this, port] { return SerialDevice(settings_, port); });
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
  const QString resolved = QFile(ToQt(info.device)).symLinkTarget();
  const QSerialPortInfo known(resolved.isEmpty() ? ToQt(info.device) : resolved);
  if (!known.isNull()) info.description = FromQt(known.description());
  if (MSComm1(port).PortOpen()) {
    info.present = info.busy = true;
    return info;
  }
  const int file = ::open(info.device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (file >= 0) {
    info.present = ::isatty(file) == 1;
    ::close(file);
  } else if (errno == EBUSY || errno == EACCES || errno == EPERM) {
    info.present = info.busy = true;
  }
  return info;
}

}  // namespace fathomline
