#include "ais/application_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "ais/field_listing.h"
#include "ais/sentence_feed.h"

namespace fathomline {
namespace {

using testing::StartsWith;

struct GroupRow {
  std::string (*list)(const AISBinaryRecord& record);
  std::vector<std::string_view> sentences;
  std::string_view values;
};

template <auto Group>
std::string List(const AISBinaryRecord& record) {
  return ListFields(record.*Group);
}

const std::vector<GroupRow> kGroups = {
    {List<&AISBinaryRecord::MetHydro>,
     {"!AIVDM,1,1,,B,802MN7P0BkHvf?diR4FnUSt>drGJqu=EHjw1Rm5jpdR0OBlqg71u=TVsEH,2*58"},
     "59.25 -10.5 17 13 45 22 31 270 359 0.5 87 5 1013 1 9.9 -0.5 2 1.2 181 2.3 92 11 3.4 3 29 "
     "4.5 14 222 5.6 15 333 9 5.5 5 34.1 2"},
    {List<&AISBinaryRecord::DangerousCargo>,
     {"!AIVDM,1,1,,B,802MN7P0C3Sklk6MF<@d459hR31==?>9E=P>9DB1D50000mfi0?;GMP,5*79"},
     "[NOOSL] 6 14 21 35 [DKAAR] 7 1 2 3 [AMMONIUM NITRATE    ] [5.1 ] 1942 750 3"},
    {List<&AISBinaryRecord::FairwayClosed>,
     {"!AIVDM,2,1,3,B,802MN7P0E4QAhE50@00000000000014ShPBh00000000000001RC55QE0000,0*32",
      "!AIVDM,2,2,3,A,000000000?`g:PwsDe,0*52"},
     "[REGATTA             ] [DROBAK              ] [FILTVET             ] 1000 2 30 5 8 15 31 6 "
     "20 45"},
    {List<&AISBinaryRecord::TidalWindow>,
     {"!AIVDM,1,1,,B,802MN7P0CadR2u80GMMh<tjmLVFPT:0kj=H0@QRFOuwed8?wKH@gn04000,4*25"},
     "9 22 59.5 10.25 6 30 12 45 185 2.5 -9999 -9999 1 2 3 4 359 12.6 -0.5 -0.25 23 59 0 1 0 0"},
    {List<&AISBinaryRecord::WeatherReport>,
     {"!AIVDM,1,1,,B,802MN7P0EOnG5RrW8ieF>wEqp,0*55"},
     "1 -12.34 56.78 10 28 17 40 270 10.5 355 1001.3 -1.3 8"},
};

TEST(ApplicationMessages, EveryFieldOfEveryGroup) {
  for (const GroupRow& row : kGroups) {
    SCOPED_TRACE(row.sentences.front());
    SentenceFeed feed;
    // The fairway notice is numbered as in the IALA proposal.
    feed.decoder.SetBinaryStandardIALA(row.sentences.size() == 2);
    feed.Take(row.sentences);
    EXPECT_EQ(row.list(feed.Messages().Id8), row.values);
  }
}

TEST(ApplicationMessages, MetHydroOfAllOnesIsNoValue) {
  SentenceFeed feed;
  feed.decoder.SetBinaryStandardIALA(true);
  feed.Take({"!AIVDM,1,1,,B,802MN7P0H?wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwt,2*3D"});
  int fields = 0;
  VisitFields(feed.Messages().Id8.MetHydro, [&](std::string_view name, auto value) {
    EXPECT_EQ(value, NoValue) << name;
    ++fields;
  });
  EXPECT_EQ(fields, 36);
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
  for (const auto& [imo236, ialaNumber, title] :
       {std::tuple{11, 32, "Meteorological & Hydrological Data"},
        {12, 5, "Dangerous Cargo Indication"},
        {13, 20, "Fairway Closed"},
        {14, 33, "Tidal Window"}}) {
    for (const int id : {6, 8, 25, 26}) {
      for (const bool iala : {false, true}) {
        SentenceFeed feed;
        feed.decoder.SetBinaryStandardIALA(iala);
        const int served = iala ? ialaNumber : imo236;
        const int other = iala ? imo236 : ialaNumber;
        feed.TakePayload(Binary(id, served));
        EXPECT_EQ(Record(feed, id).Description, "FI " + std::to_string(served) + " - " + title);
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

TEST(ApplicationMessages, AddressesBeforeTheData) {
  SentenceFeed feed;
  for (const int id : {25, 26}) {
    MessageBits bits(120);
    bits.Put(1, 6, id).Put(39, 40, 3).Put(41, 70, 257000222).Put(71, 80, 1).Put(81, 86, 16);
    feed.TakePayload(bits.Put(87, 99, 250).Payload());
    EXPECT_THAT(
        ListMessage(feed.Messages(), id),
        StartsWith(std::to_string(id) + " 0 0 1 1 1 16 [Passengers onboard : 250] 257000222 "));
  }
  feed.TakePayload(Binary(6, 15, 123 << 5));
  EXPECT_THAT(ListMessage(feed.Messages(), 6),
              StartsWith("6 0 257000999 235 15 [Height over keel : 12.3] 257000111 "));
}

}  // namespace
}  // namespace fathomline
