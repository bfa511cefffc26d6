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
  TestProgram test;
  SystemStatistics& statistics = test.program.engine.statistics[1];
  ReferenceSetup& reference = test.records.References[1];
};

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

TEST_F(MessageDriverTest, FaultsWhereSinglesRunOverAndTakesNoPartOfTheSample) {
  test.Analyse({"GGA", "HDT", "ATT"});
  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceHeight = reference.ReferenceHeading = reference.ReferenceRoll = -3E38F;
  for (const std::string body : {"GPGGA,120001,6000.0,N,00500.0,E,1,08,1.0,3E38,M,0,M,,",
                                 "HEHDT,3E38,T", "PFEC,GPatt,0,0,3E38"}) {
    ExpectFault(FaultNumber::Overflow, [&] { test.Feed(body); });
  }
  for (const SentenceType type : {SentenceType::GGA, SentenceType::HDT, SentenceType::ATT}) {
    EXPECT_EQ(statistics.Of(type).front().Stat.Count, 0) << ToText(type);
  }
  EXPECT_EQ(statistics.PitchMean.Count, 0) << "no part of it, the pitch before the roll neither";

  test.program.windows.numerics[1]->Show();
  ExpectFault(FaultNumber::Overflow,
              [&] { test.Feed("GPGGA,120002,6000.0,N,00500.0,E,1,08,1.0,2E38,M,3E38,M,,"); });
}

}  // namespace
}  // namespace fathomline
