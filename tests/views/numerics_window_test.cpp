#include <gmock/gmock.h>

#include "decoding/angles.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;

struct Numerics : ::testing::Test {
  void Show(std::initializer_list<std::string_view> types) {
    test.Analyse(types);
    window.Show();
  }

  std::vector<std::string> Values(SentenceType type) {
    window.Refresh();
    const Grid& grid = window.GridOf(type);
    std::vector<std::string> values;
    for (int row = 1; row < grid.Rows(); ++row) values.push_back(grid.Text(row, 1));
    return values;
  }

  TestProgram test;
  frmNumerics& window = *test.program.numericsWindows[1];
};

TEST_F(Numerics, ShowsTheFramesOfTheAnalysedSentencesEmpty) {
  Show({"HDT", "GSV"});
  EXPECT_EQ(window.Caption(), "Numerics 1 - DGPS");
  std::vector<std::string> shown;
  for (const Control* control : window.Controls()) {
    if (control->Kind() == ControlKind::Frame && control->Visible()) {
      shown.push_back(control->Text());
    }
  }
  EXPECT_THAT(shown, ElementsAre("HDT Numerics", "GSV Numerics"));
  EXPECT_EQ(window.GridOf(SentenceType::HDT).Text(0, 1), "Current value");
  EXPECT_THAT(Values(SentenceType::HDT), ElementsAre("           n/a"));
}

TEST_F(Numerics, PositionSentences) {
  Show({"GGA", "GNS", "GLL", "RMC"});
  test.Feed("GPGGA,101112.13,5930.5000,N,01045.2500,W,2,08,0.9,12.34,M,40.5,M,3.5,0120");
  EXPECT_THAT(Values(SentenceType::GGA),
              ElementsAre("59° 30.5000' N", "010° 45.2500' W", " 52.84", " 40.5 M", " 12.34 M",
                          "2 - dGPS", " 8", " 0.9", " 3.5", " 120", "10:11:12.13"));
  test.Feed("GPGNS,101112,5930.5000,S,01045.2500,E,AAN,10,0.8,-1.5,,,");
  EXPECT_THAT(Values(SentenceType::GNS),
              ElementsAre("59° 30.5000' S", "010° 45.2500' E", "n/a", "n/a m", "-1.5 m", "AAN",
                          " 10", " 0.8", "n/a", "n/a", "10:11:12"));
  test.Feed("GPGLL,5930.5000,N,01045.2500,E,101112,V,N");
  EXPECT_THAT(Values(SentenceType::GLL),
              ElementsAre("59° 30.5000' N", "010° 45.2500' E", "V - Invalid", "10:11:12"));
  test.Feed("GPRMC,101112,D,5930.5000,N,01045.2500,E,7.25,181.5,020126,2.5,W");
  EXPECT_THAT(Values(SentenceType::RMC),
              ElementsAre("59° 30.5000' N", "010° 45.2500' E", " 7.25", " 181.5", " 2.5 W", "D",
                          "10:11:12", "020126"));
}

TEST_F(Numerics, QualitiesWithoutATextAndEmptyHeights) {
  Show({"GGA"});
  test.Feed("GPGGA,101112,5930.5000,N,01045.2500,W,9,08,0.9,12.5,M,,M,,");
  EXPECT_EQ(Values(SentenceType::GGA)[5], "9");
  EXPECT_EQ(Values(SentenceType::GGA)[2], "n/a");
  EXPECT_EQ(Values(SentenceType::GGA)[3], "n/a M");
  EXPECT_EQ(Values(SentenceType::GGA)[4], " 12.5 M");
  test.Feed("GPGGA,101112,5930.5000,N,01045.2500,W,,08,0.9,12.5,M,1.0,M,,");
  EXPECT_EQ(Values(SentenceType::GGA)[5], "n/a");
}

TEST_F(Numerics, TheOtherSentences) {
  Show({"VTG", "ZDA", "HDT", "ATT", "ROT", "VHW", "DBT", "GST"});
  test.Feed("GPVTG,10.5,T,,M,5.5,N,10.2,K");
  EXPECT_THAT(Values(SentenceType::VTG), ElementsAre(" 10.5", "n/a", " 5.5", " 10.2"));
  test.Feed("GPZDA,101112,02,,2026,-1,30");
  EXPECT_THAT(Values(SentenceType::ZDA), ElementsAre("02-n/a-2026", "101112", "-01:30"));
  test.Feed("PFEC,GPatt,123.4,-1.5,2");
  EXPECT_THAT(Values(SentenceType::ATT), ElementsAre(" 123.4", "-1.5", " 2"));
  test.Feed("HEROT,-3.5,V");
  EXPECT_THAT(Values(SentenceType::ROT), ElementsAre("-3.5", "V - Invalid"));
  test.Feed("VWVHW,90.5,T,88.5,M,5.1,N,9.4,K");
  EXPECT_THAT(Values(SentenceType::VHW), ElementsAre(" 5.1", " 9.4", " 90.5", " 88.5"));
  test.Feed("SDDBT,32.8,f,10,M,5.5,F");
  EXPECT_THAT(Values(SentenceType::DBT), ElementsAre(" 32.8", " 10", " 5.5"));
  test.Feed("GPGST,101112,1.5,2.5,3.5,45,0.5,0.6,");
  EXPECT_THAT(Values(SentenceType::GST),
              ElementsAre(" 1.5", " 2.5", " 3.5", " 45", " 0.5", " 0.6", "n/a"));
}

TEST_F(Numerics, ShowsWhatWasAnalysedWhenItLooksLate) {
  Show({"HDT"});
  test.Feed("HEHDT,10.5,T");
  test.records.CommSetups[1].AnalyseHDT = false;
  test.Feed("HEHDT,99.5,T");
  EXPECT_THAT(Values(SentenceType::HDT), ElementsAre(" 10.5"));
}

TEST_F(Numerics, ClosingClearsTheFlagAndStopsTheUpdates) {
  Show({"HDT"});
  EXPECT_TRUE(test.records.SystemSetups[1][WindowFlag::Numerics]);
  window.UserClose();
  EXPECT_FALSE(test.records.SystemSetups[1][WindowFlag::Numerics]);
  test.Feed("HEHDT,10.5,T");
  window.Show();
  EXPECT_THAT(Values(SentenceType::HDT), ElementsAre("           n/a"));
}

}  // namespace
}  // namespace fathomline
