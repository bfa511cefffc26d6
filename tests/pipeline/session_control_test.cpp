#include <gmock/gmock.h>

#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;

struct ModeChange : ::testing::Test {
  void Start(std::string_view mode) {
    session.Prepare([mode](Records& records) {
      records.Mode = mode;
      records.MessagesToAnalyse[1][0] = "GGA";
      records.CommSetups[1].ComPort = 3;
      records.Comport(3).System = 1;
      records.CommSetups[2].Enabled = true;
      records.CommSetups[2].Name = "Gyro";
      records.CommSetups[2].ComPort = 12;
      records.Comport(12).System = 2;
      records.CommSetups[3].Enabled = true;
      records.CommSetups[3].UseTCPIP = true;
    });
    ASSERT_TRUE(session.Start());
  }

  Session session;
};

TEST_F(ModeChange, NoChangesNothing) {
  Start(kOnline);
  session.face.ExpectBox(kModeQuestion, Answer::No);
  session.mainWindow().mnuModeOffline.Click();
  EXPECT_TRUE(session.face.Boxes().back().defaultNo);
  EXPECT_EQ(session.face.Boxes().back().icon, BoxIcon::Question);
  EXPECT_EQ(session.records().Mode, kOnline);
  EXPECT_TRUE(session.mainWindow().mnuModeOnline.Checked());
  EXPECT_TRUE(session.mainWindow().tbOnline.Visible());
  EXPECT_FALSE(session.mainWindow().tbOffline.Visible());
  EXPECT_TRUE(session.links.MSComm1(3).PortOpen());
}

TEST_F(ModeChange, TheModeInForceAsksNothing) {
  Start(kOnline);
  session.mainWindow().mnuModeOnline.Click();
  EXPECT_TRUE(session.face.Boxes().empty());
}

TEST_F(ModeChange, GoingOfflineHoldsThePrimarySystemAlone) {
  Start(kOnline);
  session.records().OnlinePaused = true;
  session.face.ExpectBox(kModeQuestion, Answer::Yes);
  session.mainWindow().mnuModeOffline.Click();
  EXPECT_EQ(session.records().Mode, kOffline);
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(1), "Mode : OFFLINE");
  EXPECT_TRUE(session.mainWindow().tbOffline.Visible());
  EXPECT_FALSE(session.mainWindow().tbOnline.Visible());
  EXPECT_FALSE(session.records().OnlinePaused);
  EXPECT_TRUE(session.program->offlineStatus.Visible());
  EXPECT_FALSE(session.links.MSComm1(3).PortOpen());
  EXPECT_TRUE(session.links.MSComm1(12).PortOpen()) << "ports above 10 stay open";
  EXPECT_EQ(session.links.Winsock1(3).State(), LinkState::Closed);
  EXPECT_TRUE(session.records().CommSetups[1].Enabled);
  for (int system = 2; system <= kSystems; ++system) {
    EXPECT_FALSE(session.records().CommSetups[system].Enabled);
    EXPECT_FALSE(session.mainWindow().mnuSetupSystem(system).Enabled());
  }
}

TEST_F(ModeChange, ComingBackDoesNotEnableTheOtherSystems) {
  Start(kOffline);
  EXPECT_TRUE(session.program->offlineStatus.Visible());
  EXPECT_FALSE(session.links.MSComm1(3).PortOpen());
  session.face.ExpectBox(kModeQuestion, Answer::Yes);
  session.mainWindow().mnuModeOnline.Click();
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(1), "Mode : ONLINE");
  EXPECT_FALSE(session.program->offlineStatus.Loaded());
  EXPECT_TRUE(session.links.MSComm1(3).PortOpen());
  EXPECT_FALSE(session.records().CommSetups[3].Enabled);
  EXPECT_EQ(session.links.Winsock1(3).State(), LinkState::Closed);
  EXPECT_TRUE(session.mainWindow().mnuSetupSystem(3).Enabled());
}

TEST_F(ModeChange, GoingOnlineEndsTheReplay) {
  Start(kOffline);
  session.records().CommSetups[1].OfflineFile =
      session.folder.Write("a.log", std::string(100000, '\n'));
  session.mainWindow().tbOffline.Click("PLAY");
  session.mainWindow().tbOffline.Click("PAUSE");
  ASSERT_TRUE(session.records().OfflineRunning);
  session.face.ExpectBox(kModeQuestion, Answer::Yes);
  session.mainWindow().mnuModeOnline.Click();
  session.Deliver();
  EXPECT_FALSE(session.records().OfflineRunning);
  EXPECT_EQ(session.records().Mode, kOnline);
}

struct OnlineToolBar : ::testing::Test {
  OnlineToolBar() {
    session.Prepare([](Records& records) {
      records.MessagesToAnalyse[1] = {"HDT", "GSV"};
      records.CommSetups[1].UseUDP = true;
      records.CommSetups[1].UDPPort = 10110;
      records.SystemSetups[1][WindowFlag::Numerics] = true;
      records.SystemSetups[1][WindowFlag::Statistics] = true;
    });
    EXPECT_TRUE(session.Start());
  }

  void Receive(std::string_view body) {
    session.links.WinsockUDP(1).Arrive(Sentence(body) + "\r\n");
    session.Deliver();
  }
  std::int32_t Headings() { return session.program->statistics[1].Of<HDTRecord>()[0].Stat.Count; }
  ToolBar& tbOnline() { return session.mainWindow().tbOnline; }

  Session session;
};

TEST_F(OnlineToolBar, APauseStopsTheFiguresButNotTheLiveViews) {
  Receive("HEHDT,10.0,T");
  tbOnline().Click("PAUSE");
  EXPECT_EQ(tbOnline().ButtonAt(1).caption, "CONTINUE");
  Receive("HEHDT,20.0,T");
  EXPECT_EQ(Headings(), 1);
  session.program->numericsWindows[1]->Refresh();
  EXPECT_EQ(session.program->numericsWindows[1]->GridOf(SentenceType::HDT).Text(1, 1), " 20");

  tbOnline().Click("START");
  EXPECT_EQ(tbOnline().ButtonAt(1).caption, "CONTINUE") << "the caption stays";
  Receive("HEHDT,30.0,T");
  EXPECT_EQ(Headings(), 2);
}

TEST_F(OnlineToolBar, EveryResetAsksFirst) {
  Receive("HEHDT,10.0,T");
  for (const char* key : {"RESET ALL", "Reset Statistics", "Reset Graphics"}) {
    session.face.ExpectBox("Are you sure ?", Answer::No);
    tbOnline().Click(key);
  }
  EXPECT_EQ(Headings(), 1);
  session.face.ExpectBox("Are you sure ?", Answer::Yes);
  tbOnline().Click("Reset Statistics");
  EXPECT_EQ(Headings(), 0);
  tbOnline().Click("Connect 1");
}

TEST_F(OnlineToolBar, ResetAllReopensWhatIsOpenAndOnlyThat) {
  Receive("HEHDT,10.0,T");
  tbOnline().Click("PAUSE");
  session.records().ChecksumErrors[1] = 7;
  std::vector<std::string> chain;
  ViewHooks& hooks = session.program->hooks;
  const auto note = [&chain, this](std::string name) {
    return [&chain, this, name] {
      // Everything before has been opened again by now.
      EXPECT_TRUE(session.program->numericsWindows[1]->Visible());
      chain.push_back(name);
    };
  };
  hooks.resetAIS = note("AIS");
  hooks.resetARPA = note("ARPA");
  hooks.resetSkyplot = note("skyplot");
  hooks.resetScatter = note("scatter");
  hooks.resetTimeSeries = note("time series");

  session.face.ExpectBox("Are you sure ?", Answer::Yes);
  tbOnline().Click("RESET ALL");
  EXPECT_THAT(chain, ElementsAre("time series", "scatter", "skyplot", "ARPA", "AIS"));
  EXPECT_EQ(session.program->numericsWindows[1]->GridOf(SentenceType::HDT).Text(1, 1),
            "           n/a");
  EXPECT_TRUE(session.Flags(1)[WindowFlag::Statistics]);
  EXPECT_TRUE(session.program->statisticsSNRWindows[1]->Visible()) << "goes with GSV";
  EXPECT_FALSE(session.program->monitorWindows[1]->Loaded());
  EXPECT_FALSE(session.program->numericsWindows[2]->Loaded());
  EXPECT_TRUE(session.records().OnlinePaused);
  EXPECT_EQ(session.records().ChecksumErrors[1], 7);
}

TEST_F(OnlineToolBar, LogShowsOnButtonAndPanel) {
  session.face.Expect({});
  tbOnline().Click("LOG");
  EXPECT_EQ(tbOnline().ButtonAt(6).caption, "LOG Off");
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(2), "Logging : On");
  Receive("HEHDT,10.0,T");
  // Going offline stops the log, with its box.
  session.face.ExpectBox(kModeQuestion, Answer::Yes);
  session.face.Expect({});
  session.mainWindow().mnuModeOffline.Click();
  EXPECT_EQ(tbOnline().ButtonAt(6).caption, "LOG On");
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(2), "Logging : Off");
}

}  // namespace
}  // namespace fathomline
