// A desktop on the offscreen platform, and ways to wait for it and to act on it as a user does.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>

#include "faces/qt/qt_face.h"
#include "toolkit/controls.h"
#include "toolkit/desktop.h"
#include "toolkit/window.h"

namespace fathomline {

// A window whose content a test puts together.
class PlainWindow : public Window {
 public:
  explicit PlainWindow(Desktop& desktop, WindowDesign design = {.name = "frmTest",
                                                                .caption = "Test",
                                                                .place = {0, 0, 9000, 6000}})
      : Window(desktop, std::move(design)) {}

  using Window::SetContent;
  std::function<bool(CloseReason)> query;
  int refreshed = 0;

  void Refresh() override { ++refreshed; }

 protected:
  bool QueryUnload(CloseReason reason) override { return !query || query(reason); }
};

// Lets everything go on until the condition holds; a test failure where it never does.
inline void PumpUntil(QtFace& face, const std::function<bool()>& done) {
  const auto end = face.Now() + std::chrono::seconds(60);
  face.RunUntil([&] { return done() || face.Now() > end; });
  EXPECT_TRUE(done()) << "waited in vain";
}

class QtFixture : public testing::Test {
 public:
  QtFace face;
  Desktop desktop{face};

  void PumpUntil(const std::function<bool()>& done) { fathomline::PumpUntil(face, done); }

  // Shows the window and waits until it has been drawn.
  void ShowDrawn(Window& window) {
    window.Show();
    PumpUntil([&] { return face.HostOf(window) != nullptr && face.HostOf(window)->isVisible(); });
    face.Draw();
  }

  template <class Widget>
  Widget* Find(const Control& control) const {
    auto* const widget = dynamic_cast<Widget*>(face.WidgetOf(control));
    EXPECT_NE(widget, nullptr) << control.Name();
    return widget;
  }

  static QMessageBox* Box() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  }

  // Presses a button of the box that stands.
  static void Answer(QMessageBox::StandardButton button) {
    QTest::mouseClick(Box()->button(button), Qt::LeftButton);
  }
};

}  // namespace fathomline
