#include "base/files.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
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
  ExpectFault(FaultNumber::PastEndOfFile, [&] { reader.Next(); });
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
  const std::string large(3 * kBlock + 5, 'x');
  EXPECT_THAT(Lines(folder.Write("f", large + "\n" + large)), ElementsAre(large, large));
  EXPECT_EQ(ReadWholeFile(folder / "f"), large + "\n" + large);
}

TEST(LineReader, FaultsNameTheCause) {
  const TemporaryFolder folder;
  ExpectFault(FaultNumber::FileNotFound, [&] { LineReader(folder / "none"); });
  ExpectFault(FaultNumber::PathNotFound, [&] { LineReader(folder / "none/none"); });
  ExpectFault(FaultNumber::PathAccess, [&] { LineReader(folder.Path()).AtEnd(); });
}

TEST(LineReader, CutsALineThatDoesNotEnd) {
  constexpr std::size_t kLongest = LineReader::kLongestLine;
  const TemporaryFolder folder;
  const std::vector<std::string> lines =
      Lines(folder.Write("f", std::string(kLongest + 5'000'000, 'x') + "\r\nb\n"));
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_GE(lines[0].size(), kLongest);
  EXPECT_EQ(lines[0].size() + lines[1].size(), kLongest + 5'000'000);
  EXPECT_EQ(lines[2], "b");
}

// A recording that somebody empties while it is read ends there.
TEST(LineReader, EndsWhereItsFileIsCut) {
  const TemporaryFolder folder;
  std::string bytes;
  while (bytes.size() < 1'000'000) bytes += "$GPHDT,1.0,T*00\r\n";
  const std::string path = folder.Write("f", bytes);
  LineReader reader(path);
  EXPECT_EQ(reader.Next(), "$GPHDT,1.0,T*00");
  std::filesystem::resize_file(PathOf(path), 10);
  std::size_t lines = 1;
  for (; !reader.AtEnd(); ++lines) reader.Next();
  EXPECT_EQ(lines, 262144 / 17 + 1);
  EXPECT_LT(reader.Position(), reader.Size());
}

TEST(ReadWholeFile, RefusesWhatCannotBeHeld) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("large", "");
  std::filesystem::resize_file(PathOf(path), std::uintmax_t{257} << 20);
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile(path); });
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile(folder.Path()); });
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

  ExpectFault(FaultNumber::PathNotFound, [&] { ReplaceFile(path + "/setup", "x"); });
  ExpectFault(FaultNumber::PathNotFound, [&] { MakeFolder(folder / "a/b"); });
  MakeFolder(folder / "taken");
  folder.Write("taken/inside", "");
  ExpectFault(FaultNumber::PathAccess, [&] { ReplaceFile(folder / "taken", "x"); });
  EXPECT_FALSE(FileExists(folder / "taken.tmp"));
}

}  // namespace
}  // namespace fathomline
