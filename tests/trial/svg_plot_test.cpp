#include "trial/svg_plot.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "trial/svg_picture.h"

namespace fathomline::trial {
namespace {

std::vector<std::string> Labels(const std::vector<PlotTick>& ticks) {
  std::vector<std::string> labels;
  for (const PlotTick& tick : ticks) labels.push_back(tick.label);
  return labels;
}

using Texts = std::vector<std::string>;

TEST(Ticks, AreStepsOfOneTwoOrFiveAndWholeStepsOfAClock) {
  EXPECT_EQ(Labels(NumberTicks({-1.3, 2.6, 0, 160})), (Texts{"-1", "0", "1", "2"}));
  EXPECT_EQ(Labels(NumberTicks({0, 0.05, 0, 200})),
            (Texts{"0.00", "0.01", "0.02", "0.03", "0.04", "0.05"}));
  EXPECT_EQ(Labels(NumberTicks({-40, 1234, 160, 0})), (Texts{"0", "500", "1000"}));
  // However narrow, at least two of them.
  EXPECT_EQ(Labels(NumberTicks({0.9, 2.4, 0, 8})), (Texts{"1", "2"}));
  // One value alone, and more ticks than a picture can have.
  EXPECT_EQ(Labels(NumberTicks({7, 7, 0, 100})), (Texts{"6", "7", "8"}));
  EXPECT_EQ(NumberTicks({0, 1, 0, 16'000}).size(), 200U);

  const double second = 1000.0;
  const double day = 86'400'000.0;
  const double begin = 20455.0 * day + 23 * 3600 * second + 58 * 60 * second;  // 2 January 2026
  EXPECT_EQ(Labels(TimeTicks({begin, begin + 240 * second, 0, 340}, true)),
            (Texts{"23:58", "23:59", "3 Jan", "00:01", "00:02"}));
  // Each step where ten of it are as far apart as labels must be.
  for (const double seconds :
       {0.1,    0.2,    0.5,     1.0,     2.0,     5.0,      10.0,     15.0,     30.0,
        60.0,   120.0,  300.0,   600.0,   900.0,   1800.0,   3600.0,   7200.0,   10800.0,
        21600., 43200., 86400.0, 172800., 432000., 864000.0, 1728000., 4320000., 8640000.}) {
    const double step = seconds * second;
    const std::vector<PlotTick> ticks = TimeTicks({0, 10 * step, 0, 640}, true);
    EXPECT_EQ(ticks.size(), 11U) << seconds;
    EXPECT_EQ(ticks.at(1).at, step);
  }
  EXPECT_EQ(Labels(TimeTicks({0, 400, 0, 300}, false)),
            (Texts{"00:00:00.0", "00:00:00.1", "00:00:00.2", "00:00:00.3", "00:00:00.4"}));
  EXPECT_EQ(Labels(TimeTicks({58 * second, 61 * second, 0, 300}, false)),
            (Texts{"00:00:58", "00:00:59", "00:01:00", "00:01:01"}));
  EXPECT_EQ(Labels(TimeTicks({0, 3 * day, 0, 300}, false)),
            (Texts{"day +0", "day +1", "day +2", "day +3"}));
  EXPECT_EQ(Labels(TimeTicks({-20 * second, 20 * second, 0, 300}, false)),
            (Texts{"23:59:40", "23:59:50", "00:00:00", "00:00:10", "00:00:20"}));
}

// A peak of one sample among a hundred thousand is in the line, and a gap stays one.
TEST(Columns, KeepTheExtremesOfEveryColumn) {
  const PlotScale x(0, 100'000, 0, 500);
  const PlotScale y(-1000, 1000, 2000, 0);
  PlotColumns columns(x);
  for (int i = 0; i <= 100'000; ++i) {
    if (i == 50'001) columns.Break();
    columns.Add(i, i == 12'345 ? 777.0 : i == 12'399 ? -555.0 : i % 3);
  }
  EXPECT_EQ(columns.Least(), -555.0);
  EXPECT_EQ(columns.Greatest(), 777.0);
  const std::string line = columns.Line(y);
  // Both lie in column 61, and are drawn in their order.
  EXPECT_NE(line.find("L61 998V223V1555L62"), std::string::npos);
  EXPECT_EQ(std::count(line.begin(), line.end(), 'M'), 2);
  EXPECT_LT(line.size(), 20'000U);

  PlotColumns alone(x);
  alone.Add(500, 1000);
  EXPECT_EQ(alone.Line(y), "M2 0h0");

  // The first, the extremes in the order in which they were met, and the last.
  PlotColumns order({0, 4, 0, 4});
  double at = 0.0;
  for (const double value : {5, 3, 8, 6, 5, 8, 3, 6, 5, 3, 5, 4, 1, 3, 1, 2}) {
    order.Add(at, value);
    at += 0.25;
  }
  EXPECT_EQ(order.Line(y), "M0 995V997V992V994L1 995V992V997V994L2 995V997V996L3 999V997V998");
  PlotColumns few({0, 4, 0, 4});
  for (const bool dense : {false, false, false, true}) {
    few.Add(1, 1);
    EXPECT_EQ(few.Dense(), dense);
  }
}

TEST(Bands, GoFromTheLeastToTheGreatestAndHaveHoles) {
  PlotBand band({0, 100, 0, 10}, 2);
  band.Add(5, 5, 10);
  band.Add(6, 6, 30);
  band.Add(21, 39, 20);
  band.Add(95, 95, 20);
  band.Add(100, 100, 20);
  const PlotScale y(0, 100, 100, 0);
  EXPECT_EQ(band.Area(y, 2), "M0 70h2v9h2v2h-2v9h-2zM8 79h4v2h-4z");
  EXPECT_EQ(band.Area(y, 0), "M0 70h2v10h2h-2v10h-2zM8 80h4h-4z");
}

TEST(Stretches, AreNeverTooShortToBeSeen) {
  PlotStretches stretches({0, 1000, 0, 10});
  stretches.Add(5, 6);
  stretches.Add(7, 120);
  stretches.Add(210, 300);
  stretches.Add(501, 501);
  EXPECT_EQ(stretches.Boxes(3, 4), "M0 3h4v4H0zM5 3h1v4H5z");
}

TEST(Dots, AreAllSeenAndTheFarOnesStandOnTheRim) {
  const PlotScale x(-10, 10, 100, 300);
  const PlotScale y(-10, 10, 300, 100);
  PlotDots dots(x, y);
  for (int i = 0; i < 1000; ++i) dots.Add(0, 0);
  dots.Add(5, 5);
  dots.Add(std::nan(""), 1);
  // On the rim by themselves, and just within.
  for (const double at : {-10.0, -9.96, 9.96, 10.0}) dots.Add(at, at);
  EXPECT_EQ(dots.Beyond(), 0);
  for (const auto& [right, up] : {std::pair{400, -3}, {-11, 2}, {4, 11}, {2, -400}}) {
    dots.Add(right, up);
  }
  EXPECT_EQ(dots.Beyond(), 4);
  const std::vector<std::string> levels = dots.Levels();
  EXPECT_EQ(levels.front(),
            "M240 100h0M300 100h0M250 150h0M100 180h0M300 230h0M100 300h0M220 300h0");
  EXPECT_EQ(levels.back(), "M200 200h0");

  PlotDots few(x, y);
  for (const double right : {5.0, 5.1, 0.0, 0.0}) few.Add(right, 5);
  EXPECT_EQ(few.Levels().front(), "M250 150h0M251 150h0");
  EXPECT_EQ(few.Levels().back(), "M200 150h0");

  // Rows of neighbours are one stroke where there are many.
  PlotDots many(x, y);
  std::vector<double> widths;
  for (int i = 0; i < 20'000; ++i) {
    many.Add(-10 + i % 200 * 0.1, -10 + i / 200 * 0.1);
    if (i != 299 && i != 300 && i != 2999 && i != 3000) continue;
    widths.push_back(many.Width() + (many.Levels().front().ends_with("h0") ? 100.0 : 0.0));
  }
  EXPECT_EQ(widths, (std::vector<double>{104.0, 102.5, 102.5, 2.0}));
  for (int i = 0; i < 12; ++i) many.Add(0, -5);
  for (const double right : {-10.0, 9.9, 10.0}) many.Add(right, 10);
  many.Add(-10, 9.8);
  const std::vector<std::string> strokes = many.Levels();
  EXPECT_EQ(strokes[0], "M100 101h2M298 101h4M100 103h2");
  EXPECT_EQ(strokes[1], "M100 201h200M100 301h200");
  EXPECT_NE(strokes[2].find("M100 251h100M202 251h98M100 253h200"), std::string::npos);
  EXPECT_EQ(strokes[3], "M200 251h2");
}

TEST(Shares, GrowByTheSamplesThatAreNoLarger) {
  PlotShares shares({0, 10, 0, 100});
  for (const double value : {1.0, 2.0, 2.01, 4.0, 50.0}) shares.Add(value);
  EXPECT_EQ(shares.Line({0, 1, 100, 0}), "M0 100H10V80H20V60H21V40H40V20H100");
  PlotShares ends({0, 10, 7, 107});
  EXPECT_EQ(ends.Line({0, 1, 100, 0}), "");
  ends.Add(0);
  EXPECT_EQ(ends.Line({0, 1, 100, 0}), "M7 0H107");
  ends.Add(10);
  EXPECT_EQ(ends.Line({0, 1, 100, 0}), "M7 50H107V0");
}

// A quarter of a circle as whole units tell it, then out and back along one line.
TEST(Ways, PassEveryPlaceWithFewCorners) {
  std::vector<std::pair<double, double>> places;
  for (int i = 0; i <= 900; ++i) {
    const double angle = i * std::numbers::pi / 1800.0;
    places.emplace_back(std::round(100.0 * std::cos(angle)), std::round(100.0 * std::sin(angle)));
  }
  for (const double out : {120.0, 160.0, 131.0, 100.0}) places.emplace_back(0.0, out);
  constexpr double kWithin = 0.8;
  PlotWay way(kWithin);
  way.Add(7, 7);
  way.Break();
  for (const auto& [x, y] : places) way.Add(x, y);
  const std::string path = std::move(way).Path();
  ASSERT_TRUE(path.starts_with("M7 7h0M100 0h0l"));
  std::vector<std::pair<double, double>> corners = {{100.0, 0.0}};
  for (std::size_t at = path.find('l'); at != std::string::npos; at = path.find('l', at + 1)) {
    const std::size_t blank = path.find(' ', at);
    const auto [x, y] = corners.back();
    const std::size_t end = std::min(path.find('l', blank), path.size());
    corners.emplace_back(x + ReadNumber(path.substr(at + 1, blank - at - 1)),
                         y + ReadNumber(path.substr(blank + 1, end - blank - 1)));
  }
  EXPECT_LT(corners.size(), 25U);
  for (const auto& [x, y] : places) {
    double nearest = 1000.0;
    for (std::size_t i = 1; i < corners.size(); ++i) {
      const auto [fromX, fromY] = corners[i - 1];
      const double right = corners[i].first - fromX;
      const double down = corners[i].second - fromY;
      const double along =
          ((x - fromX) * right + (y - fromY) * down) / (right * right + down * down);
      const double share = std::clamp(along, 0.0, 1.0);
      nearest = std::min(nearest, std::hypot(x - fromX - share * right, y - fromY - share * down));
    }
    EXPECT_LE(nearest, kWithin + 0.1) << x << ' ' << y;
  }
}

TEST(Ways, GoDownTheMiddleOfWhatPassesTheirPlaces) {
  const auto path = [](const std::vector<std::pair<double, double>>& places) {
    PlotWay way(0.8);
    for (const auto& [x, y] : places) std::isnan(x) ? way.Break() : way.Add(x, y);
    return std::move(way).Path();
  };
  EXPECT_EQ(path({{0, 0}, {10, 0}, {20, 0.5}, {30, -0.5}}), "M0 0h0l30 -0.1");
  EXPECT_EQ(path({{0, 0}, {-10, 0.1}, {-20, -0.1}}), "M0 0h0l-20 -0.1");
  EXPECT_EQ(path({{0, 0}, {10, 0}, {9.6, 0}, {8, 0}, {8, 10}}), "M0 0h0l10 0l-2 0l0 10");
  // What ends leaves nothing to what begins.
  EXPECT_EQ(path({{0, 0}, {1.4, 0}, {std::nan(""), 0}, {5, 5}, {5.9, 5}}),
            "M0 0h0l1.4 0M5 5h0l0.9 0");
}

TEST(Xml, HoldsAnyBytes) {
  EXPECT_EQ(EscapedXml("<a href=\"x\">&'"), "&lt;a href=&quot;x&quot;&gt;&amp;&#39;");
  EXPECT_EQ(EscapedXml("59° \xE5 \xE2(\xA1"), "59° \uFFFD \uFFFD(\uFFFD");
  // The first and the last characters of each length, and about those that XML does not hold.
  const std::string held =
      "\t\n\r \x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\uFFFD\U00010000\U0010FFFF";
  EXPECT_EQ(EscapedXml(held), held);
  for (const std::string bytes :
       {"\x1F", "\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xEF\xBF\xBE",
        "\xEF\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
    std::string replaced;
    for (std::size_t i = 0; i < bytes.size(); ++i) replaced += "\uFFFD";
    EXPECT_EQ(EscapedXml(bytes), replaced);
  }
  std::string length;
  for (const double value : {-0.04, 1.0, -2.25, 0.96}) AppendLength(length += ' ', value);
  EXPECT_EQ(length, " 0 1 -2.3 1");
}

}  // namespace
}  // namespace fathomline::trial
