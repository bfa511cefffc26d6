#include "support/headless_links.h"

namespace fathomline {

namespace {

// A port tells of every so many bytes.
constexpr std::size_t kBytesPerEvent = 32;

bool InTime(std::chrono::steady_clock::time_point until) {
  return std::chrono::steady_clock::now() < until;
}

}  // namespace

void HeadlessSerialLink::Arrive(std::string_view bytes) {
  if (!open_) return;
  buffer_ += bytes;
  const std::size_t events = (bytes.size() + kBytesPerEvent - 1) / kBytesPerEvent;
  events_.insert(events_.end(), events, fathomline::CommEvent::Received);
}

void HeadlessSerialLink::Arrive(fathomline::CommEvent event) {
  if (open_) events_.push_back(event);
}

void HeadlessSerialLink::Lose(const std::string& cause) {
  Close();
  if (onLost) onLost(cause);
}

void HeadlessSerialLink::Open() {
  if (refusal) Raise(FaultNumber::DeviceError, *refusal);
  open_ = true;
}

void HeadlessSerialLink::Close() {
  open_ = false;
  buffer_.clear();
  events_.clear();
}

bool HeadlessSerialLink::Poll(std::chrono::steady_clock::time_point until) {
  // The handler may close the port, which empties the queue.
  while (!events_.empty() && InTime(until)) {
    event_ = events_.front();
    events_.pop_front();
    if (onComm) onComm();
  }
  return !events_.empty();
}

void HeadlessTcpLink::Arrive(std::string_view bytes) {
  if (state_ == LinkState::Connected) buffer_ += bytes;
}

void HeadlessTcpLink::Fail(int number, std::string description) {
  error_ = {number, std::move(description)};
  state_ = LinkState::Error;
}

void HeadlessTcpLink::Close() {
  state_ = LinkState::Closed;
  buffer_.clear();
  error_.reset();
}

void HeadlessTcpLink::Connect() {
  statesAtConnect.push_back(state_);
  if (refusal) {
    Fail(refusal->first, refusal->second);
  } else {
    state_ = LinkState::Connected;
  }
}

bool HeadlessTcpLink::Poll(std::chrono::steady_clock::time_point) {
  if (const auto error = std::exchange(error_, {}); error && onError) {
    onError(error->first, error->second);
  }
  if (!buffer_.empty() && onDataArrival) onDataArrival();
  return false;
}

void HeadlessUdpLink::Arrive(std::string_view datagram) {
  if (state_ != LinkState::Open) return;
  buffer_ += datagram;
  ++arrivals_;
}

void HeadlessUdpLink::Close() {
  state_ = LinkState::Closed;
  buffer_.clear();
  arrivals_ = 0;
}

void HeadlessUdpLink::Bind(int port) {
  if (refusal) Raise(FaultNumber::DeviceError, *refusal);
  port_ = port;
  state_ = LinkState::Open;
}

bool HeadlessUdpLink::Poll(std::chrono::steady_clock::time_point until) {
  while (arrivals_ > 0 && InTime(until)) {
    --arrivals_;
    if (onDataArrival) onDataArrival();
  }
  return arrivals_ > 0;
}

SerialPortInfo HeadlessLinks::Probe(int port) {
  HeadlessSerialLink& link = MSComm1(port);
  SerialPortInfo info = link.info;
  if (link.PortOpen() || link.refusal) info.busy = true;
  return info;
}

}  // namespace fathomline
