#include "decoding/checksum.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace fathomline {
namespace {

std::string Sum(std::string_view sentence) {
  return std::string(std::string_view(ComputeChecksum(sentence)));
}

TEST(ComputeChecksum, SumsBetweenTheFirstCharacterAndTheStar) {
  EXPECT_EQ(Sum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48"), "48");
  EXPECT_EQ(Sum("!GPVTG,054.7,T,034.4,M,005.5,N,010.2,K"), "48");
  EXPECT_EQ(Sum("$A*99*00"), "41");
  EXPECT_EQ(Sum("$AB"), "03");
  EXPECT_EQ(Sum("$\xC3*"), "C3");
  for (const char* const empty : {"", "$", "*41", "$*41"}) EXPECT_EQ(Sum(empty), "XX") << empty;
}

TEST(TestChecksum, ComparesTheLastTwoCharactersExactly) {
  EXPECT_TRUE(TestChecksum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48"));
  EXPECT_TRUE(TestChecksum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48\r\n"));
  EXPECT_FALSE(TestChecksum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48\n"));
  EXPECT_FALSE(TestChecksum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48\r"));
  EXPECT_FALSE(TestChecksum("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*49"));
  EXPECT_TRUE(TestChecksum("$jfff*0C"));
  EXPECT_FALSE(TestChecksum("$jfff*0c"));
}

TEST(TestChecksum, RefusesBelowSixCharacters) {
  EXPECT_FALSE(TestChecksum("$A*41"));
  EXPECT_TRUE(TestChecksum("$AB*03"));
  EXPECT_FALSE(TestChecksum(""));
  EXPECT_FALSE(TestChecksum("*41\r\n"));
}

TEST(TestChecksum, ANothingIsSummedAsXX) {
  EXPECT_TRUE(TestChecksum("*ABCXX"));
  EXPECT_FALSE(TestChecksum("*ABC00"));
}

}  // namespace
}  // namespace fathomline
