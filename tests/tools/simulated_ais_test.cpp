// AIS messages of the simulator, read back bit by bit at the positions of ITU-R M.1371.
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "simulator/ais_encoder.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {
namespace {

using enum EncodedField;

// A position report that has been published many times as an example, with its decoded values.
TEST(SimulatedAIS, EncodesAPublishedExample) {
  MessageValues values;
  values.Set(MessageId, 1);
  values.Set(MMSI, 477'553'000);
  values.Set(NavStatus, 5);
  values.Set(Longitude, EncodeAngle(-122.34583333333333));
  values.Set(Latitude, EncodeAngle(47.58283333333333));
  values.Set(CourseOverGround, 510);
  values.Set(TrueHeading, 181);
  values.Set(Timestamp, 15);
  values.Set(RadioStatus, 149'208);
  EncodedPayload payload;
  EncodePayload(kPositionReportLayout, values, payload);
  EXPECT_EQ(payload.characters, "177KQJ5000G?tO`K>RA1wUbN0TKH");
  EXPECT_EQ(payload.fillBits, 0);
}

TEST(SimulatedAIS, RateOfTurnFollowsTheRootFormula) {
  // 4.733 * sqrt(20) = 21.17
  EXPECT_EQ(EncodeRateOfTurn(20.0), 21);
  EXPECT_EQ(EncodeRateOfTurn(-20.0), -21);
  EXPECT_EQ(EncodeRateOfTurn(5000.0), 126);
}

TEST(SimulatedAIS, NameExtensionEndsOnAByte) {
  MessageValues values;
  values.Set(MessageId, 21);
  values.Set(Name, std::string_view("TWENTY CHARACTERS OK"));
  values.Set(NameExtension, std::string_view("MORE"));
  EncodedPayload payload;
  EncodePayload(kAidToNavigationLayout, values, payload);
  // 272 + 4 * 6 = 296 bits, 37 bytes, in 50 characters of 6 bits.
  EXPECT_EQ(payload.characters.size(), 50U);
  EXPECT_EQ(payload.fillBits, 4);
  const std::string bits = PayloadBits(payload.characters);
  EXPECT_EQ(SixBitText(bits, 44, 163), "TWENTY CHARACTERS OK");
  EXPECT_EQ(SixBitText(bits, 273, 296), "MORE");
}

struct LayoutPosition {
  std::size_t longitude;
  std::size_t speed;  // 0 where there is none
  std::size_t course;
};
const std::map<std::int64_t, LayoutPosition> kPositions{{1, {62, 51, 117}},  {3, {62, 51, 117}},
                                                        {4, {80, 0, 0}},     {18, {58, 47, 113}},
                                                        {19, {58, 47, 113}}, {21, {165, 0, 0}}};
const std::map<std::int64_t, std::size_t> kBitCounts{{1, 168},  {3, 168},  {4, 168},  {5, 424},
                                                     {18, 168}, {19, 312}, {21, 272}, {24, 168}};

TEST(SimulatedAIS, StreamDecodesBackToTheTraffic) {
  SimulationOptions options = OptionsOf("voyage", 1500.0, {{SentenceKind::VDM, 1.0}});
  const Traffic traffic(*options.scenario, options.seed);
  const LocalMap map(options.scenario->origin);
  std::map<std::int64_t, int> byMmsi;
  for (int i = 0; i < traffic.Count(); ++i) {
    EXPECT_TRUE(byMmsi.emplace(traffic.Identity(i).mmsi, i).second);
  }

  std::map<std::int64_t, int> count;
  std::string assembled;
  int expectedPart = 1;
  Simulator simulator(options);
  const auto check = [&](const std::string& payload, int fill, double seconds) {
    const std::string bits = PayloadBits(payload);
    const std::int64_t id = Unsigned(bits, 1, 6);
    ASSERT_TRUE(byMmsi.contains(Unsigned(bits, 9, 38)));
    const int target = byMmsi[Unsigned(bits, 9, 38)];
    const TargetIdentity& identity = traffic.Identity(target);
    const TargetMotion motion = traffic.Motion(target, seconds);
    ++count[id];

    ASSERT_TRUE(kBitCounts.contains(id)) << id;
    std::size_t expectedBits = kBitCounts.at(id);
    if (id == 24 && Unsigned(bits, 39, 40) == 0) expectedBits = 160;
    if (id == 21 && identity.name.size() > 20) {
      expectedBits += (identity.name.size() - 20) * 6;
      expectedBits = (expectedBits + 7) / 8 * 8;
    }
    EXPECT_EQ(bits.size() - static_cast<std::size_t>(fill), expectedBits) << id;

    if (const auto layout = kPositions.find(id); layout != kPositions.end()) {
      const auto [longitude, speed, course] = layout->second;
      const GeoPoint place = map.ToGeo(motion.place);
      EXPECT_NEAR(static_cast<double>(Signed(bits, longitude, longitude + 27)) / 600'000.0,
                  place.longitude, 1e-6);
      EXPECT_NEAR(static_cast<double>(Signed(bits, longitude + 28, longitude + 54)) / 600'000.0,
                  place.latitude, 1e-6);
      if (speed != 0) {
        EXPECT_NEAR(static_cast<double>(Unsigned(bits, speed, speed + 9)) / 10.0, motion.speed,
                    0.051);
        const double sent = static_cast<double>(Unsigned(bits, course, course + 11)) / 10.0;
        EXPECT_NEAR(std::remainder(sent - motion.course, 360.0), 0.0, 0.051);
      }
    }
    if (id == 1 || id == 3) {
      const double root = static_cast<double>(Signed(bits, 43, 50)) / 4.733;
      EXPECT_NEAR(root * std::fabs(root), motion.rateOfTurn,
                  0.2 + 0.1 * std::fabs(motion.rateOfTurn));
      EXPECT_EQ(Unsigned(bits, 39, 42), identity.navStatus);
    }
    if (id == 5) {
      EXPECT_EQ(Unsigned(bits, 41, 70), identity.imo);
      EXPECT_EQ(SixBitText(bits, 71, 112), identity.callSign);
      EXPECT_EQ(SixBitText(bits, 113, 232), identity.name);
      EXPECT_EQ(Unsigned(bits, 233, 240), identity.shipType);
      EXPECT_EQ(Unsigned(bits, 241, 249), identity.toBow);
      EXPECT_EQ(Unsigned(bits, 265, 270), identity.toStarboard);
      EXPECT_EQ(Unsigned(bits, 275, 278), 4);  // a month after the start
      EXPECT_EQ(Unsigned(bits, 279, 283), identity.etaDay);
      EXPECT_EQ(Unsigned(bits, 295, 302), identity.draughtDecimetres);
      EXPECT_EQ(SixBitText(bits, 303, 422), identity.destination);
    }
    if (id == 19) {
      EXPECT_EQ(SixBitText(bits, 144, 263), identity.name);
      EXPECT_EQ(Unsigned(bits, 264, 271), identity.shipType);
      EXPECT_EQ(Unsigned(bits, 296, 301), identity.toStarboard);
    }
    if (id == 21) {
      EXPECT_EQ(SixBitText(bits, 44, 163), identity.name.substr(0, 20));
      EXPECT_EQ(Unsigned(bits, 270, 270), identity.isVirtual ? 1 : 0);
    }
    if (id == 24 && expectedBits == 160) {
      EXPECT_EQ(SixBitText(bits, 41, 160), identity.name);
    } else if (id == 24) {
      EXPECT_EQ(Unsigned(bits, 41, 48), identity.shipType);
      EXPECT_EQ(SixBitText(bits, 91, 132), identity.callSign);
      EXPECT_EQ(Unsigned(bits, 157, 162), identity.toStarboard);
    }
    if (id == 4) {
      const auto second = static_cast<std::int64_t>(seconds) + 18'367;  // 05:06:07
      EXPECT_EQ(Unsigned(bits, 39, 52), 2026);
      EXPECT_EQ(
          Unsigned(bits, 62, 66) * 3600 + Unsigned(bits, 67, 72) * 60 + Unsigned(bits, 73, 78),
          second);
    }
  };

  ForEachEpoch(simulator, [&](const Epoch& epoch) {
    for (std::size_t i = 0; i < epoch.lines.Count(); ++i) {
      const auto fields = Fields(epoch.lines.Line(i));
      ASSERT_EQ(fields.size(), 7U);
      const int parts = std::stoi(fields[1]);
      EXPECT_EQ(std::stoi(fields[2]), expectedPart);
      EXPECT_EQ(fields[3].empty(), parts == 1);
      assembled += fields[5];
      if (expectedPart++ < parts) continue;
      check(assembled, std::stoi(fields[6]), ToSeconds(epoch.time));
      assembled.clear();
      expectedPart = 1;
    }
  });
  for (const auto& [id, bits] : kBitCounts) EXPECT_GT(count[id], 3) << id;
}

TEST(SimulatedAIS, OwnShipReportsWhatTheReceiverHas) {
  SimulationOptions options = OptionsOf("voyage", 3000.0, {{SentenceKind::VDO, 1.0}});
  int unavailable = 0;
  Simulator simulator(options);
  ForEachEpoch(simulator, [&](const Epoch& epoch) {
    const auto fields = Fields(epoch.lines.Line(epoch.lines.Count() - 1));
    EXPECT_EQ(fields[0], "!AIVDO");
    const std::string bits = PayloadBits(fields[5]);
    ASSERT_TRUE(epoch.fix.has_value());
    const double longitude = static_cast<double>(Signed(bits, 62, 89)) / 600'000.0;
    if (epoch.fix->quality == 0) {
      ++unavailable;
      EXPECT_EQ(longitude, 181.0);
    } else {
      EXPECT_NEAR(longitude, epoch.fix->position.longitude, 1e-4);
    }
  });
  EXPECT_GT(unavailable, 5);
}

}  // namespace
}  // namespace fathomline::simulator
