// Who watches the lines beside the analysis: all that there is to see of a line passes through here
// once, whatever becomes of it at the gate.
#pragma once

#include <string_view>

#include "watch/satellites_in_view.h"
#include "watch/sentence_log.h"
#include "watch/source_activity.h"

namespace fathomline {

class Watch {
 public:
  using Time = std::chrono::steady_clock::time_point;

  void Take(int system, std::string_view line, Time now) {
    activity_.Note(system, line, now);
    if (closely_) TakeClosely(system, line, now);
  }

  SourceActivity& Activity() { return activity_; }
  const SourceActivity& Activity() const { return activity_; }

  // The log runs while somebody looks at it.
  const SentenceLog& Log() const { return log_; }
  void StartLog();
  void StopLog();
  void HoldLog(bool held) { log_.SetHeld(held); }
  void ClearLog() { log_.Clear(); }

  // The satellites are those of one system, from when that was chosen; 0: of none.
  const SatellitesInView& Satellites() const { return satellites_; }
  int SystemOfSatellites() const { return system_; }
  void FollowSatellites(int system);

  // The session begins anew. The log goes on.
  void Reset();

 private:
  void TakeClosely(int system, std::string_view line, Time now);
  void LookAgain() { closely_ = log_.Running() || system_ != 0; }

  SourceActivity activity_;
  SentenceLog log_;
  SatellitesInView satellites_;
  int system_ = 0;
  bool closely_ = false;
};

}  // namespace fathomline
