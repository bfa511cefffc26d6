#include "toolkit/window.h"

#include <algorithm>
#include <utility>

#include "base/fault.h"
#include "toolkit/controls.h"
#include "toolkit/desktop.h"
#include "toolkit/timer.h"

namespace fathomline {

Window::Window(Desktop& desktop, WindowDesign design)
    : desktop_(desktop),
      design_(std::move(design)),
      caption_(design_.caption),
      place_(design_.place) {
  desktop_.Add(*this);
}

Window::~Window() {
  desktop_.Remove(*this);
}

std::string Window::FullName() const {
  std::string name = design_.name;
  if (design_.index != 0) name += "-" + std::to_string(design_.index);
  if (design_.part != 0) name += "-" + std::to_string(design_.part);
  return name;
}

void Window::Remove(Control& control) {
  if (focus_ == &control) focus_ = nullptr;
  // Controls go in the opposite order of their coming.
  const auto found = std::find(controls_.rbegin(), controls_.rend(), &control);
  if (found != controls_.rend()) controls_.erase(std::next(found).base());
}

void Window::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  ++revision_;
}

void Window::SetState(WindowState state) {
  if (state_ == state) return;
  state_ = state;
  ++revision_;
}

void Window::SetIconColour(std::optional<Colour> colour) {
  if (iconColour_ == colour) return;
  iconColour_ = colour;
  ++revision_;
}

void Window::SetPlace(const WindowPlace& place) {
  if (place_ == place) return;
  place_ = place;
  ++placeRevision_;
}

void Window::SetContent(Layout content) {
  content_ = std::move(content);
  ++contentRevision_;
}

void Window::Show() {
  desktop_.Show(*this);
}
void Window::Hide() {
  desktop_.Hide(*this);
}
bool Window::Close(CloseReason reason) {
  return desktop_.Close(*this, reason);
}

void Window::Act(const std::function<void()>& action) {
  if (!loaded_) return;
  struct Deeper {
    int& depth;
    explicit Deeper(int& counter) : depth(counter) { ++depth; }
    ~Deeper() { --depth; }
  };
  const Deeper deeper(depth_);
  try {
    action();
  } catch (const Fault& fault) {
    desktop_.Report(fault, this);
  }
}

void Window::UserAct(Control& control, const std::function<void()>& action) {
  if (!control.Usable()) return;
  Act([&] {
    // Leaving a field may disable the control or close the window.
    if (FocusTo(control) && loaded_ && control.Usable()) action();
  });
}

bool Window::FocusTo(Control& control) {
  if (focus_ == &control) return true;
  if (leaving_) return false;
  const auto* button =
      control.Kind() == ControlKind::Button ? static_cast<const Button*>(&control) : nullptr;
  const bool cancels = button != nullptr && button->ButtonRole() == Button::Role::Cancel;
  if (focus_ != nullptr && focus_->onLeave && !cancels) {
    const OnStack guard(leaving_);
    const std::uint64_t load = loads_;
    if (!focus_->onLeave() || load != loads_) return false;
  }
  focus_ = &control;
  return true;
}

void Window::UserClose() {
  Act([this] {
    const bool stood = visible_ && design_.style == WindowStyle::Child;
    Close(CloseReason::User);
    if (stood && !visible_ && desktop_.onUserClosed) desktop_.onUserClosed(*this);
  });
}

void Window::UserPlace(const WindowPlace& place) {
  const bool resized = place.width != place_.width || place.height != place_.height;
  place_ = place;
  if (resized) Act([this] { Resize(); });
}

void Window::UserState(WindowState state) {
  if (state_ == state) return;
  state_ = state;
  if (state != WindowState::Minimised) Act([this] { Resize(); });
}

void Window::UserDrop(const std::vector<std::string>& paths) {
  Act([this, &paths] {
    if (onDrop) onDrop(paths);
  });
}

void Window::ResetToDesign() {
  // Whatever the constructors of the window have done by its first load belongs to the design.
  for (Control* control : controls_) {
    if (!std::exchange(control->sealed_, true)) control->Seal();
    control->Reset();
  }
  for (Timer* timer : timers_) timer->Reset();
  SetCaption(design_.caption);
  SetPlace(design_.place);
  SetState(WindowState::Normal);
  SetIconColour({});
  focus_ = nullptr;
  sized_ = false;
}

}  // namespace fathomline
