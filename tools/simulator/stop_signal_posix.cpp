#include <signal.h>
#include <sys/signalfd.h>

#include "simulator/file_descriptor.h"
#include "simulator/stop_signal.h"

namespace fathomline::simulator {

struct StopSignal::State {
  sigset_t maskBefore{};
  FileDescriptor signals;
};

StopSignal::StopSignal() : state_(std::make_unique<State>()) {
  sigset_t ending;
  ::sigemptyset(&ending);
  ::sigaddset(&ending, SIGINT);
  ::sigaddset(&ending, SIGTERM);
  ::sigprocmask(SIG_BLOCK, &ending, &state_->maskBefore);
  state_->signals = FileDescriptor(::signalfd(-1, &ending, SFD_NONBLOCK | SFD_CLOEXEC));
}

StopSignal::~StopSignal() {
  while (Taken()) {
  }
  ::sigprocmask(SIG_SETMASK, &state_->maskBefore, nullptr);
}

void StopSignal::Watch(std::vector<pollfd>& watched) const {
  watched.push_back({state_->signals.Get(), POLLIN, 0});
}

bool StopSignal::Taken() {
  signalfd_siginfo signal;
  return ::read(state_->signals.Get(), &signal, sizeof signal) > 0;
}

}  // namespace fathomline::simulator
