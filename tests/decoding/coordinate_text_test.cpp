#include "decoding/coordinate_text.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace fathomline {
namespace {

TEST(FormatCoordinateDM, WritesDegreesMinutesAndSide) {
  EXPECT_EQ(FormatCoordinateDM(59.5, "LAT", "FORM", 4), "59° 30.0000' N");
  EXPECT_EQ(FormatCoordinateDM(-59.5, "lat", "FORM", 1), "59° 30.0' S");
  EXPECT_EQ(FormatCoordinateDM(-0.5, "LON", "FORM", 4), "000° 30.0000' W");
  EXPECT_EQ(FormatCoordinateDM(0.0, "LON", "FORM", 0), "000° 00' E");
  EXPECT_EQ(FormatCoordinateDM(-7.25, "BRG", "File", 2), "007\u00F8 15.00'");
  EXPECT_EQ(FormatCoordinateDM(10.5, "LAT", "FORM", 5), "10° 30.00000' N");
  for (const int decimals : {6, 9, -1, 32767, -32768}) {
    EXPECT_EQ(FormatCoordinateDM(10.5, "LAT", "FORM", decimals), "10° 30.000000' N") << decimals;
  }
}

TEST(FormatCoordinateDMS, WritesDegreesMinutesSecondsAndSide) {
  // 30' 12.25" are 1812.25 of 3600 parts of a degree.
  const double latitude = 59.0 + 1812.25 / 3600.0;
  EXPECT_EQ(FormatCoordinateDMS(latitude, "LAT", "FORM", 2), "59° 30' 12.25\" N");
  EXPECT_EQ(FormatCoordinateDMS(-latitude, "LON", "FILE", 0), "059\u00F8 30' 12\" W");
  EXPECT_EQ(FormatCoordinateDMS(latitude, "LAT", "FORM", 9), "59° 30' 12.2500\" N");
  EXPECT_EQ(FormatCoordinateDMS(latitude, "LAT", "FORM", -1), "59° 30' 12.2500\" N");
  EXPECT_EQ(FormatCoordinateDMS(-5.5, "BRG", "FORM", 0), "-005° 30' 00\"");
  EXPECT_EQ(FormatCoordinateCompact(-latitude, "LAT", "FORM", 3), "59°30'12.250\"S");
  EXPECT_EQ(FormatCoordinateCompact(0.0, "LON", "FORM", 3), "000°00'00.000\"E");
  EXPECT_EQ(FormatCoordinateCompact(-latitude, "LON", "file", 0), "059\u00F830'12\"W");
}

TEST(FormatCoordinate, FollowsTheChoice) {
  EXPECT_EQ(FormatCoordinate(false, 2, 59.5, "LAT"), "59° 30.00' N");
  EXPECT_EQ(FormatCoordinate(true, 2, 59.5, "LAT"), "59° 30' 00.00\" N");
}

// A last unit either side of the half unit below 60, at each count of decimals.
TEST(FormatCoordinate, NeverShowsSixty) {
  const std::string nines = "999999";
  for (int decimals = 0; decimals <= 6; ++decimals) {
    const auto digits = static_cast<std::size_t>(decimals);
    const double half = 0.5 * std::pow(10.0, -decimals);
    const double above = 60.0 - half * 0.9;
    const double below = 60.0 - half * 1.1;
    const std::string point = decimals > 0 ? "." : "";
    const std::string zeros = "00" + point + std::string(digits, '0');
    const std::string most = "59" + point + nines.substr(0, digits);

    EXPECT_EQ(FormatCoordinateDM(59.0 + above / 60.0, "LAT", "FORM", decimals),
              "60° " + zeros + "' N");
    EXPECT_EQ(FormatCoordinateDM(59.0 + below / 60.0, "LAT", "FORM", decimals),
              "59° " + most + "' N");
    if (decimals > 4) continue;
    EXPECT_EQ(FormatCoordinateDMS(12.0 + 59.0 / 60.0 + above / 3600.0, "LON", "FORM", decimals),
              "013° 00' " + zeros + "\" E");
    EXPECT_EQ(FormatCoordinateDMS(12.0 + 7.0 / 60.0 + above / 3600.0, "LON", "FORM", decimals),
              "012° 08' " + zeros + "\" E");
    EXPECT_EQ(FormatCoordinateCompact(12.0 + 59.0 / 60.0 + below / 3600.0, "LON", "FORM", decimals),
              "012°59'" + most + "\"E");
  }
}

// The fraction is so near to 1 that it gives 60 whole minutes by itself.
TEST(FormatCoordinate, CarriesTheLastBitOfADegree) {
  const double almostOne = std::nextafter(1.0, 0.0);
  EXPECT_EQ(FormatCoordinateDMS(almostOne, "LAT", "FORM", 4), "01° 00' 00.0000\" N");
  EXPECT_EQ(FormatCoordinateDM(almostOne, "LAT", "FORM", 6), "01° 00.000000' N");
}

TEST(FormatRightAligned, FillsUpToTheWidthOfThePicture) {
  EXPECT_EQ(FormatRightAligned(1.5, "##0.00"), "  1.50");
  EXPECT_EQ(FormatRightAligned(-1.5, "##0.00"), " -1.50");
  EXPECT_EQ(FormatRightAligned(12345.0, "##0.00"), "12345.00");
  EXPECT_EQ(FormatRightAligned(0.5, "##0.0 %"), " 50.0 %");
}

TEST(FormatSecondsOfDay, RoundsBeforeItSplits) {
  EXPECT_EQ(FormatSecondsOfDay(0.0, 0), "00:00:00");
  EXPECT_EQ(FormatSecondsOfDay(3540.25, 2), "00:59:00.25");
  EXPECT_EQ(FormatSecondsOfDay(3660.0, 0), "01:01:00");
  EXPECT_EQ(FormatSecondsOfDay(59.96875, 1), "00:01:00.0");
  EXPECT_EQ(FormatSecondsOfDay(86399.99996, 4), "24:00:00.0000");
  EXPECT_EQ(FormatSecondsOfDay(59.96875, 4), "00:00:59.9688");
  EXPECT_EQ(FormatSecondsOfDay(45000.5, 5), "12:30:01");
  for (int second = 0; second < 86400; ++second) {
    const std::string text = FormatSecondsOfDay(second, 0);
    ASSERT_EQ(text.find("60"), std::string::npos) << second << " shows " << text;
  }
}

TEST(ValueText, ShowsNoValueOfEveryWidth) {
  EXPECT_EQ(ValueText(std::int32_t{-9999}), "n/a");
  EXPECT_EQ(ValueText(-9999.0F), "n/a");
  EXPECT_EQ(ValueText(-9999.5), "-9999.5");
  EXPECT_EQ(ValueText(0.1F), " 0.1");
  EXPECT_EQ(FormattedValueText(-9999.0F, "0.0"), "n/a");
  EXPECT_EQ(FormattedValueText(std::int16_t{7}, "0.0"), "7.0");
}

TEST(NumberFromText, TakesADecimalComma) {
  EXPECT_EQ(NumberFromText("12,5"), 12.5);
  EXPECT_EQ(NumberFromText(" -0.25 m"), -0.25);
  EXPECT_EQ(NumberFromText("1,5,7"), 1.5);
  EXPECT_EQ(NumberFromText("1.000,5"), 1.0);
  EXPECT_EQ(NumberFromText("none"), 0.0);
}

}  // namespace
}  // namespace fathomline
