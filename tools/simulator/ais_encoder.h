// Encoding AIS messages by ITU-R M.1371-5 into VDM and VDO sentences by IEC 61162-1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "simulator/sentence_writer.h"

namespace fathomline::simulator {

// What the messages carry. Numbers come first, texts behind.
enum class EncodedField {
  MessageId,
  Repeat,
  MMSI,
  NavStatus,
  RateOfTurn,
  SpeedOverGround,
  Accuracy,
  Longitude,
  Latitude,
  CourseOverGround,
  TrueHeading,
  Timestamp,
  Manoeuvre,
  Regional,
  Spare,
  RAIM,
  RadioStatus,
  Year,
  Month,
  Day,
  Hour,
  Minute,
  Second,
  PositionDevice,
  LongRange,
  Version,
  IMONumber,
  ShipType,
  ToBow,
  ToStern,
  ToPort,
  ToStarboard,
  Draught,
  DTE,
  UnitFlag,
  DisplayFlag,
  DSCFlag,
  BandFlag,
  Message22Flag,
  AssignedMode,
  CommStateFlag,
  PartNumber,
  UnitModel,
  SerialNumber,
  AidType,
  OffPosition,
  AidStatus,
  VirtualFlag,
  Name,
  CallSign,
  Destination,
  Manufacturer,
  NameExtension,
};
inline constexpr auto kFirstTextField = EncodedField::Name;
inline constexpr std::size_t kNumberFields = static_cast<std::size_t>(kFirstTextField);
inline constexpr std::size_t kTextFields =
    static_cast<std::size_t>(EncodedField::NameExtension) + 1 - kNumberFields;

struct LayoutRow {
  EncodedField field;
  int bits;
};
using MessageLayout = std::span<const LayoutRow>;

// The layouts, by message id; id 24 has two.
extern const MessageLayout kPositionReportLayout;   // 1, 2, 3
extern const MessageLayout kBaseStationLayout;      // 4
extern const MessageLayout kStaticVoyageLayout;     // 5
extern const MessageLayout kClassBPositionLayout;   // 18
extern const MessageLayout kClassBExtendedLayout;   // 19
extern const MessageLayout kAidToNavigationLayout;  // 21
extern const MessageLayout kStaticPartALayout;      // 24
extern const MessageLayout kStaticPartBLayout;

// The values of one message, in the units of the message; what is not set is 0 or empty. Texts are
// cut to the characters that their rows have, and are padded with "@". A name extension is as long
// as its text.
class MessageValues {
 public:
  void Set(EncodedField field, std::int64_t value) {
    numbers_[static_cast<std::size_t>(field)] = value;
  }
  // The text must outlive the values.
  void Set(EncodedField field, std::string_view text) {
    texts_[static_cast<std::size_t>(field) - kNumberFields] = text;
  }
  std::int64_t Number(EncodedField field) const {
    return numbers_[static_cast<std::size_t>(field)];
  }
  std::string_view Text(EncodedField field) const {
    return texts_[static_cast<std::size_t>(field) - kNumberFields];
  }

 private:
  std::array<std::int64_t, kNumberFields> numbers_{};
  std::array<std::string_view, kTextFields> texts_{};
};

// The conversions of the standard.
std::int64_t EncodeAngle(double degrees);  // longitude and latitude, 1/10000 minute
std::int64_t EncodeRateOfTurn(double degreesPerMinute);
inline constexpr std::int64_t kNoLongitude = 181 * 600'000L;
inline constexpr std::int64_t kNoLatitude = 91 * 600'000L;

struct EncodedPayload {
  std::string characters;
  int fillBits = 0;
};

void EncodePayload(MessageLayout layout, const MessageValues& values, EncodedPayload& payload);

// Writes messages as sentences, with the running sequence number of groups and alternating
// channels.
class AISSentences {
 public:
  // `address` is "!AIVDM" or "!AIVDO". The payload is spread evenly over `parts` sentences.
  void Write(SentenceWriter& writer, std::string_view address, MessageLayout layout,
             const MessageValues& values, int parts = 1);

 private:
  EncodedPayload payload_;
  int sequence_ = 0;
  bool channelB_ = false;
};

}  // namespace fathomline::simulator
