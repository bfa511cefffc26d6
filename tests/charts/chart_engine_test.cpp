#include "charts/chart_engine.h"

#include <array>
#include <gtest/gtest.h>

#include "charts/chart_session.h"

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
  EXPECT_EQ(series.At(0).x, Second(5).days);
  Add({7, -7, 0, 0, 0});
  EXPECT_EQ(Values(series), (Points{-7.0F, 7.0F})) << "the earlier one wins a tie";
}

TEST_F(EngineTest, FollowsTheFlagsAndTheCountInForce) {
  settings.FilterCount = 3;
  filter.KeepSmallest = true;
  Add({5, -2, 3});
  filter.KeepLast = true;
  Add({5, -2, 3});
  filter.Bypass = true;
  Add({8});
  EXPECT_EQ(Values(series), (Points{-2.0F, 3.0F, 8.0F}));
  filter = {};
  settings.FilterCount = 10;
  Add({1, 9, 2});
  settings.FilterCount = 2;
  Add({3});
  EXPECT_EQ(series.At(3).y, 9.0F) << "a changed count applies to the block begun";
}

TEST_F(EngineTest, LetsNoValueSpoilItsBlockButNothingElse) {
  settings.FilterCount = 2;
  Add({3, NoValue, 4, 1});
  settings.FilterCount = kFilterOff;
  Add({NoValue, 6});
  EXPECT_EQ(Values(series), (Points{4.0F, 6.0F}));
  EXPECT_EQ(kFilterOff, -1);
}

TEST_F(EngineTest, KeepsExactlyOneDayAlsoWhereTheTimeJumpsBack) {
  const auto addAt = [this](double seconds) {
    AddChartPoint(settings, series, Second(seconds), seconds, filter);
    return series.Count();
  };
  Add({1, 2});
  EXPECT_EQ(addAt(86401), 3) << "86400 seconds after the first point";
  EXPECT_EQ(addAt(86403), 2) << "two at once";
  EXPECT_EQ(series.At(0).y, 86401.0F);
  EXPECT_EQ(addAt(86403 - 86400), 3);
  EXPECT_EQ(addAt(-86400 * 30), 1);
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
  second -= 1.5;
  AddStations({5});
  second = -86400.0;
  AddStations({5});
  table.RaiseGanttReset(1);
  AddStations({5});
  EXPECT_EQ(bars.Count(), 0) << "nor backwards in time, nor across a reset";
  AddStations({5});
  ASSERT_EQ(bars.Count(), 1);
  EXPECT_LT(bars.At(0).x, bars.At(0).end);
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
  constexpr std::array kPoints = {0, 600, 601, 1800, 1801, 3600, 3601, 7200, 7201};
  constexpr std::array kByPoints = {0, 0, 2, 2, 5, 5, 10, 10, 20};
  for (std::size_t i = 0; i < kPoints.size(); ++i) {
    EXPECT_EQ(FilterCountFromPoints(kPoints[i]), kByPoints[i]) << kPoints[i];
  }
  constexpr std::array kSeconds = {0, 900, 901, 1800, 1801, 3600, 3601, 86400};
  constexpr std::array kByWindow = {0, 0, 5, 5, 10, 10, 20, 20};
  for (std::size_t i = 0; i < kSeconds.size(); ++i) {
    EXPECT_EQ(FilterCountFromWindow(kSeconds[i]), kByWindow[i]) << kSeconds[i];
  }
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
