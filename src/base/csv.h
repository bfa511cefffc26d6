// Comma-separated values, as spreadsheets read them.
#pragma once

#include <iosfwd>
#include <string_view>

namespace fathomline {

// A text that holds a comma, a quote or a line end is quoted.
void WriteCsvCell(std::ostream& out, std::string_view text);

}  // namespace fathomline
