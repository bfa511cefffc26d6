// Whole sessions, from the link to the figures.
#include "support/session.h"

#include <gmock/gmock.h>
#include <set>
#include <vector>

#include "support/sentences.h"

namespace fathomline {
namespace {

using ::testing::HasSubstr;

std::string Shown(Window& window) {
  std::ostringstream out;
  window.Write(out);
  return out.str();
}

struct LiveSession : ::testing::Test, Session {
  LiveSession() {
    Prepare([](Records& records) {
      records.CommSetups[1].UseTCPIP = true;
      records.MessagesToAnalyse[1] = {"GGA", "HDT"};
      records.SystemSetups[1][WindowFlag::Numerics] = true;
      records.SystemSetups[1][WindowFlag::Statistics] = true;
    });
    EXPECT_TRUE(Start());
  }

  void Receive(std::string_view text) {
    links.Winsock1(1).Arrive(text);
    Deliver();
  }
};

TEST_F(LiveSession, WhatWasLoggedReplaysToTheSameFigures) {
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
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
  const std::string log = folder / "log/" + records().LogFileName[1];
  const std::string statistics = Shown(*program->windows.statistics[1]);
  const std::string numerics = Shown(*program->windows.numerics[1]);
  EXPECT_THAT(statistics, HasSubstr("fgGGA"));
  EXPECT_EQ(ReadWholeFile(log), text);

  face.ExpectBox(kModeQuestion, Answer::Yes);
  face.Expect({});  // the log stops
  mainWindow().mnuModeOffline.Click();
  records().CommSetups[1].OfflineFile = log;
  mainWindow().tbOffline.Click("PLAY");
  RunToTheEnd();
  EXPECT_EQ(Shown(*program->windows.statistics[1]), statistics);
  EXPECT_EQ(Shown(*program->windows.numerics[1]), numerics);
}

// Fourteen commas make the decoder show its box; the user closes the program behind it.
TEST_F(LiveSession, TheProgramEndsWhileADecodersBoxStands) {
  bool closed = false;
  face.Expect({"", Answer::Ok, false, [&] {
                 mainWindow().UserClose();
                 closed = true;
               }});
  Receive(Sentence("GPRMC,101112,A,5930.5,N,01045.2,E,1,2,020126,,,A,V,") + "\r\n" +
          Sentence("HEHDT,10.5,T") + "\r\n");
  EXPECT_TRUE(closed);
  EXPECT_TRUE(program->desktop.Quitting());
  EXPECT_FALSE(program->windows.statistics[1]->Loaded());
}

// A socket has no handler of its own: the fault ends the read and is written down.
TEST_F(LiveSession, AFaultOfASocketLineGoesToTheErrorLog) {
  Receive("\\\\\\\\\\\\\\\\\\\\\\\r\n" + Sentence("HEHDT,10.5,T") + "\r\n");
  face.ExpectBox("Overflow");
  program->desktop.onFault(Fault(FaultNumber::Overflow), &program->session.setupDialog);
  EXPECT_EQ(program->session.errorLog.Written(), 1) << "what its user has done is told alone";
  EXPECT_EQ((program->engine.statistics[1].Of<HDTRecord, &Deviations::deltaHdg>().Stat.Count), 0);
  Receive(Sentence("HEHDT,10.5,T") + "\r\n");
  EXPECT_EQ((program->engine.statistics[1].Of<HDTRecord, &Deviations::deltaHdg>().Stat.Count), 1);

  // A log that cannot be written is told once.
  records().ProgramFolder = folder / "gone/";
  face.Expect({});
  for (int i = 0; i < 3; ++i) Receive("\\\\\\\\\\\\\\\\\\\\\\\n");
  EXPECT_THAT(face.Boxes().back().text,
              testing::AllOf(testing::StartsWith("The error log cannot be written"),
                             HasSubstr("\r\nThe fault was: ")));
  records().ProgramFolder = folder.Path();
}

TEST(Views, AreFlaggedWhileTheyAreOpen) {
  TestProgram session;
  const auto flags = [&session] {
    std::vector<std::size_t> set;
    for (std::size_t i = 0; i < kWindowFlags; ++i) {
      if (session.records.SystemSetups[1][static_cast<WindowFlag>(i)]) set.push_back(i);
    }
    return set;
  };
  std::set<std::size_t> all;
  for (Window* const window : session.program.desktop.Windows()) {
    if (window->Index() != 1) continue;
    window->Show();
    EXPECT_EQ(flags().size(), 1U) << window->FullName();
    for (const std::size_t flag : flags()) all.insert(flag);
    window->Close();
    EXPECT_EQ(flags().size(), 0U) << window->FullName();
  }
  EXPECT_EQ(all.size(), 22U) << "one for all SNR windows";
}

}  // namespace
}  // namespace fathomline
