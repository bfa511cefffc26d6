#include "decoding/sentence_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>

#include "decoding/sentence_type.h"

namespace fathomline {
namespace {

using enum SentenceType;

constexpr std::size_t kAddress = 6;  // "$GPGGA"
constexpr int kNoNumber = -1;
constexpr int kLeastYear = 1980;  // the first day of GPS

struct TimeField {
  SentenceType type;
  int field;
};
constexpr auto kTimeFields =
    std::to_array<TimeField>({{GGA, 1}, {RMC, 1}, {GNS, 1}, {GLL, 5}, {GST, 1}, {ZDA, 1}});

// Fields count from 1; the address is 0. Empty for one that is not there.
std::string_view Field(std::string_view sentence, int number) {
  sentence = sentence.substr(0, sentence.find('*'));
  for (; number > 0; --number) {
    const std::size_t comma = sentence.find(',');
    if (comma == sentence.npos) return {};
    sentence.remove_prefix(comma + 1);
  }
  return sentence.substr(0, sentence.find(','));
}

// Of one to four digits.
int Number(std::string_view digits) {
  int number = 0;
  if (digits.empty() || digits.size() > 4) return kNoNumber;
  for (const char c : digits) {
    if (c < '0' || c > '9') return kNoNumber;
    number = number * 10 + (c - '0');
  }
  return number;
}

int Pair(std::string_view text, std::size_t at) {
  return at + 2 > text.size() ? kNoNumber : Number(text.substr(at, 2));
}

std::optional<std::int64_t> MillisecondsOfDay(std::string_view text) {
  const int hour = Pair(text, 0);
  const int minute = Pair(text, 2);
  const int second = Pair(text, 4);
  const bool inRange = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 &&
                       second <= 60;  // a leap second
  if (!inRange) return {};
  std::int64_t milliseconds = ((hour * 60LL + minute) * 60 + second) * 1000;
  if (text.size() == 6) return milliseconds;
  if (text[6] != '.') return {};
  std::int64_t weight = 100;
  for (const char c : text.substr(7)) {
    if (c < '0' || c > '9') return {};
    milliseconds += (c - '0') * weight;
    weight /= 10;
  }
  return milliseconds;
}

std::optional<std::int64_t> Day(int year, int month, int day) {
  if (year < kLeastYear || year > 9999 || month < 0 || day < 0) return {};
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return {};
  return std::chrono::sys_days(date).time_since_epoch().count();
}

}  // namespace

std::optional<SentenceTime> TimeOfSentence(std::string_view sentence) {
  if (sentence.size() <= kAddress || sentence[kAddress] != ',') return {};
  const SentenceType type = SentenceTypeOf(sentence.substr(3, 3));
  const auto* const row = std::find_if(kTimeFields.begin(), kTimeFields.end(),
                                       [type](const TimeField& f) { return f.type == type; });
  if (row == kTimeFields.end()) return {};
  const auto ofDay = MillisecondsOfDay(Field(sentence, row->field));
  if (!ofDay) return {};
  SentenceTime time{.ofDay = *ofDay, .day = {}};
  if (type == RMC && Field(sentence, 2) == "A") {
    const std::string_view date = Field(sentence, 9);
    const int year = Pair(date, 4);
    if (date.size() == 6 && year >= 0) time.day = Day(2000 + year, Pair(date, 2), Pair(date, 0));
  } else if (type == ZDA) {
    const std::string_view year = Field(sentence, 4);
    if (year.size() == 4)
      time.day = Day(Number(year), Number(Field(sentence, 3)), Number(Field(sentence, 2)));
  }
  return time;
}

}  // namespace fathomline
