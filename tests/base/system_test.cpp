#include "base/system.h"

#include <fstream>
#include <gtest/gtest.h>

#include "base/files.h"
#include "base/text.h"
#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

TEST(System, PathsMayBeLongAndHaveAnyLetters) {
  const TemporaryFolder folder;
  std::string deep = folder / "dyp";
  for (int i = 0; i < 20; ++i) deep.append(1, kPathSeparator).append("мостик 船橋 Brücke");
  MakeFolders(deep);
  const std::string file = deep + kPathSeparator + "størrelse.txt";
  ReplaceFile(file, "one");
  ReplaceFile(file, "two");
  EXPECT_EQ(ReadWholeFile(file), "two");
  EXPECT_EQ(PathText(PathOf(file)), file);
  std::ifstream stream(PathOf(file));
  EXPECT_TRUE(stream.good());
  ExpectFault(FaultNumber::FileNotFound, [&] { ReadWholeFile(deep + kPathSeparator + "none"); });
}

TEST(System, AFileIsLockedUntilItsHolderIsGone) {
  const TemporaryFolder folder;
  const std::string path = folder / ".lock";
  {
    FileLock first;
    FileLock second;
    EXPECT_TRUE(first.Take(path));
    EXPECT_FALSE(second.Take(path));
  }
  FileLock third;
  EXPECT_TRUE(third.Take(path));
  ExpectFault(FaultNumber::PathNotFound, [&] { FileLock().Take(folder / "none/.lock"); });
}

TEST(System, AnotherMayReadWhatIsBeingWritten) {
  const TemporaryFolder folder;
  const std::string path = folder / "log";
  SystemFile log(path, SystemFile::Use::Append);
  log.Write("one\n");
  EXPECT_EQ(ReadWholeFile(path), "one\n");
  SystemFile other(path, SystemFile::Use::Append);
  other.Write("two\n");
  log.Write("three\n");
  EXPECT_EQ(ReadWholeFile(path), "one\ntwo\nthree\n");
}

}  // namespace
}  // namespace fathomline
