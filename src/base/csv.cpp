#include "base/csv.h"

#include <ostream>

namespace fathomline {

void WriteCsvCell(std::ostream& out, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out << text;
    return;
  }
  out << '"';
  for (const char character : text) {
    if (character == '"') out << '"';
    out << character;
  }
  out << '"';
}

}  // namespace fathomline
