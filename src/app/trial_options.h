// The command line of the trial.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "trial/limits.h"
#include "trial/trial.h"

namespace fathomline {

struct TrialRecording {
  std::string system;
  std::string path;
  std::optional<std::string> stream;
};

struct TrialCommand {
  std::vector<TrialRecording> recordings;  // one to four, each with a name of its own
  trial::TrialOptions options;
  bool unchecked = false;
  std::vector<trial::Limit> limits;
  std::optional<std::string> html, json, csv;
  bool quiet = false;
  // What is to be shown instead: the help or the version.
  std::optional<std::string> shown;

  bool WritesSomething() const { return html || json || csv; }
};

// A command line that cannot be carried out; the text says why, in one line.
class TrialUsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads the files of limits too. Raises TrialUsageError.
TrialCommand ParseTrialCommand(const std::vector<std::string>& arguments);

std::string TrialHelp();

}  // namespace fathomline
