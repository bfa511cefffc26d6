#include "base/fault.h"

namespace fathomline {

std::string_view Description(FaultNumber number) {
  switch (number) {
    case FaultNumber::InvalidCall:
      return "Invalid procedure call or argument";
    case FaultNumber::Overflow:
      return "Overflow";
    case FaultNumber::OutOfRange:
      return "Subscript out of range";
    case FaultNumber::DivisionByZero:
      return "Division by zero";
    case FaultNumber::TypeMismatch:
      return "Type mismatch";
    case FaultNumber::BadFileNumber:
      return "Bad file name or number";
    case FaultNumber::FileNotFound:
      return "File not found";
    case FaultNumber::FileAlreadyOpen:
      return "File already open";
    case FaultNumber::DeviceError:
      return "Device I/O error";
    case FaultNumber::DiskFull:
      return "Disk full";
    case FaultNumber::PastEndOfFile:
      return "Input past end of file";
    case FaultNumber::PermissionDenied:
      return "Permission denied";
    case FaultNumber::PathAccess:
      return "Path/File access error";
    case FaultNumber::PathNotFound:
      return "Path not found";
  }
  return "Application-defined or object-defined error";
}

Fault::Fault(FaultNumber number) : number_(number), description_(fathomline::Description(number)) {}

Fault::Fault(FaultNumber number, std::string description)
    : number_(number), description_(std::move(description)) {}

void Raise(FaultNumber number) {
  throw Fault(number);
}

void Raise(FaultNumber number, std::string description) {
  throw Fault(number, std::move(description));
}

}  // namespace fathomline
