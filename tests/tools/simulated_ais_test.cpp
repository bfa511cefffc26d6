// AIS messages of the simulator.
#include <gtest/gtest.h>

#include "simulator/ais_encoder.h"

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

}  // namespace
}  // namespace fathomline::simulator
