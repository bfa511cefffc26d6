// The parts that a simulated session is made of, each by itself.
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "simulator/portable_math.h"
#include "simulator/sentence_writer.h"
#include "simulator/sky.h"
#include "simulator/vessel.h"

namespace fathomline::simulator {
namespace {

TEST(SentenceWriting, RoundsAndCarries) {
  LineBatch batch;
  SentenceWriter writer(batch, true);
  writer.Begin("$XXTST");
  EXPECT_EQ(writer.Number(-2.675, 2), -2.68);
  EXPECT_EQ(writer.Number(-0.004, 2, 3), 0.0);
  EXPECT_EQ(writer.Angle(359.97, 1, 3), 0.0);
  EXPECT_DOUBLE_EQ(writer.Latitude(-59.99999999, 4), -60.0);
  EXPECT_DOUBLE_EQ(writer.Longitude(5.5, 3), 5.5);
  writer.Empty().Letter('A');
  writer.End();
  // The sum is the exclusive or of the characters between "$" and "*".
  EXPECT_EQ(batch.Line(0), "$XXTST,-2.68,000.00,000.0,6000.0000,S,00530.000,E,,A*27");
  EXPECT_EQ(batch.Text(), std::string(batch.Line(0)) + "\r\n");
}

TEST(VesselMotion, SpeedCourseAndRateOfTurnBelongToThePath) {
  for (const Scenario& scenario : Scenarios()) {
    const Vessel vessel(scenario);
    for (int seconds = 10; seconds < 5000; seconds += 13) {
      const VesselState before = vessel.At(seconds - 0.5);
      const VesselState now = vessel.At(seconds);
      const VesselState after = vessel.At(seconds + 0.5);
      const double east = after.place.east - before.place.east;
      const double north = after.place.north - before.place.north;
      EXPECT_NEAR(std::hypot(east, north) / 0.514444, now.speed, 0.01);
      if (now.speed > 0.0) {
        EXPECT_NEAR(HalfCircle(DirectionDegrees(east, north) - now.course), 0.0, 0.3);
      }
      const double turned = 60.0 * HalfCircle(after.heading - before.heading);
      EXPECT_NEAR(turned, now.rateOfTurn, 0.5 + 0.08 * std::fabs(turned)) << scenario.name;
      EXPECT_GT(now.depth, 5.0);
    }
  }
}

// Seen from the equator, a geostationary satellite d degrees of longitude away stands at
// atan((cos d - 6371/42164) / sin d).
TEST(Satellites, StandWhereGeometryPutsThem) {
  Sky sky({0.0, 25.75});
  sky.Update(12345.0);
  const double apart = (58.75 - 25.75) * std::numbers::pi / 180.0;
  const double height = std::atan((std::cos(apart) - 6371.0 / 42164.0) / std::sin(apart));
  bool found = false;
  for (const VisibleSatellite& satellite : sky.Visible(2)) {
    if (satellite.id != 105) continue;
    found = true;
    EXPECT_NEAR(satellite.elevation, height * 180.0 / std::numbers::pi, 1e-6);
    EXPECT_NEAR(satellite.azimuth, 90.0, 1e-6);
  }
  EXPECT_TRUE(found);
}

// Three on the horizon at equal angles and one overhead: HDOP^2 = VDOP^2 = 4/3.
TEST(Satellites, DilutionOfAKnownGeometry) {
  VisibleSatellite satellites[4];
  for (int i = 0; i < 3; ++i) {
    const SineCosine azimuth = SineCosineOfTurns(i / 3.0);
    satellites[i].direction = {azimuth.sine, azimuth.cosine};
  }
  satellites[3].up = 1.0;
  const Dilution dilution = DilutionOf(satellites);
  EXPECT_NEAR(dilution.horizontal, std::sqrt(4.0 / 3.0), 1e-9);
  EXPECT_NEAR(dilution.vertical, std::sqrt(4.0 / 3.0), 1e-9);
  EXPECT_EQ(DilutionOf(std::span(satellites).first(3)).position, 0.0);
}

}  // namespace
}  // namespace fathomline::simulator
