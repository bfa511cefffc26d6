// Work that goes on beside the windows, a slice at a time.
#pragma once

#include <chrono>

namespace fathomline {

class Desktop;

// Started at the desktop, which gives it a slice in every turn until it is stopped there. A task
// whose slice is on the stack, because a message box stands inside it, gets no other; everything
// else goes on.
class Task {
 public:
  Task() = default;
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;
  // Stops it. A task does not end its own life within its slice.
  virtual ~Task();

  // Works until nothing is left to do for now or the time has come. Returns whether more is
  // waiting.
  virtual bool RunSlice(std::chrono::steady_clock::time_point until) = 0;

 private:
  friend class Desktop;

  Desktop* desktop_ = nullptr;
  bool onStack_ = false;
};

}  // namespace fathomline
