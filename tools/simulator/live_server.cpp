#include "simulator/live_server.h"

#include <algorithm>
#include <utility>

namespace fathomline::simulator {
namespace {

using std::chrono::milliseconds;

// A terminal that nobody has open does not tell when somebody opens it.
constexpr milliseconds kLookInterval{50};
// What a terminal holds may still be on its way from the driver to the reader when none is seen, so
// this is looked at several times.
constexpr milliseconds kDrainInterval{5};
constexpr int kDrainLooks = 5;
// At full speed peers are served in between.
constexpr int kMostEpochsInTurn = 256;

}  // namespace

LiveServer::LiveServer(std::vector<std::unique_ptr<Outlet>> outlets, double speed, Source source)
    : outlets_(std::move(outlets)), speed_(speed), source_(std::move(source)) {
  pending_ = source_(epoch_);
}

bool LiveServer::AnyPeer() const {
  return std::any_of(outlets_.begin(), outlets_.end(),
                     [](const auto& outlet) { return outlet->HasPeer(); });
}

bool LiveServer::Held() const {
  return !AnyPeer() || std::any_of(outlets_.begin(), outlets_.end(), [](const auto& outlet) {
    return outlet->Backlog() >= kHighBacklog;
  });
}

void LiveServer::SendDue() {
  for (int count = 0; pending_ && count < kMostEpochsInTurn; ++count) {
    if (speed_ == kUnlimitedSpeed ? Held() : UntilDue() > milliseconds::zero()) return;
    for (const auto& outlet : outlets_) outlet->Send(epoch_.lines);
    pending_ = source_(epoch_);
    if (!pending_) ended_ = Clock::now();
  }
}

milliseconds LiveServer::UntilDue() const {
  const std::chrono::duration<double> due(ToSeconds(epoch_.time) / speed_);
  const std::chrono::duration<double> passed = Clock::now() - start_;
  return due <= passed ? milliseconds::zero() : std::chrono::ceil<milliseconds>(due - passed);
}

bool LiveServer::Ended() {
  if (pending_) return false;
  const bool drained = std::all_of(outlets_.begin(), outlets_.end(),
                                   [](const auto& outlet) { return outlet->Drained(); });
  drained_ = drained ? drained_ + 1 : 0;
  return drained_ >= kDrainLooks || Clock::now() - ended_ >= kPatience;
}

void LiveServer::Wait(milliseconds longest) {
  watched_.clear();
  stop_.Watch(watched_);
  for (const auto& outlet : outlets_) outlet->Watch(watched_);
  WaitFor(watched_, longest);
}

bool LiveServer::Step(milliseconds longest) {
  if (stop_.Taken()) return false;
  for (const auto& outlet : outlets_) outlet->Serve();
  if (!started_ && AnyPeer()) {
    started_ = true;
    start_ = Clock::now();
    if (!pending_) ended_ = start_;
  }
  milliseconds wait = std::min(longest, kLookInterval);
  if (started_) {
    SendDue();
    for (const auto& outlet : outlets_) outlet->Serve();
    if (Ended()) return false;
    if (!pending_) {
      wait = std::min(wait, kDrainInterval);
    } else if (speed_ != kUnlimitedSpeed) {
      wait = std::min(wait, UntilDue());
    } else if (!Held()) {
      wait = milliseconds::zero();
    }
  }
  Wait(wait);
  return true;
}

}  // namespace fathomline::simulator
