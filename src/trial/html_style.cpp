#include "trial/html_style.h"

#include <array>
#include <string_view>

#include "base/look.h"

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
constexpr std::array<Colour, 8> kLineClassColours = {
    kDarkGreen, kDarkYellow, look::kEdge, kRed, kOrange, kMagenta, kDarkRed, look::kGridLines};

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
  for (std::size_t i = 0; i < kConstellations.size(); ++i) {
    constellations[i] = kConstellations[i].colour;
  }
  constellations.back() = look::kMutedInk;  // of no known constellation
  family("c", 0, constellations, ColourUse::Line);
  return css;
}

constexpr std::string_view kPage = R"(
*{box-sizing:border-box}
html{background:var(--page);color:var(--ink);font:16px/1.5 system-ui,-apple-system,"Segoe UI",Roboto,"Noto Sans","DejaVu Sans",sans-serif;-webkit-text-size-adjust:100%}
body{margin:0}
main{max-width:46rem;margin:0 auto;padding:32px 16px 64px}
h1{font-size:1.75rem;line-height:1.2;margin:0 0 8px;overflow-wrap:anywhere}
h2{font-size:1.3rem;line-height:1.3;margin:56px 0 8px;padding-top:16px;border-top:1px solid var(--grid)}
h3{font-size:1.1rem;margin:24px 0 8px}
p{margin:8px 0}
a{color:var(--accent)}
:focus-visible{outline:2px solid var(--focus);outline-offset:2px}
.kicker{color:var(--muted);font-size:.9rem;letter-spacing:.04em;margin:0 0 4px}
.lede{margin:0 0 4px}
time{white-space:nowrap}
.note{white-space:pre-line}
.verdict{margin:24px 0;padding:16px 16px 16px 20px;background:var(--window);border-left:6px solid var(--edge)}
.verdict.kept{border-color:var(--kept)}
.verdict.missed{border-color:var(--missed)}
.verdict p{margin:4px 0}
.verdict .word{font-size:1.3rem;line-height:1.3;font-weight:bold}
.kept .word,td .kept{color:var(--kept)}
.missed .word,td .missed{color:var(--missed)}
td .kept,td .missed{font-weight:bold;white-space:nowrap}
ul.mind{list-style:none;margin:16px 0;padding:0}
ul.mind li{margin:8px 0;padding-left:24px;text-indent:-24px}
ul.mind li::before{content:"▲";color:var(--warn);display:inline-block;width:24px;text-indent:0}
nav ol{columns:2;column-gap:16px;margin:8px 0;padding:0}
nav li{margin:0 0 4px 32px;break-inside:avoid}
.defs,figcaption,.absent,.under{color:var(--muted);font-size:.9rem}
.defs b{color:var(--ink);font-weight:normal}
figure{margin:16px 0 24px}
figcaption{margin-top:4px}
svg{display:block;max-width:100%;height:auto;margin:0 auto}
.scroll{overflow-x:auto;margin:16px 0}
.under{margin:-8px 0 16px}
table{border-collapse:collapse;min-width:100%;font-size:.9rem;font-variant-numeric:tabular-nums lining-nums}
caption{text-align:left;font-weight:bold;padding:0 0 4px}
thead th,thead td{background:var(--header);vertical-align:bottom;line-height:1.3}
th,td{padding:4px 8px;text-align:right;vertical-align:top}
thead th:first-child,thead td:first-child,tbody th{text-align:left;font-weight:normal}
tbody tr{border-bottom:1px solid var(--grid)}
tbody tr.first{border-top:1px solid var(--axis)}
tbody th small{display:block;color:var(--muted);font-size:.8rem;line-height:1.35;max-width:24rem}
table.beside tbody th{width:28.5rem}
table.below tbody th{min-width:13rem}
table.wide tbody th small{min-width:9rem}
table.beside tbody th span{display:inline-block;width:11.5rem;vertical-align:top}
table.beside tbody th small{display:inline-block;width:15.25rem;padding-top:.1rem;vertical-align:top}
td i{color:var(--muted)}
td{white-space:nowrap}
table.slim{min-width:20rem}
table.wide{font-size:.8rem}
table.wide th,table.wide td{padding:4px 5px}
table.words td,table.words thead th{text-align:left;white-space:normal}
code{font:.85em/1.4 ui-monospace,"DejaVu Sans Mono",Menlo,Consolas,monospace;overflow-wrap:anywhere}
footer{margin-top:56px;color:var(--muted);font-size:.9rem}
svg text{font-size:12px;fill:var(--muted);font-variant-numeric:tabular-nums}
svg .b{font-weight:bold;fill:var(--ink)}
svg .unit{fill:var(--ink)}
svg .e{text-anchor:end}
svg .m{text-anchor:middle}
svg .small{font-size:10px}
svg .halo{paint-order:stroke;stroke:var(--page);stroke-width:3px;stroke-linejoin:round;fill:var(--ink)}
svg path,svg line,svg circle,svg ellipse{fill:none}
.grid{stroke:var(--grid)}
.axis{stroke:var(--axis)}
.zero{stroke:var(--muted);stroke-dasharray:4 3}
.ring{stroke:var(--ink);stroke-width:1.5;stroke-dasharray:6 3}
.ellipse{stroke:var(--ink);stroke-width:1.5}
.mean{stroke:var(--ink);stroke-width:2}
.sky{stroke:var(--sky)}
.line{stroke:var(--line);stroke-linejoin:round;stroke-linecap:round}
.thin{stroke-width:1;stroke-dasharray:none}
.dots{stroke-linecap:round}
.o0{stroke-opacity:.6}.o1{stroke-opacity:.7}.o2{stroke-opacity:.85}
.heard{fill:var(--axis)}
.silent{fill:var(--page);stroke:var(--missed);stroke-width:.6}
svg .unused{fill:var(--page)}
)";

constexpr std::string_view kNarrow = R"(
@media screen and (max-width:40rem){
main{padding:16px 12px 40px}
nav ol{columns:1}
table.beside tr{display:flex;flex-wrap:wrap;background:none}
table.beside thead td{display:none}
table.beside thead tr{background:var(--header)}
table.beside thead th,table.beside td{flex:1}
table.beside tbody th{flex:1 0 100%;width:auto;padding-bottom:0}
table.beside tbody th span{display:inline;margin-right:8px}
table.beside tbody th small{display:inline;max-width:none}
svg text{font-size:19px}
svg.square text{font-size:14px}
svg .row{font-size:15px}
svg .small{font-size:15px}
svg .w{display:none}
svg{overflow:visible}
svg path,svg line,svg circle,svg ellipse{stroke-width:1.6}
}
)";

constexpr std::string_view kPaper = R"(
@page{size:A4;margin:16mm;@bottom-right{content:counter(page) " / " counter(pages);font:8pt system-ui,sans-serif}}
@media print{
html{font-size:10.5pt;line-height:1.4;-webkit-print-color-adjust:exact;print-color-adjust:exact}
main{max-width:none;padding:0}
nav{display:none}
h2{margin-top:24pt}
h1,h2,h3,caption{break-after:avoid}
tr:nth-child(-n+3),tr:last-child,.defs,.under{break-before:avoid}
figure,tr,.verdict,li,.short{break-inside:avoid}
p{orphans:3;widows:3}
thead{display:table-header-group}
.scroll{overflow:visible}
table{font-size:8pt;min-width:0;width:100%}
table.wide{font-size:7.5pt}
table.beside tbody th{width:31rem}
table.beside tbody th small{width:18rem}
table.wide th,table.wide td{padding:2pt 3pt}
tbody th small{font-size:7.5pt}
a{color:inherit;text-decoration:none}
}
)";

// Series differ in their dashes too.
std::string SeriesClasses() {
  constexpr std::array<std::string_view, 8> kDashes = {"none", "8 4",         "2 3", "8 3 2 3",
                                                       "12 3", "5 2 2 2 2 2", "4 2", "1 2"};
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
  css += kPage;
  css += SeriesClasses();
  css += "svg .dense{stroke-width:.8}\n";
  css += kNarrow;
  css += kPaper;
  return css;
}

}  // namespace fathomline::trial
