// Whole sessions as a user has them: by menu, tool bar, dialog and message box.
#include <QLabel>
#include <QListWidget>
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

constexpr const char* kModeQuestion =
    "Are you sure you want to change mode ? All statistics and timeseries wil be reset.";

class SessionOnTheDesktop : public ProgramFixture {
 public:
  // Writes the setup file that the next start finds.
  void Prepare(const std::function<void(Records&)>& fill) {
    Records records;
    records.SetDefaultSetup();
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].Name = "Fore & aft";
    records.MessagesToAnalyse[1] = {"GGA", "GSV", "HDT", "TTM", "VDM"};
    fill(records);
    folder.Write(kSetupFileName, WriteSetup(records));
  }

  void StartPrepared(const std::function<void(Records&)>& fill = [](Records&) {}) {
    Prepare(fill);
    EXPECT_THAT(Start(), ElementsAre());
  }
  void StartWithStatistics() {
    StartPrepared([](Records& records) { records.SystemSetups[1][WindowFlag::Statistics] = true; });
  }

  void Receive(std::string_view body) {
    program().engine.pipeline.ProcessSentence(1, Sentence(body));
  }
  auto Headings() { return program().engine.statistics[1].Of<HDTRecord>()[0].Stat.Count; }

  // The child windows that can be seen, with their places.
  std::map<std::string, WindowPlace> SeenPlaces() {
    std::map<std::string, WindowPlace> places;
    for (const Window* const window : program().desktop.Windows()) {
      if (window->Style() != WindowStyle::Dialog && Seen(*window)) {
        places.emplace(window->FullName(), window->Place());
      }
    }
    return places;
  }
};

TEST_F(SessionOnTheDesktop, AChangeOfModeIsAskedForAndFollowsTheAnswer) {
  StartWithStatistics();
  Receive("HEHDT,10.5,T");
  const auto change = [&](QMessageBox::StandardButton button, const MenuItem& item) {
    EXPECT_THAT(Answering(button, [&] { Choose(item); }), ElementsAre(kModeQuestion));
  };
  const auto expectMode = [&](bool offline) {
    EXPECT_EQ(records().Offline(), offline);
    EXPECT_EQ(Entry(program().windows.main.mnuModeOffline)->isChecked(), offline);
    EXPECT_EQ(Entry(program().windows.main.mnuModeOnline)->isChecked(), !offline);
    EXPECT_EQ(face().WidgetOf(program().windows.main.tbOffline)->isVisible(), offline);
    EXPECT_EQ(face().WidgetOf(program().windows.main.tbOnline)->isVisible(), !offline);
    EXPECT_EQ(Seen(program().windows.offlineStatus), offline);
  };
  expectMode(false);
  change(QMessageBox::No, program().windows.main.mnuModeOffline);
  expectMode(false);
  EXPECT_EQ(Headings(), 1);
  change(QMessageBox::Yes, program().windows.main.mnuModeOffline);
  expectMode(true);
  EXPECT_EQ(Headings(), 0);
  change(QMessageBox::Yes, program().windows.main.mnuModeOnline);
  expectMode(false);
  // The mode in force is not asked for.
  EXPECT_THAT(Answering(QMessageBox::Yes, [&] { Choose(program().windows.main.mnuModeOnline); }),
              ElementsAre());
  expectMode(false);
}

TEST_F(SessionOnTheDesktop, AReplayIsSteppedPausedContinuedAndStopped) {
  std::string text;
  for (int i = 0; i < 40000; ++i) text += Sentence("HEHDT,10.5,T") + "\r\n";
  const std::string file = folder.Write("run.log", text);
  StartPrepared([&](Records& records) {
    records.Mode = kOffline;
    records.CommSetups[1].OfflineFile = file;
    records.SystemSetups[1][WindowFlag::Statistics] = true;
  });
  const auto expectHeld = [&] {
    const auto before = Headings();
    for (int turn = 0; turn < 10; ++turn) face().Turn();
    EXPECT_EQ(Headings(), before);
  };
  const auto status = [&] {
    // What is covered is not written.
    program().windows.offlineStatus.Show();
    Draw();
    return FromQt(Find<QLabel>(program().windows.offlineStatus.lblStatus)->text());
  };
  for (int line = 1; line <= 3; ++line) {
    Press("Step");
    PumpUntil([&] { return Headings() == line; });
    expectHeld();
  }
  Press("CONT");
  PumpUntil([&] { return Headings() > 3; });
  Press("PAUSE");
  EXPECT_TRUE(records().OfflineRunning) << "the file is too short for this machine";
  EXPECT_EQ(status(), "PROCESSING PAUSED");
  expectHeld();
  EXPECT_FALSE(Key("PAUSE")->isEnabled());
  EXPECT_TRUE(Key("CONT")->isEnabled());
  const auto paused = Headings();
  Press("Step");
  PumpUntil([&] { return Headings() == paused + 1; });
  EXPECT_THAT(Answering(QMessageBox::Yes, [&] { Press("STOP"); }), ElementsAre("Are you sure?"));
  PumpUntil([&] { return !records().OfflineRunning; });
  EXPECT_EQ(status(), "PROCESSING STOPPED");
  EXPECT_FALSE(Key("STOP")->isEnabled());
  EXPECT_EQ(Headings(), paused + 1);
  Press("PLAY");
  PumpUntil([&] { return !records().OfflineRunning; });
  EXPECT_EQ(status(), "END OF FILE REACHED");
  EXPECT_EQ(Headings(), 40000);
}

TEST_F(SessionOnTheDesktop, EveryViewIsOpenedByTheDialogAndClosedByItsCloseBox) {
  StartPrepared();
  const std::vector<const char*> names{"frmNumerics-1",
                                       "frmStatistics-1",
                                       "frmTimeSeriesGGA-1",
                                       "frmScatter-1",
                                       "frmSkyplot-1",
                                       "frmARPATargets-1",
                                       "frmNMEA-1",
                                       "frmAISTargets-1",
                                       "frmTimeSeriesSNR-1-1",
                                       "frmTimeSeriesSNR-1-2",
                                       "frmTimeSeriesSNR-1-3",
                                       "frmTimeSeriesSNR-1-4",
                                       "frmTimeSeriesSNR-1-5"};
  for (std::size_t row = 0; row < names.size(); ++row) {
    SCOPED_TRACE(names[row]);
    Choose(program().windows.main.mnuWindowNewWindow);
    Draw();
    auto* const list = Find<QListWidget>(program().windows.newWindow.cmbType);
    ASSERT_EQ(list->count(), static_cast<int>(names.size()));
    auto* const item = list->item(static_cast<int>(row));
    list->scrollToItem(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    QTest::mouseClick(face().WidgetOf(program().windows.newWindow.cmdOk), Qt::LeftButton);
    Draw();
    EXPECT_FALSE(program().windows.newWindow.Loaded());
    EXPECT_TRUE(SeenPlaces().contains(names[row]));

    const bool asks = std::string_view(names[row]).starts_with("frmTimeSeriesSNR");
    std::size_t asked = 0;
    for (Window* const window : program().desktop.Windows()) {
      if (window->Style() != WindowStyle::Child || !Seen(*window)) continue;
      asked += Answering(QMessageBox::Yes, [&] { face().HostOf(*window)->close(); }).size();
      EXPECT_FALSE(window->Visible()) << window->FullName();
      EXPECT_FALSE(Seen(*window)) << window->FullName();
    }
    EXPECT_EQ(asked, asks ? 1U : 0U);
  }
}

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
  StartWithStatistics();
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

TEST_F(SessionOnTheDesktop, EveryDialogCanBeShownOnItsOwnAndAccepted) {
  StartPrepared();
  const std::vector<Window*> windows = program().desktop.Windows();
  int shown = 0;
  for (Window* const window : windows) {
    if (window->Style() != WindowStyle::Dialog || window == &program().session.setupDialog)
      continue;
    SCOPED_TRACE(window->FullName());
    ++shown;
    window->Show();
    Draw();
    EXPECT_TRUE(Seen(*window));
    Answering(QMessageBox::Ok, [&] {
      QTest::keyClick(face().HostOf(*window), Qt::Key_Return);
      if (window->Loaded()) face().HostOf(*window)->close();
    });
    EXPECT_FALSE(window->Loaded());
  }
  EXPECT_GE(shown, 8);
}

TEST_F(SessionOnTheDesktop, AnAmpersandOfANameIsNoMnemonic) {
  StartPrepared();
  EXPECT_EQ(FromQt(Entry(program().windows.main.mnuSetupPrimarySystem)->text()),
            "&Primary System         - Fore && aft");
}

}  // namespace
}  // namespace fathomline
