// Text in memory is UTF-8 and counted in characters; received lines are bytes and stay bytes: for
// these are Mid, the trims and FromLatin1.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fathomline {

// The n bytes from position p, counted from 1; shorter or empty where the text ends before.
inline std::string_view Mid(std::string_view text, std::size_t p, std::size_t n) {
  return p - 1 < text.size() ? text.substr(p - 1, n) : std::string_view{};
}
inline std::string_view Mid(std::string_view text, std::size_t p) {
  return Mid(text, p, std::string_view::npos);
}

// A text without its leading or trailing blanks (code 32 only).
std::string_view TrimLeft(std::string_view text);
std::string_view Trim(std::string_view text);
// A line of a file, or a part of one, without blanks, tabs and carriage returns at its ends.
std::string_view TrimLine(std::string_view line);

// Received bytes as text: bytes above 127 are read as Latin-1.
std::string FromLatin1(std::string_view bytes);

// Number of characters of a UTF-8 text. A byte that begins no character counts as one.
std::size_t CharacterCount(std::string_view text);
// The first n characters.
std::string_view FirstCharacters(std::string_view text, std::size_t n);
// The text with blanks in front, or behind, up to the given number of characters.
std::string PadLeft(std::string_view text, std::size_t width);
std::string PadRight(std::string_view text, std::size_t width);
// ASCII and Latin-1 letters folded to upper case.
std::string UpperCase(std::string_view text);

// What editors put in front of UTF-8 text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Files of the older character set: Windows-1252. A character that it cannot hold becomes "?".
std::string ToWindows1252(std::string_view text);
std::string FromWindows1252(std::string_view bytes);

// A name made fit to be part of a file name: what the system's file names cannot hold, such as "/",
// becomes "_".
std::string FileNamePart(std::string_view name);
// A double quote becomes an apostrophe, since the setup file cannot hold one.
std::string WithoutQuotes(std::string_view text);

// One character of UTF-8 at `at`, which moves behind it. Bytes that are no UTF-8 are taken alone,
// as Latin-1.
char32_t NextCharacter(std::string_view text, std::size_t& at);
void AppendCharacter(std::string& text, char32_t character);

}  // namespace fathomline
