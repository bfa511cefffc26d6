// SIGINT and SIGTERM, which end a live simulation, taken instead of ending the process. One of
// these can take the process's signals at a time.
#pragma once

#include <memory>
#include <vector>

#include "simulator/network.h"

namespace fathomline::simulator {

class StopSignal {
 public:
  StopSignal();
  // A signal that has been taken does not end the process behind this either.
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  // Adds what is to be waited for, where the system has such a thing.
  void Watch(std::vector<pollfd>& watched) const;
  // Whether one has come since the last call.
  bool Taken();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace fathomline::simulator
