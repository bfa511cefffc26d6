#include "toolkit/chart.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>
#include <sstream>
#include <tuple>

#include "support/scripted_face.h"
#include "toolkit/chart_csv.h"
#include "toolkit/desktop.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

class ChartTest : public testing::Test {
 protected:
  ChartTest() { window.Show(); }

  ScriptedFace face;
  Desktop desktop{face};
  Window window{desktop, {.name = "frmSample"}};
  Chart chart{window, "TChart(0)"};
};

TEST(Series, KeepsItsPointsAndExtremesThroughAnyAddingAndDeleting) {
  std::uint64_t changes = 0;
  Series series(changes, {.title = "s", .kind = SeriesKind::Gantt});
  std::deque<Series::Point> expected;
  std::mt19937 random(20191026);
  double x = 43000.0;
  for (int step = 0; step < 6000; ++step) {
    const auto dice = random() % 100;
    // Phases in which it grows or shrinks, so that it passes the bounds of blocks both ways.
    const unsigned adding = (step / 1500) % 2 == 0 ? 75 : 30;
    if (expected.empty() || dice < adding) {
      x += 0.25;
      const auto y = static_cast<float>(static_cast<int>(random() % 2001) - 1000);
      const double end = x + static_cast<double>(random() % 50);
      if (random() % 10 == 0) {
        series.AddNull(x);
        expected.push_back({.x = x, .end = x, .null = true});
      } else {
        series.AddGantt(x, end, y);
        expected.push_back({.x = x, .end = end, .y = y});
      }
    } else if (dice < 90) {
      series.DeleteOldest();
      expected.pop_front();
    } else if (dice < 99) {
      const auto at = random() % expected.size();
      series.Delete(static_cast<int>(at));
      expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(at));
    } else {
      // Those that begin behind the span go wherever they stand, older ones from the front on.
      const AxisRange kept{expected.front().end + 1.0, x - 0.25};
      series.KeepWithin(kept);
      while (!expected.empty() && expected.front().end < kept.low) expected.pop_front();
      const bool behind = std::any_of(expected.begin(), expected.end(),
                                      [&](const auto& point) { return point.end > kept.high; });
      std::erase_if(expected, [&](const Series::Point& point) {
        return behind && (point.end < kept.low || point.x > kept.high);
      });
    }
    ASSERT_EQ(series.Count(), static_cast<int>(expected.size()));
    if (step % 7 != 0) continue;
    std::optional<AxisRange> rangeX;
    std::optional<AxisRange> rangeY;
    const auto reach = [](std::optional<AxisRange>& range, double low, double high) {
      range = range ? AxisRange{std::min(range->low, low), std::max(range->high, high)}
                    : AxisRange{low, high};
    };
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const Series::Point& point = expected[i];
      const Series::Point actual = series.At(static_cast<int>(i));
      ASSERT_EQ(std::tie(actual.x, actual.end, actual.y, actual.null),
                std::tie(point.x, point.end, point.y, point.null));
      reach(rangeX, point.x, point.end);
      const auto y = static_cast<double>(point.y);
      if (!point.null) reach(rangeY, y, y);
    }
    std::optional<AxisRange> stretchesY;
    int next = 0;
    for (int s = 0; s < series.StretchCount(); ++s) {
      const Series::Stretch stretch = series.StretchAt(s);
      ASSERT_EQ(stretch.begin, next);
      next = stretch.end;
      for (int i = stretch.begin; i < stretch.end; ++i) {
        const Series::Point point = series.At(i);
        ASSERT_FALSE(stretch.uniform && point.null);
        ASSERT_TRUE(point.x >= stretch.x.low && point.end <= stretch.x.high);
        ASSERT_TRUE(point.null || (stretch.y && point.y >= stretch.y->low));
      }
      if (!stretch.y) continue;
      if (!stretchesY) stretchesY = stretch.y;
      stretchesY->low = std::min(stretchesY->low, stretch.y->low);
      stretchesY->high = std::max(stretchesY->high, stretch.y->high);
    }
    ASSERT_EQ(next, series.Count());
    ASSERT_EQ(stretchesY, rangeY) << step;
    ASSERT_EQ(series.RangeX(), rangeX) << step;
    ASSERT_EQ(series.RangeY(), rangeY) << step;
  }
}

TEST(Series, HoldsSinglesExactlyAndColoursByPoint) {
  std::uint64_t changes = 0;
  Series series(changes, {.title = "s"});
  const float exact = 0.1F;
  series.Add(43000.123456789, exact);
  series.Add(43001.0, 4.0F, kMagenta);
  EXPECT_EQ(series.At(0).y, exact);
  EXPECT_EQ(series.At(0).colour, kSeriesColour);
  EXPECT_EQ(series.At(1).colour, kMagenta);
  EXPECT_EQ(series.FirstX(), 43000.123456789);
  EXPECT_EQ(series.LastX(), 43001.0);
  EXPECT_EQ(changes, 2U);
  EXPECT_THROW(series.At(2), Fault);
  EXPECT_THROW(series.Delete(-1), Fault);
  series.Clear();
  EXPECT_THROW(series.DeleteOldest(), Fault);
  EXPECT_FALSE(series.RangeX());
}

TEST_F(ChartTest, AutomaticRangesFollowTheSeriesOfTheirAxis) {
  EXPECT_EQ(chart.Left().Range(), (AxisRange{0.0, 1.0}));
  auto& line = chart.AddSeries({.title = "line"});
  auto& right = chart.AddSeries({.title = "right", .rightAxis = true});
  line.Add(10.0, 5.0F);
  EXPECT_EQ(chart.Left().Range(), (AxisRange{4.0, 6.0}));
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{9.0, 11.0}));
  chart.Bottom().SetLabelFormat("hh:nn");
  EXPECT_NEAR(chart.Bottom().Maximum() - chart.Bottom().Minimum(), 60.0 / 86400.0, 1e-9);
  line.Add(11.0, -2.0F);
  right.Add(14.0, 300.0F);
  right.Add(15.0, 200.0F);
  EXPECT_EQ(chart.Left().Range(), (AxisRange{-2.0, 5.0}));
  EXPECT_EQ(chart.Right().Range(), (AxisRange{200.0, 300.0}));
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{10.0, 15.0}));
  auto& bar = chart.AddSeries({.title = "bar", .kind = SeriesKind::Bar, .rightAxis = true});
  bar.Add(14.0, 250.0F);
  EXPECT_EQ(chart.Right().Range(), (AxisRange{0.0, 300.0}));
}

TEST_F(ChartTest, EachEndMayBeAutomaticByItself) {
  chart.AddSeries({.title = "line"}).Add(1.0, 5.0F);
  chart.Series(0).Add(2.0, 7.0F);
  Axis& left = chart.Left();
  left.SetAutomatic(false);
  left.SetMaximum(100.0);
  left.SetMinimum(-100.0);
  EXPECT_EQ(left.Range(), (AxisRange{-100.0, 100.0}));
  left.SetAutomaticMinimum(true);
  EXPECT_EQ(left.Range(), (AxisRange{5.0, 100.0}));
  left.SetAutomatic(true);
  left.SetAutomaticMaximum(false);
  EXPECT_EQ(left.Range(), (AxisRange{5.0, 7.0}));
}

TEST_F(ChartTest, AZoomHoldsUntilItIsUndoneOrTheProgramMovesTheAxis) {
  chart.AddSeries({.title = "line"}).Add(1.0, 5.0F);
  int zooms = 0;
  int undone = 0;
  chart.onZoom = [&] { ++zooms; };
  chart.onUndoZoom = [&] { ++undone; };
  const auto zoom = [this](double low, double high, Chart::Gesture gesture) {
    chart.UserZoom({.bottom = AxisRange{low, high}, .left = {}, .right = {}}, gesture);
  };
  zoom(2.0, 3.0, Chart::Gesture::New);
  chart.Series(0).Add(9.0, 50.0F);
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{2.0, 3.0}));
  EXPECT_EQ(chart.Left().Range(), (AxisRange{5.0, 50.0}));
  zoom(2.2, 2.9, Chart::Gesture::New);
  zoom(2.3, 2.8, Chart::Gesture::GoesOn);
  chart.UserUndoZoom();
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{2.0, 3.0})) << "a step is a gesture";
  EXPECT_TRUE(chart.Held());
  zoom(2.2, 2.9, Chart::Gesture::New);
  chart.UserShowAll();
  EXPECT_FALSE(chart.Held());
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{1.0, 9.0}));
  EXPECT_EQ(zooms, 4);
  EXPECT_EQ(undone, 2);

  chart.Bottom().SetAutomatic(false);
  chart.Bottom().SetMaximum(20.0);
  chart.UserZoom({.bottom = AxisRange{2.0, 3.0}, .left = {}, .right = {}});
  chart.Bottom().SetMaximum(20.0);  // moved by a sentence, if only to where it was
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{0.0, 20.0}));
}

TEST_F(ChartTest, PointsAxesAndMarkersCountAsChangesOfTheChart) {
  auto& series = chart.AddSeries({.title = "line"});
  Marker& marker = chart.AddMarker({.kind = MarkerKind::HorizontalBand});
  auto seen = chart.Revision();
  const auto changed = [&] { return std::exchange(seen, chart.Revision()) != chart.Revision(); };
  series.Add(1.0, 1.0F);
  EXPECT_TRUE(changed());
  marker.SetBand({-1.0, 1.0});
  EXPECT_TRUE(changed());
  marker.SetBand({-1.0, 1.0});
  EXPECT_FALSE(changed());
  chart.Right().SetMaximum(5.0);
  EXPECT_TRUE(changed());
  series.DeleteOldest();
  EXPECT_TRUE(changed());
  EXPECT_EQ(&chart.Tools(0), &marker);
  EXPECT_THROW(chart.Tools(1), Fault);
  EXPECT_THROW(chart.Series(1), Fault);
}

TEST_F(ChartTest, TheChartsOfAWindowAreOneTableOfAllThatTheyHold) {
  constexpr double kDay = 43466.0;  // 1 January 2019
  const auto at = [](double seconds) { return kDay + seconds / 86400.0; };
  Chart second{window, "TChart(1)"};
  second.Left().SetTitle("Azimuth (deg)");
  EXPECT_FALSE(HasChartsOverTime(window));
  for (Chart* const each : {&chart, &second}) each->Bottom().SetLabelFormat("hh:nn");
  EXPECT_TRUE(HasChartsOverTime(window));
  chart.Left().SetTitle("Elevation (deg)");
  Series& north = chart.AddSeries({.title = "dLat, \"N\"", .unit = "m"});
  Series& stations =
      chart.AddSeries({.title = "Stn ID", .kind = SeriesKind::Gantt, .rightAxis = true});
  for (Chart* const each : {&chart, &second}) {
    each->AddSeries({.title = "05", .unit = "deg", .satellite = 5});
    each->AddSeries({.title = "06", .unit = "deg", .satellite = 6});
  }
  north.Add(at(1.0), 0.5F);
  north.AddNull(at(2.0));
  north.Add(at(3.0), -1.25F);
  north.Add(at(3.0), -1.5F);
  north.Add(at(2.0), 7.0F);  // the time has gone back
  stations.AddGantt(at(1.0), at(3.0), 120.0F);
  chart.Series(2).Add(at(3.0), 45.0F);
  second.Series(0).Add(at(4.0), 180.0F);
  chart.UserToggle(0);
  chart.Bottom().SetZoom(AxisRange{at(3.5), at(9.0)});
  std::ostringstream out;
  WriteWindowCsv(window, out);
  EXPECT_EQ(out.str(),
            "Time (UTC),\"dLat, \"\"N\"\" (m)\",Stn ID,Elevation 05 (deg),Azimuth 05 (deg)\n"
            "2019-01-01 00:00:01,0.5,,,\n"
            "2019-01-01 00:00:02,7,,,\n"
            "2019-01-01 00:00:03,-1.25,120,45,\n"
            "2019-01-01 00:00:03,-1.5,,,\n"
            "2019-01-01 00:00:04,,,,180\n");
  // Many receivers send ten times a second.
  second.Series(0).Add(at(4.1), 181.0F);
  out.str({});
  WriteWindowCsv(window, out);
  EXPECT_TRUE(out.str().ends_with("00:00:04.000,,,,180\n2019-01-01 00:00:04.100,,,,181\n"));
}

}  // namespace
}  // namespace fathomline
