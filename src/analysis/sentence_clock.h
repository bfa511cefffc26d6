// The clock of each system: the date and time of its data, told by its own sentences.
//
// It keeps MessageTime, MessageDate and LastSentenceTime of the records, in UTC. Until a sentence
// has told the time these hold the present one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/clock.h"
#include "base/datetime.h"
#include "decoding/sentence_records.h"
#include "records/records.h"

namespace fathomline {

// What is known of the dates of a file before it is replayed, by who has looked through it.
struct RecordedDates {
  std::string file;               // of which it is known
  std::optional<DateTime> first;  // the date on which it begins
  bool stepsBackStay = false;     // a step back of less than twelve hours is no midnight
};

class SentenceClock {
 public:
  // At start all systems stand at the present time, and none has been told.
  SentenceClock(Records& records, const Clock& clock);

  // A replay begins: what earlier sentences told says nothing of the ones to come. Their date
  // stays, so that a recording without any is dated like the one before it, unless the date of the
  // file is known.
  void BeginReplay();
  // Holds for replays of that file by that system.
  void KnowDates(int system, RecordedDates dates) { known_[system] = std::move(dates); }

  // The steps of one sentence, in this order: Begin, the ones of its type, Finish.

  void Begin(int system);
  // The time of day of GGA, GNS and GLL, "hh:mm:ss" and anything behind it, on the date in force.
  // Raises TypeMismatch for a text that is no time; nothing changes then.
  void TakeTime(int system, std::string_view time);
  // The date of RMC, "ddmmyy" of this century, and its time, which stand as they were sent. Raises
  // TypeMismatch; a date that could be read stays in force.
  void TakeDateAndTime(int system, std::string_view date, std::string_view time);
  // The date of ZDA. It moves the date alone, unless it lies before the clock: then the clock has
  // been wrong and is set. Raises InvalidCall for a year outside 100 to 9999.
  void TakeZDA(int system, const ZDARecord& record);
  // A time before that of the sentence before it is midnight; the date moves on by a day. Neither
  // the sentence that first tells the time nor one with a date of its own steps.
  //
  // Returns whether this sentence was the first to tell the time.
  bool Finish(int system);

 private:
  // How the sentence at hand has set the time.
  enum class Told { No, Time, DateAndTime };
  struct State {
    bool told = false;
    bool first = false;  // the sentence at hand is the one that told it
    bool stepsBackStay = false;
    Told now = Told::No;
  };

  void Set(int system, DateTime time, Told how);

  Records& records_;
  const Clock& clock_;
  PerSystem<State> states_;
  PerSystem<RecordedDates> known_;
};

}  // namespace fathomline
