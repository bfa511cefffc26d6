#include "decoding/coordinate_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.h"

namespace fathomline {
namespace {

constexpr auto kLastUnitPictures = std::to_array<std::string_view>(
    {"00", "00.0", "00.00", "00.000", "00.0000", "00.00000", "00.000000"});
constexpr int kMostSecondDecimals = 4;
constexpr int kMostMinuteDecimals = 6;

// How the angles of a type are written.
struct AngleForm {
  std::string_view type;
  std::string_view degreesPicture;
  std::string_view positive;
  std::string_view negative;
};
constexpr auto kPositionForms = std::to_array<AngleForm>({
    {"LAT", "00", "N", "S"},
    {"LON", "000", "E", "W"},
});
constexpr AngleForm kPlainForm = {"", "000", "", ""};

const AngleForm& FormOf(std::string_view type) {
  const std::string folded = UpperCase(type);
  const auto* const found =
      std::find_if(kPositionForms.begin(), kPositionForms.end(),
                   [&](const AngleForm& form) { return form.type == folded; });
  return found == kPositionForms.end() ? kPlainForm : *found;
}

std::string_view DegreeMark(std::string_view mode) {
  return UpperCase(mode) == "FILE" ? "\u00F8" : "\u00B0";
}

std::string_view LastUnitPicture(int decimals, int most) {
  const bool known = decimals >= 0 && decimals <= most;
  return kLastUnitPictures[static_cast<std::size_t>(known ? decimals : most)];
}

// The smallest value that its picture would round to 60.
double CarryLimit(int decimals) {
  // Beyond the digits of a double a further term changes nothing.
  constexpr int kSignificant = 17;
  const int terms = std::min(decimals, kSignificant);
  double limit = 59.0;
  for (int i = 1; i <= terms; ++i) limit += 9.0 / std::pow(10.0, i);
  return limit + 5.0 / std::pow(10.0, terms + 1.0);
}

struct Sexagesimal {
  double degrees = 0.0;
  double minutes = 0.0;
  double seconds = 0.0;
};

Sexagesimal SplitWithSeconds(double value, int decimals) {
  const double magnitude = std::abs(value);
  Sexagesimal parts;
  parts.degrees = std::trunc(magnitude);
  const double minutes = (magnitude - parts.degrees) * 60.0;
  parts.minutes = std::trunc(minutes);
  parts.seconds = (minutes - parts.minutes) * 60.0;

  if (parts.seconds >= CarryLimit(decimals)) {
    parts.minutes += 1.0;
    parts.seconds = 0.0;
  }
  // A fraction of a degree next to 1 gives 60 minutes by itself.
  if (parts.minutes >= 60.0) {
    parts.degrees += 1.0;
    parts.minutes = 0.0;
  }
  return parts;
}

std::string WithSeconds(double value, std::string_view type, std::string_view mode, int decimals,
                        std::string_view blank) {
  const AngleForm& form = FormOf(type);
  const Sexagesimal parts = SplitWithSeconds(value, decimals);
  const bool negative = value < 0.0;
  const std::string_view letter = negative ? form.negative : form.positive;

  std::string text =
      Format(letter.empty() && negative ? -parts.degrees : parts.degrees, form.degreesPicture);
  text.append(DegreeMark(mode)).append(blank);
  text.append(Format(parts.minutes, "00")).append("'").append(blank);
  text.append(Format(parts.seconds, LastUnitPicture(decimals, kMostSecondDecimals))).append("\"");
  if (!letter.empty()) text.append(blank).append(letter);
  return text;
}

}  // namespace

std::string FormatCoordinateDM(double value, std::string_view type, std::string_view mode,
                               int decimals) {
  const AngleForm& form = FormOf(type);
  const double magnitude = std::abs(value);
  double degrees = std::trunc(magnitude);
  double minutes = (magnitude - degrees) * 60.0;
  if (minutes >= CarryLimit(decimals)) {
    degrees += 1.0;
    minutes = 0.0;
  }
  const std::string_view letter = value < 0.0 ? form.negative : form.positive;

  std::string text = Format(degrees, form.degreesPicture);
  text.append(DegreeMark(mode)).append(" ");
  text.append(Format(minutes, LastUnitPicture(decimals, kMostMinuteDecimals))).append("'");
  if (!letter.empty()) text.append(" ").append(letter);
  return text;
}

std::string FormatCoordinateDMS(double value, std::string_view type, std::string_view mode,
                                int decimals) {
  return WithSeconds(value, type, mode, decimals, " ");
}

std::string FormatCoordinateCompact(double value, std::string_view type, std::string_view mode,
                                    int decimals) {
  return WithSeconds(value, type, mode, decimals, "");
}

std::string FormatCoordinate(bool isDMS, int decimals, double value, std::string_view type) {
  return isDMS ? FormatCoordinateDMS(value, type, "FORM", decimals)
               : FormatCoordinateDM(value, type, "FORM", decimals);
}

std::string FormatRightAligned(double value, std::string_view picture) {
  return PadLeft(Format(value, picture), CharacterCount(picture));
}

// Rounded before it is split, so that no part ever shows 60.
std::string FormatSecondsOfDay(double seconds, int decimals) {
  const int shown = decimals >= 1 && decimals <= kMostSecondDecimals ? decimals : 0;
  const double scale = std::pow(10.0, shown);
  const double units = std::round(seconds * scale);
  const double unitsInMinute = 60.0 * scale;
  const double minutes = std::trunc(units / unitsInMinute);
  return Format(std::trunc(minutes / 60.0), "00:") + Format(std::fmod(minutes, 60.0), "00:") +
         Format(std::fmod(units, unitsInMinute) / scale,
                LastUnitPicture(shown, kMostSecondDecimals));
}

double NumberFromText(std::string_view text) {
  std::string copy(text);
  std::replace(copy.begin(), copy.end(), ',', '.');
  return ReadNumber(copy);
}

double PolarX(double radius, double centre, double angle) {
  return radius * std::sin(angle) + centre;
}

double PolarY(double radius, double centre, double angle) {
  return radius * std::cos(angle) + centre;
}

}  // namespace fathomline
