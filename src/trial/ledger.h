// Who said what: every line of a recording in one class, every sentence under the name of its
// talker and type.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "trial/percent_figures.h"
#include "trial/trial_clock.h"
#include "trial/trial_figures.h"
#include "trial/trial_reader.h"

namespace fathomline::trial {

class Ledger {
 public:
  // The place of a name in NameOf, by order of appearance.
  using Name = std::uint32_t;

  // A line of any class.
  void TakeLine(const Sentence& sentence);
  // Whether the name of a sentence that is used is new. Gives its place.
  Name NameFor(const Sentence& sentence);
  // A sentence that is used, in its epoch.
  void TakeSentence(Name name, const Sentence& sentence, Epoch epoch);

  const std::string& NameOf(Name name) const { return names_[name].name; }

  LedgerFigures Figures(const TrialClock& clock) const;
  // The spans in which each name was heard, for the picture.
  std::vector<NameSpans> Spans(const TrialClock& clock) const;
  // Of what is kept for each sentence.
  std::size_t Bytes() const;

 private:
  struct NameState {
    std::string name;
    SentenceType type{};
    Count n = 0;
    Count withoutTime = 0;
    // A run of sentences in one epoch is kept once.
    std::vector<Epoch> epochs;
    std::array<Count, Sentence::kMostSlots> unreadable{};
  };

  Times TimesOf(const NameState& state, const TrialClock& clock) const;
  NameLedger FiguresOf(const NameState& state, const TrialClock& clock) const;

  std::array<Count, kLineClasses> classes_{};
  Count tooLong_ = 0;
  std::vector<NameState> names_;
  std::unordered_map<std::uint64_t, Name> places_;
  std::map<std::string, Count, std::less<>> unknown_;
};

// Whether sentences of the type tell the time of day.
bool TellsTime(SentenceType type);

}  // namespace fathomline::trial
