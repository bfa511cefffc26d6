// What the replay tool writes: the trace of every line, and the counters at the end.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>

#include "session/program.h"

namespace fathomline {

// The one whose input is replayed.
inline constexpr int kReplayedSystem = 1;

// One JSON object per line: its number, the type it was handed on as, and the record it decoded to.
class TraceWriter : public LineListener {
 public:
  TraceWriter(std::ostream& out, const Program& program) : out_(out), program_(program) {}

  void LineDone() override;

 private:
  std::ostream& out_;
  const Program& program_;
  std::int32_t line_ = 0;
};

// Message boxes by title.
using BoxCounts = std::map<std::string, std::int32_t>;

// Counters, means and the statistics of every sentence and quantity of the replayed system.
void WriteCounters(std::ostream& out, const Program& program, const BoxCounts& decoderBoxes);

}  // namespace fathomline
