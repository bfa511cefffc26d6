#include "watch/sentence_log.h"

#include <algorithm>
#include <cstring>

#include "base/fault.h"

namespace fathomline {

void SentenceLog::Start() {
  Stop();
  entries_.resize(kMostLines);
  // Not written to before it is needed, so that the memory is only taken up as lines come.
  bytes_ = std::make_unique_for_overwrite<char[]>(kMostBytes);
}

void SentenceLog::Stop() {
  *this = {};
}

void SentenceLog::Clear() {
  first_ = end_;
  passedBy_ = 0;
}

void SentenceLog::Take(int system, std::string_view line, Time arrival) {
  if (!Running()) return;
  if (held_) {
    ++passedBy_;
    return;
  }
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  line = line.substr(0, kLongestLine);
  // A line does not go over the end of the bytes into the next round.
  const std::uint64_t within = place_ % kMostBytes;
  if (within + line.size() > kMostBytes) place_ += kMostBytes - within;
  const std::uint64_t behind = place_ + line.size();
  while (first_ < end_ &&
         (end_ - first_ == kMostLines || behind - EntryAt(first_).place > kMostBytes)) {
    ++first_;
  }
  if (!line.empty()) std::memcpy(&bytes_[place_ % kMostBytes], line.data(), line.size());
  entries_[static_cast<std::size_t>(end_ % kMostLines)] = {
      arrival, place_, static_cast<std::uint16_t>(line.size()), static_cast<std::uint8_t>(system)};
  place_ = behind;
  ++end_;
}

SentenceLog::Line SentenceLog::At(std::uint64_t number) const {
  if (number < first_ || number >= end_) Raise(FaultNumber::OutOfRange);
  const Entry& entry = EntryAt(number);
  return {entry.arrival, entry.system, {&bytes_[entry.place % kMostBytes], entry.length}};
}

}  // namespace fathomline
