// The view of a grid.
#pragma once

#include "faces/qt/control_view.h"
#include "toolkit/grid.h"

class QLabel;
class QTableView;

namespace fathomline {

class GridModel;

class GridView : public ControlView {
 public:
  GridView(ViewContext& context, Grid& grid);
  bool TakesFocus() const override { return true; }
  void Forget() override;

  // The selected cells as lines with tabs between, with their heads if asked for.
  QString SelectedText(bool heads) const;

 protected:
  void Update() override;

 private:
  class Table;

  void Resize();
  // A list has no row heads, a form no column heads; both take the width that there is.
  bool FillsWidth() const;
  void FillWidth();
  void SetWidth(int column, int width);
  void ShowMenu(const QPoint& at);
  void SaveAsFile();
  // The point counts from the corner of the cells.
  void PressRow(int row, const QPoint& at);

  Grid& grid_;
  GridModel* model_;
  Table* table_;
  QLabel* corner_;
  std::vector<int> widths_;  // that the columns want
  std::vector<int> given_;   // that they have been given
  int allWidths_ = 0;
  int shownRows_ = 0;
  int headWidth_ = 0;
  std::uint64_t marks_ = 0;
};

}  // namespace fathomline
