// The program: the engine, its windows and the session that works on both, plugged together.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/clock.h"
#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/running_session.h"
#include "session/windows.h"
#include "toolkit/desktop.h"
#include "toolkit/links.h"

namespace fathomline {

// What the program finds around it. All of it outlives the program.
struct Surroundings {
  Face& face;
  const Clock& clock;
  SettingsStore& settings;
  // Ends the process at once, where the user does not want to go on after a fault.
  std::function<void()> endProcess;
  // Where live data come from; none: nothing ever arrives.
  Links* links = nullptr;
};

// Called behind each line that has gone through the gate, whatever became of it.
class LineListener {
 public:
  virtual ~LineListener() = default;
  virtual void LineDone() = 0;
};

class Program {
 public:
  explicit Program(const Surroundings& surroundings);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The folder of the program's files, made with all above it if need be. Raises the system's
  // fault where that cannot be done.
  void UseProgramFolder(std::string folder);

  void Listen(LineListener* listener);

 private:
  class Views;
  class Lines;
  std::unique_ptr<Views> views_;
  std::unique_ptr<Lines> lines_;
  std::unique_ptr<Links> noLinks_;
  Links& links_;
  bool logFailureTold_ = false;

  void HandleFault(const Fault& fault, const Window* window);

 public:
  Desktop desktop;
  Engine engine;
  Windows windows;
  RunningSession session;
};

}  // namespace fathomline
