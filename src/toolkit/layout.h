// How the controls of a window stand to each other: a tree of values, without pixel positions.
//
//   Layout::Column({
//       Layout::Box(frameRefPos, Layout::Form({{"Ref Lat :", lblRefLat}, {"Ref Lon :",
//       lblRefLon}})), Layout::Row({Layout::Space(), cmdOk, cmdCancel}),
//   })
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/choices.h"
#include "toolkit/control.h"
#include "toolkit/controls.h"

namespace fathomline {

struct FormLine;

class Layout {
 public:
  enum class Kind : std::uint8_t {
    Nothing,
    Item,    // a control
    Words,   // a text that names the control behind it
    Row,     // side by side
    Column,  // one under the other
    Form,    // lines of words and what they name, in two aligned columns
    Table,   // cells in reading order, with a number of columns
    Charts,  // charts over one time axis, with a number of columns, which share the height
    Box,     // a frame around its only child
    Pages,   // one page per tab of a Choices, in its order
    Space,   // room that takes what is left over
  };

  Layout() = default;
  Layout(Control& control) : kind_(Kind::Item), control_(&control) {}

  static Layout Item(Control& control) { return Layout(control); }
  static Layout Words(std::string text);
  static Layout Row(std::vector<Layout> children) { return {Kind::Row, std::move(children)}; }
  static Layout Column(std::vector<Layout> children) { return {Kind::Column, std::move(children)}; }
  static Layout Form(std::vector<FormLine> lines);
  static Layout Table(int columns, std::vector<Layout> cells);
  static Layout Charts(int columns, std::vector<Layout> charts);
  // The same of many that have the same series: one legend serves all, and those without points
  // take next to no room. `nothing` is what stands there when none has any.
  static Layout AlikeCharts(int columns, std::vector<Layout> charts, std::string nothing);
  static Layout Box(Frame& frame, Layout content);
  static Layout Pages(Choices& tabs, std::vector<Layout> pages);
  static Layout Space() { return {Kind::Space, {}}; }

  Kind ShownKind() const { return kind_; }
  Control* Shown() const { return control_; }        // of an item, a box and pages
  const std::string& Text() const { return text_; }  // of words, and of charts that are alike
  int Columns() const { return columns_; }
  const std::vector<Layout>& Children() const { return children_; }

 private:
  Layout(Kind kind, std::vector<Layout> children) : kind_(kind), children_(std::move(children)) {}

  Kind kind_ = Kind::Nothing;
  int columns_ = 0;
  Control* control_ = nullptr;
  std::string text_;
  std::vector<Layout> children_;
};

struct FormLine {
  std::string words;
  Layout content;
};

}  // namespace fathomline
