#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "base/fault.h"

namespace fathomline {
namespace {

// Powers of ten that a double holds exactly.
constexpr auto kExactPowers =
    std::to_array<double>({1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                           1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22});
constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The usual field: digits with or without a point, nothing else up to the end of the text, and few
// enough of them to be exact. The one division then rounds correctly.
std::optional<double> ReadPlain(std::string_view text) {
  constexpr std::ptrdiff_t kMostCharacters = 16;  // fifteen digits and a point
  const char* at = text.data();
  const char* const end = at + text.size();
  const bool negative = at != end && *at == '-';
  if (negative) ++at;
  if (at == end || end - at > kMostCharacters) return std::nullopt;
  std::uint64_t digits = 0;
  const char* const first = at;
  for (; at != end && IsDigit(*at); ++at)
    digits = digits * 10 + static_cast<unsigned char>(*at - '0');
  const std::ptrdiff_t whole = at - first;
  std::ptrdiff_t decimals = 0;
  if (at != end && *at == '.') {
    const char* const point = ++at;
    for (; at != end && IsDigit(*at); ++at) {
      digits = digits * 10 + static_cast<unsigned char>(*at - '0');
    }
    decimals = at - point;
  }
  if (at != end || whole + decimals == 0 || digits > kExactIntegers) return std::nullopt;
  auto value = static_cast<double>(digits);
  if (decimals != 0) value /= kExactPowers[static_cast<std::size_t>(decimals)];
  return negative ? -value : value;
}

// The extent of a number in the text, found by one walk, and its digits as an integer as long as
// that stays exact.
struct Scan {
  std::size_t begin = 0;  // behind the sign
  std::size_t end = 0;
  std::uint64_t mantissa = 0;
  std::size_t decimals = 0;
  bool negative = false;
  bool anyDigit = false;
  bool simple = true;  // no exponent, and the mantissa did not run over
};

Scan ScanNumber(std::string_view text) {
  Scan scan;
  std::size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) scan.negative = text[i++] == '-';
  scan.begin = i;

  const auto takeDigit = [&](char c) {
    scan.anyDigit = true;
    if (scan.mantissa < kExactIntegers / 16) {
      scan.mantissa = scan.mantissa * 10 + static_cast<std::uint64_t>(c - '0');
    } else {
      scan.simple = false;
    }
  };
  for (; i < text.size() && IsDigit(text[i]); ++i) takeDigit(text[i]);
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && IsDigit(text[i]); ++i) {
      takeDigit(text[i]);
      ++scan.decimals;
    }
  }
  if (scan.anyDigit && i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
    std::size_t exponent = i + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    if (exponent < text.size() && IsDigit(text[exponent])) {
      while (exponent < text.size() && IsDigit(text[exponent])) ++exponent;
      i = exponent;
      scan.simple = false;
    }
  }
  scan.end = i;
  return scan;
}

// The power of ten of the first significant digit, which tells a number that is too large for a
// double from one that is too small to be told from zero.
std::int64_t PowerOfTen(std::string_view number) {
  const std::size_t e = std::min(number.find_first_of("Ee"), number.size());
  const std::string_view mantissa = number.substr(0, e);
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
  const std::int64_t power = first < point ? point - first - 1 : point - first;
  if (e == number.size()) return power;

  std::string_view digits = number.substr(e + 1);
  const bool negative = digits.front() == '-';
  if (negative || digits.front() == '+') digits.remove_prefix(1);
  // Nine digits are beyond any text that could outweigh them.
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  std::int64_t exponent = 0;
  for (const char c : digits.substr(0, 9)) exponent = exponent * 10 + (c - '0');
  return negative ? power - exponent : power + exponent;
}

double ParseGeneral(std::string_view digits) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::result_out_of_range) {
    if (PowerOfTen(digits) < 0) return 0.0;
    Raise(FaultNumber::Overflow);
  }
  return value;
}

// Rounds to the given significant digits and spells the value out without an exponent.
std::string SpellOut(double value, int significant) {
  std::array<char, 64> scientific;
  const auto shortest = std::to_chars(scientific.data(), scientific.data() + scientific.size(),
                                      value, std::chars_format::scientific, significant - 1);
  const std::string_view all(scientific.data(),
                             static_cast<std::size_t>(shortest.ptr - scientific.data()));
  const std::size_t e = all.find('e');
  std::string digits;
  for (const char c : all.substr(0, e)) {
    if (IsDigit(c)) digits.push_back(c);
  }
  int exponent = 0;
  std::string_view power = all.substr(e + 1);
  if (power.front() == '+') power.remove_prefix(1);
  std::from_chars(power.data(), power.data() + power.size(), exponent);
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();

  std::string text = all.front() == '-' ? "-" : "";
  const auto count = static_cast<int>(digits.size());
  if (exponent < 0) {
    text.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
  } else if (exponent >= count - 1) {
    text.append(digits).append(static_cast<std::size_t>(exponent - count + 1), '0');
  } else {
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    text.append(digits, 0, whole).append(".").append(digits, whole);
  }
  return text;
}

template <class Number>
std::string GeneralText(Number value, int maxDigits) {
  if (value == 0) return "0";
  if (!std::isfinite(value)) return value > 0 ? "inf" : value < 0 ? "-inf" : "nan";
  // The fewest digits that identify the value, but never more than the width is good for.
  std::array<char, 64> buffer;
  const auto shortest = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::scientific);
  int digits = 0;
  for (const char* p = buffer.data(); p != shortest.ptr && *p != 'e'; ++p) digits += IsDigit(*p);
  return SpellOut(static_cast<double>(value), digits < maxDigits ? digits : maxDigits);
}

template <class Number>
std::string RoundTripText(Number value) {
  std::array<char, 64> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), end};
}

template <class Integer>
Integer RoundTo(double value) {
  // One half more or less than the limits rounds into them or ties away from them.
  constexpr double kLowest = std::numeric_limits<Integer>::min() - 0.5;
  constexpr double kHighest = std::numeric_limits<Integer>::max() + 0.5;
  if (!(value >= kLowest && value < kHighest)) Raise(FaultNumber::Overflow);
  // A double of this size has no place for a fraction, so that adding it rounds, ties to even.
  constexpr double kUnit = 0x1.8p52;
  const double rounded = value + kUnit - kUnit;
  return static_cast<Integer>(rounded);
}

}  // namespace

double ReadNumber(std::string_view text) {
  if (const std::optional<double> plain = ReadPlain(text)) return *plain;
  const Scan scan = ScanNumber(text);
  if (!scan.anyDigit) return 0.0;
  double value = 0.0;
  if (scan.simple && scan.decimals < kExactPowers.size()) {
    // Both operands are exact, so the one division rounds correctly.
    value = static_cast<double>(scan.mantissa) / kExactPowers[scan.decimals];
  } else {
    value = ParseGeneral(text.substr(scan.begin, scan.end - scan.begin));
  }
  return scan.negative ? -value : value;
}

std::int16_t ToInt16(double value) {
  return RoundTo<std::int16_t>(value);
}
std::int32_t ToInt32(double value) {
  return RoundTo<std::int32_t>(value);
}

float ToSingle(double value) {
  // Half a unit above the largest single rounds to infinity; anything below it fits.
  constexpr double kLimit = 0x1.ffffffp127;
  if (!(std::abs(value) < kLimit)) Raise(FaultNumber::Overflow);
  return static_cast<float>(value);
}

std::string PlainText(float value) {
  return GeneralText(value, 7);
}
std::string PlainText(double value) {
  return GeneralText(value, 15);
}

std::string PlainText(std::int32_t value) {
  std::array<char, 16> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), end};
}

std::string ExactText(double value) {
  return RoundTripText(value);
}
std::string ExactText(float value) {
  return RoundTripText(value);
}

}  // namespace fathomline
