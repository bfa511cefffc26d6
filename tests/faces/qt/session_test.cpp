// Sessions as a user has them: what the desktop adds to them.
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

#include "faces/qt/program_fixture.h"
#include "support/headless_links.h"
#include "support/sentences.h"

namespace fathomline {
namespace {

using testing::ElementsAre;

class SessionOnTheDesktop : public ProgramFixture {
 public:
  // Writes the setup file that the next start finds.
  void Prepare(const std::function<void(Records&)>& fill) {
    Records records;
    records.SetDefaultSetup();
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].Name = "Fore & aft";
    records.MessagesToAnalyse[1] = {"GGA", "GSV", "HDT"};
    fill(records);
    folder.Write(kSetupFileName, WriteSetup(records));
  }

  void StartPrepared(const std::function<void(Records&)>& fill = [](Records&) {}) {
    Prepare(fill);
    EXPECT_THAT(Start(), ElementsAre());
  }

  // The child windows that can be seen, with their places.
  std::map<std::string, WindowPlace> SeenPlaces() {
    std::map<std::string, WindowPlace> places;
    for (const Window* const window : program().desktop.Windows()) {
      if (window->Style() != WindowStyle::Dialog && Seen(*window)) {
        places.emplace(window->FullName(), ToTwips(face().HostOf(*window)->geometry()));
      }
    }
    return places;
  }
};

TEST_F(SessionOnTheDesktop, ARestartRestoresTheWindowsAndTheirPlaces) {
  StartPrepared([](Records& records) {
    for (const WindowFlag flag :
         {WindowFlag::Numerics, WindowFlag::Statistics, WindowFlag::Scatter, WindowFlag::Skyplot}) {
      records.SystemSetups[1][flag] = true;
    }
  });
  std::map<std::string, WindowPlace> places;
  int step = 0;
  for (Window* const window : program().desktop.Windows()) {
    if (window->Style() != WindowStyle::Child || !Seen(*window)) continue;
    ++step;
    const QRect place(11 * step, 13 * step, 400 + 7 * step, 300 + 5 * step);
    face().HostOf(*window)->setGeometry(place);
    places.emplace(window->FullName(), ToTwips(place));
  }
  const QRect mainPlace(40, 30, 700, 520);
  Main()->setGeometry(mainPlace);
  places.emplace("frmMain", ToTwips(mainPlace));
  Draw();
  EXPECT_GE(step, 4);
  EXPECT_EQ(SeenPlaces(), places);

  Main()->close();
  PumpUntil([&] { return program().desktop.Quitting(); });
  EXPECT_FALSE(program().windows.main.Loaded());
  Start();
  EXPECT_EQ(SeenPlaces(), places);
}

TEST_F(SessionOnTheDesktop, AResetLeavesTheViewsAsTheyStand) {
  StartPrepared([](Records& records) {
    records.MessagesToAnalyse[1] = {"GGA", "GSV", "HDT", "VDM"};
    for (const WindowFlag flag : {WindowFlag::Numerics, WindowFlag::Statistics, WindowFlag::Skyplot,
                                  WindowFlag::AISTargets}) {
      records.SystemSetups[1][flag] = true;
    }
  });
  program().windows.OpenView(ViewKind::TimeSeries, 1);
  Main()->setGeometry(40, 30, 700, 520);
  Draw();
  auto* const area = Main()->findChild<QMdiArea*>();
  program().desktop.Arrange(Arrangement::TileHorizontally);
  program().windows.numerics[1]->Show();
  Draw();
  const auto stack = [&] {
    std::vector<std::string> names;
    for (const QMdiSubWindow* const child : area->subWindowList(QMdiArea::StackingOrder)) {
      if (child->isVisible()) names.push_back(FromQt(child->objectName()));
    }
    return names;
  };
  const auto reset = [this] { Answering(QMessageBox::Yes, [this] { Press("RESET ALL"); }); };
  const auto places = SeenPlaces();
  EXPECT_LT(places.at("frmSkyplot-1").height, 240 * kTwipsPerPixel);
  const std::vector<std::string> order = stack();
  reset();
  EXPECT_EQ(SeenPlaces(), places);
  EXPECT_EQ(stack(), order);

  face().HostOf(*program().windows.numerics[1])->showMaximized();
  Draw();
  reset();
  const QWidget* const front = face().HostOf(*program().windows.numerics[1]);
  EXPECT_TRUE(front->isMaximized());
  EXPECT_EQ(area->activeSubWindow(), front);
  EXPECT_EQ(stack(), order);
}

TEST_F(SessionOnTheDesktop, AViewThatNobodyHasPlacedOpensWithinTheRoom) {
  StartPrepared();
  Main()->setGeometry(40, 30, 900, 640);
  Draw();
  const QRect room = Main()->findChild<QMdiArea*>()->viewport()->rect();
  for (const ViewKind kind : {ViewKind::NMEA, ViewKind::Numerics, ViewKind::Statistics}) {
    program().windows.OpenView(kind, 1);
  }
  Draw();
  const frmNMEA& monitor = *program().windows.monitors[1];
  EXPECT_FALSE(room.contains(ToPixels(monitor.DesignPlace())));
  for (const Window* const view : program().desktop.ShownChildren()) {
    EXPECT_TRUE(room.contains(face().HostOf(*view)->geometry())) << view->FullName();
  }
  // Where its user wants it, some of it may stand outside.
  const QRect chosen(300, 400, 500, 300);
  face().HostOf(monitor)->setGeometry(chosen);
  program().windows.monitors[1]->Close();
  Draw();
  program().windows.OpenView(ViewKind::NMEA, 1);
  Draw();
  EXPECT_EQ(face().HostOf(monitor)->geometry(), chosen);
}

// As in a tick that has time for the main window only.
TEST_F(SessionOnTheDesktop, EndsWithViewsWhoseWidgetsWentWithTheMainWindow) {
  StartPrepared([](Records& records) {
    for (const WindowFlag flag : {WindowFlag::Numerics, WindowFlag::Statistics}) {
      records.SystemSetups[1][flag] = true;
    }
  });
  EXPECT_EQ(SeenPlaces().count("frmStatistics-1"), 1U);
  program().session.startUp.EndAtOnce();
  delete Main();
  run.reset();
}

TEST_F(SessionOnTheDesktop, ViewsStandInTheMainWindowWhateverHappensAtTheStart) {
  HeadlessLinks own;
  own.WinsockUDP(3).refusal = "Address in use";
  links = &own;
  Prepare([](Records& records) {
    for (CommSetup& setup : records.CommSetups) {
      setup.Enabled = setup.UseUDP = true;
      setup.UseTCPIP = false;
    }
    for (SystemSetup& flags : records.SystemSetups) flags[WindowFlag::Statistics] = true;
  });
  run = std::make_unique<Run>(clock, settings, links);
  // The user is slow to answer.
  int looks = 0;
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || ++looks < 20) return;
    EXPECT_TRUE(box->text().contains("Address in use"));
    for (const QWidget* const widget : QApplication::topLevelWidgets()) {
      EXPECT_TRUE(!widget->isVisible() || widget == box) << FromQt(widget->objectName());
    }
    box->accept();
  });
  user.start(10);
  EXPECT_TRUE(program().session.startUp.Start({.programFolder = folder.Path()}));
  Draw();
  EXPECT_EQ(looks, 20);
  EXPECT_TRUE(Main()->isVisible());
  for (int system = 1; system <= kSystems; ++system) {
    auto* const view =
        qobject_cast<QMdiSubWindow*>(face().HostOf(*program().windows.statistics[system]));
    ASSERT_NE(view, nullptr) << system;
    EXPECT_EQ(view->mdiArea(), face().ChildArea());
  }
  run.reset();
}

TEST_F(SessionOnTheDesktop, AMonitorClickedToTheFrontIsFedAgain) {
  StartPrepared([](Records& records) { records.SystemSetups[1][WindowFlag::Statistics] = true; });
  program().windows.OpenView(ViewKind::NMEA, 1);
  program().windows.statistics[1]->Show();
  Draw();
  Answering(QMessageBox::Ok, [&] { Choose(program().windows.main.mnuFileSave); });
  bool& fed = records().SystemSetups[1][WindowFlag::NMEA];
  EXPECT_FALSE(fed);
  auto* const area = Main()->findChild<QMdiArea*>();
  auto* const monitor = qobject_cast<QMdiSubWindow*>(face().HostOf(*program().windows.monitors[1]));
  EXPECT_NE(area->activeSubWindow(), monitor);
  Main()->activateWindow();
  PumpUntil([&] { return Main()->isActiveWindow(); });
  QTest::mouseClick(monitor->widget(), Qt::LeftButton, {}, {5, 5});
  Draw();
  EXPECT_EQ(area->activeSubWindow(), monitor);
  EXPECT_TRUE(fed);
}

TEST_F(SessionOnTheDesktop, AFirstStartTellsWhatToDoNext) {
  EXPECT_THAT(Start(), ElementsAre(testing::StartsWith("No setupfile exist.")));
  const QWidget* const hint = face().WidgetOf(program().windows.main.lblHint);
  const QWidget* const viewport = Main()->findChild<QMdiArea*>()->viewport();
  ASSERT_TRUE(hint->isVisible());
  const QRect place(hint->mapTo(Main(), QPoint()), hint->size());
  const QRect room(viewport->mapTo(Main(), QPoint()), viewport->size());
  EXPECT_TRUE(room.contains(place));
  EXPECT_NEAR(place.center().x(), room.center().x(), 10);
  EXPECT_EQ(hint->visibleRegion().boundingRect().size(), hint->size());
}

TEST_F(SessionOnTheDesktop, AnAmpersandOfANameIsNoMnemonic) {
  StartPrepared();
  EXPECT_EQ(FromQt(Entry(program().windows.main.mnuSetupPrimarySystem)->text()),
            "&Primary System         - Fore && aft");
}

}  // namespace
}  // namespace fathomline
