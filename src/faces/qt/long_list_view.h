// The view of a long list: a table of the rows that are looked at.
#pragma once

#include <cstdint>

#include "faces/qt/control_view.h"
#include "toolkit/long_list.h"

namespace fathomline {

class LongListModel;

class LongListView : public ControlView {
 public:
  LongListView(ViewContext& context, LongList& list);
  bool TakesFocus() const override { return true; }
  void Forget() override;

 protected:
  void Update() override;

 private:
  class Table;

  void TakeSelection();
  void ShowMenu(const QPoint& at);

  LongList& list_;
  LongListModel* model_;
  Table* table_;
  std::uint64_t marks_ = 0;
};

}  // namespace fathomline
