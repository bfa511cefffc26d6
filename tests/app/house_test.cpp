// The rules of the house: which folder may include which, that only the desktop face and its
// programs know the toolkit, and that the manuals name the options there are.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/replay_options.h"
#include "simulator/command.h"

namespace fathomline {
namespace {

namespace fs = std::filesystem;

// From the ground up. Two rooms are listed in halves: the shared records of the pipeline, and the
// windows and targets of AIS, stand on different floors than the rest of their folder.
const std::vector<std::string> kFloors = {"platform", "decoding", "ais",   "records",
                                          "analysis", "charts",   "views", "setup",
                                          "sources",  "pipeline", "app"};

std::size_t Floor(const std::string& file) {
  std::string room = file.substr(0, file.find('/'));
  if (file.rfind("pipeline/records", 0) == 0) room = "records";
  return static_cast<std::size_t>(std::find(kFloors.begin(), kFloors.end(), room) -
                                  kFloors.begin());
}

// The windows of the targets show what analysis and the records hold.
bool IsUpperHalfOfAIS(const std::string& file) {
  return file.find("_window") != std::string::npos || file.rfind("ais/ais_extra_info", 0) == 0 ||
         file.rfind("ais/target_texts", 0) == 0;
}

struct Include {
  std::string file;
  std::string included;
};

std::vector<Include> AllIncludes() {
  const fs::path source = fs::path(FATHOMLINE_SOURCE_DIR) / "src";
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

TEST(House, IncludesPointDownwards) {
  const std::vector<Include> includes = AllIncludes();
  ASSERT_GT(includes.size(), 100U);
  for (const Include& include : includes) {
    const std::size_t to = Floor(include.included);
    if (to == kFloors.size()) continue;  // a system header, or a generated one
    std::size_t from = Floor(include.file);
    if (include.file.rfind("ais/", 0) == 0 && IsUpperHalfOfAIS(include.file)) {
      from = Floor("charts/");
    }
    EXPECT_LE(to, from) << include.file << " includes " << include.included;
  }
}

TEST(House, OnlyTheDesktopFaceAndTheProgramsKnowTheToolkit) {
  const std::regex toolkit("^(Q[A-Z][A-Za-z]+|qcustomplot\\.h|Qt[A-Z].*)$");
  for (const Include& include : AllIncludes()) {
    if (include.file.rfind("platform/qt/", 0) == 0 || include.file.rfind("app/", 0) == 0) continue;
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
  std::ostringstream simulateHelp, errors;
  const std::vector<std::string_view> help{"--help"};
  ASSERT_EQ(simulator::RunSimulateCommand(help, simulateHelp, errors), 0);
  const struct {
    const char* manual;
    std::string help;
  } tools[] = {{"fathomline-replay", ReplayHelp()}, {"fathomline-simulate", simulateHelp.str()}};
  for (const auto& tool : tools) {
    std::ifstream in(fs::path(FATHOMLINE_SOURCE_DIR) / "packaging" /
                     (std::string(tool.manual) + ".1.in"));
    const std::string manual{std::istreambuf_iterator<char>(in), {}};
    const std::string plain = std::regex_replace(manual, std::regex(R"(\\-)"), "-");
    EXPECT_EQ(OptionsIn(plain, std::regex(R"(\.TP\n\.BI?R? (--[a-z-]+))")),
              OptionsIn(tool.help, std::regex(R"(\n  (--[a-z-]+))")))
        << tool.manual;
  }
}

}  // namespace
}  // namespace fathomline
