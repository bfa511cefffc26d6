// Where the sources deliver their lines, and what they need of the session above them.
#pragma once

#include <cstdint>
#include <string_view>

namespace fathomline {

class LineSink {
 public:
  virtual ~LineSink() = default;
  // Takes one line of a system. Raises what its processing raises.
  virtual void ProcessSentence(int system, std::string_view line) = 0;
  // A replay begins from rest: its lines say nothing of the ones before.
  virtual void BeginReplay() {}
  // What waits in the input of a system whose monitor is open.
  virtual void ShowInput(int /*system*/, std::string_view /*text*/) {}
  // The system's count of lines that were dropped unread has grown.
  virtual void ShowIgnoredMessages(int /*system*/, std::int32_t /*count*/) {}
};

class SessionReset {
 public:
  virtual ~SessionReset() = default;
  // Brings the whole session back to its start.
  virtual void ResetAll() = 0;
};

}  // namespace fathomline
