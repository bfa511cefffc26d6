// Open files and terminals of a POSIX system.
#pragma once

#include <unistd.h>
#include <utility>

namespace fathomline::simulator {

// Owns an open file or terminal.
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

}  // namespace fathomline::simulator
