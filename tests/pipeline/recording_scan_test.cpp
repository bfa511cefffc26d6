#include "pipeline/recording_scan.h"

#include <gtest/gtest.h>

#include "setup/recording_choice.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

RecordingContents ContentsOf(const std::string& bytes) {
  const TemporaryFolder folder;
  RecordingScan scan(folder.Write("recording.log", bytes));
  scan.Finish();
  EXPECT_EQ(scan.Share(), 1.0);
  return scan.Contents();
}

std::string Rmc(const std::string& time, const std::string& status, const std::string& date) {
  return Sentence("GPRMC," + time + "," + status + ",6000,N,00500,E,1,2," + date + ",,,A") + "\r\n";
}
std::string Times(int times, const std::string& lines) {
  std::string all;
  while (times-- > 0) all += lines;
  return all;
}

TEST(RecordingScanTest, CountsWhatItFindsAndLaysTheTimesInARow) {
  const RecordingContents contents =
      ContentsOf("# from the bridge\n" + Sentence("GPGGA,235958.50,,,,,0") + "\n" +
                 Rmc("235959", "V", "060180") +  // no fix, and any date
                 "$GPGLL,,,,,120000,A*00\n\\s:x*00\\" + Sentence("IIGLL,,,,,235957.9,A") + "\n" +
                 "$PFEC,GPatt,1,2,3\n" + Sentence("PFEC,GPhve,1") + "\n" +
                 Rmc("000001", "A", "290224") + Rmc("000000", "A", "290224") +
                 Sentence("GPZDA,000002.25,29,02,2024,,") + "\n!AIVDO,1,1,,A,x,0*00");
  EXPECT_EQ(contents.lines, 11);
  EXPECT_EQ(contents.withoutSentence, 1);
  EXPECT_EQ(contents.wrongChecksums, 2);
  EXPECT_EQ(contents.LinesOf(SentenceType::GLL), 2) << "of both talkers";
  EXPECT_EQ(contents.LinesOf(SentenceType::ATT), 1);
  EXPECT_EQ(contents.LinesOf(SentenceType::VDM), 1);
  EXPECT_EQ(contents.LinesOf(SentenceType::RMC), 3);
  ASSERT_TRUE(contents.span);
  EXPECT_TRUE(contents.span->dated);
  constexpr std::string_view kMoment = "yyyy-mm-dd hh:nn:ss";
  EXPECT_EQ(FormatDateTime(contents.span->from, kMoment), "2024-02-28 23:59:58");
  EXPECT_EQ(FormatDateTime(contents.span->to, kMoment), "2024-02-29 00:00:02");
  EXPECT_NEAR(contents.span->Seconds(), 4.35, 1e-4);
}

TEST(RecordingScanTest, KeepsSoManySentencesApartAndCountsAllLines) {
  std::string bytes;
  for (int i = 0; i < 510; ++i) bytes += Sentence("II" + std::to_string(100 + i) + ",1") + "\n";
  const RecordingContents contents = ContentsOf(bytes + bytes);
  EXPECT_EQ(contents.lines, 1020);
  ASSERT_EQ(contents.sentences.size(), 500U);
  EXPECT_EQ(contents.sentences.back().lines, 2);
}

TEST(RecordingScanTest, ProposesTheFullerSentenceUnlessItIsRare) {
  const std::string gga = Sentence("GPGGA,1,,,,,0") + "\n";
  const std::string gns = Sentence("GNGNS,1") + "\n";
  const std::string hdt = "$HEHDT,1,T\n";
  const auto choiceOf = [](const std::string& bytes) {
    std::string words;
    const RecordingChoice choice =
        ProposeFor(ContentsOf(bytes), "/\u03A9 \"b\" 789012345678901234567890123456789012.log");
    EXPECT_EQ(choice.name, "? 'b' 7890123456789012345678901234567890");
    for (const SentenceType type : choice.sentences.Ticked()) words += ToText(type) + " ";
    return words + (choice.checksumTest ? "tested" : "not tested");
  };
  EXPECT_EQ(choiceOf(gga + Times(10, gns)), "GGA tested");
  EXPECT_EQ(choiceOf(gga + Times(11, gns)), "GNS tested");
  EXPECT_EQ(choiceOf(Times(5, Rmc("1", "A", "")) + Times(5, Sentence("GPGLL,1") + "\n") +
                     Times(500, Sentence("GPVTG,1") + "\n")),
            "RMC tested")
      << "which also has what VTG has";
  EXPECT_EQ(choiceOf(Times(9, gga) + hdt), "GGA HDT not tested") << "it would refuse all headings";
  EXPECT_EQ(choiceOf(gga + "$GPGGA,1*00\n" + "$IIMTW,1,C\n"), "GGA tested");
}

TEST(RecordingScanTest, TellsTheDateAndHowOftenTheTimeGoesBack) {
  const auto at = [](const std::string& time) {
    return Sentence("GPGGA," + time + ",,,,,0") + "\n";
  };
  // Half an hour back twice; the fraction, the other type and midnight are no steps.
  const std::string bytes = at("120000.5") + at("120000.1") + at("113000") +
                            Rmc("235959", "A", "060519") + at("235959") + at("232000") +
                            at("000001");
  const RecordingContents contents = ContentsOf(bytes);
  RecordingChoice choice = ProposeFor(contents, "a.log");
  EXPECT_EQ(StepsBack(contents, choice.sentences), 2);
  EXPECT_TRUE(choice.stepsBackStay);
  EXPECT_EQ(choice.firstDate, DateFromParts(2019, 5, 6));
  choice.sentences.Set(SentenceType::ZDA, true);
  EXPECT_EQ(StepsBack(contents, choice.sentences), 0) << "a sentence tells the date";
  EXPECT_FALSE(ProposeFor(ContentsOf(at("1")), "a.log").firstDate);
  const auto stepsOf = [&](const std::string& from, const std::string& to) {
    const RecordingContents two = ContentsOf(at(from) + at(to));
    return StepsBack(two, ProposeFor(two, "a.log").sentences);
  };
  EXPECT_EQ(stepsOf("", ""), 0) << "no time at all";
  EXPECT_EQ(stepsOf("120001", "120000"), 1) << "a whole second is a step";
  EXPECT_EQ(stepsOf("120000", "000001"), 1);
  EXPECT_EQ(stepsOf("120000", "000000"), 0) << "half a day is midnight";
}

}  // namespace
}  // namespace fathomline
