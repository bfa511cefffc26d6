#include "base/datetime.h"

#include <array>
#include <cctype>
#include <chrono>
#include <cmath>

#include "base/fault.h"

namespace fathomline {
namespace {

constexpr int kUnixEpochDay = 25569;  // 1 January 1970
constexpr auto kMonths = std::to_array<std::string_view>(
    {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"});

// The nearest whole second, halves away from zero. As std::llround, whose call costs more than all
// the rest of a difference.
std::int64_t WholeSeconds(DateTime moment) {
  const double seconds = moment.days * kSecondsPerDay;
  const auto whole = static_cast<std::int64_t>(seconds);
  const double rest = seconds - static_cast<double>(whole);
  return whole + (rest >= 0.5 ? 1 : 0) - (rest <= -0.5 ? 1 : 0);
}

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

void AppendPadded(std::string& text, int value, int width) {
  std::array<char, 12> digits;
  auto at = digits.end();
  for (; width > 0 || value > 0; --width, value /= 10) *--at = static_cast<char>('0' + value % 10);
  text.append(at, digits.end());
}

}  // namespace

CalendarTime ToCalendar(DateTime moment) {
  const std::int64_t seconds = WholeSeconds(moment);
  const std::int64_t day = FloorDivide(seconds, 86400);
  const auto rest = static_cast<int>(seconds - day * 86400);
  const std::chrono::year_month_day date{std::chrono::sys_days{
      std::chrono::days{static_cast<std::chrono::days::rep>(day - kUnixEpochDay)}}};
  return {int{date.year()},
          static_cast<int>(unsigned{date.month()}),
          static_cast<int>(unsigned{date.day()}),
          rest / 3600,
          rest / 60 % 60,
          rest % 60};
}

DateTime DateFromParts(int year, int month, int day) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  const std::int64_t y = FloorDivide(months, 12);
  const std::chrono::year_month_day first{
      std::chrono::year{static_cast<int>(y)},
      std::chrono::month{static_cast<unsigned>(months - y * 12 + 1)}, std::chrono::day{1}};
  const auto days = std::chrono::sys_days{first}.time_since_epoch().count();
  return {static_cast<double>(days + kUnixEpochDay + day - 1)};
}

DateTime TimeFromParts(int hour, int minute, int second) {
  return {(hour * 3600.0 + minute * 60.0 + second) / kSecondsPerDay};
}

DateTime FromUnixSeconds(double seconds) {
  return {seconds / kSecondsPerDay + kUnixEpochDay};
}

DateTime ReadTimeOfDay(std::string_view text) {
  std::array<int, 3> parts{};
  std::size_t count = 0;
  std::size_t i = 0;
  for (;;) {
    if (count == parts.size()) Raise(FaultNumber::TypeMismatch);
    const std::size_t begin = i;
    int value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9' && i < begin + 2; ++i) {
      value = value * 10 + (text[i] - '0');
    }
    if (i == begin) Raise(FaultNumber::TypeMismatch);
    parts[count++] = value;
    if (i == text.size()) break;
    if (text[i++] != ':') Raise(FaultNumber::TypeMismatch);
  }
  if (count < 2 || parts[0] > 23 || parts[1] > 59 || parts[2] > 59) {
    Raise(FaultNumber::TypeMismatch);
  }
  return TimeFromParts(parts[0], parts[1], parts[2]);
}

std::int64_t DifferenceInSeconds(DateTime earlier, DateTime later) {
  return WholeSeconds(later) - WholeSeconds(earlier);
}

DateTime DateOnly(DateTime moment) {
  return {std::floor(moment.days)};
}

std::string FormatDateTime(DateTime moment, std::string_view picture) {
  const CalendarTime time = ToCalendar(moment);
  std::string text;
  bool behindHours = false;
  for (std::size_t i = 0; i < picture.size();) {
    const char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(picture[i])));
    std::size_t run = 1;
    while (i + run < picture.size() &&
           std::tolower(static_cast<unsigned char>(picture[i + run])) == letter) {
      ++run;
    }
    const auto two = [&](int value) { AppendPadded(text, value, 2); };
    const bool minutes = behindHours;
    if (letter != ':') behindHours = false;
    if (letter == 'd' && run == 2) {
      two(time.day);
    } else if (letter == 'm' && run == 3) {
      text.append(kMonths[static_cast<std::size_t>(time.month - 1)]);
    } else if (letter == 'm' && run == 2) {
      two(minutes ? time.minute : time.month);
    } else if (letter == 'y' && run == 4) {
      AppendPadded(text, time.year, 4);
    } else if (letter == 'y' && run == 2) {
      two(time.year % 100);
    } else if (letter == 'h' && run == 2) {
      two(time.hour);
      behindHours = true;
    } else if (letter == 'n' && run == 2) {
      two(time.minute);
    } else if (letter == 's' && run == 2) {
      two(time.second);
    } else {
      text.append(picture.substr(i, run));
    }
    i += run;
  }
  return text;
}

std::string TimeOfDayText(DateTime moment) {
  const CalendarTime time = ToCalendar(moment);
  std::string text = "00:00:00";
  const auto put = [&text](std::size_t at, int value) {
    text[at] = static_cast<char>('0' + value / 10);
    text[at + 1] = static_cast<char>('0' + value % 10);
  };
  put(0, time.hour);
  put(3, time.minute);
  put(6, time.second);
  return text;
}

}  // namespace fathomline
