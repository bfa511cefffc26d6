#include "ais/payload_bits.h"

#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <utility>

#include "ais/sentence_feed.h"

namespace fathomline {
namespace {

// The top bit alone stays positive.
TEST(PayloadBits, SignedNumbers) {
  for (const auto& [pattern, value] :
       {std::pair{0x80, 128}, {0x81, -127}, {0xFF, -1}, {0x7F, 127}}) {
    const PayloadBits bits(MessageBits(8).Put(1, 8, pattern).Payload());
    EXPECT_EQ(BitsToValue(bits, 1, 8, true), value);
  }
}

// Every range of a payload that is longer than the array takes, against one boolean per bit: all
// characters of a message, and those on both sides of them.
TEST(PayloadBits, EqualsAnArrayOfBooleans) {
  std::string payload(180, '0');
  std::iota(payload.begin(), payload.end(), '\x1E');
  std::array<bool, 1065> expected{};
  for (int p = 0; p < 168; ++p) {
    const int code = static_cast<unsigned char>(payload[static_cast<std::size_t>(p)]);
    const int value = code + 40 < 129 ? code + 80 : code + 72 > 255 ? 255 : code + 72;
    for (int b = 0; b < 6; ++b) {
      expected[static_cast<std::size_t>(p * 6 + b + 1)] = (value >> (5 - b) & 1) != 0;
    }
  }
  const PayloadBits bits(payload);
  for (int first = 1; first <= PayloadBits::kCount; ++first) {
    double sum = 0;
    for (int last = first; last <= PayloadBits::kCount && last < first + 53; ++last) {
      sum = sum * 2 + (expected[static_cast<std::size_t>(last)] ? 1 : 0);
      ASSERT_EQ(BitsToValue(bits, first, last), sum) << first << " to " << last;
    }
  }
  EXPECT_THROW(bits.Unsigned(1060, 1065), Fault);
  EXPECT_THROW(bits.Unsigned(0, 5), Fault);
}

TEST(PayloadBits, TextPastTheEnd) {
  const PayloadBits bits("");
  std::string text;
  BitsToText(bits, 1059, 1082, text);
  EXPECT_EQ(text, " ???");
  // Two bits of the first character still lie inside.
  BitsToText(bits, 1063, 1069, text);
  EXPECT_EQ(text, "O?");
  BitsToText(bits, 73, 72, text);
  EXPECT_EQ(text, "");
  BitsToText(bits, 1, 7, text);
  EXPECT_EQ(text, "  ");
}

}  // namespace
}  // namespace fathomline
