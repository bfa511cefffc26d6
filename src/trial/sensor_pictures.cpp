#include "trial/sensor_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "trial/picture_parts.h"

namespace fathomline::trial {
namespace {

// Of counts: whole numbers only.
std::vector<PlotTick> CountTicks(const PlotScale& scale, double apart) {
  std::vector<PlotTick> ticks = NumberTicks(scale, apart);
  std::erase_if(ticks, [](const PlotTick& tick) { return tick.at != std::round(tick.at); });
  for (PlotTick& tick : ticks) tick.label = FigureText(tick.at, 0);
  return ticks;
}

constexpr double kAnglePlot = 120.0;
constexpr double kAngleStep = kAnglePlot + 34.0;

struct AngleKind {
  std::string_view title;
  const std::vector<AngleTrack> SystemPictures::*tracks;
  const std::vector<AngleErrors> SystemFigures::*figures;
};
constexpr auto kAngleKinds =
    std::to_array<AngleKind>({{"heading, °", &SystemPictures::headings, &SystemFigures::heading},
                              {"pitch, °", &SystemPictures::pitches, &SystemFigures::pitch},
                              {"roll, °", &SystemPictures::rolls, &SystemFigures::roll}});

Value IntervalOf(const SystemFigures& system, std::string_view name) {
  for (const NameLedger& row : system.ledger.byName) {
    if (row.name == name) return row.interval;
  }
  return std::nullopt;
}

void DrawAngles(SvgPicture& picture, const SystemFigures& system, const AngleKind& kind,
                const PlotScale& x, double above, bool lowest) {
  const double below = above + kAnglePlot;
  const std::vector<AngleTrack>& tracks = system.pictures.*kind.tracks;
  picture.Text(kPlotLeft, above - 10.0, kind.title, "unit");
  std::vector<PlotColumns> lines;
  std::vector<LegendEntry> legend;
  double least = 0.0;
  double greatest = 0.0;
  for (const AngleTrack& track : tracks) {
    const std::int64_t longest = LongestStep(IntervalOf(system, track.name));
    PlotColumns line(x);
    for (std::size_t i = 0; i < track.times.size(); ++i) {
      if (i > 0 && track.times[i] - track.times[i - 1] > longest) line.Break();
      line.Add(static_cast<double>(track.times[i]), track.deviations[i]);
    }
    least = std::min(least, line.Least());
    greatest = std::max(greatest, line.Greatest());
    legend.push_back({track.name, Numbered("n", lines.size() % 8 + 1)});
    lines.push_back(std::move(line));
  }
  const PlotRange range = RoomyRange(least, greatest, 0.01);
  const PlotScale y(range.low, range.high, below, above);
  DrawAxes(picture, x, y, {TimeTicks(x, system.ledger.dated), NumberTicks(y, kUnderEachOther)},
           lowest ? 17.0 : 0.0);
  picture.Line(x.From(), y.At(0.0), x.To(), y.At(0.0), "zero");
  for (std::size_t i = 0; i < lines.size(); ++i)
    picture.Path(lines[i].Line(y), legend[i].line + (lines[i].Dense() ? " dense" : ""));
  DrawLegend(picture, kPlotLeft + 100.0, above - 10.0, kPlotRight - kPlotLeft - 220.0, legend);
}

}  // namespace

std::string AnglePicture(const SystemFigures& system, std::size_t number) {
  PlotTimes times;
  std::vector<const AngleKind*> kinds;
  for (const AngleKind& kind : kAngleKinds) {
    bool any = false;
    for (const AngleTrack& track : system.pictures.*kind.tracks) {
      for (const std::int64_t time : track.times) times.Include(time);
      any |= !track.times.empty();
    }
    if (any) kinds.push_back(&kind);
  }
  if (kinds.empty()) return {};
  const double height = 26.0 + kAngleStep * static_cast<double>(kinds.size()) - 8.0;
  SvgPicture picture(kPictureWidth, height, Numbered("angles", number),
                     "Deviations of the angles of system " + system.name + " over time",
                     "Lines of heading, pitch and roll less their references over time, one for "
                     "each talker and type.");
  picture.Text(kPlotRight, 16.0, DayOfAxis(times, system.ledger.dated), "e");
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    DrawAngles(picture, system, *kinds[i], times.Scale(),
               26.0 + kAngleStep * static_cast<double>(i), i + 1 == kinds.size());
  }
  return std::move(picture).Finish();
}

std::string AvailabilityPicture(const SystemFigures& system, std::size_t number) {
  PlotTimes times;
  for (const NameSpans& name : system.pictures.availability) {
    for (const NameSpans::Span& span : name.spans) {
      times.Include(span.from);
      times.Include(span.to);
    }
  }
  if (times.Empty()) return {};
  constexpr double kRow = 19.0;
  constexpr double kTop = 26.0;
  constexpr double kLeft = 84.0;
  const std::size_t rows = system.pictures.availability.size();
  const double bottom = kTop + kRow * static_cast<double>(rows);
  const PlotScale x = times.Scale(kLeft, kPlotRight);
  SvgPicture picture(kPictureWidth, bottom + 26.0, Numbered("heard", number),
                     "When each name of system " + system.name + " was heard",
                     "One line for each talker and type over time, broken where a gap of more than "
                     "three intervals is.");
  picture.Text(kPlotRight, kTop - 10.0, DayOfAxis(times, system.ledger.dated), "e");
  DrawAxes(picture, x, ScaleOfRows(kTop, bottom), {TimeTicks(x, system.ledger.dated), {}});
  for (std::size_t i = 0; i < rows; ++i) {
    const NameSpans& name = system.pictures.availability[i];
    const double above = kTop + kRow * static_cast<double>(i);
    // The gaps are drawn upon the line, so that the shortest one is seen.
    PlotStretches heard(x);
    PlotStretches silent(x);
    const NameSpans::Span* before = nullptr;
    for (const NameSpans::Span& span : name.spans) {
      heard.Add(static_cast<double>(span.from), static_cast<double>(span.to));
      if (before != nullptr) {
        silent.Add(static_cast<double>(before->to), static_cast<double>(span.from) - 1.0);
      }
      before = &span;
    }
    const bool chosen = system.stream && name.name == *system.stream;
    picture.Text(kLeft - 6.0, above + 14.0, name.name, chosen ? "e row b" : "e row");
    picture.Path(heard.Boxes(above + 5.0, kRow - 10.0),
                 chosen ? Numbered("f", number) : std::string("heard"));
    picture.Path(silent.Boxes(above + 4.0, kRow - 8.0), "silent");
  }
  return std::move(picture).Finish();
}

std::string AisPicture(const TrialFigures& trial) {
  struct Row {
    std::string name;
    Count n;
    std::size_t system;
  };
  std::vector<Row> rows;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    std::map<Count, Count> byId;
    for (const AisIdCount& row : trial.systems[s].ais.byId) byId[row.id] += row.n;
    for (const auto& [id, n] : byId) {
      const std::string prefix = trial.systems.size() > 1 ? trial.systems[s].name + " " : "";
      rows.push_back({prefix + std::to_string(id), n, s + 1});
    }
  }
  if (rows.empty()) return {};
  const Count most = std::ranges::max_element(rows, {}, &Row::n)->n;
  constexpr double kRow = 19.0;
  constexpr double kTop = 26.0;
  const double bottom = kTop + kRow * static_cast<double>(rows.size());
  const PlotScale x(0.0, static_cast<double>(most) * 1.04, kPlotLeft, kPlotRight);
  SvgPicture picture(kPictureWidth, bottom + 26.0, "ais", "AIS messages by their number",
                     "A bar for each number of message, as long as so many were received.");
  picture.Text(kPlotLeft, kTop - 10.0, "message", "e");
  picture.Text(kPlotRight, kTop - 10.0, "received", "e");
  DrawAxes(picture, x, ScaleOfRows(kTop, bottom), {CountTicks(x, 70.0), {}});
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double above = kTop + kRow * static_cast<double>(i);
    const double length = std::max(x.At(static_cast<double>(rows[i].n)) - x.From(), 1.0);
    picture.Text(kPlotLeft - 6.0, above + 14.0, rows[i].name, "e row");
    picture.Box(x.From(), above + 4.0, length, kRow - 8.0, Numbered("f", rows[i].system));
  }
  return std::move(picture).Finish();
}

std::string LinesPicture(const TrialFigures& trial) {
  struct Part {
    Count LineClasses::*n;
    std::string_view name;
    std::string_view cls;
  };
  static constexpr auto kParts =
      std::to_array<Part>({{&LineClasses::good, "good", "cl0"},
                           {&LineClasses::unreadable, "unreadable", "cl1"},
                           {&LineClasses::unknown, "unknown", "cl2"},
                           {&LineClasses::wrongChecksum, "wrong sum", "cl3"},
                           {&LineClasses::noChecksum, "no sum", "cl4"},
                           {&LineClasses::malformed, "malformed", "cl5"},
                           {&LineClasses::foreign, "foreign", "cl6"},
                           {&LineClasses::empty, "empty", "cl7"}});
  Count most = 0;
  for (const SystemFigures& system : trial.systems) most = std::max(most, system.ledger.lines);
  if (most == 0) return {};
  constexpr double kRow = 26.0;
  constexpr double kTop = 36.0;
  const double bottom = kTop + kRow * static_cast<double>(trial.systems.size());
  const PlotScale x(0.0, static_cast<double>(most), kPlotLeft, kPlotRight - 10.0);
  SvgPicture picture(kPictureWidth, bottom + 26.0, "lines", "What became of the lines",
                     "A bar for each system: its lines, parted by what became of them.");
  double right = kPlotLeft;
  for (const Part& part : kParts) {
    const bool any =
        std::any_of(trial.systems.begin(), trial.systems.end(),
                    [&](const auto& system) { return system.ledger.classes.*part.n > 0; });
    if (!any) continue;
    picture.Box(right, 6.0, 10.0, 10.0, part.cls);
    picture.Text(right + 15.0, 15.0, part.name, "");
    right += 30.0 + 7.0 * static_cast<double>(part.name.size());
  }
  DrawAxes(picture, x, ScaleOfRows(kTop, bottom), {CountTicks(x, 80.0), {}});
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const double above = kTop + kRow * static_cast<double>(s);
    picture.Text(kPlotLeft - 6.0, above + 17.0, trial.systems[s].name, "e");
    double from = x.From();
    for (const Part& part : kParts) {
      const Count n = trial.systems[s].ledger.classes.*part.n;
      if (n == 0) continue;
      // A single line is seen too.
      const double length = std::max(x.At(static_cast<double>(n)) - x.From(), 1.5);
      picture.Box(from, above + 5.0, length, kRow - 10.0, part.cls);
      from += length;
    }
  }
  return std::move(picture).Finish();
}

}  // namespace fathomline::trial
