// Looking for a byte in eight at a time: the fields of a sentence are too short for a call.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace fathomline {

// Eight bytes as one number, the first one lowest on every machine.
inline std::uint64_t LoadEight(const char* bytes) {
  static_assert(std::endian::native == std::endian::little, "Swap the bytes here.");
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Marks bytes of eight that are the wanted one by their top bits: the lowest mark is right, those
// above it may not be. 0 where none is.
constexpr std::uint64_t MarkByte(std::uint64_t eight, char wanted) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t zeroWhereWanted = eight ^ (kOnes * static_cast<unsigned char>(wanted));
  return (zeroWhereWanted - kOnes) & ~zeroWhereWanted & (kOnes << 7);
}

// The first such byte of a range, or its end.
inline const char* FindByte(const char* at, const char* end, char wanted) {
  for (; end - at >= 8; at += 8) {
    const std::uint64_t marks = MarkByte(LoadEight(at), wanted);
    if (marks != 0) return at + std::countr_zero(marks) / 8;
  }
  while (at != end && *at != wanted) ++at;
  return at;
}

}  // namespace fathomline
