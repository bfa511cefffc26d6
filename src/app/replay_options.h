// The command line of the replay tool.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "base/datetime.h"
#include "records/records.h"

namespace fathomline {

struct ReplayOptions {
  std::string recording;
  std::optional<std::string> setup;
  std::optional<std::vector<SentenceType>> messages;
  std::optional<std::string> name;
  bool checksum = false;
  bool binaryStandardIALA = false;
  std::optional<std::int16_t> referenceUsed;
  std::optional<ReferenceSetup> reference;
  std::optional<float> outlier;
  std::optional<std::string> sessionInfo;
  std::optional<bool> dms;
  std::optional<std::int16_t> decimals;
  std::optional<DateTime> now;
  std::optional<std::string> programFolder;
  bool report = false;
  std::optional<std::string> windows;
  std::optional<std::string> counters;
  std::optional<std::string> trace;
  bool time = false;
};

// Fills the options from the arguments. Returns the exit status where there is nothing to be
// replayed: help or version has been told on `out`, or what is wrong in one line on `err`.
std::optional<int> ReadReplayOptions(const std::vector<std::string>& arguments,
                                     ReplayOptions& options, std::ostream& out, std::ostream& err);

}  // namespace fathomline
