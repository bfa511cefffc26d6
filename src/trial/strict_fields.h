// The strict reading of one field of a sentence: its whole text has the form, or it is not read.
//
// Nothing depends on the locale. Forms are those of NMEA 0183.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fathomline::trial {

// "[+-]d[.d]" with at least one digit at each d: no exponent, no blanks.
std::optional<double> ReadStrictNumber(std::string_view text);

// Degrees from "ddmm.m" and "N" or "S", or from "dddmm.m" and "E" or "W"; north and east positive.
// Minutes are below 60; at most 90 and 180 degrees.
std::optional<double> ReadStrictLatitude(std::string_view text, std::string_view hemisphere);
std::optional<double> ReadStrictLongitude(std::string_view text, std::string_view hemisphere);

// Whole milliseconds of the day, half up, from "hhmmss[.s]": 0 to 86,400,000.
std::optional<std::int64_t> ReadStrictTime(std::string_view text);

// Days since the beginning of 1970 from "ddmmyy" of the calendar; years from 80 are those of 19yy.
std::optional<std::int64_t> ReadStrictDate(std::string_view text);

// Days since the beginning of 1970; nothing where the calendar has no such day, or the year does
// not have three or four digits. Parts that are no whole numbers are no date.
std::optional<std::int64_t> DayOfDate(double year, double month, double day);

// Whether all characters are those of an armoured AIS payload.
bool IsArmoured(std::string_view text);

}  // namespace fathomline::trial
