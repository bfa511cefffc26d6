// Whole simulated sessions.
#include <gtest/gtest.h>
#include <iomanip>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/files.h"
#include "support/places.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {
namespace {

using enum SentenceKind;

// The bytes in the tree were written elsewhere, so this also compares machines and compilers.
TEST(SimulatedSession, SamplesAreWhatTheirCommandsWrite) {
  const std::string folder = kSourceFolder + "/samples/";
  int samples = 0;
  for (const std::string& line : Split(ReadWholeFile(folder + "README.md"), '\n')) {
    if (!line.starts_with("    fathomline-simulate ")) continue;
    std::istringstream commandLine(line);
    std::vector<std::string> words;
    for (std::string word; commandLine >> std::quoted(word);) words.push_back(word);
    const std::vector<std::string_view> arguments(words.begin() + 1, words.end());
    const SimulateCommand command = CommandOf(arguments);
    EXPECT_TRUE(ReadWholeFile(folder + command.output) == Recording(command.options)) << line;
    ++samples;
  }
  EXPECT_EQ(samples, 2);
}

TEST(SimulatedSession, EverySentenceIsWellFormed) {
  const std::map<std::string, std::size_t> counts{
      {"GGA", 15}, {"GNS", 13}, {"GLL", 8}, {"RMC", 13}, {"VTG", 10}, {"ZDA", 7},
      {"GSA", 18}, {"GST", 9},  {"HDT", 3}, {"ROT", 3},  {"ATT", 5},  {"VHW", 9},
      {"DBT", 7},  {"TTM", 16}, {"VDM", 7}, {"VDO", 7}};
  std::set<std::string> met;
  for (const Scenario& scenario : Scenarios()) {
    SimulationOptions options = OptionsOf(scenario.name, 300.0);
    options.crLf = true;
    Simulator simulator(options);
    SimulatedTime last = -1;
    ForEachEpoch(simulator, [&](const Epoch& epoch) {
      EXPECT_GT(epoch.time, last);
      last = epoch.time;
      const auto lines = Split(epoch.lines.Text(), '\n');
      ASSERT_EQ(lines.size(), epoch.lines.Count() + 1);
      for (std::size_t i = 0; i < epoch.lines.Count(); ++i) {
        const std::string line(epoch.lines.Line(i));
        EXPECT_EQ(lines[i], line + '\r');
        EXPECT_LE(line.size(), 80U) << line;
        const std::size_t star = line.find('*');
        ASSERT_EQ(star + 3, line.size()) << line;
        int sum = 0;
        for (std::size_t at = 1; at < star; ++at) sum ^= line[at];
        EXPECT_EQ(std::stoi(line.substr(star + 1), nullptr, 16), sum) << line;
        met.insert(KindOf(line));
        if (KindOf(line) == "GSV") continue;
        EXPECT_EQ(Fields(line).size(), counts.at(KindOf(line))) << line;
      }
    });
  }
  EXPECT_EQ(met.size(), counts.size() + 1);
}

TEST(SimulatedSession, RatesAreKept) {
  SimulationOptions options =
      OptionsOf("voyage", 100.0, {{GGA, 3.0}, {HDT, 7.0}, {ATT, 10.0}, {ZDA, 0.1}});
  Simulator simulator(options);
  std::map<std::string, int> count;
  ForEachEpoch(simulator, [&](const Epoch& epoch) {
    for (std::size_t i = 0; i < epoch.lines.Count(); ++i) ++count[KindOf(epoch.lines.Line(i))];
  });
  EXPECT_EQ(count,
            (std::map<std::string, int>{{"GGA", 300}, {"HDT", 700}, {"ATT", 1000}, {"ZDA", 10}}));
  EXPECT_EQ(simulator.Truth().sentences[static_cast<std::size_t>(HDT)], 700);

  EXPECT_EQ(UsualRate(*options.scenario, GGA, 10.0), 10.0);
  EXPECT_EQ(UsualRate(*options.scenario, GSV, 10.0), 1.0);
  EXPECT_EQ(UsualRate(*options.scenario, DBT, 0.1), 0.1);
  EXPECT_EQ(UsualRate(*options.scenario, VDM, 10.0), 1.0);
}

TEST(SimulatedSession, OutagesAndCorrectionsShowInEverySentence) {
  Simulator simulator(OptionsOf(
      "voyage", 10'000.0,
      {{GGA, 1.0}, {GNS, 1.0}, {GLL, 1.0}, {RMC, 1.0}, {VTG, 1.0}, {GSA, 1.0}, {VDO, 1.0}}));
  std::map<std::string, int> qualities;
  std::set<std::string> stations;
  bool emptyOutage = false;
  bool heldOutage = false;
  double oldest = 0.0;
  ForEachEpoch(simulator, [&](const Epoch& epoch) {
    const auto gga = Fields(epoch.lines.Line(0));
    const auto gns = Fields(epoch.lines.Line(1));
    const bool lost = gga[6] == "0";
    ++qualities[gga[6]];
    EXPECT_EQ(std::to_string(epoch.fix->quality), gga[6]);
    EXPECT_EQ(gns[6] == "NN", lost);
    EXPECT_EQ(Fields(epoch.lines.Line(2))[6], lost ? "V" : "A");
    EXPECT_EQ(Fields(epoch.lines.Line(3))[2], lost ? "V" : "A");
    EXPECT_EQ(Fields(epoch.lines.Line(4))[9] == "N", lost);
    EXPECT_EQ(Fields(epoch.lines.Line(5))[2], lost ? "1" : "3");
    const std::string own = PayloadBits(Fields(epoch.lines.Line(epoch.lines.Count() - 1))[5]);
    EXPECT_NEAR(Angle(own, 62, 89), lost ? 181.0 : epoch.fix->position.longitude, 1e-4);
    const bool differential = !lost && gga[6] != "1";
    EXPECT_EQ(gga[13].empty(), !differential);
    EXPECT_EQ(gga[14].empty(), !differential);
    EXPECT_EQ(gga[13] + gga[14], gns[11] + gns[12]);
    if (differential) {
      oldest = std::max(oldest, Number(gga[13]));
      stations.insert(gga[14]);
    }
    if (lost) (gga[2].empty() ? emptyOutage : heldOutage) = true;
  });
  for (const char* quality : {"0", "1", "2", "4", "5"}) EXPECT_GT(qualities[quality], 50);
  EXPECT_TRUE(emptyOutage && heldOutage);
  EXPECT_GT(oldest, 15.0);
  EXPECT_GT(stations.size(), 1U);
}

TEST(SimulatedSession, PositionNoiseHasTheSizeOfItsQuality) {
  Simulator simulator(OptionsOf("moored", 400'000.0, {{GGA, 0.05}}));
  std::map<int, RunningFigure> north;
  std::map<int, RunningFigure> east;
  std::map<int, RunningFigure> up;
  ForEachEpoch(simulator, [&](const Epoch& epoch) {
    north[epoch.fix->quality].Add(epoch.fix->northNoise);
    east[epoch.fix->quality].Add(epoch.fix->eastNoise);
    up[epoch.fix->quality].Add(epoch.fix->upNoise);
  });
  for (const FixQuality& quality : kFixQualities) {
    EXPECT_NEAR(north[quality.indicator].Sdev(), quality.horizontal, 0.1 * quality.horizontal);
    EXPECT_NEAR(east[quality.indicator].Sdev(), quality.horizontal, 0.1 * quality.horizontal);
    EXPECT_NEAR(up[quality.indicator].Sdev(), quality.vertical, 0.1 * quality.vertical);
    EXPECT_NEAR(north[quality.indicator].Mean(), 0.0, 0.15 * quality.horizontal);
  }
}

}  // namespace
}  // namespace fathomline::simulator
