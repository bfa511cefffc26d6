#include "watch/source_activity.h"

#include <gtest/gtest.h>
#include <map>

namespace fathomline {
namespace {

using std::chrono::milliseconds;

struct Activity : ::testing::Test {
  // A second of the clock, with a tick at its end.
  void Pass(int milli) {
    now += milliseconds(milli);
    activity.Tick(now);
  }
  SourceActivity::Sentence Of(const std::string& address) {
    for (const auto& sentence : activity.Sentences(2, now)) {
      if (sentence.address.Text() == address) return sentence;
    }
    ADD_FAILURE() << address;
    return {};
  }

  SourceActivity activity;
  SourceActivity::Time now{std::chrono::hours(1000)};
};

// A receiver with ten headings and one burst of four GSV in five seconds, and a clock once a
// minute: each is judged by its own interval.
TEST_F(Activity, JudgesEachSentenceByItsOwnInterval) {
  for (int tenth = 0; tenth < 1800; ++tenth) {
    now += milliseconds(100);
    activity.Note(2, "$HEHDT,1.0,T*00\r\n", now);
    if (tenth % 50 == 0) {
      for (int part = 0; part < 4; ++part) activity.Note(2, "\\s:a*00\\$GPGSV,4,1*00", now);
    }
    if (tenth % 600 == 0) activity.Note(2, "$GPZDA,*00", now);
    if (tenth % 10 == 9) activity.Tick(now);
  }
  EXPECT_NEAR(Of("HEHDT").rate, 10.0, 0.5);
  EXPECT_NEAR(Of("GPGSV").rate, 0.8, 0.25);
  EXPECT_NEAR(Of("GPZDA").rate, 1.0 / 60.0, 0.001);
  EXPECT_NEAR(activity.Look(2, now).rate, 10.8, 1.0);
  EXPECT_EQ(Of("GPGSV").lines, 36 * 4);
  EXPECT_EQ(Of("GPGSV").address.Talker() + "/" + Of("GPGSV").address.Sentence(), "GP/GSV");

  // Silence from here on: 3 s, three times 5 s and three minutes until late, tenfold until dead.
  struct Row {
    int after;  // seconds
    Liveliness hdt, gsv, zda, all;
  };
  constexpr Liveliness A = Liveliness::Alive, L = Liveliness::Late, D = Liveliness::Dead;
  int passed = 0;
  for (const Row& row :
       {Row{2, A, A, A, A}, Row{4, L, A, A, A}, Row{9, L, A, A, A}, Row{12, L, L, A, A},
        Row{31, D, L, A, A}, Row{119, D, L, A, A}, Row{160, D, D, L, L}, Row{1745, D, D, D, D}}) {
    Pass((row.after - passed) * 1000);
    passed = row.after;
    EXPECT_EQ(Of("HEHDT").state, row.hdt) << row.after;
    EXPECT_EQ(Of("GPGSV").state, row.gsv) << row.after;
    EXPECT_EQ(Of("GPZDA").state, row.zda) << row.after;
    EXPECT_EQ(activity.Look(2, now).state, row.all) << row.after;
  }
  EXPECT_EQ(Of("HEHDT").rate, 0.0);
  EXPECT_EQ(activity.Look(1, now).lines, 0);
  EXPECT_EQ(activity.Look(1, now).state, Liveliness::Dead);

  // An outage was no interval.
  activity.Note(2, "$HEHDT,1.0,T*00", now);
  Pass(4000);
  EXPECT_EQ(Of("HEHDT").state, Liveliness::Late);
}

// What a wrong baud rate makes of a source neither fills the table nor reads beyond a line.
TEST_F(Activity, NoiseIsCountedAndKeepsTheSentencesApart) {
  const char* const noise[] = {"",      "\n", "$",     "$GP", "$GP\xFF\x01G,1",
                               "hello", "\\", "\\a\\", "$*00"};
  for (const char* const line : noise) activity.Note(2, line, now);
  EXPECT_EQ(activity.Look(2, now).unreadable, 9);
  EXPECT_EQ(activity.Look(2, now).state, Liveliness::Alive);
  std::map<std::string, std::int64_t> expected;
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 400; ++i) {
      const std::string address = {'X', static_cast<char>('A' + i % 26),
                                   static_cast<char>('A' + i / 26), 'Z', 'Z'};
      activity.Note(2, "$" + address + ",1*00", now);
      if (i < static_cast<int>(SourceActivity::kMostSentences)) ++expected[address];
    }
  }
  std::map<std::string, std::int64_t> counted;
  for (const auto& sentence : activity.Sentences(2, now)) {
    counted[sentence.address.Text()] = sentence.lines;
  }
  EXPECT_EQ(counted, expected);
  EXPECT_EQ(activity.Look(2, now).lines, 9 + 1200);
  activity.Note(2, "!AIVDM,1", now);
  activity.Note(3, "$PFEC,GPatt,1", now);
  EXPECT_EQ(activity.Sentences(3, now).front().address.Sentence(), "FEC");
  activity.Reset(2);
  EXPECT_EQ(activity.Look(2, now).lines, 0);
  EXPECT_EQ(activity.Look(3, now).lines, 1);
}

}  // namespace
}  // namespace fathomline
