#include "trial/picture_parts.h"

#include <algorithm>
#include <cmath>

namespace fathomline::trial {
namespace {

constexpr double kLegendLine = 24.0;
constexpr double kCharacter = 7.0;  // of a legend on a wide page

std::string Shortened(const std::string& name, double width) {
  const auto most = static_cast<std::size_t>(std::max(width / kCharacter, 3.0));
  return name.size() <= most ? name : name.substr(0, most - 1) + "…";
}

}  // namespace

std::int64_t UsualStep(std::vector<std::int64_t> steps) {
  if (steps.empty()) return 0;
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle;
}

std::int64_t LongestStep(const Value& interval) {
  if (!interval) return std::numeric_limits<std::int64_t>::max();
  return std::llround(*interval * 3000.0);
}

PlotColumns FixLine(const PositionTrack& track, std::span<const double> values, const PlotScale& x,
                    std::int64_t longestStep) {
  PlotColumns columns(x);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if ((!track.quality.empty() && !IsFix(track.quality[i])) || !std::isfinite(values[i])) {
      columns.Break();
      continue;
    }
    if (i > 0 && track.times[i] - track.times[i - 1] > longestStep) columns.Break();
    columns.Add(static_cast<double>(track.times[i]), values[i]);
  }
  return columns;
}

std::string DayOfAxis(const PlotTimes& times, bool dated) {
  if (!dated || times.Empty()) return "UTC";
  return ToText(Moment{times.first, true}).substr(0, 10) + ", UTC";
}

void DrawLegend(SvgPicture& picture, double x, double y, double width,
                const std::vector<LegendEntry>& entries) {
  if (entries.empty()) return;
  const double each = std::min(width / static_cast<double>(entries.size()), 200.0);
  for (const LegendEntry& entry : entries) {
    picture.Line(x, y - 4.0, x + kLegendLine, y - 4.0, entry.line);
    picture.Text(x + kLegendLine + 6.0, y, Shortened(entry.name, each - kLegendLine - 14.0), "");
    x += each;
  }
}

void DrawEmptyPlot(SvgPicture& picture, double left, double right, double top, double bottom,
                   std::string_view why) {
  picture.Line(left, top, left, bottom, "axis");
  picture.Line(left, bottom, right, bottom, "axis");
  picture.Text((left + right) / 2.0, (top + bottom) / 2.0 + 4.0, why, "m");
}

}  // namespace fathomline::trial
