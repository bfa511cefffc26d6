// A disk without room, or a folder that takes no more files, under each file that is written.
#include <filesystem>
#include <gmock/gmock.h>

#include "setup/reference_positions.h"
#include "support/expect_fault.h"
#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kLog = "log/20260102-0304-Prim-Bridge.log";

struct FullDisk : ::testing::Test, Session {
  FullDisk() {
    Prepare([](Records& records) {
      records.CommSetups[1].UseTCPIP = true;
      records.MessagesToAnalyse[1] = {"HDT"};
    });
    EXPECT_TRUE(Start());
  }

  // Whatever is written there finds no room.
  void Fill(const std::string& name) {
    std::filesystem::create_directories(std::filesystem::path(folder / name).parent_path());
    std::filesystem::create_symlink("/dev/full", folder / name);
  }
  void Receive() {
    links.Winsock1(1).Arrive(Sentence("HEHDT,10.5,T") + "\r\n");
    Deliver();
  }
  std::int32_t Count() {
    return program->engine.statistics[1].Of<HDTRecord, &Deviations::deltaHdg>().Stat.Count;
  }
  std::string LastBox() { return face.Boxes().back().text; }
};

TEST_F(FullDisk, LoggingTellsInTheErrorLogAndCanBeStopped) {
  Fill(kLog);
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
  Receive();
  Receive();
  EXPECT_EQ(records().SentenceCount, 2);
  EXPECT_THAT(ReadWholeFile(folder / "ErrorLog/ErrorLog.txt"),
              HasSubstr("Disk full: " + folder / kLog));
  face.ExpectBox("Logging stopped. Data stored in file " + folder.Path() + "log/\r\n" +
                 records().LogFileName[1]);
  mainWindow().tbOnline.Click("LOG");
  Receive();
  EXPECT_EQ(Count(), 1);
}

TEST_F(FullDisk, AnErrorLogWithoutRoomIsToldOnce) {
  Fill(kLog);
  Fill("ErrorLog/ErrorLog.txt");
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
  face.Expect({});
  for (int i = 0; i < 20; ++i) Receive();
  EXPECT_THAT(LastBox(),
              AllOf(StartsWith("The error log cannot be written: Disk full"), HasSubstr(kLog)));
  EXPECT_EQ(records().SentenceCount, 20);
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
}

TEST_F(FullDisk, ALogThatCannotBeOpenedIsToldWhereItsButtonIs) {
  folder.Write("log", "a file stands where the folder should");
  face.Expect({});
  mainWindow().tbOnline.Click("LOG");
  EXPECT_THAT(LastBox(), AllOf(StartsWith("Logging not started. "), HasSubstr(folder / "log")));
  EXPECT_FALSE(records().LoggingOn);
  EXPECT_EQ(program->session.errorLog.Written(), 1);
  Receive();
  EXPECT_EQ(Count(), 1);
}

TEST_F(FullDisk, SavingTheSetupKeepsTheOldOne) {
  const std::string before = ReadWholeFile(folder / "Fathomline.ini");
  records().SessionInfo = "new";
  for (const bool ending : {false, true}) {
    Fill("Fathomline.ini.tmp");
    face.Expect({});
    if (ending) {
      mainWindow().UserClose();
    } else {
      mainWindow().mnuFileSave.Click();
    }
    EXPECT_THAT(LastBox(), StartsWith("Setup not saved. Disk full"));
    EXPECT_EQ(ReadWholeFile(folder / "Fathomline.ini"), before);
  }
  EXPECT_TRUE(program->desktop.Quitting());
}

TEST_F(FullDisk, StoringAReferenceKeepsTheOldOnes) {
  const std::string line = "\"Quay\",1,2,3\r\n";
  folder.Write(kReferenceFileName, line);
  Fill(std::string(kReferenceBufferName));
  ExpectFault(FaultNumber::DiskFull, [this] {
    StoreReferencePosition(folder.Path(), {"Mast", 0.5, 0.25, 8.0F}, program->desktop);
  });
  EXPECT_EQ(ReadWholeFile(folder / kReferenceFileName), line);
  EXPECT_FALSE(FileExists(folder / kReferenceBufferName));
}

TEST_F(FullDisk, AReportTellsItsCause) {
  Fill("Reports/20260102-0304-Prim-Bridge.txt");
  face.Expect({});
  program->engine.report.Print_Report(1);
  EXPECT_EQ(LastBox(),
            "Disk full: " + program->engine.report.ReportPath(1) + "(SUB: Print_Report)");
}

}  // namespace
}  // namespace fathomline
