#include <gmock/gmock.h>

#include "support/test_program.h"

namespace fathomline {
namespace {

struct Numerics : ::testing::Test, TestProgram {
  std::string Heading() {
    window.Refresh();
    return window.GridOf(SentenceType::HDT).Text(1, 1);
  }
  frmNumerics& window = *program.windows.numerics[1];
};

TEST_F(Numerics, ShowsTheFramesOfTheAnalysedSentencesEmptyAndOnlyWhileOpen) {
  Analyse({"HDT", "GSV"});
  window.Show();
  std::vector<std::string> shown;
  for (const Control* control : window.Controls()) {
    if (control->Kind() == ControlKind::Frame && control->Visible()) {
      shown.push_back(control->Text());
    }
  }
  EXPECT_THAT(shown, ::testing::ElementsAre("HDT Numerics", "GSV Numerics"));
  window.UserClose();
  Feed("HEHDT,10.5,T");
  window.Show();
  EXPECT_EQ(Heading(), "           n/a");
}

TEST_F(Numerics, ShowsWhatWasAnalysedWhenItLooksLate) {
  Analyse({"HDT"});
  window.Show();
  Feed("HEHDT,10.5,T");
  records.CommSetups[1].AnalyseHDT = false;
  Feed("HEHDT,99.5,T");
  EXPECT_EQ(Heading(), " 10.5");
}

}  // namespace
}  // namespace fathomline
