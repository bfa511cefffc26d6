// Which sentences are taken into which figures: sentences in, counts and deviations out.
#include "analysis/statistics.h"

#include <gtest/gtest.h>
#include <string>

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

class AccumulateStatistics : public testing::Test {
 protected:
  const DeviationStat& Stat(SentenceType type, std::size_t quantity) {
    return test.program.statistics[1].Of(type)[quantity];
  }
  // How many values of each quantity have been accepted, and how many rejected.
  std::string Counts(SentenceType type) {
    std::string counts;
    for (const DeviationStat& stat : test.program.statistics[1].Of(type)) {
      if (!counts.empty()) counts += ' ';
      counts += std::to_string(stat.Stat.Count) + "-" + std::to_string(stat.RejectedCount);
    }
    return counts;
  }

  TestProgram test;
  const Deviations& present = test.program.statistics[1].Present;
};

TEST_F(AccumulateStatistics, OfAGGADependOnQualityAndOnEachField) {
  test.Analyse({"GGA"});
  test.Feed("GPGGA,120000,6000.000,N,00500.000,E,1,08,1.0,10.0,M,40.0,M,,");
  test.Feed("GPGGA,120001,6000.001,N,00500.000,E,1,08,,12.5,M,40.0,M,,");
  // 0.001' north: 6335439.327 / W(60 degrees) * 0.001' in radians.
  EXPECT_NEAR(present.dN, 1.8475, 0.0005);
  EXPECT_EQ(present.dE, 0.0F);
  EXPECT_EQ(present.dRad, present.dN);
  EXPECT_EQ(present.dHgt, 2.5F);
  // An empty HDOP, and never a differential age.
  EXPECT_EQ(Counts(SentenceType::GGA), "2-0 2-0 2-0 2-0 2-0 2-0 2-0 1-1 0-2");

  // No fix: the deviations are gone, nothing is counted or rejected.
  test.Feed("GPGGA,120002,6000.001,N,00500.000,E,0,00,,,M,,M,,");
  EXPECT_EQ(present.dRad, NoValue);
  EXPECT_EQ(present.dHgt, NoValue);
  EXPECT_EQ(Counts(SentenceType::GGA), "2-0 2-0 2-0 2-0 2-0 2-0 2-0 1-1 0-2");

  // A fix at exactly 0, 0 is an empty position; its height counts.
  test.Feed("GPGGA,120003,,,,,1,08,1.0,11.0,M,40.0,M,,");
  EXPECT_EQ(Counts(SentenceType::GGA), "2-1 2-1 2-1 3-0 3-0 3-0 3-0 2-1 0-3");

  // An empty quality is no zero for the deviations, and no fix for the figures.
  test.Feed("GPGGA,120004,6000.001,N,00500.000,E,,08,1.0,11.0,M,40.0,M,,");
  EXPECT_NE(present.dRad, NoValue);
  EXPECT_EQ(Counts(SentenceType::GGA), "2-1 2-1 2-1 3-0 3-0 3-0 3-0 2-1 0-3");
}

TEST_F(AccumulateStatistics, OfTheOtherPositionsDependOnModeAndStatus) {
  test.Analyse({"GNS", "GLL", "RMC"});
  test.Feed("GNGNS,120000,6000.000,N,00500.000,E,NN,00,,,,,");
  EXPECT_EQ(present.dRad, NoValue);
  EXPECT_EQ(Counts(SentenceType::GNS), "0-0 0-0 0-0 0-0 0-0 0-0 0-0 0-0");
  test.Feed("GNGNS,120001,6000.000,N,00500.000,E,AN,08,1.0,10.0,40.0,,");
  EXPECT_EQ(Counts(SentenceType::GNS), "1-0 1-0 1-0 1-0 1-0 1-0 1-0 0-1");

  test.Feed("GPGLL,6000.000,N,00500.000,E,120002,V,N");
  test.Feed("GPRMC,120003,V,6000.000,N,00500.000,E,5.0,90.0,020126,,,N");
  test.Feed("GPGLL,6000.000,N,00500.001,E,120004,A,A");
  test.Feed("GPRMC,120005,A,6000.000,N,00500.001,E,5.0,90.0,020126,,,A");
  EXPECT_EQ(Counts(SentenceType::GLL), "1-0 1-0 1-0");
  EXPECT_EQ(Counts(SentenceType::RMC), "1-0 1-0 1-0 1-0 1-0");
  EXPECT_EQ(Stat(SentenceType::RMC, 3).Stat.Current, 5.0F);
  EXPECT_EQ(Stat(SentenceType::RMC, 4).Stat.Current, 90.0F);
  EXPECT_EQ(Stat(SentenceType::RMC, 0).Stat.LastTime, "12:00:05");
}

TEST_F(AccumulateStatistics, OfAnglesAreWrappedAndLimitedAsTheirSentenceWants) {
  test.Analyse({"HDT", "ATT", "ROT"});
  ReferenceSetup& reference = test.records.References[1];
  reference.ReferenceUsed = kTruePosition;
  reference.ReferenceHeading = 1.0F;
  test.Feed("HEHDT,359.0,T");
  EXPECT_EQ(present.deltaHdg, -2.0F);
  reference.ReferenceHeading = 350.0F;
  test.Feed("HEHDT,10.0,T");
  EXPECT_EQ(present.deltaHdg, 20.0F) << "no limit applies to HDT";
  test.Feed("HEHDT,,T");
  EXPECT_EQ(present.deltaHdg, NoValue);
  EXPECT_EQ(Counts(SentenceType::HDT), "2-1");

  reference.ReferenceHeading = 1.0F;
  test.Feed("PFEC,GPatt,359.0,200.0,-16.0");
  EXPECT_EQ(present.deltaHdg, -2.0F);
  EXPECT_EQ(present.deltaPitch, NoValue) << "200 is not wrapped, and beyond the limit of 15";
  EXPECT_EQ(present.deltaRoll, NoValue);
  test.Feed("PFEC,GPatt,359.0,15.0,-15.0");
  EXPECT_EQ(Counts(SentenceType::ATT), "2-0 1-1 1-1");

  test.Feed("HEROT,5.0,V");
  test.Feed("HEROT,-5.0,A");
  EXPECT_EQ(Counts(SentenceType::ROT), "1-0");
}

TEST_F(AccumulateStatistics, OfSatellitesAreFiledByPRN) {
  test.Analyse({"GSV"});
  const SystemStatistics& statistics = test.program.statistics[1];
  test.Feed("GPGSV,2,1,05,01,40,083,46,33,17,308,41,66,07,344,39,101,22,228,45");
  EXPECT_EQ(statistics.SatellitesInView.Stat.Count, 0) << "not the last of its group";
  test.Feed("GPGSV,2,2,05,149,10,010,30,155,10,010,30,99,10,010,31,63,10,010,32");
  EXPECT_EQ(statistics.SatellitesInView.Stat.Current, 5.0F);
  struct Filed {
    std::size_t group;
    std::size_t index;
    float snr;
  };
  for (const Filed& row : {Filed{0, 0, 46}, Filed{1, 0, 41}, Filed{2, 1, 39}, Filed{3, 0, 45},
                           Filed{3, 48, 30}, Filed{2, 34, 31}, Filed{1, 30, 32}}) {
    EXPECT_EQ(statistics.Satellites[row.group][row.index].Stat.Current, row.snr)
        << row.group << " " << row.index;
  }
  test.Feed("GPGSV,1,1,01,01,40,083,");
  EXPECT_EQ(statistics.Satellites[0][0].RejectedCount, 1) << "an empty SNR";

  // The slots in front of the bad one have been taken, those behind it have not.
  for (const char* prn : {"64", "100"}) {
    ExpectFault(FaultNumber::OutOfRange, [&] {
      test.Feed(std::string("GPGSV,2,1,03,02,40,083,46,") + prn + ",17,308,41,03,07,344,39");
    });
  }
  EXPECT_EQ(statistics.Satellites[0][1].Stat.Count, 2);
  EXPECT_EQ(statistics.Satellites[0][2].Stat.Count, 0);

  test.program.session.ResetAll();
  EXPECT_EQ(statistics.SatellitesInView.Stat.Count, 0);
  EXPECT_EQ(statistics.Satellites[0][1].Stat.Count, 2) << "single satellites run on";
}

TEST_F(AccumulateStatistics, AResetForgetsSentencesAndMeans) {
  test.Analyse({"VTG", "HDT"});
  test.Feed("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
  test.Feed("HEHDT,10.0,T");
  EXPECT_EQ(Counts(SentenceType::VTG), "1-0 1-0");
  test.program.session.ResetAll();
  EXPECT_EQ(Counts(SentenceType::VTG), "0-0 0-0");
  EXPECT_EQ(test.program.statistics[1].HeadingMean.Count, 0);
}

}  // namespace
}  // namespace fathomline
