// What a sentence calls itself: the characters between its "$" or "!" and the first comma (NMEA
// 0183, "address field"). Two letters of the talker and three of the sentence, or a "P" and a
// proprietary name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/byte_search.h"

namespace fathomline {

// Kept as one number, so that a table of addresses costs a multiplication to look into.
class SentenceAddress {
 public:
  static constexpr std::size_t kLongest = 8;

  constexpr SentenceAddress() = default;
  // From the beginning of a text up to its comma; longer ones are cut at kLongest. None where a
  // character before that is no capital letter or digit, or where fewer than three stand there.
  static constexpr SentenceAddress Of(std::string_view text) {
    std::uint64_t packed = 0;
    std::size_t count = 0;
    for (; count < text.size() && count < kLongest; ++count) {
      const char c = text[count];
      if (c == ',' || c == '*') break;
      if (!(c >= 'A' && c <= 'Z') && !(c >= '0' && c <= '9')) return {};
      packed |= static_cast<std::uint64_t>(static_cast<unsigned char>(c)) << (8 * count);
    }
    return SentenceAddress(count < kLeast ? 0 : packed);
  }

  // What Packed() says of the address of a text that is one, in fewer steps; of any other text
  // something that no address has, or 0.
  static std::uint64_t PackedOf(std::string_view text) {
    if (text.size() < kLongest) return 0;
    const std::uint64_t packed = LoadEight(text.data());
    const std::uint64_t commas = MarkByte(packed, ',');
    // All bits below those of the comma.
    return commas == 0 ? packed : packed & ((commas ^ (commas - 1)) >> 8);
  }

  constexpr bool None() const { return packed_ == 0; }
  constexpr std::uint64_t Packed() const { return packed_; }
  std::string Text() const;
  // "GP", or "P" of a proprietary sentence.
  std::string Talker() const;
  // "GGA", or the proprietary name.
  std::string Sentence() const;

  constexpr bool operator==(const SentenceAddress&) const = default;

 private:
  static constexpr std::size_t kLeast = 3;

  explicit constexpr SentenceAddress(std::uint64_t packed) : packed_(packed) {}

  std::uint64_t packed_ = 0;
};

// The sentence of a line without what stands around it: a tag block (a text between two
// backslashes) in front, the line end behind. Empty where no "$" or "!" begins it.
std::string_view SentenceOf(std::string_view line);

// The address of a line's sentence.
inline SentenceAddress AddressOf(std::string_view line) {
  // Nearly every line begins with its sentence.
  if (line.empty() || (line.front() != '$' && line.front() != '!')) line = SentenceOf(line);
  return line.empty() ? SentenceAddress() : SentenceAddress::Of(line.substr(1));
}

// Whether a sentence is what its checksum says; None where it has none (no "*"
// two characters before the end).
enum class ChecksumVerdict : std::uint8_t { Right, Wrong, None };
ChecksumVerdict JudgeChecksum(std::string_view sentence);

}  // namespace fathomline
