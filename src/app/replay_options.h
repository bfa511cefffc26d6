// The command line of the replay tool.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
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
  bool help = false;
  bool version = false;
};

// A command line that cannot be carried out; the text says why, in one line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Raises UsageError.
ReplayOptions ParseReplayOptions(const std::vector<std::string>& arguments);

std::string ReplayHelp();

}  // namespace fathomline
