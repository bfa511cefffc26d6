#include <csignal>
#include <gmock/gmock.h>
#include <map>

#include "session/end_request.h"
#include "session/run_desktop.h"
#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Starting : ::testing::Test, Session {};
using Ending = Starting;

constexpr const char* kFirstStart =
    "No setupfile exist. You have to define a primary system under Setup and open relevant windows "
    "for display under Window! ";

TEST_F(Starting, TheFirstStartTellsWhatToDo) {
  face.ExpectBox(kFirstStart);
  ASSERT_TRUE(Start());
  EXPECT_EQ(face.Boxes()[0].icon, BoxIcon::Information);
  frmMain& window = mainWindow();
  EXPECT_TRUE(window.Visible());
  EXPECT_EQ(window.Caption(), "Fathomline - Version : v 3.02a - 26 Sep 2019 ");
  EXPECT_EQ(window.Place(), (WindowPlace{1000, 1000, 13000, 13000}));
  EXPECT_EQ(window.sbStatusBar.PanelText(1), "Mode : ONLINE");
  EXPECT_EQ(window.sbStatusBar.PanelText(13), "03:04:05");
  EXPECT_TRUE(window.mnuModeOnline.Checked());
  EXPECT_EQ(records().CoordinateDecimals, 4);
  EXPECT_FALSE(window.sbStatusBar.PanelVisible(4) || window.sbStatusBar.PanelVisible(12));
  window.Refresh();
  EXPECT_TRUE(window.lblHint.Visible());
  EXPECT_EQ(window.lblHint.Text(),
            "No system is defined yet.\r\n\r\n"
            "1.  Choose Mode > Online for a live source, or Mode > Offline for a recorded file.\r\n"
            "2.  Define the primary system under Setup > Primary System.\r\n"
            "3.  Open views under Window > New Window.\r\n\r\n"
            "Or open a setup file with File > Open.");

  clock.Set({kNow.days + 61.0 / kSecondsPerDay});
  face.Advance(std::chrono::seconds(1));
  EXPECT_EQ(window.sbStatusBar.PanelText(13), "03:05:06");
}

TEST_F(Starting, ASetupComesIntoForce) {
  const std::string longName = "A name that is longer than any menu has room for, surely";
  Prepare([&](Records& records) {
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].IPAddress = "10.0.0.7";
    records.CommSetups[1].TCPPort = 8040;
    records.CommSetups[3].Name = longName;
    records.MessagesToAnalyse[1] = {"GGA", "GSV"};
    records.ChecksumTest[1] = true;
    records.CoordinateFormatIsDMS = true;
    records.SystemSetups[1][WindowFlag::Statistics] = true;
  });
  ASSERT_TRUE(Start());
  frmMain& window = mainWindow();
  EXPECT_EQ(window.mnuSetupPrimarySystem.Text(), "&Primary System         - Bridge");
  EXPECT_EQ(window.mnuSetupSystem(2).Text(), "Secondary System &1 - not defined");
  EXPECT_EQ(window.mnuSetupSystem(3).Text(), "Secondary System &2 - " + longName);
  EXPECT_EQ(window.sbStatusBar.PanelText(4), "0");
  EXPECT_EQ(window.sbStatusBar.PanelText(9), "n/a");
  EXPECT_TRUE(window.sbStatusBar.PanelVisible(4));
  EXPECT_FALSE(window.sbStatusBar.PanelVisible(5));
  EXPECT_EQ(records().CoordinateDecimals, 0) << "none are the user's choice here";
  EXPECT_TRUE(records().CommSetups[1].AnalyseGGA);
  EXPECT_THAT(Views(), ElementsAre("frmStatistics-1", "frmStatisticsSNR-1"));
  EXPECT_EQ(links.Winsock1(1).State(), LinkState::Connected);
  EXPECT_EQ(links.Winsock1(1).RemoteHost(), "10.0.0.7");
}

TEST_F(Starting, ARestartRestoresWindowsAndPlaces) {
  Prepare([](Records& records) {
    records.Mode = kOffline;
    records.MessagesToAnalyse[1][0] = "GGA";
  });
  ASSERT_TRUE(Start());
  program->windows.OpenView(ViewKind::Numerics, 1);
  program->windows.OpenView(ViewKind::NMEA, 1);
  program->windows.OpenView(ViewKind::Statistics, 1);
  program->windows.OpenView(ViewKind::AISTargets, 1);
  program->windows.numerics[1]->UserPlace({20000, 450, 6000, 4500});
  program->windows.statistics[1]->UserState(WindowState::Minimised);
  program->windows.aisTargets[1]->UserState(WindowState::Maximised);
  program->windows.numerics[1]->Show();
  mainWindow().UserPlace({75, 90, 15000, 12000});
  mainWindow().UserState(WindowState::Maximised);
  mainWindow().mnuFileExit.Click();
  EXPECT_TRUE(program->desktop.Quitting());
  EXPECT_TRUE(records().Closing);
  EXPECT_FALSE(program->windows.numerics[1]->Loaded());

  ASSERT_TRUE(Start());
  EXPECT_THAT(Views(), ElementsAre("frmStatistics-1", "frmAISTargets-1", "frmNumerics-1"))
      << "in their order; the monitor is never stored as open";
  EXPECT_EQ(program->windows.numerics[1]->Place(), (WindowPlace{20000, 450, 6000, 4500}))
      << "beyond the place that the main window goes back to, but not beyond its room";
  EXPECT_EQ(program->windows.statistics[1]->State(), WindowState::Minimised);
  EXPECT_EQ(program->windows.aisTargets[1]->State(), WindowState::Maximised);
  EXPECT_EQ(mainWindow().Place(), (WindowPlace{75, 90, 15000, 12000}));
  EXPECT_EQ(mainWindow().State(), WindowState::Maximised);
  // Opened by its user, a window is to be seen, however it was left.
  program->windows.statistics[1]->Close(CloseReason::User);
  program->windows.statistics[1]->Show();
  EXPECT_EQ(program->windows.statistics[1]->State(), WindowState::Normal);
}

TEST_F(Starting, AViewOutsideTheMainWindowIsBroughtBack) {
  settings.Set("Settings", "MainHeight", 8000);
  settings.Set("Settings", "MainWidth", 9000);
  settings.Set("Settings", "NumericsTop", 9000);
  settings.Set("Settings", "NumericsLeft", 7250);
  Prepare([](Records& records) { records.SystemSetups[1][WindowFlag::Numerics] = true; });
  face.Expect({});  // no comport is chosen
  ASSERT_TRUE(Start());
  frmNumerics& view = *program->windows.numerics[1];
  EXPECT_EQ(view.Place().top, 5750);
  EXPECT_EQ(view.Place().left, 7250);

  // A maximised main window has more room than the place that it goes back to.
  mainWindow().UserState(WindowState::Maximised);
  program->desktop.SetChildArea({28000, 14000});
  view.UserPlace({20000, 7000, 6000, 4500});
  view.Close();
  view.Show();
  EXPECT_EQ(view.Place().left, 20000);
  EXPECT_EQ(view.Place().top, 7000);
}

TEST_F(Starting, WhatKeepsTheProgramFromStartingIsTold) {
  face.Expect({});
  ASSERT_TRUE(Start());
  face.ExpectBox("Fathomline is already running with the folder " + folder.Path());
  Program second({face, clock, settings, [] {}});
  settings.Set("Settings", "ProgramFolder", folder.Path());
  EXPECT_EQ(RunDesktop(second, {}), 1);
  EXPECT_FALSE(second.windows.main.Loaded());
  face.Expect({});
  EXPECT_FALSE(second.session.startUp.Start({.programFolder = folder.Write("file", "") + "/x"}));
  EXPECT_THAT(face.Boxes().back().text,
              AllOf(StartsWith("Fathomline cannot start. "), HasSubstr(folder / "file/x")));
}

TEST_F(Starting, AFolderOfTheSettingsThatCannotBeMadeIsToldWithTheirPlace) {
  IniSettings stored(folder / "kept.ini");
  stored.Set("Settings", "ProgramFolder", folder.Write("file", "") + "/x");
  Program other({face, clock, stored, [] {}});
  face.Expect({});
  EXPECT_FALSE(other.session.startUp.Start({}));
  EXPECT_THAT(face.Boxes().back().text,
              EndsWith("\r\n\r\nAnother folder can be named in " + folder / "kept.ini" +
                       " :\r\n\r\n[Settings]\r\nProgramFolder="));
}

TEST_F(Starting, SettingsThatCannotBeReadAreTold) {
  IniSettings spoilt(folder.Write("spoilt.ini", "rubbish\n"));
  Program other({face, clock, spoilt, [] {}});
  face.ExpectBox(spoilt.Trouble());
  face.ExpectBox(kFirstStart);
  EXPECT_TRUE(other.session.startUp.Start({.programFolder = folder.Path()}));
  EXPECT_EQ(face.Boxes()[0].icon, BoxIcon::Exclamation);
}

// Whichever file was read: the program writes the default one anew when it ends.
TEST_F(Starting, TheDefaultSetupFileIsKeptWhereOneCouldNotBeRead) {
  const std::string bytes = "\"REM Mode\"\r\n\"OFFLINE\"\r\n\"REM IP List\"\r\n11\r\n";
  const std::string path = folder.Write("Fathomline.ini", bytes);
  const std::string kept = folder.Write("Fathomline.ini.bak", "an older one");
  face.Expect({});
  ASSERT_TRUE(Start());
  EXPECT_EQ(ReadWholeFile(kept), bytes);
  EXPECT_EQ(records().Mode, kOnline);

  RenameFile(kept, folder / "old");
  face.Expect({});
  ASSERT_TRUE(Start({.setupFile = path}));
  EXPECT_TRUE(FileExists(kept));

  RenameFile(kept, folder / "old");
  for (const std::string& name : {folder.Write("other.ini", bytes), path}) {
    face.ExpectFile(name);
    face.Expect({});
    mainWindow().mnuFileOpen.Click();
    EXPECT_EQ(ReadWholeFile(kept), bytes);
    RenameFile(kept, folder / "old");
  }
  mainWindow().UserClose();
  EXPECT_NE(ReadWholeFile(path), bytes) << "what is in force can be saved";
}

// What stands in the place of the setup file is moved away, so that the next one can be written.
TEST_F(Starting, WhatIsNoSetupFileIsToldAndMovedAway) {
  const std::string path = folder / "Fathomline.ini";
  const std::string kept = path + ".bak";
  const auto startsWithBoxes = [&](int boxes) {
    for (int i = 0; i < boxes; ++i) face.Expect({});
    ASSERT_TRUE(Start());
    EXPECT_THAT(face.Boxes().at(face.Boxes().size() - static_cast<std::size_t>(boxes)).text,
                HasSubstr("Error in Setup file. Default data loaded"));
  };
  MakeFolder(path);
  startsWithBoxes(1);
  EXPECT_TRUE(FolderExists(kept) && !FolderExists(path));
  mainWindow().UserClose();
  EXPECT_TRUE(FileExists(path));

  // Where that fails, too, the program goes on.
  folder.Write("Fathomline.ini.bak/inside", "");
  folder.Write("Fathomline.ini", std::string("\0\xff\"", 3));
  startsWithBoxes(2);
  EXPECT_THAT(face.Boxes().back().text, StartsWith("The setup file could not be kept. "));
}

TEST_F(Starting, TheSetupGivenAsArgumentIsOpened) {
  Prepare([](Records& records) { records.Mode = kOffline; });
  RenameFile(folder / "Fathomline.ini", folder / "voyage.ini");
  ASSERT_TRUE(Start({.setupFile = folder / "voyage.ini"}));
  EXPECT_EQ(records().CommSetups[1].Name, "Bridge");

  mainWindow().UserClose();
  EXPECT_TRUE(FileExists(folder / "Fathomline.ini")) << "the default file has the state";
  face.ExpectBox("File nowhere.ini do not exist.");
  ASSERT_TRUE(Start({.setupFile = "nowhere.ini"}));
  EXPECT_EQ(records().CommSetups[1].Name, "Bridge");
}

TEST_F(Starting, WhatIsNoSetupIsRefusedAndChangesNothing) {
  Prepare([](Records& records) { records.Mode = kOffline; });
  for (const auto& [bytes, cause] :
       std::map<std::string, std::string>{{"\r\n", " is empty."},
                                          {std::string("\x7F"
                                                       "ELF\0\0\0",
                                                       7),
                                           " is not a setup: it is no text."}}) {
    const std::string path = folder.Write("boat.log", bytes);
    face.ExpectBox("");
    ASSERT_TRUE(Start({.setupFile = path}));
    EXPECT_THAT(face.Boxes().back().text, StartsWith(path + cause));
    face.ExpectFile(path);
    face.ExpectBox("");
    mainWindow().mnuFileOpen.Click();
    EXPECT_EQ(records().CommSetups[1].Name, "Bridge");
    mainWindow().UserClose();
    EXPECT_THAT(ReadWholeFile(folder / kSetupFileName), HasSubstr("\"Bridge\""));
  }
}

TEST_F(Ending, StopsTheLogAndSavesThePlaceUnlessTheProgramCloses) {
  Prepare([](Records& records) { records.CommSetups[1].UseUDP = true; });
  ASSERT_TRUE(Start());
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
  mainWindow().UserPlace({0, 0, 9000, 9000});
  face.Expect({});
  mainWindow().Close(CloseReason::Program);
  EXPECT_THAT(face.Boxes().back().text, StartsWith("Logging stopped."));
  EXPECT_FALSE(records().LoggingOn);
  EXPECT_FALSE(settings.Get("Settings", "MainWidth").has_value());
  EXPECT_TRUE(program->desktop.Quitting());
}

// Whatever stands in the way: a box, a log that is open, an empty place of the last session.
TEST_F(Ending, ASignalEndsTheProgramWithoutAQuestion) {
  for (const int signal : kEndSignals) {
    std::signal(signal, SIG_DFL);  // under nohup one of them is ignored, which is left so
    Prepare([](Records& records) { records.CommSetups[1].UseUDP = true; });
    Program desktopProgram({face, clock, settings, [] {}, &links});
    const auto act = [&] {
      face.ExpectBox("");
      desktopProgram.windows.main.tbOnline.Click("LOG");
      desktopProgram.engine.records.SessionInfo = "noted";
      face.Expect({.text = {}, .meanwhile = [&] {
                     std::raise(signal);
                     face.Turn();
                   }});
      desktopProgram.windows.main.mnuFileMRU.Click();
    };
    face.WhileWaiting(act);
    EXPECT_EQ(RunDesktop(desktopProgram, {.programFolder = folder.Path()}), 0);
    EXPECT_FALSE(desktopProgram.engine.records.LoggingOn || desktopProgram.windows.main.Loaded());
    EXPECT_THAT(ReadWholeFile(folder / kSetupFileName), HasSubstr("\"noted\""));
    EXPECT_EQ(settings.GetNumber("Settings", "MainWidth", 0), 13000);
  }
}

TEST_F(Ending, ASignalDuringTheStartSavesNothing) {
  const std::string path = folder.Write(kSetupFileName, "\"REM Base data\"\r\n\"no number\"");
  Program desktopProgram({face, clock, settings, [] {}, &links});
  face.Expect({.text = {}, .meanwhile = [&] {
                 std::raise(SIGTERM);
                 face.Turn();
               }});
  RunDesktop(desktopProgram, {.programFolder = folder.Path()});
  EXPECT_EQ(ReadWholeFile(path), "\"REM Base data\"\r\n\"no number\"");
}

TEST_F(Ending, ASetupThatCannotBeSavedDoesNotHoldTheProgram) {
  Prepare([](Records& records) { records.Mode = kOffline; });
  ASSERT_TRUE(Start());
  records().ProgramFolder = folder / "gone/";
  face.Expect({});
  mainWindow().UserClose();
  EXPECT_THAT(face.Boxes().back().text, StartsWith("Setup not saved."));
  EXPECT_TRUE(program->desktop.Quitting());
}

}  // namespace
}  // namespace fathomline
