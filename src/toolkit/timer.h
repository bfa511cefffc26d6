// A timer of a window.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace fathomline {

class Window;

// Ticks while it is enabled, its interval is above 0 and its window is loaded. A late tick comes
// once, however late. The interval may change within the tick; a tick never begins within another
// one of the same timer.
class Timer {
 public:
  // Milliseconds.
  Timer(Window& window, std::string_view name, int interval, bool enabled = false);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  const std::string& Name() const { return name_; }
  int Interval() const { return interval_; }
  bool Enabled() const { return enabled_; }
  // Each begins a new interval, unless nothing changes.
  void SetInterval(int milliseconds);
  void SetEnabled(bool enabled);

  std::function<void()> onTick;

 private:
  friend class Desktop;
  friend class Window;

  bool Running() const;
  void Restart();
  void Tick();
  void Reset();

  Window& window_;
  std::string name_;
  std::chrono::steady_clock::time_point due_;
  int interval_;
  int designInterval_;
  bool enabled_;
  bool designEnabled_;
  bool onStack_ = false;
};

}  // namespace fathomline
