#include "toolkit/control.h"

#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

Parent::Parent(Frame& frame) : window_(&frame.OwningWindow()), frame_(&frame) {}

Control::Control(ControlKind kind, Parent parent, std::string_view name, std::string_view text)
    : name_(name), window_(parent.OwningWindow()), frame_(parent.OwningFrame()), kind_(kind) {
  state_.text = text;
  window_.Add(*this);
}

Control::~Control() {
  window_.Remove(*this);
}

bool Control::Shown() const {
  return Visible() && (frame_ == nullptr || frame_->Shown());
}

bool Control::Usable() const {
  return Visible() && Enabled() && (frame_ == nullptr || frame_->Usable());
}

void Control::Reset() {
  Change(state_, design_);
}

}  // namespace fathomline
