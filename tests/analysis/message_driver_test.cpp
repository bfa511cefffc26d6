#include "analysis/message_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/expect_fault.h"
#include "support/recording_dialogs.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes who was called, in order.
class CallList : public MessageViews {
 public:
  void UpdateNumerics(int, SentenceType) override { calls.emplace_back("numerics"); }
  void UpdateARPATargets(int, SentenceType) override { calls.emplace_back("arpa"); }
  void UpdateAISTargets(int, SentenceType) override { calls.emplace_back("ais"); }
  void UpdateStatisticsView(int, SentenceType) override { calls.emplace_back("statistics"); }
  void UpdateTimeSeries(int, SentenceType) override { calls.emplace_back("series"); }
  void UpdateScatter(int, SentenceType) override { calls.emplace_back("scatter"); }
  void UpdateSkyplot(int) override { calls.emplace_back("skyplot"); }
  void UpdateSatelliteTracking(int) override { calls.emplace_back("tracking"); }

  std::vector<std::string> Take() { return std::exchange(calls, {}); }
  std::vector<std::string> calls;
};

class MessageDriverCalls : public testing::Test {
 protected:
  MessageDriverCalls() {
    for (const AnalyseFlag& row : kAnalyseFlags) records.CommSetups[1].*row.flag = true;
    records.Messages[1].GGA.Record.Time = "12:00:00";
  }

  std::vector<std::string> Process(SentenceType type) {
    driver.ProcessMessage(1, type);
    return views.Take();
  }

  Records records;
  FrozenClock clock{TestProgram::kNow};
  Statistics statistics{records, clock};
  RecordingDialogs dialogs;
  CallList views;
  MessageDriver driver{records, statistics, clock, dialogs, views};
};

TEST_F(MessageDriverCalls, FollowTheFixedOrderAndTheOpenWindows) {
  EXPECT_THAT(Process(SentenceType::GGA), ElementsAre("series", "scatter"));
  SystemSetup& open = records.SystemSetups[1];
  for (const WindowFlag flag :
       {WindowFlag::Numerics, WindowFlag::ARPATargets, WindowFlag::AISTargets,
        WindowFlag::Statistics, WindowFlag::Skyplot}) {
    open[flag] = true;
  }
  EXPECT_THAT(Process(SentenceType::GGA),
              ElementsAre("numerics", "arpa", "ais", "statistics", "series", "scatter"));
  EXPECT_THAT(Process(SentenceType::GSA),
              ElementsAre("numerics", "arpa", "ais", "statistics", "series", "skyplot"));
  EXPECT_THAT(Process(SentenceType::GSV),
              ElementsAre("numerics", "arpa", "ais", "statistics", "series", "tracking"));
  EXPECT_THAT(Process(SentenceType::GST),
              ElementsAre("numerics", "arpa", "ais", "statistics", "series", "scatter"));

  records.OnlinePaused = true;
  EXPECT_THAT(Process(SentenceType::GSA), ElementsAre("numerics", "arpa", "ais"));
  records.Mode = kOffline;
  EXPECT_EQ(Process(SentenceType::VTG).size(), 5U) << "a replay is held in its loop, not here";
}

TEST_F(MessageDriverCalls, EndForATypeThatIsNotAnalysedAndGoOnForAnUnknownOne) {
  records.CommSetups[1] = {};
  for (const AnalyseFlag& row : kAnalyseFlags) EXPECT_THAT(Process(row.type), IsEmpty());
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_THAT(Process(SentenceTypeOf("XYZ")), ElementsAre("series"));
  EXPECT_THAT(dialogs.TakeTexts(), ElementsAre("A NMEA message type XYZ is received. No action"));
}

class MessageDriverTest : public testing::Test {
 protected:
  std::string Time() { return FormatDateTime(test.records.MessageTime[1], "dd mmm yyyy hh:nn:ss"); }

  TestProgram test;
  SystemStatistics& statistics = test.program.engine.statistics[1];
  ReferenceSetup& reference = test.records.References[1];
};

TEST_F(MessageDriverTest, KeepsTheClockOfTheSystem) {
  test.Analyse({"GGA", "GLL", "RMC", "ZDA", "VTG"});
  EXPECT_EQ(Time(), "02 Jan 2026 03:04:05") << "the present time until a sentence tells another";
  struct Step {
    const char* body;
    const char* time;
    const char* why;
  };
  for (const Step& step :
       {Step{"GPGGA,235959.75,,,,,0,,,,M,,M,,", "02 Jan 2026 23:59:59", "whole seconds"},
        Step{"GPGGA,000001,,,,,0,,,,M,,M,,", "03 Jan 2026 00:00:01", "past midnight"},
        Step{"GPRMC,000002,V,,,,,,,030126,,,N", "03 Jan 2026 00:00:02", "the same day"},
        Step{"GPZDA,120000,15,08,2026,00,00", "03 Jan 2026 00:00:02", "it moves the date alone"},
        Step{"GPGGA,nonsense,,,,,0,,,,M,,M,,", "03 Jan 2026 00:00:02", "passed over by GGA"},
        Step{"GPGGA,000003,,,,,0,,,,M,,M,,", "15 Aug 2026 00:00:03", "the date of the ZDA"},
        Step{"GPGGA,000001,,,,,0,,,,M,,M,,", "16 Aug 2026 00:00:01", "a step back is midnight"},
        // Day 32 of January rolls over, and so does the date behind it.
        Step{"GPRMC,000001,V,,,,,,,320126,,,N", "02 Feb 2026 00:00:01", "and back in time"}}) {
    test.Feed(step.body);
    EXPECT_EQ(Time(), step.time) << step.body << ": " << step.why;
  }

  test.records.SetTimeFromPC[1] = true;
  test.clock.Set(DateFromParts(2027, 5, 6) + TimeFromParts(7, 8, 9));
  test.Feed("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
  EXPECT_EQ(Time(), "06 May 2027 07:08:09");
}

TEST_F(MessageDriverTest, PassesOnATimeOrDateThatCannotBeRead) {
  test.Analyse({"GLL", "RMC", "ZDA"});
  for (const char* const body :
       {"GPGLL,6000.0,N,00500.0,E,,A,A", "GPGLL,6000.0,N,00500.0,E,240000,A,A",
        "GPRMC,120000,A,6000.0,N,00500.0,E,1,2,,,,A",
        "GPRMC,120000,A,6000.0,N,00500.0,E,1,2,1-0126,,,A",
        "GPRMC,12x000,A,6000.0,N,00500.0,E,1,2,020126,,,A"}) {
    ExpectFault(FaultNumber::TypeMismatch, [&] { test.Feed(body); });
  }
  for (const char* const body : {"GPZDA,120000,01,02,99,00,00", "GPZDA,120000,01,02,,00,00"}) {
    ExpectFault(FaultNumber::InvalidCall, [&] { test.Feed(body); });
  }
  EXPECT_EQ(statistics.LatitudeMean.Count, 0) << "the steps behind the fault are skipped";
}

TEST_F(MessageDriverTest, LeavesTheTrueReferenceAloneAndHoldsTheMeansInAPause) {
  test.Analyse({"GGA", "HDT"});
  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceLatitude = 1.0;
  test.records.OnlinePaused = true;
  test.Feed("GPGGA,120000,6000.0,N,00500.0,E,1,08,1.0,10.0,M,40.0,M,,");
  test.Feed("HEHDT,10.0,T");
  test.records.OnlinePaused = false;
  test.Feed("HEHDT,,T");  // an empty heading is no value
  EXPECT_EQ(reference.ReferenceLatitude, 1.0);
  EXPECT_EQ(statistics.LatitudeMean.Count, 0);
  EXPECT_EQ(statistics.HeadingMean.Count, 0);
}

}  // namespace
}  // namespace fathomline
