#include "app/json_writer.h"

#include <string>

#include "platform/text.h"

namespace fathomline {

void JsonWriter::Value(char character) {
  Value(std::string_view(FromLatin1(std::string_view(&character, 1))));
}

void JsonWriter::WriteQuoted(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  out_.put('"');
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out_.put('\\').put(c);
    } else if (code < 0x20) {
      out_ << "\\u00" << kHex[code >> 4] << kHex[code & 0xFU];
    } else {
      out_.put(c);
    }
  }
  out_.put('"');
}

}  // namespace fathomline
