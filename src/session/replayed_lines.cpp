#include "session/replayed_lines.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/fault.h"
#include "base/system.h"
#include "trial/recorder.h"

namespace fathomline {
namespace {

// Reading the clock costs as much as some lines do, looking at the memory as much as many.
constexpr std::int64_t kLinesPerClockReading = 256;
constexpr std::int64_t kLinesPerLookAtTheMemory = 0x10000;

}  // namespace

void ReplayedLines::Begin(const std::string& path) {
  std::error_code ignored;
  notes_ = std::filesystem::is_regular_file(PathOf(path), ignored);
  if (notes_) stretches_.push_back({path});
}

void ReplayedLines::Forget(bool goesOn) {
  if (!goesOn || !notes_) {
    stretches_.clear();
    notes_ = false;
    return;
  }
  stretches_.erase(stretches_.begin(), stretches_.end() - 1);
  RecordingStretch& now = stretches_.front();
  now.before += std::exchange(now.lines, 0);
}

bool ReplayedLines::Empty() const {
  return std::all_of(stretches_.begin(), stretches_.end(),
                     [](const RecordingStretch& stretch) { return stretch.lines == 0; });
}

SecondReading::SecondReading(const ReplayedLines& lines, bool unchecked, std::size_t mostBytes)
    : mostBytes_(mostBytes), recorder_(std::make_unique<trial::SystemRecorder>(unchecked)) {
  for (const RecordingStretch& stretch : lines.Stretches()) {
    if (stretch.lines == 0) continue;
    stretches_.push_back(stretch);
    wanted_ += stretch.lines;
  }
}

SecondReading::~SecondReading() = default;

bool SecondReading::Continue(std::chrono::steady_clock::time_point until) {
  while (stretch_ < stretches_.size() && !full_) {
    if (inFile_ % kLinesPerClockReading == 0 && std::chrono::steady_clock::now() >= until) {
      return true;
    }
    TakeLine();
  }
  return false;
}

void SecondReading::TakeLine() {
  const RecordingStretch& stretch = stretches_[stretch_];
  if (!file_) file_ = std::make_unique<LineReader>(stretch.path);
  const std::string_view line = file_->Next();
  if (inFile_++ < stretch.before) return;
  recorder_->TakeLine(line);
  if (++taken_ % kLinesPerLookAtTheMemory == 0) full_ = recorder_->Bytes() > mostBytes_;
  if (inFile_ < stretch.before + stretch.lines) return;
  file_.reset();
  inFile_ = 0;
  ++stretch_;
}

double SecondReading::Share() const {
  return wanted_ == 0 ? 1.0 : static_cast<double>(taken_) / static_cast<double>(wanted_);
}

std::unique_ptr<trial::SystemRecorder> SecondReading::Result() {
  return std::move(recorder_);
}

}  // namespace fathomline
