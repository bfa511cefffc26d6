#include "ais/target_store.h"

#include <string_view>

#include "ais/ais_messages.h"
#include "ais/mid_table.h"
#include "base/fault.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr std::string_view kBlankName = "                    ";
static_assert(kBlankName.size() == 20);

// The station of a message, 0 for none. Reports of ids 2 and 3, like open groups, go to the
// station of the latest id 1.
std::int32_t SenderOf(std::int16_t messageId, const AISMessages& messages) {
  if (messageId < 4) return messages.Id1.MMSI;
  switch (messageId) {
    case 4:
      return messages.Id4.MMSI;
    case 5:
      return messages.Id5.MMSI;
    case 9:
      return messages.Id9.MMSI;
    case 18:
      return messages.Id18.MMSI;
    case 19:
      return messages.Id19.MMSI;
    case 21:
      return messages.Id21.MMSI;
    default:
      return 0;
  }
}

// What the first message of a station says about it once and for all.
void SetClass(AISTarget& target, std::int16_t messageId) {
  switch (messageId) {
    case 4:
      target.AISClass = "Base Station";
      target.Name = "Base Station";
      break;
    case 9:
      target.AISClass = "SAR Aircraft";
      target.Name = "SAR Aircraft";
      break;
    case 18:
    case 19:
      target.AISClass = "Class B Vessel";
      break;
    case 21:
      target.AISClass = "Aids to Navigation";
      break;
    default:
      target.AISClass = "Class A Vessel";
      break;
  }
}

template <class Message>
void CopyPosition(AISTarget& target, const Message& message) {
  target.Latitude = message.Latitude;
  target.Longitude = message.Longitude;
}

template <class Message>
void CopyMotion(AISTarget& target, const Message& message) {
  CopyPosition(target, message);
  target.SOG = message.SOG;
  target.COG = message.COG;
}

template <class Message>
void CopyFix(AISTarget& target, const Message& message) {
  target.PositionAccuracyText = message.PositionAccuracyText;
  target.Timestamp = message.Timestamp;
}

template <class Message>
void CopyInstallation(AISTarget& target, const Message& message) {
  target.DimensionA = message.DimensionA;
  target.DimensionB = message.DimensionB;
  target.DimensionC = message.DimensionC;
  target.DimensionD = message.DimensionD;
  target.EPFSText = message.EPFSText;
}

void CopyName(AISTarget& target, const std::string& name, const char* whenBlank) {
  if (name == kBlankName) {
    target.Name = whenBlank;
  } else {
    target.Name = name;
  }
}

// Stations that never send them.
void NoVoyageData(AISTarget& target) {
  target.CallSign = kNotAvailable;
  target.ShipTypeFullText = kNotAvailable;
  target.Destination = kNotAvailable;
}

void Copy(AISTarget& target, const AISPositionReport& message) {
  CopyMotion(target, message);
  CopyFix(target, message);
  target.Heading = message.Heading;
  target.NavStatusText = message.NavStatusText;
  target.ROT = message.ROT;
}

void Copy(AISTarget& target, const AISBaseStationReport& message) {
  CopyPosition(target, message);
  target.PositionAccuracyText = message.PositionAccuracyText;
  target.Year = message.Year;
  target.Month = message.Month;
  target.Day = message.Day;
  target.Hour = message.Hour;
  target.Minute = message.Minute;
  target.Timestamp = message.Second;
  target.EPFSText = message.EPFSText;
  NoVoyageData(target);
}

void Copy(AISTarget& target, const AISStaticVoyageData& message) {
  CopyInstallation(target, message);
  target.Name = message.Name;
  target.CallSign = message.CallSign;
  target.IMONumber = message.IMONumber;
  target.ShipTypeText = message.ShipTypeText;
  target.CargoText = message.CargoText;
  target.ETA = message.ETA;
  target.Draught = message.Draught;
  target.Destination = message.Destination;
}

void Copy(AISTarget& target, const AISSARReport& message) {
  CopyMotion(target, message);
  CopyFix(target, message);
  target.Altitude = message.Altitude;
  target.EPFSText = kNotAvailable;
  NoVoyageData(target);
}

// Accuracy and time stamp are those of the extended report, whichever station sent it.
void Copy(AISTarget& target, const AISClassBPosition& message, const AISClassBExtended& extended) {
  CopyMotion(target, message);
  CopyFix(target, extended);
  target.Heading = message.Heading;
  target.Name = kUnnamedClassB;
  target.EPFSText = kNotAvailable;
  NoVoyageData(target);
}

void Copy(AISTarget& target, const AISClassBExtended& message) {
  CopyMotion(target, message);
  CopyFix(target, message);
  CopyInstallation(target, message);
  CopyName(target, message.Name, kUnnamedClassB);
  target.Heading = message.Heading;
  target.ShipTypeFullText = message.ShipTypeFullText;
  target.CallSign = kNotAvailable;
  target.Destination = kNotAvailable;
}

void Copy(AISTarget& target, const AISAidToNavigation& message) {
  CopyPosition(target, message);
  CopyFix(target, message);
  CopyInstallation(target, message);
  CopyName(target, message.Name, "Aid to Navigation");
  NoVoyageData(target);
}

void CopyMessage(AISTarget& target, std::int16_t messageId, const AISMessages& messages) {
  const auto counted = [&](const auto& message) {
    Copy(target, message);
    ++target.MessageCount[static_cast<std::size_t>(messageId)];
  };
  switch (messageId) {
    case 1:
      return counted(messages.Id1);
    case 2:
      return counted(messages.Id2);
    case 3:
      return counted(messages.Id3);
    case 4:
      return counted(messages.Id4);
    case 5:
      return counted(messages.Id5);
    case 9:
      return counted(messages.Id9);
    case 18:
      return Copy(target, messages.Id18, messages.Id19);
    case 19:
      return Copy(target, messages.Id19);
    case 21:
      return Copy(target, messages.Id21);
    default:
      return;
  }
}

}  // namespace

std::string_view CountryOf(std::int32_t mmsi) {
  // In single precision, so that a number just below a whole million counts as that million.
  auto digits = static_cast<std::int16_t>(static_cast<float>(mmsi / 1000000.0));
  if (digits < 10) digits = ToInt16(mmsi / 10000.0);
  const std::string_view country = TextOf(MIDTable, static_cast<std::size_t>(digits));
  return country.empty() ? "unknown" : country;
}

AISStore::AISStore(Dialogs& dialogs) : dialogs_(dialogs) {
  for (Table& table : tables_) table.targets.resize(kMaximumTargets + 1);
}

const AISTarget& AISStore::Target(int system, int index) const {
  const Table& table = tables_[system];
  const auto position = static_cast<std::size_t>(index);
  if (position >= table.targets.size()) Raise(FaultNumber::OutOfRange);
  return table.targets[position];
}

std::int16_t& AISStore::SlotOf(Table& table, std::int32_t mmsi) {
  std::size_t slot = static_cast<std::uint32_t>(mmsi) * 0x9E3779B1U >> 21;
  static_assert(kSlots == std::size_t{1} << (32 - 21));
  while (table.slots[slot] != 0 &&
         table.targets[static_cast<std::size_t>(table.slots[slot])].MMSI != mmsi) {
    slot = (slot + 1) % kSlots;
  }
  return table.slots[slot];
}

AISTarget& AISStore::AddTarget(Table& table, std::int16_t& slot, std::int32_t mmsi) {
  slot = ++table.count;
  AISTarget& target = table.targets[static_cast<std::size_t>(slot)];
  target.MMSI = mmsi;
  return target;
}

void AISStore::StoreAISTarget(int system, std::int16_t messageId, const AISMessages& messages,
                              DateTime sentenceTime) {
  Table& table = tables_[system];
  const std::int32_t mmsi = SenderOf(messageId, messages);
  table.noTarget = mmsi == 0;
  if (table.noTarget) return;

  std::int16_t& slot = SlotOf(table, mmsi);
  if (slot == 0) {
    if (table.count == kMaximumTargets) {
      dialogs_.Ask({.text = "Maximum limit AIS system " + PlainText(system) +
                            ", more than 500 targets stored. New targets ignored!",
                    .icon = BoxIcon::Information,
                    .canBeSilenced = true,
                    .kind = "AISTargetLimit"});
      return;
    }
    AISTarget& added = AddTarget(table, slot, mmsi);
    table.current = slot;
    // From here on the station is known, even where its country cannot be told.
    added.Country = CountryOf(mmsi);
    SetClass(added, messageId);
    added.FirstMessage = sentenceTime;
  }
  table.current = slot;
  AISTarget& target = table.targets[static_cast<std::size_t>(slot)];
  target.LastMessage = sentenceTime;
  ResumeNext([&] {
    target.PeriodSeconds =
        ToInt32(static_cast<double>(DifferenceInSeconds(target.FirstMessage, target.LastMessage)));
  });
  CopyMessage(target, messageId, messages);
}

}  // namespace fathomline
