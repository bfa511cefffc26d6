#include "setup/setup_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/text.h"
#include "support/expect_fault.h"
#include "support/places.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string Repeated(std::string_view text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result.append(text);
  return result;
}

Records Filled() {
  Records records;
  records.Mode = "OFFLINE";
  CommSetup& first = records.CommSetups[1];
  first.Name = "Bridge GPS";
  first.SystemType = "GPS/GLONASS";
  first.OfflineFile = "/home/k\u00E5re/a,b \u20AC.log";
  first.IPAddress = "10.0.0.1";
  first.ComPort = 12;
  first.TCPPort = 8041;
  records.CommSetups[4].UDPPort = 70000;
  first.Enabled = first.UseTCPIP = records.CommSetups[4].UseUDP = true;
  records.Comport(1) = {2, true, "free", 115200, 7, "even", 2};
  records.Comport(11).System = 3;
  records.Comport(16).Parity = "odd";
  records.IPListCount = 2;
  records.IPList = {"10.0.0.1", "10.0.0.2", "not stored"};
  records.ElevationMask = 15;
  records.BaseDataFlag = -1;
  records.References[2] = {2, "Quay", 1.0 / 3.0, -1e-7, -0.5F, 359.9F, 0.1F, -1e-6F};
  records.ChecksumTest[1] = records.Emptybuffer[2] = records.SetTimeFromPC[3] =
      records.NotDisplayDGPS[4] = true;
  using enum WindowFlag;
  for (const WindowFlag flag : {Numerics, Skyplot, NMEA, AISTargets, Scatter}) {
    records.SystemSetups[1][flag] = true;
  }
  records.SystemSetups[3][NMEA] = records.SystemSetups[3][StatisticsSNR] = true;
  records.MessagesToAnalyse[1][0] = "GGA";
  records.MessagesToAnalyse[2][1] = "HDT";
  records.MessagesToAnalyse[4][9] = "VDM";
  records.MessagesToAnalyse[4][10] = "RMC";
  records.SessionInfo = "two\r\nlines, one comma";
  records.VisibleSNR[4].Columns = 3;
  records.VisibleSNR[4].Second = -7;
  records.VisibleSNR[4].Shown[31] = false;
  records.CoordinateFormatIsDMS = true;
  records.CoordinateDecimals = 2;
  return records;
}

// The reviewed file as the program writes it, but for line ends and the encoding.
TEST(WriteSetup, WritesEachSectionByteForByte) {
  std::string expected;
  LineReader reviewed(kSourceFolder + "/tests/setup/written_setup.txt");
  while (!reviewed.AtEnd()) expected += ToWindows1252(reviewed.Next()) + "\r\n";
  Records records = Filled();
  EXPECT_EQ(WriteSetup(records), expected);
  // The monitor is closed by it, in memory as well.
  for (const SystemSetup& flags : records.SystemSetups) EXPECT_FALSE(flags[WindowFlag::NMEA]);
  EXPECT_TRUE(records.SystemSetups[1][WindowFlag::Scatter]);
}

TEST(SetupFile, ComesBackAsItWasWritten) {
  const TemporaryFolder folder;
  const std::string path = folder / kSetupFileName;
  Records written = Filled();
  WriteSetupFile(path, written);
  Records records;
  RecordingDialogs dialogs;
  EXPECT_EQ(ReadSetupFile(path, records, dialogs), SetupRead::Complete);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(WriteSetup(records), ReadWholeFile(path));
  EXPECT_EQ(records.CommSetups[1].OfflineFile, "/home/k\u00E5re/a,b \u20AC.log");
  EXPECT_EQ(records.IPList[2], "");
}

TEST(ReadSetup, SectionsThatAreMissingLeaveTheirValues) {
  Records records = Filled();
  const std::string before = WriteSetup(records);
  ReadSetup("\"REM Mode\"\r\n\"ONLINE\"\r\n", records);
  EXPECT_EQ(records.Mode, "ONLINE");
  records.Mode = "OFFLINE";
  EXPECT_EQ(WriteSetup(records), before);
  ReadSetup("\"REM Comports\"\r\n" + Repeated("1,9600,7,\"odd\",2\r\n", 10), records);
  EXPECT_EQ(records.Comport(10).Baud, 9600);
  EXPECT_EQ(records.Comport(11).System, 3);
}

TEST(ReadSetup, FindsSectionsInAnyOrderAndPassesOverTheUnknown) {
  Records records;
  ReadSetup(
      "rubbish,12,#TRUE#\n\"REM New in a later version\"\r\"a\",\"\",,\r\n\r\n"
      "\"REM LatLon Format\"\n#TRUE#\n3\n"
      "\"rem Mode\",\"OFFLINE\"\r\n"
      "\"REM Base data\",5,0,99,\"surplus\"\r\n"
      "REM Session info\r\nbare words \"quoted\" \r\n"
      "\"REM Base data\"\r\n 7 , -1 \r\n"
      "\"REM IP List\",1,\"last without an ending\"",
      records);
  EXPECT_EQ(records.Mode, "ONLINE");
  EXPECT_TRUE(records.CoordinateFormatIsDMS);
  EXPECT_EQ(records.CoordinateDecimals, 3);
  EXPECT_EQ(records.ElevationMask, 7);
  EXPECT_EQ(records.BaseDataFlag, -1);
  EXPECT_EQ(records.SessionInfo, "bare words 'quoted'");
  EXPECT_EQ(records.IPList[0], "last without an ending");
}

TEST(ReadSetup, WhatAnEditorHasSavedAsUtf8IsRead) {
  Records records;
  EXPECT_TRUE(ReadSetup("\xEF\xBB\xBF\"REM Session info\"\r\n\"K\u00E5re\"\r\n", records));
  EXPECT_EQ(records.SessionInfo, "K\u00E5re");
}

TEST(ReadSetup, NumbersAndFlagsMayBeWrittenInOtherWays) {
  Records records;
  ReadSetup(
      "\"REM Reference pitch & roll\"\n.5,-.25\n1E-05,+2.5E1\n1e-60,5.\n0,0\n"
      "\"REM Checksum Test\"\n-1,0,1,#TRUE#\n\"REM Base data\"\n2.5,#TRUE#",
      records);
  std::vector<float> singles;
  for (const ReferenceSetup& row : records.References) {
    singles.insert(singles.end(), {row.ReferencePitch, row.ReferenceRoll});
  }
  EXPECT_THAT(singles, ElementsAre(0.5F, -0.25F, 1e-5F, 25.0F, 0.0F, 5.0F, 0.0F, 0.0F));
  EXPECT_TRUE(records.ChecksumTest[1] && records.ChecksumTest[3] && records.ChecksumTest[4]);
  EXPECT_FALSE(records.ChecksumTest[2]);
  EXPECT_EQ(records.ElevationMask, 2);
  EXPECT_EQ(records.BaseDataFlag, -1);
}

TEST(ReadSetup, FaultsNameTheirKind) {
  const auto expect = [](FaultNumber number, const std::string& marker,
                         std::initializer_list<const char*> bodies) {
    for (const char* const body : bodies) {
      SCOPED_TRACE(marker + body);
      ExpectFault(number, [file = "\"REM " + marker + body] {
        Records records;
        ReadSetup(file, records);
      });
    }
  };
  expect(FaultNumber::PastEndOfFile, "Mode", {"\"", "\"\r\n  ", "\"\r\n\"OFFLINE", ""});
  expect(FaultNumber::PastEndOfFile, "IP List\"\n", {"2\n\"a\"\n"});
  expect(FaultNumber::TypeMismatch, "Reference pitch & roll\"\n0,",
         {"x\n", "12x\n", "\"12\"\n", "\nx", "1 2\n", "inf\n", "nan\n", "0x10\n", "#true#\n",
          "+-5\n"});
  expect(FaultNumber::TypeMismatch, "Systems\"\n", {"\"a\"b\",\"\",0,#FALSE#,\"\"\n"});
  expect(FaultNumber::Overflow, "Base data\"\n", {"32768,0", "0,-32769", "1e400,0"});
  expect(FaultNumber::Overflow, "Reference pitch & roll\"\n", {"1e39,0\n"});
  expect(FaultNumber::Overflow, "UDP\"\n#FALSE#,", {"2147483648\n"});
}

TEST(SetupFile, TheEleventhAddressFaultsOnReadAndOnWrite) {
  Records records;
  ExpectFault(FaultNumber::OutOfRange, [&] {
    ReadSetup("\"REM IP List\"\r\n11\r\n" + Repeated("\"10.0.0.2\"\r\n", 11), records);
  });
  EXPECT_EQ(records.IPListCount, 11);
  EXPECT_EQ(records.IPList[9], "10.0.0.2");
  const TemporaryFolder folder;
  const std::string path = folder.Write("setup.ini", "old");
  ExpectFault(FaultNumber::OutOfRange, [&] { WriteSetupFile(path, records); });
  EXPECT_EQ(ReadWholeFile(path), "old");
  records.IPListCount = -1;
  EXPECT_THAT(WriteSetup(records), HasSubstr("\"REM IP List\"\r\n-1\r\n\"REM Base data\""));
}

TEST(ReadSetupFile, WhatCannotBeOpenedIsToldAndTheDefaultsLoaded) {
  const TemporaryFolder folder;
  Records records = Filled();
  RecordingDialogs dialogs;
  EXPECT_EQ(ReadSetupFile(folder / "none.ini", records, dialogs), SetupRead::NotFound);
  EXPECT_EQ(dialogs.boxes.at(0).text, "Setup file do not exist. Default data loaded");
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Information);
  EXPECT_EQ(records.Mode, "ONLINE");
  EXPECT_EQ(records.CommSetups[1].IPAddress, "127.0.0.1");
  EXPECT_EQ(records.CommSetups[4].UDPPort, 70000);
  EXPECT_EQ(ReadSetupFile(folder / "none/setup.ini", records, dialogs), SetupRead::Faulty);
  EXPECT_THAT(dialogs.boxes.at(1).text, StartsWith("Path not found"));
  EXPECT_EQ(ReadSetupFile(folder.Path(), records, dialogs), SetupRead::Faulty);
  EXPECT_THAT(dialogs.boxes.at(2).text, HasSubstr("- Error in Setup file. Default data loaded"));
  for (const char* const rubbish : {"",
                                    "\x7f"
                                    "ELF,\xff\r\n[Settings]\r\nMode=1"}) {
    const std::string path = folder.Write("rubbish.ini", rubbish);
    EXPECT_EQ(ReadSetupFile(path, records, dialogs), SetupRead::Faulty);
    EXPECT_EQ(dialogs.boxes.back().text,
              "There is no setup in " + path + " - Error in Setup file. Default data loaded");
  }
}

// The defaults reach some values only; the others keep what was read before the fault.
TEST(ReadSetupFile, AFaultMixesOldAndDefault) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("bad.ini",
                                        "\"REM Mode\"\r\n\"OFFLINE\"\r\n"
                                        "\"REM Base data\"\r\n33,-1\r\n"
                                        "\"REM Session info\"\r\n\"read\"\r\n"
                                        "\"REM UDP\"\r\n#TRUE#,5000\r\n#TRUE#,port\r\n");
  Records records = Filled();
  RecordingDialogs dialogs;
  EXPECT_EQ(ReadSetupFile(path, records, dialogs), SetupRead::Faulty);
  EXPECT_EQ(dialogs.boxes.at(0).text, "Type mismatch - Error in Setup file. Default data loaded");
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(records.Mode, "ONLINE");
  EXPECT_EQ(records.CommSetups[1].Name, "");
  EXPECT_EQ(records.ElevationMask, 33);
  EXPECT_EQ(records.SessionInfo, "read");
  EXPECT_TRUE(records.CommSetups[1].UseUDP);
  EXPECT_EQ(records.CommSetups[1].UDPPort, 5000);
  EXPECT_EQ(records.References[2].ReferenceName, "Quay");
}

}  // namespace
}  // namespace fathomline
