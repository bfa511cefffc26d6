// Where a window stands on the desktop, how large it is and in which state; both ways, from the
// plain window to its widgets and back.
#pragma once

#include <QMdiSubWindow>
#include <QPointer>
#include <QScrollArea>
#include <QWidget>
#include <cstdint>
#include <utility>

#include "faces/qt/control_view.h"
#include "toolkit/window.h"

namespace fathomline {

// The widgets around the controls of a window.
struct WindowWidgets {
  QPointer<QWidget> host;             // the outermost
  QPointer<QMdiSubWindow> child;      // the host of a child window
  QPointer<QWidget> content = {};     // what the host holds: bars, and the body in its scroll area
  QPointer<QScrollArea> scroll = {};  // none in the main window
  QPointer<QWidget> body = {};
};

class WindowPlacing {
 public:
  WindowPlacing(ViewContext& context, const WindowWidgets& widgets)
      : context_(context), widgets_(widgets) {}

  // As long as one stands, what happens to the widgets is the program's doing.
  class ByProgram {
   public:
    explicit ByProgram(WindowPlacing& placing)
        : flag_(placing.byProgram_), before_(std::exchange(flag_, true)) {}
    ~ByProgram() { flag_ = before_; }
    ByProgram(const ByProgram&) = delete;
    ByProgram& operator=(const ByProgram&) = delete;

   private:
    bool& flag_;
    bool before_;
  };

  // The widgets are new.
  void Restart() { revision_ = kNewWidgets; }
  // Shows the host, in the place and the state of the window. A window freshly opened is made large
  // enough to be useful.
  void Follow(bool fresh);
  bool Settled() const { return revision_ == context_.window->PlaceRevision(); }
  // The user has moved, sized, minimised or maximised the window.
  void UserMoved();
  void UserChangedState();

 private:
  bool InArea() const { return widgets_.child != nullptr; }
  void FollowPlace(bool fresh);
  void BringInside();
  bool OpensInRoom() const;
  void FollowModality();
  void FollowState();
  void FixSize();
  QSize BodySize() const;
  QSize Usable(const QSize& size) const;

  ViewContext& context_;
  const WindowWidgets& widgets_;
  static constexpr std::uint64_t kNewWidgets = ~std::uint64_t{0};
  std::uint64_t revision_ = 0;
  bool byProgram_ = false;
};

}  // namespace fathomline
