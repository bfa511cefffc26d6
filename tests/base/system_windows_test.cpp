// What only Windows asks of names and paths.
#include <gtest/gtest.h>

#include "base/files.h"
#include "base/system.h"
#include "base/text.h"
#include "support/expect_fault.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

TEST(WindowsNames, AreMadeFitForFiles) {
  EXPECT_EQ(FileNamePart("a\\b:c*d?e\"f<g>h|i/j"), "a_b_c_d_e_f_g_h_i_j");
  EXPECT_EQ(FileNamePart("Brücke 2.1"), "Brücke 2.1");
  for (const char* const name : {"NUL", "com1", "Lpt9.txt", "CON ", "aux.a.b", "name.", "name "}) {
    EXPECT_EQ(FileNamePart(name), std::string(name) + "_") << name;
  }
  for (const char* const name : {"COM10", "NULL", "COM", "xCON"})
    EXPECT_EQ(FileNamePart(name), name);
}

TEST(WindowsPaths, TakeBothSeparatorsAndShowTheirOwn) {
  EXPECT_EQ(PathText(PathOf("C:/Keelhaven/log\\a.log")), "C:\\Keelhaven\\log\\a.log");
  const std::string longName = "\\\\server\\share\\" + std::string(300, 'x');
  EXPECT_TRUE(PathOf(longName).native().starts_with(L"\\\\?\\UNC\\server"));
  EXPECT_EQ(PathText(PathOf(longName)), longName);
  EXPECT_EQ(DataHome(), "C:\\");
}

TEST(WindowsFiles, DevicesAreNoRecordings) {
  ExpectFault(FaultNumber::DeviceError, [] { ReadWholeFile("NUL"); });
}

}  // namespace
}  // namespace fathomline
