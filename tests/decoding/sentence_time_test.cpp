#include "decoding/sentence_time.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace fathomline {
namespace {

// Milliseconds of the day and, behind a blank, the day.
std::string Told(std::string_view sentence) {
  const auto time = TimeOfSentence(sentence);
  if (!time) return "none";
  return std::to_string(time->ofDay) + (time->day ? " " + std::to_string(*time->day) : "");
}

TEST(SentenceTime, IsReadFromTheTextAlone) {
  const std::vector<std::pair<std::string, std::string>> sentences = {
      {"$GPGGA,123519.25,4807.038,N", "45319250"},
      {"$GPGGA,123519.25*00", "45319250"},
      {"$GNGNS,000000", "0"},
      {"$GPGLL,,,,,000000.5,A", "500"},
      {"$GPGLL,,,,,000000.05,A", "50"},
      {"$GPGST,235960.999", "86400999"},
      {"$GNRMC,235959,A,,,,,,,010126", "86399000 20454"},
      {"$GNRMC,235959,V,,,,,,,010126", "86399000"},
      {"$GNRMC,235959,A,,,,,,,01012", "86399000"},
      {"$GNRMC,235959,A,,,,,,,320126", "86399000"},
      {"$GPZDA,120000,31,12,2025,00,00", "43200000 20453"},
      {"$GPZDA,120000,31,12,25", "43200000"},
      {"$GPZDA,120000,29,02,2025", "43200000"},
      {"$GPZDA,120000,06,01,1980", "43200000 3657"},
      {"$GPZDA,120000,31,12,1979", "43200000"},
      {"$GPZDA,120000,31,12,9999", "43200000 2932896"},
      {"$GPZDA,120000,0001,01,2026", "43200000 20454"},
      {"$GPZDA,120000,00001,01,2026", "43200000"},
      {"$GPVTG,120000", "none"},
      {"$GPGGA", "none"},
      {"$GPGGA;120000", "none"},
      {"$GPGGA,*47", "none"},
      {"$GPGGA,1200", "none"},
      {"$GPGGA,240000", "none"},
      {"$GPGGA,236000", "none"},
      {"$GPGGA,235961", "none"},
      {"$GPGGA,12a000", "none"},
      {"$GPGGA,120000,5", "43200000"},
      {"$GPGGA,120000x", "none"},
      {"$GPGGA,120000.1x", "none"}};
  for (const auto& [sentence, told] : sentences) EXPECT_EQ(Told(sentence), told) << sentence;
}

}  // namespace
}  // namespace fathomline
