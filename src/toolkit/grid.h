// A table of text cells. Rows are stored when something is first written into them, so that a
// table may have many rows of which few are filled.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/control.h"

namespace fathomline {

class Grid : public Control {
 public:
  // The heads are the first rows and columns, those that stay when the rest is scrolled.
  struct Heads {
    int rows = 1;
    int columns = 1;
  };

  Grid(Parent parent, std::string_view name, int rows, int columns, Heads heads = {1, 1});

  int Rows() const { return static_cast<int>(state_.rows.size()); }
  int Columns() const { return state_.columns; }
  Heads ShownHeads() const { return heads_; }
  // Cells beyond the new size are forgotten.
  void SetRows(int rows);
  void SetColumns(int columns);
  // Twips; 0 leaves the width to the desktop.
  int ColumnWidth(int column) const;
  void SetColumnWidth(int column, int twips);

  // A column of figures, as all are from the beginning, stands right-aligned, one of texts
  // left-aligned.
  bool HoldsText(int column) const;
  void SetHoldsText(int column);

  // Both count from 0. A cell that is not there raises OutOfRange.
  const std::string& Text(int row, int column) const;
  void Set(int row, int column, std::string_view text);

  // Of the text of a cell; none: as the desktop draws such texts.
  std::optional<Colour> CellColour(int row, int column) const;
  void SetCellColour(int row, int column, std::optional<Colour> colour);

  // What is told of a head, of a column or a row, to who points at it: what stands there and in
  // which unit. To set it for a cell that is not there raises OutOfRange.
  const std::string& HeadTip(int row, int column) const;
  void SetHeadTip(int row, int column, std::string_view text);

  // The row that the program has picked out, such as one that was searched for; 0 for none. The
  // desktop selects it and brings it into view whenever the number of marks has grown.
  void MarkRow(int row);
  int MarkedRow() const { return markedRow_; }
  std::uint64_t Marks() const { return marks_; }

  // All rows, heads first, in the order in which they are seen, as comma-separated values (RFC
  // 4180, but for its line ends: LF).
  void WriteCsv(std::ostream& out) const;

  // Grows when rows, columns or widths change; the revision grows with the texts too.
  std::uint64_t Shape() const { return shape_; }

  // The column by which the rows stand in order, for the desktop to mark; none: -1, and the rows
  // stand as they came.
  struct Order {
    int column = -1;
    bool descending = false;

    bool operator==(const Order&) const = default;
  };
  const Order& ShownOrder() const { return order_; }
  void SetOrder(Order order) { Change(order_, order); }

  // Lets the user put the rows of a list in order. The cells stay where they are; it is the desktop
  // that shows them by RowsInOrder.
  void SetSortable() { sortable_ = true; }
  bool Sortable() const { return sortable_; }
  // The value of a cell in a column of figures, none where it has none. Without it they stand in
  // order by the number that their text begins with. Cells without a value come last.
  std::function<std::optional<double>(int row, int column)> sortKey;
  // The rows below the head rows as they are to be seen: all, by number.
  std::vector<int> RowsInOrder() const;

  // A list of so few rows that it leaves the room below them to what else stands in the window.
  void SetFewRows() { fewRows_ = true; }
  bool FewRows() const { return fewRows_; }

  // The user clicks the head of a column: a sortable list is put in order by it, then in the
  // opposite order, then as its rows came. Only a grid with a handler, or a sortable one, can be
  // clicked there.
  void ClickHead(int column);
  bool HeadsClickable() const { return sortable_ || onClickHead; }
  std::function<void(int column)> onClickHead;

  // The user clicks into a row with the left button; x and y in twips from the window's corner.
  void ClickRow(int row, int x, int y);
  std::function<void(int row, int x, int y)> onClickRow;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  struct Cells {
    std::vector<std::vector<std::string>> rows;  // a row is empty until it is written
    std::map<std::pair<int, int>, Colour> colours;
    std::vector<int> widths;
    int columns = 0;

    bool operator==(const Cells&) const = default;
  };

  void Check(int row, int column) const;
  void Reshape();
  void NextOrder(int column);

  Heads heads_;
  std::vector<int> textColumns_;
  std::map<std::pair<int, int>, std::string> headTips_;
  Cells state_;
  Cells design_;
  Order order_;
  std::uint64_t shape_ = 0;
  std::uint64_t marks_ = 0;
  int markedRow_ = 0;
  bool sortable_ = false;
  bool fewRows_ = false;
};

}  // namespace fathomline
