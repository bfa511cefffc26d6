#include "trial/moment.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "trial/strict_fields.h"

namespace fathomline::trial {

std::string ToText(Moment moment) {
  std::int64_t day = moment.milliseconds / kDayMilliseconds;
  std::int64_t rest = moment.milliseconds % kDayMilliseconds;
  if (rest < 0) {
    rest += kDayMilliseconds;
    --day;
  }
  std::array<char, 64> text{};
  int length = 0;
  if (moment.dated) {
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
    length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  } else {
    length = std::snprintf(text.data(), text.size(), "%+lld", static_cast<long long>(day));
  }
  const auto end = static_cast<std::size_t>(length);
  std::snprintf(text.data() + end, text.size() - end, "T%02d:%02d:%02d.%03dZ",
                static_cast<int>(rest / 3'600'000), static_cast<int>(rest / 60'000 % 60),
                static_cast<int>(rest / 1000 % 60), static_cast<int>(rest % 1000));
  return text.data();
}

namespace {

// Milliseconds of "hh:mm:ss[.s]".
std::optional<std::int64_t> ReadTimeOfDay(std::string_view text) {
  if (text.size() < 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
  std::string digits(text.substr(0, 2));
  digits.append(text.substr(3, 2)).append(text.substr(6));
  return ReadStrictTime(digits);
}

std::optional<std::int64_t> ReadDay(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = ReadStrictNumber(text.substr(0, 4));
  const auto month = ReadStrictNumber(text.substr(5, 2));
  const auto day = ReadStrictNumber(text.substr(8, 2));
  return year && month && day ? DayOfDate(*year, *month, *day) : std::nullopt;
}

}  // namespace

std::optional<TimeBound> ReadTimeBound(std::string_view text) {
  if (text.ends_with('Z')) text.remove_suffix(1);
  TimeBound bound;
  const std::size_t t = text.find('T');
  const std::string_view dayText = text.substr(0, t);
  std::int64_t day = 0;
  std::string_view time = text;
  if (const auto date = ReadDay(dayText)) {
    bound.of = TimeBound::Of::Date;
    day = *date;
    time = t == std::string_view::npos ? "00:00:00" : text.substr(t + 1);
  } else if (t != std::string_view::npos) {
    bound.of = TimeBound::Of::DayCount;
    constexpr double kMostDays = 1e6;
    const auto count = ReadStrictNumber(dayText);
    if (!count || *count != std::trunc(*count) || std::abs(*count) > kMostDays) return std::nullopt;
    day = static_cast<std::int64_t>(*count);
    time = text.substr(t + 1);
  }
  const auto timeOfDay = ReadTimeOfDay(time);
  if (!timeOfDay) return std::nullopt;
  bound.milliseconds = day * kDayMilliseconds + *timeOfDay;
  return bound;
}

}  // namespace fathomline::trial
