// Reading numbers, narrowing them, and the general number-to-text conversion.
//
// None of this depends on the locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace fathomline {

// Stands for an empty field, in the width of the field that holds it; and how it is shown.
inline constexpr std::int16_t NoValue = -9999;
inline constexpr std::string_view kNotAvailable = "n/a";

// The lenient number reading: leading blanks, a sign, digits, a point, digits, an exponent with E.
// Reads as far as the text looks like a number; 0 when no number begins it. No inner blanks, no
// hexadecimal, no "inf" or "nan". Raises Overflow where the number is beyond a double.
double ReadNumber(std::string_view text);

// Narrowing conversions. The integers round to nearest, ties to even. Each raises Overflow where
// the value does not fit.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);
float ToSingle(double value);

// Single arithmetic. Each raises Overflow where the result leaves the range of a single.
inline float SingleSum(float a, float b) {
  return ToSingle(static_cast<double>(a + b));
}
inline float SingleDifference(float a, float b) {
  return ToSingle(static_cast<double>(a - b));
}

// The same, chosen by the width of the target.
template <class Number>
Number ConvertTo(double value) {
  if constexpr (std::is_same_v<Number, std::int16_t>) {
    return ToInt16(value);
  } else if constexpr (std::is_same_v<Number, std::int32_t>) {
    return ToInt32(value);
  } else if constexpr (std::is_same_v<Number, float>) {
    return ToSingle(value);
  } else {
    static_assert(std::is_same_v<Number, double>);
    return value;
  }
}

// A number as plain text: the shortest digits that identify it in its own width, at most 7
// significant ones for a single and 15 for a double, never an exponent, "0.5" below 1.
std::string PlainText(float value);
std::string PlainText(double value);
std::string PlainText(std::int32_t value);
inline std::string PlainText(std::int16_t value) {
  return PlainText(std::int32_t{value});
}

// The general number-to-text conversion: as PlainText, with a leading blank when not negative.
template <class Number>
std::string NumberText(Number value) {
  std::string text = PlainText(value);
  if (text.front() != '-') text.insert(text.begin(), ' ');
  return text;
}

// The shortest digits from which the same double or single is read back, for machine-read output.
std::string ExactText(double value);
std::string ExactText(float value);

}  // namespace fathomline
