// The replay, driven through the keys of its tool bar.
#include "sources/offline_replay.h"

#include <gmock/gmock.h>
#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "support/session.h"

namespace fathomline {
namespace {

using testing::AllOf;
using testing::HasSubstr;

struct OfflineSession : Session {
  OfflineSession() {
    Prepare([](Records& records) {
      records.Mode = kOffline;
      records.MessagesToAnalyse[1][0] = "VTG";
    });
    EXPECT_TRUE(Start());
  }
};

struct OfflineReplayTest : testing::Test, OfflineSession {
  void Record(const std::string& bytes) {
    records().CommSetups[1].OfflineFile = folder.Write("recording.log", bytes);
  }
  void Press(std::string_view key) { toolbar.Click(key); }
  void Replay() {
    Press("PLAY");
    RunToTheEnd();
  }
  std::string Status() { return status.lblStatus.Text(); }
  // Whether each of the first four buttons can be pressed, "1" or "0".
  std::string Buttons() {
    std::string states;
    for (int button = 1; button <= 4; ++button) {
      states += toolbar.ButtonAt(button).enabled ? '1' : '0';
    }
    return states;
  }
  std::int32_t Count() {
    return program->engine.statistics[1].Of<VTGRecord, &VTGRecord::SOGKnots>().Stat.Count;
  }

  static std::string Speed(const char* knots) {
    return Sentence(std::string("GPVTG,9.5,T,,M,") + knots + ",N,,K") + "\n";
  }

  ToolBar& toolbar = mainWindow().tbOffline;
  frmOfflineStatus& status = program->windows.offlineStatus;
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

  EXPECT_EQ(records().SentenceCount, 4) << "the empty line and the one without an ending count";
  EXPECT_EQ(Count(), 3);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
  EXPECT_EQ(status.lblStatus.ShownColour(), kRed);
  EXPECT_EQ(status.prgRead.Share(), 1000);
  EXPECT_FALSE(status.Timer1.Enabled());
  EXPECT_EQ(Buttons(), "1100");
  EXPECT_EQ(face.Beeps(), 1);
  EXPECT_TRUE(records().OfflineStopped) << "until the next PLAY";
  EXPECT_FALSE(program->engine.files.IsOpen(1));
  status.UserPlace({50, 60, 20000, 9000});
  EXPECT_EQ(status.Place(), (WindowPlace{50, 60, 10000, 3000})) << "the size is fixed";

  Replay();
  EXPECT_EQ(Count(), 3) << "PLAY begins a session anew";
}

TEST_F(OfflineReplayTest, StepsFromRestAndGoesOnWithoutAReset) {
  Record(Speed("5.0") + Speed("6.0") + Speed("7.0"));
  Press("Step");
  face.Turn();
  face.Turn();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(toolbar.ButtonAt(1).key, "CONT");
  EXPECT_EQ(toolbar.ButtonAt(1).caption, "CONT");
  Press("Step");
  face.Turn();
  face.Turn();
  EXPECT_EQ(Count(), 2) << "one line and back into the pause";
  EXPECT_EQ(records().OfflineStartTime.days, kNow.days);
  Press("CONT");
  EXPECT_EQ(Status(), "PROCESSING IN PROGRESS");
  EXPECT_TRUE(status.Timer1.Enabled());
  RunToTheEnd();
  EXPECT_EQ(Count(), 3);
  EXPECT_EQ(toolbar.ButtonAt(1).key, "PLAY");

  Press("Step");
  RunToTheEnd();
  EXPECT_EQ(Count(), 3) << "behind a finished run a step ends at once";
  Press("Real time");
  Press("QUICK");
  EXPECT_FALSE(records().OfflineRunning);
}

TEST_F(OfflineReplayTest, LooksAtTheClockAndTellsItsProgressEverySixteenLines) {
  std::string bytes;
  for (int line = 0; line < 32; ++line) bytes += Speed("5.0");
  Record(bytes);
  Press("PLAY");
  OfflineReplay& replay = program->session.replay;
  EXPECT_TRUE(replay.RunSlice({}));
  EXPECT_EQ(records().SentenceCount, 16);
  EXPECT_EQ(status.prgRead.Share(), 500);
  Press("PAUSE");
  EXPECT_FALSE(replay.RunSlice({})) << "nothing to do for now";
  Press("CONT");
  EXPECT_TRUE(replay.RunSlice({}));
  EXPECT_EQ(records().SentenceCount, 32);
  EXPECT_FALSE(replay.RunSlice({}));
  face.Turn();
  EXPECT_EQ(program->session.errorLog.Written(), 0) << "nothing reads on behind the end";
}

TEST_F(OfflineReplayTest, AStepThroughTheLastLineEndsTheRun) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("Step");
  face.Turn();
  EXPECT_TRUE(records().OfflineRunning);
  Press("Step");
  face.Turn();
  EXPECT_EQ(Count(), 2);
  EXPECT_FALSE(records().OfflineRunning);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
  EXPECT_EQ(Buttons(), "1100");
}

TEST_F(OfflineReplayTest, HoldsInAPauseAndBehindAStandingBox) {
  // The RMC has a comma too many, so that a box stands in the middle of the file.
  Record(Speed("5.0") + "$GPRMC,120000,A,6000.0,N,00500.0,E,1,2,020126,,,A,V*\n" + Speed("6.0"));
  face.Expect({.text = "Error 9 : Subscript out of range  RMC-message : "
                       "$GPRMC,120000,A,6000.0,N,00500.0,E,1,2,020126,,,A,V*",
               .meanwhile = [&] {
                 face.Turn();
                 EXPECT_EQ(Count(), 1) << "the line is inside the gate";
                 Press("PAUSE");
               }});
  Press("PLAY");
  face.Turn();
  face.Turn();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(Status(), "PROCESSING PAUSED");
  EXPECT_EQ(Buttons(), "1101");
  EXPECT_TRUE(status.Timer1.Enabled()) << "the clock runs on";
  clock.Set(kNow + TimeFromParts(0, 1, 5));
  face.Advance(std::chrono::seconds(1));
  EXPECT_EQ(status.lblProcessingTime.Text(), "00:01:05");
  EXPECT_EQ(status.lblCurrentTime.Text(), "03:05:10");
  Press("CONT");
  EXPECT_EQ(Buttons(), "0011");
  RunToTheEnd();
  EXPECT_EQ(Count(), 2);
}

TEST_F(OfflineReplayTest, StopsAndBeginsAnew) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("Step");
  face.Turn();
  face.ExpectBox("Are you sure?", Answer::Yes);
  Press("STOP");
  EXPECT_EQ(Status(), "PROCESSING STOPPED");
  EXPECT_EQ(Buttons(), "1100");
  // PLAY before the stopped run has ended waits for its end, and begins with the first line.
  Replay();
  EXPECT_EQ(records().SentenceCount, 3);
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(Status(), "END OF FILE REACHED");
}

TEST_F(OfflineReplayTest, GoesOnWhileStopAsksAndEndsWhenAnotherStopsIt) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("PLAY");
  face.Expect({.text = "Are you sure?", .answer = Answer::No, .meanwhile = [&] {
                 RunToTheEnd();
                 EXPECT_EQ(Count(), 2);
               }});
  Press("STOP");

  Press("PLAY");
  records().OfflinePaused = true;
  face.Turn();
  records().OfflineStopped = true;
  face.Turn();
  EXPECT_FALSE(records().OfflineRunning) << "the pause ends with it";
  EXPECT_EQ(Count(), 0);
  Press("PLAY");
  mainWindow().UserClose();
  EXPECT_TRUE(records().OfflineStopped);
}

TEST_F(OfflineReplayTest, AnotherSetupBeginsWithAStatusOfItsOwn) {
  Record(Speed("5.0") + Speed("6.0"));
  Press("Step");
  Deliver();
  face.ExpectFile(
      folder.Write("other.ini", SetupOf([](Records& other) { other.Mode = kOffline; })));
  records().ChecksumErrors[1] = records().IgnoredMessages[4] = 7;
  mainWindow().mnuFileOpen.Click();
  EXPECT_EQ(records().ChecksumErrors[1] + records().IgnoredMessages[4], 0);
  RunToTheEnd();
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(Status(), "not started");
  EXPECT_EQ(status.prgRead.Share(), 0);
}

TEST_F(OfflineReplayTest, ReadsLinesAsTheyStand) {
  // A CR before the LF is the line's end; one within the line stays and is a wrong checksum.
  Record(Sentence("GPVTG,9.5,T,,M,5.0,N,,K") + "\r\n" + Sentence("GPVTG,9.5,T,,M,6.0,N,,K") +
         "\rx\n" + std::string("\0\0\n", 3));
  records().ChecksumTest[1] = true;
  Replay();
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(records().ChecksumErrors[1], 2);
  EXPECT_EQ(mainWindow().sbStatusBar.PanelText(4), "2");
}

TEST_F(OfflineReplayTest, LogsAFileThatCannotBeReadOnceAndEnds) {
  records().CommSetups[1].OfflineFile = folder / "missing.log";
  Replay();
  EXPECT_EQ(Status(), "END OF FILE REACHED");
  records().CommSetups[1].OfflineFile = folder.Path();
  Replay();
  EXPECT_EQ(program->session.errorLog.Written(), 2);
  EXPECT_THAT(ReadWholeFile(folder / "ErrorLog/ErrorLog.txt"),
              AllOf(HasSubstr("File not found"),
                    HasSubstr("Path/File access error (Is a directory): " + folder.Path())));

  // Only the second system has a file: nothing is open to read from.
  records().CommSetups[1].OfflineFile.clear();
  records().CommSetups[2].OfflineFile = folder.Write("second.log", Speed("5.0"));
  Replay();
  EXPECT_EQ(program->session.errorLog.Written(), 3);
  EXPECT_EQ(records().SentenceCount, 0);

  Record(Speed("5.0"));
  records().CommSetups[4].OfflineFile = folder / "missing.log";
  Replay();
  EXPECT_EQ(program->session.errorLog.Written(), 4);
  EXPECT_EQ(Count(), 1) << "nobody needs the other files";
}

// The sentences that tell the time need not be analysed. A second talker lags behind and counts for
// nothing; the recording crosses midnight, has a gap, and jumps back.
TEST_F(OfflineReplayTest, KeepsToTheTimeOfItsSentencesWhereItsUserWants) {
  const auto at = [](const char* time) {
    return "$GPGGA," + std::string(time) + ",,,,,0,,,,M,,M,,\r\n$IIGLL,,,,,235000,V\r\n" +
           Speed("5");
  };
  Record(Speed("5") + at("235958") + at("235959") + at("000000.50") + at("000001.5") +
         at("070000") + at("060000") + at("060010") + at("060020") + at("060030") + at("060040") +
         at("060041"));
  const auto choose = [&](int item) {
    mainWindow().mnuToolsReplaySpeedOf(item).Click();
    for (int other = 1; other <= 5; ++other) {
      EXPECT_EQ(mainWindow().mnuToolsReplaySpeedOf(other).Checked(), other == item);
    }
  };
  // The samples after so much more time, in milliseconds.
  const auto after = [&](int more) {
    for (int passed = 0; passed < more; passed += 50) {
      face.Advance(std::chrono::milliseconds(50));
    }
    return Count();
  };
  choose(2);
  Press("PLAY");
  EXPECT_EQ(after(950), 2) << "the first is due at once";
  EXPECT_EQ(after(100), 3);
  EXPECT_EQ(after(1400), 3);
  EXPECT_EQ(after(100), 4);
  choose(3);
  EXPECT_EQ(after(100), 5) << "at once after a change";
  EXPECT_EQ(after(59'800), 5);
  EXPECT_EQ(after(200), 7) << "a gap of hours, and the jump back behind it";
  EXPECT_EQ(after(2500), 7);
  Press("PAUSE");
  EXPECT_EQ(after(60'000), 7);
  Press("CONT");
  EXPECT_EQ(after(100), 8);
  EXPECT_EQ(after(4700), 8) << "the pause is not made up for";
  EXPECT_EQ(after(300), 9);
  Press("PAUSE");
  for (int line = 0; line < 3; ++line) {
    Press("Step");
    after(50);
  }
  EXPECT_EQ(Count(), 10);
  Press("CONT");
  EXPECT_EQ(after(50), 11) << "at once behind a step";
  choose(4);
  face.ExpectBox("Are you sure?", Answer::Yes);
  Press("STOP");
  EXPECT_EQ(Buttons(), "1100");
  after(50);
  EXPECT_FALSE(records().OfflineRunning);
  choose(1);
  Replay();
  EXPECT_EQ(Count(), 12);
}

#if !defined(_WIN32)
TEST_F(OfflineReplayTest, APipeIsReadAsItsLinesComeAndHoldsNobodyUp) {
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  records().CommSetups[1].OfflineFile = pipe;
  Replay();
  EXPECT_EQ(Status(), "END OF FILE REACHED");

  const int writer = ::open(pipe.c_str(), O_RDWR);
  const std::string line = Speed("5.0");
  for (const char* const what : {"a line", "nothing"}) {
    Press("PLAY");
    if (what == std::string("a line")) {
      ASSERT_EQ(::write(writer, line.data(), line.size()), static_cast<ssize_t>(line.size()));
      program->desktop.RunUntil([this] { return Count() == 1; });
    }
    EXPECT_TRUE(records().OfflineRunning);
    face.ExpectBox("Are you sure?", Answer::Yes);
    Press("STOP");
    RunToTheEnd();
    EXPECT_EQ(Status(), "PROCESSING STOPPED");
  }
  ::close(writer);
  EXPECT_EQ(program->session.errorLog.Written(), 0);
}
#endif

TEST_F(OfflineReplayTest, LogsFaultsOfLinesAndGoesOnUntilItsUserGivesUp) {
  const std::string faulty = "\\\\\\\\\\\\\\\\\\\\\\\n";
  Record(faulty + Speed("5.0"));
  Replay();
  EXPECT_EQ(program->session.errorLog.Written(), 1);
  EXPECT_EQ(Count(), 1);

  std::string bytes;
  for (int i = 0; i < 10; ++i) bytes += faulty;
  Record(bytes);
  face.ExpectBox("", Answer::No);
  Press("PLAY");
  face.Turn();
  EXPECT_TRUE(ended);

  // Where the log cannot be written the replay ends.
  RunToTheEnd();
  records().ProgramFolder = folder / "gone/";
  Record(faulty + Speed("5.0"));
  face.Expect({});
  Replay();
  EXPECT_THAT(face.Boxes().back().text, HasSubstr("Subscript out of range"));
  EXPECT_EQ(Count(), 0);
}

}  // namespace
}  // namespace fathomline
