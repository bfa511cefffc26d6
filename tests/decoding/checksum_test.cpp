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
  const std::string right = "$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48";
  for (const std::string& good : {right, right + "\r\n", std::string("$jfff*0C"),
                                  std::string("$AB*03"), std::string("*ABCXX")}) {
    EXPECT_TRUE(TestChecksum(good)) << good;
  }
  // Half an ending, another sum, small digits, and less than six characters.
  for (const std::string& bad :
       {right + "\n", right + "\r", std::string("$AB*04"), std::string("$jfff*0c"),
        std::string("*ABC00"), std::string("$A*41"), std::string(), std::string("*41\r\n")}) {
    EXPECT_FALSE(TestChecksum(bad)) << bad;
  }
}

}  // namespace
}  // namespace fathomline
