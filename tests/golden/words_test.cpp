// The words that stand in the windows whatever they are fed with, against the reviewed list in
// words.lst, which names every window and every text of it:
//
//   frmAbout                                 the window, for system 1 where each has its own
//     caption = About Fathomline             what it is headed with
//     layout = System :|Window :             the words that its layout draws
//     cmdOk = &OK                            the text of a control, or its entries, captions or
//                                            panels; those of a control array go on behind ";"
//     lblSv = 50 x *                         and many of the same are counted
//     chkGGA tip = Position                  what stands over a control under the pointer
//     TChart axes = m||deg                   the titles of the left, lower and right axis
//     TChart note = Bars: ...                what is noted beside a chart
//
// A line that ends in a blank has "·" behind it.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/system.h"
#include "support/places.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

// The texts of the members of a control array, as a line of the list has them.
std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (auto text = texts.begin(); text != texts.end();) {
    const auto next = std::find_if(text, texts.end(), [&](const auto& t) { return t != *text; });
    if (!all.empty()) all += " ; ";
    if (next - text > 1) all += std::to_string(next - text) + " x ";
    all += *text;
    text = next;
  }
  return all;
}

std::string WordsOf(Window& window) {
  std::ostringstream written;
  window.Write(written, Window::Texts::WithWords);
  std::istringstream in(written.str());
  std::vector<std::string> names;
  std::map<std::string, std::vector<std::string>> texts;
  for (std::string line; std::getline(in, line) && line.starts_with("words\t");) {
    const auto behindName = line.find('\t', 6);
    std::string name = line.substr(6, behindName - 6);
    if (const auto open = name.find('('); open != std::string::npos) {
      name.erase(open, name.find(')') + 1 - open);
    }
    std::string words = line.substr(behindName + 1);
    std::replace(words.begin(), words.end(), '\t', '|');
    if (texts[name].empty()) names.push_back(name);
    texts[name].push_back(words);
  }
  std::string all;
  for (const std::string& name : names) {
    all += "  " + name + " = " + Joined(texts[name]);
    all += all.back() == ' ' ? "\u00B7\n" : "\n";
  }
  return all;
}

// What is listed for each window, by its name.
std::map<std::string, std::string> Listed() {
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
  std::map<std::string, std::string> listed = Listed();
  for (Window* window : session.program.desktop.Windows()) {
    if (window->Index() > 1) continue;
    // To show the main window is to start the program.
    if (window != &session.program.windows.main) window->Show();
    EXPECT_EQ(WordsOf(*window), listed[window->FullName()]) << window->FullName();
    listed.erase(window->FullName());
  }
  EXPECT_TRUE(listed.empty()) << listed.begin()->first << " is not there";
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
