#include "base/look.h"

#include <cmath>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace fathomline {
namespace {

// WCAG 2.1, relative luminance and contrast ratio.
double Luminance(Colour colour) {
  const auto linear = [](int part) {
    const double c = (part & 0xFF) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour) + 0.7152 * linear(colour >> 8) + 0.0722 * linear(colour >> 16);
}

double Contrast(Colour a, Colour b) {
  const double one = Luminance(a) + 0.05;
  const double other = Luminance(b) + 0.05;
  return one > other ? one / other : other / one;
}

double Contrast(Colour colour, ColourUse use, Colour ground, LookMode mode) {
  return Contrast(Shown(colour, use, mode), Shown(ground, ColourUse::Fill, mode));
}

constexpr std::array kModes = {LookMode::Light, LookMode::Dark};

// As designed; 0 where nothing is asked. Light on the window and on the chart ground, then dark.
struct Designed {
  Colour colour;
  double light[2];
  double dark[2];
};

constexpr auto kDesigned = std::to_array<Designed>({
    {look::kInk, {15.1, 16.5}, {13.5, 15.2}},
    {look::kMutedInk, {5.7, 6.2}, {7.3, 8.1}},
    {look::kDisabledInk, {3.4, 3.7}, {3.6, 4.0}},
    {look::kGridLines, {0, 1.2}, {0, 1.3}},
    {look::kFrameLines, {3.7, 4.0}, {4.1, 4.6}},
    {look::kEdge, {3.2, 3.5}, {3.6, 4.0}},
    {look::kAccent, {6.1, 6.7}, {7.3, 8.1}},
    {look::kFocusRing, {4.6, 5.0}, {9.2, 10.3}},
    {look::kAlive, {5.3, 5.8}, {7.8, 8.8}},
    {look::kLate, {5.6, 6.1}, {8.3, 9.3}},
    {look::kDead, {6.0, 6.5}, {6.7, 7.5}},
    {look::kSkyRings, {3.5, 3.8}, {4.3, 4.8}},
    {look::kDeviationBand, {0, 1.2}, {0, 1.3}},
    {kBlue, {5.3, 5.8}, {6.7, 7.5}},
    {kDarkGreen, {4.7, 5.2}, {9.8, 10.9}},
    {kRed, {5.1, 5.6}, {5.3, 5.9}},
    {kDarkYellow, {5.9, 6.4}, {9.1, 10.2}},
    {kDarkRed, {10.3, 11.2}, {4.8, 5.3}},
    {kGreen, {4.3, 4.7}, {7.6, 8.6}},
    {kBlack, {16.5, 18.1}, {13.9, 15.6}},
    {kWhite, {3.1, 3.4}, {15.4, 17.2}},
    {kYellow, {3.3, 3.7}, {13.0, 14.5}},
    {kCyan, {3.5, 3.8}, {9.9, 11.1}},
    {kMagenta, {4.4, 4.8}, {7.6, 8.6}},
    {kOrange, {4.2, 4.6}, {6.9, 7.7}},
    {kTeal, {4.7, 5.1}, {8.8, 9.8}},
    {kNavy, {14.1, 15.4}, {6.3, 7.1}},
    {SeriesColour(0), {0, 3.7}, {0, 8.3}},
    {SeriesColour(1), {0, 9.2}, {0, 4.9}},
    {SeriesColour(2), {0, 3.3}, {0, 13.3}},
    {SeriesColour(3), {0, 10.4}, {0, 4.5}},
    {SeriesColour(4), {0, 3.4}, {0, 13.2}},
    {SeriesColour(5), {0, 3.3}, {0, 12.9}},
    {SeriesColour(6), {0, 9.2}, {0, 4.5}},
    {SeriesColour(7), {0, 5.4}, {0, 6.3}},
});

TEST(Look, EveryHueHasTheContrastItWasDesignedFor) {
  constexpr double kRounding = 0.06;
  for (const auto& [colour, light, dark] : kDesigned) {
    for (const int ground : {0, 1}) {
      const Colour under = ground == 0 ? look::kWindowGround : look::kChartGround;
      for (const LookMode mode : kModes) {
        const double wanted = (mode == LookMode::Light ? light : dark)[ground];
        if (wanted == 0.0) continue;
        EXPECT_NEAR(Contrast(colour, ColourUse::Line, under, mode), wanted, kRounding)
            << std::hex << colour << ' ' << ground << ' ' << static_cast<int>(mode);
      }
    }
  }
  for (int n = 0; n < kSatelliteColours; ++n) {
    const Colour satellite = SatelliteColour(n);
    EXPECT_GE(Contrast(satellite, ColourUse::Line, look::kChartGround, LookMode::Light), 3.25) << n;
    EXPECT_GE(Contrast(satellite, ColourUse::Line, look::kChartGround, LookMode::Dark), 3.95) << n;
  }
  EXPECT_NEAR(Contrast(look::kSelectedInk, ColourUse::Text, look::kSelection, LookMode::Light), 6.7,
              kRounding);
  EXPECT_NEAR(Contrast(look::kSelectedInk, ColourUse::Text, look::kSelection, LookMode::Dark), 5.0,
              kRounding);
}

TEST(Look, TextsCanBeReadAndFillsLieBehindLines) {
  for (const LookMode mode : kModes) {
    for (const Colour text :
         {look::kInk, look::kMutedInk, look::kAccent, look::kAlive, look::kLate, look::kDead, kBlue,
          kDarkGreen, kGreen, kRed, kDarkYellow, kYellow, kBlack, kWhite}) {
      EXPECT_GE(Contrast(text, ColourUse::Text, look::kWindowGround, mode), 4.5)
          << std::hex << text;
    }
    EXPECT_GE(Contrast(look::kMutedInk, ColourUse::Text, look::kChildArea, mode), 4.45);
    for (const look_tables::ToldHue& bar : look_tables::kToldHues) {
      const Colour fill = Shown(bar.told, ColourUse::Fill, mode);
      const double overGround = Contrast(fill, Shown(look::kChartGround, ColourUse::Fill, mode));
      EXPECT_TRUE(overGround > 1.14 && overGround < 1.65) << std::hex << bar.told << overGround;
      for (const Colour line : {kBlack, kNavy, kDarkRed, kOrange, kBlue}) {
        EXPECT_GE(Contrast(Shown(line, ColourUse::Line, mode), fill), 3.15) << std::hex << line;
      }
    }
  }
}

TEST(Look, SatellitesBeyondTheTwentyAreToldApartByTheirRound) {
  EXPECT_EQ(SatelliteColour(19), look_families::kSatellites + 19);
  EXPECT_EQ(SatelliteColour(20), SatelliteColour(1));
  EXPECT_EQ(SatelliteColour(38), SatelliteColour(0));
  EXPECT_EQ(SatelliteRound(19), 0);
  EXPECT_EQ(SatelliteRound(20), 1);
  EXPECT_EQ(SatelliteRound(151), 7);
}

// The told colours are integers that stand in setups and series.
TEST(Look, ShownColoursAreWrittenAsInDocuments) {
  const std::pair<Colour, const char*> kLight[] = {
      {16711680, "#0B5CE0"}, {32768, "#2A7B55"},         {255, "#CB1E33"},
      {49344, "#6B5F00"},    {65280, "#15853E"},         {0, "#10171D"},
      {16777215, "#868C92"}, {65535, "#A88000"},         {16776960, "#0F8FA3"},
      {16711935, "#C22BB8"}, {look::kStripe, "#F6F8FA"}, {look::kHeaderGround, "#E7ECF0"}};
  for (const auto& [colour, hex] : kLight) {
    EXPECT_EQ(HexOf(Shown(colour, ColourUse::Line, LookMode::Light)), hex);
  }
  EXPECT_EQ(HexOf(Shown(look::kChartGround, ColourUse::Fill, LookMode::Dark)), "#11161B");
  const Colour unknown = RedGreenBlue(1, 2, 3);
  EXPECT_EQ(Shown(unknown, ColourUse::Line, LookMode::Dark), unknown);
}

}  // namespace
}  // namespace fathomline
