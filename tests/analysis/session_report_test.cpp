#include "analysis/session_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/system.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

const std::string kReports = std::string("Reports") + kPathSeparator;

struct SessionReportTest : testing::Test, TestProgram {
  SessionReport& report = program.engine.report;
};

TEST_F(SessionReportTest, IsNamedByRoleAndNameAndReplacesOneOfTheSameMinute) {
  clock.Set(DateFromParts(2019, 10, 26) + TimeFromParts(14, 30, 0));
  EXPECT_THAT(report.ReportPath(1), EndsWith(kReports + "20191026-1430-Prim-DGPS.txt"));
  records.CommSetups[3].Name = "../bad\nname";
  EXPECT_THAT(report.ReportPath(3), EndsWith(kReports + "20191026-1430-Sec2-.._bad_name.txt"));

  Analyse({"GGA"});
  Feed("GPGGA,120000,6000.0000,N,00500.0000,W,1,08,1.0,10.0,M,40.0,M,,");
  for (int i = 0; i < 2; ++i) {
    face.ExpectBox("Statistics summary printed to text file : " + report.ReportPath(1));
    report.Print_Report(1);
  }
  const std::string text = ReadWholeFile(report.ReportPath(1));
  EXPECT_THAT(text, HasSubstr("Start at 12:00:00    26 Oct 2019\r\n")) << "online, with the date";
  EXPECT_THAT(text, HasSubstr("Stop at  12:00:00    02 Jan 2026\r\n"));
  EXPECT_EQ(text.find("Start at"), text.rfind("Start at"));
}

TEST_F(SessionReportTest, KeepsTheLinesBeforeAFigureThatRunsOver) {
  Analyse({"GGA"});
  Feed("GPGGA,120000,6000.0000,N,00500.0000,W,1,08,1.0,10.0,M,40.0,M,,");
  program.engine.statistics[1].LatitudeMean.Sdev = 1e300;
  face.ExpectBox("Overflow(SUB: Print_Report)");
  report.Print_Report(1);
  EXPECT_THAT(ReadWholeFile(report.ReportPath(1)), EndsWith("Average position\r\n"));
}

TEST_F(SessionReportTest, ShowsTheCauseWhereItCannotBeWritten) {
  folder.Write("Reports", "a file stands where the folder should");
  face.ExpectBox("");
  report.Print_Report(1);
  EXPECT_THAT(face.Boxes().back().text, EndsWith("(SUB: Print_Report)"));
}

}  // namespace
}  // namespace fathomline
