// The view of a grid.
#pragma once

#include "platform/grid.h"
#include "platform/qt/control_view.h"

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
  void ShowMenu(const QPoint& at);
  void SaveAsFile();
  void PressRow(int row, const QPoint& at);

  Grid& grid_;
  GridModel* model_;
  Table* table_;
  QLabel* corner_;
  std::vector<int> widths_;
  int headWidth_ = 0;
  std::uint64_t marks_ = 0;
};

}  // namespace fathomline
