// The AIS stations that each system has heard.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ais/message_ids.h"
#include "base/datetime.h"
#include "base/dialogs.h"
#include "base/per_system.h"

namespace fathomline {

struct AISMessages;

// One station, with the latest values of each kind that came from it. Units as in the messages;
// numbers are NoValue where a message said so, texts are as received, not trimmed.
struct AISTarget {
  std::int32_t MMSI = 0;
  std::string Country;
  std::string AISClass;
  std::string NavStatusText;
  float ROT = 0.0F;
  float SOG = 0.0F;
  std::string PositionAccuracyText;
  double Longitude = 0.0;
  double Latitude = 0.0;
  float COG = 0.0F;
  float Heading = 0.0F;
  std::int16_t Timestamp = 0;
  std::int16_t Year = 0;
  std::int16_t Month = 0;
  std::int16_t Day = 0;
  std::int16_t Hour = 0;
  std::int16_t Minute = 0;
  std::int32_t IMONumber = 0;
  std::string CallSign;
  std::string Name;
  std::string ShipTypeFullText;
  std::string ShipTypeText;
  std::string CargoText;
  std::int16_t DimensionA = 0;
  std::int16_t DimensionB = 0;
  std::int16_t DimensionC = 0;
  std::int16_t DimensionD = 0;
  std::int16_t Altitude = 0;
  std::string EPFSText;
  DateTime ETA;
  float Draught = 0.0F;
  std::string Destination;
  DateTime FirstMessage;  // sentence time, as LastMessage
  DateTime LastMessage;
  std::int32_t PeriodSeconds = 0;
  // By message id; counted for ids 1, 2, 3, 4, 5 and 9.
  std::array<std::int32_t, kAISMessageIds + 1> MessageCount{};
};

// The name of a class B station that sends none.
inline constexpr const char* kUnnamedClassB = "Class B vessel";

// The country of an MMSI by its maritime identification digits, "unknown" where they are not
// assigned. An MMSI with leading zeros is read from its first digits. Raises OutOfRange where the
// digits come to more than 1000.
std::string_view CountryOf(std::int32_t mmsi);

// The tables of targets, in the order of first reception. Targets are never moved or deleted.
class AISStore {
 public:
  static constexpr int kMaximumTargets = 500;

  explicit AISStore(Dialogs& dialogs);

  // Files the message that the system has just decoded, or notes the time of an open group.
  // `system` is 1 to 4. Asks (a box without a choice) when a new station finds no room.
  void StoreAISTarget(int system, std::int16_t messageId, const AISMessages& messages,
                      DateTime sentenceTime);

  std::int16_t AISTargetCount(int system) const { return tables_[system].count; }
  // The target of the latest message; 0 before the first.
  std::int16_t AISCurrentTarget(int system) const { return tables_[system].current; }
  // The latest message named no target.
  bool AISNoTarget(int system) const { return tables_[system].noTarget; }
  // `index` is 1 to the count; 0 is an empty target. Raises OutOfRange beyond the table.
  const AISTarget& Target(int system, int index) const;

 private:
  // A power of two well above the number of targets.
  static constexpr std::size_t kSlots = 2048;

  struct Table {
    std::vector<AISTarget> targets;
    std::array<std::int16_t, kSlots> slots{};  // target indexes by hash of the MMSI, 0 free
    std::int16_t count = 0;
    std::int16_t current = 0;
    bool noTarget = false;
  };

  // The slot of a station, or the free one where it belongs.
  static std::int16_t& SlotOf(Table& table, std::int32_t mmsi);
  static AISTarget& AddTarget(Table& table, std::int16_t& slot, std::int32_t mmsi);

  Dialogs& dialogs_;
  PerSystem<Table> tables_;
};

}  // namespace fathomline
