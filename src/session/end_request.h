// What asks the program from outside to end: the signals of the operating system.
#pragma once

#include <csignal>
#include <functional>

#include "toolkit/desktop.h"
#include "toolkit/task.h"

namespace fathomline {

// Windows has no terminal that hangs up.
inline constexpr int kEndSignals[] = {
    SIGTERM,
    SIGINT,
#ifdef SIGHUP
    SIGHUP,
#endif
};

// As long as one stands, the first of these signals runs the handler, from the event pump, even
// while a box stands; a further one ends the process as it would have without this. A signal that
// the process was started to ignore, as by nohup, stays ignored. There may be one only.
class EndRequest : public Task {
 public:
  EndRequest(Desktop& desktop, std::function<void()> onRequest);
  ~EndRequest() override;

  bool RunSlice(std::chrono::steady_clock::time_point until) override;

 private:
  std::function<void()> onRequest_;
};

}  // namespace fathomline
