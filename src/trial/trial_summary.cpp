#include "trial/trial_summary.h"

#include <algorithm>
#include <ostream>
#include <string_view>

#include "base/numbers.h"

namespace fathomline::trial {
namespace {

std::string Text(Value value, int decimals, std::string_view unit) {
  return value ? FigureText(*value, decimals) + std::string(unit) : "n/a";
}
std::string Text(const At& at) {
  return at ? ToText(*at) : "n/a";
}
std::string Metres(Value value) {
  return Text(value, 3, " m");
}
std::string Percent(Value share) {
  return share ? FigureText(*share * 100.0, 3) + "%" : "n/a";
}

class SummaryWriter {
 public:
  explicit SummaryWriter(std::ostream& out) : out_(out) {}

  void Line(std::string_view label, const std::string& text) {
    constexpr std::size_t kColumn = 20;
    out_ << "  " << label << std::string(kColumn - std::min(kColumn, label.size()), ' ') << text
         << '\n';
  }

  void Write(const HorizontalErrors& h, std::string_view label) {
    if (!h.why.empty()) return Line(label, std::string(h.why));
    Line(label, std::to_string(h.n) + " fixes, R50 " + Metres(h.r50) + ", R95 " + Metres(h.r95) +
                    ", largest " + Metres(h.largest) + ", bias north " + Metres(h.biasNorth) +
                    ", east " + Metres(h.biasEast));
  }
  void Write(const VerticalErrors& v, std::string_view label) {
    if (!v.why.empty()) return Line(label, std::string(v.why));
    Line(label, std::to_string(v.n) + " heights, bias " + Metres(v.bias) + ", std " +
                    Metres(v.std) + ", 95% " + Metres(v.p95) + ", largest " + Metres(v.largest));
  }
  void Write(const AngleErrors& a, std::string_view label) {
    const std::string name = a.name.empty() ? "" : a.name + ": ";
    if (!a.why.empty()) return Line(label, name + std::string(a.why));
    Line(label, name + "mean " + Text(a.mean, 3, ""), a);
  }

 private:
  void Line(std::string_view label, const std::string& begin, const AngleErrors& a) {
    Line(label, begin + ", bias " + Text(a.bias, 3, "") + ", std " + Text(a.std, 3, "") + ", 95% " +
                    Text(a.p95, 3, "") + ", largest " + Text(a.largest, 3, " deg"));
  }

  std::ostream& out_;
};

void WriteLines(SummaryWriter& lines, const LedgerFigures& ledger) {
  const LineClasses& c = ledger.classes;
  lines.Line("lines", std::to_string(ledger.lines) + ": " + std::to_string(c.good) + " good, " +
                          std::to_string(c.unreadable) + " unreadable, " +
                          std::to_string(c.unknown) + " unknown, " +
                          std::to_string(c.wrongChecksum) + " wrong checksum, " +
                          std::to_string(c.noChecksum) + " no checksum, " +
                          std::to_string(c.malformed + c.foreign + c.empty) + " no sentence");
  lines.Line("from", Text(ledger.firstAt));
  lines.Line("to", Text(ledger.lastAt));
}

void WriteClaim(SummaryWriter& lines, const Claim& claim) {
  if (!claim.why.empty()) return lines.Line("claim (GST)", std::string(claim.why));
  const auto ratio = [](const ClaimAxis& axis) {
    return axis.why.empty() ? Text(axis.rmsRatio, 3, "") : std::string(axis.why);
  };
  lines.Line("claim (GST)", "error by claim: north " + ratio(claim.north) + ", east " +
                                ratio(claim.east) + ", up " + ratio(claim.up));
}

void WriteSystem(std::ostream& out, const SystemFigures& system) {
  out << "System " << system.name << '\n';
  SummaryWriter lines(out);
  WriteLines(lines, system.ledger);
  lines.Line("stream", system.stream.value_or("none") + (system.moving ? ", moving" : ""));
  const Reference& reference = system.reference;
  lines.Line("reference", std::string(ToText(reference.kind)) + " " +
                              (reference.name ? *reference.name
                                              : Text(reference.latitude, 7, "") + " " +
                                                    Text(reference.longitude, 7, "") + " " +
                                                    Metres(reference.height)));
  const Availability& available = system.availability;
  lines.Line("fixes", !available.why.empty()
                          ? std::string(available.why)
                          : Percent(available.share) + " of the expected, " +
                                std::to_string(available.gaps.n) + " gaps, longest " +
                                Text(available.gaps.longest, 1, " s"));
  lines.Write(system.horizontal.reference, "about the reference");
  lines.Write(system.horizontal.mean, "about the mean");
  lines.Write(system.vertical.reference, "height");
  for (const QualityFigures& quality : system.byQuality) {
    lines.Line("quality " + std::to_string(quality.quality),
               Percent(quality.share) + ", R95 " + Metres(quality.horizontal.reference.r95));
  }
  WriteClaim(lines, system.gst);
  for (const AngleErrors& angle : system.heading) lines.Write(angle, "heading");
  for (const AngleErrors& angle : system.pitch) lines.Write(angle, "pitch");
  for (const AngleErrors& angle : system.roll) lines.Write(angle, "roll");
  for (const ConstellationFigures& c : system.satellites.constellations) {
    lines.Line(c.name,
               Text(c.inView.mean, 1, " in view, ") +
                   (c.inUse.why.empty() ? Text(c.inUse.mean, 1, " in use") : "use not sent"));
  }
  if (system.ais.why.empty()) {
    lines.Line("AIS", std::to_string(system.ais.messages) + " messages, " +
                          std::to_string(system.ais.incomplete) + " incomplete");
  }
}

}  // namespace

std::string LimitText(const LimitFigures& limit) {
  std::string text = limit.kept ? "kept: " : "missed: ";
  if (limit.system) text += *limit.system + ": ";
  text += limit.limit;
  return text + (limit.value ? ", is " + ExactText(*limit.value) : ", which is not there");
}

void WriteSummary(const TrialFigures& figures, std::ostream& out) {
  for (const SystemFigures& system : figures.systems) WriteSystem(out, system);
  for (const PairFigures& pair : figures.pairs) {
    out << "Pair " << pair.name << '\n';
    SummaryWriter lines(out);
    lines.Write(pair.horizontal, "horizontal");
    lines.Write(pair.vertical, "height");
    lines.Write(pair.heading, "heading");
  }
  for (const LimitFigures& limit : figures.limits) out << LimitText(limit) << '\n';
}

}  // namespace fathomline::trial
