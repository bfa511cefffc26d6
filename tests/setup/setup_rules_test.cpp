#include "setup/setup_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace fathomline {
namespace {

using testing::ElementsAre;
using enum SentenceType;

std::vector<SentenceType> Cleared(SentenceType ticked) {
  SentenceSelection all;
  for (const SentenceType type : kSentenceBoxes) all.Set(type, true);
  std::vector<SentenceType> cleared;
  for (const Exclusion& exclusion : ExclusionsOf(ticked, all)) cleared.push_back(exclusion.cleared);
  return cleared;
}

TEST(Exclusions, ComeInTheirOrder) {
  EXPECT_THAT(Cleared(GGA), ElementsAre(GNS, GLL, RMC));
  EXPECT_THAT(Cleared(GLL), ElementsAre(GGA, GNS, RMC));
  EXPECT_THAT(Cleared(GNS), ElementsAre(GGA, GLL, RMC));
  EXPECT_THAT(Cleared(RMC), ElementsAre(GNS, GLL, GGA, VTG, ZDA));
  EXPECT_THAT(Cleared(VTG), ElementsAre(RMC));
  EXPECT_THAT(Cleared(ZDA), ElementsAre(RMC));
  EXPECT_THAT(Cleared(ATT), ElementsAre(HDT));
  EXPECT_THAT(Cleared(HDT), ElementsAre(ATT));
  for (const SentenceType type : {GSA, GST, GSV, ROT, VHW, DBT, TTM, VDM}) {
    EXPECT_THAT(Cleared(type), ElementsAre());
  }
}

TEST(IPAddress, EveryPartCounts) {
  for (const char* const good : {"1.0.0.1", "255.255.255.254", "255.255.255.255", "127.0.0.1",
                                 "019.0.0.09", "100.100.100.100"}) {
    EXPECT_TRUE(IsIPAddress(good)) << good;
  }
  for (const char* const bad :
       {"", "0.0.0.1", "1.0.0.0", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1..3.4", "1.2.3.", ".1.2.3",
        "1.2.3.4 ", "1.2.-3.4", "1.2.3.99999999999", "localhost", "0100.100.100.100"}) {
    EXPECT_FALSE(IsIPAddress(bad)) << bad;
  }
}

TEST(PortNumber, IsAnIntegerInItsRange) {
  EXPECT_EQ(PortNumber("1"), 1);
  EXPECT_EQ(PortNumber("65535"), 65535);
  EXPECT_EQ(PortNumber(" 8049 "), 8049);
  for (const char* const bad :
       {"", "0", "65536", "4294967297", "99999999999999999999", "80.5", "-1", "+1", "80a", "1 2"}) {
    EXPECT_EQ(PortNumber(bad), std::nullopt) << bad;
  }
}

TEST(AddressList, KeepsTheTenLatest) {
  Records records;
  records.IPListCount = -3;        // as a setup file may have it
  records.IPList[3] = "10.0.0.3";  // not counted, so not in the list
  for (int i = 1; i <= 10; ++i) ReArrange_IP_List(records, "10.0.0." + std::to_string(i));
  ReArrange_IP_List(records, "10.0.0.1");
  EXPECT_EQ(records.IPList[0], "10.0.0.1");
  EXPECT_EQ(records.IPList[2], "10.0.0.3");
  EXPECT_EQ(records.IPList[9], "10.0.0.10");
  records.IPListCount = 12;
  ReArrange_IP_List(records, "10.0.0.11");
  EXPECT_EQ(records.IPListCount, 10);
  EXPECT_EQ(records.IPList[0], "10.0.0.2");
  EXPECT_EQ(records.IPList[8], "10.0.0.10");
  EXPECT_EQ(records.IPList[9], "10.0.0.11");
}

}  // namespace
}  // namespace fathomline
