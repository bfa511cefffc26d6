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
  EXPECT_EQ(Labels(NumberTicks({0.9, 2.4, 0, 30})), (Texts{"1", "2"}));
  // One value alone, and one so large that a step is lost in it.
  EXPECT_GE(NumberTicks({7, 7, 0, 100}).size(), 2U);
  EXPECT_LT(NumberTicks({1e300, 1.0000001e300, 0, 100}).size(), 250U);

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
}

TEST(Bands, GoFromTheLeastToTheGreatestAndHaveHoles) {
  PlotBand band({0, 100, 0, 10}, 2);
  band.Add(5, 5, 10);
  band.Add(6, 6, 30);
  band.Add(21, 39, 20);
  band.Add(95, 95, 20);
  const PlotScale y(0, 100, 100, 0);
  EXPECT_EQ(band.Area(y, 2), "M0 70h2v9h2v2h-2v9h-2zM8 79h2v2h-2z");
}

TEST(Stretches, AreNeverTooShortToBeSeen) {
  PlotStretches stretches({0, 1000, 0, 10});
  stretches.Add(5, 6);
  stretches.Add(7, 120);
  stretches.Add(501, 501);
  EXPECT_EQ(stretches.Boxes(3, 4), "M0 3h2v4H0zM5 3h1v4H5z");
}

TEST(Dots, AreAllSeenAndTheFarOnesStandOnTheRim) {
  PlotDots dots({-10, 10, 100, 300}, {-10, 10, 300, 100});
  for (int i = 0; i < 1000; ++i) dots.Add(0, 0);
  dots.Add(5, 5);
  dots.Add(400, -3);
  dots.Add(std::nan(""), 1);
  EXPECT_EQ(dots.Beyond(), 1);
  const std::vector<std::string> levels = dots.Levels();
  EXPECT_EQ(levels.front(), "M250 150h0M300 230h0");
  EXPECT_EQ(levels.back(), "M200 200h0");

  PlotDots many({-10, 10, 100, 300}, {-10, 10, 300, 100});
  for (int i = 0; i < 200; ++i) {
    for (int j = 0; j < 100; ++j) many.Add(-10 + i * 0.1, -10 + j * 0.1);
  }
  // Rows of neighbours are one stroke.
  int strokes = 0;
  for (const std::string& level : many.Levels()) {
    strokes += static_cast<int>(std::count(level.begin(), level.end(), 'M'));
  }
  EXPECT_EQ(strokes, 51);
}

TEST(Shares, GrowByTheSamplesThatAreNoLarger) {
  PlotShares shares({0, 10, 0, 100});
  for (const double value : {1.0, 2.0, 2.01, 4.0, 50.0}) shares.Add(value);
  EXPECT_EQ(shares.Line({0, 1, 100, 0}), "M0 100H10V80H20V60H21V40H40V20H100");
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

TEST(Xml, HoldsAnyBytes) {
  EXPECT_EQ(EscapedXml("<a href=\"x\">&'"), "&lt;a href=&quot;x&quot;&gt;&amp;&#39;");
  EXPECT_EQ(EscapedXml("59° \xE5 \x01 \xED\xA0\x80 \xC0\x80"),
            "59° \uFFFD \uFFFD \uFFFD\uFFFD\uFFFD \uFFFD\uFFFD");
  EXPECT_EQ(EscapedXml("\xE2\x82"), "\uFFFD\uFFFD");
  std::string length;
  for (const double value : {-0.04, 1.0, -2.25, 0.96}) AppendLength(length += ' ', value);
  EXPECT_EQ(length, " 0 1 -2.3 1");
}

}  // namespace
}  // namespace fathomline::trial
