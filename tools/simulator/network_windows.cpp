#include <algorithm>
#include <thread>

#include "base/system.h"
#include "simulator/network.h"

namespace fathomline::simulator {
namespace {

bool MayComeLater() {
  return ::WSAGetLastError() == WSAEWOULDBLOCK;
}

SocketNumber WithoutWaiting(SocketNumber socket) {
  u_long on = 1;
  if (socket != kNoSocket) ::ioctlsocket(socket, FIONBIO, &on);
  return socket;
}

int LengthOf(std::size_t bytes) {
  return static_cast<int>(std::min<std::size_t>(bytes, 1U << 30U));
}

}  // namespace

Socket::Socket(int family, int kind, int protocol) {
  UseNetwork();
  number_ = WithoutWaiting(::socket(family, kind, protocol));
}

Socket::~Socket() {
  if (Valid()) ::closesocket(number_);
}

// What "reuse" means elsewhere always holds here; here it would let others take a port in use.
void Socket::ReuseAddress() const {
  Set(SOL_SOCKET, SO_EXCLUSIVEADDRUSE, 1);
}

Socket Socket::Accept(sockaddr* peer, socklen_t* length) const {
  return Socket(WithoutWaiting(::accept(number_, peer, length)));
}

std::optional<std::size_t> Socket::Send(std::string_view bytes) const {
  const int sent = ::send(number_, bytes.data(), LengthOf(bytes.size()), 0);
  if (sent >= 0) return static_cast<std::size_t>(sent);
  if (MayComeLater()) return 0;
  return {};
}

std::optional<std::size_t> Socket::Receive(char* into, std::size_t most) const {
  const int count = ::recv(number_, into, LengthOf(most), 0);
  if (count > 0) return static_cast<std::size_t>(count);
  if (count < 0 && MayComeLater()) return 0;
  return {};
}

void Socket::SendTo(std::string_view bytes, const sockaddr* address, socklen_t length) const {
  ::sendto(number_, bytes.data(), LengthOf(bytes.size()), 0, address, length);
}

void UseNetwork() {
  struct Library {
    Library() {
      WSADATA ignored{};
      ::WSAStartup(MAKEWORD(2, 2), &ignored);
    }
    ~Library() { ::WSACleanup(); }
  };
  static const Library library;
}

void WaitFor(std::vector<pollfd>& watched, std::chrono::milliseconds longest) {
  // Without anything to wait for the call would be refused.
  if (watched.empty()) {
    std::this_thread::sleep_for(longest);
    return;
  }
  ::WSAPoll(watched.data(), static_cast<ULONG>(watched.size()), static_cast<int>(longest.count()));
}

std::error_code NetworkError() {
  return {::WSAGetLastError(), std::system_category()};
}

std::string ResolverMessage(int error) {
  return SystemMessage({error, std::system_category()});
}

}  // namespace fathomline::simulator
