#include "base/file_kind.h"

#include <gtest/gtest.h>

#include "base/fault.h"
#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using namespace std::string_literals;

TEST(FileKind, IsToldByTheContent) {
  const std::string ubx = "\xB5\x62\x01\x07\x5C\0\x10"s;
  struct Row {
    std::string bytes;
    FileKind kind;
  };
  for (const Row& row : {Row{"", FileKind::Empty},
                         {"\xEF\xBB\xBF \r\n\t\n", FileKind::Empty},
                         {"\"REM Mode\"\r\n\"OFFLINE\"\r\n", FileKind::Setup},
                         {"\xEF\xBB\xBF\"REM Mode\"", FileKind::Setup},
                         {"notes\n  REM Session info\n$GPGGA,1", FileKind::Setup},
                         {"$GPGGA,120000.00,", FileKind::Recording},
                         {"half,a,line*33\r\n2026-01-02 03:04:05 !AIVDM,1", FileKind::Recording},
                         {"\\s:r3669961,c:1120959341*5E\\!ABVDM,1", FileKind::Recording},
                         {"$PFEC,GPatt,1", FileKind::Recording},
                         {ubx + ubx + "$GNRMC,1,A\r\n" + ubx, FileKind::Recording},
                         {"$GPGGA,1\n\"REM Mode\"\n", FileKind::Recording},
                         // Addresses of four to ten characters.
                         {"$PAZ0,x", FileKind::Recording},
                         {"!AZ90AZ90AZ,x", FileKind::Recording},
                         {"$PAZ,x", FileKind::OtherText},
                         {"$AZ90AZ90AZA,x", FileKind::OtherText},
                         {ubx, FileKind::Binary},
                         // A control character of twenty may be text.
                         {"nineteen letters an" + "\x1F"s, FileKind::OtherText},
                         {"eighteen letters a" + "\x7F"s, FileKind::Binary},
                         {"a few words and $5,000\n", FileKind::OtherText},
                         {"name;lat;lon\nM\xF8re;62;6\n", FileKind::OtherText}}) {
    EXPECT_EQ(KindOfContent(row.bytes), row.kind) << row.bytes;
  }
}

TEST(FileKind, OfAFileIsToldByItsBeginning) {
  const TemporaryFolder folder;
  EXPECT_EQ(KindOfFile(folder.Write("b", std::string(65527, ' ') + "$GPGGA,1,")),
            FileKind::Recording);
  EXPECT_EQ(KindOfFile(folder.Write("b", std::string(65536, ' ') + "$GPGGA,1,")), FileKind::Empty);
  ExpectFault(FaultNumber::FileNotFound, [&] { KindOfFile(folder / "none"); });
  ExpectFault(FaultNumber::PathAccess, [&] { KindOfFile(folder.Path()); });
}

}  // namespace
}  // namespace fathomline
