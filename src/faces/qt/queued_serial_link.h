// What serial ports have in common, whatever drives them: the text of their settings, and the queue
// of events that each arrival and each error raises.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "toolkit/links.h"

namespace fathomline {

struct SerialSettings {
  int baud = 0;     // bits per second
  char parity = 0;  // n, e, o, m or s
  int dataBits = 0;
  bool twoStopBits = false;
};

// "4800,N,8,1". Raises InvalidCall for a text that does not read so.
SerialSettings ParseSerialSettings(std::string_view text);

class QueuedSerialLink : public SerialLink {
 public:
  // While a message box holds the port, no more bytes than this wait.
  static constexpr std::size_t kBufferSize = 65536;

  void SetSettings(std::string_view settings) final { settings_ = settings; }
  void Open() final;
  void Close() final;
  fathomline::CommEvent CommEvent() const final { return event_; }
  std::string Input() final;
  bool Poll(std::chrono::steady_clock::time_point until) final;

 protected:
  // The port has been closed before; raises the fault of the system.
  virtual void OpenDevice(const SerialSettings& settings) = 0;
  virtual void CloseDevice() = 0;
  // The bytes that wait, and taking them all.
  virtual std::size_t Waiting() = 0;
  virtual std::string Take() = 0;
  // Passes the errors that the driver has met since the last call to Raise.
  virtual void LookForErrors() = 0;
  // The cause where the device has gone.
  virtual std::optional<std::string> Lost() = 0;

  void Raise(fathomline::CommEvent event) { events_.push_back(event); }

 private:
  void CountBytes();

  std::string settings_;
  std::deque<fathomline::CommEvent> events_;
  std::size_t counted_ = 0;
  fathomline::CommEvent event_ = fathomline::CommEvent::None;
};

}  // namespace fathomline
