#include "sources/raw_log.h"

#include <utility>

namespace fathomline {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
// A line up to this length keeps its own line ending.
constexpr std::size_t kLongestKeptWhole = 5;

}  // namespace

void RawLog::StartStopLogging() {
  records_.LoggingOn = !records_.LoggingOn;
  if (records_.LoggingOn) {
    try {
      Start();
    } catch (const Fault& fault) {
      CloseLogs();
      records_.LoggingOn = false;
      // The fault goes on to the error log; whoever logs should not learn of it there alone.
      dialogs_.Ask(
          {.text = "Logging not started. " + fault.Description(), .icon = BoxIcon::Exclamation});
      throw;
    }
  } else {
    Stop();
  }
}

std::string RawLog::FileName(int system, std::string_view begun) const {
  return std::string(begun) + "-" + records_.FilePartOf(system) + ".log";
}

void RawLog::Start() {
  if (!FolderExists(Folder())) MakeFolder(Folder());
  const std::string begun = FormatDateTime(clock_.NowLocal(), "yyyymmdd-hhnn");
  std::string list;
  for (int system = 1; system <= kSystems; ++system) {
    if (!records_.CommSetups[system].Enabled) continue;
    const int number = files_.FreeFile();
    std::string& name = records_.LogFileName[system];
    name = FileName(system, begun);
    files_.OpenForOutput(number, Folder() + name);
    records_.LogFileNumber[system] = static_cast<std::int16_t>(number);
    if (!list.empty()) list += kLineEnd;
    list += name;
  }
  dialogs_.Ask({.text = "Logging started. Data will be stored in file " + Folder() +
                        std::string(kLineEnd) + list,
                .icon = BoxIcon::Information});
}

void RawLog::Stop() {
  std::string list;
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.LogFileNumber[system] == 0) continue;
    if (!list.empty()) list += kLineEnd;
    list += records_.LogFileName[system];
  }
  CloseLogs();
  dialogs_.Ask(
      {.text = "Logging stopped. Data stored in file " + Folder() + std::string(kLineEnd) + list,
       .icon = BoxIcon::Information});
}

void RawLog::CloseLogs() {
  for (std::int16_t& number : records_.LogFileNumber) {
    files_.Close(std::exchange(number, std::int16_t{0}));  // nothing where it is not open
  }
}

void RawLog::LogRawData(int system, std::string_view line) {
  const int number = records_.LogFileNumber[system];
  if (number == 0) return;
  if (line.size() < kLineEnd.size()) Raise(FaultNumber::InvalidCall);
  if (line.size() > kLongestKeptWhole && line.ends_with(kLineEnd)) {
    line.remove_suffix(kLineEnd.size());
  }
  line_.assign(line).append(kLineEnd);
  files_.Write(number, line_);
}

}  // namespace fathomline
