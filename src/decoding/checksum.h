// The checksum of NMEA 0183: the characters between the first one and the "*", XORed.
#pragma once

#include <array>
#include <string_view>

namespace fathomline {

// Two characters of text.
struct ChecksumText {
  std::array<char, 2> digits;
  operator std::string_view() const { return {digits.data(), digits.size()}; }
};

// Two upper-case hexadecimal digits. The first character is dropped unseen; without a "*" all the
// rest counts. "XX" where no character is left to sum.
ChecksumText ComputeChecksum(std::string_view sentence);

// Whether the last two characters, a CR LF behind them aside, are the checksum. False below six
// characters. A line that ends in a line feed alone fails, and so do lower-case digits.
bool TestChecksum(std::string_view sentence);

}  // namespace fathomline
