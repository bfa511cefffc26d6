// Run-time faults: the one exception type of the program.
//
// A fault is something that input, a file or a device can cause: a number that does not fit its
// field, an index outside its table, a file that does not open. It is raised by the conversions
// and tables of this layer and caught exactly where a routine is said to have a handler, and at
// the entry of every event. Mistakes of our own are assertions, not faults.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace fathomline {

// The classic numbers of run-time faults. They stand in message boxes only.
enum class FaultNumber : std::int16_t {
  InvalidCall = 5,
  Overflow = 6,
  OutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileNumber = 52,
  FileNotFound = 53,
  FileAlreadyOpen = 55,
  DeviceError = 57,
  DiskFull = 61,
  PastEndOfFile = 62,
  PermissionDenied = 70,
  PathAccess = 75,
  PathNotFound = 76,
};

// The description that belongs to a number, such as "Overflow".
std::string_view Description(FaultNumber number);

class Fault : public std::exception {
 public:
  explicit Fault(FaultNumber number);
  Fault(FaultNumber number, std::string description);

  int Number() const { return static_cast<int>(number_); }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  FaultNumber number_;
  std::string description_;
};

// Throws. Out of line, so that the checks which call it stay small.
[[noreturn]] void Raise(FaultNumber number);
[[noreturn]] void Raise(FaultNumber number, std::string description);

// Runs one statement; a fault in it goes to the handler, and the caller continues behind it.
template <class Statement, class Handler>
void ResumeNext(Statement&& statement, Handler&& handler) {
  try {
    std::forward<Statement>(statement)();
  } catch (const Fault& fault) {
    std::forward<Handler>(handler)(fault);
  }
}

// The same where a fault passes without a word.
template <class Statement>
void ResumeNext(Statement&& statement) {
  ResumeNext(std::forward<Statement>(statement), [](const Fault&) {});
}

}  // namespace fathomline
