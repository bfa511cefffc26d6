// What the names of sentences and the heads of tables say, for who points at them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "decoding/sentence_type.h"
#include "toolkit/grid.h"

namespace fathomline {

enum class DefinedTable : std::uint8_t {
  Statistics,
  SNR,
  Numerics,
  AIS,
  ARPA,
  Sources,
  Recording,
  Satellites,
  SentenceLog,
  Skyplot
};

// The full name of a sentence in English, with what it tells; empty for a type that has none.
std::string_view NameOfSentence(SentenceType type);

// What a head of such a table says, with its unit in brackets; empty for one that has no
// definition.
std::string DefinitionOf(DefinedTable table, std::string_view head);

// Lets the heads of a grid, in row 0 and, where it has heads of rows, in column 0, say what they
// mean. The heads must have been written.
void DefineHeads(Grid& grid, DefinedTable table);

// Writes and defines the heads of a list by the rows of its design, each with a `heading`, a
// `width` in twips, 0 leaving it to the desktop, and, where some columns hold texts, `holdsText`.
template <class Columns>
void DesignList(Grid& grid, const Columns& columns, DefinedTable table) {
  int column = 0;
  for (const auto& design : columns) {
    grid.Set(0, column, design.heading);
    grid.SetColumnWidth(column, design.width);
    if constexpr (requires { design.holdsText; }) {
      if (design.holdsText) grid.SetHoldsText(column);
    }
    ++column;
  }
  DefineHeads(grid, table);
}

}  // namespace fathomline
