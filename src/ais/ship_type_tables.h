// The texts of ship type codes (ITU-R M.1371), in full and by group.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "ais/code_table.h"
#include "ais/code_tables.h"

namespace fathomline {

// The codes with a text of their own: the decades, and all of 30 to 39 and 50 to 59, where the
// second digit names the vessel and not its cargo.
inline constexpr CodeTable<256> kShipTypeNames = Expand<256>({
    {0, "Not defined"},
    {10, "Reserved for future use"},
    {20, "WIG (Wing In Ground)"},
    {30, "Vessel-Fishing"},
    {31, "Vessel-Towing"},
    {32, "Vessel-Towing. Length >200 m or breadth >25 m"},
    {33, "Vessel-Engaged in dredging or underwater operation"},
    {34, "Vessel-Engaged in diving operation"},
    {35, "Vessel-Engaged in military operation"},
    {36, "Vessel-Sailing"},
    {37, "Vessel-Pleasure Craft"},
    {38, "Vessel-Reserved for future use"},
    {39, "Vessel-Reserved for future use"},
    {40, "HSC"},
    {50, "Pilot Vessel"},
    {51, "Search and Rescue"},
    {52, "Tug"},
    {53, "Port Tender"},
    {54, "Vessel with antipollution facilities or equipment"},
    {55, "Law Enforcement vessel"},
    {56, " not used"},
    {57, " not used"},
    {58, "Medical Transport"},
    {59, "Ships and aircrafts of States not parties to an armed conflict"},
    {60, "Passenger Ship"},
    {70, "Cargo ship"},
    {80, "Tanker"},
    {90, "Other type of ship"},
});

constexpr bool SecondDigitIsCargo(std::size_t code) {
  return code / 10 != 3 && code / 10 != 5;
}

// The texts that are put together of two, and room for them.
struct ShipTypesWithCargo {
  static constexpr std::string_view kBetween = " - ";
  struct Entry {
    std::array<char, 96> characters{};
    std::size_t length = 0;
  };
  std::array<Entry, 100> entries{};

  constexpr ShipTypesWithCargo() {
    for (std::size_t code = 10; code < entries.size(); ++code) {
      if (!SecondDigitIsCargo(code) || code % 10 == 0) continue;
      Entry& entry = entries[code];
      for (const auto part : {kShipTypeNames[code - code % 10], kBetween, CargoTable[code % 10]}) {
        for (const char c : part) entry.characters[entry.length++] = c;
      }
    }
  }
};
inline constexpr ShipTypesWithCargo kShipTypesWithCargo;

// By ship type code: the name, and the cargo where the second digit tells one. Codes 1 to 9 and
// those from 100 have no text.
inline constexpr CodeTable<256> ShipTypeTable = [] {
  CodeTable<256> table = kShipTypeNames;
  for (std::size_t code = 10; code < 100; ++code) {
    const auto& entry = kShipTypesWithCargo.entries[code];
    if (entry.length > 0) table[code] = {entry.characters.data(), entry.length};
  }
  return table;
}();

// By ship type code: the group alone. The last entry has no text.
inline constexpr CodeTable<101> ShipTypeGroupTable = [] {
  CodeTable<101> table{};
  for (std::size_t code = 0; code < 100; ++code) {
    table[code] = kShipTypeNames[SecondDigitIsCargo(code) ? code - code % 10 : code];
  }
  return table;
}();

}  // namespace fathomline
