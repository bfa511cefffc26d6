// The latest lines of all systems as they came, with the time of their arrival.
//
// A ring of a fixed size: while it runs, a line costs one copy and no allocation; while it does
// not, it holds nothing and takes nothing.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "watch/sentence_address.h"

namespace fathomline {

class SentenceLog {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::uint64_t kMostLines = 100'000;
  // Lines of more than 300 bytes on average leave room for fewer.
  static constexpr std::size_t kMostBytes = std::size_t{32} << 20;
  // Of a longer line the beginning is kept.
  static constexpr std::size_t kLongestLine = 65'535;

  struct Line {
    Time arrival;
    int system = 0;
    std::string_view text;  // without its line end; valid until the next Take
  };

  // Begins anew, with room for what is to come.
  void Start();
  // Gives the room back.
  void Stop();
  bool Running() const { return !entries_.empty(); }
  // While it is held nothing is taken, so that what it holds can be read at leisure.
  void SetHeld(bool held) { held_ = held; }
  bool Held() const { return held_; }
  // Forgets what it holds; numbers go on.
  void Clear();

  void Take(int system, std::string_view line, Time arrival);

  // Lines are numbered as they come, from 0. Those from First to before End are held.
  std::uint64_t First() const { return first_; }
  std::uint64_t End() const { return end_; }
  // Raises OutOfRange for a number that is not held.
  Line At(std::uint64_t number) const;
  // How many lines have come while it was held.
  std::uint64_t PassedBy() const { return passedBy_; }

 private:
  struct Entry {
    Time arrival;
    std::uint64_t place = 0;  // counted on from round to round
    std::uint16_t length = 0;
    std::uint8_t system = 0;
  };

  const Entry& EntryAt(std::uint64_t number) const {
    return entries_[static_cast<std::size_t>(number % kMostLines)];
  }

  std::vector<Entry> entries_;
  std::unique_ptr<char[]> bytes_;
  std::uint64_t first_ = 0;
  std::uint64_t end_ = 0;
  std::uint64_t place_ = 0;  // where the next line goes
  std::uint64_t passedBy_ = 0;
  bool held_ = false;
};

}  // namespace fathomline
