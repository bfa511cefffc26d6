// The error log: a text file to which the faults of the input paths are appended.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/fault_log.h"
#include "base/files.h"
#include "records/records.h"

namespace fathomline {

class ErrorLog : public FaultLog {
 public:
  // `endProgram` is called when the user does not want to go on; the program then ends without its
  // closing steps.
  ErrorLog(Records& records, FileTable& files, const Clock& clock, Dialogs& dialogs,
           std::function<void()> endProgram)
      : records_(records),
        files_(files),
        clock_(clock),
        dialogs_(dialogs),
        endProgram_(std::move(endProgram)) {}

  // One line for each fault; the folder is made when the first one arrives. At every eleventh the
  // user is asked whether to go on. While that question stands, faults are only written.
  void WriteErrorLog(const Fault& fault) override;

  // Faults written since the program began.
  int Written() const { return written_; }

 private:
  void Append(const std::string& description);
  void AskWhetherToGoOn(const std::string& description);

  Records& records_;
  FileTable& files_;
  const Clock& clock_;
  Dialogs& dialogs_;
  std::function<void()> endProgram_;
  int written_ = 0;
  bool asking_ = false;
};

}  // namespace fathomline
