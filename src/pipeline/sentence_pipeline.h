// The gate: every line of every source passes here, once, one after the other.
#pragma once

#include <cstdint>
#include <string_view>

#include "ais/ais_decoder.h"
#include "ais/target_store.h"
#include "analysis/message_driver.h"
#include "base/dialogs.h"
#include "records/records.h"

namespace fathomline {

// Who sees the lines beside the analysis. One that does not stand is left at doing nothing.
class LineObservers {
 public:
  virtual ~LineObservers() = default;
  // Every line, its tag block included, while the system's monitor is open.
  virtual void MonitorLine(int /*system*/, std::string_view /*line*/) {}
  // Every line, while logging is on.
  virtual void LogRawData(int /*system*/, std::string_view /*line*/) {}
  // The system's count of refused sentences has grown.
  virtual void ShowChecksumErrors(int /*system*/, std::int32_t /*count*/) {}
};

class SentencePipeline {
 public:
  SentencePipeline(Records& records, AISDecoder& ais, AISStore& targets, MessageDriver& driver,
                   LineObservers& observers, Dialogs& dialogs)
      : records_(records),
        ais_(ais),
        targets_(targets),
        driver_(driver),
        observers_(observers),
        dialogs_(dialogs) {}

  // Takes one line of a system (1 to 4) through counting, monitor, log, tag block, checksum,
  // recognition, decoder and analysis. A line of no known type is dropped without a word. Raises
  // what its steps raise, and OutOfRange for a line with more than ten backslashes.
  void ProcessSentence(int system, std::string_view line);

  // The type as which a sentence, without its tag block, is handed on; None where it is dropped.
  static SentenceType TypeOf(std::string_view sentence);

  // The type that the latest line was handed on as; None where it was not.
  SentenceType HandedOn() const { return handedOn_; }

 private:
  struct Recogniser;
  static const Recogniser* Recognise(std::string_view sentence);

  template <class Record>
  void Decode(int system, std::string_view sentence);

  Records& records_;
  AISDecoder& ais_;
  AISStore& targets_;
  MessageDriver& driver_;
  LineObservers& observers_;
  Dialogs& dialogs_;
  SentenceType handedOn_ = SentenceType::None;
};

}  // namespace fathomline
