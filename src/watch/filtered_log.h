// The lines of the sentence log that its user wants to see.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "watch/sentence_log.h"

namespace fathomline {

// What a line must have; empty, 0 and none let every line pass.
struct LogFilter {
  int system = 0;
  std::string talker = {};
  std::string sentence = {};
  std::optional<ChecksumVerdict> checksum = {};
  std::string text = {};  // somewhere in the line, in capital or small letters

  bool operator==(const LogFilter&) const = default;
};

// Of a log from one start to its stop.
class FilteredLog {
 public:
  explicit FilteredLog(const SentenceLog& log) : log_(log) {}

  const LogFilter& Filter() const { return filter_; }
  // Looks through all that the log holds.
  void SetFilter(LogFilter filter);

  // Takes over what has come into the log and what has gone since the last time. What follows
  // speaks of the log as it was then, and must not be asked once further lines have come.
  void Follow();

  // Lines that pass, counted from 0, the oldest first. At raises OutOfRange.
  int Count() const;
  // How many of the lines that passed before have gone from the front, in all.
  std::uint64_t Gone() const { return gone_; }
  SentenceLog::Line At(int index) const { return log_.At(Number(index)); }
  // Whether the log still has it.
  bool Held(int index) const;
  // The next line behind, or before, an index that contains a text, going round at the end; -1
  // where there is none.
  int Find(std::string_view text, int from, bool backwards) const;

  // The talkers and sentences that have come.
  const std::set<std::string>& Talkers() const { return talkers_; }
  const std::set<std::string>& Sentences() const { return sentences_; }

 private:
  bool All() const { return filter_ == LogFilter{}; }
  bool Passes(const SentenceLog::Line& line) const;
  std::uint64_t Number(int index) const;
  void NoteAddress(std::string_view line);

  const SentenceLog& log_;
  LogFilter filter_;
  std::deque<std::uint64_t> numbers_;  // of the lines that pass; unused while all do
  std::uint64_t first_ = 0;
  std::uint64_t end_ = 0;
  std::uint64_t gone_ = 0;
  std::set<std::uint64_t> addresses_;
  std::set<std::string> talkers_;
  std::set<std::string> sentences_;
};

// Whether the text stands in the line, letters compared without regard to their case.
bool ContainsText(std::string_view line, std::string_view text);

}  // namespace fathomline
