// The whole program on the offscreen platform, acted on as a user does.
#pragma once

#include <QToolButton>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "faces/qt/conversions.h"
#include "faces/qt/qt_fixture.h"
#include "session/program.h"
#include "setup/setup_file.h"
#include "support/places.h"
#include "support/temporary_folder.h"

namespace fathomline {

class ProgramFixture : public testing::Test {
 public:
  // One run of the program, from its start to its end.
  struct Run {
    Run(const Clock& clock, SettingsStore& settings, Links* links)
        : program({face, clock, settings, [] {}, links}) {}
    QtFace face;
    Program program;
  };

  TemporaryFolder folder;
  SystemClock clock;
  SettingsStore settings;
  Links* links = nullptr;  // none: nothing ever arrives
  std::unique_ptr<Run> run;

  Program& program() { return run->program; }
  Records& records() { return run->program.engine.records; }
  QtFace& face() { return run->face; }
  QWidget* Main() { return face().HostOf(program().windows.main); }

  // Starts anew, with the setup file that a test has written. Returns the texts of the boxes that
  // the start has shown.
  std::vector<std::string> Start() {
    run.reset();
    run = std::make_unique<Run>(clock, settings, links);
    return Answering(QMessageBox::Ok, [this] {
      EXPECT_TRUE(program().session.startUp.Start({.programFolder = folder.Path()}));
    });
  }

  // Starts with the sample of a voyage.
  void StartWithSample() {
    std::ifstream in(kSourceFolder + "/samples/sample.ini.in");
    std::string setup(std::istreambuf_iterator<char>(in), {});
    const std::string mark = "@SAMPLES@";
    for (auto at = setup.find(mark); at != std::string::npos; at = setup.find(mark)) {
      setup.replace(at, mark.size(), kSourceFolder + "/samples");
    }
    folder.Write(kSetupFileName, setup);
    ASSERT_TRUE(Start().empty());
  }

  // What is written asks for its room with an event, and is drawn in it behind that.
  void Draw() {
    face().Draw();
    face().Turn();
    face().Draw();
  }

  void PumpUntil(const std::function<bool()>& done) { fathomline::PumpUntil(face(), done); }

  // Does something that asks, and presses that button of each box. Returns what they asked.
  std::vector<std::string> Answering(QMessageBox::StandardButton button,
                                     const std::function<void()>& act) {
    std::vector<std::string> texts;
    QTimer clicker;
    QObject::connect(&clicker, &QTimer::timeout, [&] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      texts.push_back(FromQt(box->text()));
      if (box->button(button) != nullptr) {
        QTest::mouseClick(box->button(button), Qt::LeftButton);
      } else {
        box->reject();
      }
    });
    clicker.start(1);
    act();
    Draw();
    return texts;
  }

  // The button with that caption of the tool bar that is shown.
  QToolButton* Key(const char* caption) {
    for (auto* const button : Main()->findChildren<QToolButton*>()) {
      if (button->text() == QLatin1String(caption) && button->isVisible()) return button;
    }
    return nullptr;
  }

  void Press(const char* caption) {
    QToolButton* const button = Key(caption);
    ASSERT_NE(button, nullptr) << caption;
    EXPECT_TRUE(button->isEnabled()) << caption;
    QTest::mouseClick(button, Qt::LeftButton);
    Draw();
  }

  QAction* Entry(const MenuItem& item) { return Main()->findChild<QAction*>(ToQt(item.Name())); }
  void Choose(const MenuItem& item) { Entry(item)->trigger(); }

  bool Seen(const Window& window) {
    const QWidget* const host = face().HostOf(window);
    return host != nullptr && host->isVisible();
  }

  template <class Widget>
  Widget* Find(const Control& control) {
    auto* const widget = dynamic_cast<Widget*>(face().WidgetOf(control));
    EXPECT_NE(widget, nullptr) << control.Name();
    return widget;
  }
};

}  // namespace fathomline
