#include "sources/live_input.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/serial_ports.h"
#include "base/text.h"

namespace fathomline {
namespace {

constexpr std::array kErrorsThatEmptyTheBuffer = {CommEvent::Break, CommEvent::Framing,
                                                  CommEvent::Overrun, CommEvent::ReceiveOverflow,
                                                  CommEvent::Parity};
constexpr std::size_t kLongestFragment = 65535;
// Entering offline mode leaves the ports above open.
constexpr int kLastPortClosedForOffline = 10;
constexpr std::int32_t kLastTcpPort = 65535;
constexpr int kAddressNotAvailable = 10049;  // as sockets number their errors

}  // namespace

std::string SerialSettingsText(const ComportSetup& row) {
  return PlainText(row.Baud) + "," + std::string(FirstCharacters(row.Parity, 1)) + "," +
         PlainText(row.DataBits) + "," + PlainText(row.StopBits);
}

LiveInput::LiveInput(Records& records, Links& links, Desktop& desktop, LineSink& sink,
                     FaultLog& faults)
    : records_(records), links_(links), desktop_(desktop), sink_(sink), faults_(faults) {
  for (int port = 1; port <= kSerialPorts; ++port) {
    SerialLink& link = links_.MSComm1(port);
    link.onComm = [this, port] { ReceiveSerial(port); };
    link.onLost = [this, port](const std::string& cause) { LoseSerial(port, cause); };
  }
  for (int system = 1; system <= kSystems; ++system) {
    TcpLink& tcp = links_.Winsock1(system);
    tcp.onDataArrival = [this, system, &tcp] { ReceiveText(system, tcp.GetData()); };
    tcp.onError = [this, system](int number, const std::string& description) {
      TcpError(system, number, description);
    };
    UdpLink& udp = links_.WinsockUDP(system);
    udp.onDataArrival = [this, system, &udp] { ReceiveText(system, udp.GetData()); };
  }
}

// The links outlive this.
LiveInput::~LiveInput() {
  for (int port = 1; port <= kSerialPorts; ++port) {
    SerialLink& link = links_.MSComm1(port);
    desktop_.Stop(link);
    link.Close();
    link.onComm = nullptr;
    link.onLost = nullptr;
  }
  for (int system = 1; system <= kSystems; ++system) {
    TcpLink& tcp = links_.Winsock1(system);
    desktop_.Stop(tcp);
    tcp.Close();
    tcp.onDataArrival = nullptr;
    tcp.onError = nullptr;
    UdpLink& udp = links_.WinsockUDP(system);
    desktop_.Stop(udp);
    udp.Close();
    udp.onDataArrival = nullptr;
  }
}

void LiveInput::OpenPorts() {
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.CommSetups[system].Enabled) OpenPort(system);
  }
}

bool LiveInput::Watched(int system, const std::string& cause) {
  return watcher_ != nullptr && watcher_->LinkFailed(system, cause);
}

void LiveInput::OpenPort(int system) {
  if (watcher_ != nullptr) watcher_->LinkAsked(system);
  const CommSetup& setup = records_.CommSetups[system];
  if (setup.UseTCPIP) {
    OpenTcp(system);
  } else if (setup.UseUDP) {
    ResumeNext([&] { OpenUdp(system); },
               [&](const Fault& fault) { RefusePort(system, fault, "UDP Port ", setup.UDPPort); });
  } else {
    ResumeNext([&] { OpenSerial(system); },
               [&](const Fault& fault) { RefusePort(system, fault, "Comport ", setup.ComPort); });
  }
}

// The program is always the client.
void LiveInput::OpenTcp(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  TcpLink& link = links_.Winsock1(system);
  if (link.State() != LinkState::Closed) link.Close();
  // A setup file may hold any number; cut to 16 bits it would name another port.
  if (setup.TCPPort < 1 || setup.TCPPort > kLastTcpPort) {
    TcpError(system, kAddressNotAvailable,
             "Port " + PlainText(setup.TCPPort) + " is not in the range 1-65535");
    return;
  }
  link.SetRemoteHost(setup.IPAddress);
  link.SetRemotePort(setup.TCPPort);
  desktop_.Start(link);
  link.Connect();
}

void LiveInput::OpenUdp(int system) {
  UdpLink& link = links_.WinsockUDP(system);
  if (link.State() != LinkState::Closed) link.Close();
  link.Bind(records_.CommSetups[system].UDPPort);
  desktop_.Start(link);
}

void LiveInput::OpenSerial(int system) {
  const int port = records_.CommSetups[system].ComPort;
  if (port == 0) Raise(FaultNumber::OutOfRange, "No comport has been chosen");
  SerialLink& link = links_.MSComm1(port);
  if (link.PortOpen()) link.Close();
  Buffer(port).Clear();
  ComportSetup& row = records_.Comport(port);
  // A setup file from before the port had a row leaves it without an owner.
  if (row.System == 0) row.System = static_cast<std::int16_t>(system);
  link.SetSettings(SerialSettingsText(row));
  link.Open();
  desktop_.Start(link);
}

void LiveInput::RefusePort(int system, const Fault& fault, std::string_view kind,
                           std::int32_t port) {
  if (Watched(system, fault.Description())) return;
  CommSetup& setup = records_.CommSetups[system];
  desktop_.Say(fault.Description() + ". " + std::string(kind) + PlainText(port) +
               " not available! System " + PlainText(system) + " -" + setup.Name + " disabled");
  setup.Enabled = false;
  setup.ComPort = 0;
}

void LiveInput::CloseLinks(int system) {
  if (watcher_ != nullptr) watcher_->LinkAsked(system);
  links_.Winsock1(system).Close();
  links_.WinsockUDP(system).Close();
  const int port = records_.CommSetups[system].ComPort;
  if (port < 1 || port > kComports) return;
  // A stale number may name a port that another system has taken since.
  if (records_.Comport(port).System != system) return;
  if (links_.MSComm1(port).PortOpen()) links_.MSComm1(port).Close();
  records_.Comport(port).System = 0;
}

void LiveInput::CloseForOffline() {
  for (int port = 1; port <= kLastPortClosedForOffline; ++port) {
    if (links_.MSComm1(port).PortOpen()) links_.MSComm1(port).Close();
  }
  for (int system = 1; system <= kSystems; ++system) {
    if (watcher_ != nullptr) watcher_->LinkAsked(system);
    links_.Winsock1(system).Close();
    links_.WinsockUDP(system).Close();
  }
}

std::size_t LiveInput::Index(int port) {
  if (port < 1 || port > kSerialPorts) Raise(FaultNumber::OutOfRange);
  return static_cast<std::size_t>(port - 1);
}

std::string_view LiveInput::LineBuffer(int port) const {
  return lineBuffers_[Index(port)].Text();
}

void LiveInput::Backlog::Append(std::string_view bytes) {
  if (taken_ > bytes_.size() / 2) {
    bytes_.erase(0, taken_);
    taken_ = 0;
  }
  bytes_ += bytes;
}

void LiveInput::Backlog::Clear() {
  bytes_.clear();
  taken_ = 0;
}

void LiveInput::ReceiveSerial(int port) {
  const CommEvent event = links_.MSComm1(port).CommEvent();
  if (event == CommEvent::Received) {
    AssembleLine(port);
  } else if (std::find(kErrorsThatEmptyTheBuffer.begin(), kErrorsThatEmptyTheBuffer.end(), event) !=
             kErrorsThatEmptyTheBuffer.end()) {
    Buffer(port).Clear();
  }
}

// At most one line per event; whole lines behind it wait for the next one.
void LiveInput::AssembleLine(int port) {
  Backlog& buffer = Buffer(port);
  const std::string input = links_.MSComm1(port).Input();
  buffer.Append(input);
  const int system = records_.Comport(port).System;
  // An event behind one that has taken all shows nothing new.
  const bool monitored = records_.SystemSetups[system][WindowFlag::NMEA];
  if (monitored && !input.empty()) sink_.ShowInput(system, buffer.Text());
  const std::size_t feed = buffer.Text().find('\n');
  if (feed == std::string_view::npos) {
    if (buffer.Text().size() > kLongestFragment) buffer.Clear();
    return;
  }
  const std::string line(buffer.Text().substr(0, feed + 1));
  buffer.Take(line.size());
  if (records_.Emptybuffer[system]) IgnoreWaitingLines(system, buffer);
  ResumeNext([&] { sink_.ProcessSentence(system, line); },
             [&](const Fault& fault) { faults_.WriteErrorLog(fault); });
}

void LiveInput::IgnoreWaitingLines(int system, Backlog& buffer) {
  const std::string_view text = buffer.Text();
  const auto waiting = static_cast<std::int32_t>(std::count(text.begin(), text.end(), '\n'));
  if (waiting == 0) return;
  buffer.Take(text.rfind('\n') + 1);
  records_.IgnoredMessages[system] += waiting;
  sink_.ShowIgnoredMessages(system, records_.IgnoredMessages[system]);
}

// The system keeps its port, so that a device that comes back can be opened again.
void LiveInput::LoseSerial(int port, const std::string& cause) {
  Buffer(port).Clear();
  const int system = records_.Comport(port).System;
  const bool owned = system >= 1 && system <= kSystems;
  if (owned && Watched(system, cause)) return;
  std::string text = cause + ". Comport " + PlainText(port) + " has been closed!";
  if (owned) {
    text += " System " + PlainText(system) + " -" + records_.CommSetups[system].Name;
  }
  desktop_.Ask({.text = text, .icon = BoxIcon::Exclamation});
}

// A read may have drained what a further arrival tells of. What is left without a line feed is
// thrown away: a socket has no memory from one read to the next.
void LiveInput::ReceiveText(int system, const std::string& text) {
  if (text.empty()) return;
  if (records_.SystemSetups[system][WindowFlag::NMEA]) sink_.ShowInput(system, text);
  std::string_view rest = text;
  for (std::size_t feed = rest.find('\n'); feed != std::string_view::npos; feed = rest.find('\n')) {
    const std::string_view line = rest.substr(0, feed + 1);
    rest.remove_prefix(feed + 1);
    sink_.ProcessSentence(system, line);
  }
}

void LiveInput::TcpError(int system, int number, const std::string& description) {
  if (!Watched(system, description)) {
    desktop_.Say("TCP/IP Error, system " + PlainText(system) + " :" + PlainText(number) + " - " +
                 description);
  }
  TcpLink& link = links_.Winsock1(system);
  if (link.State() != LinkState::Closed) link.Close();
}

}  // namespace fathomline
