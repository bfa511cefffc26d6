// What a replay has brought since the latest reset. A recording that can be read again is its own
// memory: only which of its lines they were is kept, until somebody asks for what they say.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/files.h"

namespace fathomline {

namespace trial {
class SystemRecorder;
}

// Lines of a recording that follow each other.
struct RecordingStretch {
  std::string path;
  std::int64_t before = 0;  // lines of the recording in front of them
  std::int64_t lines = 0;
};

class ReplayedLines {
 public:
  // A replay begins at the first line of a file. Of one that cannot be read again, such as a pipe,
  // nothing is noted.
  void Begin(const std::string& path);
  // Whether the lines of the latest replay are noted here.
  bool Notes() const { return notes_; }
  void NoteLine() { ++stretches_.back().lines; }
  // What has been noted counts no more. A replay that goes on is followed from where it is.
  void Forget(bool goesOn);

  bool Empty() const;
  const std::vector<RecordingStretch>& Stretches() const { return stretches_; }

 private:
  bool notes_ = false;
  std::vector<RecordingStretch> stretches_;
};

// Reads them again, a slice at a time.
class SecondReading {
 public:
  // Whether lines without a checksum are used too. Beyond `mostBytes` of samples no more are taken.
  SecondReading(const ReplayedLines& lines, bool unchecked, std::size_t mostBytes);
  ~SecondReading();

  // Reads on until the time has come. Returns whether there is more. Raises the system's fault, and
  // PastEndOfFile where a recording has become shorter.
  bool Continue(std::chrono::steady_clock::time_point until);
  // Of the lines, 0 to 1.
  double Share() const;
  bool Empty() const { return wanted_ == 0; }
  bool Full() const { return full_; }
  // What the lines say; once.
  std::unique_ptr<trial::SystemRecorder> Result();

 private:
  void TakeLine();

  std::vector<RecordingStretch> stretches_;
  std::size_t mostBytes_;
  std::unique_ptr<trial::SystemRecorder> recorder_;
  std::unique_ptr<LineReader> file_;
  std::size_t stretch_ = 0;  // that is being read
  std::int64_t inFile_ = 0;  // lines taken of it, those in front included
  std::int64_t taken_ = 0;   // of all
  std::int64_t wanted_ = 0;
  bool full_ = false;
};

}  // namespace fathomline
