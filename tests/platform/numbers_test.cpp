#include "platform/numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "support/expect_fault.h"

namespace fathomline {
namespace {

TEST(ReadNumber, ReadsAsFarAsTheTextLooksLikeANumber) {
  EXPECT_EQ(ReadNumber("  -12.5,3"), -12.5);
  EXPECT_EQ(ReadNumber("+7"), 7.0);
  EXPECT_EQ(ReadNumber(".5"), 0.5);
  EXPECT_EQ(ReadNumber("5."), 5.0);
  EXPECT_EQ(ReadNumber("-.25x"), -0.25);
  EXPECT_EQ(ReadNumber("1.2.3"), 1.2);
  EXPECT_EQ(ReadNumber("1 2"), 1.0);
  EXPECT_EQ(ReadNumber("2e3"), 2000.0);
  EXPECT_EQ(ReadNumber("2E-3"), 0.002);
  EXPECT_EQ(ReadNumber("1.E2"), 100.0);
  EXPECT_EQ(ReadNumber(".5E1"), 5.0);
  EXPECT_EQ(ReadNumber("2e"), 2.0);
  EXPECT_EQ(ReadNumber("2e+x"), 2.0);
}

TEST(ReadNumber, GivesZeroWhereNoNumberBegins) {
  for (const char* const text :
       {"", " ", "-", ".", "-.", "e5", "inf", "nan", "x1", "\t1", "--1", "- 1", "&H10"}) {
    EXPECT_EQ(ReadNumber(text), 0.0) << text;
  }
  EXPECT_EQ(ReadNumber("0x10"), 0.0);
}

TEST(ReadNumber, RoundsToTheNearestDouble) {
  EXPECT_EQ(ReadNumber("0.1"), 0.1);
  EXPECT_EQ(ReadNumber("1234567890123456789"), 1234567890123456789.0);
  EXPECT_EQ(ReadNumber("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(ReadNumber("0.30000000000000004"), 0.1 + 0.2);
  EXPECT_EQ(ReadNumber("4807.0380000000000000000000000001"), 4807.038);
}

TEST(ReadNumber, TellsTooLargeFromTooSmall) {
  const std::string zeros(400, '0');
  for (const std::string& text : {std::string("1e309"), "1" + zeros, "01" + zeros, "-1" + zeros,
                                  std::string("1e99999999999999999999")}) {
    ExpectFault(FaultNumber::Overflow, [&] { ReadNumber(text); });
  }
  EXPECT_EQ(ReadNumber("1e-400"), 0.0);
  EXPECT_EQ(ReadNumber("0." + zeros + "1"), 0.0);
  EXPECT_EQ(ReadNumber("0." + zeros + "1E5"), 0.0);
  EXPECT_EQ(ReadNumber("." + zeros + "1"), 0.0);
  EXPECT_EQ(ReadNumber("1e-99999999999999999999"), 0.0);
}

TEST(Narrowing, RoundsTiesToEvenAndRefusesWhatDoesNotFit) {
  EXPECT_EQ(ToInt16(0.5), 0);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);
  ExpectFault(FaultNumber::Overflow, [] { ToInt16(32767.5); });
  ExpectFault(FaultNumber::Overflow, [] { ToInt16(-32769.0); });
  EXPECT_EQ(ToInt32(2147483647.25), 2147483647);
  ExpectFault(FaultNumber::Overflow, [] { ToInt32(2147483647.5); });

  const double largest = std::numeric_limits<float>::max();
  EXPECT_EQ(ToSingle(largest), std::numeric_limits<float>::max());
  EXPECT_EQ(ToSingle(3.4028235677973362e38), std::numeric_limits<float>::max());
  ExpectFault(FaultNumber::Overflow, [] { ToSingle(3.4028235677973366e38); });
  ExpectFault(FaultNumber::Overflow, [] { ToSingle(std::nan("")); });
  EXPECT_EQ(ToSingle(1e-60), 0.0F);
}

TEST(PlainText, ShowsTheDigitsThatIdentifyTheValue) {
  EXPECT_EQ(PlainText(0.1F), "0.1");
  EXPECT_EQ(PlainText(0.1), "0.1");
  EXPECT_EQ(PlainText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(PlainText(1.0F / 3.0F), "0.3333333");
  EXPECT_EQ(PlainText(0.1 + 0.2), "0.3");
  EXPECT_EQ(PlainText(123456.7890625F), "123456.8");
  EXPECT_EQ(PlainText(9999999.6F), "10000000");
  EXPECT_EQ(PlainText(-0.5), "-0.5");
  EXPECT_EQ(PlainText(-0.0), "0");
  EXPECT_EQ(PlainText(100.0F), "100");
}

TEST(PlainText, NeverUsesAnExponent) {
  EXPECT_EQ(PlainText(1e-7F), "0.0000001");
  EXPECT_EQ(PlainText(1e22), "10000000000000000000000");
  EXPECT_EQ(PlainText(1.5e10F), "15000000000");
  EXPECT_EQ(PlainText(-2.5e-10), "-0.00000000025");
}

TEST(NumberText, HasABlankForTheSign) {
  EXPECT_EQ(NumberText(0.5F), " 0.5");
  EXPECT_EQ(NumberText(-0.5F), "-0.5");
  EXPECT_EQ(NumberText(0.0), " 0");
  EXPECT_EQ(NumberText(std::int16_t{-3}), "-3");
  EXPECT_EQ(NumberText(std::int32_t{70000}), " 70000");
}

TEST(ExactText, IsReadBackToTheLastBit) {
  for (const double value : {0.1 + 0.2, 1.0 / 3.0, 5e-324, -1.7976931348623157e308}) {
    EXPECT_EQ(ReadNumber(ExactText(value)), value);
  }
  EXPECT_EQ(ExactText(0.1F), "0.1");
}

}  // namespace
}  // namespace fathomline
