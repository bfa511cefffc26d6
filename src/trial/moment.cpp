#include "trial/moment.h"

#include <array>
#include <chrono>
#include <cstdio>

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

}  // namespace fathomline::trial
