#include "analysis/sentence_clock.h"

#include <gtest/gtest.h>
#include <string>

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

class SentenceClockTest : public testing::Test {
 protected:
  struct Step {
    const char* body;
    const char* time;
    const char* why;
  };

  SentenceClockTest() { test.Analyse({"GGA", "GLL", "RMC", "ZDA", "VTG"}); }

  std::string Time() { return FormatDateTime(test.records.MessageTime[1], "dd mmm yyyy hh:nn:ss"); }

  void Follow(std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      test.Feed(step.body);
      EXPECT_EQ(Time(), step.time) << step.body << ": " << step.why;
    }
  }

  // The computer's time is 2 January 2026, 03:04:05.
  TestProgram test;
};

TEST_F(SentenceClockTest, TellsTheDateOfTheData) {
  Follow({{"GPVTG,054.7,T,034.4,M,005.5,N,010.2,K", "02 Jan 2026 03:04:05", "nobody has told it"},
          {"GPGGA,nonsense,,,,,0,,,,M,,M,,", "02 Jan 2026 03:04:05", "passed over by GGA"},
          {"GPGGA,010203.75,,,,,0,,,,M,,M,,", "02 Jan 2026 01:02:03", "the first makes no step"},
          {"GPGGA,010202,,,,,0,,,,M,,M,,", "03 Jan 2026 01:02:02", "a step back is midnight"},
          {"GPVTG,054.7,T,034.4,M,005.5,N,010.2,K", "03 Jan 2026 01:02:02", "it stays"},
          {"GPGLL,,,,,000001,A,A", "04 Jan 2026 00:00:01", "another midnight"},
          // Day 32 of January rolls over.
          {"GPRMC,000000,V,,,,,,,320118,,,N", "01 Feb 2018 00:00:00", "stands as sent"},
          {"GPGGA,235959,,,,,0,,,,M,,M,,", "01 Feb 2018 23:59:59", "on its date"},
          {"GPRMC,000000,V,,,,,,,020218,,,N", "02 Feb 2018 00:00:00", "the date is its own"},
          {"GPGGA,000000,,,,,0,,,,M,,M,,", "02 Feb 2018 00:00:00", "and is not stepped again"}});
}

TEST_F(SentenceClockTest, IsSetByAZDABeforeItAndLetsOneBehindItMoveTheDateAlone) {
  Follow({{"GPGGA,120000,,,,,0,,,,M,,M,,", "02 Jan 2026 12:00:00", "first told"},
          {"GPZDA,120000,15,08,2026,00,00", "02 Jan 2026 12:00:00", "ahead: the date alone"},
          {"GPGGA,000003,,,,,0,,,,M,,M,,", "15 Aug 2026 00:00:03", "the date of the ZDA"},
          {"GPZDA,235958.9,14,08,2026,00,00", "14 Aug 2026 23:59:58", "before: it sets the clock"},
          {"GPGGA,000001,,,,,0,,,,M,,M,,", "15 Aug 2026 00:00:01", "midnight, once"},
          {"GPZDA,2400,13,08,2026,00,00", "13 Aug 2026 00:00:00", "no six digits of a time"},
          {"GPZDA,120000,13,08,2026,00,00", "13 Aug 2026 00:00:00", "the same day"}});
  for (const char* const body : {"GPZDA,120000,01,02,99,00,00", "GPZDA,120000,01,02,10000,00,00"}) {
    ExpectFault(FaultNumber::InvalidCall, [&] { test.Feed(body); });
  }
}

TEST_F(SentenceClockTest, IsToldByAZDAWhereItIsTheFirst) {
  Follow({{"GPZDA,235958,01,06,2019,00,00", "01 Jun 2019 23:59:58", "an old recording"},
          {"GPGGA,000001,,,,,0,,,,M,,M,,", "02 Jun 2019 00:00:01", "told, so this is midnight"}});
}

TEST_F(SentenceClockTest, BeginsAnewWithEachReplay) {
  const auto pass = [this] {
    test.program.engine.driver.BeginReplay();
    Follow({{"GPGGA,230000,,,,,0,,,,M,,M,,", "02 Jan 2026 23:00:00", "the date in force"},
            {"GPGGA,235959,,,,,0,,,,M,,M,,", "02 Jan 2026 23:59:59", "later"}});
  };
  pass();
  pass();
  Follow({{"GPGGA,000000,,,,,0,,,,M,,M,,", "03 Jan 2026 00:00:00", "midnight within a replay"}});
}

TEST_F(SentenceClockTest, KeepsToWhatIsKnownOfTheDatesOfAFile) {
  MessageDriver& driver = test.program.engine.driver;
  driver.KnowDates(1, {"a.log", DateFromParts(2019, 5, 6), true});
  for (int replay = 0; replay < 2; ++replay) {
    test.records.CommSetups[1].OfflineFile = "a.log";
    driver.BeginReplay();
    Follow({{"GPGGA,230000,,,,,0,,,,M,,M,,", "06 May 2019 23:00:00", "in every replay of it"},
            {"GPGGA,110001,,,,,0,,,,M,,M,,", "06 May 2019 11:00:01", "less than half a day back"},
            {"GPGGA,235959,,,,,0,,,,M,,M,,", "06 May 2019 23:59:59", "on again"},
            {"GPGGA,115958,,,,,0,,,,M,,M,,", "07 May 2019 11:59:58", "more: that was midnight"}});
    test.records.CommSetups[1].OfflineFile = "b.log";
    driver.BeginReplay();
    Follow({{"GPGGA,230000,,,,,0,,,,M,,M,,", "07 May 2019 23:00:00", "nothing is known of this"},
            {"GPGGA,220000,,,,,0,,,,M,,M,,", "08 May 2019 22:00:00", "every step is midnight"}});
  }
}

TEST_F(SentenceClockTest, FollowsTheComputerWhereTheSystemAsksForIt) {
  test.records.SetTimeFromPC[1] = true;
  const auto at = [this](int day, int hour) {
    test.clock.Set(DateFromParts(2027, 5, day) + TimeFromParts(hour, 8, 9));
  };
  const char* const motion = "GPVTG,054.7,T,034.4,M,005.5,N,010.2,K";
  at(6, 7);
  Follow({{motion, "06 May 2027 07:08:09", "any sentence tells it"}});
  at(6, 6);
  Follow({{motion, "07 May 2027 06:08:09", "a computer set back counts as midnight"}});
  at(8, 9);
  Follow({{"GPGGA,,,,,,0,,,,M,,M,,", "08 May 2027 09:08:09", "a GGA without a time"},
          {"GPRMC,101112,V,,,,,,,080527,,,N", "08 May 2027 10:11:12", "its own time is stronger"}});
}

TEST_F(SentenceClockTest, PassesOnATimeOrDateThatCannotBeRead) {
  for (const char* const body :
       {"GPGLL,6000.0,N,00500.0,E,,A,A", "GPGLL,6000.0,N,00500.0,E,240000,A,A",
        "GPRMC,120000,A,6000.0,N,00500.0,E,1,2,,,,A",
        "GPRMC,120000,A,6000.0,N,00500.0,E,1,2,1-0126,,,A",
        "GPRMC,12x000,A,6000.0,N,00500.0,E,1,2,020126,,,A"}) {
    ExpectFault(FaultNumber::TypeMismatch, [&] { test.Feed(body); });
  }
  EXPECT_EQ(test.program.engine.statistics[1].LatitudeMean.Count, 0)
      << "the steps behind the fault are skipped";
}

}  // namespace
}  // namespace fathomline
