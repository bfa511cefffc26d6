#include "windows/numerics_values.h"

#include <array>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "decoding/angles.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

using Texts = std::vector<std::string>;

constexpr std::array<std::string_view, 9> kQualities = {" - Invalid",
                                                        " - GPS",
                                                        " - dGPS",
                                                        " - PPS",
                                                        " - RTK, fixed integers",
                                                        " - RTK, floating integers",
                                                        " - Estimated (DR)",
                                                        " - Manual input",
                                                        " - Simulator mode"};

struct Writer {
  const CoordinateForm& form;

  std::string Latitude(double radians) const { return Coordinate(radians, "LAT"); }
  std::string Longitude(double radians) const { return Coordinate(radians, "LON"); }
  std::string Coordinate(double radians, std::string_view type) const {
    return FormatCoordinate(form.isDMS, form.decimals, radians * kDegreesPerRadian, type);
  }

  static std::string WithLetter(float value, char letter) {
    return ValueText(value) + " " + FromLatin1({&letter, 1});
  }

  static std::string Quality(std::int16_t quality) {
    if (quality == NoValue) return std::string(kNotAvailable);
    std::string text = PlainText(quality);
    if (quality >= 0 && static_cast<std::size_t>(quality) < kQualities.size()) {
      text += kQualities[static_cast<std::size_t>(quality)];
    }
    return text;
  }

  static std::string PositionStatus(std::string status) {
    if (status == "A") return status + " - Valid";
    if (status == "V") return status + " - Invalid";
    return status;
  }

  static std::string TurnStatus(char status) {
    return FromLatin1({&status, 1}) + (status == 'A' ? " - Valid" : " - Invalid");
  }

  static std::string Padded(std::int16_t number, std::string_view picture) {
    return FormattedValueText(number, picture);
  }

  Texts operator()(std::monostate) const { return {}; }

  Texts operator()(const GGARecord& r) const {
    return {Latitude(r.Latitude),
            Longitude(r.Longitude),
            ValueText(EllipsoidalHeight(r.Altitude, r.GeoidalSeparation)),
            WithLetter(r.GeoidalSeparation, r.GeoidalUnit),
            WithLetter(r.Altitude, r.AltitudeUnit),
            Quality(r.Quality),
            ValueText(r.Satellites),
            ValueText(r.HDOP),
            ValueText(r.DGPSAge),
            ValueText(r.DGPSStation),
            r.Time};
  }

  Texts operator()(const GNSRecord& r) const {
    return {Latitude(r.Latitude),
            Longitude(r.Longitude),
            ValueText(EllipsoidalHeight(r.Altitude, r.GeoidalSeparation)),
            WithLetter(r.GeoidalSeparation, 'm'),
            WithLetter(r.Altitude, 'm'),
            r.Mode,
            ValueText(r.Satellites),
            ValueText(r.HDOP),
            ValueText(r.DGPSAge),
            ValueText(r.DGPSStation),
            r.Time};
  }

  Texts operator()(const GLLRecord& r) const {
    return {Latitude(r.Latitude), Longitude(r.Longitude),
            PositionStatus(FromLatin1({&r.Status, 1})), r.Time};
  }

  Texts operator()(const RMCRecord& r) const {
    return {Latitude(r.Latitude),
            Longitude(r.Longitude),
            ValueText(r.SOG),
            ValueText(r.COG),
            WithLetter(r.MagneticVariation, r.MagneticVariationSide),
            PositionStatus(r.Status),
            r.Time,
            r.Date};
  }

  Texts operator()(const VTGRecord& r) const {
    return {ValueText(r.COGTrue), ValueText(r.COGMagnetic), ValueText(r.SOGKnots),
            ValueText(r.SOGKmh)};
  }

  Texts operator()(const ZDARecord& r) const {
    return {Padded(r.Day, "00") + "-" + Padded(r.Month, "00") + "-" + Padded(r.Year, "0000"),
            r.Time, Padded(r.ZoneHours, "00") + ":" + Padded(r.ZoneMinutes, "00")};
  }

  Texts operator()(const HDTRecord& r) const { return {ValueText(r.Heading)}; }

  Texts operator()(const ATTRecord& r) const {
    return {ValueText(r.Heading), ValueText(r.Pitch), ValueText(r.Roll)};
  }

  Texts operator()(const ROTRecord& r) const {
    return {ValueText(r.RateOfTurn), TurnStatus(r.Status)};
  }

  Texts operator()(const VHWRecord& r) const {
    return {ValueText(r.SpeedKnots), ValueText(r.SpeedKmh), ValueText(r.HeadingTrue),
            ValueText(r.HeadingMagnetic)};
  }

  Texts operator()(const DBTRecord& r) const {
    return {ValueText(r.DepthFeet), ValueText(r.DepthMetres), ValueText(r.DepthFathoms)};
  }

  Texts operator()(const GSTRecord& r) const {
    return {ValueText(r.RMS),   ValueText(r.SdMajor), ValueText(r.SdMinor), ValueText(r.DirMajor),
            ValueText(r.SdLat), ValueText(r.SdLon),   ValueText(r.SdAlt)};
  }
};

}  // namespace

float EllipsoidalHeight(float altitude, float separation) {
  constexpr float kMissing = NoValue;
  if (altitude == kMissing || separation == kMissing) return kMissing;
  return SingleSum(altitude, separation);
}

std::vector<std::string> NumericsValues(const NumericsRecord& record, const CoordinateForm& form) {
  return std::visit(Writer{form}, record);
}

}  // namespace fathomline
