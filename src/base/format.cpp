#include "base/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "base/numbers.h"

namespace fathomline {
namespace {

// |value| with `decimals` digits behind the point, rounded half away from zero.
//
// to_chars rounds the exact value to nearest and only a tie to even. A tie has at most
// decimals + 1 binary digits behind the point, and then decimals + 1 decimal digits are exact.
std::string RoundedDigits(double magnitude, int decimals) {
  std::vector<char> buffer(static_cast<std::size_t>(decimals) + 330);
  const auto print = [&](int digits) {
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                      std::chars_format::fixed, digits);
    return std::string(buffer.data(), result.ptr);
  };
  const double scaled = std::ldexp(magnitude, decimals + 1);
  if (!std::isfinite(scaled) || scaled != std::floor(scaled)) return print(decimals);

  std::string digits = print(decimals + 1);
  const bool up = digits.back() >= '5';
  digits.pop_back();
  if (digits.back() == '.') digits.pop_back();
  if (!up) return digits;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit == '.') continue;
    if (*digit != '9') {
      ++*digit;
      return digits;
    }
    *digit = '0';
  }
  return "1" + digits;
}

bool IsPlaceholder(char c) {
  return c == '0' || c == '#';
}

}  // namespace

std::string Format(double value, std::string_view picture) {
  const std::size_t point = picture.find('.');
  const std::string_view wholePicture = picture.substr(0, point);
  const std::string_view fractionPicture =
      point == std::string_view::npos ? std::string_view{} : picture.substr(point + 1);
  if (picture.find('%') != std::string_view::npos) value *= 100.0;
  if (!std::isfinite(value)) return PlainText(value);

  const auto places = static_cast<int>(
      std::count_if(fractionPicture.begin(), fractionPicture.end(), IsPlaceholder));
  const std::string digits = RoundedDigits(std::abs(value), places);
  std::string_view whole = std::string_view(digits).substr(0, digits.find('.'));
  if (whole == "0") whole = {};

  std::string text = value < 0.0 ? "-" : "";

  // Whole part: the picture's digits are filled from the right, the surplus goes in front of the
  // first one. A zero that is not significant shows only from the first "0" on.
  auto left = static_cast<std::size_t>(
      std::count_if(wholePicture.begin(), wholePicture.end(), IsPlaceholder));
  bool forced = false;
  bool started = false;
  for (const char c : wholePicture) {
    if (!IsPlaceholder(c)) {
      text.push_back(c);
      continue;
    }
    if (!started && whole.size() > left) text.append(whole.substr(0, whole.size() - left));
    started = true;
    forced = forced || c == '0';
    if (left <= whole.size()) {
      text.push_back(whole[whole.size() - left]);
    } else if (forced) {
      text.push_back('0');
    }
    --left;
  }
  if (point == std::string_view::npos) return text;
  if (!started) text.append(whole);

  // Fraction: trailing zeros under "#" are dropped.
  text.push_back('.');
  std::size_t next = digits.find('.');
  next = next == std::string::npos ? digits.size() : next + 1;
  for (std::size_t i = 0; i < fractionPicture.size(); ++i) {
    const char c = fractionPicture[i];
    if (!IsPlaceholder(c)) {
      text.push_back(c);
      continue;
    }
    const bool significant = digits.find_first_not_of('0', next) != std::string::npos;
    const bool shownBehind = fractionPicture.find('0', i) != std::string_view::npos;
    if (significant || shownBehind) text.push_back(digits[next]);
    ++next;
  }
  return text;
}

}  // namespace fathomline
