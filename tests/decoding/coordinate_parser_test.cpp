#include "decoding/coordinate_parser.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/recording_dialogs.h"

namespace fathomline {
namespace {

// What is typed, and what becomes of it. The messages stand one behind the other.
struct Case {
  std::string typed;
  const char* type;
  double value;
  const char* normal;
  const char* messages = "";
};

template <class Parse>
void Check(const std::vector<Case>& cases, Parse parse) {
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.type) + " \"" + row.typed + "\"");
    RecordingDialogs dialogs;
    std::string text = row.typed;
    EXPECT_DOUBLE_EQ(parse(text, row.type, dialogs), row.value);
    EXPECT_EQ(text, row.normal);
    std::string messages;
    for (const std::string& message : dialogs.TakeTexts()) messages += message;
    EXPECT_EQ(messages, row.messages);
  }
}

void CheckDMS(const std::vector<Case>& cases) {
  Check(cases, [](std::string& text, const char* type, Dialogs& dialogs) {
    return ParseCoordinateDMS(text, type, dialogs);
  });
}

void CheckDM(const std::vector<Case>& cases) {
  Check(cases, [](std::string& text, const char* type, Dialogs& dialogs) {
    return ParseCoordinateDM(text, type, 2, dialogs);
  });
}

constexpr const char* kDefaultNorth = "LATITUDE FORMAT ERROR. Default, N, used";
constexpr const char* kDefaultEast = "LONGITUDE FORMAT ERROR. Default, E, used";
constexpr const char* kMost90 = "LATITUDE FORMAT ERROR. Max 90 deg allowed";
constexpr const char* kMost180 = "LONGITUDE FORMAT ERROR. Max 180 deg allowed";
constexpr const char* kTwoLetters = "XY!   LONGITUDE CHARACTER FORMAT ERROR. Default, E, used";

constexpr double kHalfAndMore = 59.0 + 30.0 / 60.0 + 12.25 / 3600.0;
constexpr double kTenAndMore = 10.0 + 20.0 / 60.0 + 30.0 / 3600.0;

TEST(ParseCoordinateDMS, TakesEveryAcceptedForm) {
  CheckDMS({
      {"-59 30 12.25", "LAT", -kHalfAndMore, "59°30'12.2500\"S"},
      {"- 59 30 12.25", "lat", -kHalfAndMore, "59°30'12.2500\"S"},
      {"59°30'12.25\"S", "LAT", -kHalfAndMore, "59°30'12.2500\"S"},
      {"  59° 30' 12,25\" N ", "LAT", kHalfAndMore, "59°30'12.2500\"N"},
      {"59\u00F8 30' 12.25\" n", "LAT", kHalfAndMore, "59°30'12.2500\"N"},
      {"59 30 12.25\"", "LAT", kHalfAndMore, "59°30'12.2500\"N"},
      {"59:30:12.25w", "LON", -kHalfAndMore, "059°30'12.2500\"W"},
      {"59 30 12.25 V", "LON", -kHalfAndMore, "059°30'12.2500\"W"},
      {"59 30 12.25\u00F8", "LON", kHalfAndMore, "059°30'12.2500\"E"},
      {"10.20.30,5 S", "LAT", -10.0 - 20.0 / 60.0 - 30.5 / 3600.0, "10°20'30.5000\"S"},
      {"10°", "LAT", 10.0, "10°00'00.0000\"N"},
      {"10\u00F8", "LON", 10.0, "010°00'00.0000\"E"},
      {"10s", "LAT", -10.0, "10°00'00.0000\"S"},
      {"10 30'", "LAT", 10.5, "10°30'00.0000\"N"},
      {"10 30S", "LAT", -10.5, "10°30'00.0000\"S"},
      {"", "LON", 0.0, "000°00'00.0000\"E"},
      {"90 0 0 N", "LAT", 90.0, "90°00'00.0000\"N"},
  });
}

TEST(ParseCoordinateDMS, RepairsAndTells) {
  CheckDMS({
      {"59 30 12.25 XYZ", "LAT", kHalfAndMore, "59°30'12.2500\"N",
       "XYZ!   LATITUDE CHARACTER FORMAT ERROR. Default, N, used"},
      {"59 30 12.25XY", "LON", kHalfAndMore, "059°30'12.2500\"E", kTwoLetters},
      {"10 20 30 X", "LON", kTenAndMore, "010°20'30.0000\"E", kDefaultEast},
      {"10 20 30 V", "LAT", kTenAndMore, "10°20'30.0000\"N", kDefaultNorth},
      {"91", "LAT", 90.0, "90°00'00.0000\"N", kMost90},
      {"90 0 0.5 S", "LAT", -90.0, "90°00'00.0000\"S", kMost90},
      {"-181 1 1", "LON", -180.0, "180°00'00.0000\"W", kMost180},
      {"10 59 60 Z", "LAT", 11.0, "11°00'00.0000\"N",
       "LATITUDE SECOND FORMAT ERROR. Max 59.9999 allowed"
       "LATITUDE MINUTE FORMAT ERROR. Max 59 allowed"
       "LATITUDE FORMAT ERROR. Default, N, used"},
      {"200 61 61 N", "LON", 180.0, "180°00'00.0000\"E",
       "LONGITUDE FORMAT ERROR. Max 180 deg allowedLONGITUDE FORMAT ERROR. Default, E, used"},
  });
  // A letter behind the last number is none that separates.
  for (const char* const letter : {"A", "Z", "a", "z", "\u00C0", "\u00FF"}) {
    const std::string two = std::string(letter) + "S";
    const std::string message = two + "!   LATITUDE CHARACTER FORMAT ERROR. Default, N, used";
    CheckDMS({{"10 0 0" + two, "LAT", 10.0, "10°00'00.0000\"N", message.c_str()}});
  }
}

TEST(ParseCoordinateDMS, ANumberBeyondItsWidthLeavesTheText) {
  const std::string seconds = "1 1 " + std::string(40, '9');
  CheckDMS({{"32768 S", "LAT", 0.0, "32768 S", "LATITUDE FORMAT ERROR. "},
            {"1 32768", "LON", 0.0, "1 32768", "LONGITUDE FORMAT ERROR. "},
            {seconds, "LAT", 0.0, seconds.c_str(), "LATITUDE FORMAT ERROR. "}});
}

TEST(ParseCoordinateDM, TakesEveryAcceptedForm) {
  CheckDM({
      {"59 30.25", "LAT", 59.0 + 30.25 / 60.0, "59° 30.25' N"},
      {"59.30,25' S", "LAT", -(59.0 + 30.25 / 60.0), "59° 30.25' S"},
      {"-5\u00F830.5'", "LON", -(5.0 + 30.5 / 60.0), "005° 30.50' W"},
      {"5 30.5v", "LON", -(5.0 + 30.5 / 60.0), "005° 30.50' W"},
      {"45 30.5", "brg", 45.0 + 30.5 / 60.0, "045° 30.50'"},
      {"", "BRG", 0.0, "000° 00.00'"},
  });
}

TEST(ParseCoordinateDM, RepairsAndTells) {
  const std::string negative =
      "AZIMUTH FORMAT ERROR. Negative values not allowed. Automatic adjustment to range 0-360 deg";
  const std::string over =
      "AZIMUTH FORMAT ERROR. Max value 360 deg. Automatic adjustment to range 0-360 deg";
  const std::string both = negative + over;
  CheckDM({
      {"10 60", "LON", 11.0, "011° 00.00' E", "LONGITUDE MINUTE FORMAT ERROR. Max 60 allowed"},
      {"89 75", "LAT", 90.0, "90° 00.00' N", kMost90},
      {"181 W", "LON", -180.0, "180° 00.00' W", kMost180},
      {"10 30 XY", "LON", 10.5, "010° 30.00' E", kTwoLetters},
      {"10 30 Q", "LAT", 10.5, "10° 30.00' N", kDefaultNorth},
      {"-10", "BRG", 350.0, "350° 00.00'", negative.c_str()},
      {"-719 30", "BRG", 1.5, "001° 30.00'", negative.c_str()},
      {"-0", "BRG", 0.0, "000° 00.00'", both.c_str()},
      {"725", "BRG", 5.0, "005° 00.00'", over.c_str()},
      {"360", "BRG", 0.0, "000° 00.00'", over.c_str()},
      {"99999", "BRG", 0.0, "99999", "AZIMUTH FORMAT ERROR. "},
      {"5 30 XY", "BRG", 5.5, "005° 30.00'",
       "XY!   AZIMUTH CHARACTER FORMAT ERROR. Default, N, used"},
  });
}

TEST(CoordinateParsers, DressTheirBoxesDifferently) {
  RecordingDialogs dialogs;
  std::string text = "91";
  ParseCoordinateDMS(text, "LAT", dialogs);
  text = "91";
  ParseCoordinateDM(text, "LAT", 2, dialogs);
  ASSERT_EQ(dialogs.boxes.size(), 2U);
  EXPECT_EQ(dialogs.boxes[0].title, kProgramTitle);
  EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::None);
  EXPECT_EQ(dialogs.boxes[1].title, "Illegal input");
  EXPECT_EQ(dialogs.boxes[1].icon, BoxIcon::Exclamation);
}

}  // namespace
}  // namespace fathomline
