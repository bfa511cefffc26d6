// Tables that turn a code of a message into its text.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/fault.h"

namespace fathomline {

// Indexed by code from 0. A code without a text has the empty one.
template <std::size_t Size>
using CodeTable = std::array<std::string_view, Size>;

struct CodeText {
  std::size_t code;
  std::string_view text;
};

// A table from its entries. Entries out of order, given twice, without text or outside the table
// do not compile.
template <std::size_t Size, std::size_t Count>
consteval CodeTable<Size> Expand(const CodeText (&entries)[Count]) {
  CodeTable<Size> table{};
  for (std::size_t i = 0; i < Count; ++i) {
    if (i > 0 && entries[i].code <= entries[i - 1].code) throw "codes are not in ascending order";
    if (entries[i].code >= Size) throw "code outside its table";
    if (entries[i].text.empty()) throw "entry without text";
    table[entries[i].code] = entries[i].text;
  }
  return table;
}

// The text of a code. Raises OutOfRange for a code outside the table.
template <std::size_t Size>
std::string_view TextOf(const CodeTable<Size>& table, std::size_t code) {
  if (code >= Size) Raise(FaultNumber::OutOfRange);
  return table[code];
}

}  // namespace fathomline
