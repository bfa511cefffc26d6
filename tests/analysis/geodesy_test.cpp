#include "analysis/geodesy.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "support/expect_fault.h"

namespace fathomline {
namespace {

constexpr double kMinute = std::numbers::pi / 180.0 / 60.0;

TEST(Geodesy, ReducesMinutesToMetres) {
  EXPECT_NEAR(DifferenceToNorthEast(0, 0, kMinute, 0).North, 1842.90, 0.005);
  const double sixty = std::numbers::pi / 3.0;
  EXPECT_NEAR(DifferenceToNorthEast(sixty, 0, sixty, kMinute).East, 930.00, 0.005);
  // The radius of the parallel at 60 degrees, from its definition.
  const double w = std::sqrt(1.0 - 0.75 * kEccentricitySquared);
  EXPECT_FLOAT_EQ(DifferenceToNorthEast(sixty, 0, sixty, kMinute).East,
                  static_cast<float>(kSemiMajorAxis * 0.5 / w * kMinute));
  // W to the first power in the north as well.
  EXPECT_FLOAT_EQ(DifferenceToNorthEast(sixty, 0, sixty + kMinute, 0).North,
                  static_cast<float>(kSemiMajorAxis * (1 - kEccentricitySquared) / w * kMinute));
}

TEST(Geodesy, DoesNotWrapAtTheDateLineAndFaultsBeyondASingle) {
  EXPECT_GT(DifferenceToNorthEast(0, -3.14, 0, 3.14).East, 4.0e7F);
  ExpectFault(FaultNumber::Overflow, [] { DifferenceToNorthEast(0, 0, 1e300, 0); });
}

TEST(Geodesy, TheGeneralRoutineFollowsItsArguments) {
  const NorthEast sphere = DifferenceToNorthEastOnEllipsoid(0, 0, 0.5, 0.25, 1000.0, 0.0);
  EXPECT_FLOAT_EQ(sphere.North, 500.0F);
  EXPECT_FLOAT_EQ(sphere.East, 250.0F);
  const NorthEast flat = DifferenceToNorthEastOnEllipsoid(0, 0, 0.5, 0.25, 1000.0, 0.5);
  EXPECT_FLOAT_EQ(flat.North, 250.0F);
}

}  // namespace
}  // namespace fathomline
