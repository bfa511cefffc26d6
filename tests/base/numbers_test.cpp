#include "base/numbers.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "support/expect_fault.h"

namespace fathomline {
namespace {

using testing::Each;
using testing::ElementsAre;

// Numbers are read from the texts as far as they look like one.
std::vector<double> Read(std::initializer_list<std::string_view> texts) {
  std::vector<double> numbers;
  for (const std::string_view text : texts) numbers.push_back(ReadNumber(text));
  return numbers;
}

TEST(ReadNumber, ReadsAsFarAsTheTextLooksLikeANumber) {
  EXPECT_THAT(Read({"  -12.5,3", "+7", ".5", "5.", "-.25x", "1.2.3", "1 2", "0x10"}),
              ElementsAre(-12.5, 7.0, 0.5, 5.0, -0.25, 1.2, 1.0, 0.0));
  EXPECT_THAT(Read({"2e3", "2E-3", "1.E2", ".5E1", "2e", "2e+x"}),
              ElementsAre(2000.0, 0.002, 100.0, 5.0, 2.0, 2.0));
  EXPECT_THAT(
      Read({"", " ", "-", ".", "-.", "e5", "inf", "nan", "x1", "\t1", "--1", "- 1", "&H10"}),
      Each(0.0));
  // To the nearest double.
  EXPECT_THAT(Read({"0.1", "1234567890123456789", "9007199254740993", "0.30000000000000004",
                    "4807.0380000000000000000000000001"}),
              ElementsAre(0.1, 1234567890123456789.0, 9007199254740992.0, 0.1 + 0.2, 4807.038));
}

TEST(ReadNumber, TellsTooLargeFromTooSmall) {
  const std::string zeros(400, '0');
  for (const std::string& text : {std::string("1e309"), "1" + zeros, "01" + zeros, "-1" + zeros,
                                  std::string("1e99999999999999999999")}) {
    ExpectFault(FaultNumber::Overflow, [&] { ReadNumber(text); });
  }
  EXPECT_THAT(Read({"1e-400", "0." + zeros + "1E5", "." + zeros + "1", "1e-99999999999999999999"}),
              Each(0.0));
}

TEST(Narrowing, RoundsTiesToEvenAndRefusesWhatDoesNotFit) {
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);
  ExpectFault(FaultNumber::Overflow, [] { ToInt16(32767.5); });
  EXPECT_EQ(ToInt32(2147483647.25), 2147483647);
  ExpectFault(FaultNumber::Overflow, [] { ToInt32(2147483647.5); });

  const double largest = std::numeric_limits<float>::max();
  EXPECT_EQ(ToSingle(largest), std::numeric_limits<float>::max());
  EXPECT_EQ(ToSingle(3.4028235677973362e38), std::numeric_limits<float>::max());
  ExpectFault(FaultNumber::Overflow, [] { ToSingle(3.4028235677973366e38); });
  ExpectFault(FaultNumber::Overflow, [] { ToSingle(std::nan("")); });
  EXPECT_EQ(ToSingle(1e-60), 0.0F);
}

template <class Number>
std::string Shown(std::initializer_list<Number> values) {
  std::string texts;
  for (const Number value : values) texts += (texts.empty() ? "" : " ") + PlainText(value);
  return texts;
}

TEST(PlainText, ShowsTheDigitsThatIdentifyTheValueAndNoExponent) {
  EXPECT_EQ(Shown({0.1, 1.0 / 3.0, 0.1 + 0.2, -0.5, -0.0}), "0.1 0.333333333333333 0.3 -0.5 0");
  EXPECT_EQ(Shown({1e22, -2.5e-10}), "10000000000000000000000 -0.00000000025");
  EXPECT_EQ(Shown({0.1F, 1.0F / 3.0F, 123456.7890625F, 9999999.6F, 100.0F, 1e-7F, 1.5e10F}),
            "0.1 0.3333333 123456.8 10000000 100 0.0000001 15000000000");
}

TEST(NumberText, HasABlankForTheSign) {
  EXPECT_EQ(NumberText(0.5F), " 0.5");
  EXPECT_EQ(NumberText(-0.5F), "-0.5");
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
