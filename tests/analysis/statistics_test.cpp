#include "analysis/statistics.h"

#include "support/test_program.h"

namespace fathomline {
namespace {

TEST(StatisticsReset, ForgetsSentencesAndMeansButNotSingleSatellites) {
  TestProgram test;
  test.Analyse({"VTG", "HDT", "GSV"});
  test.Feed("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
  test.Feed("HEHDT,10.0,T");
  test.Feed("GPGSV,1,1,05,01,40,083,46");
  const SystemStatistics& statistics = test.program.engine.statistics[1];
  test.program.session.control.ResetAll();
  EXPECT_EQ((statistics.Of<VTGRecord, &VTGRecord::SOGKnots>().Stat.Count), 0);
  EXPECT_EQ(statistics.HeadingMean.Count, 0);
  EXPECT_EQ(statistics.SatellitesInView.Stat.Count, 0);
  EXPECT_EQ(statistics.Satellites[0][0].Stat.Count, 1);
}

}  // namespace
}  // namespace fathomline
