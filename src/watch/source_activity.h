// Whether the sources still send: what has come from each system, how often and when last.
//
// Every line of every source is noted, so noting is one look into a small table and no more. What
// is worked out from the counts is worked out when somebody looks.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/per_system.h"
#include "watch/sentence_address.h"

namespace fathomline {

// Late is what has been silent for more than three of its own intervals, and for three seconds at
// least; dead what has been silent for ten times as long as that.
enum class Liveliness : std::uint8_t { Alive, Late, Dead };

class SourceActivity {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr double kLeastLimit = 3.0;  // seconds
  static constexpr double kIntervalsUntilLate = 3.0;
  static constexpr double kLimitsUntilDead = 10.0;
  // Rates are those of the last so many ticks.
  static constexpr std::size_t kTicksOfRate = 5;
  // Further addresses of a system are counted among its lines only.
  static constexpr std::size_t kMostSentences = 96;

  struct Sentence {
    SentenceAddress address;
    std::int64_t lines = 0;
    double rate = 0.0;  // lines a second; 0 once it is late
    double age = 0.0;   // seconds since the last one
    Liveliness state = Liveliness::Dead;
  };

  struct Source {
    std::int64_t lines = 0;
    std::int64_t unreadable = 0;  // lines in which no sentence begins, or one beyond the table
    double rate = 0.0;
    double age = 0.0;  // meaningless without a line
    // As the liveliest of its sentences, or of its lines where there is none.
    Liveliness state = Liveliness::Dead;
  };

  // `now` never goes back; a few milliseconds more or less do not matter.
  void Note(int system, std::string_view line, Time now);

  // To be called about once a second: the counts from which rates are taken.
  void Tick(Time now);

  // Forgets what a system, or all of them, have sent.
  void Reset(int system) { rows_[system] = {}; }
  void Reset();

  Source Look(int system, Time now) const;
  // In the order of talker and sentence.
  std::vector<Sentence> Sentences(int system, Time now) const;

 private:
  struct Row {
    SentenceAddress address;
    std::int64_t lines = 0;
    Time last{};
    Time groupBegan{};
    std::int64_t inGroup = 0;
    // Means, in seconds; 0 where lines follow each other too closely to have them.
    double interval = 0.0;   // the silence between groups
    double period = 0.0;     // from group to group
    double perPeriod = 0.0;  // lines
  };
  using Counts = std::array<std::int64_t, kTicksOfRate>;

  // A power of two, and roomy enough for short searches.
  static constexpr std::size_t kSlots = 128;

  struct System {
    std::array<Row, kSlots> slots;
    std::array<Counts, kSlots> ticks{};
    std::size_t used = 0;
    Row all;
    Row unreadable;
    Counts allTicks{};
  };

  static void NoteRow(Row& row, Time now);
  static void EndGroup(Row& row, Time before, Time now);
  static Row& Slot(System& system, std::uint64_t packed);
  static Row& Find(System& system, std::string_view line);
  static double Seconds(Time from, Time to);
  static Liveliness StateOf(const Row& row, Time now);
  double RateOf(const Row& row, const Counts& ticks, Time now) const;

  PerSystem<System> rows_;
  std::array<Time, kTicksOfRate> tickTimes_{};
  std::size_t ticks_ = 0;  // taken so far
};

}  // namespace fathomline
