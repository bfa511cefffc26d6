#include "pipeline/error_log.h"

#include <gtest/gtest.h>

#include "support/expect_fault.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

class ErrorLogTest : public testing::Test {
 protected:
  ErrorLogTest() { records.ProgramFolder = folder.Path(); }
  void Write(int times) {
    for (int i = 0; i < times; ++i) log.WriteErrorLog(Fault(FaultNumber::Overflow));
  }

  TemporaryFolder folder;
  Records records;
  FileTable files;
  FrozenClock clock{DateFromParts(2026, 1, 2) + TimeFromParts(3, 4, 5)};
  RecordingDialogs dialogs;
  bool ended = false;
  ErrorLog log{records, files, clock, dialogs, [this] { ended = true; }};
};

TEST_F(ErrorLogTest, AsksAtEveryEleventhFault) {
  EXPECT_FALSE(FolderExists(folder / "ErrorLog"));
  Write(10);
  EXPECT_TRUE(dialogs.boxes.empty());
  dialogs.answers = {Answer::Yes};
  Write(1);
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].title, "Fathomline");
  EXPECT_EQ(dialogs.boxes[0].text,
            " 03:04:05 Jan 02 - Error description : Overflow   More than 10 errors has occurred. "
            "Do you wan't to continue anyway? (All Error messages are stored in file "
            "C:/Keelhaven/Fathomline/ErrorLog/ErrorLog.txt");
  EXPECT_EQ(records.ErrorCount, 0);
  EXPECT_FALSE(ended);

  const std::string text = ReadWholeFile(folder / "ErrorLog/ErrorLog.txt");
  const std::string line = "2026 Jan 02 03:04:05 - Error description : Overflow\r\n";
  EXPECT_EQ(text.size(), 11 * line.size());
  EXPECT_EQ(text.substr(0, line.size()), line);

  dialogs.answers = {Answer::No};
  Write(11);
  EXPECT_TRUE(ended);
}

TEST_F(ErrorLogTest, PassesOnThatItCannotBeWritten) {
  folder.Write("ErrorLog", "a file in the place of the folder");
  EXPECT_THROW(Write(1), Fault);
  EXPECT_EQ(log.Written(), 0);
}

}  // namespace
}  // namespace fathomline
