// How fast a replay goes on, by the time that its own sentences tell.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include "watch/sentence_address.h"

namespace fathomline {

class ReplayPace {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr int kAsFastAsPossible = 0;
  // No line is waited for any longer, since recordings have gaps.
  static constexpr std::chrono::seconds kLongestWait{60};
  // A line that comes later than this is not made up for: somebody has held the replay.
  static constexpr std::chrono::seconds kLate{1};
  // One sentence leads, since talkers of one recording may tell different times. When it has been
  // missing for so many others that tell a time, another one takes its place.
  static constexpr int kMissing = 50;

  // Times as fast as the recording was made; kAsFastAsPossible: without waiting.
  // The next line is due at once.
  void SetSpeed(int times) { *this = ReplayPace(times); }
  int Speed() const { return speed_; }
  bool Waits() const { return speed_ != kAsFastAsPossible; }

  // What has been told holds no longer: the next line is due at once.
  void Restart() { *this = ReplayPace(speed_); }

  // Whether the line that comes next may be taken by now. It is then taken.
  bool Due(std::string_view line, Time now);

  ReplayPace() = default;

 private:
  explicit ReplayPace(int speed) : speed_(speed) {}

  bool Leads(SentenceAddress address);

  int speed_ = kAsFastAsPossible;
  SentenceAddress leader_;
  int others_ = 0;                    // since the leader
  std::optional<std::int64_t> told_;  // by the leader, milliseconds of the day
  Time due_{};                        // of what it told
};

}  // namespace fathomline
