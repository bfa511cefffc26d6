// Whole sessions, from the link to the figures.
#include "support/session.h"

#include <gmock/gmock.h>

#include "support/sentences.h"

namespace fathomline {
namespace {

using ::testing::HasSubstr;

std::string Shown(Window& window) {
  std::ostringstream out;
  window.Write(out);
  return out.str();
}

struct LiveSession : ::testing::Test {
  LiveSession() {
    session.Prepare([](Records& records) {
      records.CommSetups[1].UseTCPIP = true;
      records.MessagesToAnalyse[1] = {"GGA", "HDT"};
      records.SystemSetups[1][WindowFlag::Numerics] = true;
      records.SystemSetups[1][WindowFlag::Statistics] = true;
    });
    EXPECT_TRUE(session.Start());
  }

  void Receive(std::string_view text) {
    session.links.Winsock1(1).Arrive(text);
    session.Deliver();
  }

  Session session;
};

TEST_F(LiveSession, WhatWasLoggedReplaysToTheSameFigures) {
  session.face.Expect({});
  session.mainWindow().tbOnline.Click("LOG");
  std::string text = "\\s:r,c:1*3A\\" +
                     Sentence("GPGGA,101112,5930.5000,N,01045.2500,E,1,08,0.9,12.5,M,40,M,,") +
                     "\r\nrubbish\r\n";
  // Within 2.5 of the reference: bins above keep their counts over a reset.
  for (int i = 0; i < 50; ++i) {
    text += Sentence("GPGGA,1012" + std::to_string(10 + i) + ",5930.500" + std::to_string(10 + i) +
                     ",N,01045.2500,E,1,08,0.9,12." + std::to_string(i) + ",M,40,M,,") +
            "\r\n" + Sentence("HEHDT,100." + std::to_string(10 + i) + ",T") + "\r\n";
  }
  Receive(text);
  const std::string log = session.folder / "log/" + session.records().LogFileName[1];
  const std::string statistics = Shown(*session.program->statisticsWindows[1]);
  const std::string numerics = Shown(*session.program->numericsWindows[1]);
  EXPECT_THAT(statistics, HasSubstr("fgGGA"));
  EXPECT_EQ(ReadWholeFile(log), text);

  session.face.ExpectBox(kModeQuestion, Answer::Yes);
  session.face.Expect({});  // the log stops
  session.mainWindow().mnuModeOffline.Click();
  session.records().CommSetups[1].OfflineFile = log;
  session.mainWindow().tbOffline.Click("PLAY");
  session.program->desktop.RunUntil([&] { return !session.records().OfflineRunning; });
  EXPECT_EQ(Shown(*session.program->statisticsWindows[1]), statistics);
  EXPECT_EQ(Shown(*session.program->numericsWindows[1]), numerics);
}

// Fourteen commas make the decoder show its box; the user closes the program behind it.
TEST_F(LiveSession, TheProgramEndsWhileADecodersBoxStands) {
  bool closed = false;
  session.face.Expect({"", Answer::Ok, false, [&] {
                         session.mainWindow().UserClose();
                         closed = true;
                       }});
  Receive(Sentence("GPRMC,101112,A,5930.5,N,01045.2,E,1,2,020126,,,A,V,") + "\r\n" +
          Sentence("HEHDT,10.5,T") + "\r\n");
  EXPECT_TRUE(closed);
  EXPECT_TRUE(session.program->desktop.Quitting());
  EXPECT_FALSE(session.program->statisticsWindows[1]->Loaded());
}

// A socket has no handler of its own: the fault ends the read and is written down.
TEST_F(LiveSession, AFaultOfASocketLineGoesToTheErrorLog) {
  Receive("\\\\\\\\\\\\\\\\\\\\\\\r\n" + Sentence("HEHDT,10.5,T") + "\r\n");
  EXPECT_EQ(session.program->errorLog.Written(), 1);
  EXPECT_EQ(session.program->statistics[1].Of<HDTRecord>()[0].Stat.Count, 0);
  Receive(Sentence("HEHDT,10.5,T") + "\r\n");
  EXPECT_EQ(session.program->statistics[1].Of<HDTRecord>()[0].Stat.Count, 1);
}

TEST_F(LiveSession, AnErrorLogThatCannotBeWrittenIsToldOnce) {
  session.records().ProgramFolder = session.folder / "gone/";
  session.face.Expect({});
  for (int i = 0; i < 3; ++i) Receive("\\\\\\\\\\\\\\\\\\\\\\\n");
  EXPECT_THAT(session.face.Boxes().back().text, HasSubstr("The error log cannot be written"));
  session.records().ProgramFolder = session.folder.Path();
}

TEST_F(LiveSession, RefusedSentencesCountInTheirPanel) {
  session.records().ChecksumTest[1] = true;
  Receive("$HEHDT,10.5,T*00\r\n$HEHDT,10.5,T*00\r\n");
  EXPECT_EQ(session.mainWindow().sbStatusBar.PanelText(4), "2");
}

}  // namespace
}  // namespace fathomline
