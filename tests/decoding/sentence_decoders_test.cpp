#include "decoding/sentence_decoders.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/numbers.h"
#include "decoding/record_fields.h"
#include "support/recording_dialogs.h"

namespace fathomline {
namespace {

// "~" stands for no value.
template <class Value>
std::string Text(const Value& value) {
  if constexpr (std::is_same_v<Value, std::string>) {
    return value;
  } else if constexpr (std::is_same_v<Value, char>) {
    return {value};
  } else if constexpr (std::is_floating_point_v<Value>) {
    return value == NoValue ? "~" : ExactText(value);
  } else if constexpr (std::is_integral_v<Value>) {
    return value == NoValue ? "~" : std::to_string(value);
  } else {
    std::string text;
    for (const auto& element : value) text += (text.empty() ? "" : " ") + Text(element);
    return text;
  }
}

// The fields of a record in the order of its sentence.
template <class Record>
std::string Fields(const Record& record) {
  std::string text;
  VisitFields(record, [&text](std::string_view, const auto& value) { text += "|" + Text(value); });
  return text.substr(1);
}

template <class Record>
using Decoder = void (*)(std::string_view&, Record&, Dialogs&);

struct Case {
  std::string_view sentence;
  std::string fields;
};

// Each sentence fills a fresh record without a box.
template <class Record>
void Check(Decoder<Record> extract, const std::vector<Case>& cases) {
  for (const Case& row : cases) {
    SCOPED_TRACE(row.sentence);
    RecordingDialogs dialogs;
    Record record;
    std::string_view sentence = row.sentence;
    extract(sentence, record, dialogs);
    EXPECT_EQ(Fields(record), row.fields);
    EXPECT_TRUE(dialogs.boxes.empty());
  }
}

// What a sentence leaves behind in a record that an earlier one has filled.
template <class Record>
struct After {
  Record record;
  RecordingDialogs dialogs;

  After(Decoder<Record> extract, std::string_view first, std::string_view second) {
    extract(first, record, dialogs);
    dialogs.boxes.clear();
    extract(second, record, dialogs);
  }
};

TEST(PositionDecoders, FillEveryField) {
  Check(ExtractGGA,
        {{"$GPGGA,123519.25,5738.123,N,01145.678,W,2,08,0.9,545.4,M,46.9,F,3.5,0123*47",
          "12:35:19.25|1.0059272048157972|-0.2052734093148226|2|8|0.9|545.4|M|46.9|F|3.5|123"},
         {"$GPGGA,,,,,,0,,,,,,,,*66", "::|0|0|0|~|~|~| |~| |~|~"},
         {"$GPGGA", "::|0|0|~|~|~|~| |~| |~|~"},
         // The surplus stays in the last field, whose reading stops at the comma.
         {"$GPGGA,1234,,,,,1.5,2.5,,,,,,,7,8,9", "12:34:|0|0|2|2|~|~| |~| |~|7"}});
  Check(ExtractGNS,
        {{"$GNGNS,000001,0015.5,S,17959.999,E,RRN,14,0.75,-1.5,30.25,0.5,70000*00",
          "00:00:01|-0.004508767234318982|3.1415923627017914|RRN|14|0.75|-1.5|30.25|0.5|70000"},
         {"$GNGNS,,,,,,,,,,,,23,V*00", "::|0|0||~|~|~|~|~|23"}});
  Check(ExtractGLL, {{"$GPGLL,5530.50,S,00530.00,W,083559.00,A,D*62",
                      "-0.9688031789612495|-0.09599310885969445|08:35:59.00|A|D"},
                     {"$GPGLL,5530.50,S", "-0.9688031789612495|0|::| | "},
                     {"$GPGLL,,,,,,V\r\n", "0|0|::|V| "},
                     {"", "0|0|::| | "}});
  const std::string common =
      "12:35:19|A|0.8398053121699228|0.20100375218802685|22.4|84.4|230394|3.1";
  Check(
      ExtractRMC,
      {{"$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W,A*00", common + "|W|A"},
       {"$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A", common + "|W| "},
       {"$GPRMC,,,,,,,,,,,,*00", "::||0|0|~|~||~| | "}});
}

// The sentence of a newer receiver has one field more than the table, which is told; its fields
// are all there.
TEST(ExtractRMC, TellsOfThirteenCommasAndDecodesAll) {
  constexpr std::string_view kSentence =
      "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W,D,V*44";
  const After<RMCRecord> after(ExtractRMC, "", kSentence);
  EXPECT_EQ(Fields(after.record),
            "12:35:19|A|0.8398053121699228|0.20100375218802685|22.4|84.4|230394|3.1|W|D");
  ASSERT_EQ(after.dialogs.boxes.size(), 1U);
  EXPECT_EQ(after.dialogs.boxes[0].title, "Error ExtractRMC");
  EXPECT_EQ(after.dialogs.boxes[0].text,
            "Error 9 : Subscript out of range  RMC-message : " + std::string(kSentence));
  EXPECT_TRUE(after.dialogs.boxes[0].canBeSilenced);
}

TEST(MotionDecoders, FillEveryField) {
  Check(ExtractVTG, {{"$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48", "54.7|34.4|5.5|10.2| "},
                     {"$GPVTG,,T,,M,,N,,K,D*00", "~|~|~|~|D"}});
  Check(ExtractZDA, {{"$GPZDA,201530.50,04,07,2020,,*60", "201530.50|4|7|2020|~|~"},
                     {"$GPZDA,,2.5,3.5,-1,-05,30*60", "|2|4|-1|-5|30"}});
  Check(ExtractHDT, {{"$HEHDT,274.07,T*03", "274.07"}, {"$HEHDT,,T*03", "~"}});
  Check(ExtractATT,
        {{"$PFEC,GPatt,123.4,1.5,-0.7*00", "123.4|1.5|-0.7"}, {"$PFEC,GPatt,,,*00", "~|~|~"}});
  Check(ExtractROT, {{"$HEROT,-12.5,A*00", "-12.5|A"}, {"$HEROT,,*00", "~| "}});
  Check(ExtractVHW, {{"$VWVHW,10.5,T,11.5,M,6.25,N,11.6,K*00", "10.5|11.5|6.25|11.6"},
                     {"$VWVHW,,T,,M,06.8,N,,K*00", "~|~|6.8|~"}});
  Check(ExtractDBT,
        {{"$SDDBT,17.0,f,5.1,M,2.8,F*3E", "17|5.1|2.8"}, {"$SDDBT,,f,5.1,M,,F*3E", "~|5.1|~"}});
}

TEST(SatelliteDecoders, FillEveryField) {
  Check(ExtractGSA,
        {{"$GPGSA,A,3,04,05,,09,12,,,24,,,,99,2.5,1.3,2.1*39",
          "A|3|4 5 ~ 9 12 ~ ~ 24 ~ ~ ~ 99|2.5|1.3|2.1"},
         {"$GNGSA,M,1,,,,,,,,,,,,,,,2.25,4*00", "M|1|~ ~ ~ ~ ~ ~ ~ ~ ~ ~ ~ ~|~|~|2.25"}});
  Check(ExtractGSV,
        {{"$GPGSV,3,3,11,21,30,120,45*", "3|3|11|21 ~ ~ ~|30 ~ ~ ~|120 ~ ~ ~|45 ~ ~ ~"},
         {"$GPGSV,2,1,08,01,40,083,46,02,17,308,41,12,07,344,39,14,22,228,45*75",
          "2|1|8|1 2 12 14|40 17 7 22|83 308 344 228|46 41 39 45"},
         // PRN 1 without elevation is no satellite; any other one is.
         {"$GPGSV,1,1,02,1,,200,40,2,,200,40*00", "1|1|2|~ 2 ~ ~|~ ~ ~ ~|200 200 ~ ~|40 40 ~ ~"}});
  Check(ExtractGST, {{"$GPGST,024603.00,3.2,6.6,4.7,45.6,5.8,5.6,22.0*58",
                      "024603.00|3.2|6.6|4.7|46|5.8|5.6|22"}});
}

TEST(ExtractTTM, FillsEveryFieldAndLeavesAtSixteenCommas) {
  const std::string_view full = "$RATTM,11,11.4,13.6,T,7.0,20.5,R,0.1,-0.5,N,BUOY \xC5,L,R,,M*00";
  const std::string fields = "11|11.4|13.6|T|7|20.5|R|0.1|-0.5|N|BUOY \u00C5|L|R";
  Check(ExtractTTM, {{full, fields}, {"$RATTM,,,,,,,,,,,,,*00", "~|~|~| |~|~| |~|~| || |"}});

  const After<TTMRecord> after(ExtractTTM, full, "$RATTM,12,,,,,,,,,,,,,,,*00");
  EXPECT_EQ(Fields(after.record), fields);
  EXPECT_TRUE(after.dialogs.boxes.empty());
}

TEST(ExtractVDM, FillsEveryFieldAndLeavesAtSevenCommas) {
  const std::string_view full = "!AIVDM,2,1,3,B,55P5TL01VIaAL@7W,2*1C";
  const std::string fields = "2|1|3|B|55P5TL01VIaAL@7W|2";
  Check(ExtractVDM, {{full, fields},
                     {"!AIVDM,1,1,,,15M67F,0*00", "1|1|~| |15M67F|0"},
                     // Payload bytes are no text.
                     {"!AIVDM,1,1,,A,\xC3\x80,*00", "1|1|~|A|\xC3\x80|~"}});

  const After<VDMRecord> after(ExtractVDM, full, "!AIVDM,1,1,,A,15M67F,0,9*00");
  EXPECT_EQ(Fields(after.record), fields);
}

TEST(Decoders, AFieldThatDoesNotFitKeepsItsValueAndIsTold) {
  const std::string_view good = "$GPGGA,123519,,,,,1,08,0.9,5,M,4,M,3,7*47";
  const std::string_view bad = "$GPGGA,123520,,,,,99999,09,1e39,6,M,4,M,3,3e9*47";
  const After<GGARecord> after(ExtractGGA, good, bad);
  EXPECT_EQ(Fields(after.record), "12:35:20|0|0|1|9|0.9|6|M|4|M|3|7");
  ASSERT_EQ(after.dialogs.boxes.size(), 3U);
  for (const MessageBox& box : after.dialogs.boxes) {
    EXPECT_EQ(box.title, "Error ExtractGGA");
    EXPECT_EQ(box.text, "Error 6 : Overflow  GGA-message : " + std::string(bad));
  }

  const After<ATTRecord> attitude(ExtractATT, "", "$PFEC,GPatt,1e39,2,\xE9");
  ASSERT_EQ(attitude.dialogs.boxes.size(), 1U);
  EXPECT_EQ(attitude.dialogs.boxes[0].text,
            "Error 6 : Overflow  ATT-message : $PFEC,GPatt,1e39,2,\u00E9");

  // Satellites pass in silence.
  const After<GSVRecord> satellites(ExtractGSV, "$GPGSV,3,1,11,21,30,120,45*",
                                    "$GPGSV,3,2,11,40000,31,121,46*");
  EXPECT_EQ(satellites.record.PRN[0], 21);
  EXPECT_EQ(satellites.record.Elevation[0], 31);
  EXPECT_TRUE(satellites.dialogs.boxes.empty());
}

TEST(Decoders, LeaveTheRemainderInTheArgument) {
  RecordingDialogs dialogs;
  HDTRecord heading;
  std::string_view sentence = "$HEHDT,1.5,T*2C\r\n";
  ExtractHDT(sentence, heading, dialogs);
  EXPECT_EQ(sentence, "T*2C\r\n");
  sentence = "$HEHDT,1,2,3,4,5*00";
  ExtractHDT(sentence, heading, dialogs);
  EXPECT_EQ(sentence, "3,4,5*00");
}

TEST(AngleFromText, ReadsLenientlyAndTheSideExactly) {
  constexpr double kDegree = 0.017453292519944444;
  EXPECT_DOUBLE_EQ(LatitudeFromText("5530.50", "s"), 55.508333333333333 * kDegree);
  EXPECT_DOUBLE_EQ(LongitudeFromText("0530.00", "E"), 53.0 * kDegree);
  EXPECT_DOUBLE_EQ(LongitudeFromText("00530.00", "W"), -5.5 * kDegree);
  EXPECT_DOUBLE_EQ(LongitudeFromText("12", "E"), 12.0 * kDegree);
}

}  // namespace
}  // namespace fathomline
