#include <gmock/gmock.h>

#include "support/test_program.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Numerics : ::testing::Test {
  void Show(std::initializer_list<std::string_view> types) {
    test.Analyse(types);
    window.Show();
  }

  // What is shown of a sentence that has just come, from the head down.
  std::string Fed(std::string_view body, SentenceType type) {
    test.Feed(body);
    return Values(type);
  }
  std::string Values(SentenceType type) {
    window.Refresh();
    const Grid& grid = window.GridOf(type);
    std::string values;
    for (int row = 1; row < grid.Rows(); ++row) values += "|" + grid.Text(row, 1);
    return values;
  }

  TestProgram test;
  frmNumerics& window = *test.program.numericsWindows[1];
};

TEST_F(Numerics, ShowsTheFramesOfTheAnalysedSentencesEmptyAndOnlyWhileOpen) {
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
  EXPECT_EQ(Values(SentenceType::HDT), "|           n/a");

  EXPECT_TRUE(test.records.SystemSetups[1][WindowFlag::Numerics]);
  window.UserClose();
  EXPECT_FALSE(test.records.SystemSetups[1][WindowFlag::Numerics]);
  test.Feed("HEHDT,10.5,T");
  window.Show();
  EXPECT_EQ(Values(SentenceType::HDT), "|           n/a");
}

TEST_F(Numerics, PositionSentences) {
  Show({"GGA", "GNS", "GLL", "RMC"});
  EXPECT_EQ(Fed("GPGGA,101112.13,5930.5000,N,01045.2500,W,2,08,0.9,12.34,M,40.5,M,3.5,0120",
                SentenceType::GGA),
            "|59° 30.5000' N|010° 45.2500' W| 52.84| 40.5 M| 12.34 M|2 - dGPS| 8| 0.9| 3.5| 120"
            "|10:11:12.13");
  EXPECT_EQ(Fed("GPGNS,101112,5930.5000,S,01045.2500,E,AAN,10,0.8,-1.5,,,", SentenceType::GNS),
            "|59° 30.5000' S|010° 45.2500' E|n/a|n/a m|-1.5 m|AAN| 10| 0.8|n/a|n/a|10:11:12");
  EXPECT_EQ(Fed("GPGLL,5930.5000,N,01045.2500,E,101112,V,N", SentenceType::GLL),
            "|59° 30.5000' N|010° 45.2500' E|V - Invalid|10:11:12");
  EXPECT_EQ(
      Fed("GPRMC,101112,D,5930.5000,N,01045.2500,E,7.25,181.5,020126,2.5,W", SentenceType::RMC),
      "|59° 30.5000' N|010° 45.2500' E| 7.25| 181.5| 2.5 W|D|10:11:12|020126");
  // A quality without a text, and an empty one; an empty height.
  EXPECT_THAT(Fed("GPGGA,101112,,,,,9,08,0.9,12.5,M,,M,,", SentenceType::GGA),
              HasSubstr("|n/a|n/a M| 12.5 M|9| 8|"));
  EXPECT_THAT(Fed("GPGGA,101112,,,,,,08,0.9,12.5,M,1.0,M,,", SentenceType::GGA),
              HasSubstr("| 13.5| 1 M| 12.5 M|n/a| 8|"));
}

TEST_F(Numerics, TheOtherSentences) {
  Show({"VTG", "ZDA", "HDT", "ATT", "ROT", "VHW", "DBT", "GST"});
  struct Row {
    SentenceType type;
    const char* body;
    const char* values;
  };
  for (const Row& row :
       {Row{SentenceType::VTG, "GPVTG,10.5,T,,M,5.5,N,10.2,K", "| 10.5|n/a| 5.5| 10.2"},
        Row{SentenceType::ZDA, "GPZDA,101112,02,,2026,-1,30", "|02-n/a-2026|101112|-01:30"},
        Row{SentenceType::HDT, "HEHDT,10.5,T", "| 10.5"},
        Row{SentenceType::ATT, "PFEC,GPatt,123.4,-1.5,2", "| 123.4|-1.5| 2"},
        Row{SentenceType::ROT, "HEROT,-3.5,V", "|-3.5|V - Invalid"},
        Row{SentenceType::VHW, "VWVHW,90.5,T,88.5,M,5.1,N,9.4,K", "| 5.1| 9.4| 90.5| 88.5"},
        Row{SentenceType::DBT, "SDDBT,32.8,f,10,M,5.5,F", "| 32.8| 10| 5.5"},
        Row{SentenceType::GST, "GPGST,101112,1.5,2.5,3.5,45,0.5,0.6,",
            "| 1.5| 2.5| 3.5| 45| 0.5| 0.6|n/a"}}) {
    EXPECT_EQ(Fed(row.body, row.type), row.values);
  }
}

TEST_F(Numerics, ShowsWhatWasAnalysedWhenItLooksLate) {
  Show({"HDT"});
  test.Feed("HEHDT,10.5,T");
  test.records.CommSetups[1].AnalyseHDT = false;
  EXPECT_EQ(Fed("HEHDT,99.5,T", SentenceType::HDT), "| 10.5");
}

}  // namespace
}  // namespace fathomline
