// The records of the AIS messages that describe a station, with their layouts (ITU-R M.1371).
//
// Dimensions are metres from the position antenna to bow, stern, port and starboard. Texts keep
// their full width, filled with blanks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

#include "ais/code_tables.h"
#include "ais/message_layout.h"
#include "ais/position_records.h"
#include "ais/ship_type_tables.h"
#include "base/datetime.h"
#include "base/numbers.h"

namespace fathomline {

// The cargo of a ship type code, "n/a" where its second digit tells none.
constexpr std::string_view CargoOf(std::int16_t shipType) {
  const auto code = static_cast<std::size_t>(shipType);
  return SecondDigitIsCargo(code) ? CargoTable[code % CargoTable.size()] : kNotAvailable;
}

// The arrival of id 5 in the present year: month, day, hour and minute in bits 275 to 294, out of
// range parts rolling over. The zero date where the month is 0.
DateTime ETAOf(const AISReception& reception);

struct AISShip {
  std::int16_t ShipType{};
  std::string ShipTypeText;
  std::string CargoText;
};

// A ship type of 101 or more leaves the group text of the message before.
constexpr auto ShipTextRows() {
  using R = AISShip;
  return std::tuple{
      CodeName{"ShipTypeText", &ShipTypeGroupTable, &R::ShipType, &R::ShipTypeText},
      Computed{"CargoText", [](const R& r, const AISReception&) { return CargoOf(r.ShipType); },
               &R::CargoText}};
}

struct AISDimensions {
  std::int16_t DimensionA{};
  std::int16_t DimensionB{};
  std::int16_t DimensionC{};
  std::int16_t DimensionD{};
};

// 30 bits from `first`.
constexpr auto DimensionRows(int first) {
  using R = AISDimensions;
  return std::tuple{Bits{"DimensionA", first, first + 8, &R::DimensionA},
                    Bits{"DimensionB", first + 9, first + 17, &R::DimensionB},
                    Bits{"DimensionC", first + 18, first + 23, &R::DimensionC},
                    Bits{"DimensionD", first + 24, first + 29, &R::DimensionD}};
}

// Id 5.
struct AISStaticVoyageData : AISRecord, AISShip, AISDimensions {
  std::int16_t AISVersion{};
  std::int32_t IMONumber{};
  std::string CallSign;
  std::string Name;
  std::int16_t EPFSType{};
  std::string EPFSText;
  DateTime ETA;
  float Draught{};  // metres
  std::string Destination;
  std::int16_t DTE{};

  static constexpr auto Layout() {
    using R = AISStaticVoyageData;
    constexpr Conversion kTenths{.divisor = 10};
    return MessageLayout(
        std::tuple{Bits{"AISVersion", 39, 40, &R::AISVersion},
                   Bits{"IMONumber", 41, 70, &R::IMONumber},
                   Text{"CallSign", 71, 112, &R::CallSign}, Text{"Name", 113, 232, &R::Name},
                   Bits{"ShipType", 233, 240, &R::ShipType}},
        ShipTextRows(), DimensionRows(241),
        std::tuple{
            Bits{"EPFSType", 271, 274, &R::EPFSType},
            CodeName{"EPFSText", &EPFSTable, &R::EPFSType, &R::EPFSText},
            Computed{"ETA", [](const R&, const AISReception& m) { return ETAOf(m); }, &R::ETA},
            Bits{"Draught", 295, 302, &R::Draught, kTenths},
            Text{"Destination", 303, 422, &R::Destination}, Bits{"DTE", 423, 423, &R::DTE}});
  }
};

// Id 19.
struct AISClassBExtended : AISClassBReport, AISShip, AISDimensions {
  std::int16_t Regional2{};
  std::string Name;
  std::string ShipTypeFullText;
  std::int16_t EPFSType{};
  std::string EPFSText;
  std::int16_t RAIM{};
  std::int16_t DTE{};

  static constexpr auto Layout() {
    using R = AISClassBExtended;
    return MessageLayout(
        ClassBRows(),
        std::tuple{
            Bits{"Regional2", 140, 143, &R::Regional2}, Text{"Name", 144, 263, &R::Name},
            Bits{"ShipType", 264, 271, &R::ShipType},
            CodeName{"ShipTypeFullText", &ShipTypeTable, &R::ShipType, &R::ShipTypeFullText}},
        ShipTextRows(), DimensionRows(272),
        std::tuple{Bits{"EPFSType", 302, 305, &R::EPFSType},
                   CodeName{"EPFSText", &EPFSTable, &R::EPFSType, &R::EPFSText},
                   Bits{"RAIM", 306, 306, &R::RAIM}, Bits{"DTE", 307, 307, &R::DTE}});
  }
};

// Id 21. The three status fields are read in status page 7 alone, and bit 272 never.
struct AISAidToNavigation : AISRecord, AISDimensions {
  std::int16_t AtoNType{};
  std::string AtoNTypeText;
  std::string Name;
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  double Longitude{};
  double Latitude{};
  std::int16_t EPFSType{};
  std::string EPFSText;
  std::int16_t Timestamp{};
  std::int16_t OffPosition{};
  std::int16_t AtoNStatusPage{};
  std::int16_t RaconStatus{};
  std::int16_t LightStatus{};
  std::int16_t HealthStatus{};
  std::int16_t RAIM{};
  std::int16_t VirtualFlag{};
  std::int16_t AssignedMode{};
  std::string NameExtension;

  static constexpr auto Layout() {
    using R = AISAidToNavigation;
    constexpr auto hasStatus = [](const R& r) { return r.AtoNStatusPage == 7; };
    return MessageLayout(
        std::tuple{Bits{"AtoNType", 39, 43, &R::AtoNType},
                   CodeName{"AtoNTypeText", &AtoNTypeTable, &R::AtoNType, &R::AtoNTypeText},
                   Text{"Name", 44, 163, &R::Name},
                   Bits{"PositionAccuracy", 164, 164, &R::PositionAccuracy},
                   CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                            &R::PositionAccuracyText},
                   Bits{"Longitude", 165, 192, &R::Longitude, kLongitude},
                   Bits{"Latitude", 193, 219, &R::Latitude, kLatitude}},
        DimensionRows(220),
        std::tuple{Bits{"EPFSType", 250, 253, &R::EPFSType},
                   CodeName{"EPFSText", &EPFSTable, &R::EPFSType, &R::EPFSText},
                   Bits{"Timestamp", 254, 259, &R::Timestamp},
                   Bits{"OffPosition", 260, 260, &R::OffPosition},
                   Bits{"AtoNStatusPage", 261, 263, &R::AtoNStatusPage},
                   When{hasStatus, Bits{"RaconStatus", 264, 265, &R::RaconStatus}},
                   When{hasStatus, Bits{"LightStatus", 266, 267, &R::LightStatus}},
                   When{hasStatus, Bits{"HealthStatus", 268, 268, &R::HealthStatus}},
                   Bits{"RAIM", 269, 269, &R::RAIM}, Bits{"VirtualFlag", 270, 270, &R::VirtualFlag},
                   Bits{"AssignedMode", 271, 271, &R::AssignedMode},
                   Text{"NameExtension", 273, 356, &R::NameExtension}});
  }
};

// Id 24. Part A is the name, any other part the rest; the part not received keeps its values.
struct AISStaticDataReport : AISRecord, AISShip, AISDimensions {
  std::int16_t PartNumber{};
  std::string Name;
  std::string VendorIdText;  // manufacturer, model and serial number read as one text
  std::string ManufacturerId;
  std::int16_t UnitModel{};
  std::int32_t SerialNumber{};
  std::string CallSign;

  static constexpr auto Layout() {
    using R = AISStaticDataReport;
    constexpr auto isA = [](const R& r) { return r.PartNumber == 0; };
    constexpr auto isB = [](const R& r) { return r.PartNumber != 0; };
    const auto knownShipType = [](const R&, const AISReception& m) {
      const auto type = ReadValue<std::int16_t>(m.bits, 41, 48, {});
      return type > 99 ? std::int16_t{0} : type;
    };
    return MessageLayout(std::tuple{Bits{"PartNumber", 39, 40, &R::PartNumber},
                                    When{isA, Text{"Name", 41, 160, &R::Name}},
                                    When{isB, Computed{"ShipType", knownShipType, &R::ShipType}}},
                         OnlyWhen(isB, ShipTextRows()),
                         std::tuple{When{isB, Text{"VendorIdText", 49, 90, &R::VendorIdText}},
                                    When{isB, Text{"ManufacturerId", 49, 66, &R::ManufacturerId}},
                                    When{isB, Bits{"UnitModel", 67, 70, &R::UnitModel}},
                                    When{isB, Bits{"SerialNumber", 71, 90, &R::SerialNumber}},
                                    When{isB, Text{"CallSign", 91, 132, &R::CallSign}}},
                         OnlyWhen(isB, DimensionRows(133)));
  }
};

}  // namespace fathomline
