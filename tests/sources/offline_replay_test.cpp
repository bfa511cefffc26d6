// The replay, driven through the keys of its tool bar.
#include "sources/offline_replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::HasSubstr;

class OfflineReplayTest : public testing::Test {
 protected:
  OfflineReplayTest() {
    test.face.ExpectBox(
        "No setupfile exist. You have to define a primary system under Setup and open relevant "
        "windows for display under Window! ");
    test.program.mainWindow.Show();
    test.face.ExpectBox(
        "Are you sure you want to change mode ? All statistics and timeseries wil be reset.",
        Answer::Yes);
    test.program.mainWindow.mnuModeOffline.Click();
    test.records.CommSetups[1].Enabled = true;
    test.Analyse({"VTG"});
  }

  void Record(const std::string& bytes) {
    test.records.CommSetups[1].OfflineFile = test.folder.Write("recording.log", bytes);
  }
  void Press(std::string_view key) { toolbar.Click(key); }
  void RunToTheEnd() {
    test.program.desktop.RunUntil([this] { return !test.records.OfflineRunning; });
  }
  std::string Status() const { return status.lblStatus.Text(); }
  // Whether each of the first four buttons can be pressed, "1" or "0".
  std::string Buttons() const {
    std::string states;
    for (int button = 1; button <= 4; ++button) {
      states += toolbar.ButtonAt(button).enabled ? '1' : '0';
    }
    return states;
  }
  std::int32_t Count() const {
    return test.program.statistics[1].Of(SentenceType::VTG)[0].Stat.Count;
  }

  static std::string Speed(const char* knots) {
    return Sentence(std::string("GPVTG,9.5,T,,M,") + knots + ",N,,K") + "\n";
  }

  TestProgram test;
  ToolBar& toolbar = test.program.mainWindow.tbOffline;
  frmOfflineStatus& status = test.program.offlineStatus;
};

TEST_F(OfflineReplayTest, RunsFromPlayToTheEndOfTheFile) {
  Record(Speed("5.0") + "\r\n" + Speed("6.0") + "$GPVTG,9.5,T,,M,7.0,N,,K");
  EXPECT_EQ(Buttons(), "1100");
  Press("PLAY");
  EXPECT_EQ(Buttons(), "0011");
  EXPECT_EQ(Status(), "PROCESSING IN PROGRESS");
  EXPECT_EQ(status.lblStatus.ShownColour(), kBlack);
  EXPECT_EQ(status.lblStartTime.Text(), "03:04:05 02 Jan 2026");
  EXPECT_EQ(status.lblProcessingTime.Text(), "00:00:00");
  EXPECT_TRUE(status.Timer1.Enabled());
  RunToTheEnd();

  EXPECT_EQ(test.records.SentenceCount, 4) << "the empty line and the one without an ending count";
  EXPECT_EQ(Count(), 3);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
  EXPECT_EQ(status.lblStatus.ShownColour(), kRed);
  EXPECT_EQ(status.prgRead.Share(), 1000);
  EXPECT_FALSE(status.Timer1.Enabled());
  EXPECT_EQ(Buttons(), "1100");
  EXPECT_EQ(test.face.Beeps(), 1);
  EXPECT_TRUE(test.records.OfflineStopped) << "until the next PLAY";
  EXPECT_FALSE(test.program.files.IsOpen(1));

  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(Count(), 3) << "PLAY begins a session anew";
}

TEST_F(OfflineReplayTest, StepsFromRestAndGoesOnWithoutAReset) {
  Record(Speed("5.0") + Speed("6.0") + Speed("7.0"));
  Press("Step");
  test.face.Turn();
  test.face.Turn();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(toolbar.ButtonAt(1).key, "CONT");
  EXPECT_EQ(toolbar.ButtonAt(1).caption, "CONT");
  Press("Step");
  test.face.Turn();
  test.face.Turn();
  EXPECT_EQ(Count(), 2) << "one line and back into the pause";
  Press("CONT");
  RunToTheEnd();
  EXPECT_EQ(Count(), 3);
  EXPECT_EQ(toolbar.ButtonAt(1).key, "PLAY");

  Press("Step");
  RunToTheEnd();
  EXPECT_EQ(Count(), 3) << "behind a finished run a step ends at once";
  Press("Real time");
  Press("QUICK");
  EXPECT_FALSE(test.records.OfflineRunning);
}

TEST_F(OfflineReplayTest, HoldsInAPauseAndBehindAStandingBox) {
  // The RMC has a comma too many, so that a box stands in the middle of the file.
  Record(Speed("5.0") + "$GPRMC,120000,A,6000.0,N,00500.0,E,1,2,020126,,,A,V*\n" + Speed("6.0"));
  test.face.Expect({.text = "Error 9 : Subscript out of range  RMC-message : "
                            "$GPRMC,120000,A,6000.0,N,00500.0,E,1,2,020126,,,A,V*",
                    .meanwhile = [&] {
                      test.face.Turn();
                      EXPECT_EQ(Count(), 1) << "the line is inside the gate";
                      Press("PAUSE");
                    }});
  Press("PLAY");
  test.face.Turn();
  test.face.Turn();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(Status(), "PROCESSING PAUSED");
  EXPECT_EQ(Buttons(), "1101");
  EXPECT_TRUE(status.Timer1.Enabled()) << "the clock runs on";
  test.clock.Set(TestProgram::kNow + TimeFromParts(0, 1, 5));
  test.face.Advance(std::chrono::seconds(1));
  EXPECT_EQ(status.lblProcessingTime.Text(), "00:01:05");
  EXPECT_EQ(status.lblCurrentTime.Text(), "03:05:10");
  Press("CONT");
  RunToTheEnd();
  EXPECT_EQ(Count(), 2);
}

TEST_F(OfflineReplayTest, StopsOnlyOnYes) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("Step");
  test.face.Turn();
  test.face.ExpectBox("Are you sure?", Answer::No);
  Press("STOP");
  EXPECT_FALSE(test.records.OfflineStopped);
  test.face.ExpectBox("Are you sure?", Answer::Yes);
  Press("STOP");
  EXPECT_EQ(Status(), "PROCESSING STOPPED");
  EXPECT_EQ(Buttons(), "1100");
  // PLAY before the stopped run has ended waits for its end, and begins with the first line.
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(test.records.SentenceCount, 3);
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
}

TEST_F(OfflineReplayTest, GoesOnWhileStopAsksAndEndsWhenAnotherStopsIt) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("PLAY");
  test.face.Expect({.text = "Are you sure?", .answer = Answer::No, .meanwhile = [&] {
                      RunToTheEnd();
                      EXPECT_EQ(Count(), 2);
                    }});
  Press("STOP");

  Press("PLAY");
  test.records.OfflinePaused = true;
  test.face.Turn();
  test.records.OfflineStopped = true;
  test.face.Turn();
  EXPECT_FALSE(test.records.OfflineRunning) << "the pause ends with it";
  EXPECT_EQ(Count(), 0);
}

TEST_F(OfflineReplayTest, ReadsLinesAsTheyStand) {
  // A CR before the LF is the line's end; one within the line stays, and with it the checksum is
  // wrong.
  std::string crlf = Speed("5.0");
  crlf.insert(crlf.size() - 1, "\r");
  std::string inside = Speed("6.0");
  inside.insert(inside.size() - 1, "\rx");
  Record(crlf + inside + std::string("\0\0\n", 3));
  test.records.ChecksumTest[1] = true;
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(test.records.ChecksumErrors[1], 2);
  EXPECT_EQ(test.program.mainWindow.sbStatusBar.PanelText(4), "2");
}

TEST_F(OfflineReplayTest, LogsAFileThatCannotBeReadOnceAndEnds) {
  test.records.CommSetups[1].OfflineFile = test.folder / "missing.log";
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(test.program.errorLog.Written(), 1);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
  EXPECT_THAT(ReadWholeFile(test.folder / "ErrorLog/ErrorLog.txt"), HasSubstr("File not found"));

  // Only the second system has a file: nothing is open to read from.
  test.records.CommSetups[1].OfflineFile.clear();
  test.records.CommSetups[2].OfflineFile = test.folder.Write("second.log", Speed("5.0"));
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(test.program.errorLog.Written(), 2);
  EXPECT_EQ(test.records.SentenceCount, 0);
}

TEST_F(OfflineReplayTest, LogsFaultsOfLinesAndGoesOn) {
  Record("\\\\\\\\\\\\\\\\\\\\\\\n" + Speed("5.0"));
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(test.program.errorLog.Written(), 1);
  EXPECT_EQ(Count(), 1);
}

TEST_F(OfflineReplayTest, EndsWhereTheErrorLogCannotBeWritten) {
  test.folder.Write("ErrorLog", "a file in the place of the folder");
  Record("\\\\\\\\\\\\\\\\\\\\\\\n" + Speed("5.0"));
  test.face.ExpectBox("");
  Press("PLAY");
  RunToTheEnd();
  EXPECT_THAT(test.face.Boxes().back().text, HasSubstr("Subscript out of range"));
  EXPECT_EQ(Count(), 0);
}

TEST_F(OfflineReplayTest, StopsAtOnceWhereTheUserGivesUp) {
  std::string bytes;
  for (int i = 0; i < 12; ++i) bytes += "\\\\\\\\\\\\\\\\\\\\\\\n";
  Record(bytes);
  test.face.ExpectBox("", Answer::No);
  Press("PLAY");
  test.face.Turn();
  EXPECT_TRUE(test.ended);
}

TEST_F(OfflineReplayTest, StatusWindowNamesTheFileAndKeepsItsSize) {
  Record("");
  status.Close();
  status.Show();
  EXPECT_EQ(status.lblFileName.Text(), test.records.CommSetups[1].OfflineFile);
  EXPECT_EQ(Status(), "not started");
  status.UserPlace({50, 60, 20000, 9000});
  EXPECT_EQ(status.Place(), (WindowPlace{50, 60, 10000, 3000}));
  Press("PLAY");
  RunToTheEnd();
  EXPECT_EQ(Status(), "END OF FILE REACHED");
}

}  // namespace
}  // namespace fathomline
