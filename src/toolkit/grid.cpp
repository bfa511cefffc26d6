#include "toolkit/grid.h"

#include <algorithm>
#include <ostream>

#include "base/csv.h"
#include "toolkit/window.h"

namespace fathomline {

namespace {

const std::string kEmptyCell;

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

void Grid::MarkRow(int row) {
  if (row < 0 || row >= Rows()) Raise(FaultNumber::OutOfRange);
  markedRow_ = row;
  ++marks_;
  Touch();
}

void Grid::WriteCsv(std::ostream& out) const {
  for (int row = 0; row < Rows(); ++row) {
    for (int column = 0; column < Columns(); ++column) {
      if (column > 0) out << ',';
      WriteCsvCell(out, Text(row, column));
    }
    out << '\n';
  }
}

void Grid::ClickRow(int row, int x, int y) {
  OwningWindow().UserAct(*this, [=, this] {
    if (onClickRow) onClickRow(row, x, y);
  });
}

void Grid::ClickHead(int column) {
  OwningWindow().UserAct(*this, [this, column] {
    if (onClickHead) onClickHead(column);
  });
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
