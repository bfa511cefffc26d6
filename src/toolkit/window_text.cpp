// What a window shows, as text.
#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/choices.h"
#include "toolkit/grid.h"
#include "toolkit/long_list.h"
#include "toolkit/picture.h"
#include "toolkit/window.h"

namespace fathomline {

namespace {

// Cells end at tabs and lines at line feeds, so a text must hold neither.
std::string OnOneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(),
      [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
  return line;
}

void WriteGrid(std::ostream& out, const Grid& grid) {
  out << "grid\t" << grid.Name() << '\t' << grid.Rows() << '\t' << grid.Columns() << '\n';
  for (int row = 0; row < grid.Rows(); ++row) {
    for (int column = 0; column < grid.Columns(); ++column) {
      if (column > 0) out << '\t';
      out << OnOneLine(grid.Text(row, column));
    }
    out << '\n';
  }
}

void WriteSeries(std::ostream& out, const Chart& chart, int index) {
  const auto& series = chart.Series(index);
  out << "series\t" << chart.Name() << '\t' << index << '\t' << OnOneLine(series.Title()) << '\t'
      << series.Count() << '\n';
  for (int i = 0; i < series.Count(); ++i) {
    const Series::Point point = series.At(i);
    out << ExactText(point.x);
    if (series.Kind() == SeriesKind::Gantt) out << '/' << ExactText(point.end);
    out << '\t';
    if (!point.null) out << ExactText(point.y);
    if (point.colour != kSeriesColour) out << '\t' << point.colour;
    out << '\n';
  }
}

template <class Action>
void ForEachShown(const Window& window, ControlKind kind, Action&& action) {
  for (const Control* control : window.Controls()) {
    if (control->Kind() == kind && control->Shown()) action(*control);
  }
}

using WordList = std::vector<std::string>;

// A line, unless there is nothing to say.
void WriteWords(std::ostream& out, std::string_view what, const WordList& words) {
  if (std::all_of(words.begin(), words.end(), [](const auto& word) { return word.empty(); })) {
    return;
  }
  out << "words\t" << what;
  for (const std::string& word : words) out << '\t' << OnOneLine(word);
  out << '\n';
}

void CollectWords(const Layout& layout, WordList& words) {
  if (layout.ShownKind() == Layout::Kind::Words) words.push_back(layout.Text());
  for (const Layout& child : layout.Children()) CollectWords(child, words);
}

WordList WordsOf(const Control& control) {
  WordList words;
  switch (control.Kind()) {
    case ControlKind::Choices: {
      const auto& choices = static_cast<const Choices&>(control);
      for (int i = 0; i < choices.Count(); ++i) words.push_back(choices.EntryText(i));
      break;
    }
    case ControlKind::ToolBar: {
      const auto& bar = static_cast<const ToolBar&>(control);
      for (int i = 1; i <= bar.Buttons(); ++i) words.push_back(bar.ButtonAt(i).caption);
      break;
    }
    case ControlKind::StatusBar: {
      const auto& bar = static_cast<const StatusBar&>(control);
      for (int i = 1; i <= bar.Panels(); ++i) words.push_back(bar.PanelText(i));
      break;
    }
    case ControlKind::LongList:
      for (const LongList::Column& column : static_cast<const LongList&>(control).Columns()) {
        words.push_back(column.head);
      }
      break;
    case ControlKind::Picture:
      for (const Shape& shape : static_cast<const Picture&>(control).Persistent()) {
        if (shape.kind == ShapeKind::Text) words.push_back(shape.text);
      }
      break;
    default:
      words.push_back(control.Text());
  }
  return words;
}

// Of the columns, then of the rows; the same one behind the other counts once.
WordList HeadTips(const Grid& grid) {
  WordList tips;
  const auto take = [&](int row, int column) {
    const std::string& tip = grid.HeadTip(row, column);
    if (!tip.empty() && (tips.empty() || tips.back() != tip)) tips.push_back(tip);
  };
  if (grid.Rows() > 0) {
    for (int column = 0; column < grid.Columns(); ++column) take(0, column);
  }
  for (int row = 1; row < grid.Rows(); ++row) take(row, 0);
  return tips;
}

WordList HeadTips(const LongList& list) {
  WordList tips;
  for (const LongList::Column& column : list.Columns()) tips.push_back(column.tip);
  return tips;
}

void WriteControlWords(std::ostream& out, const Control& control) {
  WriteWords(out, control.Name(), WordsOf(control));
  WriteWords(out, control.Name() + " tip", {control.ToolTip()});
  if (control.Kind() == ControlKind::MenuItem) {
    WriteWords(out, control.Name() + " keys", {static_cast<const MenuItem&>(control).Shortcut()});
  }
  if (control.Kind() == ControlKind::Grid) {
    const auto& grid = static_cast<const Grid&>(control);
    WriteWords(out, control.Name() + " heads", HeadTips(grid));
  }
  if (control.Kind() == ControlKind::LongList) {
    WriteWords(out, control.Name() + " heads", HeadTips(static_cast<const LongList&>(control)));
  }
  if (control.Kind() != ControlKind::Chart) return;
  const auto& chart = static_cast<const Chart&>(control);
  WriteWords(out, control.Name() + " axes",
             {chart.Left().Title(), chart.Bottom().Title(), chart.Right().Title()});
  WriteWords(out, control.Name() + " note", {chart.Note()});
}

}  // namespace

void Window::Write(std::ostream& out, Texts texts) {
  Act([this] { Refresh(); });
  if (texts == Texts::WithWords) {
    WriteWords(out, "caption", {caption_});
    WordList words;
    CollectWords(content_, words);
    WriteWords(out, "layout", words);
    for (const Control* control : controls_) WriteControlWords(out, *control);
  }
  ForEachShown(*this, ControlKind::Label, [&out](const Control& label) {
    out << "label\t" << label.Name() << '\t' << OnOneLine(label.Text()) << '\n';
  });
  ForEachShown(*this, ControlKind::Grid,
               [&out](const Control& grid) { WriteGrid(out, static_cast<const Grid&>(grid)); });
  ForEachShown(*this, ControlKind::Chart, [&out](const Control& control) {
    const auto& chart = static_cast<const Chart&>(control);
    for (int i = 0; i < chart.SeriesCount(); ++i) WriteSeries(out, chart, i);
  });
}

}  // namespace fathomline
