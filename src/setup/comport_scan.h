// Which serial ports there are, and whether a system may have them.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "records/records.h"
#include "toolkit/links.h"

namespace fathomline {

inline constexpr std::string_view kPortFree = "free";
inline constexpr std::string_view kPortCurrent = "current";  // the system's own
inline constexpr std::string_view kPortBusy = "busy";  // another system's, or refused by the system

// What the latest scan saw of each port, beside the rows of Comports.
class ComportScan {
 public:
  // Writes Present and Status of every row as the system is to see them. A port whose scan fails
  // keeps what it was, with "err " in front of its status.
  void Run(Records& records, Links& links, int system);

  // "COM5 - free", with what is known of its device behind it.
  std::string EntryText(const Records& records, int port) const;

  // What the user can do about a port that the operating system refuses; empty for any other.
  std::string Advice(int port) const;

 private:
  const SerialPortInfo& Info(int port) const;

  std::array<SerialPortInfo, kComports> infos_;
  std::array<bool, kComports> refused_{};
};

}  // namespace fathomline
