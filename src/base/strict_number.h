// Numbers that fill their text.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace fathomline {

// The whole text as std::from_chars reads it, in the base or the form given: no blanks, no plus.
// None where anything else stands in it, or where the number does not fit its type.
template <class Number, class... Form>
std::optional<Number> StrictNumber(std::string_view text, Form... form) {
  const char* const end = text.data() + text.size();
  Number number{};
  const auto [stop, error] = std::from_chars(text.data(), end, number, form...);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return number;
}

}  // namespace fathomline
