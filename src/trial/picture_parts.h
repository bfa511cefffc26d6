// What the pictures of a trial's document have in common: sizes, the time axis of a recording, the
// strips of fix quality, legends.
//
// Classes of the style sheet: "s1" to "s4" lines of the systems with their dashes, "f1" to "f4"
// what is filled in their colours, "n1" to "n8" lines of further series, "q0" to "q9" and "qs0" to
// "qs9" the thin and the full fill of a quality, "c0" to "c7" and "cf0" to "cf7" lines and fills of
// the constellations; "unit", "b" (bold), "e" (ends there), "m" (middle there), "w" (wide pages
// only).
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "trial/svg_picture.h"
#include "trial/svg_plot.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

inline constexpr double kPictureWidth = 736.0;
inline constexpr double kPlotLeft = 62.0;
inline constexpr double kPlotRight = kPictureWidth - 10.0;

// Of pictures that have rows from the top to the bottom instead of values.
inline PlotScale ScaleOfRows(double top, double bottom) {
  return {0.0, 1.0, bottom, top};
}

// How far apart the labels of numbers are at least.
inline constexpr double kBesideEachOther = 56.0;
inline constexpr double kUnderEachOther = 30.0;

// A class or name with a number behind it.
inline std::string Numbered(std::string_view name, std::size_t number) {
  return std::string(name) + std::to_string(number);
}

// From when to when; empty while last < first.
struct PlotTimes {
  std::int64_t first = std::numeric_limits<std::int64_t>::max();
  std::int64_t last = std::numeric_limits<std::int64_t>::min();

  bool Empty() const { return last < first; }
  void Include(std::int64_t time) {
    first = std::min(first, time);
    last = std::max(last, time);
  }
  PlotScale Scale(double from = kPlotLeft, double to = kPlotRight) const {
    return {static_cast<double>(first), static_cast<double>(last), from, to};
  }
};

inline PlotTimes TimesOf(const std::vector<std::int64_t>& times) {
  PlotTimes span;
  if (!times.empty()) span = {times.front(), times.back()};
  return span;
}

// The median of the steps, in milliseconds, or the greater of the two in the middle; 0 of none.
std::int64_t UsualStep(std::vector<std::int64_t> steps);

// A step of more than three intervals breaks a line; nothing does where no interval is known.
std::int64_t LongestStep(const Value& interval);

// Places of one axis over time; what is NaN or no fix breaks the line. A track without qualities
// has nothing but fixes.
PlotColumns FixLine(const PositionTrack& track, std::span<const double> values, const PlotScale& x,
                    std::int64_t longestStep);

// "3 Jan 2026, UTC", or "UTC" where no date is told.
std::string DayOfAxis(const PlotTimes& times, bool dated);

struct LegendEntry {
  std::string name;
  std::string line;  // classes of its line
};
// A row of them from x to the right, each with a piece of its line; what is too long is cut.
void DrawLegend(SvgPicture& picture, double x, double y, double width,
                const std::vector<LegendEntry>& entries);

// A frame without ticks that says why nothing is in it.
void DrawEmptyPlot(SvgPicture& picture, double left, double right, double top, double bottom,
                   std::string_view why);

}  // namespace fathomline::trial
