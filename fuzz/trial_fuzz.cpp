// Any bytes as two recordings: their figures add up, what is written of them is JSON, and their
// page is drawn with numbers only.
//
// The first byte says whether lines without a checksum are used, what the reference is, and in
// which blocks the bytes come. A line that ends with "*" gets its checksum; a NUL begins the second
// recording.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "decoding/checksum.h"
#include "trial/limits.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_html.h"
#include "trial/trial_json.h"

namespace {

using namespace fathomline;
using namespace fathomline::trial;

void Require(bool holds) {
  if (!holds) std::abort();
}

std::string Recording(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string_view line = bytes.substr(0, end);
    text += line;
    if (line.ends_with('*')) text += std::string_view(ComputeChecksum(line));
    text += '\n';
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return text;
}

void Record(SystemRecorder& recorder, std::string_view bytes, std::size_t block) {
  LineCutter cutter(recorder);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(block, bytes.size()))) {
    cutter.TakeBytes(bytes.substr(0, block));
  }
  cutter.End();
}

void Check(const SystemFigures& system) {
  const LedgerFigures& ledger = system.ledger;
  const LineClasses& c = ledger.classes;
  Require(ledger.lines == c.good + c.unreadable + c.unknown + c.wrongChecksum + c.noChecksum +
                              c.malformed + c.foreign + c.empty);
  Count named = 0;
  for (const NameLedger& name : ledger.byName) {
    named += name.n;
    Require(name.epochs <= name.n - name.withoutTime);
  }
  Require(named >= c.good + c.unreadable && named <= c.good + c.unreadable + c.noChecksum);
  const Availability& available = system.availability;
  if (available.why.empty()) {
    Require(available.fixes <= available.epochs);
    Require(!available.share || (*available.share >= 0.0 && *available.share <= 1.0));
  }
  for (const SatelliteFigures& satellite : system.satellites.satellites) {
    Require(satellite.n > 0 && *satellite.inViewShare <= 1.0);
  }
  Require(system.ais.ownPosition.n <= system.ais.ownPosition.of);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const unsigned control = data[0];
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t middle = std::min(bytes.find('\0'), bytes.size());
  SystemRecorder first((control & 1U) != 0);
  SystemRecorder second((control & 1U) != 0);
  Record(first, Recording(bytes.substr(0, middle)), (control >> 4) + 1);
  Record(second, Recording(bytes.substr(std::min(middle + 1, bytes.size()))), 1000);

  TrialOptions options;
  options.reference = static_cast<ReferenceKind>(control >> 1 & 3U);
  options.given = {1.0, 2.0, std::numeric_limits<double>::quiet_NaN()};
  options.referenceSystem = "B";
  if ((control & 8U) != 0) options.from = TimeBound{TimeBound::Of::FirstDay, 36'000'000};
  TrialFigures figures = WorkOut({{.name = "A", .recorder = &first, .stream = {}},
                                  {.name = "B", .recorder = &second, .stream = {}}},
                                 options);
  for (const SystemFigures& system : figures.systems) Check(system);
  JudgeLimits(figures, {ReadLimit("availability.share>=0.5")});
  Require(nlohmann::json::accept(JsonText(figures)));
  const std::string page = ToHtml(figures);
  Require(page.ends_with("</html>\n"));
  // The last is a length that is no number.
  for (const std::string_view text : {">nan<", ">inf<", "922337203685477580"}) {
    Require(page.find(text) == std::string::npos);
  }
  return 0;
}
