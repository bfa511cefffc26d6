// What draws a control of a plain window, and tells it what the user does.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "toolkit/control.h"

class QKeyEvent;

namespace fathomline {

class ChartView;
class QtFace;

// Two moments between which the charts of a window say the differences.
struct ChartCursors {
  std::array<double, 2> x{};
  std::size_t held = 1;    // the one that keys move
  std::uint64_t load = 0;  // of the window; they do not outlive it
};

// What the charts of one window have in common.
struct ChartCompany {
  std::vector<ChartView*> charts;
  std::optional<double> hover;  // x under the mouse
  std::optional<ChartCursors> cursors;
  // Room beside the plots, in pixels.
  int left = 0;
  int right = 0;
};

// What the views of one window share. It outlives them.
struct ViewContext {
  QtFace& face;
  Window* window;   // none once the plain window has gone; its controls went with it
  int onStack = 0;  // user actions on the stack that may not lose their widget
  ChartCompany charts = {};
};

// Counts a user action as being on the stack as long as it lives.
class ActionOnStack {
 public:
  explicit ActionOnStack(ViewContext& context);
  ~ActionOnStack();
  ActionOnStack(const ActionOnStack&) = delete;
  ActionOnStack& operator=(const ActionOnStack&) = delete;

 private:
  ViewContext& context_;
};

// One per control. The widget belongs to its parent in the widget tree.
class ControlView {
 public:
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  Control& Plain() const { return control_; }
  QWidget* Widget() const { return widget_; }
  ViewContext& Context() const { return context_; }

  // The texts beside the control that name it: seen and enabled as the control is.
  void AddCompanion(QWidget* companion);

  // Brings the widget in line with the control, if anything has changed since the last time.
  // Returns whether it had. What cannot be seen waits, unless it never has been drawn.
  bool Sync();
  // Whether any of it lies open on the screen.
  virtual bool Seen() const;
  // Whether it takes the focus when the user goes to it.
  virtual bool TakesFocus() const { return false; }
  // The same without looking for a change.
  void Write();
  // The control has gone; the widget, which may linger, must not look at it again.
  virtual void Forget() {}

 protected:
  ControlView(ViewContext& context, Control& control)
      : context_(context), control_(control), selections_(control.Selections()) {}

  void SetWidget(QWidget* widget);
  // What a screen reader says of a control that has no words: its name without the kind in front.
  QString SpokenName() const;
  // Writes what the control says into the widget. Signals that this causes tell nobody.
  virtual void Update() = 0;
  // Whether it costs too much to be written before it can be seen.
  virtual bool Waits() const { return false; }
  // Something the user has done. Afterwards the widget shows what the control says, whatever its
  // handler made of it.
  void User(const std::function<void()>& action);
  bool Writing() const { return writing_; }
  // The program has asked, since the last time, to have the text selected.
  bool SelectionDue();

 private:
  bool Appears() const;
  void Appear();

  ViewContext& context_;
  Control& control_;
  QPointer<QWidget> widget_;
  std::vector<QPointer<QWidget>> companions_;
  std::optional<std::uint64_t> revision_;  // none while it has never been written
  std::uint64_t selections_;
  bool drawn_ = false;
  bool shown_ = true;
  bool usable_ = true;
  bool writing_ = false;
};

// For widgets that are pressed like a button and are none: the keys that press them, and what shows
// that they have the focus.
bool IsPress(const QKeyEvent& event);
void PaintFocusRing(QWidget& widget);

// The view that fits the control. Frames and menu items have none: the layout and the menu bar
// draw them.
std::unique_ptr<ControlView> MakeControlView(ViewContext& context, Control& control);

}  // namespace fathomline
