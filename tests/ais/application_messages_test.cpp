#include "ais/application_messages.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "ais/field_listing.h"
#include "ais/sentence_feed.h"

namespace fathomline {
namespace {

template <class Group>
struct GroupRow {
  bool iala;
  std::vector<std::string_view> sentences;
  std::string_view fields;
};

template <class Group>
void CheckGroup(Group AISApplicationData::*group, const std::vector<GroupRow<Group>>& rows) {
  for (const GroupRow<Group>& row : rows) {
    SCOPED_TRACE(row.sentences.front());
    SentenceFeed feed;
    feed.decoder.SetBinaryStandardIALA(row.iala);
    feed.Take(row.sentences);
    EXPECT_EQ(ListFields(feed.Messages().Id8.*group), row.fields);
  }
}

TEST(ApplicationMessages, MetHydro) {
  CheckGroup<AISMetHydro>(
      &AISApplicationData::MetHydro,
      {{false,
        {"!AIVDM,1,1,,B,802MN7P0BkHvf?diR4FnUSt>drGJqu=EHjw1Rm5jpdR0OBlqg71u=TVsEH,2*58"},
        "Latitude=59.25 Longitude=-10.5 Day=17 Hour=13 Minute=45 WindSpeed=22 WindGust=31 "
        "WindDirection=270 WindGustDirection=359 AirTemperature=0.5 Humidity=87 DewPoint=5 "
        "AirPressure=1013 PressureTendency=1 Visibility=9.9 WaterLevel=-0.5 WaterLevelTrend=2 "
        "Current1Speed=1.2 Current1Direction=181 Current2Speed=2.3 Current2Direction=92 "
        "Current2Level=11 Current3Speed=3.4 Current3Direction=3 Current3Level=29 WaveHeight=4.5 "
        "WavePeriod=14 WaveDirection=222 SwellHeight=5.6 SwellPeriod=15 SwellDirection=333 "
        "SeaState=9 WaterTemperature=5.5 Precipitation=5 Salinity=34.1 Ice=2"},
       {true,
        {"!AIVDM,1,1,,B,802MN7P0H?wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwt,2*3D"},
        "Latitude=-9999 Longitude=-9999 Day=-9999 Hour=-9999 Minute=-9999 WindSpeed=-9999 "
        "WindGust=-9999 WindDirection=-9999 WindGustDirection=-9999 AirTemperature=-9999 "
        "Humidity=-9999 DewPoint=-9999 AirPressure=-9999 PressureTendency=-9999 Visibility=-9999 "
        "WaterLevel=-9999 WaterLevelTrend=-9999 Current1Speed=-9999 Current1Direction=-9999 "
        "Current2Speed=-9999 Current2Direction=-9999 Current2Level=-9999 Current3Speed=-9999 "
        "Current3Direction=-9999 Current3Level=-9999 WaveHeight=-9999 WavePeriod=-9999 "
        "WaveDirection=-9999 SwellHeight=-9999 SwellPeriod=-9999 SwellDirection=-9999 "
        "SeaState=-9999 WaterTemperature=-9999 Precipitation=-9999 Salinity=-9999 Ice=-9999"}});
}

TEST(ApplicationMessages, DangerousCargo) {
  CheckGroup<AISDangerousCargo>(
      &AISApplicationData::DangerousCargo,
      {{false,
        {"!AIVDM,1,1,,B,802MN7P0C3Sklk6MF<@d459hR31==?>9E=P>9DB1D50000mfi0?;GMP,5*79"},
        "LastPort=[NOOSL] DepartureMonth=6 DepartureDay=14 DepartureHour=21 DepartureMinute=35 "
        "NextPort=[DKAAR] ArrivalMonth=7 ArrivalDay=1 ArrivalHour=2 ArrivalMinute=3 "
        "Goods=[AMMONIUM NITRATE    ] IMDCategory=[5.1 ] UNNumber=1942 Amount=750 Unit=3"}});
}

TEST(ApplicationMessages, FairwayClosed) {
  CheckGroup<AISFairwayClosed>(
      &AISApplicationData::FairwayClosed,
      {{true,
        {"!AIVDM,2,1,3,B,802MN7P0E4QAhE50@00000000000014ShPBh00000000000001RC55QE0000,0*32",
         "!AIVDM,2,2,3,A,000000000?`g:PwsDe,0*52"},
        "Reason=[REGATTA             ] LocationFrom=[DROBAK              ] "
        "LocationTo=[FILTVET             ] Radius=1000 Unit=2 StartDay=30 StartMonth=5 StartHour=8 "
        "StartMinute=15 EndDay=31 EndMonth=6 EndHour=20 EndMinute=45"}});
}

TEST(ApplicationMessages, TidalWindow) {
  CheckGroup<AISTidalWindow>(
      &AISApplicationData::TidalWindow,
      {{false,
        {"!AIVDM,1,1,,B,802MN7P0CadR2u80GMMh<tjmLVFPT:0kj=H0@QRFOuwed8?wKH@gn04000,4*25"},
        "Month=9 Day=22 Position1.Latitude=59.5 Position1.Longitude=10.25 Position1.FromHour=6 "
        "Position1.FromMinute=30 Position1.ToHour=12 Position1.ToMinute=45 "
        "Position1.CurrentDirection=185 Position1.CurrentSpeed=2.5 Position2.Latitude=-9999 "
        "Position2.Longitude=-9999 Position2.FromHour=1 Position2.FromMinute=2 Position2.ToHour=3 "
        "Position2.ToMinute=4 Position2.CurrentDirection=359 Position2.CurrentSpeed=12.6 "
        "Position3.Latitude=-0.5 Position3.Longitude=-0.25 Position3.FromHour=23 "
        "Position3.FromMinute=59 Position3.ToHour=0 Position3.ToMinute=1 "
        "Position3.CurrentDirection=0 Position3.CurrentSpeed=0"}});
}

TEST(ApplicationMessages, WeatherReport) {
  CheckGroup<AISWeatherReport>(
      &AISApplicationData::WeatherReport,
      {{false,
        {"!AIVDM,1,1,,B,802MN7P0EOnG5RrW8ieF>wEqp,0*55"},
        "ReportType=1 Latitude=-12.34 Longitude=56.78 Month=10 Day=28 Hour=17 Minute=40 COG=270 "
        "SOG=10.5 Heading=355 AirPressure=1001.3 PressureChange=-1.3 PressureTendency=8"}});
}

// A binary message whose application data starts with the given number of 16 bits.
std::string Binary(int id, int fi, int data = 0) {
  MessageBits bits(200);
  bits.Put(1, 6, id).Put(9, 38, 257000999);
  int start = 57;
  if (id == 6) {
    bits.Put(41, 70, 257000111).Put(73, 82, 235).Put(83, 88, fi);
    start = 89;
  } else if (id == 8) {
    bits.Put(41, 50, 235).Put(51, 56, fi);
  } else {
    bits.Put(40, 40, 1).Put(41, 50, 235).Put(51, 56, fi);
  }
  bits.Put(start, start + 15, data);
  return bits.Payload();
}

const AISApplicationData& Record(const SentenceFeed& feed, int id) {
  const AISMessages& messages = feed.Messages();
  return id == 6    ? static_cast<const AISApplicationData&>(messages.Id6)
         : id == 8  ? static_cast<const AISApplicationData&>(messages.Id8)
         : id == 25 ? static_cast<const AISApplicationData&>(messages.Id25)
                    : messages.Id26;
}

std::string NotDecoded(int fi) {
  return "Message with FI (Function Identifier) " + std::to_string(fi) +
         " received. FI is not decoded by this application! Please make sure you are using "
         "correct Binary Message Standard (IMO236 or IALA Proposal)";
}

TEST(ApplicationMessages, DescriptionsOfBothStandards) {
  struct DescriptionRow {
    int imo236;
    int iala;
    std::string_view title;
  };
  for (const DescriptionRow& row :
       {DescriptionRow{11, 32, "Meteorological & Hydrological Data"},
        DescriptionRow{12, 5, "Dangerous Cargo Indication"},
        DescriptionRow{13, 20, "Fairway Closed"}, DescriptionRow{14, 33, "Tidal Window"}}) {
    for (const int id : {6, 8, 25, 26}) {
      for (const bool iala : {false, true}) {
        SentenceFeed feed;
        feed.decoder.SetBinaryStandardIALA(iala);
        const int served = iala ? row.iala : row.imo236;
        const int other = iala ? row.imo236 : row.iala;
        feed.TakePayload(Binary(id, served));
        EXPECT_EQ(Record(feed, id).Description,
                  "FI " + std::to_string(served) + " - " + std::string(row.title));
        feed.TakePayload(Binary(id, other));
        EXPECT_EQ(Record(feed, id).Description, NotDecoded(other));
        EXPECT_EQ(Record(feed, id).DAC, 235);
        EXPECT_EQ(Record(feed, id).MMSI, 257000999);
      }
    }
  }
}

TEST(ApplicationMessages, NumbersInTheDescription) {
  for (const int id : {6, 8, 25, 26}) {
    SentenceFeed feed;
    const AISApplicationData& record = Record(feed, id);
    feed.TakePayload(Binary(id, 15, 123 << 5));
    EXPECT_EQ(record.HeightOverKeel, 12.3F);
    EXPECT_EQ(record.Description, "Height over keel : 12.3");
    feed.TakePayload(Binary(id, 16, 4321 << 3));
    EXPECT_EQ(record.Passengers, 4321);
    EXPECT_EQ(record.Description, "Passengers onboard : 4321");
    feed.TakePayload(Binary(id, 2, 1 << 6 | 11));
    const bool asks = id != 8;
    EXPECT_EQ(record.RequestedFI, asks ? 11 : 0);
    EXPECT_EQ(record.Description, asks ? "FI 2 - FI Interogation, DAC 1 FI 11" : NotDecoded(2));
    feed.TakePayload(Binary(id, 21));
    EXPECT_EQ(record.Description,
              id == 8 ? "FI 21 - Weather Observation Report from Ship" : NotDecoded(21));
  }
}

TEST(ApplicationMessages, WeatherReportOfTheOtherForm) {
  SentenceFeed feed;
  feed.TakePayload(Binary(8, 21, 0x7FFF));
  EXPECT_EQ(feed.Messages().Id8.WeatherReport.ReportType, 0);
  EXPECT_EQ(feed.Messages().Id8.WeatherReport.Latitude, 0.0);
}

// The text begins twelve bits behind the application header, and its limit counts from there.
TEST(ApplicationMessages, Texts) {
  const auto text = [](int id, int start) {
    MessageBits bits(132);
    bits.Put(1, 6, id);
    if (id > 8) bits.Put(40, 40, 1);
    for (const char c : {'S', 'O', 'S'}) {
      bits.Put(start, start + 5, c - 64);
      start += 6;
    }
    return bits.Payload();
  };
  for (const auto& [id, start] : {std::pair{6, 101}, {8, 69}, {25, 69}, {26, 69}}) {
    SentenceFeed feed;
    feed.TakePayload(text(id, start));
    EXPECT_EQ(Record(feed, id).Description, "SOS" + std::string(13, ' ')) << id;
    feed.TakePayload(text(id, start), 2);
    EXPECT_EQ(Record(feed, id).Description, "SOS" + std::string(12, ' ')) << id;
    feed.TakePayload(text(id, start).substr(0, 7));
    EXPECT_EQ(Record(feed, id).Description, "") << id;
  }
}

TEST(ApplicationMessages, AddressedMultiSlot) {
  SentenceFeed feed;
  MessageBits bits(120);
  bits.Put(1, 6, 25).Put(39, 40, 3).Put(41, 70, 257000222).Put(71, 80, 1).Put(81, 86, 16);
  bits.Put(87, 99, 250);
  feed.TakePayload(bits.Payload());
  const AISMultiSlotRecord& record = feed.Messages().Id25;
  EXPECT_EQ(record.Addressed, 1);
  EXPECT_EQ(record.DestinationMMSI, 257000222);
  EXPECT_EQ(record.DAC, 1);
  EXPECT_EQ(record.FI, 16);
  EXPECT_EQ(record.Passengers, 250);
}

}  // namespace
}  // namespace fathomline
