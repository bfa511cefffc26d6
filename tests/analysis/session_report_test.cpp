#include "analysis/session_report.h"

#include <algorithm>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

class SessionReportTest : public testing::Test {
 protected:
  // Prints the report of a system and returns its text, which must have the line ends of a report.
  std::string Print(int system = 1) {
    test.face.ExpectBox("Statistics summary printed to text file : " +
                        test.program.report.ReportPath(system));
    test.program.report.Print_Report(system);
    std::string text = ReadWholeFile(test.program.report.ReportPath(system));
    const auto lines = std::count(text.begin(), text.end(), '\n');
    EXPECT_TRUE(text.ends_with("\r\n"));
    EXPECT_EQ(std::erase(text, '\r'), lines);
    return text;
  }

  // 3 fixes: at the reference, 1 m and some 2.5 m above it; north by 0.001' and 0.002'.
  void FeedThreeFixes() {
    test.Feed("GPGGA,120000,6000.0000,N,00500.0000,W,1,08,1.0,10.0,M,40.0,M,,");
    test.Feed("GPGGA,120001,6000.0010,N,00500.0000,W,1,08,1.0,11.0,M,40.0,M,,");
    test.Feed("GPGGA,120002,6000.0020,N,00500.0000,W,1,08,1.0,12.505,M,40.0,M,,");
  }

  // The rows of all intervals, by the last bin of each, where some samples lie behind them.
  static std::string DistributionRows(const std::map<int, int>& counts, int total) {
    std::string rows;
    double share = 0.0;
    const auto row = [&](int first, int last) {
      const auto found = counts.find(last);
      const int count = found == counts.end() ? 0 : found->second;
      share += static_cast<double>(count) / total;
      const auto tenths = static_cast<int>(share * 1000.0 + 0.5);
      char interval[32];
      char line[80];
      std::snprintf(interval, sizeof interval, "%d.%d-%d.%d m", first / 10, first % 10, last / 10,
                    last % 10);
      std::snprintf(line, sizeof line, "%-14s%7d   %3d.%d %%\n", interval, count, tenths / 10,
                    tenths % 10);
      rows += line;
    };
    for (int i = 1; i <= 20; ++i) row(i - 1, i);
    for (int i = 25; i <= 250; i += 5) row(i - 5, i);
    return rows;
  }

  TestProgram test;
};

TEST_F(SessionReportTest, OfAReplayIsWrittenLineByLine) {
  test.Analyse({"GGA"});
  test.records.Mode = kOffline;
  test.records.CommSetups[1].OfflineFile = "/data/run 1.log";
  test.records.SessionInfo = "First line\r\nSecond line";
  test.records.OfflineStartTime = DateFromParts(2026, 1, 2) + TimeFromParts(3, 4, 5);
  test.records.OfflineEndTime = DateFromParts(2026, 1, 2) + TimeFromParts(3, 4, 59);
  FeedThreeFixes();

  EXPECT_EQ(Print(), R"(------------------------------------------------------------
Summary of Fathomline session : DGPS

OFFLINE MODE, analysed file : 
/data/run 1.log

------------------------------------------------------------
First line
Second line
------------------------------------------------------------

Start at 12:00:00    
Stop at  12:00:02    

Number of accepted readings 3
Number of rejected readings 0

------------------------------------------------------------


Reference position :  First sample
 Latitude  :  60°00'00.000"N
 Longitude : 005°00'00.000"W
 Ellipsoidal Height :10.00 m
------------------------------------------------------------
Average position
 Latitude  :  60°00'00.060"N    Sd 1.85 m
 Longitude : 005°00'00.000"W    Sd 0.00 m
 Ellipsoidal Height :11.17 m    Sd 1.26 m
------------------------------------------------------------

Statistic deviation from reference position 

      Horisontal    dNorthing   dEasting    dHeight
Mean      1.85 m      1.85 m      0.00 m      1.17 m
Sdev      1.85 m      1.85 m      0.00 m      1.26 m
------------------------------------------------------------
Max       3.70 m      3.70 m      0.00 m      2.51 m
Min       0.00 m      0.00 m      0.00 m      0.00 m
------------------------------------------------------------
68%        3.7 m   +/- 3.69 m  +/- 0.00 m  +/- 2.50 m
95%        3.7 m   +/- 3.69 m  +/- 0.00 m  +/- 2.50 m
------------------------------------------------------------

Distribution of horisontal deviation

Interval      No of fix Accumulated percent

)" + DistributionRows({{1, 1}, {185, 1}}, 3) +
                         R"(
------------------------------------------------------------

Distribution of height deviation

Interval      No of fix Accumulated percent
)" + DistributionRows({{1, 1}, {105, 1}}, 3) +
                         R"(    >25 m           1   100.0 %

------------------------------------------------------------

Processing start at 03:04:05  02 Jan 2026
       completed at 03:04:59  02 Jan 2026

------------------------------------------------------------

)");
}

TEST_F(SessionReportTest, IsNamedByRoleAndNameAndReplacesOneOfTheSameMinute) {
  test.clock.Set(DateFromParts(2019, 10, 26) + TimeFromParts(14, 30, 0));
  EXPECT_THAT(test.program.report.ReportPath(1), EndsWith("Reports/20191026-1430-Prim-DGPS.txt"));
  test.records.CommSetups[3].Name = "../bad\nname";
  EXPECT_THAT(test.program.report.ReportPath(3),
              EndsWith("Reports/20191026-1430-Sec2-.._bad_name.txt"));

  test.Analyse({"GGA"});
  FeedThreeFixes();
  const std::string first = Print();
  EXPECT_EQ(Print(), first);
  EXPECT_THAT(first, HasSubstr("Start at 12:00:00    26 Oct 2019\n")) << "online, with the date";
  EXPECT_THAT(first, HasSubstr("Stop at  12:00:02    02 Jan 2026\n"));
  test.records.References[1].ReferenceUsed = kAverageOverTime;
  EXPECT_THAT(Print(), HasSubstr("Reference position :  Average over time\n-----"));
}

TEST_F(SessionReportTest, WithoutASampleStopsAtTheFirstDivision) {
  test.face.ExpectBox("Division by zero(SUB: Print_Report)");
  test.program.report.Print_Report(1);
  EXPECT_THAT(ReadWholeFile(test.program.report.ReportPath(1)),
              EndsWith("Interval      No of fix Accumulated percent\r\n\r\n"));
}

TEST_F(SessionReportTest, ShowsTheCauseWhereItCannotBeWritten) {
  test.folder.Write("Reports", "a file stands where the folder should");
  test.face.ExpectBox("");
  test.program.report.Print_Report(1);
  EXPECT_THAT(test.face.Boxes().back().text, EndsWith("(SUB: Print_Report)"));
}

}  // namespace
}  // namespace fathomline
