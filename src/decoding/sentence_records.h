// The decoded records of the sentences, each with the layout of its sentence (NMEA 0183).
//
// A record holds the latest sentence of its type; a field that could not be read keeps what it
// held. An empty field gives NoValue in a number, a blank in a one-character field, and the empty
// text in a text; an empty position gives 0. Positions are radians, north and east positive; all
// other angles degrees.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <tuple>

#include "base/numbers.h"
#include "decoding/sentence_layout.h"
#include "decoding/sentence_type.h"

namespace fathomline {

struct GGARecord {
  std::string Time;
  double Latitude = 0.0;
  double Longitude = 0.0;
  std::int16_t Quality = 0;
  std::int16_t Satellites = 0;
  float HDOP = 0.0F;
  float Altitude = 0.0F;  // metres above the geoid, as sent
  char AltitudeUnit = ' ';
  float GeoidalSeparation = 0.0F;
  char GeoidalUnit = ' ';
  float DGPSAge = 0.0F;  // seconds
  std::int32_t DGPSStation = 0;

  static constexpr SentenceForm kForm{"GGA", 15, 14, true, false};
  static constexpr auto Layout() {
    using R = GGARecord;
    return std::tuple{TimeColumn{"Time", 1, &R::Time},
                      LatitudeColumn{"Latitude", 2, &R::Latitude},
                      LongitudeColumn{"Longitude", 4, &R::Longitude},
                      Column{"Quality", 6, &R::Quality},
                      Column{"Satellites", 7, &R::Satellites},
                      Column{"HDOP", 8, &R::HDOP},
                      Column{"Altitude", 9, &R::Altitude},
                      Column{"AltitudeUnit", 10, &R::AltitudeUnit},
                      Column{"GeoidalSeparation", 11, &R::GeoidalSeparation},
                      Column{"GeoidalUnit", 12, &R::GeoidalUnit},
                      Column{"DGPSAge", 13, &R::DGPSAge},
                      Column{"DGPSStation", 14, &R::DGPSStation}};
  }
};

struct GNSRecord {
  std::string Time;
  double Latitude = 0.0;
  double Longitude = 0.0;
  std::string Mode;  // one letter per constellation
  std::int16_t Satellites = 0;
  float HDOP = 0.0F;
  float Altitude = 0.0F;
  float GeoidalSeparation = 0.0F;
  float DGPSAge = 0.0F;
  std::int32_t DGPSStation = 0;

  static constexpr SentenceForm kForm{"GNS", 13, 12, true, false};
  static constexpr auto Layout() {
    using R = GNSRecord;
    return std::tuple{TimeColumn{"Time", 1, &R::Time},
                      LatitudeColumn{"Latitude", 2, &R::Latitude},
                      LongitudeColumn{"Longitude", 4, &R::Longitude},
                      Column{"Mode", 6, &R::Mode},
                      Column{"Satellites", 7, &R::Satellites},
                      Column{"HDOP", 8, &R::HDOP},
                      Column{"Altitude", 9, &R::Altitude},
                      Column{"GeoidalSeparation", 10, &R::GeoidalSeparation},
                      Column{"DGPSAge", 11, &R::DGPSAge},
                      Column{"DGPSStation", 12, &R::DGPSStation}};
  }
};

struct GLLRecord {
  double Latitude = 0.0;
  double Longitude = 0.0;
  std::string Time;
  char Status = ' ';
  char Mode = ' ';

  static constexpr SentenceForm kForm{"GLL", 8, 7, true, false};
  static constexpr auto Layout() {
    using R = GLLRecord;
    return std::tuple{LatitudeColumn{"Latitude", 1, &R::Latitude},
                      LongitudeColumn{"Longitude", 3, &R::Longitude},
                      TimeColumn{"Time", 5, &R::Time}, Column{"Status", 6, &R::Status},
                      Column{"Mode", 7, &R::Mode}};
  }
};

struct RMCRecord {
  std::string Time;
  std::string Status;
  double Latitude = 0.0;
  double Longitude = 0.0;
  float SOG = 0.0F;  // knots
  float COG = 0.0F;  // degrees true
  std::string Date;  // "ddmmyy" as received
  float MagneticVariation = 0.0F;
  char MagneticVariationSide = ' ';
  char Mode = ' ';

  // As many passes as entries: a sentence with 13 commas or more runs out of the table.
  static constexpr SentenceForm kForm{"RMC", 13, 13, true, false};
  static constexpr auto Layout() {
    using R = RMCRecord;
    return std::tuple{TimeColumn{"Time", 1, &R::Time},
                      Column{"Status", 2, &R::Status},
                      LatitudeColumn{"Latitude", 3, &R::Latitude},
                      LongitudeColumn{"Longitude", 5, &R::Longitude},
                      Column{"SOG", 7, &R::SOG},
                      Column{"COG", 8, &R::COG},
                      Column{"Date", 9, &R::Date},
                      Column{"MagneticVariation", 10, &R::MagneticVariation},
                      Column{"MagneticVariationSide", 11, &R::MagneticVariationSide},
                      Column{"Mode", 12, &R::Mode}};
  }
};

struct VTGRecord {
  float COGTrue = 0.0F;
  float COGMagnetic = 0.0F;
  float SOGKnots = 0.0F;
  float SOGKmh = 0.0F;
  char Mode = ' ';

  static constexpr SentenceForm kForm{"VTG", 10, 9, true, false};
  static constexpr auto Layout() {
    using R = VTGRecord;
    return std::tuple{Column{"COGTrue", 1, &R::COGTrue}, Column{"COGMagnetic", 3, &R::COGMagnetic},
                      Column{"SOGKnots", 5, &R::SOGKnots}, Column{"SOGKmh", 7, &R::SOGKmh},
                      Column{"Mode", 9, &R::Mode}};
  }
};

struct ZDARecord {
  std::string Time;  // as received
  std::int16_t Day = 0;
  std::int16_t Month = 0;
  std::int16_t Year = 0;
  std::int16_t ZoneHours = 0;
  std::int16_t ZoneMinutes = 0;

  static constexpr SentenceForm kForm{"ZDA", 7, 6, true, false};
  static constexpr auto Layout() {
    using R = ZDARecord;
    return std::tuple{
        Column{"Time", 1, &R::Time},           Column{"Day", 2, &R::Day},
        Column{"Month", 3, &R::Month},         Column{"Year", 4, &R::Year},
        Column{"ZoneHours", 5, &R::ZoneHours}, Column{"ZoneMinutes", 6, &R::ZoneMinutes}};
  }
};

struct HDTRecord {
  float Heading = 0.0F;

  static constexpr SentenceForm kForm{"HDT", 4, 3, true, false};
  static constexpr auto Layout() { return std::tuple{Column{"Heading", 1, &HDTRecord::Heading}}; }
};

// The proprietary attitude sentence $PFEC,GPatt; field 1 is its sub-name.
struct ATTRecord {
  float Heading = 0.0F;
  float Pitch = 0.0F;
  float Roll = 0.0F;

  static constexpr SentenceForm kForm{"ATT", 6, 5, true, false};
  static constexpr auto Layout() {
    using R = ATTRecord;
    return std::tuple{Column{"Heading", 2, &R::Heading}, Column{"Pitch", 3, &R::Pitch},
                      Column{"Roll", 4, &R::Roll}};
  }
};

struct ROTRecord {
  float RateOfTurn = 0.0F;  // degrees per minute
  char Status = ' ';

  static constexpr SentenceForm kForm{"ROT", 4, 3, true, false};
  static constexpr auto Layout() {
    using R = ROTRecord;
    return std::tuple{Column{"RateOfTurn", 1, &R::RateOfTurn}, Column{"Status", 2, &R::Status}};
  }
};

struct VHWRecord {
  float HeadingTrue = 0.0F;
  float HeadingMagnetic = 0.0F;
  float SpeedKnots = 0.0F;
  float SpeedKmh = 0.0F;

  static constexpr SentenceForm kForm{"VHW", 10, 9, true, false};
  static constexpr auto Layout() {
    using R = VHWRecord;
    return std::tuple{Column{"HeadingTrue", 1, &R::HeadingTrue},
                      Column{"HeadingMagnetic", 3, &R::HeadingMagnetic},
                      Column{"SpeedKnots", 5, &R::SpeedKnots}, Column{"SpeedKmh", 7, &R::SpeedKmh}};
  }
};

struct DBTRecord {
  float DepthFeet = 0.0F;
  float DepthMetres = 0.0F;
  float DepthFathoms = 0.0F;

  static constexpr SentenceForm kForm{"DBT", 7, 6, true, false};
  static constexpr auto Layout() {
    using R = DBTRecord;
    return std::tuple{Column{"DepthFeet", 1, &R::DepthFeet},
                      Column{"DepthMetres", 3, &R::DepthMetres},
                      Column{"DepthFathoms", 5, &R::DepthFathoms}};
  }
};

struct GSARecord {
  char Mode = ' ';           // "M" manual, "A" automatic
  std::int16_t FixType = 0;  // 1 no fix, 2 2D, 3 3D
  std::array<std::int16_t, 12> PRN{};
  float PDOP = 0.0F;
  float HDOP = 0.0F;
  float VDOP = 0.0F;

  static constexpr SentenceForm kForm{"GSA", 18, 17, false, false};
  static constexpr auto Layout() {
    using R = GSARecord;
    return std::tuple{Column{"Mode", 1, &R::Mode},       Column{"FixType", 2, &R::FixType},
                      ArrayColumn{"PRN", 3, 1, &R::PRN}, Column{"PDOP", 15, &R::PDOP},
                      Column{"HDOP", 16, &R::HDOP},      Column{"VDOP", 17, &R::VDOP}};
  }
};

struct GSVRecord {
  std::int16_t MessageCount = 0;
  std::int16_t MessageNumber = 0;
  std::int16_t SatellitesInView = 0;
  std::array<std::int16_t, 4> PRN{};
  std::array<std::int16_t, 4> Elevation{};  // degrees
  std::array<std::int16_t, 4> Azimuth{};    // degrees
  std::array<std::int16_t, 4> SNR{};        // dB-Hz

  // A slot with PRN 1 and no elevation is no satellite: its PRN becomes NoValue.
  void Complete();

  static constexpr SentenceForm kForm{"GSV", 20, 19, false, false};
  static constexpr auto Layout() {
    using R = GSVRecord;
    return std::tuple{Column{"MessageCount", 1, &R::MessageCount},
                      Column{"MessageNumber", 2, &R::MessageNumber},
                      Column{"SatellitesInView", 3, &R::SatellitesInView},
                      ArrayColumn{"PRN", 4, 4, &R::PRN},
                      ArrayColumn{"Elevation", 5, 4, &R::Elevation},
                      ArrayColumn{"Azimuth", 6, 4, &R::Azimuth},
                      ArrayColumn{"SNR", 7, 4, &R::SNR}};
  }
};

struct GSTRecord {
  std::string Time;  // as received
  float RMS = 0.0F;  // of the pseudoranges
  float SdMajor = 0.0F;
  float SdMinor = 0.0F;
  std::int16_t DirMajor = 0;  // degrees
  float SdLat = 0.0F;
  float SdLon = 0.0F;
  float SdAlt = 0.0F;

  static constexpr SentenceForm kForm{"GST", 9, 8, false, false};
  static constexpr auto Layout() {
    using R = GSTRecord;
    return std::tuple{Column{"Time", 1, &R::Time},         Column{"RMS", 2, &R::RMS},
                      Column{"SdMajor", 3, &R::SdMajor},   Column{"SdMinor", 4, &R::SdMinor},
                      Column{"DirMajor", 5, &R::DirMajor}, Column{"SdLat", 6, &R::SdLat},
                      Column{"SdLon", 7, &R::SdLon},       Column{"SdAlt", 8, &R::SdAlt}};
  }
};

// A radar target. Fields 14 and 15 are read off and not kept.
struct TTMRecord {
  std::int16_t TargetNumber = NoValue;  // no target before the first sentence that names one
  float Distance = 0.0F;
  float Bearing = 0.0F;
  char BearingReference = ' ';
  float Speed = 0.0F;
  float Course = 0.0F;
  char CourseReference = ' ';
  float CPA = 0.0F;
  float TCPA = 0.0F;
  char Unit = ' ';
  std::string Name;
  char Status = ' ';
  std::string ReferenceTarget;

  static constexpr SentenceForm kForm{"TTM", 16, 16, true, true};
  static constexpr auto Layout() {
    using R = TTMRecord;
    return std::tuple{Column{"TargetNumber", 1, &R::TargetNumber},
                      Column{"Distance", 2, &R::Distance},
                      Column{"Bearing", 3, &R::Bearing},
                      Column{"BearingReference", 4, &R::BearingReference},
                      Column{"Speed", 5, &R::Speed},
                      Column{"Course", 6, &R::Course},
                      Column{"CourseReference", 7, &R::CourseReference},
                      Column{"CPA", 8, &R::CPA},
                      Column{"TCPA", 9, &R::TCPA},
                      Column{"Unit", 10, &R::Unit},
                      Column{"Name", 11, &R::Name},
                      Column{"Status", 12, &R::Status},
                      Column{"ReferenceTarget", 13, &R::ReferenceTarget}};
  }
};

// VDM and VDO: one sentence of an AIS message. The payload is armoured six-bit characters.
struct VDMRecord {
  std::int16_t TotalFragments = 0;
  std::int16_t FragmentNumber = 0;
  std::int16_t SequenceId = 0;
  char Channel = ' ';
  std::string Payload;
  std::int16_t FillBits = 0;

  static constexpr SentenceForm kForm{"VDM", 7, 7, true, true};
  static constexpr auto Layout() {
    using R = VDMRecord;
    return std::tuple{Column{"TotalFragments", 1, &R::TotalFragments},
                      Column{"FragmentNumber", 2, &R::FragmentNumber},
                      Column{"SequenceId", 3, &R::SequenceId},
                      Column{"Channel", 4, &R::Channel},
                      BytesColumn{"Payload", 5, &R::Payload},
                      Column{"FillBits", 6, &R::FillBits}};
  }
};

template <class Record>
inline constexpr SentenceType kTypeOf = SentenceTypeOf(Record::kForm.type);

}  // namespace fathomline
