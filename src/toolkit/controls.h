// The simple controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "toolkit/control.h"

namespace fathomline {

// A titled group. Hiding or disabling it hides or disables what lives in it.
class Frame : public Control {
 public:
  Frame(Parent parent, std::string_view name, std::string_view caption = {})
      : Control(ControlKind::Frame, parent, name, caption) {}
};

class Label : public Control {
 public:
  // A swatch shows its colour as a filled field; a path is shortened in its middle where there is
  // no room for all of it. A line, for what has been received, takes the room that there is: cut at
  // its end, whole in its tool tip, it never changes the size of anything around it.
  enum class Look : std::uint8_t { Text, Swatch, Path, Line };

  Label(Parent parent, std::string_view name, std::string_view text = {}, Look look = Look::Text)
      : Control(ControlKind::Label, parent, name, text), look_(look) {}

  Look ShownLook() const { return look_; }

  // The user clicks it. Only a label with a handler can be clicked.
  void Click();
  std::function<void()> onClick;
  // Whether Tab reaches one that can be clicked. Of several that do the same, one is enough.
  bool TabStop() const { return tabStop_; }
  void SetTabStop(bool stop) { Change(tabStop_, stop); }

 private:
  Look look_;
  bool tabStop_ = false;
};

class Button : public Control {
 public:
  // Enter presses the default button, Escape the cancel button. Going to the cancel button never
  // asks the field that is left.
  enum class Role : std::uint8_t { Plain, Default, Cancel };

  Button(Parent parent, std::string_view name, std::string_view caption, Role role = Role::Plain)
      : Control(ControlKind::Button, parent, name, caption), role_(role) {}

  Role ButtonRole() const { return role_; }

  // The user presses it.
  void Click();
  std::function<void()> onClick;

 private:
  Role role_;
};

class TextBox : public Control {
 public:
  enum class Lines : std::uint8_t { One, Many };

  TextBox(Parent parent, std::string_view name, std::string_view text = {},
          Lines lines = Lines::One)
      : Control(ControlKind::TextBox, parent, name, text), lines_(lines) {}

  bool Multiline() const { return lines_ == Lines::Many; }
  // The end of the text is brought into view.
  void Append(std::string_view text);
  // Twips; the face says how high the box has become, the program may set a height before.
  int Height() const { return height_; }
  void SetHeight(int twips) { height_ = twips; }
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { Change(readOnly_, readOnly); }

  // The user has edited the text, which now reads so.
  void UserText(std::string_view text);
  std::function<void()> onChange;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  Lines lines_;
  bool readOnly_ = false;
  bool designReadOnly_ = false;
  int height_ = 2550;
};

class CheckBox : public Control {
 public:
  CheckBox(Parent parent, std::string_view name, std::string_view caption, bool checked = false)
      : Control(ControlKind::CheckBox, parent, name, caption), checked_(checked) {}

  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Change(checked_, checked); }

  // The user turns it over.
  void Click();
  std::function<void()> onClick;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  bool checked_;
  bool designChecked_ = false;
};

// How much of something has been done.
class ProgressBar : public Control {
 public:
  ProgressBar(Parent parent, std::string_view name)
      : Control(ControlKind::Progress, parent, name) {}

  // In thousandths, 0 to 1000; anything beyond is taken as the nearer end.
  int Share() const { return share_; }
  void SetShare(int thousandths);

 protected:
  void Reset() override;

 private:
  int share_ = 0;
};

}  // namespace fathomline
