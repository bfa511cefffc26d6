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
  Satellites
};

// The full name of a sentence in English, with what it tells; empty for a type that has none.
std::string_view NameOfSentence(SentenceType type);

// What a head of such a table says, with its unit in brackets; empty for one that has no
// definition.
std::string DefinitionOf(DefinedTable table, std::string_view head);

// Lets the heads of a grid, in row 0 and, where it has heads of rows, in column 0, say what they
// mean. The heads must have been written.
void DefineHeads(Grid& grid, DefinedTable table);

}  // namespace fathomline
