#include "ais/ais_decoder.h"

#include <gtest/gtest.h>
#include <string>

#include "ais/ais_messages.h"
#include "ais/sentence_feed.h"

namespace fathomline {
namespace {

TEST(AISDecoder, SystemsDoNotMix) {
  SentenceFeed feed;
  feed.TakePayload("177KQJ50", 0, 2, 1, 2);
  feed.TakePayload("13u?etPv2;0n:dDPwUM1U1Cb069D", 0, 1, 1, 4);
  EXPECT_EQ(feed.MessageId(2), -99);
  EXPECT_EQ(feed.MessageId(4), 1);
  EXPECT_EQ(feed.Messages(4).Id1.MMSI, 265547250);
  EXPECT_EQ(feed.Messages(2).Id1.MMSI, 0);
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

}  // namespace
}  // namespace fathomline
