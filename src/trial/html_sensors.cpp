#include <algorithm>

#include "trial/html_sections.h"
#include "trial/html_table.h"
#include "trial/satellite_pictures.h"
#include "trial/sensor_pictures.h"

namespace fathomline::trial {
namespace {

template <class Any>
bool AnySystem(const TrialFigures& trial, Any&& any) {
  return std::any_of(trial.systems.begin(), trial.systems.end(), std::forward<Any>(any));
}

void AngleTable(std::string& body, const std::string& caption, const SystemFigures& system) {
  std::vector<FigureColumn<AngleErrors>> columns;
  const auto add = [&columns](const std::vector<AngleErrors>& angles, const char* kind) {
    for (const AngleErrors& angle : angles) {
      columns.push_back({EscapedXml(angle.name) + "\n" + kind, &angle});
    }
  };
  add(system.heading, "heading");
  add(system.pitch, "pitch");
  add(system.roll, "roll");
  body += FigureTable(caption, columns,
                      {"n", "reference_deg", "mean_deg", "bias_deg", "std_deg", "rms_deg",
                       "p50_deg", "p68_deg", "p95_deg", "p99_deg", "largest_deg", "largest_at"});
}

std::string AngleBody(const TrialFigures& trial) {
  std::string body;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    if (system.heading.empty() && system.pitch.empty() && system.roll.empty()) continue;
    const std::string prefix = SystemPrefix(trial, system);
    body += HtmlFigure(AnglePicture(system, s + 1),
                       prefix +
                           "Deviations from the reference, which is the mean unless one was given. "
                           "Lines are told apart by their dashes too.");
    AngleTable(body, prefix + "Angles against their references", system);
  }
  return body;
}

bool HasSatellites(const SystemFigures& system) {
  return system.satellites.why.empty();
}

std::string RangeCell(const FigureCells& range) {
  return Stacked(range["mean"], range["least"] + " … " + range["greatest"]);
}

std::string SkyBody(const TrialFigures& trial) {
  if (!AnySystem(trial, HasSatellites)) return {};
  std::string body = HtmlFigure(
      SkyPicture(trial),
      "Tracks of the satellites, north on top, the horizon as the rim. A mark stands where a "
      "satellite was last (in a full sky only for those that were there in the end), filled if it "
      "was in use more often than not. A part of the sky without tracks is shaded by something, or "
      "one that no orbit passes.");
  HtmlTable table("Satellites by constellation");
  table.Heads({"Constellation", "Epochs", "In view, mean\nleast … greatest",
               "In use, mean\nleast … greatest"});
  HtmlTable groups("Groups of GSV sentences", "slim");
  groups.Heads({"System", "Whole", "Broken"});
  for (const SystemFigures& system : trial.systems) {
    if (!HasSatellites(system)) continue;
    groups.Row(EscapedXml(system.name),
               {Cell(system.satellites.groupsWhole), Cell(system.satellites.groupsBroken)});
    for (const ConstellationFigures& row : system.satellites.constellations) {
      table.Row(
          (trial.systems.size() > 1 ? EscapedXml(system.name) + " " : "") + EscapedXml(row.name),
          {Cell(row.epochs), RangeCell(FigureCells(row.inView)),
           RangeCell(FigureCells(row.inUse))});
    }
  }
  body += std::move(table).Finish() + std::move(groups).Finish();
  return body +
         "<p class=\"defs\"><b>In view</b>: distinct numbers listed by the GSV groups of an epoch. "
         "<b>In use</b>: those of them that the GSA of then has. A group is a talker's sentences "
         "1 to n in their order; one that is not whole is <b>broken</b> and left out.</p>\n";
}

std::string SignalBody(const TrialFigures& trial) {
  std::string body;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    if (!HasSatellites(system) || system.satellites.satellites.empty()) continue;
    const std::string prefix = SystemPrefix(trial, system);
    body += HtmlFigure(SignalPicture(system, s + 1),
                       prefix +
                           "C/N0 of each satellite and signal over time, from the least to the "
                           "greatest of each moment. A row that thins out or drops tells of a "
                           "satellite behind something; one moment in which all drop, of "
                           "interference.");
    HtmlTable table(prefix + "Satellites and their signals", "wide");
    table.Heads({"Satellite", "Signal", "Samples", "First at\nlast at, UTC", "In view,\nof 1",
                 "In use,\nof 1", "Tracked", "C/N0 mean,\ndB-Hz", "Std.\ndev.", "Least\ngreatest"});
    for (const SatelliteFigures& row : system.satellites.satellites) {
      const FigureCells cells(row);
      table.Row(
          EscapedXml(row.constellation) + " " + Cell(row.number),
          {cells["signal"], cells["n"], Stacked(cells["first_at"], cells["last_at"]),
           cells["in_view_share"], cells["in_use_share"], cells["cn0.n"], cells["cn0.mean_dbhz"],
           cells["cn0.std_dbhz"], Stacked(cells["cn0.least_dbhz"], cells["cn0.greatest_dbhz"])});
    }
    body += std::move(table).Finish();
  }
  if (body.empty()) return body;
  return body +
         "<p class=\"defs\"><b>In view</b>: share of the whole groups that list the satellite. "
         "<b>In use</b>: share of its samples in which GSA names it. <b>Tracked</b>: samples with "
         "a C/N0 above 0.</p>\n";
}

std::string ElevationBody(const TrialFigures& trial) {
  std::string body;
  for (std::size_t s = 0; s < trial.systems.size(); ++s) {
    const SystemFigures& system = trial.systems[s];
    const std::string picture = ElevationPicture(system, s + 1);
    if (picture.empty()) continue;
    const std::string prefix = SystemPrefix(trial, system);
    body +=
        HtmlFigure(picture, prefix +
                                "Mean C/N0 in steps of ten degrees, with one standard deviation "
                                "up and down. It should rise towards the zenith; a flat or low "
                                "curve tells of an antenna, a cable or a place that costs "
                                "signal.");
    HtmlTable table(prefix + "C/N0 by elevation, dB-Hz: mean, standard deviation, samples", "wide");
    table.Heads({"Signal", "0–10°", "10–20°", "20–30°", "30–40°", "40–50°", "50–60°", "60–70°",
                 "70–80°", "80–90°"});
    for (const ConstellationFigures& constellation : system.satellites.constellations) {
      for (const SignalFigures& signal : constellation.signals) {
        std::vector<std::string> row;
        for (const ElevationBin& bin : signal.byElevation) {
          const FigureCells cells(bin);
          row.push_back(Stacked(cells["mean_dbhz"], Stacked(cells["std_dbhz"], cells["n"])));
        }
        table.Row(EscapedXml(constellation.name) +
                      (signal.signal ? " " + EscapedXml(*signal.signal) : std::string()),
                  row);
      }
    }
    body += std::move(table).Finish();
  }
  return body;
}

std::string AisBody(const TrialFigures& trial) {
  if (!AnySystem(trial, [](const SystemFigures& system) { return system.ais.why.empty(); }))
    return {};
  std::string body =
      HtmlFigure(AisPicture(trial), "Messages of other stations by their number, both channels.");
  std::vector<FigureColumn<Ais>> counts;
  std::vector<FigureColumn<AisStations>> stations;
  std::vector<FigureColumn<OwnPosition>> own;
  HtmlTable byId("Messages by number and channel", "slim");
  byId.Heads({"Number", "Channel", "Received"});
  for (const SystemFigures& system : trial.systems) {
    const std::string head = "System " + EscapedXml(system.name);
    counts.push_back({head, &system.ais});
    if (!system.ais.why.empty()) continue;
    stations.push_back({head, &system.ais.stations});
    own.push_back({head, &system.ais.ownPosition});
    for (const AisIdCount& row : system.ais.byId) {
      byId.Row((trial.systems.size() > 1 ? EscapedXml(system.name) + " " : "") + Cell(row.id),
               {Cell(row.channel), Cell(row.n)});
    }
  }
  body += FigureTable("AIS messages", counts, {"messages", "own_messages", "incomplete", "short"});
  body += FigureTable("Stations by their kind", stations);
  body += FigureTable("Own position as sent by AIS against the chosen stream", own);
  return body + std::move(byId).Finish();
}

std::string_view SeriesTitle(std::string_view key) {
  if (key == "depth") return "Depth, m";
  if (key == "rate_of_turn") return "Rate of turn, °/min";
  if (key == "speed_over_ground") return "Speed over ground, kn";
  return "Speed through water, kn";
}

std::string SeriesBody(const TrialFigures& trial) {
  std::string body;
  for (const SystemFigures& system : trial.systems) {
    for (const SeriesList& list : system.series) {
      if (list.names.empty()) continue;
      HtmlTable table(SystemPrefix(trial, system) + std::string(SeriesTitle(list.key)), "wide");
      table.Heads({"Name", "Samples", "Mean", "Std. dev.", "Least\nat, UTC", "Greatest\nat, UTC",
                   "Gaps\ntogether, s", "Longest, s\nfrom, UTC"});
      for (const SeriesFigures& row : list.names) {
        const FigureCells gaps(row.gaps);
        const auto cell = [](const Value& value) { return Cell(value, decimals::kLength); };
        table.Row(EscapedXml(row.name), {Cell(row.n), cell(row.mean), cell(row.std),
                                         Stacked(cell(row.least), Cell(row.leastAt)),
                                         Stacked(cell(row.greatest), Cell(row.greatestAt)),
                                         Stacked(gaps["n"], gaps["sum_s"]),
                                         Stacked(gaps["longest_s"], gaps["longest_at"])});
      }
      body += std::move(table).Finish();
    }
  }
  return body;
}

void CountTable(std::string& body, const std::string& caption, const std::string& head,
                const std::vector<NameCount>& rows) {
  if (rows.empty()) return;
  HtmlTable table(caption, "slim");
  table.Heads({head, "Lines"});
  for (const NameCount& row : rows) table.Row(EscapedXml(row.name), {Cell(row.n)});
  body += std::move(table).Finish();
}

void NameTable(std::string& body, const std::string& prefix, const LedgerFigures& ledger) {
  if (ledger.byName.empty()) return;
  HtmlTable table(prefix + "Talkers and types", "wide");
  table.Heads({"Name", "Sentences\nepochs", "Without\ntime", "First at\nlast at, UTC",
               "Interval, s\njitter 95%, s", "Gaps\ntogether, s", "Longest, s\nfrom, UTC",
               "Steps back\nrepeated"});
  for (const NameLedger& row : ledger.byName) {
    const FigureCells cells(row);
    table.Row(cells["name"], {Stacked(cells["n"], cells["epochs"]), cells["without_time"],
                              Stacked(cells["first_at"], cells["last_at"]),
                              Stacked(cells["interval_s"], cells["jitter_p95_s"]),
                              Stacked(cells["gaps.n"], cells["gaps.sum_s"]),
                              Stacked(cells["gaps.longest_s"], cells["gaps.longest_at"]),
                              Stacked(cells["steps_back"], cells["repeated"])});
  }
  body += std::move(table).Finish() +
          "<p class=\"defs\"><b>Interval</b>: median step from one distinct time to the next. "
          "<b>Jitter</b>: 95% of |step − median| are no larger. <b>Gap</b>: a step of more than "
          "three medians. <b>Steps back</b> and <b>repeated</b> times count sentences that tell "
          "the time, in their order of arrival.</p>\n";
}

std::string LedgerBody(const TrialFigures& trial) {
  std::string body =
      HtmlFigure(LinesPicture(trial), "Every line of the recordings is in exactly one class.");
  HtmlTable table("Lines", trial.systems.size() > 2 ? "" : "beside");
  std::vector<std::string> heads = {""};
  std::vector<FigureCells> columns;
  for (const SystemFigures& system : trial.systems) {
    heads.push_back("System " + EscapedXml(system.name));
    columns.emplace_back(system.ledger);
  }
  table.Heads(heads);
  const auto row = [&](std::string_view key) {
    std::vector<std::string> cells;
    for (const FigureCells& column : columns) cells.push_back(column[key]);
    const std::size_t dot = key.find('.');
    table.Row(WordedHead(dot == std::string_view::npos ? key : key.substr(dot + 1)), cells);
  };
  for (const std::string_view key :
       {"lines", "classes.good", "classes.unreadable", "classes.unknown", "classes.wrong_checksum",
        "classes.no_checksum", "classes.malformed", "classes.foreign", "classes.empty", "too_long",
        "first_at", "last_at", "span_s", "dated", "steps_back"}) {
    row(key);
  }
  body += std::move(table).Finish();
  for (const SystemFigures& system : trial.systems) {
    const std::string prefix = SystemPrefix(trial, system);
    NameTable(body, prefix, system.ledger);
    CountTable(body, prefix + "Unknown types", "Address", system.ledger.unknown);
    CountTable(body, prefix + "Unreadable fields", "Name and field", system.ledger.unreadable);
  }
  return body;
}

}  // namespace

std::vector<HtmlSection> SensorSections(const TrialFigures& trial) {
  std::vector<HtmlSection> sections;
  sections.push_back({"angles", "How good are heading, pitch and roll?",
                      "heading, pitch and roll (HDT, ATT)", AngleBody(trial)});
  sections.push_back({"sky", "Which satellites were there?", "satellites (GSV)", SkyBody(trial)});
  sections.push_back({"signals", "How strong were their signals?", "", SignalBody(trial)});
  sections.push_back(
      {"elevation", "How does the signal grow with elevation?", "", ElevationBody(trial)});
  sections.push_back({"series", "What did depth, speed and rate of turn tell?",
                      "depth, speed and rate of turn", SeriesBody(trial)});
  sections.push_back({"ais", "What was heard of AIS?", "AIS (VDM, VDO)", AisBody(trial)});
  sections.push_back({"lines", "What became of every line?", "", LedgerBody(trial)});
  return sections;
}

}  // namespace fathomline::trial
