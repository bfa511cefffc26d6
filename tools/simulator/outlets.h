// Where a live simulation can be had: TCP clients, UDP datagrams, a pseudo-terminal.
//
// Nothing here waits. What a peer does not take at once is kept for it, up to a limit, so that one
// that reads slowly holds up neither the simulation nor the other peers.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/network.h"
#include "simulator/sentence_writer.h"

namespace fathomline::simulator {

// The most that is kept for a peer, in bytes.
inline constexpr std::size_t kLargestBacklog = 1U << 20;
// From here on a peer that has taken nothing for kPatience is given up.
inline constexpr std::size_t kHighBacklog = kLargestBacklog / 2;
inline constexpr std::chrono::seconds kPatience{2};

struct Endpoint {
  std::string host;
  std::string port;
};

inline constexpr std::string_view kLoopback = "127.0.0.1";

// "10110", "localhost:10110", "[::1]:10110"; the loopback address where no host is named. Raises
// InvalidCall, with a line for the user, where the text is no such thing.
Endpoint ParseEndpoint(std::string_view text);

class Outlet {
 public:
  virtual ~Outlet() = default;

  // "tcp 127.0.0.1:10110"
  virtual std::string Where() const = 0;
  // Adds what is to be waited for.
  virtual void Watch(std::vector<pollfd>& watched) const = 0;
  // Takes new peers, passes on what waits and lets go of who has left.
  virtual void Serve() = 0;
  virtual void Send(const LineBatch& lines) = 0;
  // Whether anybody is there to hear.
  virtual bool HasPeer() const = 0;
  // How much waits for the peer that lags most, one that is given up aside. In bytes.
  virtual std::size_t Backlog() const = 0;
  // Whether the peers have read all there was, as far as can be seen from here.
  virtual bool Drained() const { return Backlog() == 0; }
};

// What waits for one peer.
class SendQueue {
 public:
  enum class State { Fine, Gone };

  // False, with nothing added, where it would grow beyond the limit.
  bool Add(std::string_view bytes);
  // Writes what the peer takes. `write` is told the bytes and returns as Socket::Send does.
  State Flush(const std::function<std::optional<std::size_t>(std::string_view)>& write);
  void Clear();

  std::size_t Size() const { return waiting_.size() - taken_; }
  // Whether the peer has taken nothing for long while much waits.
  bool Stalled() const;

 private:
  std::string waiting_;
  std::size_t taken_ = 0;
  std::chrono::steady_clock::time_point moved_ = std::chrono::steady_clock::now();
};

// A server for any number of clients. `log` is told, in a line each, of clients that come, go and
// are dropped. The constructors raise DeviceError, with a line for the user.
class TcpOutlet : public Outlet {
 public:
  // Port "0" takes any that is free.
  TcpOutlet(const Endpoint& endpoint, std::ostream& log);

  std::string Where() const override;
  void Watch(std::vector<pollfd>& watched) const override;
  void Serve() override;
  void Send(const LineBatch& lines) override;
  bool HasPeer() const override { return !clients_.empty(); }
  std::size_t Backlog() const override;

  // The port that it listens on.
  int Port() const { return port_; }

 private:
  struct Client {
    Socket socket;
    std::string name;
    SendQueue queue;
  };

  void Accept();
  // Why the client is to be let go; empty where it is not.
  std::string_view Attend(Client& client) const;

  std::ostream& log_;
  std::string address_;
  int port_ = 0;
  Socket listener_;
  std::list<Client> clients_;
};

// One datagram per line. Nobody tells whether it arrives.
class UdpOutlet : public Outlet {
 public:
  explicit UdpOutlet(const Endpoint& endpoint);

  std::string Where() const override;
  void Watch(std::vector<pollfd>&) const override {}
  void Serve() override {}
  void Send(const LineBatch& lines) override;
  bool HasPeer() const override { return true; }
  std::size_t Backlog() const override { return 0; }

 private:
  Endpoint endpoint_;
  sockaddr_storage address_{};
  socklen_t addressLength_ = 0;
  Socket socket_;
};

// A pseudo-terminal that is opened like a serial port; with a path, a symbolic link there leads to
// it. Raises DeviceError where the system has no such thing.
std::unique_ptr<Outlet> MakeTerminalOutlet(const std::string& linkPath, std::ostream& log);

}  // namespace fathomline::simulator
