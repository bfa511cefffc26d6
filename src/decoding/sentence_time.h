// The time that a sentence tells, read from its text alone: for who has to know when it was sent
// without decoding it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fathomline {

struct SentenceTime {
  std::int64_t ofDay = 0;           // milliseconds since midnight, UTC
  std::optional<std::int64_t> day;  // since 1 January 1970, where the sentence tells its date
};

// Of a GGA, GNS, GLL, RMC, GST or ZDA, whatever its talker (NMEA 0183: "hhmmss" and decimals; RMC
// "ddmmyy" of this century). None for other sentences, and where the time is empty or is none. The
// date of an RMC counts where its status is "A", since receivers without a fix send any date.
std::optional<SentenceTime> TimeOfSentence(std::string_view sentence);

}  // namespace fathomline
