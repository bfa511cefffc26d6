#include "golden/window_states.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/format.h"
#include "base/numbers.h"
#include "support/colour_names.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/grid.h"
#include "toolkit/long_list.h"
#include "toolkit/picture.h"

namespace fathomline {
namespace {

using Parts = std::vector<std::string>;

std::string Joined(const Parts& parts, std::string_view between = ", ") {
  std::string all;
  for (const std::string& part : parts) {
    if (!all.empty()) all += between;
    all += part;
  }
  return all;
}

void Collect(const Grid& grid, Parts& parts) {
  parts.push_back(PlainText(grid.Rows()) + " rows");
  Parts widths;
  for (int column = 0; column < grid.Columns(); ++column) {
    widths.push_back(PlainText(grid.ColumnWidth(column)) + (grid.HoldsText(column) ? " text" : ""));
  }
  parts.push_back("columns " + Counted(widths, " ; "));
  const Grid::Heads heads = grid.ShownHeads();
  if (heads.rows != 1 || heads.columns != 1) {
    parts.push_back("heads " + PlainText(heads.rows) + " " + PlainText(heads.columns));
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
                    (design.digits ? " digits" : "") +
                    (design.satellite < 0                             ? ""
                     : Format(design.satellite, "00") == design.title ? " marked"
                                                                      : " marked wrongly"));
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
    if (range != AxisRange{}) text += " " + PlainText(range.low) + " to " + PlainText(range.high);
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
  parts = {Counted(parts, " ; "), PlainText(bar.PanelsAtRight()) + " at the right"};
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
  add(!control.Tag().empty(), "tagged " + control.Tag());
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
      add(box.Multiline(), "of lines, " + PlainText(box.Height()) + " high");
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
        parts.push_back(PlainText(column.characters));
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
        parts.push_back("at least " + PlainText(picture.Least().width) + " by " +
                        PlainText(picture.Least().height));
      } else {
        parts.push_back(Joined({PlainText(scale.left), PlainText(scale.top), PlainText(scale.right),
                                PlainText(scale.bottom)},
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
  return Joined(parts);
}

std::string Written(const Layout& layout) {
  constexpr const char* kKinds[] = {"Nothing", "",       "Words", "Row",   "Column", "Form",
                                    "Table",   "Charts", "Box",   "Pages", "Space"};
  std::string text = kKinds[static_cast<int>(layout.ShownKind())];
  if (layout.Columns() > 0) text += " " + PlainText(layout.Columns());
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
    return text + "(" + Counted(rows, " / ") + ")";
  }
  return inside.empty() ? text : text + "(" + Counted(inside, ", ") + ")";
}

}  // namespace

std::string WithoutIndex(std::string name) {
  if (const auto open = name.find('('); open != std::string::npos) {
    name.erase(open, name.find(')') + 1 - open);
  }
  return name;
}

std::string Counted(const std::vector<std::string>& texts, std::string_view between) {
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

std::string StatesOf(const Window& window) {
  const WindowPlace& place = window.DesignPlace();
  Parts own = {Joined({PlainText(place.left), PlainText(place.top), PlainText(place.width),
                       PlainText(place.height)},
                      " ")};
  if (window.Style() == WindowStyle::Dialog) own.emplace_back("dialog");
  if (!window.Resizable()) own.emplace_back("of one size");
  if (window.onDrop) own.emplace_back("takes files");
  if (window.IconColour()) own.push_back(ColourName(*window.IconColour()) + " icon");
  std::string all = "  place is = " + Joined(own) + "\n";
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
    all += "  " + name + " is = " + Counted(of, " ; ") + "\n";
  }
  return all;
}

}  // namespace fathomline
