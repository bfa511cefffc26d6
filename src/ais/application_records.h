// The application data of AIS messages 6, 8, 25 and 26 and the records that hold it.
//
// Layouts follow IMO SN/Circ.236 and its successor SN.1/Circ.289, in the form in which this
// program has always read them. Fields follow one another without gaps.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "ais/message_layout.h"
#include "ais/position_records.h"

namespace fathomline {

// Meteorological and hydrological data. Every field of all ones is NoValue.
struct AISMetHydro {
  double Latitude{};
  double Longitude{};
  std::int16_t Day{};
  std::int16_t Hour{};
  std::int16_t Minute{};
  std::int16_t WindSpeed{};  // knots
  std::int16_t WindGust{};
  std::int16_t WindDirection{};  // degrees
  std::int16_t WindGustDirection{};
  float AirTemperature{};   // degrees Celsius
  std::int16_t Humidity{};  // percent
  float DewPoint{};
  std::int16_t AirPressure{};  // hPa
  std::int16_t PressureTendency{};
  float Visibility{};  // nautical miles
  float WaterLevel{};  // metres
  std::int16_t WaterLevelTrend{};
  float Current1Speed{};  // knots
  std::int16_t Current1Direction{};
  float Current2Speed{};
  std::int16_t Current2Direction{};
  std::int16_t Current2Level{};  // metres below the surface
  float Current3Speed{};
  std::int16_t Current3Direction{};
  std::int16_t Current3Level{};
  float WaveHeight{};         // metres
  std::int16_t WavePeriod{};  // seconds
  std::int16_t WaveDirection{};
  float SwellHeight{};
  std::int16_t SwellPeriod{};
  std::int16_t SwellDirection{};
  std::int16_t SeaState{};
  float WaterTemperature{};
  std::int16_t Precipitation{};
  float Salinity{};
  std::int16_t Ice{};

  static constexpr auto Layout() {
    using R = AISMetHydro;
    constexpr Conversion kPlain{.allOnesMeansNoValue = true};
    constexpr Conversion kTenths{.divisor = 10, .allOnesMeansNoValue = true};
    constexpr Conversion kPosition{
        .isSigned = true, .divisor = 1000, .divisor2 = 60, .allOnesMeansNoValue = true};
    constexpr auto tenthsFrom = [](double offset) {
      return Conversion{.divisor = 10, .offset = offset, .allOnesMeansNoValue = true};
    };
    constexpr Conversion kPressure{.offset = 800, .allOnesMeansNoValue = true};
    return std::tuple{NextBits{"Latitude", 24, &R::Latitude, kPosition},
                      NextBits{"Longitude", 25, &R::Longitude, kPosition},
                      NextBits{"Day", 5, &R::Day, kPlain},
                      NextBits{"Hour", 5, &R::Hour, kPlain},
                      NextBits{"Minute", 6, &R::Minute, kPlain},
                      NextBits{"WindSpeed", 7, &R::WindSpeed, kPlain},
                      NextBits{"WindGust", 7, &R::WindGust, kPlain},
                      NextBits{"WindDirection", 9, &R::WindDirection, kPlain},
                      NextBits{"WindGustDirection", 9, &R::WindGustDirection, kPlain},
                      NextBits{"AirTemperature", 11, &R::AirTemperature, tenthsFrom(-60)},
                      NextBits{"Humidity", 7, &R::Humidity, kPlain},
                      NextBits{"DewPoint", 10, &R::DewPoint, tenthsFrom(-20)},
                      NextBits{"AirPressure", 9, &R::AirPressure, kPressure},
                      NextBits{"PressureTendency", 2, &R::PressureTendency, kPlain},
                      NextBits{"Visibility", 8, &R::Visibility, kTenths},
                      NextBits{"WaterLevel", 9, &R::WaterLevel, tenthsFrom(-10)},
                      NextBits{"WaterLevelTrend", 2, &R::WaterLevelTrend, kPlain},
                      NextBits{"Current1Speed", 8, &R::Current1Speed, kTenths},
                      NextBits{"Current1Direction", 9, &R::Current1Direction, kPlain},
                      NextBits{"Current2Speed", 8, &R::Current2Speed, kTenths},
                      NextBits{"Current2Direction", 9, &R::Current2Direction, kPlain},
                      NextBits{"Current2Level", 5, &R::Current2Level, kPlain},
                      NextBits{"Current3Speed", 8, &R::Current3Speed, kTenths},
                      NextBits{"Current3Direction", 9, &R::Current3Direction, kPlain},
                      NextBits{"Current3Level", 5, &R::Current3Level, kPlain},
                      NextBits{"WaveHeight", 8, &R::WaveHeight, kTenths},
                      NextBits{"WavePeriod", 6, &R::WavePeriod, kPlain},
                      NextBits{"WaveDirection", 9, &R::WaveDirection, kPlain},
                      NextBits{"SwellHeight", 8, &R::SwellHeight, kTenths},
                      NextBits{"SwellPeriod", 6, &R::SwellPeriod, kPlain},
                      NextBits{"SwellDirection", 9, &R::SwellDirection, kPlain},
                      NextBits{"SeaState", 4, &R::SeaState, kPlain},
                      NextBits{"WaterTemperature", 10, &R::WaterTemperature, tenthsFrom(-10)},
                      NextBits{"Precipitation", 3, &R::Precipitation, kPlain},
                      NextBits{"Salinity", 9, &R::Salinity, kTenths},
                      NextBits{"Ice", 2, &R::Ice, kPlain}};
  }
};

struct AISDangerousCargo {
  std::string LastPort;
  std::int16_t DepartureMonth{};
  std::int16_t DepartureDay{};
  std::int16_t DepartureHour{};
  std::int16_t DepartureMinute{};
  std::string NextPort;
  std::int16_t ArrivalMonth{};
  std::int16_t ArrivalDay{};
  std::int16_t ArrivalHour{};
  std::int16_t ArrivalMinute{};
  std::string Goods;
  std::string IMDCategory;
  std::int16_t UNNumber{};
  std::int16_t Amount{};
  std::int16_t Unit{};

  static constexpr auto Layout() {
    using R = AISDangerousCargo;
    return std::tuple{NextText{"LastPort", 30, &R::LastPort},
                      NextBits{"DepartureMonth", 4, &R::DepartureMonth},
                      NextBits{"DepartureDay", 5, &R::DepartureDay},
                      NextBits{"DepartureHour", 5, &R::DepartureHour},
                      NextBits{"DepartureMinute", 6, &R::DepartureMinute},
                      NextText{"NextPort", 30, &R::NextPort},
                      NextBits{"ArrivalMonth", 4, &R::ArrivalMonth},
                      NextBits{"ArrivalDay", 5, &R::ArrivalDay},
                      NextBits{"ArrivalHour", 5, &R::ArrivalHour},
                      NextBits{"ArrivalMinute", 6, &R::ArrivalMinute},
                      NextText{"Goods", 120, &R::Goods},
                      NextText{"IMDCategory", 24, &R::IMDCategory},
                      NextBits{"UNNumber", 13, &R::UNNumber},
                      NextBits{"Amount", 10, &R::Amount},
                      NextBits{"Unit", 2, &R::Unit}};
  }
};

struct AISFairwayClosed {
  std::string Reason;
  std::string LocationFrom;
  std::string LocationTo;
  std::int16_t Radius{};
  std::int16_t Unit{};
  std::int16_t StartDay{};
  std::int16_t StartMonth{};
  std::int16_t StartHour{};
  std::int16_t StartMinute{};
  std::int16_t EndDay{};
  std::int16_t EndMonth{};
  std::int16_t EndHour{};
  std::int16_t EndMinute{};

  static constexpr auto Layout() {
    using R = AISFairwayClosed;
    return std::tuple{NextText{"Reason", 120, &R::Reason},
                      NextText{"LocationFrom", 120, &R::LocationFrom},
                      NextText{"LocationTo", 120, &R::LocationTo},
                      NextBits{"Radius", 10, &R::Radius},
                      NextBits{"Unit", 2, &R::Unit},
                      NextBits{"StartDay", 5, &R::StartDay},
                      NextBits{"StartMonth", 4, &R::StartMonth},
                      NextBits{"StartHour", 5, &R::StartHour},
                      NextBits{"StartMinute", 6, &R::StartMinute},
                      NextBits{"EndDay", 5, &R::EndDay},
                      NextBits{"EndMonth", 4, &R::EndMonth},
                      NextBits{"EndHour", 5, &R::EndHour},
                      NextBits{"EndMinute", 6, &R::EndMinute}};
  }
};

// The current at one position of a tidal window.
struct AISTidalCurrent {
  double Latitude{};
  double Longitude{};
  std::int16_t FromHour{};
  std::int16_t FromMinute{};
  std::int16_t ToHour{};
  std::int16_t ToMinute{};
  std::int16_t CurrentDirection{};  // degrees
  float CurrentSpeed{};             // knots

  static constexpr auto Layout() {
    using R = AISTidalCurrent;
    constexpr Conversion kTenths{.divisor = 10};
    return std::tuple{NextBits{"Latitude", 27, &R::Latitude, kLatitude},
                      NextBits{"Longitude", 28, &R::Longitude, kLongitude},
                      NextBits{"FromHour", 5, &R::FromHour},
                      NextBits{"FromMinute", 6, &R::FromMinute},
                      NextBits{"ToHour", 5, &R::ToHour},
                      NextBits{"ToMinute", 6, &R::ToMinute},
                      NextBits{"CurrentDirection", 9, &R::CurrentDirection},
                      NextBits{"CurrentSpeed", 7, &R::CurrentSpeed, kTenths}};
  }
};

struct AISTidalWindow {
  std::int16_t Month{};
  std::int16_t Day{};
  AISTidalCurrent Position1;
  AISTidalCurrent Position2;
  AISTidalCurrent Position3;

  static constexpr auto Layout() {
    using R = AISTidalWindow;
    return std::tuple{NextBits{"Month", 4, &R::Month}, NextBits{"Day", 5, &R::Day},
                      NextGroup{"Position1", &R::Position1}, NextGroup{"Position2", &R::Position2},
                      NextGroup{"Position3", &R::Position3}};
  }
};

// Weather observation report from ship (IMO SN.1/Circ.289), the form of the meteorological
// services, report type 1, as far as the pressure tendency. Of the other form only the type is
// kept. Positions are hundredths of a degree on the air.
struct AISWeatherReport {
  std::int16_t ReportType{};
  double Latitude{};
  double Longitude{};
  std::int16_t Month{};
  std::int16_t Day{};
  std::int16_t Hour{};
  std::int16_t Minute{};   // in steps of ten
  std::int16_t COG{};      // degrees, in steps of five
  float SOG{};             // metres a second, in steps of a half
  std::int16_t Heading{};  // degrees, in steps of five
  float AirPressure{};     // hPa at sea level
  float PressureChange{};  // hPa over three hours
  std::int16_t PressureTendency{};

  static constexpr auto Layout() {
    using R = AISWeatherReport;
    constexpr auto observed = [](const R& r) { return r.ReportType == 1; };
    constexpr Conversion kHundredths{.isSigned = true, .divisor = 100};
    constexpr auto steps = [](double step) { return Conversion{.multiplier = step}; };
    constexpr auto tenthsFrom = [](double offset) {
      return Conversion{.divisor = 10, .offset = offset};
    };
    return std::tuple_cat(
        std::tuple{NextBits{"ReportType", 1, &R::ReportType}},
        OnlyWhen(observed,
                 std::tuple{
                     NextBits{"Latitude", 16, &R::Latitude, kHundredths},
                     NextBits{"Longitude", 15, &R::Longitude, kHundredths},
                     NextBits{"Month", 4, &R::Month}, NextBits{"Day", 6, &R::Day},
                     NextBits{"Hour", 5, &R::Hour}, NextBits{"Minute", 3, &R::Minute, steps(10)},
                     NextBits{"COG", 7, &R::COG, steps(5)}, NextBits{"SOG", 5, &R::SOG, steps(0.5)},
                     NextBits{"Heading", 7, &R::Heading, steps(5)},
                     NextBits{"AirPressure", 11, &R::AirPressure, tenthsFrom(900)},
                     NextBits{"PressureChange", 10, &R::PressureChange, tenthsFrom(-50)},
                     NextBits{"PressureTendency", 4, &R::PressureTendency}}));
  }
};

// What the four binary messages have in common. A field that a message does not carry keeps what
// an earlier message of the id said.
struct AISApplicationData : AISRecord {
  std::int16_t DAC{};
  std::int16_t FI{};
  std::string Description;
  std::int32_t DestinationMMSI{};
  std::int16_t RequestedDAC{};
  std::int16_t RequestedFI{};
  AISMetHydro MetHydro;
  AISDangerousCargo DangerousCargo;
  AISFairwayClosed FairwayClosed;
  AISTidalWindow TidalWindow;
  float HeightOverKeel{};  // metres
  std::int16_t Passengers{};
  AISWeatherReport WeatherReport;
};

constexpr auto ApplicationRows() {
  using R = AISApplicationData;
  return std::tuple{Kept{"DAC", &R::DAC},
                    Kept{"FI", &R::FI},
                    Kept{"Description", &R::Description},
                    Kept{"DestinationMMSI", &R::DestinationMMSI},
                    Kept{"RequestedDAC", &R::RequestedDAC},
                    Kept{"RequestedFI", &R::RequestedFI},
                    Kept{"MetHydro", &R::MetHydro},
                    Kept{"DangerousCargo", &R::DangerousCargo},
                    Kept{"FairwayClosed", &R::FairwayClosed},
                    Kept{"TidalWindow", &R::TidalWindow},
                    Kept{"HeightOverKeel", &R::HeightOverKeel},
                    Kept{"Passengers", &R::Passengers},
                    Kept{"WeatherReport", &R::WeatherReport}};
}

// Ids 6 and 8.
struct AISBinaryRecord : AISApplicationData {
  static constexpr auto Layout() { return MessageLayout(ApplicationRows()); }
};

// Ids 25 and 26.
struct AISMultiSlotRecord : AISApplicationData {
  std::int16_t Addressed{};
  std::int16_t Structured{};

  static constexpr auto Layout() {
    using R = AISMultiSlotRecord;
    return MessageLayout(std::tuple{Bits{"Addressed", 39, 39, &R::Addressed},
                                    Bits{"Structured", 40, 40, &R::Structured}},
                         ApplicationRows());
  }
};

}  // namespace fathomline
