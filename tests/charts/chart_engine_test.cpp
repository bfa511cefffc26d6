#include "charts/chart_engine.h"

#include <gtest/gtest.h>

#include "charts/time_series_window.h"
#include "platform/numbers.h"
#include "support/expect_fault.h"

namespace fathomline {
namespace {

constexpr double kStart = 43832.0;

DateTime Second(double seconds) {
  return {kStart + seconds / kSecondsPerDay};
}

class EngineTest : public testing::Test {
 protected:
  // Adds the samples one second apart.
  void Add(const std::vector<double>& samples) {
    for (const double sample : samples) {
      AddChartPoint(settings, series, Second(++second), sample, filter);
    }
  }

  std::uint64_t changes = 0;
  Series series{changes, {.title = "s"}};
  ChartSettings settings;
  SeriesFilter filter;
  double second = 0.0;
};

TEST_F(EngineTest, DrawsTheLargestMagnitudeOfABlockAtItsLastSample) {
  settings.FilterCount = 5;
  Add({1, -7, 3, 2});
  EXPECT_EQ(series.Count(), 0);
  Add({4});
  ASSERT_EQ(series.Count(), 1);
  EXPECT_EQ(series.At(0).y, -7.0F);
  EXPECT_EQ(series.At(0).x, Second(5).days);
  Add({7, -7, 0, 0, 0});
  EXPECT_EQ(series.At(1).y, 7.0F) << "the earlier one wins a tie";
}

TEST_F(EngineTest, KeepsWhatTheFlagsOfTheFilterSay) {
  settings.FilterCount = 3;
  filter.KeepSmallest = true;
  Add({5, -2, 3});
  EXPECT_EQ(series.At(0).y, -2.0F);
  filter.KeepLast = true;
  Add({5, -2, 3});
  EXPECT_EQ(series.At(1).y, 3.0F);
  filter.Bypass = true;
  Add({8});
  EXPECT_EQ(series.At(2).y, 8.0F);
}

TEST_F(EngineTest, LetsNoValueSpoilItsBlockButNothingElse) {
  settings.FilterCount = 2;
  Add({3, NoValue, 4, 1});
  ASSERT_EQ(series.Count(), 1);
  EXPECT_EQ(series.At(0).y, 4.0F);
  settings.FilterCount = kFilterOff;
  Add({NoValue, 6});
  EXPECT_EQ(series.Count(), 2);
  EXPECT_EQ(kFilterOff, -1);
}

TEST_F(EngineTest, AppliesAChangedCountToTheBlockBegun) {
  settings.FilterCount = 10;
  Add({1, 9, 2});
  settings.FilterCount = 2;
  Add({3});
  ASSERT_EQ(series.Count(), 1);
  EXPECT_EQ(series.At(0).y, 9.0F);
}

TEST_F(EngineTest, KeepsExactlyOneDay) {
  Add({1, 2});
  AddChartPoint(settings, series, Second(86401), 3, filter);
  EXPECT_EQ(series.Count(), 3) << "86400 seconds after the first point";
  AddChartPoint(settings, series, Second(86403), 4, filter);
  EXPECT_EQ(series.Count(), 2) << "two at once";
  EXPECT_EQ(series.At(0).y, 3.0F);
}

TEST_F(EngineTest, KeepsOneDayWhereTheTimeJumpsBack) {
  Add({1, 2});
  AddChartPoint(settings, series, Second(2 - 86400), 3, filter);
  EXPECT_EQ(series.Count(), 3);
  AddChartPoint(settings, series, Second(1 - 86400 * 30), 4, filter);
  ASSERT_EQ(series.Count(), 1);
  EXPECT_EQ(series.At(0).y, 4.0F);
}

TEST_F(EngineTest, ColoursSinglePointsButNotThoseOfAFastLine) {
  AddChartPoint(settings, series, Second(1), 1, filter, {.kind = PlotKind::Bar, .colour = kRed});
  AddChartPoint(settings, series, Second(2), 1, filter,
                {.kind = PlotKind::FastLine, .colour = kRed});
  EXPECT_EQ(series.At(0).colour, kRed);
  EXPECT_EQ(series.At(1).colour, kSeriesColour);
}

class GanttTest : public EngineTest {
 protected:
  void AddStations(const std::vector<int>& stations) {
    for (const int station : stations) {
      table.AddGanttPoint(1, bars, Second(++second), station);
    }
  }

  GanttTable table;
  Series bars{changes, {.title = "Stn ID", .kind = SeriesKind::Gantt}};
};

TEST_F(GanttTest, DrawsABarForEachFurtherSampleOfARun) {
  AddStations({5, 5, 5, 7, 7});
  ASSERT_EQ(bars.Count(), 3);
  EXPECT_EQ(bars.At(1).x, Second(1).days);
  EXPECT_EQ(bars.At(1).end, Second(3).days);
  EXPECT_EQ(bars.At(1).y, 5.0F);
  EXPECT_EQ(bars.At(2).x, Second(4).days);
}

TEST_F(GanttTest, DrawsNothingForRunsOfOneSample) {
  AddStations({5, 0, 5, NoValue, 5, 6, 5});
  EXPECT_EQ(bars.Count(), 0);
}

TEST_F(GanttTest, DrawsNoBarBackwardsInTime) {
  AddStations({5});
  second = -86400.0;
  AddStations({5});
  EXPECT_EQ(bars.Count(), 0);
  AddStations({5});
  ASSERT_EQ(bars.Count(), 1);
  EXPECT_LT(bars.At(0).x, bars.At(0).end);
}

TEST_F(GanttTest, ForgetsItsRunsWhenReset) {
  AddStations({5});
  table.RaiseGanttReset(1);
  AddStations({5});
  EXPECT_EQ(bars.Count(), 0);
  AddStations({5});
  EXPECT_EQ(bars.Count(), 1);
}

TEST_F(GanttTest, HasSixSlotsPerSystem) {
  std::vector<Series> seven;
  seven.reserve(7);
  for (int i = 0; i < 7; ++i) {
    seven.emplace_back(changes,
                       SeriesDesign{.title = "t" + std::to_string(i), .kind = SeriesKind::Gantt});
  }
  for (Series& one : seven) {
    table.AddGanttPoint(1, one, Second(1), 5);
    table.AddGanttPoint(1, one, Second(2), 5);
  }
  EXPECT_EQ(seven[5].Count(), 1);
  EXPECT_EQ(seven[6].Count(), 0);
}

TEST(AutomaticFilters, FollowTheirTwoTables) {
  const std::vector<std::pair<int, int>> byPoints = {{0, 0},     {600, 0},   {601, 2},
                                                     {1800, 2},  {1801, 5},  {3600, 5},
                                                     {3601, 10}, {7200, 10}, {7201, 20}};
  for (const auto& [points, count] : byPoints) {
    EXPECT_EQ(FilterCountFromPoints(points), count) << points;
  }
  const std::vector<std::pair<int, int>> byWindow = {
      {600, 0}, {900, 0}, {901, 5}, {1800, 5}, {1801, 10}, {3600, 10}, {3601, 20}, {86400, 20}};
  for (const auto& [seconds, count] : byWindow) {
    EXPECT_EQ(FilterCountFromWindow(seconds), count) << seconds;
  }
}

TEST(ChartTables, KeepARowPerSystemAndWindow) {
  ChartTables tables;
  ChartSettings& row = tables(1, 0);
  row.FilterCount = 5;
  EXPECT_EQ(tables(2, 0).FilterCount, 0);
  EXPECT_EQ(tables(1, 1200).FilterCount, 0);
  EXPECT_EQ(&tables(1, 0), &row);
  ExpectFault(FaultNumber::OutOfRange, [&] { tables(1, 1201); });
  ExpectFault(FaultNumber::OutOfRange, [&] { tables(5, 0); });
}

TEST(PointFigures, AreMeanAndSampleDeviation) {
  PointFigures figures;
  figures.Add(2.0);
  EXPECT_EQ(figures.Deviation(), 0.0);
  for (const double value : {4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0}) figures.Add(value);
  EXPECT_DOUBLE_EQ(figures.Mean(), 5.0);
  EXPECT_NEAR(figures.Deviation(), 2.13808993529940, 1e-13);  // the square root of 32 / 7
}

}  // namespace
}  // namespace fathomline
