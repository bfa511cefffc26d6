#include "faces/qt/queued_serial_link.h"

#include <algorithm>
#include <array>

#include "base/fault.h"
#include "base/strict_number.h"

namespace fathomline {
namespace {

// A port tells of every so many bytes.
constexpr std::size_t kBytesPerEvent = 32;
constexpr std::size_t kMostEvents = QueuedSerialLink::kBufferSize / kBytesPerEvent;

int SettingWithin(std::string_view text, int lowest, int highest) {
  const std::optional<int> value = StrictNumber<int>(text);
  if (!value || *value < lowest || *value > highest) Raise(FaultNumber::InvalidCall);
  return *value;
}

std::string_view Stripped(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

SerialSettings ParseSerialSettings(std::string_view text) {
  std::array<std::string_view, 4> parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t comma = text.find(',');
    if ((comma == std::string_view::npos) != (i + 1 == parts.size())) {
      Raise(FaultNumber::InvalidCall);
    }
    parts[i] = Stripped(text.substr(0, comma));
    if (comma != std::string_view::npos) text.remove_prefix(comma + 1);
  }
  constexpr int kHighestBaud = 20'000'000;
  SerialSettings settings;
  settings.baud = SettingWithin(parts[0], 1, kHighestBaud);
  constexpr std::string_view kParities = "NEOMSneoms";
  if (parts[1].size() != 1 || kParities.find(parts[1]) == std::string_view::npos) {
    Raise(FaultNumber::InvalidCall);
  }
  settings.parity = static_cast<char>(parts[1][0] | 0x20);
  settings.dataBits = SettingWithin(parts[2], 5, 8);
  settings.twoStopBits = SettingWithin(parts[3], 1, 2) == 2;
  return settings;
}

void QueuedSerialLink::Open() {
  Close();
  OpenDevice(ParseSerialSettings(settings_));
}

void QueuedSerialLink::Close() {
  CloseDevice();
  events_.clear();
  counted_ = 0;
}

std::string QueuedSerialLink::Input() {
  CountBytes();
  counted_ = 0;
  return Take();
}

void QueuedSerialLink::CountBytes() {
  const std::size_t waiting = Waiting();
  if (waiting <= counted_) return;
  const std::size_t events = (waiting - counted_ + kBytesPerEvent - 1) / kBytesPerEvent;
  counted_ = waiting;
  const std::size_t room = events_.size() < kMostEvents ? kMostEvents - events_.size() : 0;
  events_.insert(events_.end(), std::min(events, room), fathomline::CommEvent::Received);
}

bool QueuedSerialLink::Poll(std::chrono::steady_clock::time_point until) {
  if (!PortOpen()) return false;
  LookForErrors();
  CountBytes();
  // The handler may close the port, which empties the queue.
  while (!events_.empty() && std::chrono::steady_clock::now() < until) {
    event_ = events_.front();
    events_.pop_front();
    if (onComm) onComm();
    if (PortOpen()) CountBytes();
  }
  if (!events_.empty()) return true;
  if (!PortOpen()) return false;
  if (const auto cause = Lost()) {
    Close();
    if (onLost) onLost(*cause);
  }
  return false;
}

}  // namespace fathomline
