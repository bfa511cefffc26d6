#include "windows/why_nothing.h"

#include <algorithm>
#include <vector>

#include "base/numbers.h"

namespace fathomline {
namespace {

// Of a live source; fewer may all be of one kind.
constexpr std::int64_t kEnoughLines = 50;
constexpr std::size_t kMostNamed = 6;

std::string TitleOf(const Records& records, int system) {
  std::string title = "system " + PlainText(std::int32_t{system});
  const std::string& name = records.CommSetups[system].Name;
  return name.empty() ? title : title + " (" + name + ")";
}

std::string Ticked(const CommSetup& setup) {
  std::string words;
  for (const AnalyseFlag& row : kAnalyseFlags) {
    if (setup.*row.flag) words += (words.empty() ? "" : ", ") + ToText(row.type);
  }
  return words;
}

// Whether the gate may have taken sentences of this address as one that is analysed. The type of a
// proprietary one stands behind its address, so that the doubt is in its favour.
bool MayBeAnalysed(const CommSetup& setup, const std::string& address) {
  if (address.starts_with('P')) return setup.AnalyseATT;
  if (address.size() >= 5 && setup.Analyses(SentenceTypeOf(address.substr(2, 3)))) return true;
  return setup.AnalyseGSV && address.size() >= 6 && address.substr(3, 3) == "GSV";
}

std::string MostFrequent(std::vector<SourceActivity::Sentence> sentences) {
  std::stable_sort(sentences.begin(), sentences.end(),
                   [](const auto& a, const auto& b) { return a.lines > b.lines; });
  std::string text;
  for (std::size_t i = 0; i < std::min(sentences.size(), kMostNamed); ++i) {
    if (i > 0) text += ", ";
    text += sentences[i].address.Text() + " " + std::to_string(sentences[i].lines);
  }
  if (sentences.size() > kMostNamed) text += ", ...";
  return text;
}

WhyNothing OfWhatCame(const Records& records, const SourceActivity& activity, int system,
                      std::int32_t checksumErrors, SourceActivity::Time now) {
  using Place = WhyNothing::Place;
  const CommSetup& setup = records.CommSetups[system];
  const std::int64_t lines = activity.Look(system, now).lines;
  const bool judged =
      records.Offline() ? !records.OfflineRunning || records.OfflinePaused : lines >= kEnoughLines;
  if (lines == 0 || !judged) return {};
  const std::string all = std::to_string(lines) + (lines == 1 ? " line" : " lines");
  if (records.ChecksumTest[system] && checksumErrors >= lines) {
    return {"All " + all + " of " + TitleOf(records, system) + " failed the checksum test.",
            Place::Messages, system};
  }
  const std::vector<SourceActivity::Sentence> sentences = activity.Sentences(system, now);
  for (const auto& sentence : sentences) {
    if (MayBeAnalysed(setup, sentence.address.Text())) return {};
  }
  std::string text = "Nothing of what is ticked for " + TitleOf(records, system) +
                     " has occurred in " + all + ". Ticked: " + Ticked(setup) + ". ";
  text += sentences.empty() ? "There is no sentence in them."
                            : "There are: " + MostFrequent(sentences) + ".";
  return {text, Place::Messages, system};
}

}  // namespace

std::string WhyNothing::Button() const {
  return place == Place::General ? "Set &Up..." : "&NMEA Messages...";
}

WhyNothing WhyNothingShows(const Records& records, const SourceActivity& activity,
                           const PerSystem<std::int32_t>& checksumErrors,
                           SourceActivity::Time now) {
  bool enabled = false;
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records.CommSetups[system];
    if (!setup.Enabled) continue;
    enabled = true;
    if (Ticked(setup).empty()) {
      return {"No sentence is ticked for " + TitleOf(records, system) + ".",
              WhyNothing::Place::Messages, system};
    }
    WhyNothing why = OfWhatCame(records, activity, system, checksumErrors[system], now);
    if (!why.text.empty()) return why;
  }
  if (!enabled) return {"No system is enabled.", WhyNothing::Place::General, 1};
  return {};
}

}  // namespace fathomline
