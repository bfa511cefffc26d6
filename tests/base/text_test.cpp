#include "base/text.h"

#include <gtest/gtest.h>
#include <string>

namespace fathomline {
namespace {

TEST(Mid, CountsFromOneAndStopsAtTheEnd) {
  EXPECT_EQ(Mid("$GPGGA", 4, 3), "GGA");
  EXPECT_EQ(Mid("$GPGG", 4, 3), "GG");
  EXPECT_EQ(Mid("", 1), "");
}

TEST(Characters, AreCountedNotBytes) {
  EXPECT_EQ(CharacterCount("59°\u20AC\U0001F6A2"), 5U);
  EXPECT_EQ(FirstCharacters("°°°", 2), "°°");
  EXPECT_EQ(PadLeft("°", 3), "  °");
  EXPECT_EQ(PadRight("°", 3), "°  ");
  EXPECT_EQ(PadLeft("abcd", 3), "abcd");
}

// Overlong, cut off and stray bytes are taken alone, and never read past the end.
TEST(Characters, BytesThatAreNoUtf8CountAsOneEach) {
  EXPECT_EQ(CharacterCount("\xC0\x80"), 2U);
  EXPECT_EQ(CharacterCount("\xE0\x80\x80"), 3U);
  EXPECT_EQ(CharacterCount("\xE2\x82"), 2U);
  EXPECT_EQ(CharacterCount("\xF4\x90\x80\x80"), 4U);
  EXPECT_EQ(CharacterCount("\xED\xA0\x80\xED\xBF\xBF"), 6U) << "halves of a surrogate pair";
  std::size_t at = 0;
  EXPECT_EQ(NextCharacter("\xE5", at), char32_t{0xE5});
}

TEST(UpperCase, FoldsAsciiAndLatin1) {
  EXPECT_EQ(UpperCase("`az{ \u00E0\u00F8\u00FE"), "`AZ{ \u00C0\u00D8\u00DE");
  // Those beside, and the first and last characters of each length in bytes.
  for (const char* const other :
       {"\u00F7\u00FF\u00DF", "\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF", "\U00010000\U0010FFFF"}) {
    EXPECT_EQ(UpperCase(other), other);
  }
  EXPECT_EQ(CharacterCount("\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"), 7U);
}

TEST(Windows1252, ConvertsBothWays) {
  EXPECT_EQ(ToWindows1252("\u20AC\u00E6\u0178\u2019"), "\x80\xE6\x9F\x92");
  EXPECT_EQ(ToWindows1252("\u0080\u0100\u0416\U0001F6A2."), "????.");
  EXPECT_EQ(FromLatin1("\x80\xE6"), "\u0080\u00E6");
  for (int code = 0; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    EXPECT_EQ(ToWindows1252(FromWindows1252(byte)), byte) << code;
  }
}

TEST(FileNamePart, LeadsNowhereElse) {
  EXPECT_EQ(FileNamePart("../a\nb\x7F c°"), ".._a_b_ c°");
  EXPECT_EQ(WithoutQuotes("\"Bridge\" GPS"), "'Bridge' GPS");
}

}  // namespace
}  // namespace fathomline
