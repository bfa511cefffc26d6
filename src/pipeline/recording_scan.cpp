#include "pipeline/recording_scan.h"

#include <algorithm>

#include "pipeline/sentence_pipeline.h"

namespace fathomline {
namespace {

constexpr std::int64_t kDay = std::int64_t{24} * 60 * 60 * 1000;
// Reading the clock costs as much as some lines do.
constexpr int kLinesPerLookAtTheClock = 256;

// Whole days, in milliseconds, nearest to a span.
std::int64_t NearestDays(std::int64_t milliseconds) {
  std::int64_t rest = (milliseconds + kDay / 2) % kDay;
  if (rest < 0) rest += kDay;
  return milliseconds + kDay / 2 - rest;
}

DateTime MomentOf(std::int64_t milliseconds) {
  return FromUnixSeconds(static_cast<double>(milliseconds) / 1000.0);
}

}  // namespace

std::int64_t RecordingContents::LinesOf(SentenceType type) const {
  std::int64_t count = 0;
  for (const RecordedSentence& sentence : sentences) {
    if (sentence.type == type) count += sentence.lines;
  }
  return count;
}

std::int64_t RecordingContents::StepsBackOf(SentenceType type) const {
  const auto found = std::find_if(steps.begin(), steps.end(),
                                  [type](const RecordedSteps& row) { return row.type == type; });
  return found == steps.end() ? 0 : found->back;
}

void RecordingTimes::Take(const SentenceTime& time) {
  std::int64_t told = time.ofDay;
  if (time.day) {
    told += *time.day * kDay;
  } else if (latestTold_) {
    told += NearestDays(*latestTold_ - told);
  }
  if (!latestTold_) {
    first_ = last_ = told;
  } else if (time.day && !dated_) {
    // Only the day of all before was missing.
    const std::int64_t missing = NearestDays(told - *latestTold_);
    first_ += missing;
    last_ += missing;
  }
  dated_ = dated_ || time.day.has_value();
  latestTold_ = told;
  first_ = std::min(first_, told);
  last_ = std::max(last_, told);
}

std::optional<RecordedSpan> RecordingTimes::Span() const {
  if (!latestTold_) return {};
  return RecordedSpan{MomentOf(first_), MomentOf(last_), dated_};
}

RecordingScan::RecordingScan(const std::string& path) : file_(path) {}

bool RecordingScan::Continue(std::chrono::steady_clock::time_point until) {
  for (int line = 0;; ++line) {
    if (line == kLinesPerLookAtTheClock) {
      if (std::chrono::steady_clock::now() >= until) return true;
      line = 0;
    }
    if (!file_.Ready(until)) return true;
    if (file_.AtEnd()) return false;
    Take(file_.Next());
  }
}

void RecordingScan::Take(std::string_view line) {
  ++contents_.lines;
  const std::string_view sentence = SentenceOf(line);
  const SentenceAddress address = AddressOf(sentence);
  if (address.None()) {
    ++contents_.withoutSentence;
    return;
  }
  const SentenceType type = SentencePipeline::TypeOf(sentence);
  const ChecksumVerdict checksum = JudgeChecksum(sentence);
  if (checksum == ChecksumVerdict::Wrong) ++contents_.wrongChecksums;
  if (RecordedSentence* const row = Find(address, type)) {
    ++row->lines;
    if (checksum == ChecksumVerdict::Wrong) ++row->wrong;
    if (checksum == ChecksumVerdict::None) ++row->unchecked;
  }
  // A damaged time would stretch the span.
  if (checksum == ChecksumVerdict::Wrong) return;
  if (const auto time = TimeOfSentence(sentence)) {
    times_.Take(*time);
    TakeTime(type, *time);
  }
}

void RecordingScan::TakeTime(SentenceType type, const SentenceTime& time) {
  auto row = std::find_if(contents_.steps.begin(), contents_.steps.end(),
                          [type](const RecordedSteps& known) { return known.type == type; });
  if (row == contents_.steps.end()) {
    row = contents_.steps.insert(row, {.type = type, .last = time.ofDay});
  }
  constexpr std::int64_t kLeastStep = 1000;
  const std::int64_t back = row->last - time.ofDay;
  if (back >= kLeastStep && back < kDay / 2) ++row->back;
  row->last = time.ofDay;
}

// The types of one address differ in a proprietary sentence alone.
RecordedSentence* RecordingScan::Find(SentenceAddress address, SentenceType type) {
  constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15;
  const std::uint64_t key = address.Packed() ^ static_cast<std::uint64_t>(type) * kGolden;
  const auto found = rows_.find(key);
  if (found != rows_.end()) return &contents_.sentences[found->second];
  if (rows_.size() == kMostSentences) return nullptr;
  rows_.emplace(key, contents_.sentences.size());
  contents_.sentences.push_back({.address = address, .type = type});
  return &contents_.sentences.back();
}

double RecordingScan::Share() const {
  const std::uint64_t size = file_.Size();
  return size == 0 ? 0.0 : static_cast<double>(file_.Position()) / static_cast<double>(size);
}

RecordingContents RecordingScan::Contents() const {
  RecordingContents contents = contents_;
  contents.span = times_.Span();
  std::ranges::sort(contents.sentences, {},
                    [](const RecordedSentence& sentence) { return sentence.address.Text(); });
  return contents;
}

}  // namespace fathomline
