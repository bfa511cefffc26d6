#include "analysis/running_statistics.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "base/numbers.h"
#include "support/expect_fault.h"

namespace fathomline {
namespace {

const FrozenClock kClock{DateFromParts(2026, 1, 2)};

template <class Stat>
void Take(Stat& stat, const std::vector<float>& values) {
  for (const float value : values) {
    if constexpr (std::is_same_v<Stat, SNRStat>) {
      AccumulateSNR(value, stat, {"12:00:00", kClock});
    } else {
      AccumulateDeviation(value, stat, {"12:00:00", kClock});
    }
  }
}

TEST(RunningStatistics, KeepsMeanDeviationAndExtremesOfTheSample) {
  DoubleStat stat;
  const double values[] = {2, 4, 4, 4, 5, 5, 7, 9};
  for (const double value : values) AccumulateDouble(stat, value, {"11:22:33", kClock});
  EXPECT_EQ(stat.Count, 8);
  EXPECT_EQ(stat.Mean, 5.0);
  EXPECT_DOUBLE_EQ(stat.Sdev, std::sqrt(32.0 / 7.0));
  EXPECT_EQ(stat.Max, 9.0);
  EXPECT_EQ(stat.Min, 2.0);
  EXPECT_EQ(stat.FirstDate, "02 Jan 2026");
  EXPECT_EQ(stat.FirstTime, "11:22:33");

  AccumulateDouble(stat, NoValue, {"11:22:34", kClock});
  EXPECT_TRUE(stat.NoValueSeen);
  EXPECT_EQ(stat.Count, 8);
  EXPECT_EQ(stat.LastTime, "11:22:33");
  AccumulateDouble(stat, 5, {"11:22:35", kClock});
  EXPECT_FALSE(stat.NoValueSeen);
  EXPECT_EQ(stat.LastTime, "11:22:35");
}

TEST(RunningStatistics, StaysExactForAValueFarFromZero) {
  // A naive sum of squares in single precision loses all of this.
  SingleStat stat;
  for (int i = 0; i < 100000; ++i) {
    AccumulateSingle(stat, 30.0F + (i % 2 == 0 ? 0.25F : -0.25F), {"", kClock});
  }
  EXPECT_EQ(stat.Mean, 30.0F);
  EXPECT_NEAR(stat.Sdev, 0.25F, 2e-6F);
}

TEST(RunningStatistics, KeepsTheDeviationWhereRoundingMakesTheVarianceNegative) {
  // With a step u of one unit in the last place: the mean of 1, 1+u, 1+u rounds up to 1+u, and
  // 2uu - 3uu is negative. The deviation of the first two, u, stays.
  const float u = std::numeric_limits<float>::epsilon();
  SingleStat stat;
  for (const float value : {1.0F, 1.0F + u, 1.0F + u}) AccumulateSingle(stat, value, {"", kClock});
  EXPECT_EQ(stat.Mean, 1.0F + u);
  EXPECT_EQ(stat.Sdev, u);
}

TEST(RunningStatistics, RaisesOverflowWhereASumRunsOver) {
  DoubleStat stat;
  AccumulateDouble(stat, 0.0, {"", kClock});
  ExpectFault(FaultNumber::Overflow, [&] { AccumulateDouble(stat, 1e300, {"", kClock}); });
}

TEST(DeviationStat, PercentilesAreTheLowerEdgesOfTheirBins) {
  struct Row {
    std::vector<float> values;
    float p68;
    float p95;
  };
  const auto many = [](std::size_t count, float value, std::size_t others, float other) {
    std::vector<float> values(count, value);
    values.insert(values.end(), others, other);
    return values;
  };
  const Row rows[] = {{{}, 0.0F, 0.0F},
                      {{1.234F}, 1.23F, 1.23F},
                      {{-1.234F}, 1.23F, 1.23F},
                      {{9.995F}, 9.99F, 9.99F},
                      {{10.0F}, 10.0F, 10.0F},
                      {{1e30F}, 10.0F, 10.0F},
                      {many(10, 0.004F, 1, 5.0F), 0.0F, 5.0F},
                      // A share of exactly the limit does not pass: 17 of 25 is 0.68 and 19 of 20
                      // is 0.95, in single precision as well.
                      {many(17, 0.0F, 8, 1.0F), 1.0F, 1.0F},
                      {many(19, 0.0F, 1, 1.0F), 0.0F, 1.0F}};
  for (const Row& row : rows) {
    DeviationStat stat;
    Take(stat, row.values);
    const Percentiles percentiles = stat.ComputePercentiles();
    EXPECT_EQ(percentiles.P68, row.p68) << "row " << &row - rows;
    EXPECT_EQ(percentiles.P95, row.p95) << "row " << &row - rows;
  }
}

TEST(DeviationStat, CountsNoValueAsRejectedAndSortsTheSignedBins) {
  DeviationStat stat;
  Take(stat, {1.0F, NoValue, -2.0F, NoValue, 0.0F});
  EXPECT_EQ(stat.Stat.Count, 3);
  EXPECT_EQ(stat.RejectedCount, 2);
  EXPECT_EQ(stat.AbsTotal, 3);
  EXPECT_EQ(stat.SignedCounts.front(), 1);
  EXPECT_EQ(stat.SignedCounts.back(), 2);
  EXPECT_TRUE(stat.RejectedMax == NoValue && stat.RejectedMin == NoValue);

  // With a centre and limits of its own: the bins of both signs, and the two outer ones.
  DeviationStat signedBins;
  signedBins.SignedCentre = 0.5F;
  for (std::size_t i = 1; i <= 10; ++i) signedBins.SignedLimits[10 + i] = static_cast<float>(i);
  Take(signedBins, {0.5F, 1.25F, 1.5F, -0.25F, -0.5F, 10.0F, -9.0F, 10.5F, -9.5F, -9.5F});
  decltype(stat.SignedCounts) counts{};
  counts[11 + 1] = 2;
  counts[11 + 2] = counts[11 - 1] = counts[11 - 2] = counts[11 + 10] = counts[11 - 10] = 1;
  counts[11 + 11] = 1;
  counts[11 - 11] = 2;
  EXPECT_EQ(signedBins.SignedCounts, counts);
}

TEST(DeviationStat, AResetForgetsTheLowerBinsOnly) {
  DeviationStat stat;
  Take(stat, {3.0F, 3.0F, 3.0F, 2.505F, NoValue, NoValue});
  ResetDeviationStat(stat);
  EXPECT_EQ(stat.Stat.Count, 0);
  EXPECT_EQ(stat.RejectedCount, 0);
  EXPECT_TRUE(stat.RejectedMax == 0.0F && stat.RejectedMin == 0.0F);
  EXPECT_EQ(stat.SignedCounts, decltype(stat.SignedCounts){});
  EXPECT_EQ(stat.AbsTotal, 0);
  EXPECT_EQ(stat.AbsBins[251], 0);
  EXPECT_EQ(stat.AbsBins[301], 3);
  EXPECT_EQ(stat.ComputePercentiles().P95, 0.0F);

  Take(stat, {5.0F});
  EXPECT_EQ(stat.ComputePercentiles().P68, 3.0F) << "three old samples against one new";
}

TEST(SNRStat, FiguresLieBelowTheSamples) {
  SNRStat stat;
  Take(stat, {40.0F, 0.0F, 42.0F, NoValue, 44.0F, 46.0F});
  EXPECT_EQ(stat.Stat.Count, 4);
  EXPECT_EQ(stat.RejectedCount, 2);
  // From above: 46, 44, 42 are 75% of four; only with 40 is 95% passed.
  EXPECT_EQ(stat.ComputePercentiles().P68, 41.0F);
  EXPECT_EQ(stat.ComputePercentiles().P95, 39.0F);
  ResetSNRStat(stat);
  Take(stat, {150.0F});
  EXPECT_EQ(stat.ComputePercentiles().P95, 100.0F);

  // A negative value is in the total and in no bin. A figure that cannot be reached stays.
  ResetSNRStat(stat);
  Take(stat, {40.0F, 42.0F, 44.0F});
  ExpectFault(FaultNumber::OutOfRange, [&] { Take(stat, {-1.0F}); });
  EXPECT_EQ(stat.ComputePercentiles().P95, 39.0F);
  Take(stat, {46.0F});
  EXPECT_EQ(stat.ComputePercentiles().P68, 39.0F);  // passed with 40, 80% of five
  EXPECT_EQ(stat.ComputePercentiles().P95, 39.0F);  // out of reach
}

}  // namespace
}  // namespace fathomline
