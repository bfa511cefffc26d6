// Raw logging: every received line of every enabled system, in a text file per system.
#pragma once

#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "base/system.h"
#include "records/records.h"

namespace fathomline {

class RawLog {
 public:
  RawLog(Records& records, FileTable& files, const Clock& clock, Dialogs& dialogs)
      : records_(records), files_(files), clock_(clock), dialogs_(dialogs) {}

  // Turns logging on or off and names the files in a box. Logs of the same minute are replaced.
  // Raises the fault of the folder or of a file; logging is off then and nothing stays open.
  void StartStopLogging();

  // Puts a line with CR LF behind it into the system's log, if it has one. A CR LF that the line
  // brings along is not doubled, unless the line is no longer than five characters. It has reached
  // the operating system when the call returns. Raises InvalidCall for a line of less than two
  // characters, and the fault of the file.
  void LogRawData(int system, std::string_view line);

 private:
  void Start();
  void Stop();
  void CloseLogs();
  std::string FileName(int system, std::string_view begun) const;
  std::string Folder() const { return records_.ProgramFolder + "log" + kPathSeparator; }

  Records& records_;
  FileTable& files_;
  const Clock& clock_;
  Dialogs& dialogs_;
  std::string line_;
};

}  // namespace fathomline
