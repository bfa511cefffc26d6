#include <gmock/gmock.h>

#include "support/test_program.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct SNRStatistics : ::testing::Test {
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
  window.Show();
  test.Feed("GPGSV,1,1,03,20,10,100,41,66,20,200,35,155,30,300,50");
  EXPECT_THAT(ShownFrames(), ElementsAre("frameGSV_GPS", "frameGSV_GLO"));
  EXPECT_EQ(window.GridOf(0).Text(1, 20), "41");
  EXPECT_EQ(window.GridOf(0).Text(8, 20), "1");
  EXPECT_EQ(window.GridOf(2).Text(1, 2), "35");
  EXPECT_EQ(window.GridOf(4).Text(1, 5), "     n/a");
}

TEST_F(SNRStatistics, AWindowOpenedBehindAReplayShowsItsResults) {
  test.Feed("GPGSV,1,1,01,33,10,100,41");
  window.Show();
  EXPECT_THAT(ShownFrames(), IsEmpty()) << "online it waits for the next sentence";
  window.Close();
  test.records.Mode = kOffline;
  window.Show();
  EXPECT_THAT(ShownFrames(), ElementsAre("frameGSV_SBAS"));
  EXPECT_EQ(window.GridOf(1).Text(2, 1), "41.0");
}

}  // namespace
}  // namespace fathomline
