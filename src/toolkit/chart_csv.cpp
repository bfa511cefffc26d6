#include "toolkit/chart_csv.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/csv.h"
#include "base/datetime.h"
#include "base/numbers.h"
#include "base/text.h"
#include "toolkit/chart.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

constexpr std::int64_t kThousand = 1000;

struct Column {
  const Chart* chart;
  const Series* series;
};

struct Cell {
  std::int64_t moment;  // thousandths of a second
  std::size_t column;
  float value;
};

std::vector<const Chart*> ChartsOf(const Window& window) {
  std::vector<const Chart*> charts;
  for (const Control* const control : window.Controls()) {
    if (control->Kind() == ControlKind::Chart) {
      charts.push_back(static_cast<const Chart*>(control));
    }
  }
  return charts;
}

std::vector<Column> ColumnsOf(const Window& window) {
  std::vector<Column> columns;
  for (const Chart* const chart : ChartsOf(window)) {
    // A titled chart is one of many that are alike, most of them of satellites not in view.
    if (!chart->Text().empty() && chart->Empty()) continue;
    for (int i = 0; i < chart->SeriesCount(); ++i) {
      const Series& series = chart->Series(i);
      if (series.Count() > 0 || series.Design().satellite < 0) columns.push_back({chart, &series});
    }
  }
  return columns;
}

// Of "Elevation (deg)" what stands before the brackets.
std::string_view Quantity(std::string_view axis) {
  return Trim(axis.substr(0, axis.find('(')));
}

std::string HeadOf(const Column& column, const std::vector<Column>& columns) {
  std::string head(column.series->Title());
  const bool alone = std::count_if(columns.begin(), columns.end(), [&](const Column& other) {
                       return other.series->Title() == column.series->Title();
                     }) == 1;
  if (!column.chart->Text().empty()) {
    head = std::string(Trim(column.chart->Text())) + ' ' + head;
  } else if (!alone) {
    head = std::string(Quantity(column.chart->Left().Title())) + ' ' + head;
  }
  if (const std::string& unit = column.series->Design().unit; !unit.empty()) {
    head += " (" + unit + ')';
  }
  return head;
}

std::vector<Cell> CellsOf(const std::vector<Column>& columns) {
  std::vector<Cell> cells;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    const Series& series = *columns[c].series;
    for (int i = 0; i < series.Count(); ++i) {
      const Series::Point point = series.At(i);
      if (point.null) continue;
      cells.push_back({std::llround(point.end * kSecondsPerDay * kThousand), c, point.y});
    }
  }
  // Points of one series and moment stay in their order.
  std::stable_sort(cells.begin(), cells.end(),
                   [](const Cell& a, const Cell& b) { return a.moment < b.moment; });
  return cells;
}

std::string MomentText(std::int64_t moment, bool thousandths) {
  std::string text = FormatDateTime({static_cast<double>(moment / kThousand) / kSecondsPerDay},
                                    "yyyy-mm-dd hh:nn:ss");
  if (thousandths) text += '.' + std::to_string(kThousand + moment % kThousand).substr(1);
  return text;
}

}  // namespace

bool HasChartsOverTime(const Window& window) {
  const auto charts = ChartsOf(window);
  return !charts.empty() && std::all_of(charts.begin(), charts.end(), [](const Chart* chart) {
    return !chart->Bottom().LabelFormat().empty();
  });
}

void WriteWindowCsv(const Window& window, std::ostream& out) {
  const std::vector<Column> columns = ColumnsOf(window);
  out << "Time (UTC)";
  for (const Column& column : columns) {
    out << ',';
    WriteCsvCell(out, HeadOf(column, columns));
  }
  out << '\n';
  const std::vector<Cell> cells = CellsOf(columns);
  const bool thousandths = std::any_of(
      cells.begin(), cells.end(), [](const Cell& cell) { return cell.moment % kThousand != 0; });
  for (auto cell = cells.begin(); cell != cells.end();) {
    const std::int64_t moment = cell->moment;
    const auto end = std::find_if(cell, cells.end(),
                                  [moment](const Cell& other) { return other.moment != moment; });
    // A second point of a series at the same moment begins a further row.
    std::vector<Cell> row(cell, end);
    std::stable_sort(row.begin(), row.end(),
                     [](const Cell& a, const Cell& b) { return a.column < b.column; });
    while (!row.empty()) {
      out << MomentText(moment, thousandths);
      std::vector<Cell> left;
      std::size_t written = 0;
      for (const Cell& one : row) {
        if (one.column < written) {
          left.push_back(one);
          continue;
        }
        for (; written <= one.column; ++written) out << ',';
        out << ExactText(one.value);
      }
      for (; written < columns.size(); ++written) out << ',';
      out << '\n';
      row = std::move(left);
    }
    cell = end;
  }
}

}  // namespace fathomline
