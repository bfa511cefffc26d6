#include "trial/html_style.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/look.h"
#include "page_css.h"

namespace fathomline::trial {
namespace {

struct Token {
  std::string_view name;
  Colour colour;
};

constexpr auto kTokens = std::to_array<Token>({{"page", look::kChartGround},
                                               {"window", look::kWindowGround},
                                               {"stripe", look::kStripe},
                                               {"header", look::kHeaderGround},
                                               {"ink", look::kInk},
                                               {"muted", look::kMutedInk},
                                               {"grid", look::kGridLines},
                                               {"axis", look::kFrameLines},
                                               {"edge", look::kEdge},
                                               {"accent", look::kAccent},
                                               {"focus", look::kFocusRing},
                                               {"kept", look::kAlive},
                                               {"warn", look::kLate},
                                               {"missed", look::kDead},
                                               {"sky", look::kSkyRings},
                                               {"line", kNavy}});

// Of the classes of lines: good, unreadable, unknown, wrong and no checksum, malformed, foreign,
// empty.
constexpr auto kLineClassColours = std::to_array<Colour>(
    {kDarkGreen, kDarkYellow, look::kEdge, kRed, kOrange, kMagenta, kDarkRed, look::kGridLines});

void Variable(std::string& css, std::string_view name, Colour shown) {
  css += "--";
  css += name;
  css += ':';
  css += HexOf(shown);
  css += ';';
}

std::string Variables(LookMode mode) {
  std::string css;
  for (const Token& token : kTokens) {
    Variable(css, token.name, Shown(token.colour, ColourUse::Line, mode));
  }
  const auto family = [&](std::string_view name, std::size_t first, const auto& colours,
                          ColourUse use) {
    for (std::size_t i = 0; i < colours.size(); ++i) {
      Variable(css, std::string(name) + std::to_string(first + i), Shown(colours[i], use, mode));
    }
  };
  family("s", 1, kSystemColours, ColourUse::Line);
  family("q", 0, kQualityColours, ColourUse::Line);
  family("qf", 0, kQualityColours, ColourUse::Fill);
  family("cl", 0, kLineClassColours, ColourUse::Line);
  std::array<Colour, kSeriesColours> series{};
  for (int i = 0; i < kSeriesColours; ++i) series[static_cast<std::size_t>(i)] = SeriesColour(i);
  family("n", 1, series, ColourUse::Line);
  std::array<Colour, kConstellations.size() + 1> constellations{};
  std::ranges::transform(kConstellations, constellations.begin(), &Constellation::colour);
  constellations.back() = look::kMutedInk;  // of no known constellation
  family("c", 0, constellations, ColourUse::Line);
  return css;
}

// Series differ in their dashes too.
std::string SeriesClasses() {
  constexpr auto kDashes = std::to_array<std::string_view>(
      {"none", "8 4", "2 3", "8 3 2 3", "12 3", "5 2 2 2 2 2", "4 2", "1 2"});
  std::string css;
  const auto stroke = [&css](std::string_view name, std::size_t i, std::string_view more) {
    const std::string numbered = std::string(name) + std::to_string(i);
    css += "svg ." + numbered + "{stroke:var(--" + numbered;
    css += ");stroke-width:1.5;stroke-linejoin:round;stroke-linecap:round";
    css += more;
    css += "}\n";
  };
  const auto fill = [&css](std::string_view name, std::string_view variable, std::size_t i) {
    const std::string number = std::to_string(i);
    css += "svg ." + std::string(name) + number;
    css += "{fill:var(--" + std::string(variable) + number + ")}\n";
  };
  for (std::size_t i = 1; i <= kSystemColours.size(); ++i) {
    stroke("s", i, ";stroke-dasharray:" + std::string(kDashes[i - 1]));
    fill("f", "s", i);
    const std::string number = std::to_string(i);
    css += ".p" + number;
    css += "{stroke:var(--s" + number + ")}\n";
  }
  for (std::size_t i = 1; i <= kDashes.size(); ++i) {
    stroke("n", i, ";stroke-dasharray:" + std::string(kDashes[i - 1]));
  }
  for (std::size_t i = 0; i <= kConstellations.size(); ++i) {
    stroke("c", i, "");
    fill("cf", "c", i);
  }
  for (std::size_t i = 0; i < kQualityColours.size(); ++i) {
    fill("q", "qf", i);
    fill("qs", "q", i);
  }
  for (std::size_t i = 0; i < kLineClassColours.size(); ++i) fill("cl", "cl", i);
  return css;
}

}  // namespace

std::string StyleSheet() {
  std::string css = ":root{color-scheme:light dark;" + Variables(LookMode::Light) + "}\n";
  css += "@media screen and (prefers-color-scheme:dark){:root{" + Variables(LookMode::Dark) + "}}";
  css += '\n';
  css += kPage;
  css += SeriesClasses();
  css += kPageMedia;
  return css;
}

}  // namespace fathomline::trial
