#include <atomic>
#include <csignal>

#include "simulator/stop_signal.h"

namespace fathomline::simulator {
namespace {

// All that a handler may touch.
std::atomic<bool>& Flag() {
  static std::atomic<bool> flag = false;
  return flag;
}

// Closing the console, or Ctrl+Break in it, comes as the second.
constexpr int kSignals[] = {SIGINT, SIGBREAK, SIGTERM};

// The system forgets its handler whenever it calls it.
void Take(int signal) {
  std::signal(signal, Take);
  Flag() = true;
}

}  // namespace

struct StopSignal::State {};

StopSignal::StopSignal() {
  for (const int signal : kSignals) std::signal(signal, Take);
}

StopSignal::~StopSignal() {
  for (const int signal : kSignals) std::signal(signal, SIG_DFL);
  Taken();
}

void StopSignal::Watch(std::vector<pollfd>& /*watched*/) const {}

bool StopSignal::Taken() {
  return Flag().exchange(false);
}

}  // namespace fathomline::simulator
