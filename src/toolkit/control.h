// What all controls of a window share.
//
// A control is a member of its window and registers itself there when it is built:
//
//   Frame frameGGA{*this, "frameGGA", "GGA Statistics"};
//   Grid fgGGA{frameGGA, "fgGGA", 10, 10};
//
// The state it has after the window's constructor is its design state; every load of the window
// begins from it. Setting a property from the program is silent: it runs no handler and tells
// nobody, it only lets the revision grow, which a face compares when it looks. What the user does
// enters through the methods that say so, and those run the handlers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "base/fault.h"

namespace fathomline {

class Frame;
class Window;

// Where a control lives: directly in its window, or in a frame of it.
class Parent {
 public:
  Parent(Window& window) : window_(&window) {}
  Parent(Frame& frame);

  Window& OwningWindow() const { return *window_; }
  const Frame* OwningFrame() const { return frame_; }

 private:
  Window* window_;
  const Frame* frame_ = nullptr;
};

enum class ControlKind : std::uint8_t {
  Frame,
  Label,
  Button,
  TextBox,
  CheckBox,
  Progress,
  Choices,
  Grid,
  LongList,
  Chart,
  Picture,
  StatusBar,
  ToolBar,
  MenuItem,
};

class Control {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  ControlKind Kind() const { return kind_; }
  // Its system name, of an element of an array with the index: "lblSv(3)".
  const std::string& Name() const { return name_; }
  Window& OwningWindow() const { return window_; }
  const Frame* OwningFrame() const { return frame_; }

  const std::string& Text() const { return state_.text; }
  void SetText(std::string_view text) { Change(state_.text, text); }
  bool Enabled() const { return state_.enabled; }
  void SetEnabled(bool enabled) { Change(state_.enabled, enabled); }
  bool Visible() const { return state_.visible; }
  void SetVisible(bool visible) { Change(state_.visible, visible); }
  // None: as the desktop draws such controls.
  std::optional<Colour> ShownColour() const { return state_.colour; }
  void SetColour(std::optional<Colour> colour) { Change(state_.colour, colour); }
  // What is told to who points at it; empty: nothing.
  const std::string& ToolTip() const { return state_.toolTip; }
  void SetToolTip(std::string_view text) { Change(state_.toolTip, text); }
  // Asks the desktop, whenever the number has grown, to select what the control says, so that the
  // user can type over it.
  void SelectText() { ++selections_, ++revision_; }
  std::uint64_t Selections() const { return selections_; }
  // A text that the program keeps with the control; nobody sees it.
  const std::string& Tag() const { return state_.tag; }
  void SetTag(std::string_view tag) { state_.tag = tag; }

  // Visible itself, and so is every frame around it.
  bool Shown() const;
  // Shown, and neither it nor a frame around it is disabled.
  bool Usable() const;

  // Grows with every real change of what is to be seen.
  std::uint64_t Revision() const { return revision_; }

  // Asked when the user leaves the control for another one. False: the focus stays.
  std::function<bool()> onLeave;

 protected:
  Control(ControlKind kind, Parent parent, std::string_view name, std::string_view text = {});

  template <class Field, class Value>
  void Change(Field& field, const Value& value) {
    if (field == value) return;
    field = value;
    ++revision_;
  }
  void Touch() { ++revision_; }
  // For parts of a control, which count their changes with it.
  std::uint64_t& Changes() { return revision_; }
  void AppendText(std::string_view text) {
    state_.text += text;
    ++revision_;
  }

  // Keeps the present state as design state, and goes back to it.
  virtual void Seal() { design_ = state_; }
  virtual void Reset();

 private:
  friend class Window;

  struct State {
    std::string text;
    std::string tag;
    std::string toolTip;
    std::optional<Colour> colour;
    bool enabled = true;
    bool visible = true;

    bool operator==(const State&) const = default;
  };

  State state_;
  State design_;
  std::string name_;
  Window& window_;
  const Frame* frame_;
  std::uint64_t revision_ = 0;
  std::uint64_t selections_ = 0;
  ControlKind kind_;
  bool sealed_ = false;
};

// An array of controls of one name; each element is called name(index).
template <class Element>
class ControlArray {
 public:
  // Elements first to last; the further arguments build each of them.
  template <class Place, class... Arguments>
  ControlArray(Place& parent, std::string_view name, int first, int last,
               const Arguments&... arguments)
      : first_(first) {
    for (int i = first; i <= last; ++i) {
      elements_.emplace_back(parent, std::string(name) + "(" + std::to_string(i) + ")",
                             arguments...);
    }
  }

  // Raises OutOfRange for an index that the array has not.
  Element& operator()(int index) { return elements_[Position(index)]; }
  const Element& operator()(int index) const { return elements_[Position(index)]; }
  int First() const { return first_; }
  int Last() const { return first_ + static_cast<int>(elements_.size()) - 1; }

  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }

 private:
  std::size_t Position(int index) const {
    if (index < first_ || index > Last()) Raise(FaultNumber::OutOfRange);
    return static_cast<std::size_t>(index - first_);
  }

  int first_;
  std::deque<Element> elements_;
};

}  // namespace fathomline
