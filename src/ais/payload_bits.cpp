#include "ais/payload_bits.h"

#include <algorithm>

namespace fathomline {
namespace {

// The six bits of each character that can be received.
constexpr auto kSixBits = [] {
  std::array<std::uint8_t, 256> values{};
  for (std::size_t code = 0; code < values.size(); ++code) {
    const auto bits = ByteToBits(DearmourCharacter(static_cast<unsigned char>(code)));
    unsigned value = 0;
    for (std::size_t i = 2; i < bits.size(); ++i) value = value * 2 + (bits[i] ? 1 : 0);
    values[code] = static_cast<std::uint8_t>(value);
  }
  return values;
}();
static_assert(kSixBits['0'] == 0 && kSixBits['W'] == 39 && kSixBits['`'] == 40 &&
              kSixBits['w'] == 63);

constexpr auto kTextCharacters = [] {
  std::array<char, 64> characters{};
  for (unsigned value = 0; value < characters.size(); ++value) {
    characters[value] = SixBitToCharacter(value);
  }
  return characters;
}();

// Six bits of which only some, or none, lie in the array.
std::size_t CharacterAcrossTheEnd(const PayloadBits& bits, int first) {
  std::size_t value = 0;
  for (int i = first; i < first + PayloadBits::kBitsPerCharacter; ++i) {
    value = value * 2 + (i > PayloadBits::kCount ? 1 : bits.Unsigned(i, i));
  }
  return value;
}

}  // namespace

PayloadBits::PayloadBits(std::string_view payload) {
  // As many characters as a word holds whole.
  constexpr std::size_t kGroup = 64 / kBitsPerCharacter;
  payload = payload.substr(0, kLongestPayload);
  unsigned filled = 0;
  std::size_t word = 0;
  while (!payload.empty()) {
    const std::size_t count = std::min(payload.size(), kGroup);
    std::uint64_t group = 0;
    for (const char c : payload.substr(0, count)) {
      group = group << kBitsPerCharacter | kSixBits[static_cast<unsigned char>(c)];
    }
    payload.remove_prefix(count);
    const auto bits = static_cast<unsigned>(count) * kBitsPerCharacter;
    group <<= 64 - bits;
    words_[word] |= group >> filled;
    if (filled > 64 - bits) words_[word + 1] = group << (64 - filled);
    filled += bits;
    word += filled / 64;
    filled %= 64;
  }
}

void BitsToText(const PayloadBits& bits, int first, int last, std::string& text) {
  constexpr int kWidth = PayloadBits::kBitsPerCharacter;
  text.resize(last < first ? 0 : static_cast<std::size_t>((last - first) / kWidth + 1));
  for (char& character : text) {
    const std::size_t value = first + kWidth - 1 <= PayloadBits::kCount
                                  ? bits.Unsigned(first, first + kWidth - 1)
                                  : CharacterAcrossTheEnd(bits, first);
    character = kTextCharacters[value];
    first += kWidth;
  }
}

}  // namespace fathomline
