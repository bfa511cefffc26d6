// Every window of the program is drawn, fits, can be used by keyboard and by somebody who has it
// read out, and is let go again.
#include <QAbstractButton>
#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolBar>
#include <map>
#include <set>
#include <vector>

#include "faces/qt/conversions.h"
#include "faces/qt/program_fixture.h"
#include "support/sentences.h"

namespace fathomline {
namespace {

class EveryWindow : public ProgramFixture {
 public:
  void SetUp() override {
    StartWithSample();
    program().windows.OpenAnalysed(1);
    for (const ViewKind kind : {ViewKind::Scatter, ViewKind::Skyplot, ViewKind::NMEA}) {
      program().windows.OpenView(kind, 1);
    }
    for (Window* const window : std::initializer_list<Window*>{
             &program().session.tools.sources, &program().session.tools.sentenceLog,
             &program().session.tools.satellites}) {
      window->Show();
    }
    program().session.setupDialog.Open(1);
    for (Window* const window : program().desktop.Windows()) {
      if (window->Style() == WindowStyle::Dialog && !window->Loaded()) window->Show();
    }
    Draw();
  }

  // Calls for each window but the main one, in which the others stand, and for each of its pages.
  void ForEachPage(const std::function<void(const Window&, QWidget& host)>& look) {
    int seen = 0;
    for (Window* const window : program().desktop.Windows()) {
      if (!window->Visible() || window->Style() == WindowStyle::Main) continue;
      QWidget* const host = face().HostOf(*window);
      ASSERT_NE(host, nullptr) << window->FullName();
      ++seen;
      auto* const tabs = host->findChild<QTabWidget*>();
      for (int page = 0; page < (tabs == nullptr ? 1 : tabs->count()); ++page) {
        if (tabs != nullptr) tabs->setCurrentIndex(page);
        SCOPED_TRACE(window->FullName() + ", page " + std::to_string(page));
        look(*window, *host);
      }
    }
    EXPECT_GT(seen, 25);
  }
};

// What Qt makes within a control, such as the field of a combo box, is a part of that.
bool IsControl(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && widget.isVisible() &&
         !widget.objectName().startsWith(QLatin1String("qt_")) &&
         qobject_cast<QComboBox*>(widget.parentWidget()) == nullptr &&
         qobject_cast<const QTabBar*>(&widget) == nullptr;
}

template <class Widget>
std::vector<Widget*> Visible(const QWidget& host) {
  std::vector<Widget*> widgets;
  for (auto* const widget : host.findChildren<Widget*>()) {
    if (widget->isVisible()) widgets.push_back(widget);
  }
  return widgets;
}

TEST_F(EveryWindow, IsDrawnAndLetGoAgain) {
  const auto& windows = program().desktop.Windows();
  for (const Window* const window : windows) {
    if (!window->Visible()) continue;
    SCOPED_TRACE(window->FullName());
    QWidget* const host = face().HostOf(*window);
    std::set<QRgb> colours;
    const QImage image = host->grab().toImage();
    for (int y = 0; y < image.height(); y += 3) {
      for (int x = 0; x < image.width(); x += 3) colours.insert(image.pixel(x, y));
    }
    EXPECT_GT(colours.size(), 2U) << "blank";
    if (window->Style() == WindowStyle::Dialog) {
      EXPECT_LE(host->width(), 1280);
      EXPECT_LE(host->height(), 720);
    }
  }
  for (Window* const window : windows) {
    if (window->Style() == WindowStyle::Main) continue;
    if (window->Visible() && !window->Close()) ADD_FAILURE() << window->FullName();
  }
  Draw();
  for (const Window* const window : windows) {
    EXPECT_EQ(face().HostOf(*window) != nullptr, window->Loaded()) << window->FullName();
  }
}

TEST_F(EveryWindow, FitsIntoTheAreaWhenTiled) {
  auto* const area = Main()->findChild<QMdiArea*>();
  for (const Arrangement arrangement :
       {Arrangement::TileHorizontally, Arrangement::Cascade, Arrangement::TileVertically}) {
    program().desktop.Arrange(arrangement);
    Draw();
    Draw();
    for (const QScrollBar* const bar : {area->horizontalScrollBar(), area->verticalScrollBar()}) {
      EXPECT_FALSE(bar->isVisible()) << static_cast<int>(arrangement);
    }
    for (const QMdiSubWindow* const child : area->subWindowList()) {
      if (!child->isVisible()) continue;
      EXPECT_TRUE(area->viewport()->rect().contains(child->geometry()))
          << FromQt(child->objectName()) << " " << child->x() << " " << child->y() << " "
          << child->width() << " " << child->height();
    }
  }
}

// However small the screen is. What is as large as its content has nothing to scroll.
TEST_F(EveryWindow, KeepsTheButtonsOfADialogInSight) {
  ForEachPage([this](const Window& window, QWidget& host) {
    if (window.Style() != WindowStyle::Dialog) return;
    if (window.Resizable()) host.resize(320, 160);
    QCoreApplication::processEvents();
    const auto* const scroll = host.findChild<QScrollArea*>();
    for (const QScrollBar* const bar :
         {scroll->horizontalScrollBar(), scroll->verticalScrollBar()}) {
      EXPECT_TRUE(window.Resizable() || !bar->isVisible());
    }
    for (const Control* const control : window.Controls()) {
      if (control->Name() != "cmdOk" && control->Name() != "cmdCancel") continue;
      const QWidget* const button = face().WidgetOf(*control);
      EXPECT_EQ(button->visibleRegion().boundingRect().size(), button->size()) << control->Name();
    }
  });
}

TEST_F(EveryWindow, CopiesTheCellsOfItsGrids) {
  int grids = 0;
  ForEachPage([&](const Window&, QWidget& host) {
    for (auto* const table : Visible<QTableView>(host)) {
      const QAbstractItemModel& model = *table->model();
      if (model.rowCount() == 0 || model.columnCount() == 0) continue;
      ++grids;
      const QModelIndex last = model.index(model.rowCount() - 1, model.columnCount() - 1);
      QApplication::clipboard()->setText("nothing");
      table->setCurrentIndex(last);
      QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
      // Of a list, the row.
      const std::string copied = FromQt(QApplication::clipboard()->text());
      EXPECT_NE(copied, "nothing") << FromQt(table->objectName());
      EXPECT_TRUE(copied.ends_with(FromQt(last.data().toString())))
          << FromQt(table->objectName()) << ": " << copied;
    }
  });
  EXPECT_GT(grids, 8);
}

TEST_F(EveryWindow, TakesTheLookThatIsChosen) {
  constexpr double kMiddle = 0.5;
  const auto choose = [this](int choice) {
    Choose(program().windows.main.mnuOptionsLookChoice(choice));
    Draw();
    // The former menus go with the next turn of the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  const auto expect = [this](bool dark) {
    ForEachPage([dark](const Window&, QWidget& host) {
      const QColor mean =
          host.grab().toImage().scaled(1, 1, {}, Qt::SmoothTransformation).pixel(0, 0);
      EXPECT_EQ(mean.lightnessF() < kMiddle, dark) << mean.lightnessF();
    });
  };
  choose(2);
  expect(true);
  choose(1);
  expect(false);
}

TEST_F(EveryWindow, NamesItsControls) {
  ForEachPage([this](const Window& window, QWidget&) {
    for (const Control* const control : window.Controls()) {
      if (control->Kind() == ControlKind::MenuItem) continue;
      QWidget* const widget = face().WidgetOf(*control);
      if (widget == nullptr && control->Kind() == ControlKind::Frame) continue;
      ASSERT_NE(widget, nullptr) << control->Name();
      EXPECT_EQ(FromQt(widget->objectName()), control->Name());
      const std::string name =
          FromQt(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name));
      // A name for programmers tells nobody what to do with a control.
      EXPECT_NE(name, control->Name());
      EXPECT_TRUE(!name.empty() || !IsControl(*widget)) << control->Name();
    }
  });
}

// What leads somewhere when it is clicked does so by keys, and what is no more than a text does not
// stop anybody on the way.
TEST_F(EveryWindow, IsLedOnFromByKeys) {
  const auto walks = [](const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
  };
  frmSkyplot& sky = program().windows.charts.SkyplotOf(1);
  program().engine.pipeline.ProcessSentence(1, Sentence("GPGSV,1,1,02,07,45,120,38,21,10,300,"));
  Draw();
  face().DrawWhole(sky);
  for (const int row : {1, 2}) {
    EXPECT_TRUE(walks(*face().WidgetOf(sky.lblSv(row)))) << row;
    EXPECT_FALSE(walks(*face().WidgetOf(sky.lblSNR(row)))) << row;
  }
  EXPECT_FALSE(walks(*face().WidgetOf(sky.lblSv(3)))) << "no satellite stands there";
  QTest::keyClick(face().WidgetOf(sky.lblSv(2)), Qt::Key_Return);
  Draw();
  EXPECT_TRUE(Seen(program().windows.charts.SatelliteWindow(1, 21)));

  program().windows.main.onSecond();
  program().session.tools.sources.Close();
  Draw();
  auto* const mark = Main()->findChild<QLabel*>(QStringLiteral("sbStatusBar[14]"));
  ASSERT_NE(mark, nullptr);
  EXPECT_TRUE(walks(*mark));
  EXPECT_FALSE(mark->accessibleName().isEmpty());
  EXPECT_FALSE(walks(*Main()->findChild<QLabel*>(QStringLiteral("sbStatusBar[1]"))));
  QTest::keyClick(mark, Qt::Key_Space);
  Draw();
  EXPECT_TRUE(Seen(program().session.tools.sources));
}

TEST_F(EveryWindow, HasEachMnemonicOnce) {
  ForEachPage([](const Window&, QWidget& host) {
    std::map<QString, QString> used;
    const auto take = [&used](const QString& text) {
      const QString key = QKeySequence::mnemonic(text).toString();
      if (key.isEmpty()) return;
      const auto [other, fresh] = used.emplace(key, text);
      EXPECT_TRUE(fresh) << FromQt(key + ": " + text + ", " + other->second);
    };
    for (const auto* const button : Visible<QAbstractButton>(host)) take(button->text());
    for (const auto* const box : Visible<QGroupBox>(host)) take(box->title());
    for (const auto* const label : Visible<QLabel>(host)) {
      if (label->buddy() != nullptr) take(label->text());
    }
    for (const auto* const bar : Visible<QTabBar>(host)) {
      for (int i = 0; i < bar->count(); ++i) take(bar->tabText(i));
    }
  });
}

TEST_F(EveryWindow, IsWalkedByTabInReadingOrder) {
  ForEachPage([](const Window& window, QWidget& host) {
    EXPECT_TRUE(window.Style() != WindowStyle::Dialog || host.focusWidget() != nullptr);
    const QWidget* before = nullptr;
    QRect from;
    for (QWidget* widget = host.nextInFocusChain(); widget != &host;
         widget = widget->nextInFocusChain()) {
      if (!host.isAncestorOf(widget) || !IsControl(*widget)) continue;
      const QRect to(widget->mapTo(&host, QPoint()), widget->size());
      // On to the right, down, or up to the head of a further column.
      const bool up = to.bottom() < from.top();
      const bool across = to.left() > from.right();
      const bool back = !up && to.top() <= from.bottom() && to.right() < from.left();
      if (before != nullptr) {
        EXPECT_FALSE((up && !across) || back)
            << FromQt(before->objectName() + " -> " + widget->objectName());
      }
      before = widget;
      from = to;
    }
  });
}

// Somewhere within the windows around it; what has to be scrolled there, is.
bool CanBeReached(QWidget& widget) {
  // One that is stretched shows what it says.
  const QSize wanted = widget.sizeHint().boundedTo(widget.size());
  // What has been resized takes some turns until everything in it has its place.
  constexpr int kTurns = 20;
  for (int turn = 0; turn < kTurns; ++turn) {
    for (QWidget* around = widget.parentWidget(); around != nullptr;
         around = around->parentWidget()) {
      if (auto* const scroll = qobject_cast<QScrollArea*>(around)) {
        scroll->ensureWidgetVisible(&widget);
      }
    }
    QCoreApplication::processEvents();
    if (widget.visibleRegion().boundingRect().size().boundedTo(wanted) == wanted) return true;
  }
  return false;
}

TEST_F(EveryWindow, LeavesEveryButtonReachable) {
  // With what it has found, which is more than it opens with.
  frmOpenRecording& recording = program().session.recordings.dialog;
  program().session.recordings.Offer(kSourceFolder + "/samples/voyage.log");
  PumpUntil([&recording] { return !recording.prgRead.Visible(); });
  Draw();
  // A frame of the platform may stand out beyond the screen.
  constexpr int kFrame = 4;
  const QRect screen = Main()->screen()->availableGeometry().adjusted(0, 0, kFrame, kFrame);
  const auto expectButtons = [](const QWidget& host) {
    for (auto* const button : Visible<QAbstractButton>(host)) {
      // Within a table or a bar of tabs they come and go with those.
      const bool own = !button->objectName().isEmpty() && IsControl(*button);
      if (!own) continue;
      EXPECT_TRUE(CanBeReached(*button)) << FromQt(button->objectName()) << " shows "
                                         << button->visibleRegion().boundingRect().width() << " x "
                                         << button->visibleRegion().boundingRect().height()
                                         << " of " << button->width() << " x " << button->height();
    }
  };
  EXPECT_TRUE(screen.contains(Main()->geometry()))
      << Main()->geometry().x() << ", " << Main()->geometry().y() << ", " << Main()->width()
      << " x " << Main()->height() << " on " << screen.width() << " x " << screen.height();
  expectButtons(*Main()->findChild<QToolBar*>());
  for (const auto* const panel : Main()->findChild<QStatusBar*>()->findChildren<QLabel*>()) {
    if (!panel->isVisible() || !IsControl(*panel)) continue;
    EXPECT_TRUE(Main()->rect().contains(QRect(panel->mapTo(Main(), QPoint()), panel->size())))
        << FromQt(panel->objectName());
  }
  const auto* const area = Main()->findChild<QMdiArea*>();
  ForEachPage([&](const Window& window, QWidget& host) {
    if (window.Style() == WindowStyle::Dialog) {
      EXPECT_TRUE(screen.contains(host.geometry()))
          << host.x() << ", " << host.y() << ", " << host.width() << " x " << host.height();
    } else {
      // The area scrolls, and a window can be moved and made smaller in it.
      host.setGeometry(QRect(QPoint(), host.size().boundedTo(area->viewport()->size())));
      host.raise();
      QCoreApplication::processEvents();
    }
    Draw();
    expectButtons(host);
  });
}

// The same on the screen of a common notebook, with the scales and sizes of font that are used
// there. Scale and screen hold for a whole process.
struct SmallScreen {
  int scalePercent;
  int fontPercent;
};
class OnANotebook : public testing::TestWithParam<SmallScreen> {};

TEST_P(OnANotebook, EveryButtonIsReachable) {
  // The platform reads names of files in the characters of the present locale.
  const QTemporaryDir folder;
  QFile screen(folder.filePath(QStringLiteral("screen.json")));
  ASSERT_TRUE(screen.open(QIODevice::WriteOnly));
  screen.write(R"({"screens": [{"name": "notebook", "x": 0, "y": 0, "width": 1366, "height": 768,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1.0}]})");
  screen.close();
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("FATHOMLINE_TEST_PLATFORM", "offscreen:configfile=" + screen.fileName());
  environment.insert("FATHOMLINE_TEST_FONT", QString::number(GetParam().fontPercent));
  environment.insert("QT_SCALE_FACTOR", QString::number(GetParam().scalePercent / 100.0));
  QProcess child;
  child.setProcessEnvironment(environment);
  child.setProcessChannelMode(QProcess::MergedChannels);
  child.start(QCoreApplication::applicationFilePath(),
              {"--gtest_filter=EveryWindow.LeavesEveryButtonReachable"});
  constexpr int kMilliseconds = 110000;
  ASSERT_TRUE(child.waitForFinished(kMilliseconds));
  EXPECT_EQ(child.exitCode(), 0) << child.readAll().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Screens, OnANotebook,
                         testing::Values(SmallScreen{100, 100}, SmallScreen{150, 100},
                                         SmallScreen{200, 100}, SmallScreen{100, 150},
                                         SmallScreen{100, 200}),
                         [](const testing::TestParamInfo<SmallScreen>& tested) {
                           return "Scale" + std::to_string(tested.param.scalePercent) + "Font" +
                                  std::to_string(tested.param.fontPercent);
                         });

}  // namespace
}  // namespace fathomline
