#include "session/end_request.h"

#include <utility>

namespace fathomline {
namespace {

// All that a signal handler may touch.
volatile std::sig_atomic_t& Requested() {
  static volatile std::sig_atomic_t requested = 0;
  return requested;
}

extern "C" void NoteRequest(int signal) {
  Requested() = 1;
  std::signal(signal, SIG_DFL);
}

}  // namespace

EndRequest::EndRequest(Desktop& desktop, std::function<void()> onRequest)
    : onRequest_(std::move(onRequest)) {
  Requested() = 0;
  for (const int signal : kEndSignals) {
    if (std::signal(signal, NoteRequest) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
  desktop.Start(*this);
}

EndRequest::~EndRequest() {
  for (const int signal : kEndSignals) {
    const auto present = std::signal(signal, SIG_DFL);
    if (present != NoteRequest) std::signal(signal, present);
  }
}

bool EndRequest::RunSlice(std::chrono::steady_clock::time_point /*until*/) {
  if (Requested() != 0) {
    Requested() = 0;
    onRequest_();
  }
  return false;
}

}  // namespace fathomline
