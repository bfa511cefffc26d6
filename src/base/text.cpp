#include "base/text.h"

#include <algorithm>
#include <array>

#include "base/system.h"

namespace fathomline {
namespace {

// Codes 0x80 to 0x9F of Windows-1252; 0 where it has no character. The rest equals Latin-1.
constexpr auto kWindows1252 = std::to_array<char32_t>(
    {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
     0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
     0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178});

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

template <class Transform>
std::string Transformed(std::string_view text, Transform transform) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    AppendCharacter(result, transform(NextCharacter(text, at)));
  }
  return result;
}

}  // namespace

std::string_view TrimLeft(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

std::string_view Trim(std::string_view text) {
  text = TrimLeft(text);
  // Of blanks alone nothing is left by now; one behind npos is 0.
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view TrimLine(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

char32_t NextCharacter(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  std::size_t length = 1;
  char32_t character = lead;
  char32_t smallest = 0;
  if (lead >= 0xF0 && lead < 0xF5) {
    length = 4, character = lead & 0x07U, smallest = 0x10000;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3, character = lead & 0x0FU, smallest = 0x800;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    length = 2, character = lead & 0x1FU, smallest = 0x80;
  }
  bool wellFormed = at + length <= text.size();
  for (std::size_t i = 1; wellFormed && i < length; ++i) {
    wellFormed = IsContinuation(text[at + i]);
    character = (character << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  }
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (!wellFormed || character < smallest || character > 0x10FFFF || isSurrogate) {
    ++at;
    return lead;
  }
  at += length;
  return character;
}

void AppendCharacter(std::string& text, char32_t character) {
  const auto byte = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
  if (character < 0x80) {
    byte(character);
  } else if (character < 0x800) {
    byte(0xC0 | character >> 6);
    byte(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    byte(0xE0 | character >> 12);
    byte(0x80 | (character >> 6 & 0x3F));
    byte(0x80 | (character & 0x3F));
  } else {
    byte(0xF0 | character >> 18);
    byte(0x80 | (character >> 12 & 0x3F));
    byte(0x80 | (character >> 6 & 0x3F));
    byte(0x80 | (character & 0x3F));
  }
}

std::string FromLatin1(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) AppendCharacter(text, static_cast<unsigned char>(c));
  return text;
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) NextCharacter(text, at);
  return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t n) {
  std::size_t at = 0;
  while (n-- > 0 && at < text.size()) NextCharacter(text, at);
  return text.substr(0, at);
}

std::string PadLeft(std::string_view text, std::size_t width) {
  return std::string(width - std::min(CharacterCount(text), width), ' ').append(text);
}

std::string PadRight(std::string_view text, std::size_t width) {
  return std::string(text).append(width - std::min(CharacterCount(text), width), ' ');
}

std::string UpperCase(std::string_view text) {
  return Transformed(text, [](char32_t c) {
    const bool ascii = c >= U'a' && c <= U'z';
    const bool latin = c >= 0xE0 && c <= 0xFE && c != 0xF7;
    return ascii || latin ? c - 0x20 : c;
  });
}

std::string ToWindows1252(std::string_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = NextCharacter(text, at);
    // A code that the set leaves undefined stands for itself, so that a file comes back as it was.
    const bool undefined = c >= 0x80 && c < 0xA0 && kWindows1252[c - 0x80U] == 0;
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF) || undefined) {
      bytes.push_back(static_cast<char>(c));
      continue;
    }
    const auto* const found = std::find(kWindows1252.begin(), kWindows1252.end(), c);
    bytes.push_back(found == kWindows1252.end()
                        ? '?'
                        : static_cast<char>(0x80 + (found - kWindows1252.begin())));
  }
  return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    const bool special = code >= 0x80 && code < 0xA0 && kWindows1252[code - 0x80U] != 0;
    AppendCharacter(text, special ? kWindows1252[code - 0x80U] : char32_t{code});
  }
  return text;
}

std::string FileNamePart(std::string_view name) {
  std::string part = Transformed(name, [](char32_t c) { return FileNameHolds(c) ? c : U'_'; });
  if (IsReservedFileName(part)) part += '_';
  return part;
}

std::string WithoutQuotes(std::string_view text) {
  std::string result(text);
  std::replace(result.begin(), result.end(), '"', '\'');
  return result;
}

}  // namespace fathomline
