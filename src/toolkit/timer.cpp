#include "toolkit/timer.h"

#include "toolkit/desktop.h"
#include "toolkit/window.h"

namespace fathomline {

Timer::Timer(Window& window, std::string_view name, int interval, bool enabled)
    : window_(window),
      name_(name),
      interval_(interval),
      designInterval_(interval),
      enabled_(enabled),
      designEnabled_(enabled) {
  window_.timers_.push_back(this);
  window_.OwningDesktop().Add(*this);
  Restart();
}

Timer::~Timer() {
  window_.OwningDesktop().Remove(*this);
  std::erase(window_.timers_, this);
}

void Timer::SetInterval(int milliseconds) {
  if (milliseconds == interval_) return;
  interval_ = milliseconds;
  Restart();
}

void Timer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Restart();
}

bool Timer::Running() const {
  return enabled_ && interval_ > 0 && !onStack_ && window_.Loaded();
}

void Timer::Restart() {
  due_ = window_.OwningDesktop().Now() + std::chrono::milliseconds(interval_);
}

void Timer::Tick() {
  Restart();
  const OnStack guard(onStack_);
  window_.Act([this] {
    if (onTick) onTick();
  });
}

void Timer::Reset() {
  interval_ = designInterval_;
  enabled_ = designEnabled_;
  Restart();
}

}  // namespace fathomline
