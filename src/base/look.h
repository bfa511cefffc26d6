// The one table of colours: what is stored as told is painted in a hue that can be told apart on
// the ground of the day or of the night. Read by everything that paints: windows, charts, pictures
// and documents. Ratios of contrast are those of WCAG 2.1, on the window and on the chart ground.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/colour.h"

namespace fathomline {

enum class LookMode : std::uint8_t { Light, Dark };

// What the user chooses: the desktop's own, or one of the two.
enum class LookChoice : std::uint8_t { System, Light, Dark };

struct LookChoiceText {
  LookChoice choice;
  std::string_view key;  // in the settings
  std::string_view caption;
};
inline constexpr auto kLookChoices =
    std::to_array<LookChoiceText>({{LookChoice::System, "system", "As the &Desktop"},
                                   {LookChoice::Light, "light", "&Light"},
                                   {LookChoice::Dark, "dark", "Dar&k"}});

// What a colour is painted as. A text needs more contrast than a line; a fill lies behind lines.
enum class ColourUse : std::uint8_t { Line, Fill, Text };

// Colours that no integer of red, green and blue stands for: a place in one of the lists below.
// They go wherever a Colour goes.
namespace look_families {
inline constexpr Colour kTokens = 0x01000000;
inline constexpr Colour kSeries = 0x02000000;
inline constexpr Colour kSatellites = 0x03000000;
inline constexpr Colour kFamily = 0x0F000000;
inline constexpr Colour kPlace = 0x00FFFFFF;
}  // namespace look_families

// What windows, charts and documents are made of.
namespace look {
inline constexpr Colour kWindowGround = look_families::kTokens + 0;
inline constexpr Colour kChartGround = look_families::kTokens + 1;  // of fields and pages too
inline constexpr Colour kStripe = look_families::kTokens + 2;
inline constexpr Colour kHeaderGround = look_families::kTokens + 3;
inline constexpr Colour kChildArea = look_families::kTokens + 4;
inline constexpr Colour kInk = look_families::kTokens + 5;
inline constexpr Colour kMutedInk = look_families::kTokens + 6;
inline constexpr Colour kDisabledInk = look_families::kTokens + 7;
inline constexpr Colour kGridLines = look_families::kTokens + 8;  // meant to vanish
inline constexpr Colour kFrameLines = look_families::kTokens + 9;
inline constexpr Colour kEdge = look_families::kTokens + 10;  // of fields and boxes
inline constexpr Colour kAccent = look_families::kTokens + 11;
inline constexpr Colour kSelection = look_families::kTokens + 12;
inline constexpr Colour kSelectedInk = look_families::kTokens + 13;  // of accent chips too
inline constexpr Colour kFocusRing = look_families::kTokens + 14;
inline constexpr Colour kAlive = look_families::kTokens + 15;
inline constexpr Colour kLate = look_families::kTokens + 16;
inline constexpr Colour kDead = look_families::kTokens + 17;
inline constexpr Colour kSkyRings = look_families::kTokens + 18;
inline constexpr Colour kDeviationBand = look_families::kTokens + 19;
}  // namespace look

namespace look_tables {

// As red, green and blue from the highest byte to the lowest, as documents write them.
constexpr Colour FromHex(std::uint32_t hex) {
  return RedGreenBlue(static_cast<int>(hex >> 16), static_cast<int>(hex >> 8 & 0xFF),
                      static_cast<int>(hex & 0xFF));
}

struct Shades {
  std::uint32_t light;
  std::uint32_t dark;
};

inline constexpr auto kTokenShades = std::to_array<Shades>({
    {0xF3F5F7, 0x1B2127},  // window
    {0xFFFFFF, 0x11161B},  // chart, field, page
    {0xF6F8FA, 0x171D23},  // stripe
    {0xE7ECF0, 0x262E36},  // header
    {0xD5DCE3, 0x0B0F13},  // child area
    {0x16202A, 0xE6EBF0},  // text
    {0x55626F, 0xA3AFBA},  // muted text
    {0x7B8690, 0x6C7883},  // disabled
    {0xE3E8EC, 0x262E36},  // grid
    {0x73808C, 0x75828E},  // axis, frame
    {0x7E8A96, 0x6B7783},  // edge
    {0x1F5F99, 0x74B3EC},  // accent, link
    {0x1F5F99, 0x3273B0},  // selection
    {0xFFFFFF, 0xFFFFFF},  // text on a selection
    {0xB45309, 0xFFB454},  // focus ring
    {0x1A7440, 0x57C98A},  // alive
    {0x8A5700, 0xE8B04A},  // late
    {0xB3261E, 0xFF8177},  // dead
    {0x5C86AE, 0x5D86B0},  // sky rings
    {0xDCE8F4, 0x1A2C3F},  // deviation band
});

struct ToldHue {
  Colour told;
  Shades line;
  Colour text;  // the told colour whose hue can be read as a text
};

inline constexpr auto kToldHues = std::to_array<ToldHue>({
    {kBlue, {0x0B5CE0, 0x6EA8FF}, kBlue},
    {kDarkGreen, {0x2A7B55, 0x79DCA9}, kDarkGreen},
    {kRed, {0xCB1E33, 0xFF5A45}, kRed},
    {kDarkYellow, {0x6B5F00, 0xE3BF1E}, kDarkYellow},
    {kDarkRed, {0x7A0A00, 0xD0705F}, kDarkRed},
    {kGreen, {0x15853E, 0x3CCB5A}, kDarkGreen},
    {kBlack, {0x10171D, 0xE8EEF4}, look::kInk},
    {kWhite, {0x868C92, 0xF7F9FB}, look::kMutedInk},
    {kYellow, {0xA88000, 0xFFE74A}, kDarkYellow},
    {kCyan, {0x0F8FA3, 0x45DDF0}, kTeal},
    {kMagenta, {0xC22BB8, 0xF78FD8}, kMagenta},
    {kOrange, {0xC85000, 0xFF8A26}, kOrange},
    {kTeal, {0x0E7A79, 0x66CFC9}, kTeal},
    {kNavy, {0x0B1F5C, 0x8A9BFF}, kNavy},
});

// For series that nobody has told a colour, in this order.
inline constexpr auto kSeriesShades = std::to_array<Shades>({
    {0x1883F9, 0x68B4FF},  // blue
    {0x773500, 0xD96000},  // umber
    {0x349F7D, 0xA0EEB4},  // green
    {0x7E0057, 0xD34D8A},  // plum
    {0x1B99A8, 0x82EBF9},  // cyan
    {0xB08818, 0xFBD81D},  // ochre
    {0x4F0CCF, 0x676DFF},  // violet
    {0xB44648, 0xD4827A},  // brick
});

inline constexpr auto kSatelliteShades = std::to_array<Shades>({
    {0x6586F5, 0xA9A6CA}, {0xFE496D, 0xFA425D}, {0x8B7E58, 0xF0C915}, {0xC20F8E, 0xE0148E},
    {0x3A1937, 0xFEDBFF}, {0x883AFB, 0xA481FF}, {0xCD2E00, 0xF47E2F}, {0x2E7A2C, 0x7F9F78},
    {0x643509, 0xE6B798}, {0x980B40, 0xD99CA3}, {0x4E544E, 0xB9C9CF}, {0x379E87, 0xAAF6DC},
    {0x113C26, 0x83FF89}, {0x500307, 0xDB3A0E}, {0x0699B6, 0x5390A3}, {0x073863, 0x5E76AE},
    {0x2A05AA, 0xBB22F3}, {0x266E9E, 0x85BBFF}, {0x955E6E, 0xA46974}, {0xC17F09, 0x917443},
});

// How much of a hue lies over the chart ground in a fill.
inline constexpr int kFillPercent = 16;

constexpr Colour Of(const Shades& shades, LookMode mode) {
  return FromHex(mode == LookMode::Light ? shades.light : shades.dark);
}

template <std::size_t Size>
constexpr Colour At(const std::array<Shades, Size>& family, Colour colour, LookMode mode) {
  return Of(family.at(static_cast<std::size_t>(colour & look_families::kPlace)), mode);
}

// A told colour that no row has stands for itself.
constexpr Colour ToldLine(Colour told, LookMode mode) {
  for (const ToldHue& hue : kToldHues) {
    if (hue.told == told) return Of(hue.line, mode);
  }
  return told;
}

constexpr Colour Line(Colour colour, LookMode mode) {
  switch (colour & look_families::kFamily) {
    case look_families::kTokens:
      return At(kTokenShades, colour, mode);
    case look_families::kSeries:
      return At(kSeriesShades, colour, mode);
    case look_families::kSatellites:
      return At(kSatelliteShades, colour, mode);
    default:
      return ToldLine(colour, mode);
  }
}

constexpr Colour Text(Colour colour, LookMode mode) {
  for (const ToldHue& hue : kToldHues) {
    if (hue.told == colour) return Line(hue.text, mode);
  }
  return Line(colour, mode);
}

constexpr int Mixed(Colour hue, Colour ground, int shift) {
  const int part = hue >> shift & 0xFF;
  const int under = ground >> shift & 0xFF;
  return (part * kFillPercent + under * (100 - kFillPercent) + 50) / 100;
}

}  // namespace look_tables

// The colour in which something is painted, as red, green and blue. Of a fill that is the hue
// thinly over the chart ground, but a token stands for itself.
constexpr Colour Shown(Colour colour, ColourUse use, LookMode mode) {
  if (use == ColourUse::Text) return look_tables::Text(colour, mode);
  const Colour hue = look_tables::Line(colour, mode);
  const bool token = (colour & look_families::kFamily) == look_families::kTokens;
  if (use == ColourUse::Line || token) return hue;
  const Colour ground = look_tables::Line(look::kChartGround, mode);
  return RedGreenBlue(look_tables::Mixed(hue, ground, 0), look_tables::Mixed(hue, ground, 8),
                      look_tables::Mixed(hue, ground, 16));
}

// A shown colour as documents write it: "#RRGGBB".
inline std::string HexOf(Colour shown) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string hex = "#";
  for (const int shift : {4, 0, 12, 8, 20, 16}) {
    hex += kDigits[static_cast<std::size_t>(shown >> shift & 0xF)];
  }
  return hex;
}

inline constexpr int kSeriesColours = static_cast<int>(look_tables::kSeriesShades.size());
inline constexpr int kSatelliteColours = static_cast<int>(look_tables::kSatelliteShades.size());

// The nth colour, from 0, for series that nobody has told one; after the last the first returns.
constexpr Colour SeriesColour(int n) {
  return look_families::kSeries + n % kSeriesColours;
}

// Slot is from 0. Beyond the first twenty the first nineteen return; SatelliteRound says how often
// they have.
constexpr Colour SatelliteColour(int slot) {
  return look_families::kSatellites +
         (slot < kSatelliteColours ? slot : slot % (kSatelliteColours - 1));
}
constexpr int SatelliteRound(int slot) {
  return slot < kSatelliteColours ? 0 : slot / (kSatelliteColours - 1);
}

// Told colours of what is shown everywhere in the same ones. The systems 1 to 4:
inline constexpr auto kSystemColours =
    std::to_array<Colour>({kBlue, kDarkGreen, kRed, kDarkYellow});
// Qualities of fix, 0 (none) to 9:
inline constexpr auto kQualityColours = std::to_array<Colour>(
    {kBlack, kRed, kBlue, kGreen, kMagenta, kYellow, kCyan, kWhite, kYellow, kOrange});

// Shapes that tell apart what colours do not.
enum class MarkShape : std::uint8_t {
  Disc,
  Square,
  Triangle,
  Diamond,
  Cross,
  Ring,
  OpenSquare,
  TriangleDown,
  Pentagon
};

struct Constellation {
  std::string_view name;
  char letter;  // as in the names of satellites: G07
  Colour colour;
  MarkShape mark;
};

inline constexpr auto kConstellations = std::to_array<Constellation>({
    {"GPS", 'G', SeriesColour(0), MarkShape::Disc},
    {"GLONASS", 'R', SeriesColour(7), MarkShape::Square},
    {"Galileo", 'E', SeriesColour(2), MarkShape::Diamond},
    {"BeiDou", 'C', SeriesColour(5), MarkShape::Triangle},
    {"QZSS", 'J', SeriesColour(3), MarkShape::TriangleDown},
    {"NavIC", 'I', SeriesColour(1), MarkShape::Pentagon},
    {"SBAS", 'S', SeriesColour(4), MarkShape::Cross},
});

}  // namespace fathomline
