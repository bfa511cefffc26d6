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
#include "base/numbers.h"
#include "base/system.h"
#include "support/colour_names.h"
#include "support/places.h"
#include "support/test_program.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/grid.h"
#include "toolkit/long_list.h"
#include "toolkit/picture.h"

namespace fathomline {
namespace {

// The texts of the members of a control array, as a line of the list has them.
std::string Joined(const std::vector<std::string>& texts, const char* between = " ; ") {
  std::string all;
  for (auto text = texts.begin(); text != texts.end();) {
    const auto next = std::find_if(text, texts.end(), [&](const auto& t) { return t != *text; });
    if (!all.empty()) all += between;
    if (next - text > 1) all += std::to_string(next - text) + " x ";
    all += *text;
    text = next;
  }
  return all;
}

using Parts = std::vector<std::string>;

std::string Listed(const Parts& parts, const char* between = ", ") {
  std::string all;
  for (const std::string& part : parts) all += (all.empty() ? "" : between) + part;
  return all;
}

std::string Number(double number) {
  return PlainText(number);
}

void Collect(const Grid& grid, Parts& parts) {
  parts.push_back(Number(grid.Rows()) + " rows");
  Parts widths;
  for (int column = 0; column < grid.Columns(); ++column) {
    widths.push_back(Number(grid.ColumnWidth(column)) + (grid.HoldsText(column) ? " text" : ""));
  }
  parts.push_back("columns " + Joined(widths));
  const Grid::Heads heads = grid.ShownHeads();
  if (heads.rows != 1 || heads.columns != 1) {
    parts.push_back("heads " + Number(heads.rows) + " " + Number(heads.columns));
  }
  if (grid.FewRows()) parts.push_back("few rows");
  if (grid.Sortable()) parts.push_back("sortable");
  if (grid.onClickHead) parts.push_back("its heads can be clicked");
  if (grid.onClickRow) parts.push_back("its rows can be clicked");
}

void Collect(const Chart& chart, Parts& parts) {
  constexpr const char* kKinds[] = {"line", "bar", "gantt", "points"};
  constexpr const char* kMarkers[] = {"level", "band", "moment", "circle"};
  constexpr const char* kLegends[] = {"no legend", "legend of what has points", "legend", "names"};
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    const SeriesDesign& design = chart.Series(i).Design();
    parts.push_back(design.title + " " + kKinds[static_cast<int>(design.kind)] + " " +
                    ColourName(design.colour) + (design.rightAxis ? " right" : "") +
                    (design.unit.empty() ? "" : " in " + design.unit) +
                    (design.whole ? " whole" : "") + (design.steps ? " steps" : "") +
                    (design.digits ? " digits" : ""));
  }
  for (int i = 0; i < chart.ToolCount(); ++i) {
    const MarkerDesign& design = chart.Tools(i).Design();
    parts.push_back(std::string(kMarkers[static_cast<int>(design.kind)]) + " " +
                    ColourName(design.colour) + (design.dashed ? " dashed" : "") +
                    (design.visible ? "" : " hidden"));
  }
  parts.push_back(kLegends[static_cast<int>(chart.ShownLegend())]);
  for (const Axis* axis : {&chart.Left(), &chart.Bottom(), &chart.Right()}) {
    const AxisRange range = axis->Range();
    std::string text = axis->Automatic() ? "automatic" : "fixed";
    if (!axis->AutomaticMinimum()) text += " least";
    if (!axis->AutomaticMaximum()) text += " greatest";
    if (range != AxisRange{}) text += " " + Number(range.low) + " to " + Number(range.high);
    parts.push_back(text + (axis->LabelFormat().empty() ? "" : " " + axis->LabelFormat()) +
                    (axis->Visible() ? "" : " hidden"));
  }
  parts.push_back("\"" + chart.WhyEmpty() + "\"");
  if (chart.onClickAxis) parts.push_back("its axes can be clicked");
  if (chart.onZoom && chart.onScroll && chart.onUndoZoom) parts.push_back("tells of zooms");
  if (chart.EqualScales()) parts.push_back("equal scales");
}

void Collect(const StatusBar& bar, Parts& parts) {
  for (int panel = 1; panel <= bar.Panels(); ++panel) {
    const std::optional<Colour> colour = bar.PanelColour(panel);
    parts.push_back(std::string(bar.PanelVisible(panel) ? "shown" : "hidden") +
                    (colour ? " " + ColourName(*colour) : "") + " " + bar.PanelToolTip(panel));
  }
  parts = {Joined(parts), Number(bar.PanelsAtRight()) + " at the right"};
  if (bar.onClickPanel) parts.push_back("can be clicked");
}

// What of a control is not as usual.
std::string StateOf(const Control& control) {
  Parts parts;
  const auto add = [&parts](bool deviates, const std::string& what) {
    if (deviates) parts.push_back(what);
  };
  add(!control.Enabled(), "disabled");
  add(!control.Visible(), "hidden");
  if (control.ShownColour()) parts.push_back(ColourName(*control.ShownColour()));
  add(bool{control.onLeave}, "asked when it is left");
  switch (control.Kind()) {
    case ControlKind::Label: {
      constexpr const char* kLooks[] = {"", "swatch", "path", "line"};
      const auto& label = static_cast<const Label&>(control);
      add(label.ShownLook() != Label::Look::Text, kLooks[static_cast<int>(label.ShownLook())]);
      add(bool{label.onClick}, "can be clicked");
      add(label.TabStop(), "by Tab");
      break;
    }
    case ControlKind::Button: {
      const Button::Role role = static_cast<const Button&>(control).ButtonRole();
      add(role != Button::Role::Plain, role == Button::Role::Default ? "default" : "cancel");
      add(!static_cast<const Button&>(control).onClick, "does nothing");
      break;
    }
    case ControlKind::TextBox: {
      const auto& box = static_cast<const TextBox&>(control);
      add(box.Multiline(), "of lines, " + Number(box.Height()) + " high");
      add(box.ReadOnly(), "read only");
      add(bool{box.onChange}, "acts");
      break;
    }
    case ControlKind::CheckBox:
      add(static_cast<const CheckBox&>(control).Checked(), "checked");
      add(bool{static_cast<const CheckBox&>(control).onClick}, "acts");
      break;
    case ControlKind::Choices: {
      constexpr const char* kKinds[] = {"", "editable", "list", "options", "tabs"};
      const auto& choices = static_cast<const Choices&>(control);
      add(choices.ShownAs() != ChoicesKind::Combo, kKinds[static_cast<int>(choices.ShownAs())]);
      add(!choices.Text().empty(), "\"" + choices.Text() + "\"");
      add(choices.Choice() == Choices::kNone, "none chosen");
      add(choices.onChoose || choices.onType, "acts");
      break;
    }
    case ControlKind::Grid:
      Collect(static_cast<const Grid&>(control), parts);
      break;
    case ControlKind::LongList:
      for (const LongList::Column& column : static_cast<const LongList&>(control).Columns()) {
        parts.push_back(Number(column.characters));
      }
      add(bool{static_cast<const LongList&>(control).onCopy}, "can be copied");
      break;
    case ControlKind::Chart:
      Collect(static_cast<const Chart&>(control), parts);
      break;
    case ControlKind::Picture: {
      const auto& picture = static_cast<const Picture&>(control);
      const Picture::Scale& scale = picture.ShownScale();
      if (picture.InPixels()) {
        parts.push_back("at least " + Number(picture.Least().width) + " by " +
                        Number(picture.Least().height));
      } else {
        parts.push_back(Listed(
            {Number(scale.left), Number(scale.top), Number(scale.right), Number(scale.bottom)},
            " "));
      }
      break;
    }
    case ControlKind::ToolBar: {
      const auto& bar = static_cast<const ToolBar&>(control);
      for (int i = 1; i <= bar.Buttons(); ++i) {
        const ToolBar::Button& button = bar.ButtonAt(i);
        parts.push_back(button.key + (button.enabled ? "" : " disabled"));
      }
      add(bar.onClick != nullptr, "acts");
      break;
    }
    case ControlKind::StatusBar:
      Collect(static_cast<const StatusBar&>(control), parts);
      break;
    case ControlKind::MenuItem: {
      const auto& item = static_cast<const MenuItem&>(control);
      add(item.Checked(), "checked");
      add(item.IsOption(), "one out of several");
      add(bool{item.onClick}, "acts");
      break;
    }
    default:
      break;
  }
  return Listed(parts);
}

std::string WithoutIndex(std::string name) {
  if (const auto open = name.find('('); open != std::string::npos) {
    name.erase(open, name.find(')') + 1 - open);
  }
  return name;
}

std::string Written(const Layout& layout) {
  constexpr const char* kKinds[] = {"Nothing", "",       "Words", "Row",   "Column", "Form",
                                    "Table",   "Charts", "Box",   "Pages", "Space"};
  std::string text = kKinds[static_cast<int>(layout.ShownKind())];
  if (layout.Columns() > 0) text += " " + Number(layout.Columns());
  Parts inside;
  if (layout.Shown() != nullptr) inside.push_back(WithoutIndex(layout.Shown()->Name()));
  if (layout.ShownKind() == Layout::Kind::Item) return inside.front();
  for (const Layout& child : layout.Children()) inside.push_back(Written(child));
  if (layout.ShownKind() == Layout::Kind::Table) {
    Parts rows;
    for (std::size_t i = 0; i < inside.size(); ++i) {
      if (i % static_cast<std::size_t>(layout.Columns()) == 0) rows.emplace_back();
      rows.back() += (rows.back().empty() ? "" : ", ") + inside[i];
    }
    return text + "(" + Joined(rows, " / ") + ")";
  }
  return inside.empty() ? text : text + "(" + Joined(inside, ", ") + ")";
}

// How the window is built and what it begins with.
std::string StatesOf(const Window& window) {
  const WindowPlace& place = window.DesignPlace();
  Parts own = {Listed(
      {Number(place.left), Number(place.top), Number(place.width), Number(place.height)}, " ")};
  if (window.Style() == WindowStyle::Dialog) own.emplace_back("dialog");
  if (!window.Resizable()) own.emplace_back("of one size");
  if (window.onDrop) own.emplace_back("takes files");
  if (window.IconColour()) own.push_back(ColourName(*window.IconColour()) + " icon");
  std::string all = "  place is = " + Listed(own) + "\n";
  if (window.Content().ShownKind() != Layout::Kind::Nothing) {
    all += "  content is = " + Written(window.Content()) + "\n";
  }
  std::vector<std::string> names;
  std::map<std::string, Parts> states;
  for (const Control* const control : window.Controls()) {
    const std::string name = WithoutIndex(control->Name());
    if (states[name].empty()) names.push_back(name);
    states[name].push_back(StateOf(*control));
  }
  for (const std::string& name : names) {
    Parts& of = states[name];
    if (std::all_of(of.begin(), of.end(), [](const auto& state) { return state.empty(); })) {
      continue;
    }
    std::replace(of.begin(), of.end(), std::string(), std::string("usual"));
    all += "  " + name + " is = " + Joined(of) + "\n";
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
    const std::string name = WithoutIndex(line.substr(6, behindName - 6));
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
  std::map<std::pair<std::string, int>, std::string> ofTheFirst;
  for (Window* window : session.program.desktop.Windows()) {
    // To show the main window is to start the program.
    if (window != &session.program.windows.main) window->Show();
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
