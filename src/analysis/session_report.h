// The session report: the GGA figures of one system as a text file.
#pragma once

#include <string>

#include "analysis/statistics.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "records/records.h"

namespace fathomline {

class SessionReport {
 public:
  SessionReport(const Records& records, const Statistics& statistics, FileTable& files,
                const Clock& clock, Dialogs& dialogs)
      : records_(records),
        statistics_(statistics),
        files_(files),
        clock_(clock),
        dialogs_(dialogs) {}

  // Writes the report of a system (1 to 4) into the folder "Reports" of the program folder, which
  // is made if need be, and names it in a box. An existing report of the same minute is replaced.
  // It rests on GGA alone, whatever else the system delivered. A fault is shown in a box; the file
  // then stays as far as it was written, up to the distributions where no sample was accepted.
  void Print_Report(int system);

  // Where a report printed now would be written.
  std::string ReportPath(int system) const;

 private:
  void Write(int system, int file);

  const Records& records_;
  const Statistics& statistics_;
  FileTable& files_;
  const Clock& clock_;
  Dialogs& dialogs_;
};

}  // namespace fathomline
