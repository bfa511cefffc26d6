#include "setup/setup_file.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "support/expect_fault.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// The body that stands behind a marker, up to the next one.
std::string Body(const std::string& file, std::string_view marker) {
  const std::string line = "\"REM " + std::string(marker) + "\"\r\n";
  const std::size_t begin = file.find(line);
  if (begin == std::string::npos) return "no such section";
  const std::size_t body = begin + line.size();
  return file.substr(body, file.find("\"REM ", body) - body);
}

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
  first.ComPort = 12;
  first.Enabled = true;
  first.OfflineFile = "/home/k\u00E5re/a,b \u20AC.log";
  first.UseTCPIP = true;
  first.IPAddress = "10.0.0.1";
  first.TCPPort = 8041;
  records.CommSetups[4].UseUDP = true;
  records.CommSetups[4].UDPPort = 70000;
  records.Comport(1) = {2, true, "free", 115200, 7, "even", 2};
  records.Comport(11).System = 3;
  records.Comport(16).Parity = "odd";
  records.IPListCount = 2;
  records.IPList = {"10.0.0.1", "10.0.0.2", "not stored"};
  records.ElevationMask = 15;
  records.BaseDataFlag = -1;
  records.References[2] = {2, "Quay", 1.0 / 3.0, -1e-7, -0.5F, 359.9F, 0.1F, -1e-6F};
  records.ChecksumTest[1] = true;
  records.Emptybuffer[2] = true;
  records.SetTimeFromPC[3] = true;
  records.NotDisplayDGPS[4] = true;
  for (const WindowFlag flag : {WindowFlag::Numerics, WindowFlag::Skyplot, WindowFlag::NMEA,
                                WindowFlag::AISTargets, WindowFlag::Scatter}) {
    records.SystemSetups[1][flag] = true;
  }
  records.SystemSetups[3][WindowFlag::NMEA] = true;
  records.SystemSetups[3][WindowFlag::StatisticsSNR] = true;
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

TEST(WriteSetup, WritesEachSectionByteForByte) {
  Records records = Filled();
  const std::string file = WriteSetup(records);
  const std::string emptySystem = "\"\",\"\",0,#FALSE#,\"\"\r\n";
  const std::string emptyPort = "0,4800,8,\"none\",1\r\n";
  const std::string fourShut = "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n";

  EXPECT_EQ(Body(file, "Mode"), "\"OFFLINE\"\r\n");
  EXPECT_EQ(Body(file, "Systems"),
            "\"Bridge GPS\",\"GPS/GLONASS\",12,#TRUE#,\"/home/k\xE5re/a,b \x80.log\"\r\n" +
                Repeated(emptySystem, 3));
  EXPECT_EQ(Body(file, "Comports"), "2,115200,7,\"even\",2\r\n" + Repeated(emptyPort, 9));
  EXPECT_EQ(Body(file, "Comports, extended to 16"),
            "3,4800,8,\"none\",1\r\n" + Repeated(emptyPort, 4) + "0,4800,8,\"odd\",1\r\n");
  EXPECT_EQ(Body(file, "TCP/IP"),
            "#TRUE#,\"10.0.0.1\",8041\r\n" + Repeated("#FALSE#,\"\",0\r\n", 3));
  EXPECT_EQ(Body(file, "IP List"), "2\r\n\"10.0.0.1\"\r\n\"10.0.0.2\"\r\n");
  EXPECT_EQ(Body(file, "Base data"), "15,-1\r\n");
  EXPECT_EQ(Body(file, "Reference positions & heading"),
            "0,\"\",0,0,0,0\r\n"
            "2,\"Quay\",0.3333333333333333,-0.0000001,-0.5,359.9\r\n" +
                Repeated("0,\"\",0,0,0,0\r\n", 2));
  EXPECT_EQ(Body(file, "Reference pitch & roll"), "0,0\r\n0.1,-0.000001\r\n0,0\r\n0,0\r\n");
  EXPECT_EQ(Body(file, "Checksum Test"), "#TRUE#,#FALSE#,#FALSE#,#FALSE#\r\n");
  EXPECT_EQ(Body(file, "Emptybuffer"), "#FALSE#,#TRUE#,#FALSE#,#FALSE#\r\n");
  EXPECT_EQ(Body(file, "Set time from PC"), "#FALSE#,#FALSE#,#TRUE#,#FALSE#\r\n");
  EXPECT_EQ(Body(file, "Not display dGPS timeserie"), "#FALSE#,#FALSE#,#FALSE#,#TRUE#\r\n");
  EXPECT_EQ(Body(file, "Visibleform"),
            "#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#\r\n" + Repeated(fourShut, 3));
  EXPECT_EQ(Body(file, "NMEA Messages to analyse"),
            "\"GGA\",\"\",\"\",\"\"\r\n\"\",\"HDT\",\"\",\"\"\r\n" +
                Repeated("\"\",\"\",\"\",\"\"\r\n", 7) + "\"\",\"\",\"\",\"VDM\"\r\n");
  EXPECT_EQ(Body(file, "Session info"), "\"two\r\nlines, one comma\"\r\n");
  EXPECT_EQ(Body(file, "Visibleform SNR"), "#FALSE#\r\n#FALSE#\r\n#TRUE#\r\n#FALSE#\r\n");
  EXPECT_EQ(Body(file, "Visible SNR Timeseries"),
            Repeated("4,0\r\n" + Repeated("#TRUE#\r\n", 32), 4) + "3,-7\r\n" +
                Repeated("#TRUE#\r\n", 31) + "#FALSE#\r\n");
  EXPECT_EQ(Body(file, "UDP"), Repeated("#FALSE#,0\r\n", 3) + "#TRUE#,70000\r\n");
  EXPECT_EQ(Body(file, "LatLon Format"), "#TRUE#,2\r\n");
}

TEST(WriteSetup, KeepsTheOrderOfTheSections) {
  Records records;
  const std::string file = WriteSetup(records);
  std::vector<std::string> markers;
  for (std::size_t at = file.find("\"REM "); at != std::string::npos;
       at = file.find("\"REM ", at + 1)) {
    markers.push_back(file.substr(at + 5, file.find('"', at + 1) - at - 5));
  }
  EXPECT_THAT(
      markers,
      ElementsAre("Mode", "Systems", "Comports", "Comports, extended to 16", "TCP/IP", "IP List",
                  "Base data", "Reference positions & heading", "Reference pitch & roll",
                  "Checksum Test", "Emptybuffer", "Set time from PC", "Not display dGPS timeserie",
                  "Visibleform", "NMEA Messages to analyse", "Session info", "Visibleform SNR",
                  "Visible SNR Timeseries", "UDP", "LatLon Format"));
}

TEST(WriteSetup, ClosesTheMonitorInMemory) {
  Records records = Filled();
  WriteSetup(records);
  for (int system = 1; system <= kSystems; ++system) {
    EXPECT_FALSE(records.SystemSetups[system][WindowFlag::NMEA]);
  }
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
  EXPECT_EQ(records.References[2].ReferenceLatitude, 1.0 / 3.0);
  EXPECT_EQ(records.References[2].ReferenceRoll, -1e-6F);
  EXPECT_EQ(records.SessionInfo, "two\r\nlines, one comma");
  EXPECT_EQ(records.IPList[2], "");
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::NMEA]);
}

TEST(SetupFile, NumbersOfEverySizeComeBackExactly) {
  Records written;
  written.References[1].ReferenceLatitude = std::numeric_limits<double>::denorm_min();
  written.References[2].ReferenceLatitude = -std::numeric_limits<double>::max();
  written.References[3].ReferenceLatitude = 0.1 + 0.2;
  written.References[1].ReferenceHeight = std::numeric_limits<float>::max();
  written.References[2].ReferenceHeight = std::numeric_limits<float>::denorm_min();
  written.References[3].ReferenceHeight = 16777217.0F / 3.0F;
  Records records;
  ReadSetup(WriteSetup(written), records);
  for (int system = 1; system <= 3; ++system) {
    EXPECT_EQ(records.References[system].ReferenceLatitude,
              written.References[system].ReferenceLatitude);
    EXPECT_EQ(records.References[system].ReferenceHeight,
              written.References[system].ReferenceHeight);
  }
}

TEST(ReadSetup, SectionsThatAreMissingLeaveTheirValues) {
  Records records = Filled();
  const std::string before = WriteSetup(records);
  ReadSetup("\"REM Mode\"\r\n\"ONLINE\"\r\n", records);
  EXPECT_EQ(records.Mode, "ONLINE");
  records.Mode = "OFFLINE";
  EXPECT_EQ(WriteSetup(records), before);
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

TEST(ReadSetup, NumbersAndFlagsMayBeWrittenInOtherWays) {
  Records records;
  ReadSetup("\"REM Reference pitch & roll\"\n.5,-.25\n1E-05,+2.5E1\n1e-60,0\n5.,0\n", records);
  EXPECT_EQ(records.References[1].ReferencePitch, 0.5F);
  EXPECT_EQ(records.References[1].ReferenceRoll, -0.25F);
  EXPECT_EQ(records.References[2].ReferencePitch, 1e-5F);
  EXPECT_EQ(records.References[2].ReferenceRoll, 25.0F);
  EXPECT_EQ(records.References[3].ReferencePitch, 0.0F);
  EXPECT_EQ(records.References[4].ReferencePitch, 5.0F);
  ReadSetup("\"REM Checksum Test\"\n-1,0,1,#TRUE#\n\"REM Base data\"\n2.5,#TRUE#", records);
  EXPECT_TRUE(records.ChecksumTest[1] && records.ChecksumTest[3] && records.ChecksumTest[4]);
  EXPECT_FALSE(records.ChecksumTest[2]);
  EXPECT_EQ(records.ElevationMask, 2);
  EXPECT_EQ(records.BaseDataFlag, -1);
}

TEST(ReadSetup, OldFilesLeaveTheUpperPortsAlone) {
  Records written;
  const std::string file = "\"REM Comports\"\r\n" + Repeated("1,9600,7,\"odd\",2\r\n", 10);
  written.Comport(11).Baud = 38400;
  ReadSetup(file, written);
  EXPECT_EQ(written.Comport(10).Baud, 9600);
  EXPECT_EQ(written.Comport(11).Baud, 38400);
}

TEST(ReadSetup, FaultsNameTheirKind) {
  const auto expect = [](FaultNumber number, std::string_view file) {
    SCOPED_TRACE(file);
    ExpectFault(number, [file] {
      Records records;
      ReadSetup(file, records);
    });
  };
  for (const char* const file :
       {"\"REM Mode\"", "\"REM Mode\"\r\n  ", "\"REM Mode\"\r\n\"OFFLINE", "\"never closed",
        "\"REM IP List\"\n2\n\"a\"\n", "\"REM LatLon Format\"\n#TRUE#"}) {
    expect(FaultNumber::PastEndOfFile, file);
  }
  for (const char* const value :
       {"x", "12x", "\"12\"", "", "1 2", "inf", "nan", "0x10", "#true#", "+-5"}) {
    expect(FaultNumber::TypeMismatch,
           "\"REM Reference pitch & roll\"\n0," + std::string(value) + "\nx\n");
  }
  for (const char* const body : {"32768,0", "0,-32769", "1e400,0", "99999999999,0"}) {
    expect(FaultNumber::Overflow, "\"REM Base data\"\n" + std::string(body) + "\n");
  }
  expect(FaultNumber::Overflow, "\"REM Reference pitch & roll\"\n1e39,0\n");
  expect(FaultNumber::Overflow, "\"REM UDP\"\n#FALSE#,2147483648\n");
  expect(FaultNumber::TypeMismatch, "\"REM Systems\"\n\"a\"b\",\"\",0,#FALSE#,\"\"\n");
}

TEST(SetupFile, TheEleventhAddressFaultsOnReadAndOnWrite) {
  const std::string ten = Repeated("\"10.0.0.1\"\r\n", 10);
  Records records;
  ReadSetup("\"REM IP List\"\r\n10\r\n" + ten, records);
  EXPECT_EQ(records.IPList[9], "10.0.0.1");
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
  EXPECT_EQ(Body(WriteSetup(records), "IP List"), "-1\r\n");
}

TEST(ReadSetupFile, AMissingFileLoadsTheDefaults) {
  const TemporaryFolder folder;
  Records records = Filled();
  RecordingDialogs dialogs;
  EXPECT_EQ(ReadSetupFile(folder / "none.ini", records, dialogs), SetupRead::NotFound);
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].text, "Setup file do not exist. Default data loaded");
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Information);
  EXPECT_EQ(records.Mode, "ONLINE");
  EXPECT_EQ(records.CommSetups[1].IPAddress, "127.0.0.1");
  EXPECT_EQ(records.CommSetups[4].UDPPort, 70000);
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
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].text, "Type mismatch - Error in Setup file. Default data loaded");
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(records.Mode, "ONLINE");
  EXPECT_EQ(records.CommSetups[1].Name, "");
  EXPECT_EQ(records.ElevationMask, 33);
  EXPECT_EQ(records.SessionInfo, "read");
  EXPECT_TRUE(records.CommSetups[1].UseUDP);
  EXPECT_EQ(records.CommSetups[1].UDPPort, 5000);
  EXPECT_EQ(records.References[2].ReferenceName, "Quay");
}

TEST(ReadSetupFile, AnUnreadableFileSaysWhy) {
  const TemporaryFolder folder;
  Records records;
  RecordingDialogs dialogs;
  EXPECT_EQ(ReadSetupFile(folder / "none/setup.ini", records, dialogs), SetupRead::Faulty);
  EXPECT_THAT(dialogs.boxes.at(0).text, StartsWith("Path not found"));
  EXPECT_EQ(ReadSetupFile(folder.Path(), records, dialogs), SetupRead::Faulty);
  EXPECT_THAT(dialogs.boxes.at(1).text, HasSubstr("- Error in Setup file. Default data loaded"));
}

TEST(KeepFaultySetupFile, KeepsTheBytesBesideTheFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("Fathomline.ini", "torn \xE5\"");
  folder.Write("Fathomline.ini.bak", "an older one");
  KeepFaultySetupFile(path);
  EXPECT_EQ(ReadWholeFile(path + ".bak"), "torn \xE5\"");
  EXPECT_EQ(ReadWholeFile(path), "torn \xE5\"");
  ExpectFault(FaultNumber::FileNotFound, [&] { KeepFaultySetupFile(folder / "none.ini"); });
}

}  // namespace
}  // namespace fathomline
