#include "sources/raw_log.h"

#include <gmock/gmock.h>

#include "platform/files.h"
#include "support/expect_fault.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

struct RawLogging : ::testing::Test {
  RawLogging() {
    records.ProgramFolder = folder.Path();
    records.CommSetups[1].Enabled = records.CommSetups[3].Enabled = true;
    records.CommSetups[1].Name = "DGPS";
    records.CommSetups[3].Name = "../Gyro";
  }

  std::string Content(std::string_view name) {
    return ReadWholeFile(folder / "log/" + std::string(name));
  }

  TemporaryFolder folder;
  Records records;
  FileTable files;
  FrozenClock clock{DateTime{43764.60446759259}};  // 26 October 2019, 14:30:26
  RecordingDialogs dialogs;
  RawLog log{records, files, clock, dialogs};
};

TEST_F(RawLogging, NamesItsFilesAndWritesEachLineAtOnce) {
  log.StartStopLogging();
  EXPECT_TRUE(records.LoggingOn);
  EXPECT_EQ(dialogs.boxes[0].text, "Logging started. Data will be stored in file " + folder.Path() +
                                       "log/\r\n20191026-1430-Prim-DGPS.log\r\n"
                                       "20191026-1430-Sec2-.._Gyro.log");
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Information);

  log.LogRawData(1, "$GPGGA\r\n");
  EXPECT_EQ(Content("20191026-1430-Prim-DGPS.log"), "$GPGGA\r\n");
  log.LogRawData(3, "from a file");
  log.LogRawData(2, "no log, as the system was not enabled");
  records.CommSetups[2].Enabled = true;
  log.LogRawData(2, "nor is there one when it is enabled later");

  log.StartStopLogging();
  EXPECT_FALSE(records.LoggingOn);
  EXPECT_EQ(dialogs.boxes[1].text, "Logging stopped. Data stored in file " + folder.Path() +
                                       "log/\r\n20191026-1430-Prim-DGPS.log\r\n"
                                       "20191026-1430-Sec2-.._Gyro.log");
  EXPECT_EQ(Content("20191026-1430-Sec2-.._Gyro.log"), "from a file\r\n");
  log.LogRawData(1, "");
}

TEST_F(RawLogging, KeepsLineEndingsOfShortLinesAndBareLineFeeds) {
  log.StartStopLogging();
  log.LogRawData(1, "$AB\r\n");    // five characters: keeps its own
  log.LogRawData(1, "$ABC\r\n");   // six: not doubled
  log.LogRawData(1, "$ABCDEF\n");  // a bare line feed stays
  log.LogRawData(1, "\\s:r*3A\\x\xE6\r\n");
  EXPECT_EQ(Content("20191026-1430-Prim-DGPS.log"),
            "$AB\r\n\r\n$ABC\r\n$ABCDEF\n\r\n\\s:r*3A\\x\xE6\r\n");
  ExpectFault(FaultNumber::InvalidCall, [&] { log.LogRawData(1, ""); });
  ExpectFault(FaultNumber::InvalidCall, [&] { log.LogRawData(1, "\n"); });
}

TEST_F(RawLogging, ReplacesTheLogsOfTheSameMinute) {
  log.StartStopLogging();
  log.LogRawData(1, "first session");
  log.StartStopLogging();
  log.StartStopLogging();
  EXPECT_EQ(Content("20191026-1430-Prim-DGPS.log"), "");
}

TEST_F(RawLogging, WithNoSystemOnlyTheFolderIsNamed) {
  records.CommSetups[1].Enabled = records.CommSetups[3].Enabled = false;
  log.StartStopLogging();
  EXPECT_EQ(dialogs.boxes[0].text,
            "Logging started. Data will be stored in file " + folder.Path() + "log/\r\n");
}

TEST_F(RawLogging, ALogThatCannotBeOpenedClosesTheOthers) {
  MakeFolder(folder / "log");
  MakeFolder(folder / "log/20191026-1430-Sec2-.._Gyro.log");
  EXPECT_THROW(log.StartStopLogging(), Fault);
  EXPECT_FALSE(records.LoggingOn);
  EXPECT_EQ(records.LogFileNumber[1], 0);
  EXPECT_EQ(files.FreeFile(), 5);
}

TEST_F(RawLogging, AFileClosedBehindItsBackFaults) {
  log.StartStopLogging();
  files.CloseAll();
  ExpectFault(FaultNumber::BadFileNumber, [&] { log.LogRawData(1, "line"); });
}

}  // namespace
}  // namespace fathomline
