#include "base/files.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
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

TEST(LineReader, WaitsForTheLinesOfAPipeAndForNobodyWithoutOne) {
  using std::chrono::steady_clock;
  const TemporaryFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(LineReader(path).AtEnd());

  LineReader reader(path);
  int writer = ::open(path.c_str(), O_WRONLY);
  const auto send = [&writer](std::string_view bytes) {
    return ::write(writer, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  };
  EXPECT_FALSE(reader.Ready(steady_clock::now() + std::chrono::milliseconds(5)));
  ExpectFault(FaultNumber::DeviceError, [&] { reader.AtEnd(); });
  ASSERT_TRUE(send("one\r\ntw"));
  EXPECT_TRUE(reader.Ready(steady_clock::now()));
  EXPECT_EQ(reader.Next(), "one");
  EXPECT_FALSE(reader.Ready(steady_clock::now()));
  ASSERT_TRUE(send("o"));
  ::close(writer);
  EXPECT_TRUE(reader.Ready(steady_clock::now()));
  EXPECT_EQ(reader.Next(), "two");
  EXPECT_TRUE(reader.Ready(steady_clock::now()) && reader.AtEnd());
}

// A recording that somebody empties while it is read ends there.
TEST(LineReader, EndsWhereItsFileIsCut) {
  const TemporaryFolder folder;
  std::string bytes;
  while (bytes.size() < 1'000'000) bytes += "$GPHDT,1.0,T*00\r\n";
  const std::string path = folder.Write("f", bytes);
  LineReader reader(path);
  EXPECT_EQ(reader.Next(), "$GPHDT,1.0,T*00");
  std::filesystem::resize_file(path, 10);
  std::size_t lines = 1;
  for (; !reader.AtEnd(); ++lines) reader.Next();
  EXPECT_EQ(lines, 262144 / 17 + 1);
  EXPECT_LT(reader.Position(), reader.Size());
}

TEST(ReadWholeFile, RefusesWhatCannotBeHeldOrIsNoFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("large", "");
  std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile(path); });
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile(folder.Path()); });
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile("/dev/zero"); });
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  ExpectFault(FaultNumber::PathAccess, [&] { ReadWholeFile(folder / "pipe"); });
}

TEST(FileTable, WritesAllOfALineOrNothing) {
  const TemporaryFolder folder;
  FileTable files;
  files.OpenForOutput(5, folder / "log");
  files.OpenForAppend(6, folder / "errors");
  rlimit unlimited{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  const auto whenFull = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full{12, unlimited.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  for (const int file : {5, 6}) {
    files.Write(file, "eight\r\n");
    EXPECT_THROW(files.Write(file, "beyond\r\n"), Fault);
  }
  ::setrlimit(RLIMIT_FSIZE, &unlimited);
  std::signal(SIGXFSZ, whenFull);
  for (const int file : {5, 6}) files.Write(file, "after\r\n");
  EXPECT_EQ(ReadWholeFile(folder / "log"), "eight\r\nafter\r\n");
  EXPECT_EQ(ReadWholeFile(folder / "errors"), "eight\r\nafter\r\n");

  files.OpenForOutput(7, "/dev/full");
  ExpectFault(FaultNumber::DiskFull, [&] { files.Write(7, "x"); });
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

}  // namespace
}  // namespace fathomline
