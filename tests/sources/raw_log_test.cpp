#include "sources/raw_log.h"

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

struct RawLogging : ::testing::Test, TestProgram {
  RawLogging() {
    records.CommSetups[4].Enabled = true;
    records.CommSetups[4].Name = "../Gyro";
  }

  void Toggle(const std::string& box) {
    face.ExpectBox(box);
    log.StartStopLogging();
  }
  std::string Content(const std::string& name) { return ReadWholeFile(folder / "log/" + name); }

  RawLog& log = program.session.rawLog;
  const std::string place = folder / "log" + kPathSeparator + "\r\n";
  const std::string prim = "20260102-0304-Prim-DGPS.log";
  const std::string sec = "20260102-0304-Sec3-.._Gyro.log";
};

TEST_F(RawLogging, NamesItsFilesAndWritesEachLineAtOnce) {
  const std::string started = "Logging started. Data will be stored in file " + place;
  const std::string stopped = "Logging stopped. Data stored in file " + place;
  const std::string both = prim + "\r\n" + sec;
  Toggle(started + both);
  EXPECT_TRUE(records.LoggingOn);
  EXPECT_EQ(face.Boxes()[0].icon, BoxIcon::Information);

  log.LogRawData(1, "$GPGGA\r\n");
  EXPECT_EQ(Content(prim), "$GPGGA\r\n");
  log.LogRawData(4, "from a file");
  records.CommSetups[2].Enabled = true;
  log.LogRawData(2, "no log, as the system was not enabled when logging began");
  records.CommSetups[2].Enabled = false;
  Toggle(stopped + both);
  EXPECT_FALSE(records.LoggingOn);
  EXPECT_EQ(Content(sec), "from a file\r\n");
  log.LogRawData(1, "");

  Toggle(started + both);
  EXPECT_EQ(Content(prim), "") << "replaced in the same minute";
  Toggle(stopped + both);
  records.CommSetups[1].Enabled = records.CommSetups[4].Enabled = false;
  Toggle(started);
}

TEST_F(RawLogging, KeepsLineEndingsOfShortLinesAndBareLineFeeds) {
  Toggle("");
  log.LogRawData(1, "$AB\r\n");    // five characters: keeps its own
  log.LogRawData(1, "$ABC\r\n");   // six: not doubled
  log.LogRawData(1, "$ABCDEF\n");  // a bare line feed stays
  log.LogRawData(1, "\\s:r*3A\\x\xE6\r\n");
  EXPECT_EQ(Content(prim), "$AB\r\n\r\n$ABC\r\n$ABCDEF\n\r\n\\s:r*3A\\x\xE6\r\n");
  ExpectFault(FaultNumber::InvalidCall, [&] { log.LogRawData(1, ""); });
  ExpectFault(FaultNumber::InvalidCall, [&] { log.LogRawData(1, "\n"); });
  program.engine.files.CloseAll();  // as the end of a replay does
  ExpectFault(FaultNumber::BadFileNumber, [&] { log.LogRawData(1, "line"); });
}

TEST_F(RawLogging, ALogThatCannotBeOpenedClosesTheOthers) {
  MakeFolder(folder / "log");
  MakeFolder(folder / "log/" + sec);
  face.ExpectBox("Logging not started. Path/File access error (Is a directory): " +
                 (folder / "log/" + sec));
  EXPECT_THROW(log.StartStopLogging(), Fault);
  EXPECT_FALSE(records.LoggingOn);
  EXPECT_EQ(records.LogFileNumber[1], 0);
  EXPECT_EQ(program.engine.files.FreeFile(), 5);
}

}  // namespace
}  // namespace fathomline
