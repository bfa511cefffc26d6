#include "simulator/ais_encoder.h"

#include <cmath>

namespace fathomline::simulator {
namespace {

using enum EncodedField;

constexpr LayoutRow kPositionReport[] = {
    {MessageId, 6},        {Repeat, 2},    {MMSI, 30},      {NavStatus, 4}, {RateOfTurn, 8},
    {SpeedOverGround, 10}, {Accuracy, 1},  {Longitude, 28}, {Latitude, 27}, {CourseOverGround, 12},
    {TrueHeading, 9},      {Timestamp, 6}, {Manoeuvre, 2},  {Spare, 3},     {RAIM, 1},
    {RadioStatus, 19},
};
constexpr LayoutRow kBaseStation[] = {
    {MessageId, 6},  {Repeat, 2},       {MMSI, 30},          {Year, 14},     {Month, 4},
    {Day, 5},        {Hour, 5},         {Minute, 6},         {Second, 6},    {Accuracy, 1},
    {Longitude, 28}, {Latitude, 27},    {PositionDevice, 4}, {LongRange, 1}, {Spare, 9},
    {RAIM, 1},       {RadioStatus, 19},
};
constexpr LayoutRow kStaticVoyage[] = {
    {MessageId, 6},      {Repeat, 2},   {MMSI, 30}, {Version, 2}, {IMONumber, 30}, {CallSign, 42},
    {Name, 120},         {ShipType, 8}, {ToBow, 9}, {ToStern, 9}, {ToPort, 6},     {ToStarboard, 6},
    {PositionDevice, 4}, {Month, 4},    {Day, 5},   {Hour, 5},    {Minute, 6},     {Draught, 8},
    {Destination, 120},  {DTE, 1},      {Spare, 1},
};
constexpr LayoutRow kClassBPosition[] = {
    {MessageId, 6},         {Repeat, 2},       {MMSI, 30},      {Regional, 8},
    {SpeedOverGround, 10},  {Accuracy, 1},     {Longitude, 28}, {Latitude, 27},
    {CourseOverGround, 12}, {TrueHeading, 9},  {Timestamp, 6},  {Spare, 2},
    {UnitFlag, 1},          {DisplayFlag, 1},  {DSCFlag, 1},    {BandFlag, 1},
    {Message22Flag, 1},     {AssignedMode, 1}, {RAIM, 1},       {CommStateFlag, 1},
    {RadioStatus, 19},
};
constexpr LayoutRow kClassBExtended[] = {
    {MessageId, 6},
    {Repeat, 2},
    {MMSI, 30},
    {Regional, 8},
    {SpeedOverGround, 10},
    {Accuracy, 1},
    {Longitude, 28},
    {Latitude, 27},
    {CourseOverGround, 12},
    {TrueHeading, 9},
    {Timestamp, 6},
    {Spare, 4},
    {Name, 120},
    {ShipType, 8},
    {ToBow, 9},
    {ToStern, 9},
    {ToPort, 6},
    {ToStarboard, 6},
    {PositionDevice, 4},
    {RAIM, 1},
    {DTE, 1},
    {AssignedMode, 1},
    {Spare, 4},
};
constexpr LayoutRow kAidToNavigation[] = {
    {MessageId, 6},     {Repeat, 2},      {MMSI, 30},          {AidType, 5},      {Name, 120},
    {Accuracy, 1},      {Longitude, 28},  {Latitude, 27},      {ToBow, 9},        {ToStern, 9},
    {ToPort, 6},        {ToStarboard, 6}, {PositionDevice, 4}, {Timestamp, 6},    {OffPosition, 1},
    {AidStatus, 8},     {RAIM, 1},        {VirtualFlag, 1},    {AssignedMode, 1}, {Spare, 1},
    {NameExtension, 0},
};
constexpr LayoutRow kStaticPartA[] = {
    {MessageId, 6}, {Repeat, 2}, {MMSI, 30}, {PartNumber, 2}, {Name, 120},
};
constexpr LayoutRow kStaticPartB[] = {
    {MessageId, 6},     {Repeat, 2},    {MMSI, 30},         {PartNumber, 2},     {ShipType, 8},
    {Manufacturer, 18}, {UnitModel, 4}, {SerialNumber, 20}, {CallSign, 42},      {ToBow, 9},
    {ToStern, 9},       {ToPort, 6},    {ToStarboard, 6},   {PositionDevice, 4}, {Spare, 2},
};

constexpr int Bits(MessageLayout layout) {
  int sum = 0;
  for (const LayoutRow& row : layout) sum += row.bits;
  return sum;
}
static_assert(Bits(kPositionReport) == 168);
static_assert(Bits(kBaseStation) == 168);
static_assert(Bits(kStaticVoyage) == 424);
static_assert(Bits(kClassBPosition) == 168);
static_assert(Bits(kClassBExtended) == 312);
static_assert(Bits(kAidToNavigation) == 272);
static_assert(Bits(kStaticPartA) == 160);
static_assert(Bits(kStaticPartB) == 168);

constexpr int kBitsPerCharacter = 6;

// Six-bit text holds the characters "@" to "_" as 0 to 31 and blank to "?" as 32 to 63.
constexpr std::uint64_t SixBits(char character) {
  return static_cast<std::uint64_t>(character) & 63U;
}

class BitPacker {
 public:
  explicit BitPacker(std::string& characters) : characters_(characters) {}

  // The lowest bits of the value, most significant first; at most 32.
  void Put(std::uint64_t value, int bits) {
    pending_ = (pending_ << bits) | (value & ((std::uint64_t{1} << bits) - 1));
    count_ += bits;
    total_ += bits;
    while (count_ >= kBitsPerCharacter) {
      count_ -= kBitsPerCharacter;
      const auto six = static_cast<int>((pending_ >> count_) & 63U);
      characters_ += static_cast<char>(six < 40 ? six + 48 : six + 56);
    }
  }

  void PutText(std::string_view text, int bits) {
    for (std::size_t i = 0; bits >= kBitsPerCharacter; ++i, bits -= kBitsPerCharacter) {
      Put(i < text.size() ? SixBits(text[i]) : 0, kBitsPerCharacter);
    }
  }

  int Total() const { return total_; }
  // Completes the last character and returns the number of bits that were added.
  int Finish() {
    const int fill = (kBitsPerCharacter - count_) % kBitsPerCharacter;
    if (fill > 0) Put(0, fill);
    return fill;
  }

 private:
  std::string& characters_;
  std::uint64_t pending_ = 0;
  int count_ = 0;
  int total_ = 0;
};

}  // namespace

const MessageLayout kPositionReportLayout = kPositionReport;
const MessageLayout kBaseStationLayout = kBaseStation;
const MessageLayout kStaticVoyageLayout = kStaticVoyage;
const MessageLayout kClassBPositionLayout = kClassBPosition;
const MessageLayout kClassBExtendedLayout = kClassBExtended;
const MessageLayout kAidToNavigationLayout = kAidToNavigation;
const MessageLayout kStaticPartALayout = kStaticPartA;
const MessageLayout kStaticPartBLayout = kStaticPartB;

std::int64_t EncodeAngle(double degrees) {
  return std::llround(degrees * 600'000.0);
}

std::int64_t EncodeRateOfTurn(double degreesPerMinute) {
  const std::int64_t magnitude = std::llround(4.733 * std::sqrt(std::fabs(degreesPerMinute)));
  const std::int64_t limited = magnitude > 126 ? 126 : magnitude;
  return degreesPerMinute < 0.0 ? -limited : limited;
}

void EncodePayload(MessageLayout layout, const MessageValues& values, EncodedPayload& payload) {
  payload.characters.clear();
  BitPacker packer(payload.characters);
  for (const LayoutRow& row : layout) {
    if (row.field == NameExtension) {
      const std::string_view text = values.Text(row.field);
      packer.PutText(text, static_cast<int>(text.size()) * kBitsPerCharacter);
      // The message ends on a whole byte.
      packer.Put(0, (8 - packer.Total() % 8) % 8);
    } else if (row.field >= kFirstTextField) {
      packer.PutText(values.Text(row.field), row.bits);
    } else {
      packer.Put(static_cast<std::uint64_t>(values.Number(row.field)), row.bits);
    }
  }
  payload.fillBits = packer.Finish();
}

void AISSentences::Write(SentenceWriter& writer, std::string_view address, MessageLayout layout,
                         const MessageValues& values, int parts) {
  EncodePayload(layout, values, payload_);
  const std::string_view characters = payload_.characters;
  const std::size_t size =
      (characters.size() + static_cast<std::size_t>(parts) - 1) / static_cast<std::size_t>(parts);
  for (int part = 1; part <= parts; ++part) {
    const std::size_t from = static_cast<std::size_t>(part - 1) * size;
    writer.Begin(address);
    writer.Integer(parts);
    writer.Integer(part);
    if (parts > 1) {
      writer.Integer(sequence_);
    } else {
      writer.Empty();
    }
    writer.Letter(channelB_ ? 'B' : 'A');
    writer.Text(characters.substr(from, size));
    writer.Integer(part == parts ? payload_.fillBits : 0);
    writer.End();
  }
  if (parts > 1) sequence_ = (sequence_ + 1) % 10;
  channelB_ = !channelB_;
}

}  // namespace fathomline::simulator
