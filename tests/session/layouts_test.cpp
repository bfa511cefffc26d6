#include "session/layouts.h"

#include <gmock/gmock.h>
#include <set>

#include "support/places.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct Arrangements : ::testing::Test, Session {
  Arrangements() {
    Prepare([](Records& records) {
      records.Mode = kOffline;
      records.MessagesToAnalyse[1] = {"GGA", "GSV"};
    });
    EXPECT_TRUE(Start());
  }

  void Restart() {
    mainWindow().UserClose();
    EXPECT_TRUE(Start());
  }
  Windows& windows() { return program->windows; }
  frmLayouts& dialog() { return program->session.layouts.dialog; }
  void InDialog(const std::string& name, Button& button) {
    mainWindow().mnuWindowLayouts.Click();
    dialog().txtName.UserText(name);
    button.Click();
  }
};

TEST_F(Arrangements, AreSavedAndLoadedByName) {
  constexpr WindowPlace kPlace{300, 450, 6000, 4500};
  frmTimeSeries& chart = windows().charts.TimeSeriesOf(1, SentenceType::GGA);
  windows().charts.OpenSatellite(1, 7);
  windows().statistics[1]->ShowView();
  windows().statistics[1]->SetState(WindowState::Minimised);
  program->session.tools.sources.Show();
  chart.ShowView();
  chart.UserPlace(kPlace);
  InDialog("  Bridge ", dialog().cmdSave);
  EXPECT_FALSE(dialog().Visible());

  // Another one, for which what the first one has is put away.
  chart.UserClose();
  windows().monitors[1]->ShowView();
  windows().statistics[1]->UserClose();
  program->session.tools.sources.UserClose();
  InDialog("Raw", dialog().cmdSave);
  InDialog("", dialog().cmdCancel);
  EXPECT_THAT(program->session.layouts.LayoutNames(), ElementsAre("Bridge", "Raw"));
  EXPECT_THAT(settings.Get("Layouts", "Layout2", ""), StartsWith("Raw\n"));

  chart.TChart(0).Series(0).Add(1.0, 2.0);
  const auto expectBridge = [&] {
    EXPECT_THAT(Views(), ElementsAre("frmTimeSeriesGSV_SVbySV-1-7", "frmStatistics-1",
                                     "frmTimeSeriesGGA-1"));
    EXPECT_TRUE(program->session.tools.sources.Visible());
    EXPECT_EQ(windows().statistics[1]->State(), WindowState::Minimised);
    EXPECT_EQ(windows().charts.TimeSeriesOf(1, SentenceType::GGA).Place(), kPlace);
  };
  for (int times = 0; times < 2; ++times) {
    InDialog("Bridge", dialog().cmdLoad);
    expectBridge();
    program->desktop.Raise(*windows().statistics[1]);
  }
  InDialog("Raw", dialog().cmdLoad);
  EXPECT_THAT(Views(), ElementsAre("frmTimeSeriesGSV_SVbySV-1-7", "frmNMEA-1"));
  EXPECT_FALSE(program->session.tools.sources.Visible());
  EXPECT_EQ(chart.TChart(0).Series(0).Count(), 1) << "a chart that is put away goes on plotting";
  EXPECT_FALSE(Flags(1)[WindowFlag::TimeSeriesGGA]);

  Restart();
  InDialog("Bridge", dialog().cmdLoad);
  expectBridge();
  // A replaced and a deleted one.
  windows().statistics[1]->UserClose();
  face.ExpectBox("There is a layout \"Bridge\". Replace it?", Answer::Yes);
  InDialog("Bridge", dialog().cmdSave);
  face.ExpectBox("Delete the layout \"Raw\"?", Answer::Yes);
  InDialog("Raw", dialog().cmdDelete);
  EXPECT_EQ(dialog().lstLayouts.Count(), 1);
  dialog().cmdCancel.Click();
  face.ExpectBox("Choose one of the layouts in the list.");
  InDialog("Raw", dialog().cmdLoad);
  dialog().cmdCancel.Click();

  // What is analysed no longer stays closed, and is told.
  records().CommSetups[1].AnalyseGSV = false;
  for (Window* const window : program->desktop.ShownChildren()) window->Close();
  face.Expect({});
  InDialog("Bridge", dialog().cmdLoad);
  EXPECT_THAT(face.Boxes().back().text,
              testing::AllOf(testing::StartsWith("These windows stay closed, since the setup "
                                                 "analyses nothing that they show:\r\n\r\n"),
                             HasSubstr("\r\nPRN 07 Time Series 1")));
  EXPECT_THAT(Views(), ElementsAre("frmTimeSeriesGGA-1"));
}

// The setup brings back numerics by itself; the option all the others too.
TEST_F(Arrangements, OfTheLastSessionComeBackIfTheUserWants) {
  const auto leave = [&] {
    program->session.tools.sources.Show();
    windows().monitors[1]->ShowView();
    windows().charts.OpenScatter(1);
    windows().numerics[1]->ShowView();
    windows().monitors[1]->UserPlace({600, 700, 5000, 4000});
    Restart();
  };
  leave();
  EXPECT_THAT(Views(), ElementsAre("frmNumerics-1"));
  EXPECT_FALSE(mainWindow().mnuOptionsReopen.Checked());
  mainWindow().mnuOptionsReopen.Click();
  EXPECT_TRUE(mainWindow().mnuOptionsReopen.Checked());
  EXPECT_EQ(settings.Get("Settings", "ReopenWindows", ""), "1");
  leave();
  EXPECT_TRUE(mainWindow().mnuOptionsReopen.Checked());
  EXPECT_THAT(Views(), ElementsAre("frmNMEA-1", "frmScatter-1", "frmNumerics-1"));
  EXPECT_TRUE(program->session.tools.sources.Visible());
  EXPECT_EQ(windows().monitors[1]->Place(), (WindowPlace{600, 700, 5000, 4000}));

  // A recording named at the start comes without them, and keeps them for the next time, whether it
  // is opened or not.
  const std::string recording = kSourceFolder + "/samples/voyage.log";
  mainWindow().UserClose();
  ASSERT_TRUE(Start({.setupFile = recording}));
  frmOpenRecording& offer = program->session.recordings.dialog;
  EXPECT_THAT(Views(), IsEmpty());
  EXPECT_FALSE(program->session.tools.sources.Visible());
  EXPECT_TRUE(mainWindow().mnuOptionsReopen.Checked());
  program->desktop.RunUntil([&] { return !offer.prgRead.Visible(); });
  offer.cmdOk.Click();
  EXPECT_FALSE(program->session.tools.sources.Visible());
  mainWindow().UserClose();
  ASSERT_TRUE(Start({.setupFile = recording}));
  program->session.recordings.dialog.cmdCancel.Click();
  EXPECT_THAT(Views(), ElementsAre("frmNMEA-1", "frmScatter-1", "frmNumerics-1"));
  Restart();
  EXPECT_THAT(Views(), ElementsAre("frmNMEA-1", "frmScatter-1", "frmNumerics-1"));
  EXPECT_TRUE(program->session.tools.sources.Visible());

  // Lines that somebody has spoilt are passed over.
  settings.Set("Layouts", "LastSession",
               "frmScatter-1,1,2,9,9,0\nfrmNMEA-1,1,2\nfrmNMEA-1,x,2,900,900,0\nfrmNMEA-1,1,2,0,"
               "900,0\nfrmNMEA-1,1,2,900,0,0\nfrmNMEA-1,1,2,900,900,-1\nfrmNMEA-1,1,2,900,900,3\n"
               "frmNMEA-9,0,0,900,900,0\n,\nfrmNMEA-1,15,30,1,1,2,7\n"
               "frmTimeSeriesGSV_SVbySV-1-0,0,0,9,9,0\nfrmTimeSeriesGSV_SVbySV-1-x,0,0,9,9,0\n"
               "frmTimeSeriesGSV_SVbySV-x-7,0,0,9,9,0\nfrmTimeSeriesGSV_SVbySV-0-7,0,0,9,9,0\n"
               "frmTimeSeriesGSV_SVbySV-5-7,0,0,9,9,0");
  mainWindow().mnuOptionsReopen.Click();
  EXPECT_EQ(settings.Get("Settings", "ReopenWindows", ""), "0");
  mainWindow().UserClose();
  settings.Set("Settings", "ReopenWindows", 1);
  ASSERT_TRUE(Start());
  EXPECT_THAT(Views(), ElementsAre("frmNumerics-1", "frmNMEA-1"));
  EXPECT_EQ(windows().monitors[1]->Place(), (WindowPlace{15, 30, 1, 1}));
  EXPECT_EQ(windows().monitors[1]->State(), WindowState::Maximised);
}

TEST_F(Arrangements, AClosedWindowIsBroughtBackWhereItStood) {
  MenuItem& reopen = mainWindow().mnuWindowReopen;
  EXPECT_FALSE(reopen.Enabled());
  windows().monitors[1]->ShowView();
  windows().monitors[1]->UserPlace({450, 300, 6000, 3000});
  windows().numerics[1]->ShowView();
  frmTimeSeries& chart = windows().charts.TimeSeriesOf(1, SentenceType::GGA);
  chart.ShowView();
  windows().monitors[1]->SetState(WindowState::Maximised);
  windows().monitors[1]->UserClose();
  windows().numerics[1]->UserClose();
  chart.UserClose();
  EXPECT_THAT(Views(), IsEmpty());

  reopen.Click();
  EXPECT_THAT(Views(), ElementsAre("frmTimeSeriesGGA-1"));
  EXPECT_TRUE(Flags(1)[WindowFlag::TimeSeriesGGA]);
  windows().numerics[1]->ShowView();  // by another way
  reopen.Click();
  EXPECT_THAT(Views(), ElementsAre("frmTimeSeriesGGA-1", "frmNumerics-1", "frmNMEA-1"));
  EXPECT_EQ(windows().monitors[1]->Place(), (WindowPlace{450, 300, 6000, 3000}));
  EXPECT_EQ(windows().monitors[1]->State(), WindowState::Maximised);
  EXPECT_FALSE(reopen.Enabled());

  // No more than so many are remembered.
  for (int prn = 1; prn <= 22; ++prn) {
    windows().charts.OpenSatellite(1, prn);
    program->desktop.ShownChildren().back()->UserClose();
  }
  int reopened = 0;
  for (; reopen.Enabled(); ++reopened) reopen.Click();
  EXPECT_EQ(reopened, 20);
  for (int i = 0; i < reopened; ++i) program->desktop.ShownChildren().back()->Close();

  // From the back to the front, and round again.
  std::set<std::string> visited;
  for (int i = 0; i < 4; ++i) {  // the status of the replay is the fourth
    mainWindow().mnuWindowNext.Click();
    visited.insert(program->desktop.ShownChildren().back()->FullName());
  }
  EXPECT_EQ(visited.size(), 4U);
}

TEST_F(Arrangements, TheKeysOfTheReplayPressTheButtonsInUse) {
  records().CommSetups[1].OfflineFile = folder.Write("a.log", "\n\n\n");
  frmMain& menu = mainWindow();
  menu.mnuToolsPlay.Click();
  EXPECT_TRUE(records().OfflineRunning && !records().OfflinePaused);
  menu.mnuToolsPlay.Click();
  EXPECT_TRUE(records().OfflinePaused);
  menu.mnuToolsStep.Click();
  EXPECT_TRUE(records().OfflineStep);
  menu.mnuToolsPlay.Click();
  EXPECT_FALSE(records().OfflinePaused);
  face.ExpectBox("Are you sure?", Answer::Yes);
  menu.mnuToolsStop.Click();
  EXPECT_TRUE(records().OfflineStopped);

  face.ExpectBox(kModeQuestion, Answer::Yes);
  face.Expect({});  // no comport
  menu.mnuModeOnline.Click();
  menu.mnuToolsPlay.Click();
  EXPECT_TRUE(records().OnlinePaused);
  menu.mnuToolsPlay.Click();
  EXPECT_FALSE(records().OnlinePaused);
  menu.mnuToolsStop.Click();
}

}  // namespace
}  // namespace fathomline
