// A moment of a recording, and how it is written.
#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace fathomline::trial {

inline constexpr std::int64_t kDayMilliseconds = 86'400'000;

// Milliseconds of UTC since the beginning of 1970 or, in a recording that tells no date, since the
// beginning of the day of its first epoch.
struct Moment {
  std::int64_t milliseconds = 0;
  bool dated = false;

  auto operator<=>(const Moment&) const = default;
};

// "2026-01-02T03:04:05.000Z", or "+0T03:04:05.000Z" where no date is told.
std::string ToText(Moment moment);

}  // namespace fathomline::trial
