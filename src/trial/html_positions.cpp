#include <algorithm>
#include <array>
#include <cmath>

#include "trial/html_sections.h"
#include "trial/html_table.h"
#include "trial/position_pictures.h"
#include "trial/sensor_pictures.h"

namespace fathomline::trial {
namespace {

constexpr auto kQualityNames = std::to_array<std::string_view>(
    {"no fix", "autonomous", "differential", "precise (PPS)", "RTK fixed", "RTK float", "estimated",
     "manual", "simulated", "other fix"});

// Whether any system has figures of its positions.
bool AnyPositions(const TrialFigures& trial) {
  return std::any_of(trial.systems.begin(), trial.systems.end(), [](const SystemFigures& system) {
    return system.horizontal.mean.why.empty();
  });
}

template <class Block>
using Columns = std::vector<FigureColumn<Block>>;

Columns<HorizontalErrors> HorizontalColumns(const TrialFigures& trial) {
  Columns<HorizontalErrors> columns;
  for (const SystemFigures& system : trial.systems) {
    const std::string prefix = trial.systems.size() > 1 ? EscapedXml(system.name) + "\n" : "";
    columns.push_back({prefix + "about reference", &system.horizontal.reference});
    columns.push_back({prefix + "about mean", &system.horizontal.mean});
  }
  return columns;
}

Columns<VerticalErrors> VerticalColumns(const TrialFigures& trial) {
  Columns<VerticalErrors> columns;
  for (const SystemFigures& system : trial.systems) {
    const std::string prefix = trial.systems.size() > 1 ? EscapedXml(system.name) + "\n" : "";
    columns.push_back({prefix + "about reference", &system.vertical.reference});
    columns.push_back({prefix + "about mean", &system.vertical.mean});
  }
  return columns;
}

std::string PlaceBody(const TrialFigures& trial) {
  if (!AnyPositions(trial)) return {};
  std::string body = HtmlFigure(
      ScatterPicture(trial),
      "Metres, north on top. Each dot is a place where fixes lie, the denser the stronger. Dashed "
      "circles: R50 and R95. "
      "Ellipse: 95% of normally distributed errors about the mean, which is the heavy cross. "
      "Dashed "
      "lines cross at the reference. A long ellipse tells of a direction in which the satellites "
      "stand badly, a cloud apart from the rest of a change of solution.");
  body += FigureTable(
      "Horizontal errors", HorizontalColumns(trial),
      {"n", "bias_north_m", "bias_east_m", "std_north_m", "std_east_m", "drms_m", "2drms_m"});
  Columns<ErrorEllipse> ellipses;
  for (const SystemFigures& system : trial.systems) {
    ellipses.push_back({"System " + EscapedXml(system.name), &system.horizontal.ellipse});
  }
  body += FigureTable("Error ellipse of 95%", ellipses);
  return body;
}

std::string SharesBody(const TrialFigures& trial) {
  if (!AnyPositions(trial)) return {};
  std::string body = HtmlFigure(
      SharesPicture(trial),
      "At each size of the error the share of the fixes that are no worse, about the reference. "
      "The steeper the better; where a curve meets 95% stands the figure of the table.");
  body += FigureTable("Distances that were not passed, horizontally", HorizontalColumns(trial),
                      {"r50_m", "r68_m", "r95_m", "r99_m", "largest_m", "largest_at"});
  body += FigureTable("Errors of height", VerticalColumns(trial));
  return body;
}

std::string QualityHead(const QualityFigures& row) {
  const auto at = static_cast<std::size_t>(std::clamp(row.quality, 0, 9));
  return std::to_string(row.quality) + "<small>" + std::string(kQualityNames[at]) + "</small>";
}

void QualityTables(std::string& body, const TrialFigures& trial, const SystemFigures& system) {
  if (system.byQuality.empty()) return;
  const std::string prefix = SystemPrefix(trial, system);
  HtmlTable horizontal(prefix + "Horizontal errors by quality of fix, m", "wide");
  horizontal.Heads({"Quality", "About", "Samples", "Bias north\neast", "Std. north\neast",
                    "DRMS\n2DRMS", "R50\nR68", "R95\nR99", "Largest\nat, UTC"});
  HtmlTable vertical(prefix + "Errors of height by quality of fix, m", "wide");
  vertical.Heads({"Quality", "About", "Samples", "Bias\nStd. dev.", "RMS", "50%\n68%", "95%\n99%",
                  "Largest\nat, UTC"});
  HtmlTable ellipses(prefix + "Epochs and error ellipse of 95% by quality of fix");
  ellipses.Heads({"Quality", "Epochs", "Share,\nof 1", "Long semi-\naxis, m",
                  "Short semi-\naxis, m", "Direc-\ntion, °", "Inside,\nof 1"});
  for (const QualityFigures& row : system.byQuality) {
    const FigureCells ellipse(row.horizontal.ellipse);
    ellipses.Row(QualityHead(row),
                 {Cell(row.epochs), Cell(row.share, decimals::kShare), ellipse["semi_major_m"],
                  ellipse["semi_minor_m"], ellipse["direction_deg"], ellipse["inside_share"]});
    for (const bool mean : {false, true}) {
      const FigureCells h(mean ? row.horizontal.mean : row.horizontal.reference);
      const FigureCells v(mean ? row.vertical.mean : row.vertical.reference);
      const std::string about = mean ? "mean" : "reference";
      const std::string head = mean ? "" : QualityHead(row);
      const std::string_view cls = mean ? "" : "first";
      horizontal.Row(head,
                     {about, h["n"], Stacked(h["bias_north_m"], h["bias_east_m"]),
                      Stacked(h["std_north_m"], h["std_east_m"]),
                      Stacked(h["drms_m"], h["2drms_m"]), Stacked(h["r50_m"], h["r68_m"]),
                      Stacked(h["r95_m"], h["r99_m"]), Stacked(h["largest_m"], h["largest_at"])},
                     cls);
      vertical.Row(head,
                   {about, v["n"], Stacked(v["bias_m"], v["std_m"]), v["rms_m"],
                    Stacked(v["p50_m"], v["p68_m"]), Stacked(v["p95_m"], v["p99_m"]),
                    Stacked(v["largest_m"], v["largest_at"])},
                   cls);
    }
  }
  body +=
      std::move(ellipses).Finish() + std::move(horizontal).Finish() + std::move(vertical).Finish();
}

std::string TimeBody(const TrialFigures& trial) {
  std::string body;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    const std::string picture = ErrorPicture(system, s + 1);
    if (picture.empty()) continue;
    const std::string title = SystemTitle(trial, system);
    if (!title.empty()) body += "<h3>" + title + "</h3>\n";
    body += HtmlFigure(
        picture, "Errors of stream " + Cell(system.stream) +
                     " about the reference. Grounds and digits below tell the quality of the fix "
                     "(1 autonomous, 2 differential, 4 RTK fixed, 5 RTK float, 0 none). Look for "
                     "steps where the quality changes, and for slow waves, which no averaging of "
                     "neighbouring samples takes away.");
    QualityTables(body, trial, system);
  }
  return body;
}

std::string ClaimBody(const TrialFigures& trial) {
  const std::string picture = ClaimPicture(trial);
  if (picture.empty()) return {};
  std::string body = HtmlFigure(
      picture,
      "GST at the time of a fix against the errors about the reference. Marks to the left "
      "of their dashed line: the receiver thinks itself better than it is; to the right: "
      "it is too modest.");
  Columns<ClaimAxis> columns;
  for (const SystemFigures& system : trial.systems) {
    if (!system.gst.why.empty()) continue;
    const std::string prefix = (trial.systems.size() > 1 ? EscapedXml(system.name) + " " : "") +
                               Cell(system.gst.talker) + "GST\n";
    columns.push_back({prefix + "north", &system.gst.north});
    columns.push_back({prefix + "east", &system.gst.east});
    columns.push_back({prefix + "up", &system.gst.up});
  }
  body += FigureTable("What the receiver claims against what happened", columns);
  for (const SystemFigures& system : trial.systems) {
    if (!system.gst.why.empty() || system.reference.kind != ReferenceKind::Mean) continue;
    body += "<p>The reference of system " + EscapedXml(system.name) +
            " is the mean of the same fixes. That flatters the receiver: an error that stays does "
            "not show.</p>\n";
  }
  return body;
}

void StreamTables(std::string& body, const TrialFigures& trial) {
  for (const SystemFigures& system : trial.systems) {
    if (system.streams.empty()) continue;
    HtmlTable streams(SystemPrefix(trial, system) + "Streams of positions", "wide");
    streams.Heads({"Stream", "Epochs", "Fixes", "Heights\nabove", "Interval,\ns", "Conflicting",
                   "Matched", "Median\ndistance, m"});
    for (const StreamFigures& row : system.streams) {
      streams.Row(EscapedXml(row.name) + (row.chosen ? " (chosen)" : ""),
                  {Cell(row.epochs), Cell(row.fixes), std::string(ToText(row.heights)),
                   Cell(row.interval, decimals::kSeconds), Cell(row.conflicting), Cell(row.matched),
                   Cell(row.medianDistance, decimals::kLength)});
    }
    body += std::move(streams).Finish();
  }
  body +=
      "<p class=\"defs\">Each talker and type that tells positions and time is a stream of its "
      "own; "
      "the figures of this document are those of the chosen one. <b>Conflicting</b>: sentences of "
      "one name and time with different places, as of two receivers of one name. <b>Matched</b>: "
      "fixes at a time for which the chosen stream has a place too; the <b>median distance</b> is "
      "that between both.</p>\n";
}

std::string AvailabilityBody(const TrialFigures& trial) {
  if (std::all_of(trial.systems.begin(), trial.systems.end(),
                  [](const SystemFigures& system) { return system.streams.empty(); })) {
    return {};
  }
  std::string body;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    body += HtmlFigure(AvailabilityPicture(system, s + 1),
                       SystemPrefix(trial, system) +
                           "When each talker and type was heard. The stream that the figures are "
                           "made of is coloured. An outlined break is a gap of more than three "
                           "intervals, however short on this scale.");
  }
  HtmlTable table("Fixes that were there and fixes that should have been",
                  trial.systems.size() > 2 ? "" : "beside");
  std::vector<std::string> heads = {""};
  std::vector<FigureCells> columns;
  for (const SystemFigures& system : trial.systems) {
    heads.push_back("System " + EscapedXml(system.name) + "\n" + Cell(system.stream));
    columns.emplace_back(system.availability);
  }
  table.Heads(heads);
  for (const std::string_view key :
       {"before_first_fix", "epochs", "fixes", "interval_s", "expected", "share", "jumps", "gaps.n",
        "gaps.longest_s", "gaps.longest_at", "gaps.sum_s"}) {
    std::vector<std::string> row;
    for (const FigureCells& column : columns) row.push_back(column[key]);
    table.Row(WordedHead(key), row);
  }
  body += std::move(table).Finish();
  StreamTables(body, trial);
  return body;
}

std::string PairBody(const TrialFigures& trial) {
  std::string body;
  Columns<HorizontalErrors> horizontal;
  Columns<VerticalErrors> vertical;
  Columns<AngleErrors> heading;
  HtmlTable overlap("Times that the systems of a pair share");
  overlap.Heads({"Pair", "Fixes of the slower", "At the same time", "Interpolated"});
  for (std::size_t p = 0; p < trial.pairs.size(); ++p) {
    const PairFigures& pair = trial.pairs[p];
    const std::string name = EscapedXml(pair.name);
    body += HtmlFigure(PairPicture(pair, p + 1, trial.systems.front().ledger.dated),
                       name +
                           ": the second system less the first, which below is what is called an "
                           "error. An offset that stays is the way from one antenna to the other, "
                           "or a different datum.");
    overlap.Row(name, {Cell(pair.of), Cell(pair.sameTime), Cell(pair.interpolated)});
    horizontal.push_back({name, &pair.horizontal});
    vertical.push_back({name, &pair.vertical});
    heading.push_back({name, &pair.heading});
  }
  if (trial.pairs.empty()) return {};
  body += std::move(overlap).Finish();
  body += FigureTable("Horizontal differences", horizontal);
  body += FigureTable("Differences of height", vertical);
  body += FigureTable("Differences of heading", heading);
  return body;
}

}  // namespace

std::vector<HtmlSection> PositionSections(const TrialFigures& trial) {
  std::vector<HtmlSection> sections;
  sections.push_back({"place", "Where do the positions lie?", "positions", PlaceBody(trial)});
  sections.push_back({"size", "How large are the errors, and how often?", "", SharesBody(trial)});
  sections.push_back({"time", "How do the errors run over time?", "", TimeBody(trial)});
  sections.push_back(
      {"there", "Was there always a fix?", "streams of positions", AvailabilityBody(trial)});
  sections.push_back(
      {"claim", "Does the receiver know how good it is?", "a claim (GST)", ClaimBody(trial)});
  sections.push_back({"pairs", "How do the systems differ?", "", PairBody(trial)});
  return sections;
}

}  // namespace fathomline::trial
