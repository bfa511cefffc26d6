#include "base/settings.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "base/files.h"
#include "base/serial_devices.h"
#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

struct IniSettingsTest : testing::Test {
  void WriteFile(const std::string& bytes) {
    MakeFolder(folder / "deeper");
    folder.Write("deeper/settings.ini", bytes);
  }

  TemporaryFolder folder;
  std::string file = folder / "deeper/settings.ini";
};

TEST_F(IniSettingsTest, WhatIsSavedIsReadBack) {
  const std::string odd = " \"quoted\" = [x]; back\\slash\\n\r\n\tend ";
  {
    IniSettings settings(file);
    EXPECT_FALSE(settings.Get("Settings", "MainLeft"));
    settings.Set("Settings", "MainLeft", -1200);
    settings.Set("Settings", "Odd", odd);
    settings.Set("Settings", "Empty", "");
    settings.Set("Comports", "COM5", "/dev/serial/by-id/usb-1");
    settings.Set("Comports", "Path", "C:\\new\\ro\"om\"");
    settings.Save();
  }
  const IniSettings settings(file);
  EXPECT_EQ(settings.GetNumber("Settings", "MainLeft", 7), -1200);
  EXPECT_EQ(settings.Get("Settings", "Odd", "missing"), odd);
  EXPECT_EQ(settings.Get("Settings", "Empty", "missing"), "");
  EXPECT_EQ(settings.Get("Comports", "COM5", "missing"), "/dev/serial/by-id/usb-1");
  EXPECT_EQ(settings.Get("Comports", "Path", "missing"), "C:\\new\\ro\"om\"");
  EXPECT_FALSE(settings.Get("Comports", "MainLeft"));
  EXPECT_FALSE(FileExists(file + ".new"));
}

TEST_F(IniSettingsTest, ReadsWhatAPersonHasWritten) {
  WriteFile(
      "; my devices\r\n[Comports]\r\n  COM5 = \"/dev/ttyACM0\" \r\n#x=1\r\n COM6=/dev/b=c\r\n"
      "COM7 = \"\"\r\nCOM8=\"\r\nCOM9=\"a\\\"\n[x]\ny=1\n");
  const IniSettings settings(file);
  EXPECT_EQ(settings.Get("Comports", "COM5"), "/dev/ttyACM0");
  EXPECT_EQ(settings.Get("Comports", "COM6"), "/dev/b=c");
  EXPECT_EQ(settings.Get("Comports", "COM7"), "");
  EXPECT_EQ(settings.Get("Comports", "COM8"), "\"");
  EXPECT_EQ(settings.Get("Comports", "COM9"), "a\\");
  EXPECT_EQ(settings.Get("x", "y"), "1");
  EXPECT_FALSE(settings.Get("Comports", "#x"));
}

TEST_F(IniSettingsTest, RubbishIsPassedOver) {
  using namespace std::string_literals;
  WriteFile(
      "before=1\n\0\xff\xfe=\n[\n[]\n[broken\nlost=1\n[Settings]\n=5\nno sign\n"
      "Left=12\nTop=99999999999\nWidth=12x\nHeight=\n"s);
  IniSettings settings(file);
  EXPECT_EQ(settings.GetNumber("Settings", "Left", 1000), 12);
  for (const char* const key : {"Top", "Width", "Height"}) {
    EXPECT_EQ(settings.GetNumber("Settings", key, 1000), 1000) << key;
  }
  EXPECT_FALSE(settings.Get("", "before"));
  EXPECT_FALSE(settings.Get("Settings", "lost"));
  EXPECT_THAT(settings.Trouble(), testing::AllOf(testing::HasSubstr(file),
                                                 testing::HasSubstr("lines passed over: 8.")));
}

TEST_F(IniSettingsTest, WhatCannotBeReadIsToldAndKept) {
  const std::string kept = file + ".bak";
  WriteFile("rubbish");
  for (const bool isFolder : {false, true}) {
    if (isFolder) {
      std::filesystem::remove(PathOf(file));
      std::filesystem::remove(PathOf(kept));
      MakeFolder(file);
    }
    IniSettings settings(file);
    EXPECT_THAT(settings.Trouble(),
                testing::StartsWith("The settings in " + file + " could not be read: "));
    for (const int left : {0, 1}) {
      settings.Set("Settings", "Left", left);
      settings.Save();
    }
    EXPECT_EQ(IniSettings(file).GetNumber("Settings", "Left", 0), 1);
    EXPECT_EQ(IniSettings(file).Trouble(), "");
    EXPECT_TRUE(isFolder ? FolderExists(kept) : ReadWholeFile(kept) == "rubbish");
  }
}

TEST_F(IniSettingsTest, AFileThatCannotBeWrittenIsAFaultAndStaysAsItWas) {
  WriteFile("[Settings]\nLeft=1\n");
  const std::string before = ReadWholeFile(file);
  // A folder in the way of the second file stops every user, root included.
  MakeFolders(file + ".new/x");
  IniSettings settings(file);
  settings.Save();  // nothing has changed
  settings.Set("Settings", "Left", 2);
  EXPECT_THROW(settings.Save(), Fault);
  EXPECT_EQ(ReadWholeFile(file), before);
  std::filesystem::remove_all(PathOf(file + ".new"));
  settings.Save();
  EXPECT_EQ(ReadWholeFile(file), "[Settings]\nLeft=2\n\n");
  std::filesystem::remove(PathOf(file));
  settings.Save();
  EXPECT_FALSE(FileExists(file)) << "nothing has changed since";
}

TEST(SerialDevice, EveryPortHasADeviceUntilTheSettingsNameAnother) {
  SettingsStore settings;
#if defined(_WIN32)
  for (const int port : {1, 16}) {
    EXPECT_EQ(SerialDevice(settings, port), "COM" + std::to_string(port));
  }
#else
  EXPECT_EQ(SerialDevice(settings, 1), "/dev/ttyS0");
  EXPECT_EQ(SerialDevice(settings, 4), "/dev/ttyS3");
  EXPECT_EQ(SerialDevice(settings, 5), "/dev/ttyUSB0");
  EXPECT_EQ(SerialDevice(settings, 10), "/dev/ttyUSB5");
  EXPECT_EQ(SerialDevice(settings, 11), "/dev/ttyACM0");
  EXPECT_EQ(SerialDevice(settings, 16), "/dev/ttyACM5");
#endif
  settings.Set("Comports", "COM5", "/dev/serial/by-id/usb-gyro");
  EXPECT_EQ(SerialDevice(settings, 5), "/dev/serial/by-id/usb-gyro");
  for (const int port : {0, 17}) {
    settings.Set("Comports", "COM" + std::to_string(port), "/dev/ttyS9");
    ExpectFault(FaultNumber::OutOfRange, [&] { SerialDevice(settings, port); });
  }
}

}  // namespace
}  // namespace fathomline
