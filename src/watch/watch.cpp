#include "watch/watch.h"

namespace fathomline {

void Watch::StartLog() {
  log_.Start();
  LookAgain();
}

void Watch::StopLog() {
  log_.Stop();
  LookAgain();
}

void Watch::FollowSatellites(int system) {
  system_ = system;
  satellites_.Reset();
  LookAgain();
}

void Watch::Reset() {
  activity_.Reset();
  satellites_.Reset();
}

void Watch::TakeClosely(int system, std::string_view line, Time now) {
  if (log_.Running()) log_.Take(system, line, now);
  if (system == system_) satellites_.Take(SentenceOf(line));
}

}  // namespace fathomline
