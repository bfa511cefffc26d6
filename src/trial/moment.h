// A moment of a recording, and how it is written.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

// Where a part of the recordings begins or ends.
struct TimeBound {
  enum class Of { Date, DayCount, FirstDay };
  Of of = Of::FirstDay;
  // As in Moment, dated or not; of FirstDay since the beginning of that.
  std::int64_t milliseconds = 0;
};

// "2026-01-02T03:04:05.678Z", "+0T03:04:05.678Z" or "03:04:05.678". The decimals and the Z may be
// left out, and of a date the time. Nothing for what is none of these.
std::optional<TimeBound> ReadTimeBound(std::string_view text);

}  // namespace fathomline::trial
