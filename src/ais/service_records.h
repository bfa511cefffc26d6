// The records of the AIS messages that run the radio service and carry safety texts and
// corrections, with their layouts (ITU-R M.1371; id 17 also RTCM SC-104).
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <tuple>

#include "ais/message_layout.h"
#include "ais/position_records.h"

namespace fathomline {

// Ids 7, 11, 13 and 15: not decoded, only noticed.
struct AISReceptionTime {
  DateTime Received;

  static constexpr auto Layout() {
    return std::tuple{Kept{"Received", &AISReceptionTime::Received}};
  }
};

// Id 10.
struct AISUTCInquiry : AISRecord {
  std::int32_t DestinationMMSI{};

  static constexpr auto Layout() {
    using R = AISUTCInquiry;
    return MessageLayout(std::tuple{Bits{"DestinationMMSI", 41, 70, &R::DestinationMMSI}});
  }
};

// Id 12.
struct AISSafetyText : AISRecord {
  std::int16_t SequenceNumber{};
  std::int32_t DestinationMMSI{};
  std::int16_t Retransmit{};
  std::int16_t Spare{};
  std::string Text;

  static constexpr auto Layout() {
    using R = AISSafetyText;
    constexpr auto limit = [](const AISReception& m) {
      return (m.payloadLength - 13) * 6 + 73 - m.fillBits;
    };
    return MessageLayout(std::tuple{Bits{"SequenceNumber", 39, 40, &R::SequenceNumber},
                                    Bits{"DestinationMMSI", 41, 70, &R::DestinationMMSI},
                                    Bits{"Retransmit", 71, 71, &R::Retransmit},
                                    Bits{"Spare", 72, 72, &R::Spare},
                                    TextToLimit{"Text", 73, limit, &R::Text}});
  }
};

// Id 14. Its text, unlike that of id 12, takes no notice of the fill bits.
struct AISBroadcastText : AISRecord {
  std::string Text;

  static constexpr auto Layout() {
    constexpr auto limit = [](const AISReception& m) { return (m.payloadLength - 8) * 6 + 41; };
    return MessageLayout(std::tuple{TextToLimit{"Text", 41, limit, &AISBroadcastText::Text}});
  }
};

// Id 16. The second station is read whether or not the message names one.
struct AISAssignmentCommand : AISRecord {
  std::int32_t DestinationA{};
  std::int16_t OffsetA{};
  std::int16_t IncrementA{};
  std::int32_t DestinationB{};
  std::int16_t OffsetB{};
  std::int16_t IncrementB{};

  static constexpr auto Layout() {
    using R = AISAssignmentCommand;
    return MessageLayout(std::tuple{
        Bits{"DestinationA", 41, 70, &R::DestinationA}, Bits{"OffsetA", 71, 82, &R::OffsetA},
        Bits{"IncrementA", 83, 92, &R::IncrementA}, Bits{"DestinationB", 93, 122, &R::DestinationB},
        Bits{"OffsetB", 123, 134, &R::OffsetB}, Bits{"IncrementB", 135, 144, &R::IncrementB}});
  }
};

// Id 17: differential corrections, as RTCM SC-104 words without their parity.
struct AISDGNSSBroadcast : AISRecord {
  static constexpr int kBlocks = 17;
  template <class Value>
  using Blocks = std::array<Value, kBlocks>;

  double Longitude{};
  double Latitude{};
  std::int16_t RTCMType{};
  std::int32_t StationId{};
  float ZCount{};  // seconds of the hour
  std::int16_t Sequence{};
  std::int16_t WordCount{};
  std::int16_t Health{};
  double StationX{};  // metres, earth-centred; types 3 and 32
  double StationY{};
  double StationZ{};
  Blocks<std::int16_t> ScaleFactor{};  // the satellites of types 1, 9, 31 and 34
  Blocks<std::int16_t> UDRE{};
  Blocks<std::int16_t> SatelliteId{};
  Blocks<float> PRC{};  // metres
  Blocks<float> RRC{};  // metres a second
  Blocks<std::int16_t> IOD{};

  bool HasStation() const { return RTCMType == 3 || RTCMType == 32; }
  bool HasCorrections() const {
    return RTCMType == 1 || RTCMType == 9 || RTCMType == 31 || RTCMType == 34;
  }
  // The blocks that the message asks for, which may be more than the record holds.
  int RequestedBlocks() const {
    if (!HasCorrections()) return 0;
    return WordCount / 5 * 3 + (WordCount % 5 == 2 ? 1 : 0) + (WordCount % 5 == 4 ? 2 : 0);
  }
  int HeldBlocks() const { return std::min(RequestedBlocks(), kBlocks); }

  static constexpr auto Layout() {
    using R = AISDGNSSBroadcast;
    constexpr int kStride = 40;
    constexpr Conversion kSixTenths{.multiplier = 0.6};
    constexpr Conversion kCentimetres{.isSigned = true, .divisor = 100};
    constexpr auto hasStation = [](const R& r) { return r.HasStation(); };
    constexpr auto count = [](const R& r) { return r.HeldBlocks(); };
    return MessageLayout(std::tuple{
        Bits{"Longitude", 41, 58, &R::Longitude, kShortLongitude},
        Bits{"Latitude", 59, 75, &R::Latitude, kShortLatitude},
        Bits{"RTCMType", 81, 86, &R::RTCMType}, Bits{"StationId", 87, 96, &R::StationId},
        Bits{"ZCount", 97, 109, &R::ZCount, kSixTenths}, Bits{"Sequence", 110, 112, &R::Sequence},
        Bits{"WordCount", 113, 117, &R::WordCount}, Bits{"Health", 118, 120, &R::Health},
        When{hasStation, Bits{"StationX", 121, 152, &R::StationX, kCentimetres}},
        When{hasStation, Bits{"StationY", 153, 184, &R::StationY, kCentimetres}},
        When{hasStation, Bits{"StationZ", 185, 216, &R::StationZ, kCentimetres}},
        RepeatedBits{"ScaleFactor", 121, 121, kStride, count, &R::ScaleFactor},
        RepeatedBits{"UDRE", 122, 123, kStride, count, &R::UDRE},
        RepeatedBits{"SatelliteId", 124, 128, kStride, count, &R::SatelliteId},
        RepeatedBits{"PRC", 129, 144, kStride, count, &R::PRC, kSigned},
        RepeatedBits{"RRC", 145, 152, kStride, count, &R::RRC, kSigned},
        RepeatedBits{"IOD", 153, 160, kStride, count, &R::IOD}});
  }
};

// Id 20: four reservations of slots.
struct AISDataLinkManagement : AISRecord {
  std::array<std::int16_t, 4> Offset{};
  std::array<std::int16_t, 4> Slots{};
  std::array<std::int16_t, 4> Timeout{};
  std::array<std::int16_t, 4> Increment{};

  static constexpr auto Layout() {
    using R = AISDataLinkManagement;
    constexpr int kStride = 30;
    constexpr auto all = [](const R&) { return 4; };
    return MessageLayout(
        std::tuple{RepeatedBits{"Offset", 41, 52, kStride, all, &R::Offset},
                   RepeatedBits{"Slots", 53, 56, kStride, all, &R::Slots},
                   RepeatedBits{"Timeout", 57, 59, kStride, all, &R::Timeout},
                   RepeatedBits{"Increment", 60, 70, kStride, all, &R::Increment}});
  }
};

// The corners of an area, as the raw unsigned numbers of the message.
struct AISArea {
  double NELongitude{};
  double NELatitude{};
  double SWLongitude{};
  double SWLatitude{};
};

// 70 bits from `first`.
constexpr auto AreaRows(int first) {
  using R = AISArea;
  return std::tuple{Bits{"NELongitude", first, first + 17, &R::NELongitude},
                    Bits{"NELatitude", first + 18, first + 34, &R::NELatitude},
                    Bits{"SWLongitude", first + 35, first + 52, &R::SWLongitude},
                    Bits{"SWLatitude", first + 53, first + 69, &R::SWLatitude}};
}

// Id 22.
struct AISChannelManagement : AISRecord, AISArea {
  std::int16_t ChannelA{};
  std::int16_t ChannelB{};
  std::int16_t TxRxMode{};
  std::int16_t Power{};
  std::int16_t Addressed{};
  std::int16_t BandA{};
  std::int16_t BandB{};
  std::int16_t ZoneSize{};

  static constexpr auto Layout() {
    using R = AISChannelManagement;
    return MessageLayout(
        std::tuple{Bits{"ChannelA", 41, 52, &R::ChannelA}, Bits{"ChannelB", 53, 64, &R::ChannelB},
                   Bits{"TxRxMode", 65, 68, &R::TxRxMode}, Bits{"Power", 69, 69, &R::Power}},
        AreaRows(70),
        std::tuple{Bits{"Addressed", 140, 140, &R::Addressed}, Bits{"BandA", 141, 141, &R::BandA},
                   Bits{"BandB", 142, 142, &R::BandB}, Bits{"ZoneSize", 143, 145, &R::ZoneSize}});
  }
};

// Id 23.
struct AISGroupAssignment : AISRecord, AISArea {
  std::int16_t StationType{};
  std::int16_t ShipType{};
  std::int16_t TxRxMode{};
  std::int16_t ReportingInterval{};
  std::int16_t QuietTime{};

  static constexpr auto Layout() {
    using R = AISGroupAssignment;
    return MessageLayout(AreaRows(41),
                         std::tuple{Bits{"StationType", 111, 114, &R::StationType},
                                    Bits{"ShipType", 115, 122, &R::ShipType},
                                    Bits{"TxRxMode", 145, 146, &R::TxRxMode},
                                    Bits{"ReportingInterval", 147, 150, &R::ReportingInterval},
                                    Bits{"QuietTime", 151, 154, &R::QuietTime}});
  }
};

}  // namespace fathomline
