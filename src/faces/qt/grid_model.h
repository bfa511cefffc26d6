// The item model behind every grid: the cells below and beside the heads, read in place.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "toolkit/grid.h"

namespace fathomline {

// Columns make room for texts of up to so many characters; longer ones can be read in a tool tip.
inline constexpr int kWidestCharacters = 32;

// The first head row and the first head column are the headers of the model; further ones stay
// among its cells.
class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid& grid);

  // Takes over what has changed in the grid since the last time. Selection and current cell of a
  // view stay where rows only come or go at the end. Returns whether the columns are new.
  bool Follow();
  // The plain grid has gone; the model is empty from now on.
  void Forget();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // Of the grid, for a row or column of the model.
  int GridRow(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return at < order_.size() ? order_[at] : row + HeadRows();
  }
  // The row of the model that shows a row of the grid; none of them: -1.
  int RowOf(int gridRow) const;
  int GridColumn(int column) const { return column + HeadColumns(); }
  QString Cell(int gridRow, int gridColumn) const;
  bool HasRowHeads() const { return HeadColumns() > 0; }
  bool HasColumnHeads() const { return HeadRows() > 0; }
  // Length in characters of the longest text that a column, or the row heads, have shown.
  int Longest(int column) const { return longest_[static_cast<std::size_t>(column)]; }
  int LongestRowHead() const { return longestHead_; }

 private:
  int HeadRows() const { return std::min(heads_.rows, 1); }
  int HeadColumns() const { return std::min(heads_.columns, 1); }
  QString ColumnHead(int column) const { return Cell(0, GridColumn(column)); }
  QString RowHead(int row) const { return Cell(GridRow(row), 0); }
  void FollowShape(int rows);
  void FollowHeads();
  void FollowOrder();

  const Grid* grid_;
  Grid::Heads heads_;
  int rows_ = 0;
  int columns_ = 0;
  // The grid's rows as they are shown; empty while they stand as they came.
  std::vector<int> order_;
  std::uint64_t shape_ = 0;
  std::vector<int> widths_;
  std::vector<int> longest_;
  int longestHead_ = 0;
  QStringList columnHeads_;
  QStringList rowHeads_;
};

}  // namespace fathomline
