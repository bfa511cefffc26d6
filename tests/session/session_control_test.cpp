#include <gmock/gmock.h>

#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;

struct ModeChange : ::testing::Test, Session {
  void StartIn(std::string_view mode) {
    Prepare([mode](Records& records) {
      records.Mode = mode;
      records.MessagesToAnalyse[1][0] = "GGA";
      records.CommSetups[1].ComPort = 10;
      records.Comport(10).System = 1;
      records.CommSetups[2].Enabled = true;
      records.CommSetups[2].ComPort = 11;
      records.Comport(11).System = 2;
      records.CommSetups[3].Enabled = true;
      records.CommSetups[3].UseTCPIP = true;
    });
    ASSERT_TRUE(Start());
  }
};

TEST_F(ModeChange, NoAndTheModeInForceChangeNothing) {
  StartIn(kOnline);
  mainWindow().mnuModeOnline.Click();
  face.ExpectBox(kModeQuestion, Answer::No);
  mainWindow().mnuModeOffline.Click();
  EXPECT_TRUE(face.Boxes().back().defaultNo);
  EXPECT_EQ(face.Boxes().back().icon, BoxIcon::Question);
  EXPECT_EQ(records().Mode, kOnline);
  records().Emptybuffer[1] = true;
  links.MSComm1(10).Arrive("1\n2\n3\n");
  Deliver();
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(9), "2") << "lines that were ignored";
  EXPECT_TRUE(mainWindow().mnuModeOnline.Checked());
  EXPECT_TRUE(mainWindow().tbOnline.Visible());
  EXPECT_FALSE(mainWindow().tbOffline.Visible());
  EXPECT_TRUE(links.MSComm1(10).PortOpen());
}

TEST_F(ModeChange, GoingOfflineHoldsThePrimarySystemAlone) {
  StartIn(kOnline);
  records().OnlinePaused = true;
  mainWindow().mnuSetupPrimarySystem.Click();
  EXPECT_TRUE(program->session.setupDialog.Loaded());
  face.ExpectBox(kModeQuestion, Answer::Yes);
  mainWindow().mnuModeOffline.Click();
  EXPECT_FALSE(program->session.setupDialog.Loaded());
  EXPECT_EQ(records().Mode, kOffline);
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(1), "Mode : OFFLINE");
  EXPECT_TRUE(mainWindow().mnuModeOffline.Checked() && !mainWindow().mnuModeOnline.Checked());
  mainWindow().Refresh();
  EXPECT_EQ(mainWindow().lblHint.Text(),
            "No view is open.\r\n\r\n"
            "Open views under Window > New Window, then press PLAY to replay the recording.");
  EXPECT_TRUE(mainWindow().tbOffline.Visible());
  EXPECT_FALSE(mainWindow().tbOnline.Visible());
  EXPECT_FALSE(records().OnlinePaused);
  EXPECT_TRUE(program->windows.offlineStatus.Visible());
  EXPECT_FALSE(links.MSComm1(10).PortOpen());
  EXPECT_TRUE(links.MSComm1(11).PortOpen()) << "ports above 10 stay open";
  program->windows.numerics[1]->Show();
  mainWindow().Refresh();
  EXPECT_FALSE(mainWindow().lblHint.Visible()) << "there is a view to be seen";
  EXPECT_EQ(links.Winsock1(3).State(), LinkState::Closed);
  EXPECT_TRUE(records().CommSetups[1].Enabled);
  for (int system = 2; system <= kSystems; ++system) {
    EXPECT_FALSE(records().CommSetups[system].Enabled);
    EXPECT_FALSE(mainWindow().mnuSetupSystem(system).Enabled());
  }
}

TEST_F(ModeChange, ComingBackEndsTheReplayAndDoesNotEnableTheOtherSystems) {
  StartIn(kOffline);
  EXPECT_FALSE(links.MSComm1(10).PortOpen());
  records().CommSetups[1].OfflineFile = folder.Write("a.log", std::string(100000, '\n'));
  mainWindow().tbOffline.Click("PLAY");
  mainWindow().tbOffline.Click("PAUSE");
  ASSERT_TRUE(records().OfflineRunning);
  face.ExpectBox(kModeQuestion, Answer::Yes);
  mainWindow().mnuModeOnline.Click();
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(1), "Mode : ONLINE");
  mainWindow().Refresh();
  EXPECT_TRUE(mainWindow().lblHint.Visible());
  EXPECT_EQ(mainWindow().lblHint.Text(),
            "No view is open.\r\n\r\nOpen views under Window > New Window.");
  EXPECT_FALSE(program->windows.offlineStatus.Loaded());
  EXPECT_TRUE(links.MSComm1(10).PortOpen());
  EXPECT_FALSE(records().CommSetups[3].Enabled);
  EXPECT_EQ(links.Winsock1(3).State(), LinkState::Closed);
  EXPECT_TRUE(mainWindow().mnuSetupSystem(3).Enabled());
  Deliver();
  EXPECT_FALSE(records().OfflineRunning);
}

// Fewer lines may all be of one kind.
TEST_F(ModeChange, ALiveSourceIsJudgedFromItsFiftiethLine) {
  StartIn(kOnline);
  const auto whyBehind = [&](int lines) {
    for (int i = 0; i < lines; ++i) links.MSComm1(10).Arrive("$GPZDA,1*00\r\n");
    Deliver();
    mainWindow().Refresh();
    return mainWindow().lblReason.Text();
  };
  EXPECT_EQ(whyBehind(49), "No sentence is ticked for system 2.");
  EXPECT_EQ(whyBehind(1),
            "Nothing of what is ticked for system 1 (Bridge) has occurred in 50 lines. "
            "Ticked: GGA. There are: GPZDA 50.");
}

struct OnlineSession : Session {
  OnlineSession() {
    Prepare([](Records& records) {
      records.MessagesToAnalyse[1] = {"HDT", "GSV"};
      records.CommSetups[1].UseUDP = true;
      records.CommSetups[1].UDPPort = 10110;
      records.SystemSetups[1][WindowFlag::Numerics] = true;
      records.SystemSetups[1][WindowFlag::Statistics] = true;
    });
    EXPECT_TRUE(Start());
  }
};

struct OnlineToolBar : ::testing::Test, OnlineSession {
  void Receive(std::string_view body) {
    links.WinsockUDP(1).Arrive(Sentence(body) + "\r\n");
    Deliver();
  }
  std::int32_t Headings() {
    return program->engine.statistics[1].Of<HDTRecord, &Deviations::deltaHdg>().Stat.Count;
  }
  std::string HeadingShown() {
    program->windows.numerics[1]->Refresh();
    return program->windows.numerics[1]->GridOf(SentenceType::HDT).Text(1, 1);
  }

  ToolBar& tbOnline = mainWindow().tbOnline;
};

TEST_F(OnlineToolBar, APauseStopsTheFiguresButNotTheLiveViews) {
  Receive("HEHDT,10.0,T");
  tbOnline.Click("PAUSE");
  EXPECT_EQ(tbOnline.ButtonAt(1).caption, "CONTINUE");
  Receive("HEHDT,20.0,T");
  EXPECT_EQ(Headings(), 1);
  EXPECT_EQ(HeadingShown(), " 20");

  tbOnline.Click("START");
  EXPECT_EQ(tbOnline.ButtonAt(1).caption, "CONTINUE") << "the caption stays";
  Receive("HEHDT,30.0,T");
  EXPECT_EQ(Headings(), 2);
}

TEST_F(OnlineToolBar, ResetsAskFirstAndBringBackEmptyWhatTheyFind) {
  Receive("HEHDT,10.0,T");
  tbOnline.Click("PAUSE");
  records().ChecksumErrors[1] = 7;
  for (const ViewKind kind : {ViewKind::AISTargets, ViewKind::ARPATargets, ViewKind::Skyplot,
                              ViewKind::Scatter, ViewKind::TimeSeries}) {
    program->windows.OpenView(kind, 1);
  }
  // As its user has it: one maximised, one minimised, one very small, one in front, one hidden.
  Window& sky = program->windows.charts.SkyplotOf(1);
  Window& list = *program->windows.aisTargets[1];
  frmTimeSeries& hidden = program->windows.charts.TimeSeriesOf(1, SentenceType::HDT);
  const std::array plotted = {&hidden.TChart(0).Series(0),
                              &program->windows.charts.ScatterOf(1).TChart1.Series(0)};
  for (Series* const series : plotted) series->Add(1.0, 2.0);
  program->windows.statistics[1]->UserState(WindowState::Maximised);
  sky.UserState(WindowState::Minimised);
  list.UserPlace({150, 300, 2700, 1500});
  hidden.UserClose();
  program->windows.numerics[1]->Show();
  const std::vector<std::string> before = Views();
  EXPECT_EQ(before.back(), "frmNumerics-1");
  for (const char* key : {"RESET ALL", "Reset Statistics", "Reset Graphics"}) {
    face.ExpectBox("Are you sure ?", Answer::No);
    tbOnline.Click(key);
  }
  for (const Series* const series : plotted) EXPECT_NE(series->Count(), 0);
  face.ExpectBox("Are you sure ?", Answer::Yes);
  tbOnline.Click("Reset Graphics");
  for (const Series* const series : plotted) EXPECT_EQ(series->Count(), 0);
  EXPECT_EQ(Headings(), 1);
  face.ExpectBox("Are you sure ?", Answer::Yes);
  tbOnline.Click("Reset Statistics");
  EXPECT_EQ(Headings(), 0);
  face.ExpectBox("Are you sure ?", Answer::Yes);
  tbOnline.Click("RESET ALL");
  EXPECT_EQ(Views(), before);
  EXPECT_EQ(program->windows.statistics[1]->State(), WindowState::Maximised);
  EXPECT_EQ(sky.State(), WindowState::Minimised);
  EXPECT_EQ(list.Place(), (WindowPlace{150, 300, 2700, 1500}));
  EXPECT_TRUE(hidden.Loaded());
  EXPECT_EQ(HeadingShown(), "           n/a");
  EXPECT_TRUE(Flags(1)[WindowFlag::Statistics]);
  EXPECT_TRUE(records().OnlinePaused);
  EXPECT_EQ(records().ChecksumErrors[1], 7);
}

TEST_F(ModeChange, TheStatusOfTheReplayStandsInFrontBehindAReset) {
  StartIn(kOffline);
  program->windows.OpenView(ViewKind::Numerics, 1);
  records().CommSetups[1].OfflineFile = folder.Write("a.log", "");
  mainWindow().tbOffline.Click("PLAY");
  EXPECT_GT(program->windows.offlineStatus.FrontOrder(),
            program->windows.numerics[1]->FrontOrder());
  RunToTheEnd();
}

TEST_F(OnlineToolBar, LogShowsOnButtonAndPanel) {
  face.Expect({});
  tbOnline.Click("LOG");
  EXPECT_EQ(tbOnline.ButtonAt(6).caption, "LOG Off");
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(2), "Logging : On");
  // Going offline stops the log, with its box.
  face.ExpectBox(kModeQuestion, Answer::Yes);
  face.Expect({});
  mainWindow().mnuModeOffline.Click();
  EXPECT_EQ(tbOnline.ButtonAt(6).caption, "LOG On");
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(2), "Logging : Off");
}

}  // namespace
}  // namespace fathomline
