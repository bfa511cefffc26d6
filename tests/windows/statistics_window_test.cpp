#include "windows/statistics_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

struct StatisticsWindow : testing::Test, TestProgram {
  std::string Written() {
    std::ostringstream out;
    window.Write(out);
    return out.str();
  }
  frmStatistics& window = *program.windows.statistics[1];
};

TEST_F(StatisticsWindow, ShowsTheReferenceInForceBehindAReset) {
  Analyse({"GGA", "ATT"});
  ReferenceSetup& reference = records.References[1];
  window.Show();
  EXPECT_THAT(Written(), HasSubstr("label\tlblRefLat\tn/a\n"));
  Feed("GPGGA,120000,6000.0000,S,00530.0000,W,1,08,1.0,10.0,M,40.0,M,,");
  EXPECT_THAT(Written(), HasSubstr("lblRefLat\t60° 00.0000' S\n"));

  records.ReloadWindows = true;
  reference.ReferenceUsed = kAverageOverTime;
  program.session.control.ResetAll();
  Feed("GPGGA,120001,6000.0000,N,00500.0000,E,1,08,1.0,12.0,M,40.0,M,,");
  EXPECT_THAT(Written(), AllOf(HasSubstr("lblRefLat\tequal to average\n"),
                               HasSubstr("lblAvgHgt\t12.000\n"), HasSubstr("PosCount\t1\n")));

  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceHeading = 7.25F;
  program.session.control.ResetAll();
  EXPECT_THAT(Written(), HasSubstr("lblRefHdg\t007.25\n"));
}

TEST_F(StatisticsWindow, OpenedBehindAReplayShowsItsResultsButForGST) {
  Analyse({"VTG", "GST"});
  records.Mode = kOffline;
  Feed("GPVTG,9.5,T,,M,5.0,N,,K");
  Feed("GPGST,120000,1.5,2.5,3.5,45.6,1,2,3");
  window.Show();
  EXPECT_THAT(Written(), AllOf(HasSubstr("Current\t5.00\t9.50\n"), HasSubstr("Current\t\t\t")));
  window.Close();
  Feed("GPVTG,9.5,T,,M,7.0,N,,K");
  EXPECT_EQ((program.engine.statistics[1].Of<VTGRecord, &VTGRecord::SOGKnots>().Stat.Count), 2)
      << "closing stops the screen work alone";
}

TEST_F(StatisticsWindow, SatellitesBringTheFramesOfTheirConstellation) {
  frmStatisticsSNR& snr = *program.windows.statisticsSNR[1];
  const auto frames = [&snr] {
    snr.Refresh();
    std::vector<std::string> shown;
    for (const Control* control : snr.Controls()) {
      if (control->Kind() == ControlKind::Frame && control->Shown()) {
        shown.push_back(control->Name());
      }
    }
    return shown;
  };
  Analyse({"GSV"});
  Feed("GPGSV,1,1,01,33,10,100,41");
  snr.Show();
  EXPECT_THAT(frames(), ElementsAre("frameMain")) << "online it waits for the next sentence";
  // Before that, and in a group without any, a cell says so.
  const char* const last[] = {"32", "32/064", "32/96", "32/132", "32/182"};
  for (std::size_t g = 0; g < 5; ++g) {
    EXPECT_EQ(snr.GridOf(g).Text(0, 32), last[g]);
    EXPECT_EQ(snr.GridOf(g).Text(1, 1), "     n/a");
  }
  Feed("GPGSV,1,1,03,20,10,100,42,66,20,200,35,155,30,300,50");
  EXPECT_THAT(frames(), ElementsAre("frameMain", "frameGSV_GPS", "frameGSV_SBAS", "frameGSV_GLO"));
  EXPECT_EQ(snr.GridOf(4).Text(1, 5), "     n/a");
  snr.Close();
  records.Mode = kOffline;
  snr.Show();
  EXPECT_EQ(frames().size(), 4U) << "behind a replay it shows the results";
}

}  // namespace
}  // namespace fathomline
