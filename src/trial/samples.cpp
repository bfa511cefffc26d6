#include "trial/samples.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <type_traits>
#include <utility>

namespace fathomline::trial {
namespace {

constexpr double kNotSent = std::numeric_limits<double>::quiet_NaN();

// Mode letters and the quality of GGA that they stand for, the best first.
constexpr auto kModes = std::to_array<std::pair<char, std::uint8_t>>(
    {{'R', 4}, {'F', 5}, {'P', 3}, {'D', 2}, {'A', 1}, {'E', 6}, {'M', 7}, {'S', 8}});

std::uint8_t QualityOfModes(std::string_view letters) {
  for (const auto& [letter, quality] : kModes) {
    if (letters.find(letter) != std::string_view::npos) return quality;
  }
  return 0;
}

// Of RMC and GLL. What is estimated, manual or simulated is said to be void by many receivers.
std::uint8_t QualityOfStatus(std::string_view status, char mode) {
  const std::uint8_t quality = mode == '\0' ? 1 : QualityOfModes({&mode, 1});
  return status == "A" || (status == "V" && quality >= 6) ? quality : 0;
}

std::uint8_t QualityOfNumber(double number) {
  const bool isDigit = number >= 0.0 && number <= 9.0 && number == std::floor(number);
  return isDigit ? static_cast<std::uint8_t>(number) : 0;
}

// What was sent in metres, or in a unit that was not sent.
double InMetres(double value, char unit) {
  return unit == '\0' || unit == 'M' ? value : kNotSent;
}

void AddHeight(PositionSamples& samples, double altitude, double separation) {
  samples.altitude.push_back(altitude);
  samples.separation.push_back(separation);
}

void AddValue(ValueSamples& samples, Epoch epoch, double value) {
  samples.epochs.push_back(epoch);
  samples.values.push_back(value);
}

// The first of the values that was sent; NaN where none was.
double FirstSent(std::initializer_list<double> values) {
  for (const double value : values) {
    if (!std::isnan(value)) return value;
  }
  return kNotSent;
}

constexpr double kMetresPerFoot = 0.3048;
constexpr double kMetresPerFathom = 1.8288;
constexpr double kKmPerNauticalMile = 1.852;

}  // namespace

void Samples::Take(Ledger::Name name, const Sentence& s, Epoch epoch, const Ledger& ledger) {
  const auto addValue = [&](ByName<ValueSamples>& column, double value) {
    if (!std::isnan(value)) AddValue(column.Of(name, ledger), epoch, value);
  };
  const auto addPlace = [&](double latitude, double longitude,
                            std::uint8_t quality) -> PositionSamples& {
    PositionSamples& samples = positions_.Of(name, ledger);
    const bool isPlace = !std::isnan(latitude) && !std::isnan(longitude);
    samples.type = s.type;
    samples.epochs.push_back(epoch);
    samples.latitude.push_back(isPlace ? latitude : kNotSent);
    samples.longitude.push_back(isPlace ? longitude : kNotSent);
    samples.quality.push_back(quality);
    return samples;
  };
  switch (s.type) {
    case SentenceType::GGA:
      AddHeight(
          addPlace(s.Number<&GGARecord::Latitude>(), s.Number<&GGARecord::Longitude>(),
                   QualityOfNumber(s.Number<&GGARecord::Quality>())),
          InMetres(s.Number<&GGARecord::Altitude>(), s.Letter<&GGARecord::AltitudeUnit>()),
          InMetres(s.Number<&GGARecord::GeoidalSeparation>(), s.Letter<&GGARecord::GeoidalUnit>()));
      break;
    case SentenceType::GNS:
      AddHeight(addPlace(s.Number<&GNSRecord::Latitude>(), s.Number<&GNSRecord::Longitude>(),
                         QualityOfModes(s.Text<&GNSRecord::Mode>())),
                s.Number<&GNSRecord::Altitude>(), s.Number<&GNSRecord::GeoidalSeparation>());
      break;
    case SentenceType::GLL:
      addPlace(s.Number<&GLLRecord::Latitude>(), s.Number<&GLLRecord::Longitude>(),
               QualityOfStatus(s.Text<&GLLRecord::Status>(), s.Letter<&GLLRecord::Mode>()));
      break;
    case SentenceType::RMC: {
      const std::uint8_t quality =
          QualityOfStatus(s.Text<&RMCRecord::Status>(), s.Letter<&RMCRecord::Mode>());
      addPlace(s.Number<&RMCRecord::Latitude>(), s.Number<&RMCRecord::Longitude>(), quality);
      if (quality != 0) addValue(overGround_, s.Number<&RMCRecord::SOG>());
      break;
    }
    case SentenceType::VTG:
      if (s.Letter<&VTGRecord::Mode>() == 'N') break;
      addValue(overGround_, FirstSent({s.Number<&VTGRecord::SOGKnots>(),
                                       s.Number<&VTGRecord::SOGKmh>() / kKmPerNauticalMile}));
      break;
    case SentenceType::VHW:
      addValue(throughWater_, FirstSent({s.Number<&VHWRecord::SpeedKnots>(),
                                         s.Number<&VHWRecord::SpeedKmh>() / kKmPerNauticalMile}));
      break;
    case SentenceType::DBT:
      addValue(depths_, FirstSent({s.Number<&DBTRecord::DepthMetres>(),
                                   s.Number<&DBTRecord::DepthFeet>() * kMetresPerFoot,
                                   s.Number<&DBTRecord::DepthFathoms>() * kMetresPerFathom}));
      break;
    case SentenceType::ROT:
      if (s.Letter<&ROTRecord::Status>() != 'A') break;
      addValue(ratesOfTurn_, s.Number<&ROTRecord::RateOfTurn>());
      break;
    case SentenceType::HDT:
      addValue(headings_, s.Number<&HDTRecord::Heading>());
      break;
    case SentenceType::ATT:
      addValue(headings_, s.Number<&ATTRecord::Heading>());
      addValue(pitches_, s.Number<&ATTRecord::Pitch>());
      addValue(rolls_, s.Number<&ATTRecord::Roll>());
      break;
    case SentenceType::GST: {
      ClaimSamples& samples = claims_.Of(name, ledger);
      samples.epochs.push_back(epoch);
      samples.north.push_back(s.Number<&GSTRecord::SdLat>());
      samples.east.push_back(s.Number<&GSTRecord::SdLon>());
      samples.up.push_back(s.Number<&GSTRecord::SdAlt>());
      break;
    }
    default:
      break;
  }
}

std::size_t Samples::Bytes() const {
  std::size_t bytes = 0;
  const auto add = [&](const auto& column) {
    bytes += column.capacity() * sizeof(typename std::remove_cvref_t<decltype(column)>::value_type);
  };
  for (const PositionSamples& s : Positions()) {
    add(s.epochs), add(s.latitude), add(s.longitude), add(s.altitude), add(s.separation),
        add(s.quality);
  }
  for (const ClaimSamples& s : Claims()) add(s.epochs), add(s.north), add(s.east), add(s.up);
  for (const auto* columns :
       {&headings_, &pitches_, &rolls_, &depths_, &ratesOfTurn_, &overGround_, &throughWater_}) {
    for (const ValueSamples& s : columns->Columns()) add(s.epochs), add(s.values);
  }
  return bytes;
}

}  // namespace fathomline::trial
