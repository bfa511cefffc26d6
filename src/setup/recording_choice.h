// What to analyse of a recording, by the rules that the setup dialog has.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/datetime.h"
#include "pipeline/recording_scan.h"
#include "setup/setup_rules.h"

namespace fathomline {

struct RecordingChoice {
  SentenceSelection sentences;
  bool checksumTest = false;
  std::string name;
  std::string systemType;             // a word of kSystemTypes
  std::optional<DateTime> firstDate;  // on which the recording begins, where it tells that
  // The time goes back now and then, which is not to be taken for midnight.
  bool stepsBackStay = false;
};

// Of sentences that exclude each other the fuller one, unless the other comes more than ten times
// as often; ten at most, those first that say most. Lines with a wrong checksum are refused, unless
// that would refuse most lines of a sentence.
RecordingChoice ProposeFor(const RecordingContents& contents, const std::string& path);

// How often the time that a selection goes by steps back; 0 where a sentence of it tells the date.
std::int64_t StepsBack(const RecordingContents& contents, const SentenceSelection& sentences);

// Those that the recording has and that can be analysed, in the order of the boxes of the setup
// dialog.
std::vector<SentenceType> Analysable(const RecordingContents& contents);

// What a sentence tells, in a few words. Empty for one that cannot be analysed.
std::string_view WhatItTells(SentenceType type);

// Ticks or clears a sentence of a selection. The note says what was cleared for it, or why it
// cannot be ticked; empty where there is nothing to say.
std::string Tick(SentenceSelection& selection, SentenceType type, bool ticked);

}  // namespace fathomline
