#include "setup/recording_choice.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/numbers.h"
#include "base/system.h"
#include "base/text.h"
#include "setup/setup_values.h"

namespace fathomline {
namespace {

using enum SentenceType;

enum class MeansOf : std::uint8_t { Itself, Position, Heading };

struct Sentence {
  SentenceType type;
  MeansOf means;  // those of one kind tell the same thing, more or less of it
  std::string_view tells;
  std::string_view systemType;  // what sends it
};
// Those first that would be missed most.
constexpr auto kCandidates = std::to_array<Sentence>(
    {{GGA, MeansOf::Position, "position, height, quality", "GPS/GLONASS"},
     {GNS, MeansOf::Position, "position, height, modes", "GPS/GLONASS"},
     {RMC, MeansOf::Position, "position, speed, course, date", "GPS/GLONASS"},
     {GLL, MeansOf::Position, "position", "GPS/GLONASS"},
     {ATT, MeansOf::Heading, "heading, pitch, roll", "Gyro"},
     {HDT, MeansOf::Heading, "heading", "Gyro"},
     {ZDA, MeansOf::Itself, "date and time", "GPS/GLONASS"},
     {VTG, MeansOf::Itself, "speed and course", "GPS/GLONASS"},
     {GSV, MeansOf::Itself, "satellites in view", "GPS/GLONASS"},
     {GSA, MeansOf::Itself, "satellites used", "GPS/GLONASS"},
     {VDM, MeansOf::Itself, "AIS targets", "AIS"},
     {TTM, MeansOf::Itself, "radar targets", "ARPA Radar"},
     {VHW, MeansOf::Itself, "speed through water", "Speed Log"},
     {DBT, MeansOf::Itself, "depth", "Echosounder"},
     {ROT, MeansOf::Itself, "rate of turn", "Gyro"},
     {GST, MeansOf::Itself, "error estimates", "GPS/GLONASS"}});

constexpr std::int64_t kFarMore = 10;
constexpr std::size_t kLongestName = 40;
constexpr std::string_view kOther = "other";

const Sentence* RowOf(SentenceType type) {
  const auto* const found = std::find_if(kCandidates.begin(), kCandidates.end(),
                                         [type](const Sentence& s) { return s.type == type; });
  return found == kCandidates.end() ? nullptr : found;
}

// Another sentence that tells the same thing comes far more often.
bool IsOutnumbered(const Sentence& sentence, const RecordingContents& contents) {
  if (sentence.means == MeansOf::Itself) return false;
  return std::any_of(kCandidates.begin(), kCandidates.end(), [&](const Sentence& other) {
    return other.means == sentence.means &&
           contents.LinesOf(other.type) > kFarMore * contents.LinesOf(sentence.type);
  });
}

// Outright refusal of a sentence helps nobody.
bool StandsTheTest(const RecordingContents& contents, const SentenceSelection& sentences) {
  for (const SentenceType type : sentences.Ticked()) {
    std::int64_t refused = 0;
    for (const RecordedSentence& sentence : contents.sentences) {
      if (sentence.type == type) refused += sentence.wrong + sentence.unchecked;
    }
    if (2 * refused > contents.LinesOf(type)) return false;
  }
  return !sentences.Ticked().empty();
}

std::string NameOf(const std::string& path) {
  std::string name = WithoutQuotes(PathText(PathOf(path).stem()));
  name = FromWindows1252(ToWindows1252(name));
  return std::string(FirstCharacters(name, kLongestName));
}

}  // namespace

std::vector<SentenceType> Analysable(const RecordingContents& contents) {
  std::vector<SentenceType> types;
  for (const SentenceType type : kSentenceBoxes) {
    if (contents.LinesOf(type) > 0) types.push_back(type);
  }
  return types;
}

std::int64_t StepsBack(const RecordingContents& contents, const SentenceSelection& sentences) {
  if (sentences[RMC] || sentences[ZDA]) return 0;
  std::int64_t steps = 0;
  for (const SentenceType type : kPositionTypes) {
    if (sentences[type]) steps += contents.StepsBackOf(type);
  }
  return steps;
}

std::string_view WhatItTells(SentenceType type) {
  const Sentence* const row = RowOf(type);
  return row == nullptr ? std::string_view() : row->tells;
}

std::string Tick(SentenceSelection& selection, SentenceType type, bool ticked) {
  if (!ticked) {
    selection.Set(type, false);
    return {};
  }
  const std::vector<Exclusion> exclusions = ExclusionsOf(type, selection);
  std::string note;
  if (selection.Ticked().size() - exclusions.size() >= kUsedMessageRows) {
    return "No more than " + PlainText(kUsedMessageRows) + " sentences can be analysed.";
  }
  for (const Exclusion& row : exclusions) {
    selection.Set(row.cleared, false);
    if (!note.empty()) note += "\n";
    note += row.Message();
  }
  selection.Set(type, true);
  return note;
}

RecordingChoice ProposeFor(const RecordingContents& contents, const std::string& path) {
  RecordingChoice choice;
  choice.name = NameOf(path);
  choice.systemType = kOther;
  for (const Sentence& sentence : kCandidates) {
    if (contents.LinesOf(sentence.type) == 0 || IsOutnumbered(sentence, contents)) continue;
    if (!ExclusionsOf(sentence.type, choice.sentences).empty()) continue;
    if (choice.sentences.Ticked().size() == kUsedMessageRows) break;
    if (choice.sentences.Ticked().empty()) choice.systemType = sentence.systemType;
    choice.sentences.Set(sentence.type, true);
  }
  choice.checksumTest = StandsTheTest(contents, choice.sentences);
  if (contents.span && contents.span->dated) choice.firstDate = DateOnly(contents.span->from);
  choice.stepsBackStay = StepsBack(contents, choice.sentences) > 0;
  return choice;
}

}  // namespace fathomline
