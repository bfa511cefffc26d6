#include "ais/ais_messages.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "ais/ais_decoder.h"
#include "ais/field_listing.h"
#include "ais/sentence_feed.h"
#include "support/expect_fault.h"
#include "support/places.h"

namespace fathomline {
namespace {

struct Row {
  int id;
  std::vector<std::string_view> sentences;
  std::string_view values;
};

// One message or more of every id that is decoded here; the binary ones have tests of their own.
// The unavailable, the extreme and the rolled-over values are spread over the rows.
const std::vector<Row> kRows = {
    {1,
     {"!AIVDM,1,1,,B,13u?etPv2;0n:dDPwUM1U1Cb069D,0*27"},
     "1 0 265547250 0 [Under way using engines] -2.8569784 13.9 0 [Low accuracy, >10 m] "
     "11.832976666666667 57.66035333333333 40.4 41 53 0 0 0 0 1 8788 0 0 0 17 21 "
     "2024-06-15/12:00:00"},
    {2,
     {"!AIVDM,1,1,,B,2kn:Vh8P?vClb4QUugH>3s?oGVsa,0*3D"},
     "2 3 258123456 8 [Under way sailing] -9999 102.2 0 [Low accuracy, >10 m] -170.25 -45.5 359.9 "
     "359 59 2 5 1 3 1 12009 0 0 0 23 58 2024-06-15/12:00:00"},
    {3,
     {"!AIVDM,1,1,,B,33J=hV0OhmNv;lbQ<CA`sW>T00rQ,0*79"},
     "3 0 228815000 0 [Under way using engines] 720 5.3 0 [Low accuracy, >10 m] -14.377565 "
     "58.00758333333333 228.6 231 18 0 0 0 0 0 3745 3745 0 0 0 0 2024-06-15/12:00:00"},
    {4,
     {"!AIVDM,1,1,,B,402=481uaUcf;OQ55JS9ITi025Jp,0*2B"},
     "4 0 2311200 2010 6 11 11 46 11 0 [Low accuracy, >10 m] -6.754698333333334 "
     "61.423604999999995 1 [GPS] 0 0 1 0 1 5816 0 0 0 2024-06-15/12:00:00"},
    {4,
     {"!AIVDM,1,1,,B,4@2M4g1vRw678dtSF0l4Q@?jjVbd,0*35"},
     "4 1 2573500 2024 11 30 21 43 8 1 [High accuracy, <10 m] -9999 -9999 15 [Internal GNSS] 1 "
     "300 1 1 1 10924 0 0 0 2024-06-15/12:00:00"},
    {5,
     {"!AIVDM,2,1,3,B,53o8Uf42:N2Th5QWL00pu8@iU<1<uE@P0000001B<PF8<??pt=U4SkDkiK@S,0*07",
      "!AIVDM,2,2,3,A,i3i@0000008,2*5C"},
     "5 0 259139000 1 9074729 [LAXY7  ] [NORDLYS SOUTH       ] 82 [Tanker] [Carrying DG,HS or MP "
     "IMO hazard or pollutant category Y] 100 22 8 12 3 [GPS/Glonass] 2025-01-01/01:00:00 5.4 "
     "[TROMSOE-BODOE       ] 1 2024-06-15/12:00:00"},
    {9,
     {"!AIVDM,1,1,,B,91b6UbOwQpPi=JPR2u8>44H3g<1=,0*76"},
     "9 0 111257001 4094 120 1 [High accuracy, <10 m] 10.75 59.5 -9999 17 1 1 6 1 1 1 2 3 77 0 0 "
     "77 0 0 2024-06-15/12:00:00"},
    {10, {"!AIVDM,1,1,,B,:3u?etP0V:C0,0*08"}, "10 0 265547250 2500912 2024-06-15/12:00:00"},
    {12,
     {"!AIVDM,1,1,,B,<3m62cpuC=;K=1>P?F5B2B4,0*03"},
     "12 0 257000111 2 257111222 1 1 [MAN OVERBRD] 2024-06-15/12:00:00"},
    {14, {"!AIVDM,1,1,,B,>02Lo4@T<F04PD4@,2*06"}, "14 0 2570001 [ICE AHEAD] 2024-06-15/12:00:00"},
    {16,
     {"!AIVDM,1,1,,B,@02Lo4PuDqcm=:=kmJHi?www,0*71"},
     "16 0 2570002 257222333 1234 567 257333444 4095 1023 2024-06-15/12:00:00"},
    {17,
     {"!AIVDM,1,1,,B,A02Lo4kqnA4SP2KKGLDr?ghHkdW70vPj4F60083wWowwOh40000000,4*30"},
     "17 0 2570003 -10.5 58.5 9 731 1800 5 7 2 0 0 0 0,1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "1,2,3,0,0,0,0,0,0,0,0,0,0,0,0,0,0 30,7,1,31,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "-20,320,655.36,10485.44,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "-0.1,1.6,0.256,4.064,0,0,0,0,0,0,0,0,0,0,0,0,0 201,17,255,1,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "2024-06-15/12:00:00"},
    {17,
     {"!AIVDM,1,1,,B,A02Lo51b3Qba00wwfoPPs;Qhrh>VGHLPH;oc,0*24"},
     "17 0 2570004 -9999 -9999 3 1023 3599.4 0 4 0 -3234567.89 612345.67 5432109.87 "
     "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 2024-06-15/12:00:00"},
    {18,
     {"!AIVDM,1,1,,B,B3mtBqrcwp60QH8`gvQ=;wv7vpRf,0*6D"},
     "18 0 257888999 170 -9999 1 [High accuracy, <10 m] 5.25 60.375 123.4 -9999 60 1 1 1 1 1 1 1 "
     "1 1 6 2222 0 2222 0 0 0 2024-06-15/12:00:00"},
    {18,
     {"!AIVDM,1,1,,A,B5NJ;PP005l4ot5Isbl03wsUkP06,0*76"},
     "18 0 367430530 0 0 0 [Low accuracy, >10 m] -122.26732 37.785035 0 -9999 55 1 0 1 1 1 0 0 1 "
     "3 0 6 6 0 0 0 0 2024-06-15/12:00:00"},
    {19,
     {"!AIVDM,1,1,,B,C3mQ:jh<EvJf4@4>5:3AvWoB@2dVbH20000000000000BPD:R1SP,0*19"},
     "19 0 257444555 3 8.7 1 [High accuracy, <10 m] -88.5 29.5 335.9 335 46 9 "
     "[HAVSULA             ] 37 [Vessel-Pleasure Craft] [Vessel-Pleasure Craft] [n/a] 5 21 4 3 1 "
     "[GPS] 1 1 2024-06-15/12:00:00"},
    {20,
     {"!AIVDM,1,1,,B,D02Lo5@2tN?b<`e6DmQJ4gwwowt,2*60"},
     "20 0 2570005 47,2250,856,4095 1,2,5,15 7,6,5,3 250,1125,75,2047 2024-06-15/12:00:00"},
    {21,
     {"!AIVDM,1,1,,B,E>kb9O9aS@7PUh10dh19@;0Tah2cWrfP:l?M`00003vP100,4*05"},
     "21 0 993692028 19 [Beacon - Special mark] [SF OAK BAY BR VAIS E] 0 [Low accuracy, >10 m] "
     "-122.36986666666667 37.80562166666667 0 0 0 0 7 [Surveyed] 61 0 0 0 0 0 0 1 0 "
     "[              ] 2024-06-15/12:00:00"},
    {21,
     {"!AIVDM,1,1,,B,E>jV20C30Ra22a@3<a000000000@H25P@pD`010@HSvwOi@Dm1DS`32Aj500,0*5A"},
     "21 0 992576001 6 [Ligth - With sectors] [FAERDER FYR         ] 1 [High accuracy, <10 m] "
     "10.5 59 1 2 3 4 7 [Surveyed] 61 1 7 2 3 1 1 1 1 [EASTERN LIGHT ] 2024-06-15/12:00:00"},
    {22,
     {"!AIVDM,1,1,,B,F030ov22N2P6oiPEwUEQPi`,0*2F"},
     "22 0 3160056 2087 2088 0 0 225164 5630 87430 6352 0 0 0 0 2024-06-15/12:00:00"},
    {23,
     {"!AIVDM,1,1,,B,G02:KpP1R`sn@291njF00000900,2*1C"},
     "23 0 2268130 1578 30642 1096 30409 6 0 0 9 0 2024-06-15/12:00:00"},
    {24,
     {"!AIVDM,1,1,,B,H3mffn@hU@Dr0845@0000000000,2*1D"},
     "24 0 257666777 0 [LITEN BAAT          ] 0 [] [] [] [] 0 0 [] 0 0 0 0 2024-06-15/12:00:00"},
    {24,
     {"!AIVDM,1,1,,A,H42O55lt0000000D3nink000?0500,0*70"},
     "24 0 271041815 1 [] 60 [Passenger Ship] [Not specified] [       ] [   ] 0 0 [TC6163 ] 0 15 "
     "0 5 2024-06-15/12:00:00"},
    {27,
     {"!AIVDM,1,1,,B,K35E2bME16?aPLbN,0*1C"},
     "27 0 206914217 1 [High accuracy, <10 m] 1 5 [Moored] 137 -4.8 57 167 1 2024-06-15/12:00:00"},
};

TEST(AISMessages, EveryFieldOfEveryId) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.sentences.front());
    SentenceFeed feed;
    feed.Take(row.sentences);
    EXPECT_EQ(feed.MessageId(), row.id);
    EXPECT_EQ(ListMessage(feed.Messages(), row.id), row.values);
  }
}

// What a corpus of received messages says, worked out with a second decoder: the values of each
// record from its first, as far as the message goes.
constexpr std::string_view kReceived[] = {
    "2 0 356302000 0 [Under way using engines] 720 13.9 0 [Low accuracy, >10 m] "
    "-71.62614333333333 40.39235833333333 87.7 91 41 0 0 0 0 3 6 0 0 6 0 0",
    "3 0 563808000 5 [Moored] 0 0 1 [High accuracy, <10 m] -76.32753333333334 36.91 252 352 35 0 "
    "0 0 0 0 0 0 0 0 0 0",
    "4 0 3669702 2007 5 14 19 57 39 1 [High accuracy, <10 m] -76.35236166666667 "
    "36.883766666666666 7 [Surveyed] 0 0 0 0 4 1503 0 1503 0",
    "5 0 351759000 0 9134270 [3FOF8  ] [EVER DIADEM         ] 70 [Cargo ship] [Not specified] 225 "
    "70 1 31 1 [GPS] 2024-05-15/14:00:00 12.2 [NEW YORK            ] 0",
    "6 0 992509976 235 10 [Message with FI (Function Identifier) 10 received. FI is not decoded "
    "by this application! Please make sure you are using correct Binary Message Standard (IMO236 "
    "or IALA Proposal)] 2500912",
    "8 1 2300061 1 11 [FI 11 - Meteorological & Hydrological Data] 0 0 0 64.65 24.4 20 18 27 11 "
    "12 162 167 -12.7 80 -9999 1032 2 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 "
    "-9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999 -9999",
    "9 0 111232511 303 42 0 [Low accuracy, >10 m] -6.278843333333333 58.144 154.5 15 0 1 0 0 0 0 "
    "0 2 624 0 624 42 0 0",
    "10 0 366814480 366832740",
    "12 0 271002099 0 271002111 1 0 [MSG FROM 271002099]",
    "14 0 351809000 [RCVD YR TEST MSG]",
    "16 0 2053501 224251000 200 0 0 0 0",
    "17 0 2734450 29.13 59.986666666666665 31 5 1665.6 0 14 0 0 0 0 "
    "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 1,1,1,1,1,1,1,1,0,0,0,0,0,0,0,0,0 "
    "17,4,19,18,2,10,9,3,0,0,0,0,0,0,0,0,0 "
    "-6.5,-9.22,-1.92,-11.7,-9.12,-10.7,-15.54,-0.92,0,0,0,0,0,0,0,0,0 "
    "-0.022,-0.012,-0.006,0.012,0.018,0.036,0,0.024,0,0,0,0,0,0,0,0,0 "
    "41,41,41,41,41,41,41,41,0,0,0,0,0,0,0,0,0",
    "19 0 367059850 248 8.7 0 [Low accuracy, >10 m] -88.81039166666666 29.543695 335.9 -9999 46 4 "
    "[CAPT.J.RIMES        ] 70 [Cargo ship] [Cargo ship] [Not specified] 5 21 4 4 1 [GPS] 0 0",
    "20 0 3160097 47,2250,856,0 1,1,5,0 7,7,7,0 250,1125,1125,0",
    "21 0 123456789 20 [Cardinal mark N] [CHINA ROSE MURPHY EX] 0 [Low accuracy, >10 m] "
    "-122.69859166666667 47.92061833333333 5 5 5 5 1 [GPS] 50 0 5 0 0 0 0 0 0 [PRESS ALERT   ]",
    "22 0 3160048 2087 2088 0 0 218044 27330 214044 25400 0 0 0 4",
    "24 0 271041815 0 [PROGUY              ] 0 [] [] [] [] 0 0 [] 0 0 0 0",
    "25 0 440006460 1 0 0 0 [>EV5Y, C?'(CA!P       ] 134218384",
    "26 2 633353704 0 1 384 0 [S2IQ623)  ?9X [EP     ] 834699643",
    "27 1 206914217 0 [Low accuracy, >10 m] 0 2 [Not under command] 137.02333333333334 4.84 57 "
    "167 0",
};

TEST(AISMessages, ReceivedMessagesOfEveryId) {
  const std::string folder = kRecordings;
  if (folder.empty()) GTEST_SKIP() << "no recordings given";
  std::ifstream file(folder + "/sample.aivdm");
  ASSERT_TRUE(file) << folder;
  SentenceFeed feed;
  std::vector<std::string> listings;
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, 1, "!") != 0 || line.compare(3, 2, "VD") != 0) continue;
    feed.Take({line});
    listings.push_back(ListMessage(feed.Messages(), feed.MessageId()));
  }
  for (const std::string_view values : kReceived) {
    EXPECT_TRUE(std::any_of(listings.begin(), listings.end(), [&](const std::string& listing) {
      return listing.starts_with(std::string(values) + ' ');
    })) << values;
  }
}

TEST(AISMessages, IdsThatAreNotDecoded) {
  for (const char id : {'7', ';', '=', '?', '0', 'L', 'w'}) {
    SentenceFeed feed;
    feed.TakePayload(id + std::string("0000"));
    const bool noted = std::string_view("7;=?").find(id) != std::string_view::npos;
    EXPECT_EQ(ListMessage(feed.Messages(), feed.MessageId()), noted ? "2024-06-15/12:00:00" : "")
        << id;
  }
}

TEST(AISMessages, RateOfTurn) {
  for (const auto& [raw, rate] : {std::pair{0, 0.0F},
                                  {127, 720.0F},
                                  {-127, -720.0F},
                                  {128, -9999.0F},
                                  {-128, -9999.0F},
                                  {126, 708.71F},
                                  {-10, -4.464F}}) {
    EXPECT_NEAR(RateOfTurn(raw), rate, 0.005F) << raw;
  }
}

// A tail that is missing reads as zero, and a record is filled from a single character.
TEST(AISMessages, ShortMessageFillsTheRecord) {
  SentenceFeed feed;
  feed.Take({"!AIVDM,1,1,,B,13u?etPv2;0n:dDPwUM1U1Cb069D,0*27"});
  feed.TakePayload("1");
  const AISPositionReport& report = feed.Messages().Id1;
  EXPECT_EQ(report.MMSI, 0);
  EXPECT_EQ(report.Longitude, 0.0);
  EXPECT_EQ(report.NavStatusText, "Under way using engines");
  EXPECT_EQ(report.UTCHour, 17);  // of the message before: the slot time-out is 0 now
}

std::string WithShipType(int type) {
  MessageBits bits(424);
  bits.Put(1, 6, 5).Put(233, 240, type);
  return bits.Payload();
}

TEST(AISMessages, ShipTypeBeyondTheTableKeepsTheGroupText) {
  SentenceFeed feed;
  const AISStaticVoyageData& data = feed.Messages().Id5;
  feed.TakePayload(WithShipType(65));
  EXPECT_EQ(data.ShipTypeText, "Passenger Ship");
  feed.TakePayload(WithShipType(200));
  EXPECT_EQ(data.ShipType, 200);
  EXPECT_EQ(data.ShipTypeText, "Passenger Ship");
  EXPECT_EQ(data.CargoText, "Not specified");
  feed.TakePayload(WithShipType(100));
  EXPECT_EQ(data.ShipTypeText, "");
  feed.TakePayload(WithShipType(52));
  EXPECT_EQ(data.CargoText, "n/a");

  MessageBits partB(168);
  partB.Put(1, 6, 24).Put(39, 40, 1).Put(41, 48, 100);
  feed.TakePayload(partB.Payload());
  EXPECT_EQ(feed.Messages().Id24.ShipType, 0);
  EXPECT_EQ(feed.Messages().Id24.ShipTypeText, "Not defined");
}

TEST(AISMessages, PartsOfId24KeepEachOther) {
  SentenceFeed feed;
  const std::string partA = MessageBits(160).Put(1, 6, 24).Put(41, 46, 1).Payload();
  feed.TakePayload(partA);
  feed.TakePayload(MessageBits(168).Put(1, 6, 24).Put(39, 40, 1).Put(91, 96, 2).Payload());
  EXPECT_EQ(feed.Messages().Id24.Name, "A                   ");
  feed.TakePayload(partA);
  EXPECT_EQ(feed.Messages().Id24.CallSign, "B      ");
}

TEST(AISMessages, ArrivalRollsOver) {
  for (const auto& [month, day, hour, minute, eta] : {std::tuple{0, 15, 10, 20, "zero"},
                                                      {13, 2, 3, 4, "2025-01-02/03:04:00"},
                                                      {2, 30, 0, 0, "2024-03-01/00:00:00"},
                                                      {12, 31, 24, 60, "2025-01-01/01:00:00"},
                                                      {3, 0, 0, 0, "2024-02-29/00:00:00"}}) {
    SentenceFeed feed;
    MessageBits bits(424);
    bits.Put(1, 6, 5).Put(275, 278, month).Put(279, 283, day);
    bits.Put(284, 288, hour).Put(289, 294, minute);
    feed.TakePayload(bits.Payload());
    EXPECT_EQ(FieldText(feed.Messages().Id5.ETA), eta);
  }
}

// Id 12 drops the character that the fill bits cut into; id 14 takes no notice of them.
TEST(AISMessages, TextLimits) {
  SentenceFeed feed;
  const std::string payload = std::string("<") + std::string(13, '1');
  feed.TakePayload(payload, 0);
  EXPECT_EQ(feed.Messages().Id12.Text.size(), 2U);
  feed.TakePayload(payload, 2);
  EXPECT_EQ(feed.Messages().Id12.Text.size(), 1U);
  feed.TakePayload("<00", 0);
  EXPECT_EQ(feed.Messages().Id12.Text, "");
  for (const int fill : {0, 2, 100}) {
    feed.TakePayload(">" + std::string(9, '0'), static_cast<std::int16_t>(fill));
    EXPECT_EQ(feed.Messages().Id14.Text, "   ");
  }
}

// The length counts characters that are not decoded: the text runs on over zeros to the end of the
// bits, and from there on every bit is set.
TEST(AISMessages, TextOfALongPayloadRunsPastTheBits) {
  SentenceFeed feed;
  feed.TakePayload(">" + std::string(199, '1'));
  const std::string& text = feed.Messages().Id14.Text;
  ASSERT_EQ(text.size(), 193U);
  EXPECT_EQ(text.substr(159, 14), "PPP        C??");
}

// Of more blocks than the record holds, those that it does are there when the fault is raised.
TEST(AISMessages, CorrectionBlocks) {
  for (const auto& [words, blocks] :
       {std::pair{0, 0}, {1, 0}, {2, 1}, {3, 0}, {4, 2}, {5, 3}, {7, 4}, {29, 17}, {30, 17}}) {
    MessageBits bits(816);
    bits.Put(1, 6, 17).Put(81, 86, 1).Put(113, 117, words);
    for (int i = 0; i < 17; ++i) bits.Put(124 + i * 40, 128 + i * 40, i + 1);
    SentenceFeed feed;
    const auto take = [&] { feed.TakePayload(bits.Payload()); };
    words == 30 ? ExpectFault(FaultNumber::OutOfRange, take) : take();
    const AISDGNSSBroadcast& record = feed.Messages().Id17;
    EXPECT_EQ(17 - std::count(record.SatelliteId.begin(), record.SatelliteId.end(), 0), blocks);
    EXPECT_EQ(record.Received == DateTime{}, words == 30);
    EXPECT_EQ(feed.decoder.Receiver(1).AISAssembly, "");
  }
}

}  // namespace
}  // namespace fathomline
