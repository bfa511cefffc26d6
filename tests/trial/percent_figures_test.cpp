// Percent figures against their definition, and samples of a known distribution against theory.
#include "trial/percent_figures.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>
#include <vector>

#include "trial/position_figures.h"

namespace fathomline::trial {
namespace {

// By the definition: the smallest observed value that at least so many percent are at or below.
double ByDefinition(std::vector<double> values, std::size_t percent) {
  std::sort(values.begin(), values.end());
  for (const double value : values) {
    const auto atOrBelow = static_cast<std::size_t>(
        std::upper_bound(values.begin(), values.end(), value) - values.begin());
    if (100 * atOrBelow >= percent * values.size()) return value;
  }
  return HUGE_VAL;
}

TEST(PercentFigures, AreTheSmallestObservedValueThatEnoughAreAtOrBelow) {
  constexpr std::size_t kPercents[] = {50, 68, 95, 99};
  std::mt19937 random(1);
  for (std::size_t n = 0; n <= 301; ++n) {
    std::vector<double> values;
    for (std::size_t i = 0; i < n; ++i) values.push_back(static_cast<double>(random() % (n + 1)));
    const auto figures = PercentFigures(values);
    for (std::size_t i = 0; i < 4; ++i) {
      SCOPED_TRACE(testing::Message() << kPercents[i] << "% of " << n);
      const std::size_t least = i < 2 ? 5 : i == 2 ? 20 : 100;
      ASSERT_EQ(figures[i].has_value(), n >= least);
      ASSERT_EQ(PercentFigure(values, kPercents[i]), figures[i]);
      if (n >= least) {
        ASSERT_EQ(*figures[i], ByDefinition(values, kPercents[i]));
      }
    }
  }
}

// Errors of a normal distribution with these deviations along and across a direction.
PositionErrors Gaussian(std::size_t n, double along, double across, double degrees) {
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal;
  const double direction = degrees * std::numbers::pi / 180.0;
  PositionErrors errors;
  for (std::size_t i = 0; i < n; ++i) {
    const double u = along * normal(random);
    const double v = across * normal(random);
    errors.Add(static_cast<std::int64_t>(i) * 100,
               {u * std::cos(direction) - v * std::sin(direction) + 100.0,
                u * std::sin(direction) + v * std::cos(direction) - 50.0, 3.0 * normal(random)});
  }
  return errors;
}

TEST(PositionFigures, OfANormalDistributionAreThoseOfTheory) {
  constexpr std::size_t kMany = 400'000;
  const TrialClock clock;
  // The ellipse of 95% lies 2.4477 deviations out, whatever its shape and direction.
  for (const double degrees : {0.0, 30.0, 100.0, 179.0}) {
    const Horizontal figures = HorizontalOf(Gaussian(kMany, 4.0, 1.5, degrees), "", clock);
    EXPECT_NEAR(*figures.ellipse.semiMajor, 4.0 * 2.44775, 0.03);
    EXPECT_NEAR(*figures.ellipse.semiMinor, 1.5 * 2.44775, 0.02);
    EXPECT_NEAR(std::remainder(*figures.ellipse.direction - degrees, 180.0), 0.0, 0.3);
    EXPECT_NEAR(*figures.ellipse.insideShare, 0.95, 0.001);
    EXPECT_NEAR(*figures.reference.biasNorth, 100.0, 0.03);
    EXPECT_NEAR(*figures.reference.biasEast, -50.0, 0.03);
    EXPECT_NEAR(*figures.mean.drms, std::hypot(4.0, 1.5), 0.02);
    EXPECT_NEAR(*figures.mean.twoDrms, 2.0 * std::hypot(4.0, 1.5), 0.04);
  }
  // Of a round one the distances are of Rayleigh's distribution: the root of -2 ln (1 - p).
  const PositionErrors round = Gaussian(kMany, 2.0, 2.0, 0.0);
  const Horizontal figures = HorizontalOf(round, "", clock);
  EXPECT_NEAR(*figures.mean.r50, 2.0 * 1.17741, 0.015);
  EXPECT_NEAR(*figures.mean.r68, 2.0 * 1.50959, 0.015);
  EXPECT_NEAR(*figures.mean.r95, 2.0 * 2.44775, 0.02);
  EXPECT_NEAR(*figures.mean.r99, 2.0 * 3.03485, 0.03);
  EXPECT_NEAR(*figures.mean.stdNorth, 2.0, 0.01);
  EXPECT_NEAR(*figures.mean.stdEast, 2.0, 0.01);
  // And heights are within 0.6745, 0.9945, 1.9600 and 2.5758 deviations.
  const Vertical vertical = VerticalOf(round, "", clock);
  EXPECT_NEAR(*vertical.mean.p50, 3.0 * 0.67449, 0.02);
  EXPECT_NEAR(*vertical.mean.p68, 3.0 * 0.99446, 0.02);
  EXPECT_NEAR(*vertical.mean.p95, 3.0 * 1.95996, 0.03);
  EXPECT_NEAR(*vertical.mean.p99, 3.0 * 2.57583, 0.05);
  EXPECT_NEAR(*vertical.reference.std, 3.0, 0.01);
}

}  // namespace
}  // namespace fathomline::trial
