// What a recording holds: looked through once, without decoding or analysing anything, so that its
// user can choose before the session begins.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/datetime.h"
#include "base/files.h"
#include "decoding/sentence_time.h"
#include "decoding/sentence_type.h"
#include "watch/sentence_address.h"

namespace fathomline {

// One talker and sentence of a recording.
struct RecordedSentence {
  SentenceAddress address;
  SentenceType type = SentenceType::None;  // as which the gate takes it; None: it does not
  std::int64_t lines = 0;
  std::int64_t wrong = 0;      // of these, with a wrong checksum
  std::int64_t unchecked = 0;  // of these, without any
};

// How often the time of a type goes back, whatever its talkers, other than at midnight.
struct RecordedSteps {
  SentenceType type = SentenceType::None;
  std::int64_t back = 0;
  std::int64_t last = 0;  // the latest time of day, milliseconds
};

// From the earliest to the latest time that its sentences tell, UTC.
struct RecordedSpan {
  DateTime from;
  DateTime to;
  bool dated = false;  // without a date, days count from the one of the first time

  double Seconds() const { return (to.days - from.days) * kSecondsPerDay; }
};

struct RecordingContents {
  std::int64_t lines = 0;
  std::int64_t wrongChecksums = 0;
  std::int64_t withoutSentence = 0;  // comments, and what is in front of a sentence
  std::optional<RecordedSpan> span;
  std::vector<RecordedSentence> sentences;  // in the order of talker and sentence
  std::vector<RecordedSteps> steps;         // of the types that tell the time

  // Of all talkers together.
  std::int64_t LinesOf(SentenceType type) const;
  std::int64_t StepsBackOf(SentenceType type) const;
};

// Lies the times of a recording one behind the other. A time without a date lies within twelve
// hours of the one before it.
class RecordingTimes {
 public:
  void Take(const SentenceTime& time);
  std::optional<RecordedSpan> Span() const;

 private:
  std::optional<std::int64_t> latestTold_;  // milliseconds from the beginning of some day
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
  bool dated_ = false;
};

class RecordingScan {
 public:
  // Further talkers and sentences are counted among the lines only: a file of rubbish has as many
  // as it has lines.
  static constexpr std::size_t kMostSentences = 500;

  // Raises the system's fault.
  explicit RecordingScan(const std::string& path);

  // Goes on until then. False once the end has been reached. Raises the system's fault.
  bool Continue(std::chrono::steady_clock::time_point until);
  void Finish() {
    while (Continue(std::chrono::steady_clock::time_point::max())) {
    }
  }

  // How much of the file has been read, 0 to 1.
  double Share() const;
  // So far.
  std::int64_t Lines() const { return contents_.lines; }
  RecordingContents Contents() const;

 private:
  void Take(std::string_view line);
  void TakeTime(SentenceType type, const SentenceTime& time);
  RecordedSentence* Find(SentenceAddress address, SentenceType type);

  LineReader file_;
  RecordingContents contents_;
  RecordingTimes times_;
  std::unordered_map<std::uint64_t, std::size_t> rows_;  // of contents_.sentences
};

}  // namespace fathomline
