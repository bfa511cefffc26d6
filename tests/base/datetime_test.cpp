#include "base/datetime.h"

#include <gtest/gtest.h>
#include <tuple>

#include "support/expect_fault.h"

namespace fathomline {
namespace {

TEST(DateTime, CountsDaysFromTheEndOf1899) {
  EXPECT_EQ(DateFromParts(1899, 12, 30).days, 0.0);
  EXPECT_EQ(DateFromParts(1900, 1, 1).days, 2.0);
  EXPECT_EQ(DateFromParts(2000, 3, 1).days, 36586.0);
  EXPECT_EQ(FromUnixSeconds(43200.0).days, 25569.5);
}

TEST(DateTime, PartsOutOfRangeRollOver) {
  EXPECT_EQ(DateFromParts(2020, 3, 0), DateFromParts(2020, 2, 29));
  EXPECT_EQ(DateFromParts(2020, -11, 99), DateFromParts(2019, 4, 9));
  EXPECT_EQ(DateFromParts(2100, 2, 29), DateFromParts(2100, 3, 1));
}

TEST(DateTime, CalendarPartsAreThoseOfTheNearestSecond) {
  const CalendarTime time =
      ToCalendar(DateFromParts(2019, 9, 26) + DateTime{(86399.6) / kSecondsPerDay});
  EXPECT_EQ(std::tuple(time.year, time.month, time.day, time.hour, time.minute, time.second),
            std::tuple(2019, 9, 27, 0, 0, 0));
  for (int second = 0; second < 86400; second += 7) {
    const CalendarTime parts = ToCalendar(DateFromParts(2019, 9, 26) + TimeFromParts(0, 0, second));
    ASSERT_EQ(parts.hour * 3600 + parts.minute * 60 + parts.second, second);
  }
}

TEST(DateTime, DifferencesAreWholeSeconds) {
  const DateTime noon = DateFromParts(2020, 2, 28) + TimeFromParts(12, 0, 0);
  EXPECT_EQ(DifferenceInSeconds(noon, noon + kOneDay), 86400);
  EXPECT_EQ(DifferenceInSeconds(noon + TimeFromParts(0, 0, 90), noon), -90);
  EXPECT_EQ(DateOnly(noon), DateFromParts(2020, 2, 28));
  // 337.5 seconds, exactly: halves go away from zero.
  EXPECT_EQ(DifferenceInSeconds({}, {1.0 / 256.0}), 338);
  EXPECT_EQ(DifferenceInSeconds({}, {-1.0 / 256.0}), -338);
}

TEST(ReadTimeOfDay, TakesOneOrTwoDigitsBetweenColonsAndNothingElse) {
  EXPECT_EQ(ReadTimeOfDay("12:35:19"), TimeFromParts(12, 35, 19));
  EXPECT_EQ(ReadTimeOfDay("1:2:3"), TimeFromParts(1, 2, 3));
  EXPECT_EQ(ReadTimeOfDay("23:59"), TimeFromParts(23, 59, 0));
  for (const char* const text :
       {"", "::", "12", "12:", "12:35:", "12:35:19:", "24:00:00", "12:60:00", "12:35:60",
        "123:00:00", "12:345", "12:35x", "12:35:19.25", " 12:35:19", "-1:00:00", "12::19"}) {
    SCOPED_TRACE(text);
    ExpectFault(FaultNumber::TypeMismatch, [&] { ReadTimeOfDay(text); });
  }
}

TEST(FormatDateTime, KnowsThePictures) {
  const DateTime moment = DateFromParts(2019, 9, 6) + TimeFromParts(4, 5, 59);
  EXPECT_EQ(FormatDateTime(moment, "hh:nn:ss DD mmm yyyy"), "04:05:59 06 Sep 2019");
  EXPECT_EQ(FormatDateTime(moment, "dd.mm.yy hh:mm:ss"), "06.09.19 04:05:59");
  EXPECT_EQ(FormatDateTime(moment, "yyyymmdd_hhnnss"), "20190906_040559");
  EXPECT_EQ(FormatDateTime({-1.25}, "dd.mm.yyyy hh:nn:ss"), "28.12.1899 18:00:00");
}

}  // namespace
}  // namespace fathomline
