// The rules of the house: which folder may include which, that only the desktop face and its
// programs know the toolkit, and that the manuals name the options there are.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/replay_tool.h"
#include "app/trial_options.h"
#include "simulator/command.h"
#include "support/places.h"

namespace fathomline {
namespace {

namespace fs = std::filesystem;

// The rooms by their level, from the ground up. An include within a level stays in its room.
const std::map<std::string, int> kLevels = {
    {"base", 0},    {"toolkit", 1}, {"decoding", 1}, {"faces/qt", 2}, {"faces/headless", 2},
    {"records", 2}, {"ais", 2},     {"analysis", 3}, {"views", 3},    {"pipeline", 4},
    {"watch", 2},   {"trial", 4},   {"charts", 4},   {"windows", 4},  {"setup", 5},
    {"sources", 5}, {"session", 6}, {"app", 7}};

// The library without a window in sight.
const std::set<std::string> kEngine = {"base",     "decoding", "records", "ais",
                                       "analysis", "pipeline", "trial",   "watch"};

std::string RoomOf(const std::string& file) {
  const std::size_t end = file.rfind('/');
  return end == std::string::npos ? std::string() : file.substr(0, end);
}

struct Include {
  std::string file;
  std::string included;
};

std::vector<Include> AllIncludes() {
  const fs::path source = fs::path(kSourceFolder) / "src";
  const std::regex pattern("^#include [\"<]([^\">]+)[\">]");
  std::vector<Include> includes;
  for (const auto& entry : fs::recursive_directory_iterator(source)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    std::ifstream in(entry.path());
    std::smatch match;
    for (std::string line; std::getline(in, line);) {
      if (std::regex_search(line, match, pattern)) {
        includes.push_back({fs::relative(entry.path(), source).generic_string(), match[1].str()});
      }
    }
  }
  return includes;
}

TEST(House, IncludesPointToTheSameRoomOrDownwards) {
  const std::vector<Include> includes = AllIncludes();
  ASSERT_GT(includes.size(), 100U);
  for (const Include& include : includes) {
    const std::string from = RoomOf(include.file);
    const std::string to = RoomOf(include.included);
    ASSERT_TRUE(kLevels.contains(from)) << include.file << " stands in a room without a level";
    if (from == to || !kLevels.contains(to)) continue;  // or a system header, or a generated one
    EXPECT_LT(kLevels.at(to), kLevels.at(from)) << include.file << " includes " << include.included;
    if (kEngine.contains(from)) {
      EXPECT_TRUE(kEngine.contains(to)) << include.file << " includes " << include.included;
    }
  }
}

TEST(House, OnlyTheDesktopFaceAndTheProgramsKnowTheToolkit) {
  const std::regex toolkit("^(Q[A-Z][A-Za-z]+|qcustomplot\\.h|Qt[A-Z].*)$");
  for (const Include& include : AllIncludes()) {
    if (include.file.rfind("faces/qt/", 0) == 0 || include.file.rfind("app/", 0) == 0) continue;
    EXPECT_FALSE(std::regex_match(include.included, toolkit))
        << include.file << " includes " << include.included;
  }
}

std::set<std::string> OptionsIn(const std::string& text, const std::regex& option) {
  std::set<std::string> options;
  for (std::sregex_iterator it(text.begin(), text.end(), option); it != std::sregex_iterator();
       ++it) {
    options.insert((*it)[1].str());
  }
  return options;
}

TEST(House, TheManualsNameTheOptionsThereAre) {
  std::ostringstream simulateHelp, replayHelp, errors;
  ASSERT_EQ(simulator::RunSimulateCommand({"--help"}, simulateHelp, errors), 0);
  ASSERT_EQ(RunReplayTool({"--help"}, replayHelp, errors), 0);
  const struct {
    const char* manual;
    std::string help;
  } tools[] = {{"fathomline-replay", replayHelp.str()},
               {"fathomline-simulate", simulateHelp.str()},
               {"fathomline-trial", TrialHelp()}};
  for (const auto& tool : tools) {
    std::ifstream in(fs::path(kSourceFolder) / "packaging" / (std::string(tool.manual) + ".1.in"));
    const std::string manual{std::istreambuf_iterator<char>(in), {}};
    const std::string plain = std::regex_replace(manual, std::regex(R"(\\-)"), "-");
    EXPECT_EQ(OptionsIn(plain, std::regex(R"(\.TP\n\.BI?R? (--[a-z-]+))")),
              OptionsIn(tool.help, std::regex(R"(\n  (--[a-z-]+))")))
        << tool.manual;
  }
}

}  // namespace
}  // namespace fathomline
