// The truth as a JSON file, for checks by other programs.
#pragma once

#include <ostream>

#include "simulator/simulator.h"

namespace fathomline::simulator {

// Written as the simulation goes: a head, one line for each fix, and the figures at the end.
class TruthFile {
 public:
  TruthFile(std::ostream& out, const SimulationOptions& options, const SimulationTruth& truth);

  void AddFix(const FixTruth& fix);
  void Finish(const SimulationTruth& truth);

 private:
  std::ostream& out_;
  bool first_ = true;
};

}  // namespace fathomline::simulator
