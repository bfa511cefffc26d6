#include "decoding/coordinate_parser.h"

#include <array>
#include <cstddef>
#include <span>

#include "base/fault.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

// What is to be known of the angle before its text is read.
struct AngleInput {
  std::string_view name;  // as messages call it
  std::string_view degreesPicture;
  std::string_view positive;
  std::string_view negative;
  std::string_view messageLetter;  // that a message names as the default
  double most;                     // degrees; 0 where there is no limit
};
constexpr AngleInput kLatitude = {"LATITUDE", "00", "N", "S", "N", 90.0};
constexpr AngleInput kLongitude = {"LONGITUDE", "000", "E", "W", "E", 180.0};
constexpr AngleInput kAzimuth = {"AZIMUTH", "000", "", "", "N", 0.0};

bool IsPosition(const AngleInput& angle) {
  return !angle.positive.empty();
}

struct TypedAngle {
  double degrees = 0.0;
  double minutes = 0.0;
  double seconds = 0.0;
  bool minus = false;
  std::string hemisphere;

  double Value() const { return degrees + minutes / 60.0 + seconds / 3600.0; }
  double SignedValue() const { return hemisphere == "S" || hemisphere == "W" ? -Value() : Value(); }
};

// A unit as it is typed. Only the last one of an angle has decimals.
struct TypedUnit {
  double TypedAngle::*member;
  bool decimal;
  std::u32string_view closingMarks;
};
constexpr std::u32string_view kDegreeMarks = U"\u00B0\u00F8";
constexpr auto kDegreesMinutesSeconds = std::to_array<TypedUnit>({
    {&TypedAngle::degrees, false, kDegreeMarks},
    {&TypedAngle::minutes, false, U"'"},
    {&TypedAngle::seconds, true, U"\""},
});
constexpr auto kDegreesMinutes = std::to_array<TypedUnit>({
    {&TypedAngle::degrees, false, kDegreeMarks},
    {&TypedAngle::minutes, true, U"'"},
});

// Tells the user what is wrong, in the dress of its parser.
class Complaint {
 public:
  Complaint(MessageBox dress, std::string_view name, Dialogs& dialogs)
      : dress_(std::move(dress)), name_(name), dialogs_(dialogs) {}

  void operator()(std::string_view what, std::string_view inFront = {}) const {
    MessageBox box = dress_;
    box.text.append(inFront).append(name_).append(what);
    dialogs_.Ask(box);
  }

 private:
  MessageBox dress_;
  std::string_view name_;
  Dialogs& dialogs_;
};

enum class Behind { Nothing, Hemisphere, NextUnit };

struct UnitText {
  std::string_view number;
  Behind behind = Behind::Nothing;
  std::string_view rest;
};

bool IsLetter(char32_t c) {
  return (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z') || (c >= 0xC0 && c <= 0xFF);
}

UnitText CutUnit(std::string_view text, const TypedUnit& unit) {
  const std::string_view ofNumber = unit.decimal ? "0123456789.," : "0123456789";
  const std::size_t end = text.find_first_not_of(ofNumber);
  if (end == std::string_view::npos) return {text, Behind::Nothing, {}};

  const std::string_view number = text.substr(0, end);
  std::size_t next = end;
  const char32_t mark = NextCharacter(text, next);
  if (next == text.size()) {
    const bool closes = unit.closingMarks.find(mark) != std::u32string_view::npos;
    return {number, closes ? Behind::Nothing : Behind::Hemisphere, text.substr(end)};
  }
  // Between units any one character separates. Behind the last one a letter is no separator: it
  // belongs to the hemisphere.
  const bool separates = !unit.decimal || !IsLetter(mark);
  return {number, Behind::NextUnit, TrimLeft(text.substr(separates ? next : end))};
}

double ReadUnit(std::string_view number, const TypedUnit& unit) {
  if (unit.decimal) return ToSingle(NumberFromText(number));
  return ToInt16(ReadNumber(number));
}

std::string ReadHemisphere(std::string_view letter, const AngleInput& angle) {
  std::string hemisphere = UpperCase(letter);
  if (angle.name == kLongitude.name) {
    // East and west of a Scandinavian compass.
    if (hemisphere == "\u00D8") return "E";
    if (hemisphere == "V") return "W";
  }
  return hemisphere;
}

TypedAngle ReadAngle(std::string_view text, const AngleInput& angle,
                     std::span<const TypedUnit> units, const Complaint& complain) {
  TypedAngle typed;
  typed.hemisphere = angle.positive;
  text = Trim(text);
  if (text.starts_with('-')) {
    typed.minus = true;
    typed.hemisphere = angle.negative;
    text = TrimLeft(text.substr(1));
  }

  for (const TypedUnit& unit : units) {
    const UnitText cut = CutUnit(text, unit);
    typed.*unit.member = ReadUnit(cut.number, unit);
    if (cut.behind == Behind::Nothing) return typed;
    text = cut.rest;
    if (cut.behind == Behind::Hemisphere) break;
  }

  if (CharacterCount(text) == 1) {
    typed.hemisphere = ReadHemisphere(text, angle);
  } else {
    complain(" CHARACTER FORMAT ERROR. Default, " + std::string(angle.messageLetter) + ", used",
             std::string(text) + "!   ");
  }
  return typed;
}

void LimitPosition(TypedAngle& typed, const AngleInput& angle, const Complaint& complain) {
  if (typed.Value() <= angle.most) return;
  complain(" FORMAT ERROR. Max " + Format(angle.most, "0") + " deg allowed");
  typed.degrees = angle.most;
  typed.minutes = 0.0;
  typed.seconds = 0.0;
}

void WrapBearing(TypedAngle& typed, const Complaint& complain) {
  if (typed.minus) {
    complain(" FORMAT ERROR. Negative values not allowed. Automatic adjustment to range 0-360 deg");
    typed.degrees = -typed.degrees;
    while (typed.degrees <= 0.0) typed.degrees += 360.0;
  }
  if (typed.degrees >= 360.0) {
    complain(" FORMAT ERROR. Max value 360 deg. Automatic adjustment to range 0-360 deg");
    while (typed.degrees >= 360.0) typed.degrees -= 360.0;
  }
}

void CarryUnit(double& unit, double& larger, std::string_view message, const Complaint& complain) {
  if (unit < 60.0) return;
  complain(message);
  larger += 1.0;
  unit = 0.0;
}

void CheckHemisphere(TypedAngle& typed, const AngleInput& angle, const Complaint& complain) {
  if (typed.hemisphere == angle.positive || typed.hemisphere == angle.negative) return;
  complain(" FORMAT ERROR. Default, " + std::string(angle.positive) + ", used");
  typed.hemisphere = angle.positive;
}

template <class Parse>
double Guarded(const Complaint& complain, Parse&& parse) {
  try {
    return parse();
  } catch (const Fault&) {
    complain(" FORMAT ERROR. ");
    return 0.0;
  }
}

}  // namespace

double ParseCoordinateDMS(std::string& text, std::string_view type, Dialogs& dialogs) {
  const AngleInput& angle = UpperCase(type) == "LAT" ? kLatitude : kLongitude;
  const Complaint complain(MessageBox{}, angle.name, dialogs);

  return Guarded(complain, [&] {
    TypedAngle typed = ReadAngle(text, angle, kDegreesMinutesSeconds, complain);
    LimitPosition(typed, angle, complain);
    CarryUnit(typed.seconds, typed.minutes, " SECOND FORMAT ERROR. Max 59.9999 allowed", complain);
    CarryUnit(typed.minutes, typed.degrees, " MINUTE FORMAT ERROR. Max 59 allowed", complain);
    CheckHemisphere(typed, angle, complain);
    text = Format(typed.degrees, angle.degreesPicture) + "\u00B0" + Format(typed.minutes, "00") +
           "'" + Format(typed.seconds, "00.0000") + "\"" + typed.hemisphere;
    return typed.SignedValue();
  });
}

double ParseCoordinateDM(std::string& text, std::string_view type, int decimals, Dialogs& dialogs) {
  const std::string folded = UpperCase(type);
  const AngleInput& angle = folded == "LAT" ? kLatitude : folded == "LON" ? kLongitude : kAzimuth;
  const Complaint complain({.text = {}, .title = "Illegal input", .icon = BoxIcon::Exclamation},
                           angle.name, dialogs);

  return Guarded(complain, [&] {
    TypedAngle typed = ReadAngle(text, angle, kDegreesMinutes, complain);
    if (IsPosition(angle)) {
      LimitPosition(typed, angle, complain);
    } else if (folded == "BRG") {
      WrapBearing(typed, complain);
    }
    CarryUnit(typed.minutes, typed.degrees, " MINUTE FORMAT ERROR. Max 60 allowed", complain);
    if (IsPosition(angle)) CheckHemisphere(typed, angle, complain);
    const double value = typed.SignedValue();
    text = FormatCoordinateDM(value, folded, "FORM", decimals);
    return value;
  });
}

}  // namespace fathomline
