#include "trial/trial_html.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "trial/html_sections.h"
#include "trial/html_style.h"
#include "trial/html_table.h"

namespace fathomline::trial {
namespace {

std::string BaseName(const std::string& path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

std::string FilesOf(const TrialFigures& trial, const SystemFigures& system) {
  std::string names;
  for (const RecordingFile& file : trial.meta.files) {
    if (file.system == system.name) names += (names.empty() ? "" : ", ") + BaseName(file.file);
  }
  return names;
}

std::string TitleOf(const TrialFigures& trial) {
  if (trial.meta.title) return *trial.meta.title;
  std::string names;
  for (const SystemFigures& system : trial.systems) {
    const std::string file = FilesOf(trial, system);
    names += (names.empty() ? "" : ", ") + (file.empty() ? "system " + system.name : file);
  }
  return "Trial of " + names;
}

// Nothing that any figure of a sensor could be made of.
bool NothingUsable(const TrialFigures& trial) {
  return std::all_of(trial.systems.begin(), trial.systems.end(), [](const SystemFigures& system) {
    return system.ledger.classes.good == 0 && system.ledger.byName.empty();
  });
}

std::string ReferenceText(const SystemFigures& system) {
  const Reference& reference = system.reference;
  switch (reference.kind) {
    case ReferenceKind::Mean:
      return "the mean of its own fixes";
    case ReferenceKind::First:
      return "its first fix";
    case ReferenceKind::Given:
      return "a given position";
    case ReferenceKind::System:
      return "system " + Cell(reference.name) + ", epoch by epoch";
  }
  return {};
}

// What was compared with what, and when.
void Lede(std::string& html, const TrialFigures& trial) {
  for (const SystemFigures& system : trial.systems) {
    html += "<p class=\"lede\"><b>System " + EscapedXml(system.name) + "</b>";
    const std::string files = FilesOf(trial, system);
    if (!files.empty()) html += ", " + EscapedXml(files);
    if (system.stream) {
      html += ": stream " + EscapedXml(*system.stream) + " against " + ReferenceText(system);
    }
    if (system.ledger.firstAt && system.ledger.lastAt) {
      html += ", from <time>" + ToText(*system.ledger.firstAt) + "</time> to <time>" +
              ToText(*system.ledger.lastAt) + "</time>";
    }
    html += ".</p>\n";
  }
  if (trial.meta.note) html += "<p class=\"note\">" + EscapedXml(*trial.meta.note) + "</p>\n";
}

std::string Plural(std::size_t n, std::string_view one, std::string_view many) {
  return std::to_string(n) + " " + std::string(n == 1 ? one : many);
}

struct Verdict {
  std::string word;
  std::string cls;  // of the section
};

Verdict VerdictOf(const TrialFigures& trial) {
  const std::size_t all = trial.limits.size();
  const auto missed = static_cast<std::size_t>(
      std::count_if(trial.limits.begin(), trial.limits.end(),
                    [](const LimitFigures& limit) { return !limit.kept; }));
  if (all == 0) {
    return {NothingUsable(trial) ? "– Nothing could be judged" : "– No limit was tested", {}};
  }
  if (missed > 0) {
    return {"✘ " + std::to_string(missed) + " of " + Plural(all, "limit", "limits") +
                (missed == 1 ? " is missed" : " are missed"),
            "missed"};
  }
  if (all == 1) return {"✔ The limit is kept", "kept"};
  return {"✔ " + (all == 2 ? "Both" : "All " + std::to_string(all)) + " limits are kept", "kept"};
}

// The shortest text of a value that has been rounded before.
std::string LimitValue(const Value& value) {
  if (!value) return std::string(kNoFigure);
  std::array<char, 400> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), *value, std::chars_format::fixed);
  return {text.data(), end.ptr};
}

std::string LimitTable(const TrialFigures& trial) {
  if (trial.limits.empty()) return {};
  HtmlTable table("Limits", "limits");
  table.Heads({"Limit", "System", "Value", "Verdict"});
  for (const LimitFigures& limit : trial.limits) {
    table.Row(
        "<code>" + EscapedXml(limit.limit) + "</code>",
        {limit.system ? EscapedXml(*limit.system) : std::string("pair"), LimitValue(limit.value),
         limit.kept ? "<span class=\"kept\">✔ kept</span>"
                    : "<span class=\"missed\">✘ missed</span>"});
  }
  std::string html = std::move(table).Finish();
  if (std::any_of(trial.limits.begin(), trial.limits.end(),
                  [](const LimitFigures& limit) { return !limit.value; })) {
    html +=
        "<p class=\"under\">–: the recording has no such figure, and so does not keep its "
        "limit.</p>\n";
  }
  return html;
}

std::string GlanceTable(const TrialFigures& trial) {
  HtmlTable table("At a glance");
  table.Heads({"System", "Fixes", "Available,\nof 1", "Horizontal\nR95, m", "Height\n95%, m",
               "Heading\n95%, °", "Reference\nlatitude, longitude, °", "height, m"});
  for (const SystemFigures& system : trial.systems) {
    const FigureCells available(system.availability);
    const FigureCells horizontal(system.horizontal.reference);
    const FigureCells vertical(system.vertical.reference);
    const std::string why =
        horizontal["n"].starts_with("<i>") ? horizontal["n"] : horizontal["r95_m"];
    const std::string height = vertical["n"].starts_with("<i>") ? vertical["n"] : vertical["p95_m"];
    table.Row(EscapedXml(system.name),
              {available["fixes"], available["share"], why, height,
               system.heading.empty() ? std::string(kNoFigure)
                                      : FigureCells(system.heading.front())["p95_deg"],
               system.reference.kind == ReferenceKind::System
                   ? "system " + Cell(system.reference.name)
                   : Stacked(Cell(system.reference.latitude, decimals::kPlace),
                             Cell(system.reference.longitude, decimals::kPlace)),
               Cell(system.reference.height, decimals::kLength)});
  }
  return std::move(table).Finish();
}

// The date, with the "T", that all times of the trial have; empty if they have several.
std::string OnlyDay(const TrialFigures& trial) {
  std::string day;
  for (const SystemFigures& system : trial.systems) {
    for (const At& at : {system.ledger.firstAt, system.ledger.lastAt}) {
      if (!at) continue;
      const std::string text = ToText(*at);
      const std::string date = text.substr(0, text.find('T') + 1);
      if (day.empty()) day = date;
      if (day != date) return {};
    }
  }
  return day;
}

// The tables of a trial within one day tell their times without it.
void LeaveOut(std::string& html, const std::string& day) {
  const std::string told = day + std::string(kBehindDate);
  std::string kept;
  std::size_t from = 0;
  for (std::size_t at = html.find(told); at != std::string::npos; at = html.find(told, from)) {
    kept.append(html, from, at - from);
    from = at + told.size();
  }
  html = kept.append(html, from);
}

// The systems that are compared with themselves: "system A, system B".
std::string AboutThemselves(const TrialFigures& trial) {
  std::string names;
  for (const SystemFigures& system : trial.systems) {
    const bool self = system.reference.kind == ReferenceKind::Mean ||
                      system.reference.kind == ReferenceKind::First;
    if (!self || !system.horizontal.reference.why.empty()) continue;
    names += (names.empty() ? "system " : ", system ") + EscapedXml(system.name);
  }
  return names;
}

// What a reader has to bear in mind before any figure.
std::string Warnings(const TrialFigures& trial) {
  std::string items;
  const auto item = [&items](const std::string& text) { items += "<li>" + text + "</li>\n"; };
  for (const SystemFigures& system : trial.systems) {
    if (!system.moving) continue;
    item("System " + EscapedXml(system.name) +
         " was moving (median speed over ground above 1 kn): its figures about one " +
         (system.reference.kind == ReferenceKind::System ? "heading" : "place or one heading") +
         " are those of the voyage, not of the sensor.");
  }
  const bool any =
      std::any_of(trial.systems.begin(), trial.systems.end(),
                  [](const SystemFigures& system) { return system.horizontal.mean.why.empty(); });
  const std::string own = AboutThemselves(trial);
  if (!own.empty()) {
    item("Against its own fixes " + own +
         " shows how much it wanders, not how far it is from the "
         "truth: an error that stays does not show.");
  }
  if (any) {
    item(
        "Neighbouring samples are not independent: errors change slowly, so that a longer "
        "recording tells more than a faster one.");
  }
  if (trial.meta.unchecked) item("Lines without a checksum are used too.");
  if (trial.meta.from || trial.meta.to) {
    item("Only a part is judged: from " +
         (trial.meta.from ? EscapedXml(*trial.meta.from) : "the beginning") + " to " +
         (trial.meta.to ? EscapedXml(*trial.meta.to) : std::string("the end")) +
         ". Lines, satellites and AIS are counted as a whole.");
  }
  return items.empty() ? items : "<ul class=\"mind\">\n" + items + "</ul>\n";
}

std::string DayText(const TrialFigures& trial) {
  const std::string day = OnlyDay(trial);
  if (day.empty()) return {};
  return "<p>Times without a date are of " +
         (day[0] == '+' ? "the first day, which no sentence dates"
                        : "<time>" + day.substr(0, day.size() - 1) + "</time>") +
         ", UTC.</p>\n";
}

std::string Contents(const std::vector<HtmlSection>& sections) {
  std::string html = "<nav aria-label=\"Questions\"><ol>\n";
  for (const HtmlSection& section : sections) {
    if (section.body.empty()) continue;
    html += "<li><a href=\"#" + std::string(section.id) + "\">" + std::string(section.question) +
            "</a></li>\n";
  }
  return html + "</ol></nav>\n";
}

std::string Absent(const std::vector<HtmlSection>& sections) {
  std::string names;
  for (const HtmlSection& section : sections) {
    if (!section.body.empty() || section.absent.empty()) continue;
    names += (names.empty() ? "" : "; ") + std::string(section.absent);
  }
  if (names.empty()) return {};
  return "<p class=\"absent\">Not in what was judged: " + names + ".</p>\n";
}

std::string Files(const TrialFigures& trial) {
  std::string html = "<section id=\"files\">\n<h2>From what was this made?</h2>\n";
  if (!trial.meta.files.empty()) {
    HtmlTable table("Recordings", "words");
    table.Heads({"System", "File", "Bytes", "SHA-256"});
    for (const RecordingFile& file : trial.meta.files) {
      table.Row(EscapedXml(file.system),
                {EscapedXml(file.file), Cell(file.bytes), "<code>" + file.sha256 + "</code>"});
    }
    html += std::move(table).Finish();
  }
  html += "<p>Written by Fathomline " + EscapedXml(trial.meta.version);
  if (trial.meta.writtenAt) html += " at " + EscapedXml(*trial.meta.writtenAt);
  return html +
         ". Positions are on WGS 84, north and east in the local frame of the reference. p% "
         "figures "
         "are the smallest observed value that at least p% of the samples do not pass; they are "
         "counted, not modelled, and left out where there are too few (5 for 50% and 68%, 20 for "
         "95%, 100 for 99%). Standard deviations are with n − 1. Times are UTC as the sentences "
         "tell it; +0 is the first day of a recording without a date.</p>\n</section>\n";
}

}  // namespace

std::string HtmlFigure(const std::string& picture, const std::string& caption) {
  if (picture.empty()) return {};
  return "<figure>\n" + picture + "<figcaption>" + caption + "</figcaption>\n</figure>\n";
}

std::string SystemTitle(const TrialFigures& trial, const SystemFigures& system) {
  return trial.systems.size() > 1 ? "System " + EscapedXml(system.name) : std::string();
}

std::string SystemPrefix(const TrialFigures& trial, const SystemFigures& system) {
  return trial.systems.size() > 1 ? "System " + system.name + ": " : std::string();
}

std::string ToHtml(const TrialFigures& trial) {
  std::vector<HtmlSection> sections = PositionSections(trial);
  for (HtmlSection& section : SensorSections(trial)) sections.push_back(std::move(section));
  const std::string title = EscapedXml(TitleOf(trial));
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\" xmlns=\"http://www.w3.org/1999/xhtml\">\n<head>\n"
      "<meta charset=\"utf-8\"/>\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<title>" +
      title + "</title>\n<style>\n" + StyleSheet() +
      "</style>\n</head>\n<body>\n<main>\n<header>\n<p class=\"kicker\">Trial report</p>\n<h1>" +
      title + "</h1>\n";
  Lede(html, trial);
  html += "</header>\n";
  const Verdict verdict = VerdictOf(trial);
  html += "<section id=\"verdict\" class=\"verdict";
  if (!verdict.cls.empty()) html += " " + verdict.cls;
  html += "\" aria-label=\"Verdict\">\n<p class=\"word\">" + verdict.word + "</p>\n";
  if (NothingUsable(trial)) {
    html +=
        "<p>No line of what was read is a sentence that can be judged. What became of the lines is "
        "told below.</p>\n";
  } else if (trial.limits.empty()) {
    html += "<p>The figures stand without a judgement.</p>\n";
  }
  html += "</section>\n" + LimitTable(trial) + GlanceTable(trial) + Warnings(trial) +
          DayText(trial) + Contents(sections) + Absent(sections);
  for (const HtmlSection& section : sections) {
    if (section.body.empty()) continue;
    html += "<section id=\"" + std::string(section.id) + "\">\n<h2>" +
            std::string(section.question) + "</h2>\n" + section.body + "</section>\n";
  }
  html += Files(trial) + "</main>\n</body>\n</html>\n";
  const std::string day = OnlyDay(trial);
  if (!day.empty()) LeaveOut(html, day);
  return html;
}

}  // namespace fathomline::trial
