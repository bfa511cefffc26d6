// Where faults go that reach the top of an input path.
#pragma once

#include "base/fault.h"

namespace fathomline {

class FaultLog {
 public:
  virtual ~FaultLog() = default;
  // Writes the fault down. Raises a Fault itself where that cannot be done.
  virtual void WriteErrorLog(const Fault& fault) = 0;
};

}  // namespace fathomline
