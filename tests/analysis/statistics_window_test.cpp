#include "analysis/statistics_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class StatisticsWindow : public testing::Test {
 protected:
  std::vector<std::string> Column(const Grid& grid, int column) {
    window.Refresh();
    std::vector<std::string> texts;
    for (int row = 0; row < grid.Rows(); ++row) texts.push_back(grid.Text(row, column));
    return texts;
  }
  std::string Written() {
    std::ostringstream out;
    window.Write(out);
    return out.str();
  }

  TestProgram test;
  frmStatistics& window = *test.program.statisticsWindows[1];
};

TEST_F(StatisticsWindow, FillsItsGridsFromTheRunningFigures) {
  test.Analyse({"GGA", "GNS", "RMC", "VTG", "GSV"});
  window.Show();
  EXPECT_EQ(window.Caption(), "Statistics 1 - DGPS");
  EXPECT_TRUE(test.records.SystemSetups[1][WindowFlag::Statistics]);
  EXPECT_THAT(Column(window.GridOf(SentenceType::GGA), 0),
              ElementsAre("", "Current", "MEAN", "Sdev", "Max", "Min", "68%  <", "95%  <", "Count",
                          "Rejected"));

  test.Feed("GPGGA,120000,6000.0000,N,00500.0000,E,1,08,1.0,10.0,M,40.0,M,2.5,0");
  test.Feed("GPGGA,120001,6000.0100,N,00500.0000,E,1,10,,10.0,M,40.0,M,,");
  const Grid& gga = window.GridOf(SentenceType::GGA);
  EXPECT_THAT(Column(gga, 2),
              ElementsAre("dN", "18.48", "9.24", "13.06", "18.48", "0.00", ">10", ">10", "2", "0"));
  EXPECT_THAT(Column(gga, 6),
              ElementsAre("Svs", "10.00", "9.00", "1.41", "10.00", "8.00", ">10", ">10", "2", "0"));
  EXPECT_THAT(Column(gga, 8), ElementsAre("Geoid", "40.00", "40.00", "0.00", "40.00", "40.00",
                                          "       n/a", "       n/a", "2", "0"));
  EXPECT_THAT(Column(gga, 9),
              ElementsAre("Age", "2.50", "2.50", "0.00", "2.50", "2.50", "2.50", "2.50", "1", "1"));

  // GNS: the column of the mode has no figures, and the others stand by their meaning.
  test.Feed("GNGNS,120002,6000.0000,N,00500.0000,E,AA,09,1.5,12.0,41.0,3.5,");
  const Grid& gns = window.GridOf(SentenceType::GNS);
  EXPECT_EQ(Column(gns, 5), (std::vector<std::string>{"Mode", "", "", "", "", "", "", "", "", ""}));
  EXPECT_EQ(Column(gns, 6)[1], "9.00");
  EXPECT_EQ(Column(gns, 7)[1], "1.50");
  EXPECT_EQ(Column(gns, 8)[1], "41.00");
  EXPECT_EQ(Column(gns, 8)[6], "       n/a");
  EXPECT_EQ(Column(gns, 9)[1], "3.50");

  // The course has percentiles in RMC and none in VTG.
  test.Feed("GPRMC,120003,A,6000.0,N,00500.0,E,5.0,9.5,020126,,,A");
  test.Feed("GPVTG,9.5,T,,M,5.0,N,,K");
  EXPECT_EQ(Column(window.GridOf(SentenceType::RMC), 5)[6], "9.50");
  EXPECT_EQ(Column(window.GridOf(SentenceType::VTG), 2)[6], "       n/a");
  EXPECT_EQ(Column(window.GridOf(SentenceType::VTG), 1)[7], "5.00");

  test.Feed("GPGSV,1,1,02,05,40,083,46,31,17,308,");
  EXPECT_THAT(Column(window.GridOf(SentenceType::GSV), 1),
              ElementsAre("svs in view", "02", "2.0", "0.0", "02", "02", "01", "01", "1", "0"));
  EXPECT_THAT(Column(window.fgGSV_GPS, 5),
              ElementsAre("05", "46", "46.0", "0.0", "46", "46", "45", "45", "1", "0"));
  EXPECT_THAT(Column(window.fgGSV_GPS, 31),
              ElementsAre("31", "00", "0.0", "0.0", "00", "00", "00", "00", "0", "1"));
  EXPECT_EQ(Column(window.fgGSV_GPS, 0)[6], "68%  >");
}

TEST_F(StatisticsWindow, ShowsOnlyTheSentencesThatAreAnalysed) {
  test.Analyse({"GGA", "HDT"});
  window.Show();
  const std::string written = Written();
  EXPECT_THAT(written, HasSubstr("grid\tfgGGA\t10\t10\n\tdRad\tdN\t"));
  EXPECT_THAT(written, HasSubstr("grid\tfgHDT\t10\t2\n"));
  EXPECT_THAT(written, Not(HasSubstr("fgGNS")));
  EXPECT_THAT(written, Not(HasSubstr("fgGSV")));
}

TEST_F(StatisticsWindow, ShowsTheReferenceInForce) {
  test.Analyse({"GGA", "ATT"});
  ReferenceSetup& reference = test.records.References[1];

  window.Show();
  EXPECT_THAT(Written(), HasSubstr("label\tlblRefLat\tn/a\n"));
  test.Feed("GPGGA,120000,6000.0000,S,00530.0000,W,1,08,1.0,10.0,M,40.0,M,,");
  test.Feed("PFEC,GPatt,005.5,1.0,-2.0");
  std::string written = Written();
  EXPECT_THAT(written, HasSubstr("lblRefPosOption\tRef is : First sample\n"));
  EXPECT_THAT(written, HasSubstr("lblRefLat\t60° 00.0000' S\n"));
  EXPECT_THAT(written, HasSubstr("lblRefLon\t005° 30.0000' W\n"));
  EXPECT_THAT(written, HasSubstr("lblRefHgt\t10.000\n"));
  EXPECT_THAT(written, HasSubstr("lblRefHdg\t005.50\n"));
  EXPECT_THAT(written, HasSubstr("lblRefRoll\t-2.00\n"));
  EXPECT_THAT(written, HasSubstr("lblStartTime\t12:00:00 02 Jan 2026\n"));

  reference.ReferenceUsed = kAverageOverTime;
  test.program.session.ResetAll();
  test.records.ReloadWindows = true;
  test.program.session.ResetAll();
  test.Feed("GPGGA,120001,6000.0000,N,00500.0000,E,1,08,1.0,12.0,M,40.0,M,,");
  written = Written();
  EXPECT_THAT(written, HasSubstr("lblRefLat\tequal to average\n"));
  EXPECT_THAT(written, HasSubstr("lblRefPitch\t= avg\n"));
  EXPECT_THAT(written, HasSubstr("lblAvgHgt\t12.000\n"));
  EXPECT_THAT(written, HasSubstr("lblAvgPosCount\t1\n"));

  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceHeading = 7.25F;
  test.program.session.ResetAll();
  written = Written();
  EXPECT_THAT(written, HasSubstr("lblRefPosOption\tRef is : True position\n"));
  EXPECT_THAT(written, HasSubstr("lblRefHdgOption\tRef is : True value\n"));
  EXPECT_THAT(written, HasSubstr("lblRefHdg\t007.25\n"));
}

TEST_F(StatisticsWindow, OpenedBehindAReplayShowsItsResultsButForGST) {
  test.Analyse({"VTG", "GST"});
  test.records.Mode = kOffline;
  test.Feed("GPVTG,9.5,T,,M,5.0,N,,K");
  test.Feed("GPGST,120000,1.5,2.5,3.5,45.6,1,2,3");
  window.Show();
  EXPECT_EQ(Column(window.GridOf(SentenceType::VTG), 1)[1], "5.00");
  EXPECT_EQ(Column(window.GridOf(SentenceType::GST), 1)[1], "");
  test.Feed("GPGST,120001,1.5,2.5,3.5,45.6,1,2,3");
  EXPECT_EQ(Column(window.GridOf(SentenceType::GST), 1)[8], "2");
  EXPECT_EQ(Column(window.GridOf(SentenceType::GST), 4)[1], "46.00");
  EXPECT_EQ(Column(window.GridOf(SentenceType::GST), 4)[6], "       n/a");

  window.Close();
  EXPECT_FALSE(test.records.SystemSetups[1][WindowFlag::Statistics]);
  test.Feed("GPVTG,9.5,T,,M,7.0,N,,K");
  EXPECT_EQ(test.program.statistics[1].Of(SentenceType::VTG)[0].Stat.Count, 2)
      << "closing stops the screen work alone";
}

TEST_F(StatisticsWindow, StandsPositionsOfNonsense) {
  test.Analyse({"GGA"});
  window.Show();
  test.Feed("GPGGA,120000,001E100,N,00500.0,E,1,08,1.0,10.0,M,40.0,M,,");
  ExpectFault(FaultNumber::Overflow,
              [&] { test.Feed("GPGGA,120001,6000.0,N,00500.0,E,1,08,1.0,12.0,M,40.0,M,,"); });
  const std::string written = Written();
  EXPECT_THAT(written, HasSubstr("lblAvgPosCount\t2\n"));
  EXPECT_THAT(written, HasSubstr("lblAvgHgt\t11.000\n"));
  EXPECT_THAT(written, HasSubstr("lblSdLat\tn/a\n")) << "its spread fits no metres";
}

}  // namespace
}  // namespace fathomline
