#include "ais/ais_messages.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ais/ais_decoder.h"
#include "ais/field_listing.h"
#include "ais/sentence_feed.h"

namespace fathomline {
namespace {

struct Row {
  int id;
  std::vector<std::string_view> sentences;
  std::string_view fields;
};

// One message or more of every id that is decoded here; the binary ones have tests of their own.
// The unavailable, the extreme and the rolled-over values are spread over the rows.
const std::vector<Row> kRows = {
    {1,
     {"!AIVDM,1,1,,B,13u?etPv2;0n:dDPwUM1U1Cb069D,0*27"},
     "MsgId=1 Repeat=0 MMSI=265547250 NavStatus=0 NavStatusText=[Under way using engines] "
     "ROT=-2.8569784 SOG=13.9 PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] "
     "Longitude=11.832976666666667 Latitude=57.66035333333333 COG=40.4 Heading=41 Timestamp=53 "
     "Regional=0 Spare=0 RAIM=0 SyncState=0 SlotTimeout=1 SubMessage=8788 SlotOffset=0 "
     "SlotNumber=0 ReceivedStations=0 UTCHour=17 UTCMinute=21 Received=2024-06-15/12:00:00"},
    {1,
     {"!AIVDM,1,1,,B,177KQJ5000G?tO`K>RA1wUbN0TKH,0*5C"},
     "MsgId=1 Repeat=0 MMSI=477553000 NavStatus=5 NavStatusText=[Moored] ROT=0 SOG=0 "
     "PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] "
     "Longitude=-122.34583333333333 Latitude=47.58283333333333 COG=51 Heading=181 Timestamp=15 "
     "Regional=0 Spare=0 RAIM=0 SyncState=1 SlotTimeout=1 SubMessage=1752 SlotOffset=0 "
     "SlotNumber=0 ReceivedStations=0 UTCHour=3 UTCMinute=54 Received=2024-06-15/12:00:00"},
    {2,
     {"!AIVDM,1,1,,B,2kn:Vh8P?vClb4QUugH>3s?oGVsa,0*3D"},
     "MsgId=2 Repeat=3 MMSI=258123456 NavStatus=8 NavStatusText=[Under way sailing] ROT=-9999 "
     "SOG=102.2 PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] Longitude=-170.25 "
     "Latitude=-45.5 COG=359.9 Heading=359 Timestamp=59 Regional=2 Spare=5 RAIM=1 SyncState=3 "
     "SlotTimeout=1 SubMessage=12009 SlotOffset=0 SlotNumber=0 ReceivedStations=0 UTCHour=23 "
     "UTCMinute=58 Received=2024-06-15/12:00:00"},
    {3,
     {"!AIVDM,1,1,,B,33J=hV0OhmNv;lbQ<CA`sW>T00rQ,0*79"},
     "MsgId=3 Repeat=0 MMSI=228815000 NavStatus=0 NavStatusText=[Under way using engines] "
     "ROT=720 SOG=5.3 PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] "
     "Longitude=-14.377565 Latitude=58.00758333333333 COG=228.6 Heading=231 Timestamp=18 "
     "Regional=0 Spare=0 RAIM=0 SyncState=0 SlotTimeout=0 SubMessage=3745 SlotOffset=3745 "
     "SlotNumber=0 ReceivedStations=0 UTCHour=0 UTCMinute=0 Received=2024-06-15/12:00:00"},
    {4,
     {"!AIVDM,1,1,,B,402=481uaUcf;OQ55JS9ITi025Jp,0*2B"},
     "MsgId=4 Repeat=0 MMSI=2311200 Year=2010 Month=6 Day=11 Hour=11 Minute=46 Second=11 "
     "PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] "
     "Longitude=-6.754698333333334 Latitude=61.423604999999995 EPFSType=1 EPFSText=[GPS] "
     "LongRangeControl=0 Spare=0 RAIM=1 SyncState=0 SlotTimeout=1 SubMessage=5816 SlotOffset=0 "
     "SlotNumber=0 ReceivedStations=0 Received=2024-06-15/12:00:00"},
    {4,
     {"!AIVDM,1,1,,B,4@2M4g1vRw678dtSF0l4Q@?jjVbd,0*35"},
     "MsgId=4 Repeat=1 MMSI=2573500 Year=2024 Month=11 Day=30 Hour=21 Minute=43 Second=8 "
     "PositionAccuracy=1 PositionAccuracyText=[High accuracy, <10 m] Longitude=-9999 "
     "Latitude=-9999 EPFSType=15 EPFSText=[Internal GNSS] LongRangeControl=1 Spare=300 RAIM=1 "
     "SyncState=1 SlotTimeout=1 SubMessage=10924 SlotOffset=0 SlotNumber=0 ReceivedStations=0 "
     "Received=2024-06-15/12:00:00"},
    {5,
     {"!AIVDM,2,1,3,B,53o8Uf42:N2Th5QWL00pu8@iU<1<uE@P0000001B<PF8<??pt=U4SkDkiK@S,0*07",
      "!AIVDM,2,2,3,A,i3i@0000008,2*5C"},
     "MsgId=5 Repeat=0 MMSI=259139000 AISVersion=1 IMONumber=9074729 CallSign=[LAXY7  ] "
     "Name=[NORDLYS SOUTH       ] ShipType=82 ShipTypeText=[Tanker] "
     "CargoText=[Carrying DG,HS or MP IMO hazard or pollutant category Y] DimensionA=100 "
     "DimensionB=22 DimensionC=8 DimensionD=12 EPFSType=3 EPFSText=[GPS/Glonass] "
     "ETA=2025-01-01/01:00:00 Draught=5.4 Destination=[TROMSOE-BODOE       ] DTE=1 "
     "Received=2024-06-15/12:00:00"},
    {9,
     {"!AIVDM,1,1,,B,91b6UbOwQpPi=JPR2u8>44H3g<1=,0*76"},
     "MsgId=9 Repeat=0 MMSI=111257001 Altitude=4094 SOG=120 PositionAccuracy=1 "
     "PositionAccuracyText=[High accuracy, <10 m] Longitude=10.75 Latitude=59.5 COG=-9999 "
     "Timestamp=17 AltitudeSensor=1 DTE=1 Spare=6 AssignedMode=1 RAIM=1 CommStateFlag=1 "
     "SyncState=2 SlotTimeout=3 SubMessage=77 SlotOffset=0 SlotNumber=0 ReceivedStations=77 "
     "UTCHour=0 UTCMinute=0 Received=2024-06-15/12:00:00"},
    {10,
     {"!AIVDM,1,1,,B,:3u?etP0V:C0,0*08"},
     "MsgId=10 Repeat=0 MMSI=265547250 DestinationMMSI=2500912 Received=2024-06-15/12:00:00"},
    {12,
     {"!AIVDM,1,1,,B,<3m62cpuC=;K=1>P?F5B2B4,0*03"},
     "MsgId=12 Repeat=0 MMSI=257000111 SequenceNumber=2 DestinationMMSI=257111222 Retransmit=1 "
     "Spare=1 Text=[MAN OVERBRD] Received=2024-06-15/12:00:00"},
    {14,
     {"!AIVDM,1,1,,B,>02Lo4@T<F04PD4@,2*06"},
     "MsgId=14 Repeat=0 MMSI=2570001 Text=[ICE AHEAD] Received=2024-06-15/12:00:00"},
    {16,
     {"!AIVDM,1,1,,B,@02Lo4PuDqcm=:=kmJHi?www,0*71"},
     "MsgId=16 Repeat=0 MMSI=2570002 DestinationA=257222333 OffsetA=1234 IncrementA=567 "
     "DestinationB=257333444 OffsetB=4095 IncrementB=1023 Received=2024-06-15/12:00:00"},
    {17,
     {"!AIVDM,1,1,,B,A02Lo4kqnA4SP2KKGLDr?ghHkdW70vPj4F60083wWowwOh40000000,4*30"},
     "MsgId=17 Repeat=0 MMSI=2570003 Longitude=-10.5 Latitude=58.5 RTCMType=9 StationId=731 "
     "ZCount=1800 Sequence=5 WordCount=7 Health=2 StationX=0 StationY=0 StationZ=0 "
     "ScaleFactor=0,1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0 UDRE=1,2,3,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "SatelliteId=30,7,1,31,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "PRC=-20,320,655.36,10485.44,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "RRC=-0.1,1.6,0.256,4.064,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "IOD=201,17,255,1,0,0,0,0,0,0,0,0,0,0,0,0,0 Received=2024-06-15/12:00:00"},
    {17,
     {"!AIVDM,1,1,,B,A02Lo51b3Qba00wwfoPPs;Qhrh>VGHLPH;oc,0*24"},
     "MsgId=17 Repeat=0 MMSI=2570004 Longitude=-9999 Latitude=-9999 RTCMType=3 StationId=1023 "
     "ZCount=3599.4 Sequence=0 WordCount=4 Health=0 StationX=-3234567.89 StationY=612345.67 "
     "StationZ=5432109.87 ScaleFactor=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "UDRE=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 SatelliteId=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "PRC=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 RRC=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     "IOD=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
     ""
     "Received=2024-06-15/12:00:00"},
    {18,
     {"!AIVDM,1,1,,B,B3mtBqrcwp60QH8`gvQ=;wv7vpRf,0*6D"},
     "MsgId=18 Repeat=0 MMSI=257888999 Regional=170 SOG=-9999 PositionAccuracy=1 "
     "PositionAccuracyText=[High accuracy, <10 m] Longitude=5.25 Latitude=60.375 COG=123.4 "
     "Heading=-9999 Timestamp=60 UnitFlag=1 DisplayFlag=1 DSCFlag=1 BandFlag=1 Msg22Flag=1 "
     "AssignedMode=1 RAIM=1 CommStateFlag=1 SyncState=1 SlotTimeout=6 SubMessage=2222 "
     "SlotOffset=0 SlotNumber=2222 ReceivedStations=0 UTCHour=0 UTCMinute=0 "
     "Received=2024-06-15/12:00:00"},
    {19,
     {"!AIVDM,1,1,,B,C3mQ:jh<EvJf4@4>5:3AvWoB@2dVbH20000000000000BPD:R1SP,0*19"},
     "MsgId=19 Repeat=0 MMSI=257444555 Regional=3 SOG=8.7 PositionAccuracy=1 "
     "PositionAccuracyText=[High accuracy, <10 m] Longitude=-88.5 Latitude=29.5 COG=335.9 "
     "Heading=335 Timestamp=46 Regional2=9 Name=[HAVSULA             ] ShipType=37 "
     "ShipTypeFullText=[Vessel-Pleasure Craft] ShipTypeText=[Vessel-Pleasure Craft] "
     "CargoText=[n/a] DimensionA=5 DimensionB=21 DimensionC=4 DimensionD=3 EPFSType=1 "
     "EPFSText=[GPS] RAIM=1 DTE=1 Received=2024-06-15/12:00:00"},
    {20,
     {"!AIVDM,1,1,,B,D02Lo5@2tN?b<`e6DmQJ4gwwowt,2*60"},
     "MsgId=20 Repeat=0 MMSI=2570005 Offset=47,2250,856,4095 Slots=1,2,5,15 Timeout=7,6,5,3 "
     "Increment=250,1125,75,2047 Received=2024-06-15/12:00:00"},
    {21,
     {"!AIVDM,1,1,,B,E>kb9O9aS@7PUh10dh19@;0Tah2cWrfP:l?M`00003vP100,4*05"},
     "MsgId=21 Repeat=0 MMSI=993692028 AtoNType=19 AtoNTypeText=[Beacon - Special mark] "
     "Name=[SF OAK BAY BR VAIS E] PositionAccuracy=0 PositionAccuracyText=[Low accuracy, >10 m] "
     "Longitude=-122.36986666666667 Latitude=37.80562166666667 DimensionA=0 DimensionB=0 "
     "DimensionC=0 DimensionD=0 EPFSType=7 EPFSText=[Surveyed] Timestamp=61 OffPosition=0 "
     "AtoNStatusPage=0 RaconStatus=0 LightStatus=0 HealthStatus=0 RAIM=0 VirtualFlag=1 "
     "AssignedMode=0 NameExtension=[              ] Received=2024-06-15/12:00:00"},
    {21,
     {"!AIVDM,1,1,,B,E>jV20C30Ra22a@3<a000000000@H25P@pD`010@HSvwOi@Dm1DS`32Aj500,0*5A"},
     "MsgId=21 Repeat=0 MMSI=992576001 AtoNType=6 AtoNTypeText=[Ligth - With sectors] "
     "Name=[FAERDER FYR         ] PositionAccuracy=1 "
     "PositionAccuracyText=[High accuracy, <10 m] Longitude=10.5 Latitude=59 DimensionA=1 "
     "DimensionB=2 DimensionC=3 DimensionD=4 EPFSType=7 EPFSText=[Surveyed] Timestamp=61 "
     "OffPosition=1 AtoNStatusPage=7 RaconStatus=2 LightStatus=3 HealthStatus=1 RAIM=1 "
     "VirtualFlag=1 AssignedMode=1 NameExtension=[EASTERN LIGHT ] Received=2024-06-15/12:00:00"},
    {22,
     {"!AIVDM,1,1,,B,F030ov22N2P6oiPEwUEQPi`,0*2F"},
     "MsgId=22 Repeat=0 MMSI=3160056 ChannelA=2087 ChannelB=2088 TxRxMode=0 Power=0 "
     "NELongitude=225164 NELatitude=5630 SWLongitude=87430 SWLatitude=6352 Addressed=0 BandA=0 "
     "BandB=0 ZoneSize=0 Received=2024-06-15/12:00:00"},
    {23,
     {"!AIVDM,1,1,,B,G02:KpP1R`sn@291njF00000900,2*1C"},
     "MsgId=23 Repeat=0 MMSI=2268130 NELongitude=1578 NELatitude=30642 SWLongitude=1096 "
     "SWLatitude=30409 StationType=6 ShipType=0 TxRxMode=0 ReportingInterval=9 QuietTime=0 "
     "Received=2024-06-15/12:00:00"},
    {24,
     {"!AIVDM,1,1,,B,H3mffn@hU@Dr0845@0000000000,2*1D"},
     "MsgId=24 Repeat=0 MMSI=257666777 PartNumber=0 Name=[LITEN BAAT          ] ShipType=0 "
     "ShipTypeText=[] CargoText=[] VendorIdText=[] ManufacturerId=[] UnitModel=0 SerialNumber=0 "
     "CallSign=[] DimensionA=0 DimensionB=0 DimensionC=0 DimensionD=0 "
     "Received=2024-06-15/12:00:00"},
    {24,
     {"!AIVDM,1,1,,B,H3mffnDU123UDI><;ijkl00h5210,0*77"},
     "MsgId=24 Repeat=0 MMSI=257666777 PartNumber=1 Name=[] ShipType=37 "
     "ShipTypeText=[Vessel-Pleasure Craft] CargoText=[n/a] VendorIdText=[ABC%TYN] "
     "ManufacturerId=[ABC] UnitModel=9 SerialNumber=345678 CallSign=[LK1234 ] DimensionA=6 "
     "DimensionB=5 DimensionC=2 DimensionD=1 Received=2024-06-15/12:00:00"},
    {27,
     {"!AIVDM,1,1,,B,K35E2bME16?aPLbN,0*1C"},
     "MsgId=27 Repeat=0 MMSI=206914217 PositionAccuracy=1 "
     "PositionAccuracyText=[High accuracy, <10 m] RAIM=1 NavStatus=5 NavStatusText=[Moored] "
     "Longitude=137 Latitude=-4.8 SOG=57 COG=167 PositionLatency=1 Received=2024-06-15/12:00:00"},
};

TEST(AISMessages, EveryFieldOfEveryId) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.sentences.front());
    SentenceFeed feed;
    feed.Take(row.sentences);
    EXPECT_EQ(feed.MessageId(), row.id);
    EXPECT_EQ(ListMessage(feed.Messages(), row.id), row.fields);
  }
}

TEST(AISMessages, UndecodedIdsNoteTheTimeAlone) {
  for (const std::string payload : {"7", ";", "=", "?"}) {
    SentenceFeed feed;
    feed.TakePayload(payload + "0000");
    EXPECT_EQ(ListMessage(feed.Messages(), feed.MessageId()), "Received=2024-06-15/12:00:00");
  }
}

TEST(AISMessages, IdsWithoutARecordDecodeNothing) {
  for (const std::string payload : {"00000", "L0000", "w0000"}) {
    SentenceFeed feed;
    feed.TakePayload(payload);
    EXPECT_EQ(ListMessage(feed.Messages(), feed.MessageId()), "") << payload;
  }
}

TEST(AISMessages, RateOfTurn) {
  EXPECT_EQ(RateOfTurn(0), 0.0F);
  EXPECT_EQ(RateOfTurn(127), 720.0F);
  EXPECT_EQ(RateOfTurn(-127), -720.0F);
  EXPECT_EQ(RateOfTurn(128), NoValue);
  EXPECT_EQ(RateOfTurn(-128), NoValue);
  EXPECT_NEAR(RateOfTurn(126), 708.71F, 0.01F);
  EXPECT_NEAR(RateOfTurn(-10), -4.464F, 0.001F);
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
  MessageBits partA(160);
  partA.Put(1, 6, 24).Put(41, 46, 'A' - 64);
  MessageBits partB(168);
  partB.Put(1, 6, 24).Put(39, 40, 1).Put(91, 96, 'L' - 64);
  feed.TakePayload(partA.Payload());
  feed.TakePayload(partB.Payload());
  EXPECT_EQ(feed.Messages().Id24.Name, "A                   ");
  EXPECT_EQ(feed.Messages().Id24.CallSign, "L      ");
  feed.TakePayload(partA.Payload());
  EXPECT_EQ(feed.Messages().Id24.CallSign, "L      ");
}

TEST(AISMessages, ArrivalRollsOver) {
  struct ArrivalRow {
    int month, day, hour, minute;
    std::string_view eta;
  };
  for (const ArrivalRow& row :
       {ArrivalRow{0, 15, 10, 20, "zero"}, ArrivalRow{13, 2, 3, 4, "2025-01-02/03:04:00"},
        ArrivalRow{2, 30, 0, 0, "2024-03-01/00:00:00"},
        ArrivalRow{12, 31, 24, 60, "2025-01-01/01:00:00"},
        ArrivalRow{3, 0, 0, 0, "2024-02-29/00:00:00"}}) {
    SentenceFeed feed;
    MessageBits bits(424);
    bits.Put(1, 6, 5).Put(275, 278, row.month).Put(279, 283, row.day);
    bits.Put(284, 288, row.hour).Put(289, 294, row.minute);
    feed.TakePayload(bits.Payload());
    EXPECT_EQ(FieldText(feed.Messages().Id5.ETA), row.eta);
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

std::string Corrections(int words) {
  MessageBits bits(816);
  bits.Put(1, 6, 17).Put(81, 86, 1).Put(113, 117, words);
  for (int block = 0; block < 17; ++block) bits.Put(124 + block * 40, 128 + block * 40, block + 1);
  return bits.Payload();
}

TEST(AISMessages, CorrectionBlocks) {
  struct BlockRow {
    int words;
    int blocks;
  };
  for (const BlockRow& row : {BlockRow{0, 0}, BlockRow{1, 0}, BlockRow{2, 1}, BlockRow{3, 0},
                              BlockRow{4, 2}, BlockRow{5, 3}, BlockRow{7, 4}, BlockRow{29, 17}}) {
    SentenceFeed feed;
    feed.TakePayload(Corrections(row.words));
    int blocks = 0;
    for (const std::int16_t satellite : feed.Messages().Id17.SatelliteId) {
      if (satellite != 0) ++blocks;
    }
    EXPECT_EQ(blocks, row.blocks) << row.words;
  }
}

TEST(AISMessages, TooManyCorrectionBlocksFaultBehindTheLast) {
  SentenceFeed feed;
  try {
    feed.TakePayload(Corrections(30));
    FAIL() << "no fault";
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.Number(), 9);
  }
  EXPECT_EQ(feed.MessageId(), 17);
  EXPECT_EQ(feed.Messages().Id17.SatelliteId[16], 17);
  EXPECT_EQ(feed.Messages().Id17.Received, DateTime{});
}

}  // namespace
}  // namespace fathomline
