// What a window shows, as text.
#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "toolkit/chart.h"
#include "toolkit/grid.h"
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

}  // namespace

void Window::Write(std::ostream& out) {
  Act([this] { Refresh(); });
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
