#include "sources/replay_pace.h"

#include <algorithm>

#include "decoding/sentence_time.h"

namespace fathomline {
namespace {

using std::chrono::milliseconds;

constexpr std::int64_t kDay = std::int64_t{24} * 60 * 60 * 1000;

}  // namespace

bool ReplayPace::Leads(SentenceAddress address) {
  if (!(address == leader_) && !leader_.None() && ++others_ <= kMissing) return false;
  if (!(address == leader_)) told_.reset();
  leader_ = address;
  others_ = 0;
  return true;
}

bool ReplayPace::Due(std::string_view line, Time now) {
  const std::string_view sentence = SentenceOf(line);
  const auto time = TimeOfSentence(sentence);
  if (!time || !Leads(AddressOf(sentence))) return true;
  std::int64_t step = time->ofDay - told_.value_or(time->ofDay);
  if (step < -kDay / 2) step += kDay;
  Time due = now;
  if (told_ && step >= 0) {
    due = due_ + std::min<Time::duration>(milliseconds(step) / speed_, kLongestWait);
    if (now < due) return false;
    if (now - due > kLate) due = now;
  }
  told_ = time->ofDay;
  due_ = due;
  return true;
}

}  // namespace fathomline
