#include "ais/static_records.h"

namespace fathomline {

DateTime ETAOf(const AISReception& reception) {
  const auto part = [&](int first, int last) {
    return static_cast<int>(reception.bits.Unsigned(first, last));
  };
  const int month = part(275, 278);
  if (month == 0) return {};
  const int year = ToCalendar(reception.clock.NowLocal()).year;
  return DateFromParts(year, month, part(279, 283)) +
         TimeFromParts(part(284, 288), part(289, 294), 0);
}

}  // namespace fathomline
