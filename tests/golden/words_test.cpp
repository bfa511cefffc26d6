// The words that stand in the windows whatever they are fed with, against the reviewed list in
// words.lst, which names every window and every text of it:
//
//   frmAbout                                 the window; where each system has its own, those of
//                                            the others with what differs from system 1
//     caption = About Fathomline             what it is headed with
//     layout = System :|Window :             the words that its layout draws
//     cmdOk = &OK                            the text of a control, or its entries, captions or
//                                            panels; those of a control array go on behind ";"
//     lblSv = 50 x *                         and many of the same are counted
//     chkGGA tip = Position                  what stands over a control under the pointer
//     TChart axes = m||deg                   the titles of the left, lower and right axis
//     TChart note = Bars: ...                what is noted beside a chart
//     place is = 0 0 3000 6000               how it is built: left, top, width and height in
//                                            twips; what it is, unless a child that can be sized
//     content is = Row(cmdOk, Space)         how its layout stands
//     cmdOk is = default, disabled           what of a control is not as usual, among it the entry
//                                            that is chosen first, and the series of a chart
//
// A line that ends in a blank has "·" behind it.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/system.h"
#include "golden/window_states.h"
#include "support/places.h"
#include "support/test_program.h"
#include "toolkit/grid.h"

namespace fathomline {
namespace {

std::string WordsOf(Window& window) {
  std::ostringstream written;
  window.Write(written, Window::Texts::WithWords);
  std::istringstream in(written.str());
  std::vector<std::string> names;
  std::map<std::string, std::vector<std::string>> texts;
  for (std::string line; std::getline(in, line) && line.starts_with("words\t");) {
    const auto behindName = line.find('\t', 6);
    const std::string name = WithoutIndex(line.substr(6, behindName - 6));
    std::string words = line.substr(behindName + 1);
    std::replace(words.begin(), words.end(), '\t', '|');
    if (texts[name].empty()) names.push_back(name);
    texts[name].push_back(words);
  }
  std::string all;
  for (const std::string& name : names) {
    all += "  " + name + " = " + Counted(texts[name], " ; ");
    all += all.back() == ' ' ? "\u00B7\n" : "\n";
  }
  return all + StatesOf(window);
}

// The lines that the other text has not.
std::string WhatDiffers(const std::string& words, const std::string& from) {
  std::string all;
  std::istringstream in(words);
  for (std::string line; std::getline(in, line);) {
    if (("\n" + from).find("\n" + line + "\n") == std::string::npos) all += line + "\n";
  }
  return all;
}

// What is listed for each window, by its name.
std::map<std::string, std::string> ListedWindows() {
  std::map<std::string, std::string> windows;
  std::istringstream in(ReadWholeFile(std::string(kSourceFolder) + "/tests/golden/words.lst"));
  std::string* listed = nullptr;
  for (std::string line; std::getline(in, line);) {
    if (line[0] == ' ') {
      *listed += line + "\n";
    } else {
      listed = &windows[line];
    }
  }
  // A window that speaks of what differs there.
  if (auto node = windows.extract("frmComportInfo on Windows"); kPathSeparator == '\\') {
    windows["frmComportInfo"] = node.mapped();
  }
  return windows;
}

TEST(Words, StandInEveryWindow) {
  TestProgram session;
  session.Analyse({"GGA", "GNS", "GLL", "RMC", "VTG", "GSA", "GST", "GSV", "ZDA", "HDT", "ATT",
                   "ROT", "VHW", "DBT", "TTM", "VDM"});
  session.program.windows.charts.OpenSatellite(1, 9);
  std::map<std::string, std::string> listed = ListedWindows();
  std::map<std::pair<std::string, int>, std::string> ofTheFirst;
  for (Window* window : session.program.desktop.Windows()) {
    // To show the main window is to start the program.
    if (window != &session.program.windows.main) {
      window->Show();
      window->Refresh();
    }
    std::string words = WordsOf(*window);
    std::string& first = ofTheFirst[{window->Name(), window->Part()}];
    if (window->Index() > 1) {
      words = WhatDiffers(words, first);
    } else {
      first = words;
    }
    EXPECT_EQ(words, listed[window->FullName()]) << window->FullName();
    listed.erase(window->FullName());
  }
  EXPECT_TRUE(listed.empty()) << listed.begin()->first << " is not there";

  // Each keeps its place under a name of its own: those that have one for each system with its
  // number.
  for (Window* window : session.program.desktop.Windows()) {
    if (window != &session.program.windows.main) window->Close();
  }
  for (const char* const name :
       {"MonitorLeft", "StatisticsTop", "StatisticsSNRWidth", "NumericsHeight", "SourcesLeft",
        "SentenceLogTop", "SatellitesWidth", "TimeSeriesSNRHeight", "SkyplotLeft3", "ScatterTop4",
        "AISTargetsWidth2", "ARPATargetsHeight1", "TimeSeriesGGALeft2", "TimeSeriesGNSTop3"}) {
    EXPECT_TRUE(session.settings.Get("Settings", name)) << name;
  }
  for (Window* window : session.program.desktop.Windows()) {
    const std::string key = window->Name().substr(3) + "Width";
    if (!session.settings.Get("Settings", key)) continue;
    session.settings.Set("Settings", key, 7000);
    window->Show();
    EXPECT_EQ(window->Place().width, 7000) << key;
  }
}

// Whoever points at the head of a table is told what stands there.
TEST(Words, EveryHeadOfATableIsDefined) {
  TestProgram session;
  int tables = 0;
  for (Window* const window : session.program.desktop.Windows()) {
    if (window->Index() > 1 || window == &session.program.windows.main) continue;
    window->Show();
    for (const Control* const control : window->Controls()) {
      if (control->Kind() != ControlKind::Grid) continue;
      const auto& grid = static_cast<const Grid&>(*control);
      if (grid.ShownHeads().rows == 0 || grid.Rows() == 0) continue;
      ++tables;
      const auto expect = [&](int row, int column) {
        EXPECT_EQ(grid.Text(row, column).empty(), grid.HeadTip(row, column).empty())
            << window->FullName() << " " << grid.Name() << ": " << grid.Text(row, column);
      };
      const int heads = grid.ShownHeads().columns;
      for (int column = heads; column < grid.Columns(); ++column) expect(0, column);
      for (int row = 1; heads > 0 && row < grid.Rows(); ++row) expect(row, 0);
    }
  }
  EXPECT_GT(tables, 30);
}

}  // namespace
}  // namespace fathomline
