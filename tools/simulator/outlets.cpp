#include "simulator/outlets.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "base/fault.h"

namespace fathomline::simulator {
namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

std::string Text(const Endpoint& endpoint) {
  const bool colons = endpoint.host.find(':') != std::string::npos;
  return (colons ? "[" + endpoint.host + "]" : endpoint.host) + ":" + endpoint.port;
}

// A name that stands for both is taken for the older kind of address, on which receivers listen.
AddressList Resolve(const Endpoint& endpoint, int kind, std::string_view action) {
  UseNetwork();
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
        "cannot " + std::string(action) + " " + Text(endpoint) + ": " + ResolverMessage(error));
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

SendQueue::State SendQueue::Flush(
    const std::function<std::optional<std::size_t>(std::string_view)>& write) {
  while (Size() > 0) {
    const auto written = write(std::string_view(waiting_).substr(taken_));
    if (!written) return State::Gone;
    if (*written == 0) return State::Fine;
    taken_ += *written;
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
  listener_ = Socket(addresses->ai_family, SOCK_STREAM, IPPROTO_TCP);
  if (!listener_.Valid()) RaiseSystemFault(kAction, Text(endpoint), NetworkError());
  listener_.ReuseAddress();
  if (::bind(listener_.Get(), addresses->ai_addr, static_cast<socklen_t>(addresses->ai_addrlen)) !=
          0 ||
      ::listen(listener_.Get(), SOMAXCONN) != 0) {
    RaiseSystemFault(kAction, Text(endpoint), NetworkError());
  }
  sockaddr_storage bound{};
  socklen_t length = sizeof bound;
  auto* const address = reinterpret_cast<sockaddr*>(&bound);
  if (::getsockname(listener_.Get(), address, &length) != 0) {
    RaiseSystemFault(kAction, Text(endpoint), NetworkError());
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
    Socket socket = listener_.Accept(address, &length);
    if (!socket.Valid()) return;
    // Each moment's lines leave at once, and whole.
    socket.Set(IPPROTO_TCP, TCP_NODELAY, 1);
    // What is kept for a client is kept here, where it is counted.
    socket.Set(SOL_SOCKET, SO_SNDBUF, 1 << 16);
    clients_.push_back({std::move(socket), Text(NameOf(address, length)), {}});
    log_ << "client " << clients_.back().name << " connected" << std::endl;
  }
}

std::string_view TcpOutlet::Attend(Client& client) const {
  constexpr std::string_view kLeft = "has left";
  std::array<char, 4096> ignored;
  std::optional<std::size_t> heard;
  while ((heard = client.socket.Receive(ignored.data(), ignored.size())) > 0U) {
  }
  if (!heard) return kLeft;
  const auto send = [&client](std::string_view bytes) { return client.socket.Send(bytes); };
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
  addressLength_ = static_cast<socklen_t>(addresses->ai_addrlen);
  std::copy_n(reinterpret_cast<const char*>(addresses->ai_addr), addressLength_,
              reinterpret_cast<char*>(&address_));
  socket_ = Socket(addresses->ai_family, SOCK_DGRAM, IPPROTO_UDP);
  if (!socket_.Valid() || !socket_.Set(SOL_SOCKET, SO_BROADCAST, 1)) {
    RaiseSystemFault(kAction, Text(endpoint), NetworkError());
  }
}

std::string UdpOutlet::Where() const {
  return "udp " + Text(endpoint_);
}

void UdpOutlet::Send(const LineBatch& lines) {
  std::size_t from = 0;
  const std::string& text = lines.Text();
  for (std::size_t end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
    socket_.SendTo(std::string_view(text).substr(from, end + 1 - from),
                   reinterpret_cast<const sockaddr*>(&address_), addressLength_);
  }
}

}  // namespace fathomline::simulator
