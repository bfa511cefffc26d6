#include "toolkit/grid.h"

#include <algorithm>
#include <compare>
#include <numeric>
#include <ostream>

#include "base/csv.h"
#include "base/numbers.h"
#include "base/text.h"
#include "toolkit/window.h"

namespace fathomline {

namespace {

const std::string kEmptyCell;

enum class SortRank : std::uint8_t { Number, Text, None };

// By what a cell stands in order: numbers before texts.
struct SortKey {
  SortRank rank = SortRank::None;
  double number = 0.0;
  std::string text = {};

  auto operator<=>(const SortKey&) const = default;
};

SortKey KeyOf(const Grid& grid, int row, int column) {
  const bool figures = !grid.HoldsText(column);
  if (figures && grid.sortKey) {
    const auto value = grid.sortKey(row, column);
    return value ? SortKey{SortRank::Number, *value} : SortKey{};
  }
  const std::string_view text = Trim(grid.Text(row, column));
  if (text.empty() || text == "n/a") return {};
  const auto digit = text.find_first_not_of("+-.");
  const bool number = digit < 2 && text[digit] >= '0' && text[digit] <= '9';
  if (figures && number) return {SortRank::Number, ReadNumber(text), std::string(text)};
  return {SortRank::Text, 0.0, UpperCase(text)};
}

std::size_t Size(int count) {
  return static_cast<std::size_t>(std::max(count, 0));
}

}  // namespace

Grid::Grid(Parent parent, std::string_view name, int rows, int columns, Heads heads)
    : Control(ControlKind::Grid, parent, name), heads_(heads) {
  state_.rows.resize(Size(rows));
  state_.widths.resize(Size(columns));
  state_.columns = std::max(columns, 0);
}

void Grid::Check(int row, int column) const {
  if (row < 0 || row >= Rows() || column < 0 || column >= Columns()) {
    Raise(FaultNumber::OutOfRange);
  }
}

void Grid::Reshape() {
  ++shape_;
  Touch();
}

void Grid::SetRows(int rows) {
  if (Size(rows) == state_.rows.size()) return;
  state_.rows.resize(Size(rows));
  state_.colours.erase(state_.colours.lower_bound({rows, 0}), state_.colours.end());
  Reshape();
}

void Grid::SetColumns(int columns) {
  if (std::max(columns, 0) == state_.columns) return;
  state_.columns = std::max(columns, 0);
  state_.widths.resize(Size(columns));
  for (auto& row : state_.rows) {
    if (row.size() > Size(columns)) row.resize(Size(columns));
  }
  Reshape();
}

int Grid::ColumnWidth(int column) const {
  if (column < 0 || column >= Columns()) Raise(FaultNumber::OutOfRange);
  return state_.widths[Size(column)];
}

void Grid::SetColumnWidth(int column, int twips) {
  if (ColumnWidth(column) == twips) return;
  state_.widths[Size(column)] = twips;
  Reshape();
}

bool Grid::HoldsText(int column) const {
  return std::find(textColumns_.begin(), textColumns_.end(), column) != textColumns_.end();
}

void Grid::SetHoldsText(int column) {
  if (!HoldsText(column)) textColumns_.push_back(column);
}

const std::string& Grid::Text(int row, int column) const {
  Check(row, column);
  const auto& cells = state_.rows[Size(row)];
  return Size(column) < cells.size() ? cells[Size(column)] : kEmptyCell;
}

void Grid::Set(int row, int column, std::string_view text) {
  Check(row, column);
  auto& cells = state_.rows[Size(row)];
  if (Size(column) >= cells.size()) {
    if (text.empty()) return;
    cells.resize(Size(Columns()));
  }
  Change(cells[Size(column)], text);
}

std::optional<Colour> Grid::CellColour(int row, int column) const {
  const auto found = state_.colours.find({row, column});
  return found == state_.colours.end() ? std::optional<Colour>() : found->second;
}

void Grid::SetCellColour(int row, int column, std::optional<Colour> colour) {
  Check(row, column);
  if (CellColour(row, column) == colour) return;
  if (colour) {
    state_.colours[{row, column}] = *colour;
  } else {
    state_.colours.erase({row, column});
  }
  Touch();
}

const std::string& Grid::HeadTip(int row, int column) const {
  const auto found = headTips_.find({row, column});
  return found == headTips_.end() ? kEmptyCell : found->second;
}

void Grid::SetHeadTip(int row, int column, std::string_view text) {
  Check(row, column);
  headTips_.insert_or_assign({row, column}, std::string(text));
}

void Grid::MarkRow(int row) {
  if (row < 0 || row >= Rows()) Raise(FaultNumber::OutOfRange);
  markedRow_ = row;
  ++marks_;
  Touch();
}

void Grid::WriteCsv(std::ostream& out) const {
  const auto write = [&](int row) {
    for (int column = 0; column < Columns(); ++column) {
      if (column > 0) out << ',';
      WriteCsvCell(out, Text(row, column));
    }
    out << '\n';
  };
  for (int row = 0; row < std::min(heads_.rows, Rows()); ++row) write(row);
  for (const int row : RowsInOrder()) write(row);
}

void Grid::ClickRow(int row, int x, int y) {
  OwningWindow().UserAct(*this, [=, this] {
    if (onClickRow) onClickRow(row, x, y);
  });
}

void Grid::ClickHead(int column) {
  OwningWindow().UserAct(*this, [this, column] {
    if (sortable_) NextOrder(column);
    if (onClickHead) onClickHead(column);
  });
}

void Grid::NextOrder(int column) {
  if (order_.column != column) {
    SetOrder({column, false});
  } else if (!order_.descending) {
    SetOrder({column, true});
  } else {
    SetOrder({});
  }
}

std::vector<int> Grid::RowsInOrder() const {
  const int heads = std::min(heads_.rows, Rows());
  std::vector<int> rows(Size(Rows() - heads));
  std::iota(rows.begin(), rows.end(), heads);
  if (order_.column < 0 || order_.column >= Columns()) return rows;
  std::vector<SortKey> keys(Size(Rows()));
  for (const int row : rows) keys[Size(row)] = KeyOf(*this, row, order_.column);
  std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
    const SortKey& first = keys[Size(order_.descending ? b : a)];
    const SortKey& second = keys[Size(order_.descending ? a : b)];
    // What has no value comes last whichever way the others run.
    const bool noA = keys[Size(a)].rank == SortRank::None;
    const bool noB = keys[Size(b)].rank == SortRank::None;
    if (noA || noB) return !noA && noB;
    return first < second;
  });
  return rows;
}

void Grid::Seal() {
  Control::Seal();
  design_ = state_;
}

void Grid::Reset() {
  Control::Reset();
  markedRow_ = 0;
  order_ = {};
  if (state_ == design_) return;
  state_ = design_;
  Reshape();
}

}  // namespace fathomline
