#include "base/format.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>

namespace fathomline {
namespace {

// Each value through the picture.
std::string Shown(std::string_view picture, std::initializer_list<double> values) {
  std::string texts;
  for (const double value : values) texts += (texts.empty() ? "" : " ") + Format(value, picture);
  return texts;
}

TEST(Format, RoundsHalfAwayOnTheExactBinaryValue) {
  EXPECT_EQ(Shown("0", {0.5, 2.5, -2.5, 99.5}), "1 3 -3 100");
  EXPECT_EQ(Shown("0.00", {0.125, -0.125, 0.375}), "0.13 -0.13 0.38");
  // Just below the half in binary, and just above it.
  EXPECT_EQ(Shown("0.00", {2.675, 1.005}), "2.67 1.00");
  EXPECT_EQ(Shown("0.0", {0.05, 0.15, 0.15F}), "0.1 0.1 0.2");
  // A negative that rounds to zero keeps its minus.
  EXPECT_EQ(Shown("00.0", {-0.001, -0.0}), "-00.0 00.0");
}

TEST(Format, ShowsZerosAlwaysAndHashesWhereSignificant) {
  EXPECT_EQ(Shown("000", {5.0, 12345.0}), "005 12345");
  EXPECT_EQ(Format(0.25, "#0.00 m"), "0.25 m");
  EXPECT_EQ(Shown("0.0##", {0.5, 0.5625}), "0.5 0.563");
  EXPECT_EQ(Format(7.0, "00:"), "07:");
  EXPECT_EQ(Shown("0.0%", {0.5, 1.0, -0.0625}), "50.0% 100.0% -6.3%");
}

TEST(Format, HoldsAtTheEndsOfTheRange) {
  EXPECT_EQ(Shown("0.0", {1e22, 5e-324}), "10000000000000000000000.0 0.0");
  EXPECT_EQ(Format(std::numeric_limits<double>::max(), "0").size(), 309U);
  EXPECT_EQ(Format(1e308, "0.0 %"), "inf");
}

}  // namespace
}  // namespace fathomline
