#include "watch/filtered_log.h"

#include <algorithm>
#include <utility>

#include "base/fault.h"

namespace fathomline {
namespace {

// Noise may look like any number of talkers; nobody chooses from that many.
constexpr std::size_t kMostAddresses = 500;

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool ContainsText(std::string_view line, std::string_view text) {
  return std::search(line.begin(), line.end(), text.begin(), text.end(),
                     [](char a, char b) { return Lower(a) == Lower(b); }) != line.end() ||
         text.empty();
}

bool FilteredLog::Passes(const SentenceLog::Line& line) const {
  if (filter_.system != 0 && line.system != filter_.system) return false;
  if (!filter_.talker.empty() || !filter_.sentence.empty()) {
    const SentenceAddress address = AddressOf(line.text);
    if (!filter_.talker.empty() && address.Talker() != filter_.talker) return false;
    if (!filter_.sentence.empty() && address.Sentence() != filter_.sentence) return false;
  }
  if (filter_.checksum && JudgeChecksum(SentenceOf(line.text)) != *filter_.checksum) return false;
  return filter_.text.empty() || ContainsText(line.text, filter_.text);
}

void FilteredLog::SetFilter(LogFilter filter) {
  filter_ = std::move(filter);
  numbers_.clear();
  gone_ = 0;
  end_ = first_ = log_.First();
  Follow();
}

void FilteredLog::NoteAddress(std::string_view line) {
  const SentenceAddress address = AddressOf(line);
  if (address.None() || addresses_.size() >= kMostAddresses) return;
  if (!addresses_.insert(address.Packed()).second) return;
  talkers_.insert(address.Talker());
  sentences_.insert(address.Sentence());
}

void FilteredLog::Follow() {
  const std::uint64_t before = first_;
  first_ = log_.First();
  if (All()) gone_ += std::min(first_, end_) - before;
  while (!numbers_.empty() && numbers_.front() < first_) {
    numbers_.pop_front();
    ++gone_;
  }
  const bool all = All();
  for (std::uint64_t number = std::max(end_, first_); number < log_.End(); ++number) {
    const SentenceLog::Line line = log_.At(number);
    NoteAddress(line.text);
    if (!all && Passes(line)) numbers_.push_back(number);
  }
  end_ = log_.End();
}

int FilteredLog::Count() const {
  return All() ? static_cast<int>(end_ - first_) : static_cast<int>(numbers_.size());
}

std::uint64_t FilteredLog::Number(int index) const {
  if (index < 0 || index >= Count()) Raise(FaultNumber::OutOfRange);
  return All() ? first_ + static_cast<std::uint64_t>(index)
               : numbers_[static_cast<std::size_t>(index)];
}

bool FilteredLog::Held(int index) const {
  return index >= 0 && index < Count() && Number(index) >= log_.First() &&
         Number(index) < log_.End();
}

int FilteredLog::Find(std::string_view text, int from, bool backwards) const {
  const int count = Count();
  if (count == 0 || text.empty()) return -1;
  const int step = backwards ? count - 1 : 1;
  int index = std::clamp(from, backwards ? 0 : -1, count - 1);
  for (int i = 0; i < count; ++i) {
    index = (index + step) % count;
    if (ContainsText(At(index).text, text)) return index;
  }
  return -1;
}

}  // namespace fathomline
