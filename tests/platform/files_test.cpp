#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Lines(const std::string& path) {
  LineReader reader(path);
  std::vector<std::string> lines;
  while (!reader.AtEnd()) lines.emplace_back(reader.Next());
  EXPECT_EQ(reader.Position(), reader.Size());
  return lines;
}

TEST(LineReader, EndsLinesAtLfAndCrLf) {
  const TemporaryFolder folder;
  EXPECT_THAT(Lines(folder.Write("a", "one\r\ntwo\nthree")), ElementsAre("one", "two", "three"));
  EXPECT_THAT(Lines(folder.Write("b", "a\rb\r\r\n\r\n\n\r")), ElementsAre("a\rb\r", "", "", "\r"));
  EXPECT_THAT(Lines(folder.Write("c", std::string("x\0y\n\0", 5))),
              ElementsAre(std::string("x\0y", 3), std::string("\0", 1)));
  EXPECT_THAT(Lines(folder.Write("d", "\n")), ElementsAre(""));
  EXPECT_THAT(Lines(folder.Write("e", "")), IsEmpty());
}

// Line ends are put at every place around the ends of the blocks that are read at once.
TEST(LineReader, HoldsAtTheEdgesOfItsBlocks) {
  constexpr std::size_t kBlock = 256 * 1024;
  const TemporaryFolder folder;
  for (std::size_t length = kBlock - 3; length <= kBlock + 3; ++length) {
    const std::string first(length, 'a');
    EXPECT_THAT(Lines(folder.Write("f", first + "\r\nb\r\n" + first + "\nc")),
                ElementsAre(first, "b", first, "c"));
  }
  const std::string large(3'000'000, 'x');
  EXPECT_THAT(Lines(folder.Write("f", "a\n" + large + "\r\n" + large)),
              ElementsAre("a", large, large));
}

TEST(LineReader, TellsWhereItIs) {
  const TemporaryFolder folder;
  LineReader reader(folder.Write("f", "one\r\ntwo"));
  EXPECT_EQ(reader.Size(), 8U);
  reader.Next();
  EXPECT_EQ(reader.Position(), 5U);
  reader.Next();
  ExpectFault(FaultNumber::PastEndOfFile, [&] { reader.Next(); });
}

TEST(LineReader, FaultsNameTheCause) {
  const TemporaryFolder folder;
  ExpectFault(FaultNumber::FileNotFound, [&] { LineReader(folder / "none"); });
  ExpectFault(FaultNumber::PathNotFound, [&] { LineReader(folder / "none/none"); });
  ExpectFault(FaultNumber::PathAccess, [&] { LineReader(folder.Path()).AtEnd(); });
}

TEST(FileTable, KeepsFilesByNumber) {
  const TemporaryFolder folder;
  FileTable files;
  EXPECT_EQ(files.FreeFile(), 5);
  files.OpenForOutput(5, folder / "log");
  EXPECT_EQ(files.FreeFile(), 6);
  ExpectFault(FaultNumber::FileAlreadyOpen, [&] { files.OpenForAppend(5, folder / "other"); });
  files.Write(5, "one\r\n");
  EXPECT_EQ(ReadWholeFile(folder / "log"), "one\r\n");
  ExpectFault(FaultNumber::BadFileNumber, [&] { files.Reader(5); });
  files.Close(5);
  ExpectFault(FaultNumber::BadFileNumber, [&] { files.Write(5, "two"); });

  files.OpenForAppend(7, folder / "log");
  files.Write(7, "two");
  files.OpenForInput(1, folder / "log");
  EXPECT_EQ(files.Reader(1).Next(), "one");
  ExpectFault(FaultNumber::BadFileNumber, [&] { files.Write(1, "x"); });
  files.CloseAll();
  EXPECT_FALSE(files.IsOpen(1) || files.IsOpen(7));
  files.Close(9);
}

TEST(ReplaceFile, ReplacesTheWholeContentOrLeavesNothingBehind) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("setup", "a longer text than the new one");
  ReplaceFile(path, "new");
  EXPECT_EQ(ReadWholeFile(path), "new");
  EXPECT_FALSE(FileExists(path + ".tmp"));

  ExpectFault(FaultNumber::PathNotFound, [&] { ReplaceFile(folder / "none/setup", "x"); });
  ExpectFault(FaultNumber::PathNotFound, [&] { ReplaceFile(path + "/setup", "x"); });
  EXPECT_EQ(ReadWholeFile(path), "new");
  MakeFolder(folder / "taken");
  folder.Write("taken/inside", "");
  ExpectFault(FaultNumber::PathAccess, [&] { ReplaceFile(folder / "taken", "x"); });
  EXPECT_FALSE(FileExists(folder / "taken.tmp"));
}

TEST(ReplaceFile, KeepsTheOldContentInAFolderThatIsReadOnly) {
  using std::filesystem::perms;
  const TemporaryFolder folder;
  const std::string path = folder.Write("setup", "old");
  std::filesystem::permissions(folder.Path(), perms::owner_read | perms::owner_exec |
                                                  perms::others_read | perms::others_exec);
  // The superuser is refused nothing, so the call is made as somebody else.
  constexpr uid_t kNobody = 65534;
  const bool superuser = ::geteuid() == 0;
  ASSERT_EQ(::seteuid(superuser ? kNobody : ::geteuid()), 0);
  ExpectFault(FaultNumber::PermissionDenied, [&] { ReplaceFile(path, "new"); });
  ASSERT_EQ(::seteuid(::getuid()), 0);
  std::filesystem::permissions(folder.Path(), perms::owner_all);
  EXPECT_EQ(ReadWholeFile(path), "old");
}

TEST(Folders, AreMadeOneLevelAtATime) {
  const TemporaryFolder folder;
  ExpectFault(FaultNumber::PathNotFound, [&] { MakeFolder(folder / "a/b"); });
  MakeFolder(folder / "a");
  EXPECT_TRUE(FolderExists(folder / "a"));
  EXPECT_FALSE(FileExists(folder / "a"));
  ExpectFault(FaultNumber::PathAccess, [&] { MakeFolder(folder / "a"); });
}

}  // namespace
}  // namespace fathomline
