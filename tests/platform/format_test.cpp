#include "platform/format.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace fathomline {
namespace {

TEST(Format, RoundsHalfAwayOnTheExactBinaryValue) {
  EXPECT_EQ(Format(0.125, "0.00"), "0.13");
  EXPECT_EQ(Format(-0.125, "0.00"), "-0.13");
  EXPECT_EQ(Format(0.375, "0.00"), "0.38");
  // Just below the half in binary, and just above it.
  EXPECT_EQ(Format(2.675, "0.00"), "2.67");
  EXPECT_EQ(Format(1.005, "0.00"), "1.00");
  EXPECT_EQ(Format(0.05, "0.0"), "0.1");
  EXPECT_EQ(Format(0.15, "0.0"), "0.1");
  EXPECT_EQ(Format(0.15F, "0.0"), "0.2");
  EXPECT_EQ(Format(0.5, "0"), "1");
  EXPECT_EQ(Format(2.5, "0"), "3");
  EXPECT_EQ(Format(-2.5, "0"), "-3");
  EXPECT_EQ(Format(99.5, "0"), "100");
  EXPECT_EQ(Format(9.9999, "0.000"), "10.000");
}

TEST(Format, ShowsZerosAlwaysAndHashesWhereSignificant) {
  EXPECT_EQ(Format(5.0, "000"), "005");
  EXPECT_EQ(Format(12345.0, "00"), "12345");
  EXPECT_EQ(Format(0.25, "#0.00 m"), "0.25 m");
  EXPECT_EQ(Format(0.25, "#.##"), ".25");
  EXPECT_EQ(Format(0.5, "0.0##"), "0.5");
  EXPECT_EQ(Format(0.5625, "0.0##"), "0.563");
  EXPECT_EQ(Format(1234.5, "##0.0"), "1234.5");
  EXPECT_EQ(Format(7.0, "00:"), "07:");
}

TEST(Format, PercentMultiplies) {
  EXPECT_EQ(Format(0.5, "##0.0 %"), "50.0 %");
  EXPECT_EQ(Format(1.0, "0%"), "100%");
  EXPECT_EQ(Format(-0.0625, "0.0%"), "-6.3%");
}

TEST(Format, ANegativeThatRoundsToZeroKeepsItsMinus) {
  EXPECT_EQ(Format(-0.001, "0.00"), "-0.00");
  EXPECT_EQ(Format(-0.001, "00.0"), "-00.0");
  EXPECT_EQ(Format(-0.0, "0.00"), "0.00");
}

TEST(Format, HoldsAtTheEndsOfTheRange) {
  EXPECT_EQ(Format(1e22, "0.0"), "10000000000000000000000.0");
  EXPECT_EQ(Format(std::numeric_limits<double>::max(), "0").size(), 309U);
  EXPECT_EQ(Format(5e-324, "0.000"), "0.000");
  EXPECT_EQ(Format(std::numeric_limits<double>::infinity(), "0.000000"), "inf");
  EXPECT_EQ(Format(1e308, "0.0 %"), "inf");
}

}  // namespace
}  // namespace fathomline
