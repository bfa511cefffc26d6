// Open files, sockets and terminals of the operating system.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "base/fault.h"

namespace fathomline::simulator {

// Owns an open file, socket or terminal.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  bool Valid() const { return number_ >= 0; }
  int Get() const { return number_; }

 private:
  int number_ = -1;
};

// "cannot listen on 127.0.0.1:80: Permission denied"
[[noreturn]] inline void RaiseSystemFault(std::string_view action, std::string_view object,
                                          int error = errno) {
  std::string text = "cannot ";
  text.append(action).append(" ").append(object).append(": ");
  Raise(FaultNumber::DeviceError, text + std::generic_category().message(error));
}

}  // namespace fathomline::simulator
