// TCP clients and UDP ports by Qt Network.
#pragma once

#include <QTcpSocket>
#include <QUdpSocket>
#include <chrono>
#include <deque>
#include <string>
#include <utility>

#include "toolkit/links.h"

namespace fathomline {

class QtTcpLink : public TcpLink {
 public:
  QtTcpLink();

  LinkState State() const override;
  void Close() override;
  void SetRemoteHost(std::string_view host) override { host_ = host; }
  void SetRemotePort(int port) override { port_ = port; }
  std::string RemoteHost() const override { return host_; }
  void Connect() override;
  std::string GetData() override;
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  QTcpSocket socket_;
  std::string host_;
  // Noted as they come and raised by Poll, behind the data that came before them.
  std::deque<std::pair<int, std::string>> errors_;
  int port_ = 0;
  bool failed_ = false;
  bool peerGone_ = false;
};

class QtUdpLink : public UdpLink {
 public:
  LinkState State() const override;
  void Close() override;
  void Bind(int port) override;
  std::string GetData() override;
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  void Drain();

  QUdpSocket socket_;
  std::string buffer_;
  int arrivals_ = 0;
};

}  // namespace fathomline
