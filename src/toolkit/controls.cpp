#include "toolkit/controls.h"

#include <algorithm>

#include "toolkit/window.h"

namespace fathomline {

void Label::Click() {
  if (!onClick) return;
  OwningWindow().UserAct(*this, [this] { onClick(); });
}

void Button::Click() {
  OwningWindow().UserAct(*this, [this] {
    if (onClick) onClick();
  });
}

void TextBox::Append(std::string_view text) {
  if (text.empty()) return;
  AppendText(text);
}

void TextBox::UserText(std::string_view text) {
  OwningWindow().UserAct(*this, [this, text] {
    if (text == Text()) return;
    SetText(text);
    if (onChange) onChange();
  });
}

void TextBox::Seal() {
  Control::Seal();
  designReadOnly_ = readOnly_;
}

void TextBox::Reset() {
  Control::Reset();
  SetReadOnly(designReadOnly_);
}

void CheckBox::Click() {
  OwningWindow().UserAct(*this, [this] {
    SetChecked(!checked_);
    if (onClick) onClick();
  });
}

void CheckBox::Seal() {
  Control::Seal();
  designChecked_ = checked_;
}

void CheckBox::Reset() {
  Control::Reset();
  SetChecked(designChecked_);
}

void ProgressBar::SetShare(int thousandths) {
  Change(share_, std::clamp(thousandths, 0, 1000));
}

void ProgressBar::Reset() {
  Control::Reset();
  SetShare(0);
}

}  // namespace fathomline
