// Links without devices or a network. Whoever runs the program says what arrives; in a batch run
// nothing does.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/fault.h"
#include "base/per_system.h"
#include "base/serial_ports.h"
#include "toolkit/links.h"

namespace fathomline {

class HeadlessSerialLink : public SerialLink {
 public:
  // Why the port cannot be opened; none: it can.
  std::optional<std::string> refusal;
  SerialPortInfo info{.present = true, .busy = false, .device = {}, .description = {}};

  // Nothing arrives at a closed port.
  void Arrive(std::string_view bytes);
  void Arrive(fathomline::CommEvent event);
  void Lose(const std::string& cause);
  const std::string& Settings() const { return settings_; }

  void SetSettings(std::string_view settings) override { settings_ = settings; }
  bool PortOpen() const override { return open_; }
  void Open() override;
  void Close() override;
  fathomline::CommEvent CommEvent() const override { return event_; }
  std::string Input() override { return std::exchange(buffer_, {}); }
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  std::string settings_;
  std::string buffer_;
  std::deque<fathomline::CommEvent> events_;
  fathomline::CommEvent event_ = fathomline::CommEvent::None;
  bool open_ = false;
};

class HeadlessTcpLink : public TcpLink {
 public:
  // The error that answers an attempt to connect; none: it succeeds.
  std::optional<std::pair<int, std::string>> refusal;

  void Arrive(std::string_view bytes);
  // An error of the connection.
  void Fail(int number, std::string description);
  int RemotePort() const { return port_; }
  // In which it was told to connect.
  std::vector<LinkState> statesAtConnect;

  LinkState State() const override { return state_; }
  void Close() override;
  void SetRemoteHost(std::string_view host) override { host_ = host; }
  void SetRemotePort(int port) override { port_ = port; }
  std::string RemoteHost() const override { return host_; }
  void Connect() override;
  std::string GetData() override { return std::exchange(buffer_, {}); }
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  std::string host_;
  std::string buffer_;
  std::optional<std::pair<int, std::string>> error_;
  LinkState state_ = LinkState::Closed;
  int port_ = 0;
};

class HeadlessUdpLink : public UdpLink {
 public:
  // Why the port cannot be bound; none: it can.
  std::optional<std::string> refusal;

  void Arrive(std::string_view datagram);
  int BoundPort() const { return port_; }

  LinkState State() const override { return state_; }
  void Close() override;
  void Bind(int port) override;
  std::string GetData() override { return std::exchange(buffer_, {}); }
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  std::string buffer_;
  LinkState state_ = LinkState::Closed;
  int port_ = 0;
  int arrivals_ = 0;
};

class HeadlessLinks : public Links {
 public:
  HeadlessSerialLink& MSComm1(int port) override { return At(serial_, port); }
  HeadlessTcpLink& Winsock1(int system) override { return At(tcp_, system); }
  HeadlessUdpLink& WinsockUDP(int system) override { return At(udp_, system); }
  SerialPortInfo Probe(int port) override;

 private:
  template <class Kind, std::size_t Count>
  static Kind& At(std::array<Kind, Count>& links, int number) {
    if (number < 1 || number > static_cast<int>(Count)) Raise(FaultNumber::OutOfRange);
    return links[static_cast<std::size_t>(number - 1)];
  }

  std::array<HeadlessSerialLink, kSerialPorts> serial_;
  std::array<HeadlessTcpLink, kSystems> tcp_;
  std::array<HeadlessUdpLink, kSystems> udp_;
};

}  // namespace fathomline
