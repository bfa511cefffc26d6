// Files where a POSIX system has what others have not: pipes, limits, devices, other users.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/clock.h"
#include "base/files.h"
#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

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

TEST(ReadWholeFile, RefusesWhatIsNoFile) {
  const TemporaryFolder folder;
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
    EXPECT_THROW(files.Write(file, "beyond, at once\r\n"), Fault);
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

TEST(SystemClock, TellsLocalTimeInAZoneOfQuarterHours) {
  ::setenv("TZ", "QRT-5:45", 1);
  ::tzset();
  const SystemClock clock;
  for (int i = 0; i < 2; ++i) {
    const DateTime utc = clock.NowUtc();
    EXPECT_NEAR((clock.NowLocal() - utc).days * kSecondsPerDay, 5.75 * 3600.0, 2.0);
    EXPECT_NEAR((clock.NowLocalExact() - utc).days * kSecondsPerDay, 5.75 * 3600.0, 2.0);
  }
  ::setenv("TZ", "UTC", 1);
  ::tzset();
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
