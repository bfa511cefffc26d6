// Links where nothing ever arrives: for a run of the program without live sources.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "base/fault.h"
#include "base/per_system.h"
#include "base/serial_ports.h"
#include "toolkit/links.h"

namespace fathomline {

class NoLinks : public Links {
 public:
  SerialLink& MSComm1(int port) override { return Check(port, kSerialPorts), serial_; }
  TcpLink& Winsock1(int system) override { return Check(system, kSystems), tcp_; }
  UdpLink& WinsockUDP(int system) override { return Check(system, kSystems), udp_; }
  SerialPortInfo Probe(int port) override { return Check(port, kSerialPorts), SerialPortInfo{}; }

 private:
  static void Check(int number, int count) {
    if (number < 1 || number > count) Raise(FaultNumber::OutOfRange);
  }

  // A link opens without a fault and stays closed. There is no state, so one stands for all.
  class Serial : public SerialLink {
   public:
    void SetSettings(std::string_view) override {}
    bool PortOpen() const override { return false; }
    void Open() override {}
    void Close() override {}
    fathomline::CommEvent CommEvent() const override { return fathomline::CommEvent::None; }
    std::string Input() override { return {}; }
    bool Poll(std::chrono::steady_clock::time_point) override { return false; }
  };
  class Tcp : public TcpLink {
   public:
    LinkState State() const override { return LinkState::Closed; }
    void Close() override {}
    void SetRemoteHost(std::string_view) override {}
    void SetRemotePort(int) override {}
    std::string RemoteHost() const override { return {}; }
    void Connect() override {}
    std::string GetData() override { return {}; }
    bool Poll(std::chrono::steady_clock::time_point) override { return false; }
  };
  class Udp : public UdpLink {
   public:
    LinkState State() const override { return LinkState::Closed; }
    void Close() override {}
    void Bind(int) override {}
    std::string GetData() override { return {}; }
    bool Poll(std::chrono::steady_clock::time_point) override { return false; }
  };

  Serial serial_;
  Tcp tcp_;
  Udp udp_;
};

}  // namespace fathomline
