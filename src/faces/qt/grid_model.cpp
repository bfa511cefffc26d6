#include "faces/qt/grid_model.h"

#include <algorithm>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"

namespace fathomline {

GridModel::GridModel(const Grid& grid) : grid_(&grid), heads_(grid.ShownHeads()) {
  Follow();
}

void GridModel::Forget() {
  beginResetModel();
  grid_ = nullptr;
  rows_ = columns_ = 0;
  order_.clear();
  endResetModel();
}

QString GridModel::Cell(int gridRow, int gridColumn) const {
  if (grid_ == nullptr || gridRow < 0 || gridRow >= grid_->Rows() || gridColumn < 0 ||
      gridColumn >= grid_->Columns()) {
    return {};
  }
  return ToQt(grid_->Text(gridRow, gridColumn));
}

bool GridModel::Follow() {
  if (grid_ == nullptr) return false;
  bool newColumns = false;
  if (shape_ != grid_->Shape() || longest_.empty()) {
    shape_ = grid_->Shape();
    const int rows = std::max(grid_->Rows() - HeadRows(), 0);
    const int columns = std::max(grid_->Columns() - HeadColumns(), 0);
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(grid_->Columns()));
    for (int i = 0; i < grid_->Columns(); ++i) widths.push_back(grid_->ColumnWidth(i));
    newColumns = columns != columns_ || widths != widths_;
    if (newColumns) {
      beginResetModel();
      rows_ = rows;
      columns_ = columns;
      widths_ = std::move(widths);
      longest_.assign(static_cast<std::size_t>(columns_), 0);
      columnHeads_.clear();
      rowHeads_.clear();
      endResetModel();
    } else {
      FollowShape(rows);
    }
  }
  FollowOrder();
  FollowHeads();
  for (int column = 0; column < columns_; ++column) {
    int& longest = longest_[static_cast<std::size_t>(column)];
    for (int row = 0; row < rows_; ++row) {
      longest =
          std::max(longest, static_cast<int>(grid_->Text(GridRow(row), GridColumn(column)).size()));
    }
  }
  if (rows_ > 0 && columns_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
  return newColumns;
}

void GridModel::FollowShape(int rows) {
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
}

int GridModel::RowOf(int gridRow) const {
  const auto found = std::find(order_.begin(), order_.end(), gridRow);
  const auto row = found - order_.begin();
  if (!order_.empty()) return found == order_.end() ? -1 : static_cast<int>(row);
  return gridRow >= HeadRows() && gridRow - HeadRows() < rows_ ? gridRow - HeadRows() : -1;
}

// What is selected stays selected, wherever its row goes.
void GridModel::FollowOrder() {
  std::vector<int> order;
  if (grid_->ShownOrder().column >= 0) order = grid_->RowsInOrder();
  if (order == order_) return;
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  std::vector<int> rows;
  for (const QModelIndex& index : before) rows.push_back(GridRow(index.row()));
  order_ = std::move(order);
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i) {
    const int row = RowOf(rows[static_cast<std::size_t>(i)]);
    after.append(row < 0 ? QModelIndex() : index(row, before[i].column()));
  }
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

// A changed head makes the view lay out all of its headers, so it is told of real changes only.
void GridModel::FollowHeads() {
  if (HasColumnHeads()) {
    QStringList heads;
    for (int column = 0; column < columns_; ++column) heads.append(ColumnHead(column));
    if (heads != columnHeads_) {
      columnHeads_ = heads;
      if (columns_ > 0) emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
    }
  }
  if (!HasRowHeads()) return;
  bool changed = rowHeads_.size() != rows_;
  rowHeads_.resize(rows_);
  for (int row = 0; row < rows_; ++row) {
    QString head = RowHead(row);
    if (rowHeads_[row] == head) continue;
    longestHead_ = std::max(longestHead_, static_cast<int>(head.size()));
    rowHeads_[row] = std::move(head);
    changed = true;
  }
  if (changed && rows_ > 0) emit headerDataChanged(Qt::Vertical, 0, rows_ - 1);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || index.column() >= columns_) return {};
  const int row = GridRow(index.row());
  const int column = GridColumn(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return HasColumnHeads() ? Cell(row, column) : Cell(row, column).trimmed();
    case Qt::ToolTipRole: {
      const QString text = Cell(row, column);
      return text.size() > kWidestCharacters ? ToolTipOf(text) : QVariant();
    }
    case Qt::TextAlignmentRole: {
      // The values of a form have nothing in common and stand beside their names.
      const bool right = HasColumnHeads() && grid_ != nullptr && !grid_->HoldsText(column);
      return QVariant::fromValue(
          Qt::Alignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
    }
    case Qt::ForegroundRole: {
      const auto colour = grid_->CellColour(row, column);
      return colour ? QVariant(PaintOf(*colour, ColourUse::Text)) : QVariant();
    }
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool across = orientation == Qt::Horizontal;
  if (section < 0 || section >= (across ? columns_ : rows_)) return {};
  if (role == Qt::DisplayRole) {
    if (across) return HasColumnHeads() ? ColumnHead(section) : QString();
    return HasRowHeads() ? RowHead(section) : QString();
  }
  if (role == Qt::ToolTipRole && grid_ != nullptr) {
    const std::string& tip =
        across ? grid_->HeadTip(0, GridColumn(section)) : grid_->HeadTip(GridRow(section), 0);
    return tip.empty() ? QVariant() : ToolTipOf(ToQt(tip));
  }
  if (role == Qt::TextAlignmentRole && !across) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
  }
  return {};
}

}  // namespace fathomline
