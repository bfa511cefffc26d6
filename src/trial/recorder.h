// What is kept of one system while its lines come in: in one pass, 12 to 20 bytes a sample.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "trial/ais_figures.h"
#include "trial/ledger.h"
#include "trial/samples.h"
#include "trial/satellite_figures.h"
#include "trial/trial_clock.h"
#include "trial/trial_reader.h"

namespace fathomline::trial {

class SystemRecorder {
 public:
  // Whether lines without a checksum are used too.
  explicit SystemRecorder(bool unchecked = false) : unchecked_(unchecked), reader_(unchecked) {}

  // A line as it came, with or without its end.
  void TakeLine(std::string_view line);
  void Clear() { *this = SystemRecorder(unchecked_); }

  const TrialClock& Clock() const { return clock_; }
  const Ledger& Lines() const { return ledger_; }
  const Samples& Columns() const { return samples_; }
  const SatelliteRecorder& Satellites() const { return satellites_; }
  const AisRecorder& Ais() const { return ais_; }

  // Of the samples kept so far.
  std::size_t Bytes() const;

 private:
  void TellTime(const Sentence& sentence);

  bool unchecked_;
  TrialReader reader_;
  TrialClock clock_;
  Ledger ledger_;
  Samples samples_;
  SatelliteRecorder satellites_;
  AisRecorder ais_;
};

// Cuts the bytes of a recording into lines, which end with LF.
class LineCutter {
 public:
  // Longer lines are cut there, so that no file can fill the memory.
  static constexpr std::size_t kLongestLine = std::size_t{16} * 1024 * 1024;

  explicit LineCutter(SystemRecorder& recorder) : recorder_(recorder) {}
  void TakeBytes(std::string_view bytes);
  // A last line may have no end.
  void End();

 private:
  SystemRecorder& recorder_;
  std::string begun_;
};

}  // namespace fathomline::trial
