#include "toolkit/desktop.h"

#include <algorithm>

#include "toolkit/timer.h"

namespace fathomline {

namespace {

// What Turn walks over may lose elements on the way, so these only become empty there.
template <class Element>
void Forget(std::vector<Element*>& elements, Element& element, bool walking) {
  const auto found = std::find(elements.begin(), elements.end(), &element);
  if (found == elements.end()) return;
  if (walking) {
    *found = nullptr;
  } else {
    elements.erase(found);
  }
}

}  // namespace

Task::~Task() {
  if (desktop_ != nullptr) desktop_->Stop(*this);
}

Desktop::Desktop(Face& face) : face_(face) {
  face_.desktop_ = this;
}

Desktop::~Desktop() {
  for (Task* task : tasks_) {
    if (task != nullptr) task->desktop_ = nullptr;
  }
  face_.desktop_ = nullptr;
}

void Desktop::Remove(Window& window) {
  face_.Forget(window);
  std::erase(windows_, &window);
  std::erase(modal_, &window);
}

void Desktop::Remove(Timer& timer) {
  Forget(timers_, timer, turns_ > 0);
}

void Desktop::Load(Window& window) {
  if (window.loaded_) return;
  window.ResetToDesign();
  // Set before Load runs: what it shows or asks may come back to this window.
  window.loaded_ = true;
  ++window.loads_;
  try {
    window.Load();
  } catch (const Fault&) {
    window.loaded_ = false;
    window.visible_ = false;
    throw;
  }
}

void Desktop::Show(Window& window) {
  const bool stood = window.loaded_;
  Load(window);
  if (!window.loaded_) return;
  window.visible_ = true;
  Raise(window);
  if (stood && window.state_ == WindowState::Minimised) window.SetState(WindowState::Normal);
  if (!window.sized_) {
    window.sized_ = true;
    window.Resize();
  }
}

void Desktop::Hide(Window& window) {
  window.visible_ = false;
}

bool Desktop::Close(Window& window, CloseReason reason) {
  if (!window.loaded_ || window.unloading_) return true;
  // The close box pressed again while the window asks.
  if (window.asking_ && reason == CloseReason::User) return false;
  const std::uint64_t load = window.loads_;
  {
    // A question within a question, asked by the program: the outer one stays marked.
    bool nested = true;
    const OnStack guard(window.asking_ ? nested : window.asking_);
    if (!window.QueryUnload(reason)) return false;
  }
  // Somebody else has closed it during the question, and perhaps opened it anew.
  if (!window.loaded_ || window.loads_ != load) return !window.loaded_;
  struct Gone {
    Window& window;
    ~Gone() {
      window.unloading_ = false;
      window.loaded_ = false;
      window.visible_ = false;
      window.focus_ = nullptr;
    }
  } const gone{window};
  window.unloading_ = true;
  window.closedBy_ = reason;
  window.Unload();
  return true;
}

void Desktop::ShowModal(Window& window) {
  Show(window);
  modal_.push_back(&window);
  struct Pop {
    Desktop& desktop;
    Window& window;
    ~Pop() { std::erase(desktop.modal_, &window); }
  } const pop{*this, window};
  RunUntil([&window] { return !window.visible_; });
}

std::vector<Window*> Desktop::ShownChildren() const {
  std::vector<Window*> windows;
  for (Window* const window : windows_) {
    if (window->Style() == WindowStyle::Child && window->visible_) windows.push_back(window);
  }
  std::sort(windows.begin(), windows.end(),
            [](const Window* a, const Window* b) { return a->frontOrder_ < b->frontOrder_; });
  return windows;
}

std::vector<Window*> Desktop::WindowsToArrange() const {
  std::vector<Window*> windows = ShownChildren();
  std::erase_if(windows,
                [](const Window* window) { return window->state_ == WindowState::Minimised; });
  return windows;
}

void Desktop::RaiseNext() {
  const std::vector<Window*> windows = WindowsToArrange();
  if (windows.size() > 1) Raise(*windows.front());
}

Answer Desktop::Ask(const MessageBox& box) {
  const std::pair<std::string, std::string> key(box.title, box.kind);
  if (!asks_ || (box.canBeSilenced && silenced_.contains(key))) {
    if (box.buttons == BoxButtons::Ok) return Answer::Ok;
    return box.defaultNo ? Answer::No : Answer::Yes;
  }
  const Face::Reply reply = face_.Ask(box);
  if (box.canBeSilenced && reply.silence) silenced_.insert(key);
  return reply.answer;
}

std::optional<std::string> Desktop::ChooseFile(const FileQuestion& question) {
  if (!asks_) return {};
  return face_.ChooseFile(question);
}

Desktop::Outcome Desktop::Turn() {
  struct Walk {
    Desktop& desktop;
    explicit Walk(Desktop& walked) : desktop(walked) { ++desktop.turns_; }
    ~Walk() {
      if (--desktop.turns_ > 0) return;
      std::erase(desktop.timers_, nullptr);
      std::erase(desktop.tasks_, nullptr);
    }
  } const walk(*this);

  Outcome outcome;
  const auto now = Now();
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    if (timers_[i] != nullptr && timers_[i]->Running() && timers_[i]->due_ <= now) {
      timers_[i]->Tick();
    }
  }
  for (std::size_t i = 0; i < tasks_.size(); ++i) {
    Task* const task = tasks_[i];
    if (task == nullptr || task->onStack_) continue;
    const OnStack guard(task->onStack_);
    sliceTime_ = Now();
    try {
      if (task->RunSlice(std::chrono::steady_clock::now() + kLongestSlice)) outcome.busy = true;
    } catch (const Fault& fault) {
      Report(fault, nullptr);
    }
  }
  for (const Timer* timer : timers_) {
    if (timer == nullptr || !timer->Running()) continue;
    if (!outcome.nextDue || timer->due_ < *outcome.nextDue) outcome.nextDue = timer->due_;
  }
  return outcome;
}

void Desktop::RunUntil(const std::function<bool()>& done) {
  face_.RunUntil([this, &done] { return quitting_ || done(); });
}

void Desktop::Start(Task& task) {
  if (std::find(tasks_.begin(), tasks_.end(), &task) != tasks_.end()) return;
  task.desktop_ = this;
  tasks_.push_back(&task);
}

void Desktop::Stop(Task& task) {
  task.desktop_ = nullptr;
  Forget(tasks_, task, turns_ > 0);
}

void Desktop::Report(const Fault& fault, Window* window) {
  const auto show = [this](const Fault& shown) {
    Ask({.text = shown.Description(), .icon = BoxIcon::Critical});
  };
  if (!onFault) {
    show(fault);
    return;
  }
  try {
    onFault(fault, window);
  } catch (const Fault& further) {
    // No fault may cross into the toolkit, not even one of the handler.
    show(further);
  }
}

}  // namespace fathomline
