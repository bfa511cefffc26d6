// Numbers and positions as the user reads them.
//
// Angles are degrees, south and west negative. The type of an angle is "LAT", "LON" or anything
// else for a plain one (a bearing), in either case; the mode is "FILE", whose degree mark is the
// character of code 248 as files of the older character set have it, or anything else ("FORM").
//
// Decimals are those of the last unit. FormatCoordinateDM knows 0 to 6 and takes every other count
// as 6; the other two know 0 to 4 and take every other count as 4. A last unit that would round to
// 60 is carried into the next one.
#pragma once

#include <string>
#include <string_view>

#include "base/format.h"
#include "base/numbers.h"

namespace fathomline {

// 59° 30.0000' N
std::string FormatCoordinateDM(double value, std::string_view type, std::string_view mode,
                               int decimals);
// 59° 30' 12.25" N. An angle that is no position shows negative degrees.
std::string FormatCoordinateDMS(double value, std::string_view type, std::string_view mode,
                                int decimals);
// 59°30'12.25"N
std::string FormatCoordinateCompact(double value, std::string_view type, std::string_view mode,
                                    int decimals);

// The form that the user has chosen, for the screen.
std::string FormatCoordinate(bool isDMS, int decimals, double value, std::string_view type);

// The value through the picture, with blanks in front up to the width of the picture.
std::string FormatRightAligned(double value, std::string_view picture);

// Seconds of a day as "hh:mm:ss", with 0 to 4 decimals; every other count gives none. Rounded to
// the decimals shown before it is split, so that neither minutes nor seconds ever read 60.
std::string FormatSecondsOfDay(double seconds, int decimals);

// The general number-to-text conversion, with its leading blank; "n/a" for NoValue.
template <class Number>
std::string ValueText(Number value) {
  return value == Number{NoValue} ? std::string(kNotAvailable) : NumberText(value);
}

// Through the picture; "n/a" for NoValue.
template <class Number>
std::string FormattedValueText(Number value, std::string_view picture) {
  return value == Number{NoValue} ? std::string(kNotAvailable)
                                  : Format(static_cast<double>(value), picture);
}

// The lenient number reading of what a user typed: a decimal comma is as good as a point. Raises
// Overflow as ReadNumber does.
double NumberFromText(std::string_view text);

// The place of a point on a compass rose, north up: x to the right, y upward. The angle is radians
// clockwise from north.
double PolarX(double radius, double centre, double angle);
double PolarY(double radius, double centre, double angle);

}  // namespace fathomline
