// The desktop on Qt 6 Widgets.
//
// A QApplication must stand before it is made. Widgets are made when a window is first seen, and
// deleted by the tick alone, never while a handler of their window is on the stack.
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "toolkit/desktop.h"
#include "toolkit/face.h"

class QDialog;
class QMdiArea;
class QObject;
class QPrinter;
class QTimer;
class QWidget;

namespace fathomline {

class Control;
class ControlView;
class HelpWindow;
class InputWatcher;
class WindowView;
struct DialogStand;
struct ViewContext;

class QtFace : public Face {
 public:
  QtFace();
  ~QtFace() override;

  Reply Ask(const MessageBox& box) override;
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;
  void ShowPageSetup() override;
  bool ShowHelp(HelpStart start) override;
  bool OpenDocument(const std::string& path) override;
  void Beep() override;
  void CopyText(std::string_view text) override;
  void SetLook(LookChoice choice) override;
  void ArrangeIcons() override;
  void Turn() override;
  void RunUntil(const std::function<bool()>& done) override;
  std::chrono::steady_clock::time_point Now() const override {
    return std::chrono::steady_clock::now();
  }

  // The following are called by the views.

  void Register(QWidget& widget, ControlView& view);
  // The view that a widget belongs to, itself or as a part of it.
  ControlView* ViewOf(QObject* widget) const;
  // An action of the user begins in that window, and ends before any that began earlier.
  void BeginAction(const ViewContext& context) { atWork_.push_back(&context); }
  void EndAction() { atWork_.pop_back(); }
  // The user has done something and should see at once what came of it.
  void DrawSoon() { drawSoon_ = true; }
  // What changes now is the program's doing, not the user's.
  bool Drawing() const { return drawing_; }
  // Says what has failed and why.
  void TellFailure(const std::string& what, const std::string& cause);
  // Writes a file that the user has asked for. Where that fails, a box says so and why.
  void SaveFile(const std::string& path, std::string_view content, const std::string& failure);
  // The area of the child windows, where there is a main window.
  QMdiArea* ChildArea() const;
  QWidget* MainHost() const;
  Desktop* Served() const { return AttachedDesktop(); }

  // The following serve tests and pictures.

  // Brings everything in line now.
  void Draw();
  // The same, and all of this window, whether or not it can be seen.
  void DrawWhole(const Window& window);
  // The outermost widget of a window, none while it has not been seen.
  QWidget* HostOf(const Window& window) const;
  QWidget* WidgetOf(const Control& control) const;
  // How often a control has been written into its widget.
  std::uint64_t Updates() const { return updates_; }

 private:
  void Forget(Window& window) override;
  WindowView* ViewOf(const Window& window) const;
  using Span = std::chrono::steady_clock::duration;
  // Draws for so long, or else all. Returns whether each window is where it belongs by now; the
  // user waits for one that is not.
  bool DrawFor(std::optional<Span> time);
  bool DrawWindows(std::vector<Window*> windows, std::optional<Span> time);
  void DrawWindow(Window& window);
  static void PaintNow();
  void RaiseWindows();
  void DrawWhenDue();
  void Wait();
  bool Quitting() const;
  QWidget* DialogParent() const;
  DialogStand Stand();
  // Shows it and lets everything go on until it is answered; whether it was accepted.
  bool RunDialog(QDialog& dialog);

  std::unique_ptr<InputWatcher> watcher_;
  std::unique_ptr<QTimer> wake_;
  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<HelpWindow> help_;
  std::vector<std::unique_ptr<WindowView>> windows_;
  QHash<const QObject*, ControlView*> views_;
  std::vector<const ViewContext*> atWork_;
  // With which the next drawing begins. It may have gone by then.
  const Window* nextInTurn_ = nullptr;
  std::chrono::steady_clock::time_point nextDraw_{};
  std::chrono::steady_clock::time_point earliestDraw_{};
  std::chrono::steady_clock::duration drawCost_{};
  std::optional<std::chrono::steady_clock::time_point> nextDue_;
  std::uint64_t updates_ = 0;
  int turns_ = 0;
  bool drawSoon_ = false;
  bool drawing_ = false;
  bool painting_ = false;
  bool busy_ = false;
};

}  // namespace fathomline
