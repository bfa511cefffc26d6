#include "faces/headless/headless_face.h"

#include <algorithm>
#include <utility>

#include "toolkit/desktop.h"

namespace fathomline {

namespace {

// A wait that timers alone cannot end within this time is never ended by them.
constexpr std::chrono::hours kLongestWait{1};

}  // namespace

void HeadlessFace::Turn() {
  if (Desktop* desktop = AttachedDesktop()) desktop->Turn();
}

void HeadlessFace::RunUntil(const std::function<bool()>& done) {
  auto latest = now_ + kLongestWait;
  while (!done()) {
    if (UserActs()) continue;
    const Desktop::Outcome outcome =
        AttachedDesktop() != nullptr ? AttachedDesktop()->Turn() : Desktop::Outcome{};
    if (outcome.busy || done()) continue;
    if (outcome.nextDue && *outcome.nextDue <= latest) {
      now_ = std::max(now_, *outcome.nextDue);
    } else {
      if (!EndWait()) throw EndlessWait("nothing is left that could end this wait");
      latest = now_ + kLongestWait;
    }
  }
}

void HeadlessFace::Advance(std::chrono::milliseconds span) {
  const auto end = now_ + span;
  while (Desktop* desktop = AttachedDesktop()) {
    const Desktop::Outcome outcome = desktop->Turn();
    if (outcome.nextDue && *outcome.nextDue <= end) {
      now_ = std::max(now_, *outcome.nextDue);
    } else if (now_ < end) {
      now_ = end;
    } else {
      break;
    }
  }
  now_ = std::max(now_, end);
}

BatchFace::BatchFace(std::function<void(const MessageBox&)> listener)
    : listener_(std::move(listener)) {}

Face::Reply BatchFace::Ask(const MessageBox& box) {
  if (listener_) listener_(box);
  return {box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok, false};
}

std::optional<std::string> BatchFace::ChooseFile(const FileQuestion&) {
  return {};
}

bool BatchFace::EndWait() {
  Window* front = nullptr;
  for (Window* window : AttachedDesktop()->Windows()) {
    if (window->Style() != WindowStyle::Dialog || !window->Visible()) continue;
    if (front == nullptr || window->FrontOrder() > front->FrontOrder()) front = window;
  }
  return front != nullptr && front->Close(CloseReason::User);
}

}  // namespace fathomline
