// Draws one plain window: its place in the main window or on the screen, and its controls.
#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

#include "platform/qt/control_view.h"
#include "platform/window.h"

class QKeyEvent;
class QMainWindow;
class QMdiArea;
class QMdiSubWindow;
class QScrollArea;

namespace fathomline {

class MenuView;

class WindowView : public QObject {
 public:
  WindowView(QtFace& face, Window& window);
  ~WindowView() override;

  // None once the plain window has gone.
  Window* Plain() const { return context_.window; }
  QWidget* Host() const { return host_; }
  // The area of the child windows; of the main window only.
  QMdiArea* Area() const { return area_; }

  // Brings the widgets in line with the window. Returns how many controls had changed.
  int Draw();
  void Forget();
  // No action of the window is on the stack.
  bool CanGo() const;
  bool Shown() const;
  bool WantsFront() const;
  void BringToFront();
  void ArrangeIcons();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeHost();
  void DropHost();
  void Fill();
  void FillMain(std::vector<ControlView*> bars, QWidget* body);
  void FillOther(const std::vector<ControlView*>& bars, QWidget* body);
  void FollowFrame();
  void FollowPlace();
  void FollowState();
  void FixSize();
  void FocusFirst();
  void FollowWelcome();
  bool AnySeen() const;
  void UserMoved();
  void UserRaised();
  bool PressKey(const QKeyEvent& event);
  bool ClickButton(int role);
  QSize BodySize() const;
  QSize Usable(const QSize& size) const;

  ViewContext context_;
  QPointer<QWidget> host_;
  QPointer<QMdiSubWindow> child_;
  QPointer<QMainWindow> main_;
  QPointer<QMdiArea> area_;
  QPointer<QScrollArea> scroll_;
  QPointer<QWidget> body_;
  QPointer<QWidget> content_;
  std::unique_ptr<MenuView> menus_;
  std::vector<std::unique_ptr<ControlView>> views_;
  std::uint64_t revision_ = 0;
  std::uint64_t placeRevision_ = 0;
  std::uint64_t contentRevision_ = 0;
  std::uint64_t frontOrder_ = 0;
  std::uint64_t loads_ = 0;
  bool fresh_ = true;
  bool placing_ = false;
};

}  // namespace fathomline
