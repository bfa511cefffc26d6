#include <gmock/gmock.h>

#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
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

struct Menu : ::testing::Test, StartedSession {
  void OpenFile(std::string_view name, const std::function<void(Records&)>& fill) {
    face.ExpectFile(folder.Write(name, SetupOf(fill)));
    mainWindow().mnuFileOpen.Click();
  }

  frmMain& menu = mainWindow();
};

TEST_F(Menu, StubsAndHelpSayWhatTheySay) {
  const char* const noHelp =
      "Unable to display Help Contents. There is no Help associated with this project.";
  const std::pair<MenuItem&, const char*> kSaying[] = {
      {menu.mnuFilePrintPreview, "Print Preview Code goes here!"},
      {menu.mnuFileMRU, "MRU Code goes here!"},
      {menu.mnuHelpContents, noHelp},
      {menu.mnuHelpSearch, noHelp}};
  for (const auto& [item, text] : kSaying) {
    face.ExpectBox(text);
    item.Click();
  }
  menu.mnuHelpAbout.Click();
  EXPECT_TRUE(program->windows.about.Visible());
  program->windows.about.cmdOk.Click();
  EXPECT_FALSE(program->windows.about.Loaded());
}

TEST_F(Menu, SaveClearsTheMonitorFlagUntilTheMonitorIsBroughtForward) {
  program->windows.OpenView(ViewKind::NMEA, 1);
  frmNMEA& monitor = *program->windows.monitors[1];
  face.ExpectBox("Setup saved as " + folder / "Fathomline.ini");
  menu.mnuFileSave.Click();
  monitor.Refresh();
  EXPECT_FALSE(Flags(1)[WindowFlag::NMEA]);
  EXPECT_TRUE(monitor.Visible());
  monitor.Show();
  monitor.Refresh();
  EXPECT_TRUE(Flags(1)[WindowFlag::NMEA]);
}

TEST_F(Menu, SaveAsWritesWhereItIsToldAndTellsAFailure) {
  face.ExpectFile(folder / "other.ini");
  face.ExpectBox("Setup saved as " + folder / "other.ini");
  menu.mnuFileSaveAs.Click();
  EXPECT_TRUE(face.Files()[0].save);
  EXPECT_EQ(face.Files()[0].filter, "Fathomline setup files (*.ini)|*.ini");
  EXPECT_EQ(face.Files()[0].defaultExtension, ".ini");
  EXPECT_TRUE(FileExists(folder / "other.ini"));

  face.ExpectFile(std::nullopt);
  menu.mnuFileSaveAs.Click();
  face.ExpectFile(folder / "no/such.ini");
  face.Expect({});
  menu.mnuFileSaveAs.Click();
  EXPECT_THAT(face.Boxes().back().text, StartsWith("Setup not saved."));
  EXPECT_EQ(program->session.errorLog.Written(), 1);
}

TEST_F(Menu, OpenPutsAnotherSetupIntoForceUnlessItHasVanished) {
  face.ExpectFile(folder / "vanished.ini");
  face.ExpectBox("File " + folder / "vanished.ini do not exist.");
  menu.mnuFileOpen.Click();
  EXPECT_THAT(Views(), ElementsAre("frmNumerics-1"));
  EXPECT_EQ(records().CommSetups[1].Name, "Bridge");
  menu.mnuSetupPrimarySystem.Click();
  links.WinsockUDP(4).Bind(1000);
  OpenFile("other.ini", [](Records& other) {
    other.MessagesToAnalyse[4] = {"VDM"};
    other.CommSetups[2].Enabled = true;
    other.CommSetups[1].UseUDP = other.CommSetups[2].UseUDP = true;
    other.CommSetups[2].Name = "Gyro";
    other.SystemSetups[2][WindowFlag::Statistics] = true;
  });
  EXPECT_EQ(face.Files()[0].folder, folder.Path());
  EXPECT_EQ(records().Mode, kOnline) << "without the question";
  EXPECT_EQ(menu.mnuSetupSystem(2).Text(), "Secondary System &1 - Gyro");
  EXPECT_FALSE(program->windows.offlineStatus.Loaded());
  EXPECT_THAT(Views(), ElementsAre("frmStatistics-2"));
  EXPECT_EQ(links.WinsockUDP(2).State(), LinkState::Open);
  EXPECT_EQ(links.WinsockUDP(4).State(), LinkState::Closed);
  EXPECT_TRUE(records().CommSetups[4].AnalyseVDM);
  EXPECT_FALSE(program->session.setupDialog.Loaded());
}

TEST_F(Menu, OpenFromOfflineToOfflineShowsTheNewRecording) {
  records().CommSetups[1].OfflineFile = folder.Write("old.log", "\n\n\n");
  menu.tbOffline.Click("PLAY");
  menu.tbOffline.Click("PAUSE");
  OpenFile("other.ini", [](Records& other) {
    other.Mode = kOffline;
    other.CommSetups[1].OfflineFile = "new.log";
  });
  Deliver();
  EXPECT_FALSE(records().OfflineRunning);
  EXPECT_EQ(program->windows.offlineStatus.lblFileName.Text(), "new.log");
  EXPECT_EQ(program->windows.offlineStatus.lblStatus.Text(), "not started");
}

TEST_F(Menu, NewBeginsWithTheDefaults) {
  SystemStatistics& figures = program->engine.statistics[1];
  figures.LatitudeMean.Count = figures.LongitudeMean.Count = figures.HeightMean.Count = 5;
  records().SystemSetups[2][WindowFlag::Skyplot] = true;
  menu.mnuFileNew.Click();
  EXPECT_FALSE(records().CommSetups[1].Enabled);
  EXPECT_EQ(records().Mode, kOnline);
  EXPECT_EQ(figures.LatitudeMean.Count + figures.LongitudeMean.Count + figures.HeightMean.Count, 0);
  EXPECT_FALSE(Flags(2)[WindowFlag::Skyplot]);
  EXPECT_THAT(Views(), IsEmpty());
  EXPECT_EQ(menu.mnuSetupPrimarySystem.Text(), "&Primary System         - not defined");
}

TEST_F(Menu, TheReportAsksAboutTheSessionInfoAndWaitsForItsEditor) {
  records().SessionInfo = "Sea trial";
  frmDocument& document = program->windows.document;
  menu.mnuOptionsSessionInformation.Click();
  document.txtText.UserText("dropped");
  document.cmdCancel.Click();

  const std::string question = "Session info : \r\nSea trial\r\n Do you wan't to edit?";
  face.ExpectBox(question, Answer::No);
  face.Expect({});  // nothing has been accepted: the report's own box
  menu.mnuFilePrint.Click();

  face.ExpectBox(question, Answer::Yes);
  face.WhileWaiting([&] {
    EXPECT_EQ(document.txtText.Text(), "Sea trial");
    document.txtText.UserText("Sea trial\r\n\n\"two\"");
    menu.mnuFilePrint.Click();  // held while the first one waits
    document.cmdOk.Click();
  });
  face.Expect({});
  menu.mnuFilePrint.Click();
  EXPECT_EQ(records().SessionInfo, "Sea trial\r\n\r\n'two'");

  records().SessionInfo.clear();
  for (int system = 2; system <= kSystems; ++system) records().CommSetups[system].Enabled = true;
  for (int system = 1; system <= kSystems; ++system) face.Expect({});
  menu.mnuFilePrint.Click();
}

TEST_F(Menu, SetupOpensOneDialogAtATime) {
  frmSetup& dialog = program->session.setupDialog;
  menu.mnuSetupPrimarySystem.Click();
  EXPECT_EQ(dialog.System(), 1);
  face.ExpectBox("Only one system setup window at the time can be opened");
  menu.mnuSetupPrimarySystem.Click();
  // A change of mode cancels it.
  face.ExpectBox(kModeQuestion, Answer::Yes);
  face.Expect({});  // no comport
  menu.mnuModeOnline.Click();
  EXPECT_FALSE(dialog.Loaded());
  menu.mnuSetupSystem(3).Click();
  EXPECT_EQ(dialog.System(), 3);
}

TEST_F(Menu, OptionsAreTickedAndKeptInTheSettings) {
  menu.mnuOptionsBinaryStandardIALA.Click();
  EXPECT_TRUE(program->engine.ais.BinaryStandardIALA());
  EXPECT_EQ(settings.Get("Settings", "BinaryStandardIALA", ""), "1");
  EXPECT_TRUE(menu.mnuOptionsLookChoice(0).Checked());
  menu.mnuOptionsLookChoice(2).Click();
  EXPECT_FALSE(menu.mnuOptionsLookChoice(0).Checked());
  menu.UserClose();
  ASSERT_TRUE(Start());
  for (int look = 0; look < 3; ++look) {
    EXPECT_EQ(mainWindow().mnuOptionsLookChoice(look).Checked(), look == 2);
  }
  EXPECT_TRUE(mainWindow().mnuOptionsBinaryStandardIALA.Checked());
  EXPECT_TRUE(program->engine.ais.BinaryStandardIALA());
  mainWindow().mnuOptionsBinaryStandardIALA.Click();
  EXPECT_FALSE(program->engine.ais.BinaryStandardIALA());
  EXPECT_EQ(settings.Get("Settings", "BinaryStandardIALA", ""), "0");
  EXPECT_EQ(settings.Get("Settings", "Look", ""), "dark");
}

struct NewWindowDialog : Menu {
  // The entry of the list, for a system by its place in the combo.
  void Open(int entry, int place = 0) {
    menu.mnuWindowNewWindow.Click();
    dialog.cmbSystem.UserChoose(place);
    dialog.cmbType.UserChoose(entry);
    dialog.cmdOk.Click();
  }

  frmNewWindow& dialog = program->windows.newWindow;
};

TEST_F(NewWindowDialog, ListsSystemsByNumber) {
  records().CommSetups[3].Enabled = true;
  records().CommSetups[3].Name = "Gyro";
  menu.mnuWindowNewWindow.Click();
  ASSERT_EQ(dialog.cmbSystem.Count(), 2);
  EXPECT_EQ(dialog.cmbSystem.EntryText(0), "Primary System          - Bridge");
  EXPECT_EQ(dialog.cmbSystem.EntryText(1), "Secondary System 2 - Gyro");
  dialog.cmdCancel.Click();
  Open(1, 1);
  EXPECT_THAT(Views(), ElementsAre("frmNumerics-1", "frmStatistics-3"));
}

TEST_F(NewWindowDialog, RefusesWhatTheSentencesCannotFeed) {
  face.ExpectBox("Skyplot not relevant when neither GSA nor GSV message is enabled");
  Open(4);
  EXPECT_TRUE(dialog.Visible());
  for (int entry = 8; entry <= 12; ++entry) {
    face.ExpectBox("SNR plot not relevant when GSV message is not enabled");
    dialog.cmbType.UserChoose(entry);
    dialog.cmdOk.Click();
    EXPECT_TRUE(dialog.Visible());
  }
  records().CommSetups[1].AnalyseGGA = false;
  face.ExpectBox("Scatterplot not relevant when neither GGA, GNS, GLL nor RMC message is enabled");
  dialog.cmbType.UserChoose(3);
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Visible());
  dialog.cmdCancel.Click();

  records().CommSetups[1].Enabled = false;
  face.ExpectBox("No primary system are defined. Go to Setup first !");
  menu.mnuWindowNewWindow.Click();
  EXPECT_FALSE(dialog.Loaded());
}

TEST_F(NewWindowDialog, OpensEveryViewOrBringsItForward) {
  records().CommSetups[1].AnalyseGSV = true;
  ASSERT_EQ(dialog.cmbType.Count(), 13);
  for (int entry = 0; entry < 13; ++entry) {
    Open(entry);
    EXPECT_FALSE(dialog.Loaded());
  }
  // The last window of signal-to-noise ratios has brought the sky plot forward, which feeds it.
  EXPECT_THAT(Views(),
              ElementsAre("frmNumerics-1", "frmStatistics-1", "frmStatisticsSNR-1",
                          "frmTimeSeriesGGA-1", "frmTimeSeriesGSV-1", "frmScatter-1",
                          "frmARPATargets-1", "frmNMEA-1", "frmAISTargets-1",
                          "frmTimeSeriesSNR-1-1", "frmTimeSeriesSNR-1-2", "frmTimeSeriesSNR-1-3",
                          "frmTimeSeriesSNR-1-4", "frmSkyplot-1", "frmTimeSeriesSNR-1-5"));
  Open(3);
  EXPECT_EQ(Views().back(), "frmScatter-1");
}

TEST_F(Menu, TheCoordinateFormatShowsAnExampleAndIsTakenByOk) {
  records().References[1].ReferenceLatitude = 1.0210176124166828;  // 58.5 degrees
  frmGeoFormat& dialog = program->windows.geoFormat;
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
  EXPECT_FALSE(records().CoordinateFormatIsDMS);

  menu.mnuOptionLatLonFormat.Click();
  dialog.optFormat.UserChoose(1);
  dialog.cmbDecimals.UserChoose(0);
  dialog.cmdOk.Click();
  EXPECT_TRUE(records().CoordinateFormatIsDMS);
  EXPECT_EQ(records().CoordinateDecimals, 0);
  menu.mnuOptionLatLonFormat.Click();
  EXPECT_EQ(dialog.cmbDecimals.Text(), "0");
}

}  // namespace
}  // namespace fathomline
