#include "trial/position_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "trial/picture_parts.h"

namespace fathomline::trial {
namespace {

std::size_t FixesOf(const PositionTrack& track) {
  return static_cast<std::size_t>(
      std::count_if(track.quality.begin(), track.quality.end(), [](int q) { return IsFix(q); }));
}

// What the square of a system shows: the middle, and half a side.
struct ScatterFrame {
  double north = 0.0;
  double east = 0.0;
  double half = 0.0;
  bool aboutMean = false;
};

// About the reference, unless the fixes lie so far from it that they would be one dot.
ScatterFrame FrameOf(const SystemFigures& system) {
  const HorizontalErrors& reference = system.horizontal.reference;
  const HorizontalErrors& mean = system.horizontal.mean;
  ScatterFrame frame;
  if (reference.biasNorth && reference.biasEast) {
    const double spread = mean.r95.value_or(mean.largest.value_or(0.0));
    frame.aboutMean =
        std::hypot(*reference.biasNorth, *reference.biasEast) > 3.0 * spread && spread > 0.0;
    if (frame.aboutMean) {
      frame.north = *reference.biasNorth;
      frame.east = *reference.biasEast;
    }
  }
  const PositionTrack& track = system.pictures.positions;
  double largest = 0.0;
  for (std::size_t i = 0; i < track.times.size(); ++i) {
    if (!IsFix(track.quality[i])) continue;
    largest = std::max(
        {largest, std::abs(track.north[i] - frame.north), std::abs(track.east[i] - frame.east)});
  }
  const HorizontalErrors& shown = frame.aboutMean ? mean : reference;
  // A far outlier must not make one dot of all the rest.
  if (shown.r95 && largest > 4.0 * *shown.r95) largest = 4.0 * *shown.r95;
  // Circles and ellipse are seen as a whole.
  const ErrorEllipse& ellipse = system.horizontal.ellipse;
  largest = std::max({largest, shown.r95.value_or(0.0), ellipse.semiMajor.value_or(0.0)});
  frame.half = std::max(largest * 1.06, 0.001);
  return frame;
}

void DrawCircle(SvgPicture& picture, const PlotScale& x, const PlotScale& y,
                const ScatterFrame& frame, const Value& radius, std::string_view name) {
  if (!radius) return;
  const double length = *radius * x.Pixels() / (x.High() - x.Low());
  // The reference, or the mean in the middle.
  const double right = x.At(frame.aboutMean ? frame.east : 0.0);
  const double down = y.At(frame.aboutMean ? frame.north : 0.0);
  picture.Circle(right, down, length, "ring");
  const double corner = length * std::sqrt(0.5);
  // No circle is too large for its name: the frame holds what lies farthest on either axis.
  if (length > 14.0) {
    picture.Text(right + corner + 3.0, down - corner - 3.0, name, "halo b");
  }
}

void DrawScatter(SvgPicture& picture, const SystemFigures& system, std::size_t number,
                 const ScatterFrame& frame, double left, double top, double side) {
  const PlotScale x(frame.east - frame.half, frame.east + frame.half, left, left + side);
  const PlotScale y(frame.north - frame.half, frame.north + frame.half, top + side, top);
  picture.Text(left, top - 10.0, "System " + system.name, "b");
  picture.Text(left + side, top - 10.0, "north ↑, east →, m", "e w");
  DrawAxes(picture, x, y, {NumberTicks(x, kBesideEachOther), NumberTicks(y, kBesideEachOther)});
  picture.OpenClip(left, top, side, side);
  const auto cross = [&](double east, double north, double arm, std::string_view cls) {
    picture.Line(x.At(east) - arm, y.At(north), x.At(east) + arm, y.At(north), cls);
    picture.Line(x.At(east), y.At(north) - arm, x.At(east), y.At(north) + arm, cls);
  };
  cross(0.0, 0.0, 4000.0, "zero");

  PlotDots dots(x, y);
  const PositionTrack& track = system.pictures.positions;
  for (std::size_t i = 0; i < track.times.size(); ++i) {
    if (IsFix(track.quality[i])) dots.Add(track.east[i], track.north[i]);
  }
  const std::vector<std::string> levels = dots.Levels();
  for (std::size_t level = 0; level < levels.size(); ++level) {
    picture.Path(levels[level], Numbered(Numbered("dots p", number) + " o", level), dots.Width());
  }
  const HorizontalErrors& shown =
      frame.aboutMean ? system.horizontal.mean : system.horizontal.reference;
  DrawCircle(picture, x, y, frame, shown.r50, "R50");
  DrawCircle(picture, x, y, frame, shown.r95, "R95");
  const ErrorEllipse& ellipse = system.horizontal.ellipse;
  const Value& north = system.horizontal.reference.biasNorth;
  const Value& east = system.horizontal.reference.biasEast;
  if (north && east) {
    if (ellipse.semiMajor && ellipse.semiMinor && ellipse.direction) {
      const double unit = x.Pixels() / (x.High() - x.Low());
      picture.Ellipse(x.At(*east), y.At(*north), *ellipse.semiMajor * unit,
                      *ellipse.semiMinor * unit, *ellipse.direction, "ellipse");
    }
    cross(*east, *north, 7.0, "mean");
  }
  picture.CloseClip();
  if (dots.Beyond() > 0) {
    picture.Text(left + 4.0, top + side - 6.0,
                 std::to_string(dots.Beyond()) + " beyond, on the rim", "halo");
  }
}

// As far as the curves are worth a look: to the largest, but not far beyond the 99%.
Value FarEnough(const Value& p99, const Value& largest) {
  return p99 && largest && *largest > 2.5 * *p99 ? 1.5 * *p99 : largest;
}

struct ShareOfSystems {
  std::string_view title;
  std::string_view none;
  bool vertical;
};

void DrawShares(SvgPicture& picture, const TrialFigures& trial, const ShareOfSystems& what,
                double left, double right) {
  constexpr double kTop = 50.0;
  constexpr double kBottom = 290.0;
  Value most;
  for (const SystemFigures& system : trial.systems) {
    const HorizontalErrors& h = system.horizontal.reference;
    const VerticalErrors& v = system.vertical.reference;
    // What is not there is less than any other.
    most =
        std::max(most, what.vertical ? FarEnough(v.p99, v.largest) : FarEnough(h.r99, h.largest));
  }
  picture.Text(left, kTop - 10.0, what.title, "b");
  if (!most) {
    DrawEmptyPlot(picture, left, right, kTop, kBottom, what.none);
    return;
  }
  const PlotScale x(0.0, std::max(*most * 1.02, 0.001), left, right);
  const PlotScale y(0.0, 1.0, kBottom, kTop);
  const std::vector<PlotTick> shares = {
      {0.0, "0"}, {0.5, "50%"}, {0.68, "68%"}, {0.95, "95%"}, {1.0, ""}};
  DrawAxes(picture, x, y, {NumberTicks(x, kBesideEachOther), shares});
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const PositionTrack& track = trial.systems[s].pictures.positions;
    PlotShares curve(x);
    for (std::size_t i = 0; i < track.times.size(); ++i) {
      if (!IsFix(track.quality[i])) continue;
      const double error =
          what.vertical ? std::abs(track.up[i]) : std::hypot(track.north[i], track.east[i]);
      if (std::isfinite(error)) curve.Add(error);
    }
    picture.Path(curve.Line(y), Numbered("s", s + 1));
  }
}

constexpr int kQualities = 10;

using QualityStretches = std::vector<PlotStretches>;

// Each epoch holds until the next one, if that comes in time.
QualityStretches StretchesOf(const PositionTrack& track, const PlotScale& x,
                             std::int64_t longestStep, std::int64_t interval) {
  QualityStretches stretches(kQualities, PlotStretches(x));
  const std::size_t size = track.times.size();
  for (std::size_t i = 0; i < size; ++i) {
    const std::int64_t time = track.times[i];
    const std::int64_t next = i + 1 < size ? track.times[i + 1] : time;
    const std::int64_t until =
        next - time <= longestStep ? next : std::min(time + interval, track.times.back());
    stretches[track.quality[i]].Add(static_cast<double>(time), static_cast<double>(until));
  }
  return stretches;
}

// The commonest first, so that the rare ones lie on top and are seen.
std::vector<std::size_t> FromCommonToRare(const QualityStretches& stretches) {
  std::vector<std::size_t> order;
  std::vector<std::int64_t> lengths(stretches.size());
  for (std::size_t quality = 0; quality < stretches.size(); ++quality) {
    for (const auto& stretch : stretches[quality].All()) {
      lengths[quality] += stretch.end - stretch.begin;
    }
    if (lengths[quality] > 0) order.push_back(quality);
  }
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
  return order;
}

constexpr double kErrorPlot = 108.0;
constexpr double kErrorStep = kErrorPlot + 30.0;

struct ErrorAxis {
  std::string_view title;
  const std::vector<double> PositionTrack::*values;
};
constexpr auto kErrorAxes = std::to_array<ErrorAxis>({{"north, m", &PositionTrack::north},
                                                      {"east, m", &PositionTrack::east},
                                                      {"up, m", &PositionTrack::up}});

// Three plots under each other on one axis of time. Qualities may be none.
void DrawErrors(SvgPicture& picture, const PositionTrack& track, const PlotScale& x, bool dated,
                std::int64_t longestStep, const QualityStretches& qualities, double top,
                double labelsBelow) {
  const std::vector<std::size_t> order = FromCommonToRare(qualities);
  const std::vector<PlotTick> times = TimeTicks(x, dated);
  for (std::size_t axis = 0; axis < kErrorAxes.size(); ++axis) {
    const double above = top + kErrorStep * static_cast<double>(axis);
    const double below = above + kErrorPlot;
    picture.Text(kPlotLeft, above - 8.0, kErrorAxes[axis].title, "unit");
    const PlotColumns line = FixLine(track, track.*kErrorAxes[axis].values, x, longestStep);
    if (line.Empty()) {
      DrawEmptyPlot(picture, x.From(), x.To(), above, below,
                    axis == 2 ? "no heights to compare" : "no fix");
      continue;
    }
    for (const std::size_t quality : order) {
      picture.Path(qualities[quality].Boxes(above, kErrorPlot), Numbered("q", quality));
    }
    const PlotRange range = RoomyRange(line.Least(), line.Greatest(), 1e-3);
    const PlotScale y(range.low, range.high, below, above);
    const bool lowest = axis + 1 == kErrorAxes.size();
    DrawAxes(picture, x, y, {times, NumberTicks(y, kUnderEachOther)}, lowest ? labelsBelow : 0.0);
    if (range.low < 0.0 && range.high > 0.0) {
      picture.Line(x.From(), y.At(0.0), x.To(), y.At(0.0), "zero");
    }
    picture.Path(line.Line(y), "line");
  }
}

}  // namespace

std::string ScatterPicture(const TrialFigures& trial) {
  std::vector<std::size_t> shown;
  std::vector<ScatterFrame> frames;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    if (FixesOf(trial.systems[s].pictures.positions) == 0) continue;
    shown.push_back(s);
    frames.push_back(FrameOf(trial.systems[s]));
  }
  if (shown.empty()) return {};
  const bool one = shown.size() == 1;
  const double side = one ? 420.0 : 296.0;
  const double down = side + 66.0;
  const double rows = std::ceil(static_cast<double>(shown.size()) / 2.0);
  // Systems of a like size are shown to one scale.
  const auto [least, most] = std::ranges::minmax_element(frames, {}, &ScatterFrame::half);
  if (most->half <= 5.0 * least->half) {
    const double half = most->half;
    for (ScatterFrame& frame : frames) frame.half = half;
  }
  const double width = one ? kPlotLeft + side + 30.0 : kPictureWidth;
  SvgPicture picture(
      width, down * rows, "scatter", "Scatter of the positions",
      "Each dot is a place of fixes, north upwards and east to the right, in metres "
      "from the reference. Dashed circles hold 50% and 95% of the fixes, the ellipse "
      "95% of normally distributed ones. The cross is the mean.",
      one ? "square" : "");
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const double left = kPlotLeft + (i % 2 == 0 ? 0.0 : kPictureWidth / 2.0);
    DrawScatter(picture, trial.systems[shown[i]], shown[i] + 1, frames[i], left,
                34.0 + down * std::floor(static_cast<double>(i) / 2.0), side);
  }
  return std::move(picture).Finish();
}

std::string SharesPicture(const TrialFigures& trial) {
  if (std::none_of(trial.systems.begin(), trial.systems.end(), [](const SystemFigures& system) {
        return FixesOf(system.pictures.positions) > 0;
      })) {
    return {};
  }
  SvgPicture picture(
      kPictureWidth, 322.0, "shares", "Share of the errors by their size",
      "Curves that rise from 0 to 100%: at each size of the error the share of the "
      "samples that are no larger, on the left horizontally, on the right in height.");
  std::vector<LegendEntry> legend;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    legend.push_back({"System " + trial.systems[s].name, Numbered("s", s + 1)});
  }
  DrawLegend(picture, kPlotLeft, 16.0, kPlotRight - kPlotLeft, legend);
  DrawShares(picture, trial, {"Horizontal error, m", "no fix", false}, kPlotLeft, 358.0);
  DrawShares(picture, trial, {"Error of height, m", "no heights to compare", true}, 430.0,
             kPlotRight);
  return std::move(picture).Finish();
}

std::string ErrorPicture(const SystemFigures& system, std::size_t number) {
  const PositionTrack& track = system.pictures.positions;
  if (track.times.empty()) return {};
  const PlotTimes times = TimesOf(track.times);
  const PlotScale x = times.Scale();
  const Value& interval = system.availability.interval;
  const std::int64_t longest = LongestStep(interval);
  const QualityStretches qualities =
      StretchesOf(track, x, longest, std::llround(interval.value_or(0.0) * 1000.0));
  constexpr double kTop = 24.0;
  const double bottom = kTop + 2.0 * kErrorStep + kErrorPlot;
  SvgPicture picture(kPictureWidth, bottom + 46.0, Numbered("errors", number),
                     "Errors of system " + system.name + " over time",
                     "Three plots of the errors to the north, to the east and upwards over time. "
                     "Coloured grounds and digits below tell the quality of the fixes.");
  picture.Text(kPlotRight, kTop - 8.0, DayOfAxis(times, system.ledger.dated), "e");
  DrawErrors(picture, track, x, system.ledger.dated, longest, qualities, kTop, 38.0);
  for (const std::size_t quality : FromCommonToRare(qualities)) {
    picture.Path(qualities[quality].Boxes(bottom + 3.0, 5.0), Numbered("qs", quality));
    double free = kPlotLeft;
    for (const auto& stretch : qualities[quality].All()) {
      const double middle = (stretch.begin + stretch.end) / 2.0;
      if (stretch.end - stretch.begin < 14 || middle < free) continue;
      picture.Text(middle, bottom + 20.0, std::to_string(quality), "m b small");
      free = middle + 24.0;
    }
  }
  return std::move(picture).Finish();
}

std::string PairPicture(const PairFigures& pair, std::size_t number, bool dated) {
  const PositionTrack& track = pair.differences;
  if (track.times.empty()) return {};
  const PlotTimes times = TimesOf(track.times);
  const PlotScale x = times.Scale();
  // Without an interval of its own the differences are held together by their usual step.
  std::vector<std::int64_t> steps;
  for (std::size_t i = 1; i < track.times.size(); ++i) {
    steps.push_back(track.times[i] - track.times[i - 1]);
  }
  const std::int64_t longest = 3 * UsualStep(std::move(steps));
  constexpr double kTop = 24.0;
  const double bottom = kTop + 2.0 * kErrorStep + kErrorPlot;
  SvgPicture picture(kPictureWidth, bottom + 26.0, Numbered("pair", number),
                     "Differences " + pair.name + " over time",
                     "Three plots of the second system less the first, to the north, to the east "
                     "and upwards, over time.");
  picture.Text(kPlotRight, kTop - 8.0, pair.name + ", " + DayOfAxis(times, dated), "e");
  DrawErrors(picture, track, x, dated, longest, {}, kTop, 17.0);
  return std::move(picture).Finish();
}

std::string ClaimPicture(const TrialFigures& trial) {
  struct Row {
    std::string name;
    const ClaimAxis* axis;
    std::size_t system;
  };
  std::vector<Row> rows;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    if (!system.gst.why.empty()) continue;
    const std::string prefix = trial.systems.size() > 1 ? system.name + " " : "";
    for (const auto& [name, axis] :
         {std::pair{"north", &system.gst.north}, std::pair{"east", &system.gst.east},
          std::pair{"up", &system.gst.up}}) {
      if (axis->why.empty()) rows.push_back({prefix + name, axis, s + 1});
    }
  }
  if (rows.empty()) return {};
  constexpr double kRow = 26.0;
  constexpr double kTop = 40.0;
  const double bottom = kTop + kRow * static_cast<double>(rows.size());
  SvgPicture picture(kPictureWidth, bottom + 26.0, "claims", "Claimed and real errors",
                     "For each axis the share of the errors within one (disc) and two (diamond) "
                     "claimed standard deviations, beside the dashed lines of an honest claim at "
                     "68.3% and 95.4%.");
  const PlotScale x(0.0, 1.0, 110.0, kPlotRight - 10.0);
  const PlotScale y = ScaleOfRows(kTop, bottom);
  DrawAxes(
      picture, x, y,
      {{{0.0, "0"}, {0.2, "20%"}, {0.4, "40%"}, {0.6, "60%"}, {0.8, "80%"}, {1.0, "100%"}}, {}});
  for (const auto& [share, name] : {std::pair{0.6827, "68.3%"}, std::pair{0.9545, "95.4%"}}) {
    picture.Line(x.At(share), kTop - 4.0, x.At(share), bottom, "zero");
    picture.Text(x.At(share), kTop - 8.0, name, "m");
  }
  picture.Mark(MarkShape::Disc, 114.0, 14.0, 5.0, "f1");
  picture.Text(124.0, 18.0, "within 1 σ", "");
  picture.Mark(MarkShape::Diamond, 254.0, 14.0, 5.0, "f1");
  picture.Text(264.0, 18.0, "within 2 σ", "");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double middle = kTop + kRow * (static_cast<double>(i) + 0.5);
    const ClaimAxis& axis = *rows[i].axis;
    picture.Text(102.0, middle + 4.0, rows[i].name, "e");
    if (axis.within1 && axis.within2) {
      picture.Line(x.At(*axis.within1), middle, x.At(*axis.within2), middle, "axis");
      picture.Mark(MarkShape::Disc, x.At(*axis.within1), middle, 5.0,
                   Numbered("f", rows[i].system));
      picture.Mark(MarkShape::Diamond, x.At(*axis.within2), middle, 5.0,
                   Numbered("f", rows[i].system));
    }
  }
  return std::move(picture).Finish();
}

}  // namespace fathomline::trial
