#include "watch/sentence_log.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "base/fault.h"
#include "watch/filtered_log.h"

namespace fathomline {
namespace {

// The ring holds exactly the latest lines, byte for byte, while its own bytes go round and round;
// and the filtered view of it is what looking through all of them gives.
TEST(SentenceLog, HoldsTheLatestLinesAndTheirFilterKeepsUp) {
  SentenceLog log;
  log.Take(1, "$GPGGA,1*00", {});
  EXPECT_EQ(log.End(), 0U);
  log.Start();
  FilteredLog filtered(log);
  filtered.SetFilter({.system = 2, .sentence = "GSV", .text = "x9"});

  std::mt19937 random(7);
  std::vector<std::string> sent;
  constexpr int kLines = 330'000;
  for (int i = 0; i < kLines; ++i) {
    const int system = 1 + i % 3;
    // Now and then lines so long that bytes run out before lines do.
    const std::size_t length = i / 100'000 == 2 ? random() % 3000 : random() % 70;
    std::string line = i % 2 == 0 ? "$GPGSV," : "$HEHDT,";
    line += "X" + std::to_string(i) + std::string(length, static_cast<char>('a' + i % 26));
    log.Take(system, line + "\r\n", SentenceLog::Time(std::chrono::milliseconds(i)));
    sent.push_back(std::move(line));
    if (i % 1'000 == 0 || i + 1 == kLines) filtered.Follow();
    if (i % 110'000 != 109'999 && i + 1 != kLines) continue;

    filtered.Follow();
    ASSERT_EQ(log.End(), static_cast<std::uint64_t>(i + 1));
    std::size_t bytes = 0;
    std::vector<std::uint64_t> passing;
    for (std::uint64_t number = log.First(); number < log.End(); ++number) {
      const SentenceLog::Line held = log.At(number);
      const std::string& expected = sent[static_cast<std::size_t>(number)];
      ASSERT_EQ(held.text, expected) << number;
      ASSERT_EQ(held.system, 1 + static_cast<int>(number % 3));
      ASSERT_EQ(held.arrival, SentenceLog::Time(std::chrono::milliseconds(number)));
      bytes += expected.size();
      if (number % 3 == 1 && number % 2 == 0 && expected.find("X9") != std::string::npos) {
        passing.push_back(number);
      }
    }
    const std::uint64_t held = log.End() - log.First();
    EXPECT_TRUE(held == SentenceLog::kMostLines ||
                bytes > SentenceLog::kMostBytes - 2 * SentenceLog::kLongestLine)
        << held << " lines of " << bytes << " bytes";
    ASSERT_EQ(filtered.Count(), static_cast<int>(passing.size()));
    for (std::size_t k = 0; k < passing.size(); ++k) {
      ASSERT_EQ(filtered.At(static_cast<int>(k)).text, sent[static_cast<std::size_t>(passing[k])]);
    }
  }
  EXPECT_THROW(log.At(log.First() - 1), Fault);
  EXPECT_THROW(log.At(log.End()), Fault);
  EXPECT_EQ(filtered.Talkers(), (std::set<std::string>{"GP", "HE"}));

  log.Take(1, std::string(100'000, 'z'), {});
  EXPECT_EQ(log.At(log.End() - 1).text, std::string(SentenceLog::kLongestLine, 'z'));
  log.SetHeld(true);
  log.Take(1, "$GPGGA,1*00", {});
  EXPECT_EQ(log.PassedBy(), 1U);
  EXPECT_EQ(log.End(), static_cast<std::uint64_t>(kLines + 1));
  log.Stop();
  EXPECT_FALSE(log.Running());
}

TEST(SentenceLog, FiltersByEachPropertyAndFindsTextBothWays) {
  SentenceLog log;
  log.Start();
  const std::vector<std::pair<int, std::string>> lines = {
      {1, "$GPGLL,5057.970,N,00146.110,E,142451,A*27"},
      {1, "$GPGLL,5057.970,N,00146.110,E,142451,A*28"},
      {2, "\\s:bridge*1C\\$HEHDT,101.1,T*2E"},
      {2, "$HEHDT,101.1,T"},
      {3, "no sentence"},
      {3, "!AIVDM,1,1,,A,x,0*00"}};
  for (const auto& [system, text] : lines) log.Take(system, text, {});
  FilteredLog filtered(log);
  const auto passing = [&](LogFilter filter) {
    filtered.SetFilter(std::move(filter));
    std::string found;
    for (int i = 0; i < filtered.Count(); ++i) {
      const auto line = filtered.At(i);
      for (std::size_t k = 0; k < lines.size(); ++k) {
        if (line.text == lines[k].second && line.system == lines[k].first) {
          found += static_cast<char>('0' + k);
        }
      }
    }
    return found;
  };
  EXPECT_EQ(passing({}), "012345");
  EXPECT_EQ(passing({.system = 2}), "23");
  EXPECT_EQ(passing({.talker = "HE"}), "23");
  EXPECT_EQ(passing({.sentence = "VDM"}), "5");
  EXPECT_EQ(passing({.checksum = ChecksumVerdict::Right}), "02");
  EXPECT_EQ(passing({.checksum = ChecksumVerdict::Wrong}), "15");
  EXPECT_EQ(passing({.checksum = ChecksumVerdict::None}), "34");
  EXPECT_EQ(passing({.text = "BRIDGE"}), "2");
  EXPECT_EQ(passing({.system = 1, .talker = "HE"}), "");

  filtered.SetFilter({});
  EXPECT_EQ(filtered.Find("hdt", -1, false), 2);
  EXPECT_EQ(filtered.Find("hdt", 2, false), 3);
  EXPECT_EQ(filtered.Find("hdt", 3, false), 2);
  EXPECT_EQ(filtered.Find("gll", 1, true), 0);
  EXPECT_EQ(filtered.Find("gll", 0, true), 1);
  EXPECT_EQ(filtered.Find("nothing", 0, false), -1);
  log.Clear();
  filtered.Follow();
  EXPECT_EQ(filtered.Count(), 0);
  EXPECT_EQ(filtered.Gone(), lines.size());
}

}  // namespace
}  // namespace fathomline
