// The command line of fathomline-simulate.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "support/temporary_folder.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(SimulateCommandLine, WrongArgumentsEndWithOneLine) {
  const std::vector<std::pair<std::vector<std::string_view>, std::string>> cases {
    {{"--sead", "1"}, "--sead"}, {{"extra"}, "not expected: extra"},
        {{"--seed"}, "--seed: 1 required"},
        {{"--seed", "12x"}, "--seed: \"12x\" is not a whole number"}, {{"--seed=-1"}, "--seed"},
        {{"--duration", "nan"}, "--duration"}, {{"--rate", "0"}, "--rate"},
        {{"--scenario", "moon"}, "no scenario is called \"moon\""},
        {{"--sentences", "GGA,,RMC"}, "no sentence is called \"\""},
        {{"--sentences", "GGA:0"}, "\"0\""},
        {{"--sentences", "GGA,GGA:2"}, "\"GGA\" is listed twice"},
        {{"--start", "2026-1-2 03:04:05"}, "is not written as"},
        {{"--start", "2026-02-29 03:04:05"}, "is no moment of the calendar"},
        {{"--start", "2026-02-28 24:00:00"}, "--start"},
        {{"--start", "1999-02-28 23:00:00"}, "--start"},
        {{"--output", "/nonexistent/x.log"}, "cannot write \"/nonexistent/x.log\": No such file"},
#if !defined(_WIN32)
        {{"--output", "/dev/full"}, "cannot write \"/dev/full\": No space left"},
#endif
        {{"--truth", "/nonexistent/x.json"}, "cannot write"},
  };
  for (const auto& [arguments, part] : cases) {
    const Outcome outcome = Simulate(arguments);
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_THAT(outcome.err, HasSubstr(part));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
  }
}

TEST(SimulateCommandLine, OptionsReachTheSimulation) {
  const std::vector<std::string_view> arguments{
      "--scenario",          "attitude",          "--seed", "99",     "--start",
      "2031-05-06 07:08:09", "--duration",        "12.5",   "--rate", "20",
      "--sentences",         "ATT,HDT:2,GSV,DBT", "--crlf"};
  const SimulationOptions options = CommandOf(arguments).options;
  EXPECT_EQ(options.scenario->name, "attitude");
  EXPECT_EQ(options.seed, 99U);
  EXPECT_EQ(options.duration, 12.5);
  EXPECT_TRUE(options.crLf);
  EXPECT_EQ(FormatDateTime(options.start, "yyyy-mm-dd hh:nn:ss"), "2031-05-06 07:08:09");
  std::string sentences;
  for (const SentenceRate& row : options.sentences) {
    sentences += std::string(SentenceName(row.kind)) + "@" + PlainText(row.rate) + " ";
  }
  EXPECT_EQ(sentences, "ATT@20 HDT@2 GSV@1 DBT@1 ");
}

TEST(SimulateCommandLine, WritesLinesAndTruth) {
  const TemporaryFolder folder;
  const std::string log = folder / "simulated.log";
  const std::string json = folder / "simulated.json";
  std::vector<std::string_view> arguments{"--scenario", "moored", "--duration", "20"};
  const Outcome printed = Simulate(arguments);
  EXPECT_EQ(printed.status, 0);
  EXPECT_THAT(printed.out, StartsWith("$GNZDA,030405.00,02,01,2026,00,00*7F\n"));
  arguments.insert(arguments.end(), {"--output", log, "--truth", json});
  EXPECT_EQ(Simulate(arguments).out, "");
  EXPECT_EQ(ReadWholeFile(log), printed.out);
  const auto truth = nlohmann::json::parse(ReadWholeFile(json));
  EXPECT_EQ(truth["start"], "2026-01-02 03:04:05");
  EXPECT_EQ(truth["fix_count"], 20);
  EXPECT_EQ(truth["sentences"]["GGA"], 20);
  EXPECT_EQ(truth["reference"]["latitude"], 58.9726);
  EXPECT_EQ(truth["reference"]["height"], 18.25);
  EXPECT_EQ(truth["fixes"].size(), 20U);
}

}  // namespace
}  // namespace fathomline::simulator
