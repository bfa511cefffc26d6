// AIS messages of the simulator, read back bit by bit at the positions of ITU-R M.1371.
#include <cmath>
#include <gtest/gtest.h>
#include <map>
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
  // 4.733 * sqrt(20) = 21.17
  EXPECT_EQ(EncodeRateOfTurn(-20.0), -21);
  EXPECT_EQ(EncodeRateOfTurn(5000.0), 126);
}

struct MessageForm {
  std::size_t bits;
  std::size_t longitude = 0;  // 0 where there is none, as of the next two
  std::size_t speed = 0;
  std::size_t course = 0;
};
const std::map<std::int64_t, MessageForm> kForms{
    {1, {168, 62, 51, 117}},  {3, {168, 62, 51, 117}},  {4, {168, 80}},   {5, {424}},
    {18, {168, 58, 47, 113}}, {19, {312, 58, 47, 113}}, {21, {272, 165}}, {24, {168}}};

TEST(SimulatedAIS, StreamDecodesBackToTheTraffic) {
  SimulationOptions options = OptionsOf("voyage", 1500.0, {{SentenceKind::VDM, 1.0}});
  const Traffic traffic(*options.scenario, options.seed);
  const LocalMap map(options.scenario->origin);
  std::map<std::int64_t, int> byMmsi;
  for (int i = 0; i < traffic.Count(); ++i) byMmsi[traffic.Identity(i).mmsi] = i;

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

    const MessageForm& form = kForms.at(id);
    std::size_t expectedBits = form.bits;
    if (id == 24 && Unsigned(bits, 39, 40) == 0) expectedBits = 160;
    if (id == 21 && identity.name.size() > 20) {
      expectedBits += (identity.name.size() - 20) * 6;
      expectedBits = (expectedBits + 7) / 8 * 8;
    }
    EXPECT_EQ(bits.size() - static_cast<std::size_t>(fill), expectedBits) << id;

    if (const std::size_t at = form.longitude; at != 0) {
      const GeoPoint place = map.ToGeo(motion.place);
      EXPECT_NEAR(Angle(bits, at, at + 27), place.longitude, 1e-6);
      EXPECT_NEAR(Angle(bits, at + 28, at + 54), place.latitude, 1e-6);
    }
    if (form.speed != 0) {
      const auto tenths = [&](std::size_t first, std::size_t last) {
        return static_cast<double>(Unsigned(bits, first, last)) / 10.0;
      };
      EXPECT_NEAR(tenths(form.speed, form.speed + 9), motion.speed, 0.051);
      const double course = tenths(form.course, form.course + 11);
      EXPECT_NEAR(std::remainder(course - motion.course, 360.0), 0.0, 0.051);
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
      if (identity.name.size() > 20) {
        EXPECT_EQ(SixBitText(bits, 273, expectedBits), identity.name.substr(20));
      }
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
  for (const auto& [id, form] : kForms) EXPECT_GT(count[id], 3) << id;
}

}  // namespace
}  // namespace fathomline::simulator
