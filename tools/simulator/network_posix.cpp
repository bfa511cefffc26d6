#include <cerrno>
#include <unistd.h>

#include "simulator/network.h"

namespace fathomline::simulator {
namespace {

bool MayComeLater() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

}  // namespace

Socket::Socket(int family, int kind, int protocol)
    : number_(::socket(family, kind | SOCK_NONBLOCK | SOCK_CLOEXEC, protocol)) {}

Socket::~Socket() {
  if (Valid()) ::close(number_);
}

void Socket::ReuseAddress() const {
  Set(SOL_SOCKET, SO_REUSEADDR, 1);
}

Socket Socket::Accept(sockaddr* peer, socklen_t* length) const {
  return Socket(::accept4(number_, peer, length, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

std::optional<std::size_t> Socket::Send(std::string_view bytes) const {
  const ssize_t sent = ::send(number_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent >= 0) return static_cast<std::size_t>(sent);
  if (MayComeLater()) return 0;
  return {};
}

std::optional<std::size_t> Socket::Receive(char* into, std::size_t most) const {
  const ssize_t count = ::recv(number_, into, most, 0);
  if (count > 0) return static_cast<std::size_t>(count);
  if (count < 0 && MayComeLater()) return 0;
  return {};
}

void Socket::SendTo(std::string_view bytes, const sockaddr* address, socklen_t length) const {
  ::sendto(number_, bytes.data(), bytes.size(), MSG_NOSIGNAL, address, length);
}

void UseNetwork() {}

void WaitFor(std::vector<pollfd>& watched, std::chrono::milliseconds longest) {
  ::poll(watched.data(), watched.size(), static_cast<int>(longest.count()));
}

std::error_code NetworkError() {
  return {errno, std::generic_category()};
}

std::string ResolverMessage(int error) {
  return ::gai_strerror(error);
}

}  // namespace fathomline::simulator
