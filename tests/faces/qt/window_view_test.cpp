// Windows on the desktop: their life, their places, leaving a field, boxes within boxes.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTableView>
#include <array>
#include <vector>

#include "faces/qt/conversions.h"
#include "faces/qt/qt_fixture.h"
#include "toolkit/grid.h"
#include "toolkit/task.h"
#include "toolkit/timer.h"

namespace fathomline {
namespace {

using WindowViews = QtFixture;

constexpr WindowPlace kMainPlace{0, 0, 15000, 10500};

WindowDesign ChildDesign(std::string name, WindowPlace place) {
  return {.name = std::move(name), .caption = "Child", .place = place};
}

class MainAndChild : public QtFixture {
 public:
  PlainWindow main{desktop, {.name = "frmMain", .place = kMainPlace, .style = WindowStyle::Main}};
  PlainWindow child{desktop, ChildDesign("frmChild", {300, 150, 7500, 6000})};
  Label label{child, "lblText", "seen"};

  void SetUp() override {
    ShowDrawn(main);
    ShowDrawn(child);
  }
  QMdiSubWindow* Sub(const Window& window) {
    return qobject_cast<QMdiSubWindow*>(face.HostOf(window));
  }
};

TEST_F(MainAndChild, ChildWindowsStandInTheMainWindowAtTheirPlaces) {
  ASSERT_NE(Sub(child), nullptr);
  EXPECT_EQ(Sub(child)->mdiArea(), face.ChildArea());
  EXPECT_EQ(Sub(child)->geometry(), QRect(20, 10, 500, 400));
  child.SetPlace({600, 600, 6000, 4500});
  child.SetCaption("Other");
  face.Draw();
  EXPECT_EQ(Sub(child)->geometry(), QRect(40, 40, 400, 300));
  EXPECT_EQ(Sub(child)->windowTitle(), "Other");
  Sub(child)->setGeometry(15, 30, 450, 350);
  EXPECT_EQ(child.Place(), (WindowPlace{225, 450, 6750, 5250}));
  EXPECT_EQ(desktop.ChildArea().width, face.ChildArea()->viewport()->width() * kTwipsPerPixel);
}

TEST_F(MainAndChild, APressedRowIsToldWithItsPointInItsWindow) {
  PlainWindow list{desktop, ChildDesign("frmList", {3000, 3000, 6000, 4500})};
  Grid grid{list, "fgList", 3, 2, {1, 0}};
  std::vector<std::array<int, 3>> presses;
  grid.onClickRow = [&](int row, int x, int y) { presses.push_back({row, x, y}); };
  ShowDrawn(list);
  auto* const table = Find<QTableView>(grid);
  const QPoint cell = table->visualRect(table->model()->index(1, 1)).center();
  QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell);
  QTest::keyClick(table, Qt::Key_Return);
  const QPoint point = table->viewport()->mapToGlobal(cell) - Sub(list)->mapToGlobal(QPoint(0, 0));
  const std::array<int, 3> expected{2, point.x() * kTwipsPerPixel, point.y() * kTwipsPerPixel};
  EXPECT_EQ(presses, (std::vector{expected, expected}));
  EXPECT_LT(point.x(), Sub(list)->width());
}

TEST_F(MainAndChild, MaximisedWindowsKeepTheirNormalPlace) {
  Sub(child)->showMaximized();
  EXPECT_EQ(child.State(), WindowState::Maximised);
  EXPECT_EQ(child.Place(), (WindowPlace{300, 150, 7500, 6000}));
  child.SetState(WindowState::Normal);
  face.Draw();
  EXPECT_FALSE(Sub(child)->isMaximized());
}

TEST_F(MainAndChild, ClosingGoesThroughTheWindowAndReopeningShowsItAnew) {
  bool allowed = false;
  child.query = [&](CloseReason) { return allowed; };
  Sub(child)->close();
  face.Draw();
  EXPECT_TRUE(Sub(child)->isVisible());
  allowed = true;
  label.SetText("changed");
  Sub(child)->close();
  EXPECT_FALSE(child.Loaded());
  PumpUntil([&] { return face.HostOf(child) == nullptr; });
  ShowDrawn(child);
  EXPECT_EQ(Find<QLabel>(label)->text(), "seen");
}

TEST_F(MainAndChild, AWindowMayBeClosedDuringItsOwnQuestion) {
  child.query = [&](CloseReason reason) {
    if (reason == CloseReason::User) desktop.Ask({.text = "Sure?", .buttons = BoxButtons::YesNo});
    return true;
  };
  bool answered = false;
  QTimer::singleShot(0, [&] {
    PumpUntil([] { return Box() != nullptr; });
    child.Close();
    // The widgets of the window are still on the stack.
    face.Draw();
    EXPECT_NE(face.HostOf(child), nullptr);
    Answer(QMessageBox::Yes);
    answered = true;
  });
  Sub(child)->close();
  EXPECT_TRUE(answered);
  PumpUntil([&] { return face.HostOf(child) == nullptr; });
}

TEST_F(MainAndChild, AWindowMayBeDestroyedWhileItIsShown) {
  auto gone = std::make_unique<PlainWindow>(desktop, ChildDesign("frmGone", {0, 0, 3000, 3000}));
  auto button = std::make_unique<Button>(*gone, "cmdGo", "Go");
  ShowDrawn(*gone);
  QPointer<QWidget> host = face.HostOf(*gone);
  button.reset();
  gone.reset();
  EXPECT_FALSE(host->isVisible());
  face.Draw();
  EXPECT_EQ(host, nullptr);
}

TEST_F(MainAndChild, HiddenCoveredAndIdleWindowsCostNoDrawing) {
  PlainWindow cover(desktop, ChildDesign("frmCover", {0, 0, 14000, 9000}));
  Label text{cover, "lblCover", "cover"};
  ShowDrawn(cover);
  face.Draw();
  face.Draw();
  const auto updates = face.Updates();
  const int refreshed = child.refreshed;
  label.SetText("while covered");
  face.Draw();
  EXPECT_EQ(face.Updates(), updates);
  EXPECT_EQ(child.refreshed, refreshed);

  child.Show();
  face.Draw();
  face.Draw();
  EXPECT_EQ(Find<QLabel>(label)->text(), "while covered");

  child.Hide();
  face.Draw();
  const auto hidden = face.Updates();
  label.SetText("while hidden");
  face.Draw();
  EXPECT_EQ(face.Updates(), hidden);
  child.Show();
  face.Draw();
  face.Draw();
  EXPECT_EQ(Find<QLabel>(label)->text(), "while hidden");
}

TEST_F(MainAndChild, TheWelcomeIsSeenOnlyWhereItSaysSomething) {
  Label hint{main, "lblHint", "Open something"};
  main.SetContent(Layout::Column({hint}));
  const auto seen = [&] {
    face.Draw();
    return face.WidgetOf(hint)->parentWidget()->isVisible();
  };
  EXPECT_FALSE(seen()) << "a child window stands there";
  child.Close();
  face.Draw();
  EXPECT_TRUE(seen());
  hint.SetVisible(false);
  EXPECT_FALSE(seen());
}

TEST_F(MainAndChild, ADialogHasTheKeyboardAndGetsItBackFromItsBoxes) {
  PlainWindow dialog(desktop, {.name = "frmDialog", .style = WindowStyle::Dialog});
  TextBox text{dialog, "txtOne"};
  Button ok{dialog, "cmdOk", "&OK", Button::Role::Default};
  Button cancel{dialog, "cmdCancel", "&Cancel", Button::Role::Cancel};
  std::string pressed;
  ok.onClick = [&] {
    pressed += "ok;";
    // The second comes before the desktop has given the input back.
    for (int box = 0; box < 2; ++box) {
      QTimer::singleShot(0, [&] {
        EXPECT_EQ(Box()->parentWidget(), face.HostOf(dialog));
        Answer(QMessageBox::Ok);
        main.Show();
        face.HostOf(main)->activateWindow();
      });
      desktop.Say("done");
    }
  };
  cancel.onClick = [&] {
    pressed += "cancel;";
    dialog.Close();
  };
  ShowDrawn(dialog);
  EXPECT_EQ(face.HostOf(dialog)->focusWidget(), face.WidgetOf(text));
  face.HostOf(dialog)->activateWindow();
  PumpUntil([&] { return face.HostOf(dialog)->isActiveWindow(); });
  QTest::keyClick(face.WidgetOf(text), Qt::Key_Return);
  QTest::keyClick(face.WidgetOf(text), Qt::Key_Escape);
  EXPECT_EQ(pressed, "ok;cancel;");
  EXPECT_FALSE(dialog.Loaded());
}

class LeavingAField : public QtFixture {
 public:
  PlainWindow window{desktop};
  TextBox first{window, "txtFirst"};
  TextBox second{window, "txtSecond"};
  CheckBox box{window, "chkOne", "One"};
  Button cancel{window, "cmdCancel", "Cancel", Button::Role::Cancel};
  int asked = 0;
  bool allowed = false;

  void SetUp() override {
    first.onLeave = [this] {
      ++asked;
      return allowed;
    };
    ShowDrawn(window);
    face.HostOf(window)->activateWindow();
    PumpUntil([&] { return face.HostOf(window)->isActiveWindow(); });
    QTest::mouseClick(face.WidgetOf(first), Qt::LeftButton);
    ASSERT_EQ(window.Focus(), &first);
  }
};

TEST_F(LeavingAField, RefusedItKeepsTheFocusAndTheClickDoesNotHappen) {
  QTest::mouseClick(face.WidgetOf(box), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(box.Checked());
  EXPECT_EQ(window.Focus(), &first);
  EXPECT_TRUE(face.WidgetOf(first)->hasFocus());
  QTest::keyClick(face.WidgetOf(first), Qt::Key_Tab);
  EXPECT_EQ(asked, 2);
  PumpUntil([&] { return face.WidgetOf(first)->hasFocus(); });
}

TEST_F(LeavingAField, CancelNeverAsks) {
  bool cancelled = false;
  cancel.onClick = [&] { cancelled = true; };
  QTest::mouseClick(face.WidgetOf(cancel), Qt::LeftButton);
  EXPECT_EQ(asked, 0);
  EXPECT_TRUE(cancelled);
}

TEST_F(WindowViews, BoxesStandWithinBoxesWhileTimersAndTasksGoOn) {
  class Counting : public Task {
   public:
    int slices = 0;
    bool RunSlice(std::chrono::steady_clock::time_point) override {
      ++slices;
      return false;
    }
  } task;
  desktop.Start(task);
  PlainWindow window(desktop);
  Timer timer(window, "Timer1", 1, true);
  int stage = 0;
  fathomline::Answer inner = fathomline::Answer::Ok;
  timer.onTick = [&] {
    timer.SetEnabled(false);
    stage = 1;
    inner = desktop.Ask({.text = "inner", .buttons = BoxButtons::YesNo, .defaultNo = true});
    stage = 2;
  };
  QTimer clicker;
  int before = 0;
  QObject::connect(&clicker, &QTimer::timeout, [&] {
    if (Box() == nullptr) return;
    if (stage == 1) {
      EXPECT_EQ(Box()->text(), "inner");
      if (before == 0) {
        before = task.slices;
      } else if (task.slices > before + 2) {
        QTest::keyClick(Box(), Qt::Key_Return);
      }
    } else if (stage == 2) {
      Answer(QMessageBox::Ok);
    }
  });
  clicker.start(5);
  window.Show();
  desktop.Ask({.text = "outer"});
  EXPECT_EQ(stage, 2);
  EXPECT_EQ(inner, fathomline::Answer::No);
}

TEST_F(WindowViews, ASilencedBoxDoesNotComeAgain) {
  const MessageBox box{.text = "again", .title = "T", .canBeSilenced = true, .kind = "k"};
  QTimer::singleShot(0, [] {
    Box()->checkBox()->setChecked(true);
    Answer(QMessageBox::Ok);
  });
  desktop.Ask(box);
  EXPECT_EQ(desktop.Ask(box), fathomline::Answer::Ok);
}

TEST_F(WindowViews, AModalWindowAloneTakesInput) {
  PlainWindow dialog(desktop, {.name = "frmDialog", .style = WindowStyle::Dialog});
  Button ok{dialog, "cmdOk", "OK", Button::Role::Default};
  ok.onClick = [&] { dialog.Close(); };
  QTimer clicker;
  bool modal = false;
  QObject::connect(&clicker, &QTimer::timeout, [&] {
    QWidget* const host = face.HostOf(dialog);
    if (host == nullptr || !host->isVisible()) return;
    modal = QApplication::activeModalWidget() == host;
    QTest::mouseClick(face.WidgetOf(ok), Qt::LeftButton);
  });
  clicker.start(5);
  desktop.ShowModal(dialog);
  EXPECT_TRUE(modal);
  EXPECT_FALSE(dialog.Loaded());
}

}  // namespace
}  // namespace fathomline
