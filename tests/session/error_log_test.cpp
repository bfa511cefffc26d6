#include "session/error_log.h"

#include "support/test_program.h"

namespace fathomline {
namespace {

struct ErrorLogTest : testing::Test, TestProgram {
  void Write(int times) {
    for (int i = 0; i < times; ++i)
      program.session.errorLog.WriteErrorLog(Fault(FaultNumber::Overflow));
  }
};

TEST_F(ErrorLogTest, AsksAtEveryEleventhFault) {
  EXPECT_FALSE(FolderExists(folder / "ErrorLog"));
  Write(10);
  face.ExpectBox(
      " 03:04:05 Jan 02 - Error description : Overflow   More than 10 errors has occurred. "
      "Do you wan't to continue anyway? (All Error messages are stored in file "
      "C:/Keelhaven/Fathomline/ErrorLog/ErrorLog.txt",
      Answer::Yes);
  Write(1);
  EXPECT_EQ(face.Boxes()[0].title, "Fathomline");
  EXPECT_EQ(records.ErrorCount, 0);
  EXPECT_FALSE(ended);

  const std::string text = ReadWholeFile(folder / "ErrorLog/ErrorLog.txt");
  const std::string line = "2026 Jan 02 03:04:05 - Error description : Overflow\r\n";
  EXPECT_EQ(text.size(), 11 * line.size());
  EXPECT_EQ(text.substr(0, line.size()), line);

  // Faults of other sources are only written while the question stands.
  face.Expect({.text = "", .answer = Answer::No, .meanwhile = [this] { Write(12); }});
  Write(11);
  EXPECT_TRUE(ended);
  EXPECT_EQ(program.session.errorLog.Written(), 34);
}

}  // namespace
}  // namespace fathomline
