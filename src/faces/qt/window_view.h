// Draws one plain window: its place in the main window or on the screen, and its controls.
#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

#include "faces/qt/control_view.h"
#include "faces/qt/window_placing.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

class QDragEnterEvent;
class QDropEvent;
class QKeyEvent;
class QMainWindow;
class QMdiArea;

namespace fathomline {

class MenuView;

class WindowView : public QObject {
 public:
  WindowView(QtFace& face, Window& window);
  ~WindowView() override;

  // None once the plain window has gone.
  Window* Plain() const { return context_.window; }
  QWidget* Host() const { return widgets_.host; }
  // The area of the child windows; of the main window only.
  QMdiArea* Area() const { return area_; }

  // Brings the widgets in line with the window. Returns how many controls had changed.
  int Draw();
  // Writes every control into its widget, also where nobody can see it.
  void WriteAll();
  void Forget();
  // No action of the window is on the stack.
  bool CanGo() const;
  bool Shown() const;
  // It stands where it belongs, with what belongs in it.
  bool Settled() const;
  bool WantsFront() const;
  void BringToFront();
  // Lets the next drawing make everything in the window anew.
  void MakeAnew() { revision_ = contentRevision_ = ~std::uint64_t{0}; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // A child window has to wait for the main window, in which it stands.
  bool AwaitsMain() const;
  void MakeHost();
  void DropHost();
  void Fill();
  void FillMain(const std::vector<ControlView*>& bars, QWidget* body);
  void FillOther(const std::vector<ControlView*>& bars, QWidget* body, QWidget* foot);
  bool BodySpeaks() const;
  void FollowFrame();
  bool AnySeen() const;
  void UserRaised();
  bool OfferFiles(QDragEnterEvent& event);
  bool DropFiles(QDropEvent& event);
  bool PressKey(const QKeyEvent& event);
  bool ClickButton(Button::Role role);
  void UserClosed();

  ViewContext context_;
  WindowWidgets widgets_;
  WindowPlacing placing_;
  QPointer<QMainWindow> main_;
  QPointer<QMdiArea> area_;
  std::unique_ptr<MenuView> menus_;
  std::vector<std::unique_ptr<ControlView>> views_;
  std::uint64_t revision_ = 0;
  std::uint64_t contentRevision_ = 0;
  std::uint64_t frontOrder_ = 0;
  std::uint64_t loads_ = 0;
  bool fresh_ = true;
};

}  // namespace fathomline
