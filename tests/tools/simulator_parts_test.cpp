// The parts that a simulated session is made of, each by itself.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <set>
#include <vector>

#include "simulator/portable_math.h"
#include "simulator/random.h"
#include "simulator/route.h"
#include "simulator/sentence_writer.h"
#include "simulator/sky.h"
#include "simulator/vessel.h"

namespace fathomline::simulator {
namespace {

TEST(PortableMath, AgreesWithTheLibrary) {
  for (int i = -140; i <= 140; ++i) {
    const double degrees = 7.3 * i;
    const double radians = degrees * std::numbers::pi / 180.0;
    EXPECT_NEAR(SineCosineOfDegrees(degrees).sine, std::sin(radians), 1e-14) << degrees;
    EXPECT_NEAR(SineCosineOfDegrees(degrees).cosine, std::cos(radians), 1e-14) << degrees;
    EXPECT_NEAR(DirectionDegrees(std::sin(radians), std::cos(radians)),
                std::remainder(degrees, 360.0), 1e-12)
        << degrees;
  }
  for (int i = -45; i <= 45; ++i) {
    const double exponent = 0.9 * i;
    EXPECT_NEAR(Exponential(exponent) / std::exp(exponent), 1.0, 1e-14) << exponent;
    EXPECT_NEAR(Logarithm(std::exp(exponent)), exponent, 1e-14 * (1.0 + std::fabs(exponent)));
  }
  EXPECT_EQ(DirectionDegrees(0.0, 0.0), 0.0);
  EXPECT_EQ(DirectionDegrees(0.0, -1.0), 180.0);
  EXPECT_EQ(FullCircle(-1e-18), 0.0);
  EXPECT_EQ(HalfCircle(270.0), -90.0);
}

TEST(RandomNumbers, NormalHasItsMomentsAndStreamsDiffer) {
  Random random(7, RandomStream::Gyro);
  constexpr int kDraws = 200'000;
  double sum = 0.0;
  double squares = 0.0;
  int beyondTwo = 0;
  for (int i = 0; i < kDraws; ++i) {
    const double value = random.Normal();
    sum += value;
    squares += value * value;
    if (std::fabs(value) > 2.0) ++beyondTwo;
  }
  EXPECT_NEAR(sum / kDraws, 0.0, 0.01);
  EXPECT_NEAR(squares / kDraws, 1.0, 0.02);
  EXPECT_NEAR(static_cast<double>(beyondTwo) / kDraws, 0.0455, 0.003);
  EXPECT_NE(Random(7, RandomStream::Gyro).Bits(), Random(7, RandomStream::Log).Bits());
  EXPECT_NE(Random(7, RandomStream::Gyro).Bits(), Random(8, RandomStream::Gyro).Bits());
}

TEST(RandomNumbers, CorrelatedNoiseForgetsWithItsTimeConstant) {
  Random random(3, RandomStream::PositionNoise);
  CorrelatedNoise noise(random, 20.0);
  double previous = noise.Next(random, 20.0);
  double squares = 0.0;
  double products = 0.0;
  constexpr int kDraws = 100'000;
  for (int i = 0; i < kDraws; ++i) {
    const double value = noise.Next(random, 20.0);
    squares += value * value;
    products += value * previous;
    previous = value;
  }
  EXPECT_NEAR(squares / kDraws, 1.0, 0.02);
  EXPECT_NEAR(products / squares, 1.0 / std::numbers::e, 0.02);
}

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

TEST(SentenceWriting, CalendarPassesMidnightAndLeapDay) {
  UtcCalendar calendar(DateFromParts(2028, 2, 28) + TimeFromParts(23, 59, 59));
  const UtcMoment before = calendar.At(990'000'001);
  EXPECT_EQ(before.second, 59);
  EXPECT_EQ(before.hundredths, 99);
  const UtcMoment after = calendar.At(kOneSecond);
  EXPECT_EQ(after.day, 29);
  EXPECT_EQ(after.hour + after.minute + after.second + after.hundredths, 0);
  EXPECT_EQ(calendar.At(kOneSecond * 86401).month, 3);
}

TEST(Routes, CloseWithoutJumps) {
  const MapPoint corners[] = {{0, 0}, {0, 4000}, {3000, 4000}, {2500, -1000}};
  const Route route(corners, 500.0);
  RoutePoint previous = route.At(-1.0);
  double turned = 0.0;
  for (int distance = 0; distance < static_cast<int>(route.Length()); ++distance) {
    const RoutePoint point = route.At(distance);
    EXPECT_NEAR(std::hypot(point.place.east - previous.place.east,
                           point.place.north - previous.place.north),
                1.0, 1e-4)
        << distance;
    turned += HalfCircle(point.course - previous.course);
    previous = point;
  }
  EXPECT_NEAR(turned, 360.0, 0.5);
  EXPECT_NEAR(route.At(2000.0).place.north, route.At(2000.0 + 3.0 * route.Length()).place.north,
              1e-6);
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

TEST(Satellites, StandWhereGeometryPutsThem) {
  Sky sky({0.0, 31.5});
  sky.Update(0.0);
  bool overhead = false;
  for (const VisibleSatellite& satellite : sky.Visible(0)) {
    if (satellite.id == 36) overhead = satellite.elevation > 89.9;
  }
  EXPECT_TRUE(overhead);

  // Seen from the equator, a geostationary satellite d degrees of longitude away stands at
  // atan((cos d - 6371/42164) / sin d).
  Sky west({0.0, 25.75});
  west.Update(12345.0);
  for (const VisibleSatellite& satellite : west.Visible(2)) {
    if (satellite.id != 105) continue;
    const double apart = (58.75 - 25.75) * std::numbers::pi / 180.0;
    EXPECT_NEAR(satellite.elevation,
                std::atan((std::cos(apart) - 6371.0 / 42164.0) / std::sin(apart)) * 180.0 /
                    std::numbers::pi,
                1e-6);
    EXPECT_NEAR(satellite.azimuth, 90.0, 1e-6);
  }
}

TEST(Satellites, RiseMoveAndSet) {
  Sky sky({59.0, 5.4});
  std::set<int> seen;
  for (int seconds = 0; seconds < 86164; seconds += 300) {
    sky.Update(seconds);
    EXPECT_GE(sky.Visible(0).size(), 8U);
    for (std::size_t c = 0; c < kConstellationCount; ++c) {
      for (const VisibleSatellite& satellite : sky.Visible(c)) {
        seen.insert(satellite.id);
        // Orbits inclined by 55 degrees leave a hole in the north: over latitude 55 beyond the pole
        // a satellite stands some 10 degrees high here.
        const bool northward = satellite.azimuth < 10.0 || satellite.azimuth > 350.0;
        if (c == 0 && northward) {
          EXPECT_LT(satellite.elevation, 15.0);
        }
      }
    }
  }
  for (int id = 1; id <= 30; ++id) EXPECT_TRUE(seen.contains(id)) << id;
  for (int id = 65; id <= 88; ++id) EXPECT_TRUE(seen.contains(id)) << id;
}

TEST(Satellites, DilutionOfAKnownGeometry) {
  // Three on the horizon at equal angles and one overhead: the normal matrix gives
  // HDOP^2 = 4/3 and VDOP^2 = 4/3.
  std::vector<VisibleSatellite> satellites(4);
  for (std::size_t i = 0; i < 3; ++i) {
    const SineCosine azimuth = SineCosineOfTurns(static_cast<double>(i) / 3.0);
    satellites[i].direction = {azimuth.sine, azimuth.cosine};
  }
  satellites[3].up = 1.0;
  const Dilution dilution = DilutionOf(satellites);
  EXPECT_NEAR(dilution.horizontal, std::sqrt(4.0 / 3.0), 1e-9);
  EXPECT_NEAR(dilution.vertical, std::sqrt(4.0 / 3.0), 1e-9);
  EXPECT_NEAR(dilution.position, std::sqrt(8.0 / 3.0), 1e-9);
  EXPECT_EQ(DilutionOf(std::span(satellites).first(3)).position, 0.0);
}

}  // namespace
}  // namespace fathomline::simulator
