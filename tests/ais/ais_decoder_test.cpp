#include "ais/ais_decoder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "ais/sentence_feed.h"
#include "support/places.h"

namespace fathomline {
namespace {

TEST(AISDecoder, JoinsUntilTheLastOfAGroup) {
  SentenceFeed feed;
  feed.TakePayload("177KQJ50", 0, 3, 1);
  EXPECT_EQ(feed.MessageId(), -99);
  feed.TakePayload("00G?tO`K>RA1", 0, 3, 2);
  EXPECT_EQ(feed.MessageId(), -99);
  EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly, "177KQJ5000G?tO`K>RA1");
  feed.TakePayload("wUbN0TKH", 0, 3, 3);
  EXPECT_EQ(feed.MessageId(), 1);
  EXPECT_EQ(feed.Messages().Id1.MMSI, 477553000);
  EXPECT_EQ(feed.Messages().Id1.SubMessage, 1752);
  EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly, "");
}

TEST(AISDecoder, AnUnfinishedGroupIsAPrefixOfTheNextMessage) {
  SentenceFeed feed;
  feed.TakePayload("177KQJ5000G?", 0, 2, 1);
  feed.TakePayload("403OviQuMGCqWrRO9>E6fE700@GO", 0, -9999, -9999);
  EXPECT_EQ(feed.MessageId(), 1);
  EXPECT_EQ(feed.Messages().Id1.MMSI, 477553000);
  EXPECT_EQ(feed.Messages().Id4.MMSI, 0);
}

TEST(AISDecoder, SystemsDoNotMix) {
  SentenceFeed feed;
  feed.TakePayload("177KQJ50", 0, 2, 1, 2);
  feed.TakePayload("13u?etPv2;0n:dDPwUM1U1Cb069D", 0, 1, 1, 4);
  EXPECT_EQ(feed.MessageId(2), -99);
  EXPECT_EQ(feed.MessageId(4), 1);
  EXPECT_EQ(feed.Messages(4).Id1.MMSI, 265547250);
  EXPECT_EQ(feed.Messages(2).Id1.MMSI, 0);
}

// Eight fields or more leave the record as it was, so its payload is joined a second time.
TEST(AISDecoder, TooManyFieldsJoinTheOldPayloadAgain) {
  SentenceFeed feed;
  feed.Take({"!AIVDM,2,1,3,A,55?Mb,0*4D", "!AIVDM,1,1,,A,177,0,1*2C"});
  EXPECT_EQ(feed.MessageId(), -99);
  EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly, "55?Mb55?Mb");
}

TEST(AISDecoder, AnEndlessGroupIsDroppedWithAFault) {
  SentenceFeed feed;
  const std::string piece(1000, '1');
  for (int i = 0; i < 32; ++i) feed.TakePayload(piece, 0, 9, 1);
  feed.TakePayload(std::string(767, '1'), 0, 9, 1);
  EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly.size(), 32767U);
  EXPECT_THROW(feed.TakePayload("1", 0, 9, 1), Fault);
  EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly, "");
  feed.TakePayload("13u?etPv2;0n:dDPwUM1U1Cb069D");
  EXPECT_EQ(feed.MessageId(), 1);
}

TEST(AISDecoder, CountsOfARealRecording) {
  const std::string folder = kRecordings;
  if (folder.empty()) GTEST_SKIP() << "no recordings given";
  std::ifstream file(folder + "/hakefjord.log");
  ASSERT_TRUE(file) << folder;
  SentenceFeed feed;
  std::map<int, int> counts;
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, 1, "!") != 0 || line.compare(3, 2, "VD") != 0) continue;
    feed.Take({line});
    ++counts[feed.MessageId()];
  }
  counts.erase(-99);
  EXPECT_EQ(
      counts,
      (std::map<int, int>{
          {1, 2728}, {3, 928}, {4, 956}, {5, 88}, {8, 4284}, {18, 5984}, {20, 648}, {24, 208}}));
}

}  // namespace
}  // namespace fathomline
