#include <gmock/gmock.h>

#include "pipeline/run_desktop.h"
#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kFirstStart =
    "No setupfile exist. You have to define a primary system under Setup and open relevant windows "
    "for display under Window! ";

TEST(StartUp, TheFirstStartTellsWhatToDo) {
  Session session;
  session.face.ExpectBox(kFirstStart);
  ASSERT_TRUE(session.Start());
  EXPECT_EQ(session.face.Boxes()[0].icon, BoxIcon::Information);
  frmMain& window = session.mainWindow();
  EXPECT_TRUE(window.Visible());
  EXPECT_EQ(window.Caption(), "Fathomline - Version : v 3.02a - 26 Sep 2019 ");
  EXPECT_EQ(window.Place(), (WindowPlace{1000, 1000, 13000, 13000}));
  EXPECT_EQ(window.sbStatusBar.PanelText(1), "Mode : ONLINE");
  EXPECT_EQ(window.sbStatusBar.PanelText(13), "03:04:05");
  EXPECT_TRUE(window.mnuModeOnline.Checked());
  EXPECT_EQ(session.records().CoordinateDecimals, 4);
  for (int system = 1; system <= kSystems; ++system) {
    EXPECT_FALSE(session.records().CommSetups[system].Enabled);
    EXPECT_FALSE(window.sbStatusBar.PanelVisible(3 + system));
    EXPECT_FALSE(window.sbStatusBar.PanelVisible(8 + system));
  }
  window.Refresh();
  EXPECT_TRUE(window.lblHint.Visible());
  EXPECT_THAT(window.lblHint.Text(), HasSubstr("Setup > Primary System"));
}

TEST(StartUp, TheClockRuns) {
  Session session;
  session.face.Expect({});
  ASSERT_TRUE(session.Start());
  session.clock.Set({Session::kNow.days + 61.0 / kSecondsPerDay});
  session.face.Advance(std::chrono::seconds(1));
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(13), "03:05:06");
}

TEST(StartUp, ASetupComesIntoForce) {
  Session session;
  const std::string longName = "A name that is longer than any menu has room for, surely";
  session.Prepare([&](Records& records) {
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].IPAddress = "10.0.0.7";
    records.CommSetups[1].TCPPort = 8040;
    records.CommSetups[3].Name = longName;
    records.MessagesToAnalyse[1] = {"GGA", "GSV"};
    records.ChecksumTest[1] = true;
    records.CoordinateFormatIsDMS = true;
    records.SystemSetups[1][WindowFlag::Statistics] = true;
  });
  ASSERT_TRUE(session.Start());
  frmMain& window = session.mainWindow();
  EXPECT_EQ(window.mnuSetupPrimarySystem.Text(), "&Primary System         - Bridge");
  EXPECT_EQ(window.mnuSetupSystem(2).Text(), "Secondary System &1 - not defined");
  EXPECT_EQ(window.mnuSetupSystem(3).Text(), "Secondary System &2 - " + longName);
  EXPECT_EQ(window.sbStatusBar.PanelText(4), "0");
  EXPECT_EQ(window.sbStatusBar.PanelText(9), "n/a");
  EXPECT_TRUE(window.sbStatusBar.PanelVisible(4));
  EXPECT_FALSE(window.sbStatusBar.PanelVisible(5));
  EXPECT_EQ(session.records().CoordinateDecimals, 0) << "none are the user's choice here";
  EXPECT_TRUE(session.records().CommSetups[1].AnalyseGGA);
  EXPECT_TRUE(session.program->statisticsWindows[1]->Visible());
  EXPECT_TRUE(session.program->statisticsSNRWindows[1]->Visible());
  EXPECT_FALSE(session.program->numericsWindows[1]->Loaded());
  EXPECT_EQ(session.links.Winsock1(1).State(), LinkState::Connected);
  EXPECT_EQ(session.links.Winsock1(1).RemoteHost(), "10.0.0.7");
}

TEST(StartUp, ARestartRestoresWindowsAndPlaces) {
  Session session;
  session.Prepare([](Records& records) {
    records.Mode = kOffline;
    records.MessagesToAnalyse[1][0] = "GGA";
  });
  ASSERT_TRUE(session.Start());
  session.program->OpenView(ViewKind::Numerics, 1);
  session.program->OpenView(ViewKind::NMEA, 1);
  session.program->numericsWindows[1]->UserPlace({300, 450, 6000, 4500});
  session.mainWindow().UserPlace({75, 90, 15000, 12000});
  session.mainWindow().mnuFileExit.Click();
  EXPECT_TRUE(session.program->desktop.Quitting());
  EXPECT_TRUE(session.records().Closing);
  EXPECT_FALSE(session.program->numericsWindows[1]->Loaded());

  ASSERT_TRUE(session.Start());
  EXPECT_TRUE(session.program->numericsWindows[1]->Visible());
  EXPECT_EQ(session.program->numericsWindows[1]->Place(), (WindowPlace{300, 450, 6000, 4500}));
  EXPECT_FALSE(session.program->monitorWindows[1]->Loaded()) << "never stored as open";
  EXPECT_EQ(session.mainWindow().Place(), (WindowPlace{75, 90, 15000, 12000}));
}

TEST(StartUp, AViewOutsideTheMainWindowIsBroughtBack) {
  Session session;
  session.settings.Set("Settings", "MainHeight", 8000);
  session.settings.Set("Settings", "MainWidth", 9000);
  session.settings.Set("Settings", "NumericsTop", 9000);
  session.settings.Set("Settings", "NumericsLeft", 7250);
  session.Prepare([](Records& records) { records.SystemSetups[1][WindowFlag::Numerics] = true; });
  session.face.Expect({});  // no comport is chosen
  ASSERT_TRUE(session.Start());
  EXPECT_EQ(session.program->numericsWindows[1]->Place().top, 5750);
  EXPECT_EQ(session.program->numericsWindows[1]->Place().left, 7250);
}

TEST(StartUp, ASecondProgramOnTheSameFolderSaysSoAndEnds) {
  Session session;
  session.face.Expect({});
  ASSERT_TRUE(session.Start());
  ScriptedFace face;
  face.ExpectBox("Fathomline is already running with the folder " + session.folder.Path());
  Program second({face, session.clock, session.settings, [] {}});
  EXPECT_EQ(RunDesktop(second, {.programFolder = session.folder.Path()}), 1);
  EXPECT_FALSE(second.mainWindow.Loaded());
}

TEST(StartUp, AFolderThatCannotBeMadeEndsTheProgramWithTheCause) {
  Session session;
  ScriptedFace face;
  face.Expect({});
  Program program({face, session.clock, session.settings, [] {}});
  EXPECT_FALSE(program.startUp.Start({.programFolder = session.folder.Write("file", "") + "/x"}));
  EXPECT_THAT(face.Boxes()[0].text, HasSubstr(session.folder / "file/x"));
}

TEST(StartUp, AFaultySetupFileIsKept) {
  Session session;
  const std::string bytes = "\"REM Mode\"\r\n\"OFFLINE\"\r\n\"REM IP List\"\r\n11\r\n";
  session.folder.Write("Fathomline.ini", bytes);
  session.face.Expect({});
  ASSERT_TRUE(session.Start());
  EXPECT_EQ(ReadWholeFile(session.folder / "Fathomline.ini.bak"), bytes);
  EXPECT_EQ(session.records().Mode, kOnline);
}

TEST(StartUp, TheSetupGivenAsArgumentIsOpened) {
  Session session;
  session.Prepare([](Records& records) { records.Mode = kOffline; });
  RenameFile(session.folder / "Fathomline.ini", session.folder / "voyage.ini");
  ASSERT_TRUE(session.Start({.setupFile = session.folder / "voyage.ini"}));
  EXPECT_EQ(session.records().CommSetups[1].Name, "Bridge");

  session.mainWindow().UserClose();
  EXPECT_TRUE(FileExists(session.folder / "Fathomline.ini")) << "the default file has the state";
  session.face.ExpectBox("File nowhere.ini do not exist.");
  ASSERT_TRUE(session.Start({.setupFile = "nowhere.ini"}));
  EXPECT_EQ(session.records().CommSetups[1].Name, "Bridge");
}

TEST(StartUp, RunDesktopServesUntilTheMainWindowIsClosed) {
  Session session;
  session.Prepare([](Records& records) { records.Mode = kOffline; });
  Program program({session.face, session.clock, session.settings, [] {}});
  session.face.WhileWaiting([&] { program.mainWindow.UserClose(); });
  EXPECT_EQ(RunDesktop(program, {.programFolder = session.folder.Path()}), 0);
}

TEST(Shutdown, StopsTheLogAndSavesThePlaceUnlessTheProgramCloses) {
  Session session;
  session.Prepare([](Records& records) { records.CommSetups[1].UseUDP = true; });
  ASSERT_TRUE(session.Start());
  session.face.Expect({});
  session.mainWindow().tbOnline.Click("LOG");
  session.mainWindow().UserPlace({0, 0, 9000, 9000});
  session.face.Expect({});
  session.mainWindow().Close(CloseReason::Program);
  EXPECT_THAT(session.face.Boxes().back().text, StartsWith("Logging stopped."));
  EXPECT_FALSE(session.records().LoggingOn);
  EXPECT_FALSE(session.settings.Get("Settings", "MainWidth").has_value());
  EXPECT_TRUE(session.program->desktop.Quitting());
}

TEST(Shutdown, ASetupThatCannotBeSavedDoesNotHoldTheProgram) {
  Session session;
  session.Prepare([](Records& records) { records.Mode = kOffline; });
  ASSERT_TRUE(session.Start());
  session.records().ProgramFolder = session.folder / "gone/";
  session.face.Expect({});
  session.mainWindow().UserClose();
  EXPECT_THAT(session.face.Boxes().back().text, StartsWith("Setup not saved."));
  EXPECT_TRUE(session.program->desktop.Quitting());
}

}  // namespace
}  // namespace fathomline
