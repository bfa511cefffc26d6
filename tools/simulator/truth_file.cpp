#include "simulator/truth_file.h"

#include <nlohmann/json.hpp>
#include <string>

namespace fathomline::simulator {
namespace {

using Json = nlohmann::ordered_json;

// The members of an object, without its braces.
std::string Members(const Json& object) {
  const std::string text = object.dump();
  return text.substr(1, text.size() - 2);
}

}  // namespace

TruthFile::TruthFile(std::ostream& out, const SimulationOptions& options,
                     const SimulationTruth& truth)
    : out_(out) {
  const ReferenceTruth& reference = truth.reference;
  out_ << "{\n"
       << Members({{"scenario", options.scenario->name},
                   {"seed", options.seed},
                   {"start", FormatDateTime(options.start, "yyyy-mm-dd hh:nn:ss")},
                   {"duration", options.duration},
                   {"moored", truth.moored},
                   {"reference",
                    {{"latitude", reference.position.latitude},
                     {"longitude", reference.position.longitude},
                     {"height", reference.height},
                     {"heading", reference.heading},
                     {"pitch", reference.pitch},
                     {"roll", reference.roll}}}})
       << ",\n\"fixes\":[";
}

void TruthFile::AddFix(const FixTruth& fix) {
  out_ << (first_ ? "\n" : ",\n")
       << Json{{"seconds", fix.seconds},
               {"latitude", fix.position.latitude},
               {"longitude", fix.position.longitude},
               {"height", fix.height},
               {"north_noise", fix.northNoise},
               {"east_noise", fix.eastNoise},
               {"up_noise", fix.upNoise},
               {"quality", fix.quality},
               {"age", fix.age},
               {"station", fix.station}};
  first_ = false;
}

void TruthFile::Finish(const SimulationTruth& truth) {
  Json sentences;
  for (std::size_t i = 0; i < kSentenceKinds.size(); ++i) {
    sentences[std::string(kSentenceKinds[i].name)] = truth.sentences[i];
  }
  Json figures;
  for (std::size_t i = 0; i < kTruthFigureNames.size(); ++i) {
    const RunningFigure& figure = truth.figures[i];
    figures[std::string(kTruthFigureNames[i])] = {{"count", figure.Count()},
                                                  {"mean", figure.Mean()},
                                                  {"sdev", figure.Sdev()},
                                                  {"min", figure.Min()},
                                                  {"max", figure.Max()}};
  }
  out_ << "\n],\n"
       << Members({{"fix_count", truth.fixes},
                   {"usable_fix_count", truth.usableFixes},
                   {"sentences", sentences},
                   {"figures", figures}})
       << "\n}\n";
}

}  // namespace fathomline::simulator
