// Sockets, with the same calls on every system. None of them waits.
#pragma once

#if defined(_WIN32)
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#endif

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace fathomline::simulator {

#if defined(_WIN32)
using SocketNumber = SOCKET;
inline constexpr SocketNumber kNoSocket = INVALID_SOCKET;
#else
using SocketNumber = int;
inline constexpr SocketNumber kNoSocket = -1;
#endif

// Owns a socket.
class Socket {
 public:
  Socket() = default;
  // Not valid where the system refuses it.
  Socket(int family, int kind, int protocol);
  Socket(Socket&& other) noexcept : number_(std::exchange(other.number_, kNoSocket)) {}
  Socket& operator=(Socket&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Socket();

  bool Valid() const { return number_ != kNoSocket; }
  SocketNumber Get() const { return number_; }
  bool Set(int level, int option, int value) const;
  // The port of a server that was ended a moment ago can be had again, that of a living one not.
  void ReuseAddress() const;

  // Not valid where nobody waits to be accepted.
  Socket Accept(sockaddr* peer, socklen_t* length) const;
  // The count of bytes that were sent or have arrived; 0 where none could be yet, nothing where the
  // peer has gone.
  std::optional<std::size_t> Send(std::string_view bytes) const;
  std::optional<std::size_t> Receive(char* into, std::size_t most) const;
  // A datagram. Nobody tells whether it arrives.
  void SendTo(std::string_view bytes, const sockaddr* address, socklen_t length) const;

 private:
  explicit Socket(SocketNumber number) : number_(number) {}

  SocketNumber number_ = kNoSocket;
};

// Has to be called before the first call to the network.
void UseNetwork();

// Until one of them is ready.
void WaitFor(std::vector<pollfd>& watched, std::chrono::milliseconds longest);

// Why the latest call to the network failed, and why a name could not be resolved.
std::error_code NetworkError();
std::string ResolverMessage(int error);

// "cannot listen on 127.0.0.1:80: Permission denied"
[[noreturn]] void RaiseSystemFault(std::string_view action, std::string_view object,
                                   std::error_code error);

}  // namespace fathomline::simulator
