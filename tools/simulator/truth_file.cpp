#include "simulator/truth_file.h"

#include <string>
#include <string_view>

#include "base/numbers.h"

namespace fathomline::simulator {
namespace {

struct Member {
  std::string_view name;
  double value;
};

// Members of an object, without its braces.
std::string Members(std::initializer_list<Member> members) {
  std::string text;
  for (const Member& member : members) {
    if (!text.empty()) text += ", ";
    text.append("\"").append(member.name).append("\": ").append(ExactText(member.value));
  }
  return text;
}

}  // namespace

TruthFile::TruthFile(std::ostream& out, const SimulationOptions& options,
                     const SimulationTruth& truth)
    : out_(out) {
  const ReferenceTruth& reference = truth.reference;
  out_ << "{\n\"scenario\": \"" << options.scenario->name
       << "\",\n\"seed\": " << std::to_string(options.seed) << ",\n\"start\": \""
       << FormatDateTime(options.start, "yyyy-mm-dd hh:nn:ss") << "\",\n"
       << Members({{"duration", options.duration}})
       << ",\n\"moored\": " << (truth.moored ? "true" : "false") << ",\n\"reference\": {"
       << Members({{"latitude", reference.position.latitude},
                   {"longitude", reference.position.longitude},
                   {"height", reference.height},
                   {"heading", reference.heading},
                   {"pitch", reference.pitch},
                   {"roll", reference.roll}})
       << "},\n\"fixes\": [";
}

void TruthFile::AddFix(const FixTruth& fix) {
  out_ << (first_ ? "\n{" : ",\n{")
       << Members({{"seconds", fix.seconds},
                   {"latitude", fix.position.latitude},
                   {"longitude", fix.position.longitude},
                   {"height", fix.height},
                   {"north_noise", fix.northNoise},
                   {"east_noise", fix.eastNoise},
                   {"up_noise", fix.upNoise},
                   {"quality", static_cast<double>(fix.quality)},
                   {"age", fix.age},
                   {"station", static_cast<double>(fix.station)}})
       << '}';
  first_ = false;
}

void TruthFile::Finish(const SimulationTruth& truth) {
  out_ << "\n],\n\"fix_count\": " << std::to_string(truth.fixes)
       << ",\n\"usable_fix_count\": " << std::to_string(truth.usableFixes) << ",\n\"sentences\": {";
  const char* separator = "";
  for (std::size_t i = 0; i < kSentenceKinds.size(); ++i) {
    out_ << separator << '"' << kSentenceKinds[i].name
         << "\": " << std::to_string(truth.sentences[i]);
    separator = ", ";
  }
  out_ << "},\n\"figures\": {";
  separator = "\n";
  for (std::size_t i = 0; i < kTruthFigureNames.size(); ++i) {
    const RunningFigure& figure = truth.figures[i];
    out_ << separator << '"' << kTruthFigureNames[i] << "\": {"
         << Members({{"count", static_cast<double>(figure.Count())},
                     {"mean", figure.Mean()},
                     {"sdev", figure.Sdev()},
                     {"min", figure.Min()},
                     {"max", figure.Max()}})
         << '}';
    separator = ",\n";
  }
  out_ << "\n}\n}\n";
}

}  // namespace fathomline::simulator
