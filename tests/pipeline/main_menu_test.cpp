#include <gmock/gmock.h>

#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

struct StartedSession : Session {
  StartedSession() {
    Prepare([](Records& records) {
      records.Mode = kOffline;
      records.MessagesToAnalyse[1][0] = "GGA";
      records.SystemSetups[1][WindowFlag::Numerics] = true;
    });
    EXPECT_TRUE(Start());
  }
};

struct Menu : ::testing::Test {
  StartedSession session;
  frmMain& menu = session.mainWindow();
};

TEST_F(Menu, StubsAndHelpSayWhatTheySay) {
  session.face.ExpectBox("Print Preview Code goes here!");
  menu.mnuFilePrintPreview.Click();
  session.face.ExpectBox("MRU Code goes here!");
  menu.mnuFileMRU.Click();
  for (MenuItem* item : {&menu.mnuHelpContents, &menu.mnuHelpSearch}) {
    session.face.ExpectBox(
        "Unable to display Help Contents. There is no Help associated with this project.");
    item->Click();
  }
  menu.mnuHelpAbout.Click();
  EXPECT_TRUE(session.program->about.Visible());
  session.program->about.cmdOk.Click();
  EXPECT_FALSE(session.program->about.Loaded());
}

TEST_F(Menu, SaveClearsTheMonitorFlagUntilTheMonitorIsBroughtForward) {
  session.program->OpenView(ViewKind::NMEA, 1);
  frmNMEA& monitor = *session.program->monitorWindows[1];
  session.face.ExpectBox("Setup saved as " + session.folder / "Fathomline.ini");
  menu.mnuFileSave.Click();
  monitor.Refresh();
  EXPECT_FALSE(session.Flags(1)[WindowFlag::NMEA]);
  EXPECT_TRUE(monitor.Visible());
  monitor.Show();
  monitor.Refresh();
  EXPECT_TRUE(session.Flags(1)[WindowFlag::NMEA]);
}

TEST_F(Menu, SaveAsWritesWhereItIsTold) {
  session.face.ExpectFile(session.folder / "other.ini");
  session.face.ExpectBox("Setup saved as " + session.folder / "other.ini");
  menu.mnuFileSaveAs.Click();
  EXPECT_TRUE(session.face.Files()[0].save);
  EXPECT_EQ(session.face.Files()[0].filter, "Fathomline setup files (*.ini)|*.ini");
  EXPECT_TRUE(FileExists(session.folder / "other.ini"));

  session.face.ExpectFile(std::nullopt);
  menu.mnuFileSaveAs.Click();
}

TEST_F(Menu, AFailedSaveIsToldAndLogged) {
  session.face.ExpectFile(session.folder / "no/such.ini");
  session.face.Expect({});
  menu.mnuFileSaveAs.Click();
  EXPECT_THAT(session.face.Boxes().back().text, StartsWith("Setup not saved."));
  EXPECT_EQ(session.program->errorLog.Written(), 1);
}

TEST_F(Menu, OpenPutsAnotherSetupIntoForce) {
  Records other;
  other.SetDefaultSetup();
  other.CommSetups[1].Enabled = other.CommSetups[2].Enabled = true;
  other.CommSetups[1].UseUDP = other.CommSetups[2].UseUDP = true;
  other.CommSetups[2].Name = "Gyro";
  other.SystemSetups[2][WindowFlag::Statistics] = true;
  const std::string path = session.folder.Write("other.ini", WriteSetup(other));

  session.face.ExpectFile(path);
  menu.mnuFileOpen.Click();
  EXPECT_EQ(session.face.Files()[0].folder, session.folder.Path());
  EXPECT_EQ(session.records().Mode, kOnline) << "without the question";
  EXPECT_EQ(menu.mnuSetupSystem(2).Text(), "Secondary System &1 - Gyro");
  EXPECT_FALSE(session.program->numericsWindows[1]->Loaded());
  EXPECT_FALSE(session.program->offlineStatus.Loaded());
  EXPECT_TRUE(session.program->statisticsWindows[2]->Visible());
  EXPECT_EQ(session.links.WinsockUDP(2).State(), LinkState::Open);
}

TEST_F(Menu, OpenFromOfflineToOfflineShowsTheNewRecording) {
  session.records().CommSetups[1].OfflineFile = session.folder.Write("old.log", "\n\n\n");
  menu.tbOffline.Click("PLAY");
  menu.tbOffline.Click("PAUSE");
  Records other;
  other.SetDefaultSetup();
  other.Mode = kOffline;
  other.CommSetups[1].Enabled = true;
  other.CommSetups[1].OfflineFile = "new.log";
  session.face.ExpectFile(session.folder.Write("other.ini", WriteSetup(other)));
  menu.mnuFileOpen.Click();
  session.Deliver();
  EXPECT_FALSE(session.records().OfflineRunning);
  EXPECT_EQ(session.program->offlineStatus.lblFileName.Text(), "new.log");
  EXPECT_EQ(session.program->offlineStatus.lblStatus.Text(), "not started");
}

TEST_F(Menu, OpenOfAVanishedFileLeavesTheSetupInForce) {
  const std::string path = session.folder / "vanished.ini";
  session.face.ExpectFile(path);
  session.face.ExpectBox("File " + path + " do not exist.");
  menu.mnuFileOpen.Click();
  EXPECT_TRUE(session.program->numericsWindows[1]->Visible());
  EXPECT_EQ(session.records().CommSetups[1].Name, "Bridge");
}

TEST_F(Menu, NewBeginsWithTheDefaults) {
  session.program->statistics[1].LatitudeMean.Count = 5;
  menu.mnuFileNew.Click();
  EXPECT_FALSE(session.records().CommSetups[1].Enabled);
  EXPECT_EQ(session.records().Mode, kOnline);
  EXPECT_EQ(session.program->statistics[1].LatitudeMean.Count, 0);
  EXPECT_FALSE(session.program->numericsWindows[1]->Loaded());
  EXPECT_EQ(menu.mnuSetupPrimarySystem.Text(), "&Primary System         - not defined");
}

TEST_F(Menu, TheReportAsksAboutTheSessionInfoAndWaitsForItsEditor) {
  session.records().SessionInfo = "Sea trial";
  const std::string question = "Session info : \r\nSea trial\r\n Do you wan't to edit?";
  session.face.ExpectBox(question, Answer::No);
  session.face.Expect({});  // nothing has been accepted: the report's own box
  menu.mnuFilePrint.Click();

  frmDocument& document = session.program->document;
  session.face.ExpectBox(question, Answer::Yes);
  session.face.WhileWaiting([&] {
    EXPECT_EQ(document.txtText.Text(), "Sea trial");
    document.txtText.UserText("Sea trial\n\"two\"");
    menu.mnuFilePrint.Click();  // held while the first one waits
    document.cmdOk.Click();
  });
  session.face.Expect({});
  menu.mnuFilePrint.Click();
  EXPECT_EQ(session.records().SessionInfo, "Sea trial\r\n'two'");
}

TEST_F(Menu, SetupOpensOneDialogAtATime) {
  int opened = 0;
  session.program->hooks.setupDialog = &session.program->about;
  session.program->hooks.openSetup = [&](int system) {
    opened = system;
    session.program->about.Show();
  };
  menu.mnuSetupPrimarySystem.Click();
  EXPECT_EQ(opened, 1);
  session.face.ExpectBox("Only one system setup window at the time can be opened");
  menu.mnuSetupPrimarySystem.Click();
  // A change of mode cancels it.
  session.face.ExpectBox(
      "Are you sure you want to change mode ? All statistics and timeseries wil be reset.",
      Answer::Yes);
  session.face.Expect({});  // no comport
  menu.mnuModeOnline.Click();
  EXPECT_FALSE(session.program->about.Loaded());
  menu.mnuSetupSystem(3).Click();
  EXPECT_EQ(opened, 3);
}

TEST_F(Menu, TheBinaryStandardIsKeptInTheSettings) {
  menu.mnuOptionsBinaryStandardIALA.Click();
  EXPECT_TRUE(session.program->ais.BinaryStandardIALA());
  menu.UserClose();
  ASSERT_TRUE(session.Start());
  EXPECT_TRUE(session.mainWindow().mnuOptionsBinaryStandardIALA.Checked());
  EXPECT_TRUE(session.program->ais.BinaryStandardIALA());
  session.mainWindow().mnuOptionsBinaryStandardIALA.Click();
  EXPECT_FALSE(session.program->ais.BinaryStandardIALA());
  EXPECT_EQ(session.settings.Get("Settings", "BinaryStandardIALA", ""), "0");
}

struct NewWindowDialog : Menu {
  // The entry of the list, for a system by its place in the combo.
  void Open(int entry, int place = 0) {
    menu.mnuWindowNewWindow.Click();
    dialog.cmbSystem.UserChoose(place);
    dialog.cmbType.UserChoose(entry);
    dialog.cmdOk.Click();
  }

  frmNewWindow& dialog = session.program->newWindow;
};

TEST_F(NewWindowDialog, NeedsAPrimarySystem) {
  session.records().CommSetups[1].Enabled = false;
  session.face.ExpectBox("No primary system are defined. Go to Setup first !");
  menu.mnuWindowNewWindow.Click();
  EXPECT_FALSE(dialog.Loaded());
}

TEST_F(NewWindowDialog, ListsSystemsByNumber) {
  session.records().CommSetups[3].Enabled = true;
  session.records().CommSetups[3].Name = "Gyro";
  menu.mnuWindowNewWindow.Click();
  ASSERT_EQ(dialog.cmbSystem.Count(), 2);
  EXPECT_EQ(dialog.cmbSystem.EntryText(0), "Primary System          - Bridge");
  EXPECT_EQ(dialog.cmbSystem.EntryText(1), "Secondary System 2 - Gyro");
  dialog.cmdCancel.Click();
  Open(1, 1);
  EXPECT_TRUE(session.program->statisticsWindows[3]->Visible());
  EXPECT_FALSE(session.program->statisticsWindows[2]->Loaded());
}

TEST_F(NewWindowDialog, RefusesWhatTheSentencesCannotFeed) {
  session.face.ExpectBox("Skyplot not relevant when neither GSA nor GSV message is enabled");
  Open(4);
  EXPECT_TRUE(dialog.Visible());
  session.records().CommSetups[1].AnalyseGGA = false;
  session.face.ExpectBox(
      "Scatterplot not relevant when neither GGA, GNS, GLL nor RMC message is enabled");
  dialog.cmbType.UserChoose(3);
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Visible());
}

TEST_F(NewWindowDialog, OpensEveryView) {
  session.records().CommSetups[1].AnalyseGSV = true;
  std::vector<std::string> opened;
  const auto note = [&opened](std::string name) {
    return [&opened, name](int system) { opened.push_back(name + std::to_string(system)); };
  };
  ViewHooks& hooks = session.program->hooks;
  hooks.openTimeSeries = note("time series ");
  hooks.openScatter = note("scatter ");
  hooks.openSkyplot = note("skyplot ");
  hooks.openARPATargets = note("ARPA ");
  hooks.openAISTargets = note("AIS ");
  hooks.openSNR = [&](int, int constellation) {
    opened.push_back("SNR " + std::to_string(constellation));
  };
  ASSERT_EQ(dialog.cmbType.Count(), 13);
  for (int entry = 0; entry < 9; ++entry) {
    Open(entry);
    EXPECT_FALSE(dialog.Loaded());
  }
  Open(12);
  EXPECT_TRUE(session.program->statisticsSNRWindows[1]->Visible());
  EXPECT_TRUE(session.program->monitorWindows[1]->Visible());
  EXPECT_THAT(opened, ::testing::ElementsAre("time series 1", "scatter 1", "skyplot 1", "ARPA 1",
                                             "AIS 1", "skyplot 1", "SNR 0", "skyplot 1", "SNR 4"));
}

TEST_F(Menu, TheCoordinateFormatShowsAnExampleAndIsTakenByOk) {
  session.records().References[1].ReferenceLatitude = 1.0210176124166828;  // 58.5 degrees
  frmGeoFormat& dialog = session.program->geoFormat;
  menu.mnuOptionLatLonFormat.Click();
  EXPECT_EQ(dialog.cmbDecimals.Text(), "4");
  EXPECT_EQ(dialog.lblExample.Text(), "58° 30.0000' N");
  dialog.cmbDecimals.UserChoose(6);
  EXPECT_EQ(dialog.lblExample.Text(), "58° 30.000000' N");
  dialog.optFormat.UserChoose(1);
  EXPECT_EQ(dialog.cmbDecimals.Count(), 5) << "seconds have fewer";
  dialog.cmbDecimals.UserChoose(1);
  EXPECT_EQ(dialog.lblExample.Text(), "58° 30' 00.0\" N");
  dialog.cmdCancel.Click();
  EXPECT_FALSE(session.records().CoordinateFormatIsDMS);

  menu.mnuOptionLatLonFormat.Click();
  dialog.optFormat.UserChoose(1);
  dialog.cmbDecimals.UserChoose(0);
  dialog.cmdOk.Click();
  EXPECT_TRUE(session.records().CoordinateFormatIsDMS);
  EXPECT_EQ(session.records().CoordinateDecimals, 0);
}

TEST_F(Menu, SessionInformationIsKeptOnlyByOk) {
  frmDocument& document = session.program->document;
  menu.mnuOptionsSessionInformation.Click();
  document.txtText.UserText("dropped");
  document.cmdCancel.Click();
  EXPECT_EQ(session.records().SessionInfo, "");
}

}  // namespace
}  // namespace fathomline
