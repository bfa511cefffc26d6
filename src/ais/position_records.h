// The records of the AIS messages that report a position, with their layouts (ITU-R M.1371).
//
// Positions are degrees, north and east positive; SOG is knots, COG and headings degrees, ROT
// degrees a minute. NoValue stands for what the sender said to be unavailable.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "ais/code_tables.h"
#include "ais/message_layout.h"
#include "ais/ship_type_tables.h"
#include "base/datetime.h"

namespace fathomline {

// What every record begins and ends with. `Received` is local time.
struct AISRecord {
  std::int16_t MsgId{};
  std::int16_t Repeat{};
  std::int32_t MMSI{};
  DateTime Received;
};

// The layout of a record: its own rows between those that all share.
template <class... Rows>
constexpr auto MessageLayout(const Rows&... rows) {
  using R = AISRecord;
  return std::tuple_cat(std::tuple{Bits{"MsgId", 1, 6, &R::MsgId}, Bits{"Repeat", 7, 8, &R::Repeat},
                                   Bits{"MMSI", 9, 38, &R::MMSI}},
                        rows..., std::tuple{Kept{"Received", &R::Received}});
}

// The common tail. Of the fields behind `SubMessage` a message sets those that its slot time-out
// names; the others keep what an earlier message of the id said.
struct AISRadioStatus {
  std::int16_t SyncState{};
  std::int16_t SlotTimeout{};
  std::int16_t SubMessage{};
  std::int16_t SlotOffset{};
  std::int16_t SlotNumber{};
  std::int16_t ReceivedStations{};
};

constexpr bool SlotTimeoutTellsTime(const AISRadioStatus& r) {
  return r.SlotTimeout == 1;
}

constexpr auto RadioStatusRows() {
  using R = AISRadioStatus;
  return std::tuple{Bits{"SyncState", 150, 151, &R::SyncState},
                    Bits{"SlotTimeout", 152, 154, &R::SlotTimeout},
                    Bits{"SubMessage", 155, 168, &R::SubMessage},
                    When{[](const R& r) { return r.SlotTimeout == 0; },
                         Bits{"SlotOffset", 155, 168, &R::SlotOffset}},
                    When{[](const R& r) { return r.SlotTimeout > 0 && r.SlotTimeout % 2 == 0; },
                         Bits{"SlotNumber", 155, 168, &R::SlotNumber}},
                    When{[](const R& r) { return r.SlotTimeout > 1 && r.SlotTimeout % 2 == 1; },
                         Bits{"ReceivedStations", 155, 168, &R::ReceivedStations}}};
}

struct AISRadioTime {
  std::int16_t UTCHour{};
  std::int16_t UTCMinute{};
};

constexpr auto RadioTimeRows() {
  using R = AISRadioTime;
  return std::tuple{When{SlotTimeoutTellsTime, Bits{"UTCHour", 155, 159, &R::UTCHour}},
                    When{SlotTimeoutTellsTime, Bits{"UTCMinute", 160, 166, &R::UTCMinute}}};
}

// Degrees a minute from the raw number of 8 bits, after ITU-R M.1371; its two ends mean "faster
// than the field can show", and 128 of either sign unavailable.
float RateOfTurn(int raw);

// Ids 1, 2 and 3.
struct AISPositionReport : AISRecord, AISRadioStatus, AISRadioTime {
  std::int16_t NavStatus{};
  std::string NavStatusText;
  float ROT{};
  float SOG{};
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  double Longitude{};
  double Latitude{};
  float COG{};
  float Heading{};
  std::int16_t Timestamp{};  // UTC second, and above 59 the reasons why there is none
  std::int16_t Regional{};
  std::int16_t Spare{};
  std::int16_t RAIM{};

  static constexpr auto Layout() {
    using R = AISPositionReport;
    return MessageLayout(
        std::tuple{
            Bits{"NavStatus", 39, 42, &R::NavStatus},
            CodeName{"NavStatusText", &NavStatusTable, &R::NavStatus, &R::NavStatusText},
            Computed{"ROT",
                     [](const R&, const AISReception& m) {
                       return RateOfTurn(ReadValue<std::int16_t>(m.bits, 43, 50, kSigned));
                     },
                     &R::ROT},
            Bits{"SOG", 51, 60, &R::SOG, kSOG},
            Bits{"PositionAccuracy", 61, 61, &R::PositionAccuracy},
            CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                     &R::PositionAccuracyText},
            Bits{"Longitude", 62, 89, &R::Longitude, kLongitude},
            Bits{"Latitude", 90, 116, &R::Latitude, kLatitude},
            Bits{"COG", 117, 128, &R::COG, kCOG}, Bits{"Heading", 129, 137, &R::Heading, kHeading},
            Bits{"Timestamp", 138, 143, &R::Timestamp}, Bits{"Regional", 144, 145, &R::Regional},
            Bits{"Spare", 146, 148, &R::Spare}, Bits{"RAIM", 149, 149, &R::RAIM}},
        RadioStatusRows(), RadioTimeRows());
  }
};

// Id 4. Hour and minute may come out of the radio status.
struct AISBaseStationReport : AISRecord, AISRadioStatus {
  std::int16_t Year{};
  std::int16_t Month{};
  std::int16_t Day{};
  std::int16_t Hour{};
  std::int16_t Minute{};
  std::int16_t Second{};
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  double Longitude{};
  double Latitude{};
  std::int16_t EPFSType{};
  std::string EPFSText;
  std::int16_t LongRangeControl{};
  std::int16_t Spare{};
  std::int16_t RAIM{};

  static constexpr auto Layout() {
    using R = AISBaseStationReport;
    return MessageLayout(
        std::tuple{Bits{"Year", 39, 52, &R::Year}, Bits{"Month", 53, 56, &R::Month},
                   Bits{"Day", 57, 61, &R::Day}, Bits{"Hour", 62, 66, &R::Hour},
                   Bits{"Minute", 67, 72, &R::Minute}, Bits{"Second", 73, 78, &R::Second},
                   Bits{"PositionAccuracy", 79, 79, &R::PositionAccuracy},
                   CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                            &R::PositionAccuracyText},
                   Bits{"Longitude", 80, 107, &R::Longitude, kLongitude},
                   Bits{"Latitude", 108, 134, &R::Latitude, kLatitude},
                   Bits{"EPFSType", 135, 138, &R::EPFSType},
                   CodeName{"EPFSText", &EPFSTable, &R::EPFSType, &R::EPFSText},
                   Bits{"LongRangeControl", 139, 139, &R::LongRangeControl},
                   Bits{"Spare", 140, 148, &R::Spare}, Bits{"RAIM", 149, 149, &R::RAIM}},
        RadioStatusRows());
  }
};

// Id 9. The altitude is metres, the speed whole knots.
struct AISSARReport : AISRecord, AISRadioStatus, AISRadioTime {
  std::int16_t Altitude{};
  float SOG{};
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  double Longitude{};
  double Latitude{};
  float COG{};
  std::int16_t Timestamp{};
  std::int16_t AltitudeSensor{};
  std::int16_t DTE{};
  std::int16_t Spare{};
  std::int16_t AssignedMode{};
  std::int16_t RAIM{};
  std::int16_t CommStateFlag{};

  static constexpr auto Layout() {
    using R = AISSARReport;
    constexpr Conversion kWholeKnots{.unavailable = Unavailable::AtOrAbove, .limit = 1023};
    return MessageLayout(
        std::tuple{
            Bits{"Altitude", 39, 50, &R::Altitude}, Bits{"SOG", 51, 60, &R::SOG, kWholeKnots},
            Bits{"PositionAccuracy", 61, 61, &R::PositionAccuracy},
            CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                     &R::PositionAccuracyText},
            Bits{"Longitude", 62, 89, &R::Longitude, kLongitude},
            Bits{"Latitude", 90, 116, &R::Latitude, kLatitude},
            Bits{"COG", 117, 128, &R::COG, kCOG}, Bits{"Timestamp", 129, 134, &R::Timestamp},
            Bits{"AltitudeSensor", 135, 135, &R::AltitudeSensor}, Bits{"DTE", 143, 143, &R::DTE},
            Bits{"Spare", 144, 146, &R::Spare}, Bits{"AssignedMode", 147, 147, &R::AssignedMode},
            Bits{"RAIM", 148, 148, &R::RAIM}, Bits{"CommStateFlag", 149, 149, &R::CommStateFlag}},
        RadioStatusRows(), RadioTimeRows());
  }
};

// What ids 18 and 19 have in common.
struct AISClassBReport : AISRecord {
  std::int16_t Regional{};
  float SOG{};
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  double Longitude{};
  double Latitude{};
  float COG{};
  float Heading{};
  std::int16_t Timestamp{};
};

constexpr auto ClassBRows() {
  using R = AISClassBReport;
  return std::tuple{Bits{"Regional", 39, 46, &R::Regional},
                    Bits{"SOG", 47, 56, &R::SOG, kSOG},
                    Bits{"PositionAccuracy", 57, 57, &R::PositionAccuracy},
                    CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                             &R::PositionAccuracyText},
                    Bits{"Longitude", 58, 85, &R::Longitude, kLongitude},
                    Bits{"Latitude", 86, 112, &R::Latitude, kLatitude},
                    Bits{"COG", 113, 124, &R::COG, kCOG},
                    Bits{"Heading", 125, 133, &R::Heading, kHeading},
                    Bits{"Timestamp", 134, 139, &R::Timestamp}};
}

// Id 18.
struct AISClassBPosition : AISClassBReport, AISRadioStatus, AISRadioTime {
  std::int16_t UnitFlag{};
  std::int16_t DisplayFlag{};
  std::int16_t DSCFlag{};
  std::int16_t BandFlag{};
  std::int16_t Msg22Flag{};
  std::int16_t AssignedMode{};
  std::int16_t RAIM{};
  std::int16_t CommStateFlag{};

  static constexpr auto Layout() {
    using R = AISClassBPosition;
    return MessageLayout(
        ClassBRows(),
        std::tuple{
            Bits{"UnitFlag", 142, 142, &R::UnitFlag},
            Bits{"DisplayFlag", 143, 143, &R::DisplayFlag}, Bits{"DSCFlag", 144, 144, &R::DSCFlag},
            Bits{"BandFlag", 145, 145, &R::BandFlag}, Bits{"Msg22Flag", 146, 146, &R::Msg22Flag},
            Bits{"AssignedMode", 147, 147, &R::AssignedMode}, Bits{"RAIM", 148, 148, &R::RAIM},
            Bits{"CommStateFlag", 149, 149, &R::CommStateFlag}},
        RadioStatusRows(), RadioTimeRows());
  }
};

// Id 27. Whole knots and whole degrees.
struct AISLongRangeBroadcast : AISRecord {
  std::int16_t PositionAccuracy{};
  std::string PositionAccuracyText;
  std::int16_t RAIM{};
  std::int16_t NavStatus{};
  std::string NavStatusText;
  double Longitude{};
  double Latitude{};
  float SOG{};
  float COG{};
  std::int16_t PositionLatency{};

  static constexpr auto Layout() {
    using R = AISLongRangeBroadcast;
    constexpr Conversion kWholeKnots{.unavailable = Unavailable::AtOrAbove, .limit = 63};
    constexpr Conversion kWholeDegrees{.unavailable = Unavailable::Exactly, .limit = 511};
    return MessageLayout(std::tuple{
        Bits{"PositionAccuracy", 39, 39, &R::PositionAccuracy},
        CodeName{"PositionAccuracyText", &PositionAccuracyTable, &R::PositionAccuracy,
                 &R::PositionAccuracyText},
        Bits{"RAIM", 40, 40, &R::RAIM}, Bits{"NavStatus", 41, 44, &R::NavStatus},
        CodeName{"NavStatusText", &NavStatusTable, &R::NavStatus, &R::NavStatusText},
        Bits{"Longitude", 45, 62, &R::Longitude, kShortLongitude},
        Bits{"Latitude", 63, 79, &R::Latitude, kShortLatitude},
        Bits{"SOG", 80, 85, &R::SOG, kWholeKnots}, Bits{"COG", 86, 94, &R::COG, kWholeDegrees},
        Bits{"PositionLatency", 95, 95, &R::PositionLatency}});
  }
};

}  // namespace fathomline
