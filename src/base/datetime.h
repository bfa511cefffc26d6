// Date-times as days, date arithmetic and the pictures by which dates are shown.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace fathomline {

// A moment in days; day 0 is 30 December 1899, the fraction is the time of day. It has no zone:
// whoever keeps one says whether it is UTC or local.
struct DateTime {
  double days = 0.0;

  // clang-tidy 14 takes the default for a null pointer.
  friend auto operator<=>(DateTime, DateTime) = default;  // NOLINT(modernize-use-nullptr)
  friend DateTime operator+(DateTime date, DateTime span) { return {date.days + span.days}; }
  friend DateTime operator-(DateTime date, DateTime span) { return {date.days - span.days}; }
};

inline constexpr double kSecondsPerDay = 86400.0;
inline constexpr DateTime kOneDay{1.0};

// Calendar parts. Hours, minutes and seconds are those of the nearest whole second.
struct CalendarTime {
  int year = 1899;
  int month = 12;  // 1 to 12
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

CalendarTime ToCalendar(DateTime moment);

// Proleptic Gregorian. Parts out of range roll over: month 13 is January of the next year, day 0
// the last day of the month before.
DateTime DateFromParts(int year, int month, int day);
DateTime TimeFromParts(int hour, int minute, int second);

// Days since day 0 from seconds since the Unix epoch.
DateTime FromUnixSeconds(double seconds);

// One to two digits each for hours, minutes and, optionally, seconds, between colons, within
// range. Anything else raises TypeMismatch.
DateTime ReadTimeOfDay(std::string_view text);

// `later` less `earlier` in whole seconds, each taken at its nearest second.
std::int64_t DifferenceInSeconds(DateTime earlier, DateTime later);

// The date part alone, midnight.
DateTime DateOnly(DateTime moment);

// A moment through a picture: dd, mmm (English, "Jan"), mm (minutes directly behind "hh:", else
// the month), yyyy, yy, hh (24 hours), nn, ss; anything else stands for itself. Case of the
// letters does not matter.
std::string FormatDateTime(DateTime moment, std::string_view picture);
// The same as "hh:mm:ss", quicker, since every sentence has such a time.
std::string TimeOfDayText(DateTime moment);

}  // namespace fathomline
