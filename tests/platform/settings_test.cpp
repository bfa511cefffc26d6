#include "platform/settings.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>

#include "platform/fault.h"

namespace fathomline {
namespace {

class IniSettingsTest : public testing::Test {
 protected:
  ~IniSettingsTest() override { std::filesystem::remove_all(folder); }

  void WriteFile(const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }
  std::string ReadFile() const {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("settings_test_" + std::to_string(::getpid()));
  std::filesystem::path file = folder / "deeper" / "settings.ini";
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
  EXPECT_FALSE(std::filesystem::exists(file.string() + ".new"));
}

TEST_F(IniSettingsTest, ReadsWhatAPersonHasWritten) {
  WriteFile(
      "; my devices\r\n[Comports]\r\n  COM5 = \"/dev/ttyACM0\" \r\n#x=1\r\n COM6=/dev/b=c\r\n");
  const IniSettings settings(file);
  EXPECT_EQ(settings.Get("Comports", "COM5"), "/dev/ttyACM0");
  EXPECT_EQ(settings.Get("Comports", "COM6"), "/dev/b=c");
  EXPECT_FALSE(settings.Get("Comports", "#x"));
}

TEST_F(IniSettingsTest, RubbishIsPassedOver) {
  using namespace std::string_literals;
  WriteFile(
      "before=1\n\0\xff\xfe=\n[\n[]\n[broken\nlost=1\n[Settings]\n=5\nno sign\n"
      "Left=12\nTop=99999999999\nWidth=12x\nHeight=\n"s);
  IniSettings settings(file);
  EXPECT_EQ(settings.GetNumber("Settings", "Left", 1000), 12);
  EXPECT_EQ(settings.GetNumber("Settings", "Top", 1000), 1000);
  EXPECT_EQ(settings.GetNumber("Settings", "Width", 1000), 1000);
  EXPECT_EQ(settings.GetNumber("Settings", "Height", 1000), 1000);
  EXPECT_FALSE(settings.Get("", "before"));
  EXPECT_FALSE(settings.Get("Settings", "lost"));
}

TEST_F(IniSettingsTest, AFileThatCannotBeWrittenIsAFaultAndStaysAsItWas) {
  WriteFile("[Settings]\nLeft=1\n");
  const std::string before = ReadFile();
  // A folder in the way of the second file stops every user, root included.
  std::filesystem::create_directories(file.string() + ".new/x");
  IniSettings settings(file);
  settings.Save();  // nothing has changed
  settings.Set("Settings", "Left", 2);
  EXPECT_THROW(settings.Save(), Fault);
  EXPECT_EQ(ReadFile(), before);
  std::filesystem::remove_all(file.string() + ".new");
  settings.Save();
  EXPECT_EQ(ReadFile(), "[Settings]\nLeft=2\n\n");
}

}  // namespace
}  // namespace fathomline
