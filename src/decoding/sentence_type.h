// The sentence types that the program tells apart, by their three letters.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace fathomline {

// Three letters packed into a number, so that a type is compared as quickly as a number and any
// other three letters are still a value of the type.
constexpr std::uint32_t PackLetters(std::string_view letters) {
  std::uint32_t packed = 0;
  for (const char c : letters.substr(0, 3)) packed = packed << 8 | static_cast<unsigned char>(c);
  return packed;
}

enum class SentenceType : std::uint32_t {
  None = 0,
  GGA = PackLetters("GGA"),
  GNS = PackLetters("GNS"),
  GLL = PackLetters("GLL"),
  RMC = PackLetters("RMC"),
  VTG = PackLetters("VTG"),
  ZDA = PackLetters("ZDA"),
  HDT = PackLetters("HDT"),
  ATT = PackLetters("ATT"),
  ROT = PackLetters("ROT"),
  VHW = PackLetters("VHW"),
  DBT = PackLetters("DBT"),
  GSA = PackLetters("GSA"),
  GSV = PackLetters("GSV"),
  GST = PackLetters("GST"),
  TTM = PackLetters("TTM"),
  VDM = PackLetters("VDM"),
  VDO = PackLetters("VDO"),
};

constexpr SentenceType SentenceTypeOf(std::string_view letters) {
  return static_cast<SentenceType>(PackLetters(letters));
}

// The types that several views are fed by.
inline constexpr std::array kPositionTypes = {SentenceType::GGA, SentenceType::GNS,
                                              SentenceType::GLL, SentenceType::RMC};
inline constexpr std::array kSatelliteTypes = {SentenceType::GSA, SentenceType::GSV};

// The letters of a type; empty for None.
inline std::string ToText(SentenceType type) {
  std::string letters;
  for (int shift = 16; shift >= 0; shift -= 8) {
    const auto c = static_cast<char>(static_cast<std::uint32_t>(type) >> shift & 0xFFU);
    if (c != '\0') letters.push_back(c);
  }
  return letters;
}

}  // namespace fathomline
