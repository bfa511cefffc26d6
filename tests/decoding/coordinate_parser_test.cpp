#include "decoding/coordinate_parser.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "base/files.h"
#include "base/numbers.h"
#include "support/places.h"
#include "support/recording_dialogs.h"

namespace fathomline {
namespace {

// Each row of the reviewed file.
TEST(CoordinateParsers, TakeWhatIsTypedRepairItAndTell) {
  LineReader reviewed(kSourceFolder + "/tests/decoding/typed_angles.txt");
  while (!reviewed.AtEnd()) {
    const std::string row(reviewed.Next());
    if (row.empty() || row.front() == '#') continue;
    SCOPED_TRACE(row);
    std::array<std::string, 6> cells;
    std::istringstream all(row);
    for (std::string& cell : cells) std::getline(all, cell, '|');
    auto& [parser, type, text, value, normal, told] = cells;
    std::istringstream units(value);
    double expected = 0.0;
    double perDegree = 1.0;
    for (std::string unit; std::getline(units, unit, ' '); perDegree *= 60.0) {
      expected += std::abs(ReadNumber(unit)) / perDegree;
    }
    if (value.front() == '-') expected = -expected;

    RecordingDialogs dialogs;
    EXPECT_DOUBLE_EQ(parser == "DMS" ? ParseCoordinateDMS(text, type, dialogs)
                                     : ParseCoordinateDM(text, type, 2, dialogs),
                     expected);
    EXPECT_EQ(text, normal);
    std::string messages;
    for (const MessageBox& box : dialogs.boxes) {
      messages += box.text;
      EXPECT_EQ(box.title, parser == "DMS" ? kProgramTitle : "Illegal input");
      EXPECT_EQ(box.icon, parser == "DMS" ? BoxIcon::None : BoxIcon::Exclamation);
    }
    EXPECT_EQ(messages, told);
  }
}

}  // namespace
}  // namespace fathomline
