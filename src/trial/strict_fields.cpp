#include "trial/strict_fields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace fathomline::trial {
namespace {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The two digits at `at`; below zero where there are none.
int TwoDigits(std::string_view text, std::size_t at) {
  if (!IsDigit(text[at]) || !IsDigit(text[at + 1])) return -1;
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

// Of an unsigned number in its form. A mantissa and a power of ten that a double holds exactly give
// the nearest double by one division.
double DecimalValue(std::string_view text) {
  constexpr std::size_t kExactDigits = 15;
  constexpr std::array<double, kExactDigits + 1> kPowers = {
      1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (text.size() <= kExactDigits) {
    std::int64_t mantissa = 0;
    std::size_t decimals = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '.') {
        decimals = text.size() - i - 1;
      } else {
        mantissa = mantissa * 10 + (text[i] - '0');
      }
    }
    return static_cast<double>(mantissa) / kPowers[decimals];
  }
  double value = HUGE_VAL;
  std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  return value;
}

// Digits, and behind them nothing or a point with digits.
bool IsUnsignedNumber(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && IsDigit(text[at])) ++at;
  if (at == 0) return false;
  if (at == text.size()) return true;
  if (text[at] != '.' || ++at == text.size()) return false;
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), IsDigit);
}

std::optional<double> ReadAngle(std::string_view text, std::size_t degreeDigits, double greatest,
                                bool negative) {
  if (text.size() < degreeDigits + 4 || text[degreeDigits + 2] != '.') return std::nullopt;
  if (!IsUnsignedNumber(text)) return std::nullopt;
  double degrees = 0.0;
  for (const char c : text.substr(0, degreeDigits)) degrees = degrees * 10.0 + (c - '0');
  const double minutes = DecimalValue(text.substr(degreeDigits));
  if (minutes >= 60.0) return std::nullopt;
  const double value = degrees + minutes / 60.0;
  if (value > greatest) return std::nullopt;
  return negative ? -value : value;
}

}  // namespace

std::optional<double> ReadStrictNumber(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const bool negative = text.front() == '-';
  if (negative || text.front() == '+') text.remove_prefix(1);
  if (!IsUnsignedNumber(text)) return std::nullopt;
  const double value = DecimalValue(text);
  if (!std::isfinite(value)) return std::nullopt;
  return negative ? -value : value;
}

std::optional<double> ReadStrictLatitude(std::string_view text, std::string_view hemisphere) {
  if (hemisphere != "N" && hemisphere != "S") return std::nullopt;
  return ReadAngle(text, 2, 90.0, hemisphere == "S");
}

std::optional<double> ReadStrictLongitude(std::string_view text, std::string_view hemisphere) {
  if (hemisphere != "E" && hemisphere != "W") return std::nullopt;
  return ReadAngle(text, 3, 180.0, hemisphere == "W");
}

std::optional<std::int64_t> ReadStrictTime(std::string_view text) {
  if (text.size() < 6) return std::nullopt;
  const int hours = TwoDigits(text, 0);
  const int minutes = TwoDigits(text, 2);
  const int seconds = TwoDigits(text, 4);
  if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59) {
    return std::nullopt;
  }
  const std::int64_t milliseconds = ((hours * 60 + minutes) * 60 + seconds) * std::int64_t{1000};
  if (text.size() == 6) return milliseconds;
  if (text[6] != '.' || text.size() == 7) return std::nullopt;
  const std::string_view decimals = text.substr(7);
  if (!std::all_of(decimals.begin(), decimals.end(), IsDigit)) return std::nullopt;
  // In tenths of a millisecond; half of one counts up.
  constexpr auto kWeights = std::to_array<std::int64_t>({1000, 100, 10, 1});
  std::int64_t tenths = 0;
  for (std::size_t i = 0; i < std::min(decimals.size(), kWeights.size()); ++i) {
    tenths += kWeights[i] * (decimals[i] - '0');
  }
  return milliseconds + (tenths + 5) / 10;
}

std::optional<std::int64_t> ReadStrictDate(std::string_view text) {
  if (text.size() != 6 || !std::all_of(text.begin(), text.end(), IsDigit)) return std::nullopt;
  const int day = TwoDigits(text, 0);
  const int month = TwoDigits(text, 2);
  const int year = TwoDigits(text, 4);
  return DayOfDate(year + (year >= 80 ? 1900 : 2000), month, day);
}

std::optional<std::int64_t> DayOfDate(double year, double month, double day) {
  const auto whole = [](double part, double least, double most) {
    return part >= least && part <= most && part == std::floor(part);
  };
  if (!whole(year, 100, 9999) || !whole(month, 1, 12) || !whole(day, 1, 31)) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}

bool IsArmoured(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return (c >= '0' && c <= 'W') || (c >= '`' && c <= 'w'); });
}

}  // namespace fathomline::trial
