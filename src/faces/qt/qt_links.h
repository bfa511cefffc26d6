// Serial ports, TCP clients and UDP ports of the machine.
#pragma once

#include <array>
#include <memory>

#include "base/per_system.h"
#include "base/serial_ports.h"
#include "base/settings.h"
#include "toolkit/links.h"

namespace fathomline {

class QtTcpLink;
class QtUdpLink;

class QtLinks : public Links {
 public:
  // The settings say which device is meant by a port number; they outlive the links.
  explicit QtLinks(const SettingsStore& settings);
  ~QtLinks() override;

  SerialLink& MSComm1(int port) override;
  TcpLink& Winsock1(int system) override;
  UdpLink& WinsockUDP(int system) override;
  SerialPortInfo Probe(int port) override;

 private:
  const SettingsStore& settings_;
  std::array<std::unique_ptr<SerialLink>, kSerialPorts> serial_;
  std::array<std::unique_ptr<QtTcpLink>, kSystems> tcp_;
  std::array<std::unique_ptr<QtUdpLink>, kSystems> udp_;
};

}  // namespace fathomline
