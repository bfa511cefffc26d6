#include "app/json_writer.h"

#include <string>

#include "base/text.h"

namespace fathomline {

void JsonWriter::Value(char character) {
  Value(std::string_view(FromLatin1(std::string_view(&character, 1))));
}

void JsonWriter::WriteQuoted(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string escaped;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = NextCharacter(text, at);
    if (c == U'"' || c == U'\\') {
      escaped.push_back('\\');
      escaped.push_back(static_cast<char>(c));
    } else if (c < 0x20) {
      escaped.append("\\u00").append({kHex[c >> 4], kHex[c & 0xFU]});
    } else {
      AppendCharacter(escaped, c);
    }
  }
  out_ << '"' << escaped << '"';
}

}  // namespace fathomline
