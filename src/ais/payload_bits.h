// The bits of an AIS message, out of the armoured payload of its sentences (NMEA 0183, annex on
// encapsulation; ITU-R M.1371).
//
// Bits are counted from 1, bit 1 being the most significant of the first character, and ranges
// include both ends.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/fault.h"
#include "base/numbers.h"

namespace fathomline {

// The code of an armoured character moved so that its low six bits are the value.
constexpr std::int16_t DearmourCharacter(unsigned char character) {
  return static_cast<std::int16_t>(character + 40 < 129 ? character + 80 : character + 72);
}

// The eight bits of a value, index 0 for 2^7. A value above 255 gives eight ones.
constexpr std::array<bool, 8> ByteToBits(std::int16_t value) {
  std::array<bool, 8> bits{};
  for (int k = 7; k >= 0; --k) {
    const auto weight = static_cast<std::int16_t>(1 << k);
    if (value < weight) continue;
    bits[static_cast<std::size_t>(7 - k)] = true;
    value = static_cast<std::int16_t>(value - weight);
  }
  return bits;
}

// A character of six-bit text, from a value of 0 to 63. The fill character "@" becomes a blank.
constexpr char SixBitToCharacter(unsigned value) {
  const unsigned code = value < 32 ? value + 64 : value;
  return code == 64 || code == 96 ? ' ' : static_cast<char>(code);
}

// An array of 1064 bits, of which a payload fills at most the first 1008 and the rest is zero.
class PayloadBits {
 public:
  static constexpr int kCount = 1064;
  static constexpr int kBitsPerCharacter = 6;
  static constexpr std::size_t kLongestPayload = 168;  // characters; more are passed over

  explicit PayloadBits(std::string_view payload);

  // The bits as an unsigned number. Raises OutOfRange beyond the array; at most 64 bits.
  std::uint64_t Unsigned(int first, int last) const {
    if (first < 1 || last > kCount) Raise(FaultNumber::OutOfRange);
    const auto offset = static_cast<unsigned>(first - 1);
    const unsigned shift = offset % 64;
    const std::size_t word = offset / 64;
    std::uint64_t window = words_[word] << shift;
    if (shift != 0) window |= words_[word + 1] >> (64 - shift);
    return window >> (63 - (last - first));
  }

 private:
  // One word more than the bits need, so that a window may always take two.
  std::array<std::uint64_t, kCount / 64 + 2> words_{};
};

// The bits from `first` to `last`, at most 53 of them, as a number.
//
// A signed number is negative only above its top bit alone: that single pattern stays positive.
// Where all ones mean no value, they give NoValue times the factor by which the caller divides.
inline double BitsToValue(const PayloadBits& bits, int first, int last, bool isSigned = false,
                          bool allOnesMeansNoValue = false, double factor = 1.0) {
  const auto sum = static_cast<std::int64_t>(bits.Unsigned(first, last));
  const std::int64_t topBit = std::int64_t{1} << (last - first);
  if (allOnesMeansNoValue && sum == 2 * topBit - 1) return NoValue * factor;
  return static_cast<double>(isSigned && sum > topBit ? sum - 2 * topBit : sum);
}

// The six-bit text whose characters begin at `first`, `first` + 6 and so on up to `last`, into
// `text`. Every bit beyond the array reads as set.
void BitsToText(const PayloadBits& bits, int first, int last, std::string& text);

}  // namespace fathomline
