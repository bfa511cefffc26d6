#include "watch/source_activity.h"

#include <algorithm>
#include <utility>

namespace fathomline {
namespace {

// What comes within this time is one group: the sentences of a GSV, the lines of one read.
constexpr double kGroupSeconds = 0.5;
// How much a new gap says against those before it.
constexpr double kWeight = 1.0 / 8.0;
// An outage is no interval; but a source that really slows down is followed.
constexpr double kLongestGap = 4.0;
// A longer group is a source that sends all the time.
constexpr double kLongestGroup = 2.0;

double Follow(double mean, double sample) {
  return mean > 0.0 ? mean + kWeight * (sample - mean) : sample;
}

}  // namespace

double SourceActivity::Seconds(Time from, Time to) {
  return std::max(std::chrono::duration<double>(to - from).count(), 0.0);
}

// The slot of an address, or the one where it would stand.
SourceActivity::Row& SourceActivity::Slot(System& system, std::uint64_t packed) {
  constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15;  // Fibonacci hashing
  std::size_t slot = packed * kGolden >> 57;
  static_assert(kSlots == std::size_t{1} << (64 - 57));
  while (system.slots[slot].address.Packed() != packed && !system.slots[slot].address.None()) {
    slot = (slot + 1) % kSlots;
  }
  return system.slots[slot];
}

SourceActivity::Row& SourceActivity::Find(System& system, std::string_view line) {
  // Nearly every line has an address that is known, and needs no test of its characters.
  if (!line.empty() && (line.front() == '$' || line.front() == '!')) {
    Row& known = Slot(system, SentenceAddress::PackedOf(line.substr(1)));
    if (!known.address.None()) return known;
  }
  const SentenceAddress address = AddressOf(line);
  if (address.None()) return system.unreadable;
  Row& row = Slot(system, address.Packed());
  if (!row.address.None()) return row;
  if (system.used == kMostSentences) return system.unreadable;
  ++system.used;
  row.address = address;
  return row;
}

void SourceActivity::NoteRow(Row& row, Time now) {
  ++row.lines;
  ++row.inGroup;
  const Time before = std::exchange(row.last, now);
  // Most lines of a replay come at the same reading of the clock.
  if (row.lines == 1) {
    row.groupBegan = now;
  } else if (before != now && Seconds(before, now) >= kGroupSeconds) {
    EndGroup(row, before, now);
  }
}

// A group of lines lies between groupBegan and `before`, and the line of `now` begins another one.
void SourceActivity::EndGroup(Row& row, Time before, Time now) {
  const double gap = Seconds(before, now);
  const double length = Seconds(row.groupBegan, before);
  const auto lines = static_cast<double>(row.inGroup - 1);
  // Lines that followed each other closely for so long have an interval of their own.
  const double usual = row.interval > 0.0 || length < kLongestGroup ? row.interval : kGroupSeconds;
  row.interval = Follow(usual, usual > 0.0 ? std::min(gap, kLongestGap * usual) : gap);
  if (length < std::min(gap, kLongestGroup)) {
    const double period = length + gap;
    row.period =
        Follow(row.period, row.period > 0.0 ? std::min(period, kLongestGap * row.period) : period);
    row.perPeriod = Follow(row.perPeriod, lines);
  } else {
    row.period = 0.0;
  }
  row.groupBegan = now;
  row.inGroup = 1;
}

void SourceActivity::Note(int system, std::string_view line, Time now) {
  System& source = rows_[system];
  ++source.all.lines;
  source.all.last = now;
  NoteRow(Find(source, line), now);
}

void SourceActivity::Tick(Time now) {
  const std::size_t place = ticks_++ % kTicksOfRate;
  tickTimes_[place] = now;
  for (System& system : rows_) {
    system.allTicks[place] = system.all.lines;
    for (std::size_t i = 0; i < kSlots; ++i) system.ticks[i][place] = system.slots[i].lines;
  }
}

void SourceActivity::Reset() {
  for (System& system : rows_) system = {};
}

Liveliness SourceActivity::StateOf(const Row& row, Time now) {
  if (row.lines == 0) return Liveliness::Dead;
  const double limit = std::max(kIntervalsUntilLate * row.interval, kLeastLimit);
  const double age = Seconds(row.last, now);
  if (age <= limit) return Liveliness::Alive;
  return age <= kLimitsUntilDead * limit ? Liveliness::Late : Liveliness::Dead;
}

double SourceActivity::RateOf(const Row& row, const Counts& ticks, Time now) const {
  // What comes in groups is counted by these: a count within some seconds would jump.
  if (row.period > 0.0) {
    return StateOf(row, now) == Liveliness::Alive ? row.perPeriod / row.period : 0.0;
  }
  if (ticks_ == 0) return 0.0;
  const std::size_t oldest = ticks_ < kTicksOfRate ? 0 : ticks_ % kTicksOfRate;
  const double passed = Seconds(tickTimes_[oldest], now);
  return passed > 0.0 ? static_cast<double>(row.lines - ticks[oldest]) / passed : 0.0;
}

SourceActivity::Source SourceActivity::Look(int system, Time now) const {
  const System& source = rows_[system];
  Source seen;
  seen.lines = source.all.lines;
  seen.unreadable = source.unreadable.lines;
  seen.rate = RateOf(source.all, source.allTicks, now);
  seen.age = Seconds(source.all.last, now);
  seen.state = source.used > 0 ? Liveliness::Dead : StateOf(source.unreadable, now);
  for (const Row& row : source.slots) {
    if (!row.address.None()) seen.state = std::min(seen.state, StateOf(row, now));
  }
  return seen;
}

std::vector<SourceActivity::Sentence> SourceActivity::Sentences(int system, Time now) const {
  const System& source = rows_[system];
  std::vector<Sentence> sentences;
  for (std::size_t i = 0; i < kSlots; ++i) {
    const Row& row = source.slots[i];
    if (row.address.None()) continue;
    sentences.push_back({row.address, row.lines, RateOf(row, source.ticks[i], now),
                         Seconds(row.last, now), StateOf(row, now)});
  }
  std::sort(sentences.begin(), sentences.end(), [](const Sentence& a, const Sentence& b) {
    return a.address.Text() < b.address.Text();
  });
  return sentences;
}

}  // namespace fathomline
