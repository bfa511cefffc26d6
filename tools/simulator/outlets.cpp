#include "simulator/outlets.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <netdb.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <system_error>
#include <termios.h>
#include <utility>

namespace fathomline::simulator {
namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

std::string Text(const Endpoint& endpoint) {
  const bool colons = endpoint.host.find(':') != std::string::npos;
  return (colons ? "[" + endpoint.host + "]" : endpoint.host) + ":" + endpoint.port;
}

// A name that stands for both is taken for the older kind of address, on which receivers listen.
AddressList Resolve(const Endpoint& endpoint, int kind, std::string_view action) {
  addrinfo wanted{};
  wanted.ai_socktype = kind;
  wanted.ai_flags = AI_NUMERICSERV;
  int error = 0;
  for (const int family : {AF_INET, AF_UNSPEC}) {
    wanted.ai_family = family;
    addrinfo* found = nullptr;
    error = ::getaddrinfo(endpoint.host.c_str(), endpoint.port.c_str(), &wanted, &found);
    if (error == 0) return {found, &::freeaddrinfo};
  }
  Raise(FaultNumber::DeviceError,
        "cannot " + std::string(action) + " " + Text(endpoint) + ": " + ::gai_strerror(error));
}

// In numbers.
Endpoint NameOf(const sockaddr* address, socklen_t length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  if (::getnameinfo(address, length, host.data(), host.size(), port.data(), port.size(),
                    NI_NUMERICHOST | NI_NUMERICSERV) != 0) {
    return {"?", "0"};
  }
  return {host.data(), port.data()};
}

bool MayComeLater(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

int PortNumber(std::string_view text) {
  int port = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  return error == std::errc() && end == text.data() + text.size() && port <= 65535 ? port : -1;
}

}  // namespace

Endpoint ParseEndpoint(std::string_view text) {
  Endpoint endpoint{std::string(kLoopback), std::string(text)};
  const std::size_t colon = text.rfind(':');
  if (colon != std::string_view::npos) {
    std::string_view host = text.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
      host = host.substr(1, host.size() - 2);
    }
    endpoint = {std::string(host), std::string(text.substr(colon + 1))};
  }
  if (endpoint.host.empty() || PortNumber(endpoint.port) < 0) {
    Raise(FaultNumber::InvalidCall,
          "\"" + std::string(text) + "\" is no address like \"10110\" or \"localhost:10110\"");
  }
  return endpoint;
}

bool SendQueue::Add(std::string_view bytes) {
  if (Size() + bytes.size() > kLargestBacklog) return false;
  if (Size() == 0) moved_ = std::chrono::steady_clock::now();
  // Moving what waits to the front pays once more has been taken than is left.
  if (taken_ > Size()) {
    waiting_.erase(0, taken_);
    taken_ = 0;
  }
  waiting_ += bytes;
  return true;
}

SendQueue::State SendQueue::Flush(const std::function<ssize_t(const char*, std::size_t)>& write) {
  while (Size() > 0) {
    const ssize_t written = write(waiting_.data() + taken_, Size());
    if (written < 0) return MayComeLater(errno) ? State::Fine : State::Gone;
    taken_ += static_cast<std::size_t>(written);
    moved_ = std::chrono::steady_clock::now();
  }
  Clear();
  return State::Fine;
}

void SendQueue::Clear() {
  waiting_.clear();
  taken_ = 0;
}

bool SendQueue::Stalled() const {
  return Size() >= kHighBacklog && std::chrono::steady_clock::now() - moved_ >= kPatience;
}

TcpOutlet::TcpOutlet(const Endpoint& endpoint, std::ostream& log) : log_(log) {
  constexpr std::string_view kAction = "listen on";
  const AddressList addresses = Resolve(endpoint, SOCK_STREAM, kAction);
  listener_ = FileDescriptor(
      ::socket(addresses->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP));
  if (!listener_.Valid()) RaiseSystemFault(kAction, Text(endpoint));
  // A server that was ended a moment ago does not hold the port.
  const int on = 1;
  ::setsockopt(listener_.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (::bind(listener_.Get(), addresses->ai_addr, addresses->ai_addrlen) != 0 ||
      ::listen(listener_.Get(), SOMAXCONN) != 0) {
    RaiseSystemFault(kAction, Text(endpoint));
  }
  sockaddr_storage bound{};
  socklen_t length = sizeof bound;
  auto* const address = reinterpret_cast<sockaddr*>(&bound);
  if (::getsockname(listener_.Get(), address, &length) != 0) {
    RaiseSystemFault(kAction, Text(endpoint));
  }
  const Endpoint name = NameOf(address, length);
  address_ = Text(name);
  port_ = PortNumber(name.port);
}

std::string TcpOutlet::Where() const {
  return "tcp " + address_;
}

void TcpOutlet::Watch(std::vector<pollfd>& watched) const {
  watched.push_back({listener_.Get(), POLLIN, 0});
  for (const Client& client : clients_) {
    const int events = client.queue.Size() > 0 ? POLLIN | POLLOUT : POLLIN;
    watched.push_back({client.socket.Get(), static_cast<short>(events), 0});
  }
}

void TcpOutlet::Accept() {
  for (;;) {
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    auto* const address = reinterpret_cast<sockaddr*>(&peer);
    FileDescriptor socket(
        ::accept4(listener_.Get(), address, &length, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!socket.Valid()) return;
    // Each moment's lines leave at once, and whole.
    const int on = 1;
    ::setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    // What is kept for a client is kept here, where it is counted.
    const int sendBuffer = 1 << 16;
    ::setsockopt(socket.Get(), SOL_SOCKET, SO_SNDBUF, &sendBuffer, sizeof sendBuffer);
    clients_.push_back({std::move(socket), Text(NameOf(address, length)), {}});
    log_ << "client " << clients_.back().name << " connected" << std::endl;
  }
}

std::string_view TcpOutlet::Attend(Client& client) const {
  constexpr std::string_view kLeft = "has left";
  std::array<char, 4096> ignored;
  ssize_t length = 0;
  while ((length = ::recv(client.socket.Get(), ignored.data(), ignored.size(), 0)) > 0) {
  }
  if (length == 0 || !MayComeLater(errno)) return kLeft;
  const auto send = [&client](const char* bytes, std::size_t count) {
    return ::send(client.socket.Get(), bytes, count, MSG_NOSIGNAL);
  };
  if (client.queue.Flush(send) == SendQueue::State::Gone) return kLeft;
  return client.queue.Stalled() ? "reads too slowly and was dropped" : std::string_view{};
}

void TcpOutlet::Serve() {
  Accept();
  clients_.remove_if([this](Client& client) {
    const std::string_view cause = Attend(client);
    if (!cause.empty()) log_ << "client " << client.name << ' ' << cause << std::endl;
    return !cause.empty();
  });
}

void TcpOutlet::Send(const LineBatch& lines) {
  clients_.remove_if([&](Client& client) {
    if (client.queue.Add(lines.Text())) return false;
    log_ << "client " << client.name << " reads too slowly and was dropped" << std::endl;
    return true;
  });
}

std::size_t TcpOutlet::Backlog() const {
  std::size_t most = 0;
  for (const Client& client : clients_) most = std::max(most, client.queue.Size());
  return most;
}

UdpOutlet::UdpOutlet(const Endpoint& endpoint) : endpoint_(endpoint) {
  constexpr std::string_view kAction = "send to";
  const AddressList addresses = Resolve(endpoint, SOCK_DGRAM, kAction);
  addressLength_ = addresses->ai_addrlen;
  std::copy_n(reinterpret_cast<const char*>(addresses->ai_addr), addressLength_,
              reinterpret_cast<char*>(&address_));
  socket_ = FileDescriptor(
      ::socket(addresses->ai_family, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_UDP));
  const int on = 1;
  if (!socket_.Valid() ||
      ::setsockopt(socket_.Get(), SOL_SOCKET, SO_BROADCAST, &on, sizeof on) != 0) {
    RaiseSystemFault(kAction, Text(endpoint));
  }
}

std::string UdpOutlet::Where() const {
  return "udp " + Text(endpoint_);
}

void UdpOutlet::Send(const LineBatch& lines) {
  std::size_t from = 0;
  const std::string& text = lines.Text();
  for (std::size_t end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
    ::sendto(socket_.Get(), text.data() + from, end + 1 - from, MSG_NOSIGNAL,
             reinterpret_cast<const sockaddr*>(&address_), addressLength_);
  }
}

TerminalOutlet::TerminalOutlet(std::string linkPath, std::ostream& log)
    : log_(log), linkPath_(std::move(linkPath)) {
  constexpr std::string_view kAction = "make";
  constexpr std::string_view kObject = "a pseudo-terminal";
  master_ = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  std::array<char, 64> path{};
  if (!master_.Valid() || ::grantpt(master_.Get()) != 0 || ::unlockpt(master_.Get()) != 0) {
    RaiseSystemFault(kAction, kObject);
  }
  if (const int error = ::ptsname_r(master_.Get(), path.data(), path.size()); error != 0) {
    RaiseSystemFault(kAction, kObject, error);
  }
  path_ = path.data();
  // Only a terminal that was open once tells that nobody has it open.
  const FileDescriptor reader(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings{};
  if (!reader.Valid() || ::tcgetattr(reader.Get(), &settings) != 0) {
    RaiseSystemFault(kAction, kObject);
  }
  // Bytes as they are, and no echo.
  ::cfmakeraw(&settings);
  ::tcsetattr(reader.Get(), TCSANOW, &settings);
  if (linkPath_.empty()) return;
  std::error_code error;
  if (std::filesystem::is_symlink(linkPath_, error)) std::filesystem::remove(linkPath_, error);
  std::filesystem::create_symlink(path_, linkPath_, error);
  if (error) RaiseSystemFault("link", "\"" + linkPath_ + "\"", error.value());
}

TerminalOutlet::~TerminalOutlet() {
  if (linkPath_.empty()) return;
  // A later simulation may have taken the place.
  std::error_code ignored;
  if (std::filesystem::read_symlink(linkPath_, ignored) == path_) {
    std::filesystem::remove(linkPath_, ignored);
  }
}

std::string TerminalOutlet::Where() const {
  return "pty " + path_ + (linkPath_.empty() ? "" : " " + linkPath_);
}

bool TerminalOutlet::HasPeer() const {
  pollfd terminal{master_.Get(), 0, 0};
  return ::poll(&terminal, 1, 0) == 0 || (terminal.revents & POLLHUP) == 0;
}

// Without a reader there would be no end of the news that there is none.
void TerminalOutlet::Watch(std::vector<pollfd>& watched) const {
  if (!HasPeer()) return;
  const int events = queue_.Size() > 0 ? POLLIN | POLLOUT : POLLIN;
  watched.push_back({master_.Get(), static_cast<short>(events), 0});
}

void TerminalOutlet::Serve() {
  if (!HasPeer()) {
    queue_.Clear();
    return;
  }
  std::array<char, 4096> ignored;
  while (::read(master_.Get(), ignored.data(), ignored.size()) > 0) {
  }
  queue_.Flush([this](const char* bytes, std::size_t count) {
    return ::write(master_.Get(), bytes, count);
  });
}

void TerminalOutlet::Send(const LineBatch& lines) {
  if (!HasPeer()) return;
  if (!queue_.Stalled() && queue_.Add(lines.Text())) return;
  if (!std::exchange(lossTold_, true)) {
    log_ << "the reader of " << path_ << " reads too slowly and loses lines" << std::endl;
  }
}

bool TerminalOutlet::Drained() const {
  if (!HasPeer()) return true;
  if (Backlog() > 0) return false;
  const FileDescriptor reader(::open(path_.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  int unread = 0;
  return !reader.Valid() || ::ioctl(reader.Get(), FIONREAD, &unread) != 0 || unread == 0;
}

}  // namespace fathomline::simulator
