// The command line of fathomline-simulate.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/numbers.h"
#include "simulator/command.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {
namespace {

using testing::HasSubstr;

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

Outcome Simulate(const std::vector<std::string_view>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = RunSimulateCommand(arguments, out, err);
  return {status, out.str(), err.str()};
}

TEST(SimulateCommandLine, WrongArgumentsEndWithOneLine) {
  const std::vector<std::pair<std::vector<std::string_view>, std::string>> cases{
      {{"--sead", "1"}, "unknown option \"--sead\""},
      {{"extra"}, "unknown option \"extra\""},
      {{"--seed"}, "--seed needs a value"},
      {{"--seed", "12x"}, "\"12x\" is no valid value for --seed"},
      {{"--seed", "-1"}, "--seed"},
      {{"--duration", "nan"}, "--duration"},
      {{"--rate", "0"}, "--rate"},
      {{"--scenario", "moon"}, "no scenario is called \"moon\""},
      {{"--sentences", "GGA,,RMC"}, "no sentence is called \"\""},
      {{"--sentences", "GGA:0"}, "\"0\""},
      {{"--sentences", "GGA,GGA:2"}, "\"GGA\" is listed twice"},
      {{"--start", "2026-1-2 03:04:05"}, "no date and time"},
      {{"--start", "2026-02-29 03:04:05"}, "no date of the calendar"},
      {{"--start", "2026-02-28 24:00:00"}, "--start"},
      {{"--output", "/nonexistent/x.log"}, "cannot write \"/nonexistent/x.log\": No such file"},
      {{"--output", "/dev/full"}, "cannot write \"/dev/full\": No space left"},
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
  const SimulationOptions options = ParseSimulateCommand(arguments).options;
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
  const std::string log = testing::TempDir() + "simulated.log";
  const std::string json = testing::TempDir() + "simulated.json";
  const auto read = [](const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
  const Outcome printed = Simulate({"--scenario", "moored", "--duration", "20"});
  EXPECT_EQ(printed.status, 0);
  EXPECT_EQ(Split(printed.out, '\n').front(), "$GNZDA,030405.00,02,01,2026,00,00*7F");
  const Outcome stored =
      Simulate({"--scenario", "moored", "--duration", "20", "--output", log, "--truth", json});
  EXPECT_EQ(stored.out, "");
  EXPECT_EQ(read(log), printed.out);
  const std::string truth = read(json);
  EXPECT_THAT(truth, HasSubstr("\"start\": \"2026-01-02 03:04:05\""));
  EXPECT_THAT(truth, HasSubstr("\"latitude\": 58.9726, \"longitude\": 5.7315, \"height\": 18.25"));
  EXPECT_THAT(truth, HasSubstr("\"fix_count\": 20"));
  EXPECT_THAT(truth, HasSubstr("\"ZDA\": 20, \"GGA\": 20"));
  std::size_t fixes = 0;
  for (std::size_t at = 0; (at = truth.find("\"north_noise\"", at)) != std::string::npos; ++at) {
    ++fixes;
  }
  EXPECT_EQ(fixes, 20U);
  std::remove(log.c_str());
  std::remove(json.c_str());
}

TEST(SimulateCommandLine, HelpNamesEverything) {
  const Outcome help = Simulate({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const Scenario& scenario : Scenarios()) {
    EXPECT_THAT(help.out, HasSubstr(std::string(scenario.name)));
  }
  EXPECT_THAT(Simulate({"--version"}).out, testing::MatchesRegex("fathomline-simulate [0-9.]+\n"));
}

}  // namespace
}  // namespace fathomline::simulator
