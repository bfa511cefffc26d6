#include "windows/statistics_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class StatisticsWindow : public testing::Test {
 protected:
  // The cells from the head down.
  std::string Column(const Grid& grid, int column) {
    window.Refresh();
    std::string texts = grid.Text(0, column);
    for (int row = 1; row < grid.Rows(); ++row) texts += "|" + grid.Text(row, column);
    return texts;
  }
  std::string Column(SentenceType type, int column) { return Column(window.GridOf(type), column); }
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
  EXPECT_THAT(Written(), AllOf(HasSubstr("grid\tfgGGA\t10\t10\n\tdRad\tdN\t"),
                               HasSubstr("grid\tfgGSV_GPS\t10\t33\n"), Not(HasSubstr("fgHDT"))));
  EXPECT_EQ(Column(SentenceType::GGA, 0),
            "|Current|MEAN|Sdev|Max|Min|68%  <|95%  <|Count|Rejected");

  test.Feed("GPGGA,120000,6000.0000,N,00500.0000,E,1,08,1.0,10.0,M,40.0,M,2.5,0");
  test.Feed("GPGGA,120001,6000.0100,N,00500.0000,E,1,10,,10.0,M,40.0,M,,");
  EXPECT_EQ(Column(SentenceType::GGA, 2), "dN|18.48|9.24|13.06|18.48|0.00|>10|>10|2|0");
  EXPECT_EQ(Column(SentenceType::GGA, 6), "Svs|10.00|9.00|1.41|10.00|8.00|>10|>10|2|0");
  EXPECT_EQ(Column(SentenceType::GGA, 8),
            "Geoid|40.00|40.00|0.00|40.00|40.00|       n/a|       n/a|2|0");
  EXPECT_EQ(Column(SentenceType::GGA, 9), "Age|2.50|2.50|0.00|2.50|2.50|2.50|2.50|1|1");

  // The column of the mode has no figures, and the others stand by their meaning.
  test.Feed("GNGNS,120002,6000.0000,N,00500.0000,E,AA,09,1.5,12.0,41.0,3.5,");
  EXPECT_EQ(Column(SentenceType::GNS, 5), "Mode|||||||||");
  EXPECT_THAT(Column(SentenceType::GNS, 6), StartsWith("Svs|9.00|"));
  EXPECT_THAT(Column(SentenceType::GNS, 7), StartsWith("hdop|1.50|"));
  EXPECT_EQ(Column(SentenceType::GNS, 8),
            "Geoid|41.00|41.00|0.00|41.00|41.00|       n/a|       n/a|1|0");
  EXPECT_THAT(Column(SentenceType::GNS, 9), StartsWith("Age|3.50|"));

  // The course has percentiles in RMC and none in VTG.
  test.Feed("GPRMC,120003,A,6000.0,N,00500.0,E,5.0,9.5,020126,,,A");
  test.Feed("GPVTG,9.5,T,,M,5.0,N,,K");
  EXPECT_THAT(Column(SentenceType::RMC, 5), EndsWith("|9.50|9.50|1|0"));
  EXPECT_THAT(Column(SentenceType::VTG, 2), EndsWith("|9.50|       n/a|       n/a|1|0"));
  EXPECT_THAT(Column(SentenceType::VTG, 1), EndsWith("|5.00|5.00|1|0"));

  test.Feed("GPGSV,1,1,02,05,40,083,46,31,17,308,");
  EXPECT_EQ(Column(SentenceType::GSV, 1), "svs in view|02|2.0|0.0|02|02|01|01|1|0");
  EXPECT_EQ(Column(window.fgGSV_GPS, 5), "05|46|46.0|0.0|46|46|45|45|1|0");
  EXPECT_EQ(Column(window.fgGSV_GPS, 31), "31|00|0.0|0.0|00|00|00|00|0|1");
  EXPECT_THAT(Column(window.fgGSV_GPS, 0), HasSubstr("|68%  >|95%  >|"));
}

TEST_F(StatisticsWindow, ShowsTheReferenceInForce) {
  test.Analyse({"GGA", "ATT"});
  ReferenceSetup& reference = test.records.References[1];

  window.Show();
  EXPECT_THAT(Written(), HasSubstr("label\tlblRefLat\tn/a\n"));
  test.Feed("GPGGA,120000,6000.0000,S,00530.0000,W,1,08,1.0,10.0,M,40.0,M,,");
  test.Feed("PFEC,GPatt,005.5,1.0,-2.0");
  for (const char* const label :
       {"lblRefPosOption\tRef is : First sample\n", "lblRefLat\t60° 00.0000' S\n",
        "lblRefLon\t005° 30.0000' W\n", "lblRefHgt\t10.000\n", "lblRefHdg\t005.50\n",
        "lblRefRoll\t-2.00\n", "lblStartTime\t12:00:00 02 Jan 2026\n"}) {
    EXPECT_THAT(Written(), HasSubstr(label));
  }

  test.records.ReloadWindows = true;
  reference.ReferenceUsed = kAverageOverTime;
  test.program.session.ResetAll();
  test.Feed("GPGGA,120001,6000.0000,N,00500.0000,E,1,08,1.0,12.0,M,40.0,M,,");
  EXPECT_THAT(Written(),
              AllOf(HasSubstr("lblRefLat\tequal to average\n"), HasSubstr("lblRefPitch\t= avg\n"),
                    HasSubstr("lblAvgHgt\t12.000\n"), HasSubstr("lblAvgPosCount\t1\n")));

  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceHeading = 7.25F;
  test.program.session.ResetAll();
  EXPECT_THAT(Written(), AllOf(HasSubstr("lblRefPosOption\tRef is : True position\n"),
                               HasSubstr("lblRefHdgOption\tRef is : True value\n"),
                               HasSubstr("lblRefHdg\t007.25\n")));
}

TEST_F(StatisticsWindow, OpenedBehindAReplayShowsItsResultsButForGST) {
  test.Analyse({"VTG", "GST"});
  test.records.Mode = kOffline;
  test.Feed("GPVTG,9.5,T,,M,5.0,N,,K");
  test.Feed("GPGST,120000,1.5,2.5,3.5,45.6,1,2,3");
  window.Show();
  EXPECT_THAT(Column(SentenceType::VTG, 1), StartsWith("SOG (Knots)|5.00|"));
  EXPECT_EQ(Column(SentenceType::GST, 1), "RMS PseudoR|||||||||");
  test.Feed("GPGST,120001,1.5,2.5,3.5,45.6,1,2,3");
  EXPECT_EQ(Column(SentenceType::GST, 4),
            "Dir MajorAxis|46.00|46.00|0.00|46.00|46.00|       n/a|       n/a|2|0");

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
  // Its spread fits no metres.
  EXPECT_THAT(Written(), AllOf(HasSubstr("lblAvgPosCount\t2\n"), HasSubstr("lblAvgHgt\t11.000\n"),
                               HasSubstr("lblSdLat\tn/a\n")));
}

struct SNRStatistics : testing::Test {
  SNRStatistics() { test.Analyse({"GSV"}); }

  std::vector<std::string> ShownFrames() {
    window.Refresh();
    std::vector<std::string> shown;
    for (const Control* control : window.Controls()) {
      if (control->Kind() == ControlKind::Frame && control->Shown() &&
          control->Name() != "frameMain") {
        shown.push_back(control->Name());
      }
    }
    return shown;
  }

  TestProgram test;
  frmStatisticsSNR& window = *test.program.statisticsSNRWindows[1];
};

TEST_F(SNRStatistics, HeadsNameColumnsAndSatellites) {
  window.Show();
  EXPECT_EQ(window.Caption(), "Statistics SNR 1 - DGPS");
  EXPECT_THAT(ShownFrames(), IsEmpty());
  const char* const last[] = {"32", "32/064", "32/96", "32/132", "32/182"};
  for (std::size_t g = 0; g < 5; ++g) {
    EXPECT_EQ(window.GridOf(g).Text(0, 32), last[g]);
    EXPECT_EQ(window.GridOf(g).Text(0, 0), g == 0 ? "PRN" : "id / PRN");
    EXPECT_EQ(window.GridOf(g).Text(1, 1), "     n/a");
    EXPECT_EQ(window.GridOf(g).Text(6, 0), "68%  >");
  }
}

TEST_F(SNRStatistics, SatellitesBringTheFramesOfTheirConstellation) {
  test.Feed("GPGSV,1,1,01,33,10,100,41");
  window.Show();
  EXPECT_THAT(ShownFrames(), IsEmpty()) << "online it waits for the next sentence";
  test.Feed("GPGSV,1,1,03,20,10,100,42,66,20,200,35,155,30,300,50");
  EXPECT_THAT(ShownFrames(), ElementsAre("frameGSV_GPS", "frameGSV_SBAS", "frameGSV_GLO"));
  EXPECT_EQ(window.GridOf(0).Text(1, 20), "42");
  EXPECT_EQ(window.GridOf(1).Text(2, 1), "41.0");
  EXPECT_EQ(window.GridOf(2).Text(1, 2), "35");
  EXPECT_EQ(window.GridOf(4).Text(1, 5), "     n/a");
  window.Close();
  test.records.Mode = kOffline;
  window.Show();
  EXPECT_EQ(ShownFrames().size(), 3U) << "behind a replay it shows the results";
}

}  // namespace
}  // namespace fathomline
