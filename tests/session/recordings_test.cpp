// From the name of a recording to its figures.
#include <gmock/gmock.h>
#include <set>
#include <sstream>

#include "session/figure_windows.h"
#include "support/places.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kVoyage = kSourceFolder + "/samples/voyage.log";

struct RecordingsTest : ::testing::Test, Session {
  RecordingsTest() {
    Prepare([](Records& records) {
      records.CommSetups[1].UseTCPIP = true;
      records.CommSetups[1].IPAddress = "10.0.0.7";
      records.MessagesToAnalyse[1][0] = "HDT";
      records.SessionInfo = "Sea trial";
      records.References[1].ReferenceUsed = kTruePosition;
      records.SystemSetups[1][WindowFlag::Numerics] = true;
    });
    setup = ReadWholeFile(folder / kSetupFileName);
  }

  frmOpenRecording& Dialog() { return program->session.recordings.dialog; }
  void Drop(const std::string& path) { mainWindow().UserDrop({path}); }
  // Until the recording has been looked through.
  void Look() {
    ASSERT_TRUE(Dialog().Visible());
    program->desktop.RunUntil([this] { return !Dialog().prgRead.Visible(); });
    Deliver();
  }
  std::string Refused(const std::string& path) {
    face.ExpectBox("");
    Drop(path);
    EXPECT_FALSE(Dialog().Visible());
    return face.Boxes().back().text;
  }
  // Opens the figures in each area of the reviewed file.
  void ExpectReviewedPlaces() {
    std::istringstream file(ReadWholeFile(kSourceFolder + "/tests/session/figure_windows.txt"));
    std::set<std::string> told, shown;
    for (std::string line; std::getline(file, line);) {
      if (line.empty() || line.starts_with('#')) continue;
      if (!line.starts_with("area")) {
        told.insert(line);
        continue;
      }
      EXPECT_EQ(std::exchange(shown, {}), std::exchange(told, {}));
      Desktop::Area area;
      std::istringstream(line.substr(4)) >> area.width >> area.height;
      program->desktop.SetChildArea(area);
      OpenFigureWindows(program->desktop, program->windows, 1);
      for (const Window* const window : program->desktop.ShownChildren()) {
        const auto& [left, top, width, height] = window->Place();
        std::ostringstream place;
        place << window->FullName() << ' ' << left << ' ' << top << ' ' << width << ' ' << height;
        if (window->State() != WindowState::Minimised) shown.insert(place.str());
      }
    }
    EXPECT_EQ(shown, told);
  }
  std::vector<std::string> Analysed() {
    std::vector<std::string> words;
    for (const std::string& word : records().MessagesToAnalyse[1]) {
      if (!word.empty()) words.push_back(word);
    }
    return words;
  }

  std::string setup;
};

TEST_F(RecordingsTest, OneClickLeadsFromItsNameToItsFiguresAndNothingIsKept) {
  ASSERT_TRUE(Start({.setupFile = kVoyage}));
  EXPECT_NE(links.Winsock1(1).State(), LinkState::Connected) << "the user wants to see a recording";
  EXPECT_TRUE(static_cast<Task&>(Dialog()).RunSlice({})) << "there is more of it";
  EXPECT_EQ(Dialog().lblLines.Text(), "256 lines");
  Look();
  EXPECT_EQ(Dialog().txtName.Text(), "voyage");
  Dialog().cmdOk.Click();
  EXPECT_TRUE(links.Winsock1(1).statesAtConnect.empty()) << "not even for a moment";
  EXPECT_FALSE(Dialog().Visible());
  EXPECT_TRUE(records().OfflineRunning);
  RunToTheEnd();

  EXPECT_THAT(Analysed(),
              ElementsAre("GGA", "VTG", "GSA", "GSV", "ZDA", "ATT", "VHW", "DBT", "TTM", "VDM"));
  EXPECT_EQ(program->engine.statistics[1].Of(SentenceType::DBT)[0].Stat.Count, 120);
  EXPECT_EQ(records().References[1].ReferenceUsed, kFirstSample);
  EXPECT_EQ(records().SessionInfo, "");
  EXPECT_TRUE(records().ChecksumTest[1]);
  EXPECT_THAT(mainWindow().Caption(), EndsWith("- voyage.log (not saved)"));
  Drop(kVoyage);
  Dialog().cmdCancel.Click();
  EXPECT_TRUE(records().SetupIsPassing) << "what has begun stays";
  ExpectReviewedPlaces();

  mainWindow().mnuOptionsReopen.Click();
  // Neither what the setup dialog applies nor the end of the program saves it.
  mainWindow().mnuSetupPrimarySystem.Click();
  face.ExpectBox("", Answer::Yes);
  program->session.setupDialog.cmdOk.Click();
  mainWindow().UserClose();
  EXPECT_EQ(ReadWholeFile(folder / kSetupFileName), setup);
  EXPECT_FALSE(settings.Get("Settings", "StatisticsLeft1").has_value());
  EXPECT_FALSE(settings.Get("Settings", "WindowOrder").has_value());
  EXPECT_TRUE(settings.Get("Settings", "MainLeft").has_value());
  EXPECT_FALSE(settings.Get("Layouts", "LastSession").has_value());

  ASSERT_TRUE(Start());
  EXPECT_EQ(links.Winsock1(1).State(), LinkState::Connected);
  EXPECT_EQ(mainWindow().Caption(), "Fathomline - Version : v 3.02a - 26 Sep 2019 ");
  EXPECT_THAT(mainWindow().mnuFileRecentRecording(1).Text(), EndsWith("voyage.log"));
  mainWindow().mnuFileRecentRecording(1).Click();
  EXPECT_EQ(Dialog().lblWarning.Text(), "The live session ends when the recording is opened.");
  Dialog().cmdCancel.Click();
  // One that has gone is told of and forgotten.
  settings.Set("Recent recordings", "1", folder / "gone.log");
  face.ExpectBox("File " + folder / "gone.log do not exist.");
  mainWindow().mnuFileRecentRecording(1).Click();
  EXPECT_EQ(settings.Get("Recent recordings", "1", ""), "");
  settings.Set("Recent recordings", "1", kVoyage);
  settings.Set("Recent recordings", "2", folder / "gone.log");
  settings.Set("Recent recordings", std::to_string(frmMain::kRecentRecordings),
               folder / "other.log");
  ASSERT_TRUE(Start());
  face.ExpectBox("");
  mainWindow().mnuFileRecentRecording(2).Click();
  EXPECT_EQ(settings.Get("Recent recordings", "1", ""), kVoyage);
  EXPECT_EQ(settings.Get("Recent recordings", "2", ""), folder / "other.log");
  EXPECT_THAT(mainWindow().mnuFileRecentRecording(2).Text(), EndsWith("other.log"));
  mainWindow().mnuFileRecentRecording(3).onClick();  // which is empty by now
}

TEST_F(RecordingsTest, WhoCancelsHasTheSetupThatWasThere) {
  ASSERT_TRUE(Start({.setupFile = kVoyage}));
  Drop(kVoyage);
  EXPECT_NE(links.Winsock1(1).State(), LinkState::Connected) << "nobody has cancelled the first";
  Dialog().cmdCancel.Click();
  EXPECT_EQ(links.Winsock1(1).State(), LinkState::Connected);
  EXPECT_THAT(Views(), ElementsAre("frmNumerics-1"));
  Drop(kVoyage);
  Dialog().UserClose();
  Deliver();
  EXPECT_EQ(links.Winsock1(1).State(), LinkState::Connected) << "nothing has ended";
  EXPECT_EQ(records().SessionInfo, "Sea trial");
  mainWindow().UserClose();
  EXPECT_THAT(ReadWholeFile(folder / kSetupFileName), HasSubstr("Sea trial"));

  // The program may end while the dialog stands.
  ASSERT_TRUE(Start({.setupFile = kVoyage}));
  mainWindow().UserClose();
  EXPECT_NE(links.Winsock1(1).State(), LinkState::Connected);

  RenameFile(folder / kSetupFileName, folder / "away");
  ASSERT_TRUE(Start({.setupFile = kVoyage})) << "no box tells of the first start";
  Dialog().cmdCancel.Click();
  EXPECT_FALSE(records().CommSetups[1].Enabled);
}

TEST_F(RecordingsTest, SavedItIsItsUsersAndLeftItGivesBackWhatWasThere) {
  ASSERT_TRUE(Start());
  records().HdopLimit = 4.0F;
  records().OutlierLimit = 7;
  records().SatelliteLimit = 5;
  records().RejectNonDifferential = true;
  for (int system = 1; system <= kSystems; ++system) {
    records().Emptybuffer[system] = records().SetTimeFromPC[system] = true;
    records().NotDisplayDGPS[system] = true;
    records().CommSetups[system].Enabled = system != 1;
    records().MessagesToAnalyse[system][7] = "ZDA";
    records().References[system].ReferenceUsed = kTruePosition;
  }
  face.ExpectFile(kVoyage);
  mainWindow().mnuFileOpenRecording.Click();
  EXPECT_THAT(face.Files().back().filter, HasSubstr("|*.log;*.nmea;*.aivdm;*.txt;*.dat|"));
  Look();
  Dialog().cmdOk.Click();
  EXPECT_TRUE(records().HdopLimit == 0.0F && records().SatelliteLimit == 0 &&
              !records().RejectNonDifferential);
  EXPECT_EQ(records().OutlierLimit, 15);
  for (int system = 1; system <= kSystems; ++system) {
    EXPECT_FALSE(records().Emptybuffer[system] || records().SetTimeFromPC[system] ||
                 records().NotDisplayDGPS[system]);
    EXPECT_EQ(records().CommSetups[system].Enabled, system == 1);
    EXPECT_EQ(records().MessagesToAnalyse[system][7], system == 1 ? "DBT" : "");
    EXPECT_EQ(records().References[system].ReferenceUsed, ReferenceSetup().ReferenceUsed);
  }
  face.ExpectFile(folder.Write("other.ini", "\"REM Mode\"\r\n\"OFFLINE\"\r\n"));
  mainWindow().mnuFileOpen.Click();
  EXPECT_EQ(records().SessionInfo, "Sea trial") << "the file says nothing of it";
  EXPECT_TRUE(records().HdopLimit == 4.0F && records().OutlierLimit == 7 &&
              records().SatelliteLimit == 5 && records().RejectNonDifferential);
  EXPECT_THAT(mainWindow().Caption(), EndsWith("2019 "));

  // The menu of setups takes a recording as well.
  face.ExpectFile(kVoyage);
  mainWindow().mnuFileOpen.Click();
  Look();
  Dialog().cmdOk.Click();
  RunToTheEnd();
  face.Expect({});
  mainWindow().mnuFileSave.Click();
  EXPECT_THAT(mainWindow().Caption(), EndsWith("2019 "));
  records().SessionInfo = "kept";
  mainWindow().UserClose();
  EXPECT_THAT(ReadWholeFile(folder / kSetupFileName),
              ::testing::AllOf(HasSubstr("voyage.log"), HasSubstr("kept")));
}

TEST_F(RecordingsTest, TellsWhatItCannotOpen) {
  ASSERT_TRUE(Start());
  EXPECT_EQ(Refused(folder.Write("a.log", "\r\n")), folder / "a.log is empty.");
  EXPECT_EQ(Refused(folder.Write("b.log", std::string("\x7F"
                                                      "ELF\0\0",
                                                      6))),
            folder / "b.log is no recording: it is no text.");
  EXPECT_THAT(Refused(folder.Write("c.log", "Dear all,\n")), HasSubstr("there is no NMEA 0183"));
  EXPECT_EQ(Refused(folder / "d.log"), "File " + folder / "d.log do not exist.");
#if !defined(_WIN32)
  EXPECT_EQ(Refused("/dev/null"),
            "/dev/null is no file that can be looked through. To replay it, choose Mode > Offline "
            "and select it as the input file under Setup > Primary System.");
#endif
  EXPECT_EQ(records().SessionInfo, "Sea trial");

  Drop(folder.Write("other.ini", SetupOf([](Records& other) { other.Mode = kOffline; })));
  EXPECT_FALSE(Dialog().Visible()) << "a setup is opened as such";
  EXPECT_EQ(records().Mode, kOffline);
}

// Each row of the reviewed file: the sentences of a recording, and what its user is told of them.
// Without one that can be analysed it can be looked at, and not opened.
TEST_F(RecordingsTest, TellsSpanLinesAndSentences) {
  ASSERT_TRUE(Start());
  LineReader reviewed(kSourceFolder + "/tests/session/recordings.txt");
  while (!reviewed.AtEnd()) {
    const std::string row(reviewed.Next());
    const std::size_t told = row.find(" = ");
    if (told == row.npos) continue;
    std::string bytes = row.substr(0, told + 1);
    std::replace(bytes.begin(), bytes.end(), ' ', '\n');
    Drop(folder.Write("row.log", bytes));
    Look();
    std::string shown = Dialog().lblSpan.Text() + "|" + Dialog().lblLines.Text();
    std::vector<const Control*> texts{&Dialog().lblNote, &Dialog().chkStepsBack};
    for (const CheckBox& box : Dialog().chkSentence) texts.push_back(&box);
    for (const Control* const each : texts) {
      if (each->Visible()) shown += "|" + each->Text();
    }
    shown += Dialog().chkTestCheckSum.Checked() ? "|tested" : "|untested";
    EXPECT_EQ(Dialog().lblPath.Text(), folder / "row.log");
    const Grid& list = Dialog().fgSentences;
    for (int cell = 0; cell < (list.Rows() - 1) * list.Columns(); ++cell) {
      shown += "|" + list.Text(cell / list.Columns() + 1, cell % list.Columns());
    }
    EXPECT_EQ(shown, row.substr(told + 3));
    EXPECT_EQ(Dialog().cmdOk.Usable(), shown.find("|yes, as") != shown.npos);
    Dialog().cmdCancel.Click();
  }
}

TEST_F(RecordingsTest, OpensWindowsForWhatIsThereAloneAndTakesWhatItsUserChanges) {
  ASSERT_TRUE(Start());
  const std::string name = "A name of so many characters as are taken";
  Drop(folder.Write(name + ".log", "!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0*23\n"));
  Look();
  Dialog().cmdOk.Click();
  RunToTheEnd();
  EXPECT_THAT(Views(), ElementsAre("frmAISTargets-1"));
  EXPECT_EQ(records().CommSetups[1].Name, name.substr(0, 40));
  EXPECT_EQ(records().CommSetups[1].SystemType, "AIS");

  for (const int day : {2, 3}) {
    Drop(folder.Write("back.log", Sentence("GPGGA,120010,,,,,0,,,,M,,M,,") + "\n" +
                                      Sentence("GPGGA,120005,,,,,0,,,,M,,M,,") + "\n"));
    Look();
    if (day == 3) {
      Dialog().txtName.UserText("Mast");
      Dialog().chkTestCheckSum.Click();
      Dialog().chkStepsBack.Click();
    }
    Dialog().cmdOk.Click();
    RunToTheEnd();
    EXPECT_EQ(records().CommSetups[1].Name, day == 3 ? "Mast" : "back");
    EXPECT_EQ(records().ChecksumTest[1], day == 2);
    EXPECT_EQ(FormatDateTime(records().LastSentenceTime[1], "dd hh:nn:ss"),
              "0" + std::to_string(day) + " 12:00:05");
  }
}

TEST_F(RecordingsTest, TheDialogKeepsTheRulesOfTheSetup) {
  ASSERT_TRUE(Start());
  Drop(kVoyage);
  Look();
  const auto box = [this](std::string_view sentence) -> CheckBox& {
    for (CheckBox& found : Dialog().chkSentence) {
      if (found.Visible() && found.Text().starts_with(sentence)) return found;
    }
    throw std::logic_error("no such box");
  };
  box("ROT").Click();
  EXPECT_FALSE(box("ROT").Checked());
  EXPECT_THAT(Dialog().lblNote.Text(), StartsWith("No more than 10"));
  box("RMC").Click();
  EXPECT_THAT(Dialog().lblNote.Text(), HasSubstr("GGA disabled."));
  EXPECT_TRUE(box("RMC").Checked());
  EXPECT_FALSE(box("GGA").Checked() || box("VTG").Checked() || box("ZDA").Checked());
  EXPECT_TRUE(Dialog().lblNote.Visible());
  box("ROT").Click();
  EXPECT_TRUE(box("ROT").Checked());
  box("RMC").Click();
  EXPECT_FALSE(box("RMC").Checked() || Dialog().lblNote.Visible());
  Dialog().txtName.UserText("with a \"");
  face.ExpectBox("");
  Dialog().cmdOk.Click();
  EXPECT_TRUE(Dialog().Visible());
}

TEST_F(RecordingsTest, TellsWhyNothingShowsAndLeadsThere) {
  Prepare([](Records& records) { records.Mode = kOffline; });
  ASSERT_TRUE(Start());
  frmOfflineStatus& status = program->windows.offlineStatus;
  frmSetup& dialog = program->session.setupDialog;
  const auto why = [&] {
    status.Refresh();
    mainWindow().Refresh();
    EXPECT_EQ(status.cmdReason.Visible(), status.lblReason.Visible());
    EXPECT_EQ(mainWindow().lblReason.Visible(), status.lblReason.Visible());
    EXPECT_EQ(mainWindow().cmdReason.Visible(), status.lblReason.Visible());
    return status.lblReason.Visible() ? status.lblReason.Text() : "";
  };
  EXPECT_EQ(why(), "No sentence is ticked for system 1 (Bridge).");
  EXPECT_EQ(mainWindow().lblReason.Text(), why()) << "in the empty frame, too";
  status.cmdReason.Click();
  EXPECT_TRUE(dialog.Visible());
  EXPECT_EQ(dialog.SSTab1.Choice(), frmSetup::kMessagesTab);
  dialog.Close();

  const auto replay = [&](const std::string& bytes) {
    records().CommSetups[1].OfflineFile = folder.Write("a.log", bytes);
    mainWindow().tbOffline.Click("PLAY");
    EXPECT_EQ(why(), "") << "nothing has come yet";
    RunToTheEnd();
    return why();
  };
  const std::string lines = "$HEHDT,1,T*00\n$GPVTG,1*00\n$HEHDT,2,T*00\n";
  records().MessagesToAnalyse[1] = {"DBT", "GSV"};
  records().SetMessageFlags(1);
  EXPECT_EQ(replay(lines),
            "Nothing of what is ticked for system 1 (Bridge) has occurred in 3 lines. Ticked: GSV, "
            "DBT. There are: HEHDT 2, GPVTG 1.");
  // The six most frequent ones are named.
  EXPECT_THAT(replay(lines + "$GPZDA,1*00\n$GPGGA,1*00\n$GPRMC,1*00\n$GPGST,1*00\n"),
              EndsWith(": HEHDT 2, GPGGA 1, GPGST 1, GPRMC 1, GPVTG 1, GPZDA 1."));
  EXPECT_THAT(replay(lines + "$GPZDA,1*00\n$GPGGA,1*00\n$GPRMC,1*00\n$GPGST,1*00\n$GPGLL,1*00\n"),
              EndsWith(", GPVTG 1, ...."));
  EXPECT_EQ(replay(lines + "$SDDBT,1,f,2,M,3,F\n"), "");
  records().ChecksumTest[1] = true;
  for (int times = 0; times < 2; ++times) {
    EXPECT_EQ(replay(lines), "All 3 lines of system 1 (Bridge) failed the checksum test.");
  }
  EXPECT_EQ(replay(lines + Sentence("SDDBT,1,f,2,M,3,F") + "\n"), "");
  EXPECT_THAT(replay(Sentence("HEHDT,1,T") + "\n"), EndsWith("There are: HEHDT 1."));

  records().CommSetups[1].Enabled = false;
  mainWindow().Refresh();
  EXPECT_EQ(mainWindow().lblReason.Text(), "No system is enabled.");
  mainWindow().cmdReason.Click();
  EXPECT_EQ(dialog.SSTab1.Choice(), 0);
}

}  // namespace
}  // namespace fathomline
