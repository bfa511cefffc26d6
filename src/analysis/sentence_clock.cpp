#include "analysis/sentence_clock.h"

#include <utility>

#include "base/fault.h"
#include "base/text.h"

namespace fathomline {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Day, month and year of a "ddmmyy" text; the year is of this century. Days and months out of
// range roll over. Raises TypeMismatch where a pair is no two digits.
DateTime ReadDate(std::string_view text) {
  const auto pair = [](std::string_view digits) {
    if (digits.size() != 2 || !IsDigit(digits[0]) || !IsDigit(digits[1])) {
      Raise(FaultNumber::TypeMismatch);
    }
    return (digits[0] - '0') * 10 + (digits[1] - '0');
  };
  const int day = pair(Mid(text, 1, 2));
  const int month = pair(Mid(text, 3, 2));
  const int year = pair(text.size() < 2 ? text : text.substr(text.size() - 2));
  return DateFromParts(year + 2000, month, day);
}

constexpr std::int64_t kHalfADay = 12 * 60 * 60;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

// "hhmmss" and anything behind it; midnight where these are no time of day.
DateTime SixDigitTime(std::string_view text) {
  DateTime time;
  ResumeNext([&] {
    const std::string colons = std::string(Mid(text, 1, 2))
                                   .append(":")
                                   .append(Mid(text, 3, 2))
                                   .append(":")
                                   .append(Mid(text, 5, 2));
    if (colons.size() == 8) time = ReadTimeOfDay(colons);
  });
  return time;
}

}  // namespace

SentenceClock::SentenceClock(Records& records, const Clock& clock)
    : records_(records), clock_(clock) {
  const DateTime now = clock.NowUtc();
  records_.MessageTime.Fill(now);
  records_.LastSentenceTime.Fill(now);
  records_.MessageDate.Fill(DateOnly(now));
}

void SentenceClock::BeginReplay() {
  states_.Fill({});
  for (int system = 1; system <= kSystems; ++system) {
    const RecordedDates& known = known_[system];
    if (known.file.empty() || known.file != records_.CommSetups[system].OfflineFile) continue;
    if (known.first) records_.MessageDate[system] = *known.first;
    states_[system].stepsBackStay = known.stepsBackStay;
  }
}

void SentenceClock::Set(int system, DateTime time, Told how) {
  records_.MessageTime[system] = time;
  State& state = states_[system];
  state.now = how;
  if (!std::exchange(state.told, true)) state.first = true;
}

void SentenceClock::Begin(int system) {
  states_[system].now = Told::No;
  states_[system].first = false;
  if (records_.SetTimeFromPC[system]) Set(system, clock_.NowUtc(), Told::Time);
}

void SentenceClock::TakeTime(int system, std::string_view time) {
  Set(system, records_.MessageDate[system] + ReadTimeOfDay(Mid(time, 1, 8)), Told::Time);
}

void SentenceClock::TakeDateAndTime(int system, std::string_view date, std::string_view time) {
  records_.MessageDate[system] = ReadDate(date);
  TakeTime(system, time);
  states_[system].now = Told::DateAndTime;
}

void SentenceClock::TakeZDA(int system, const ZDARecord& record) {
  if (record.Year < kFirstYear || record.Year > kLastYear) Raise(FaultNumber::InvalidCall);
  const DateTime date = DateFromParts(record.Year, record.Month, record.Day);
  records_.MessageDate[system] = date;
  if (date >= DateOnly(records_.MessageTime[system])) return;
  Set(system, date + SixDigitTime(record.Time), Told::DateAndTime);
}

bool SentenceClock::Finish(int system) {
  const State& state = states_[system];
  DateTime& time = records_.MessageTime[system];
  const std::int64_t least = state.stepsBackStay ? -kHalfADay : 0;
  // The comparison comes first: whole seconds cost a rounding each.
  if (state.told && !state.first && state.now != Told::DateAndTime &&
      time < records_.LastSentenceTime[system] &&
      DifferenceInSeconds(records_.LastSentenceTime[system], time) < least) {
    records_.MessageDate[system] = records_.MessageDate[system] + kOneDay;
    time = time + kOneDay;
  }
  records_.LastSentenceTime[system] = time;
  return state.first;
}

}  // namespace fathomline
