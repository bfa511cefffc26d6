#include "faces/qt/flow_layout.h"

#include <algorithm>
#include <utility>

namespace fathomline {

FlowLayout::FlowLayout(int spacing) {
  setSpacing(spacing);
  setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
  // A layout among them takes itself out as it goes.
  while (QLayoutItem* const item = takeAt(0)) delete item;
}

void FlowLayout::addLayout(QLayout* layout) {
  addChildLayout(layout);
  addItem(layout);
}

QLayoutItem* FlowLayout::takeAt(int index) {
  return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

QSize FlowLayout::sizeHint() const {
  QSize size;
  for (const QLayoutItem* const item : items_) {
    if (item->isEmpty()) continue;
    const QSize hint = item->sizeHint();
    const int gap = size.width() > 0 ? spacing() : 0;
    size = {size.width() + gap + hint.width(), std::max(size.height(), hint.height())};
  }
  return size.expandedTo(QSize(0, height_));
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const QLayoutItem* const item : items_) {
    if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
  }
  return size.expandedTo(QSize(0, height_));
}

void FlowLayout::setGeometry(const QRect& area) {
  QLayout::setGeometry(area);
  const int height = Flow(area, true);
  if (std::exchange(height_, height) != height) invalidate();
}

int FlowLayout::Flow(const QRect& area, bool place) const {
  int y = area.y();
  for (qsizetype first = 0; first < items_.size();) {
    int width = 0;
    int height = 0;
    qsizetype behind = first;
    for (; behind < items_.size(); ++behind) {
      const QLayoutItem* const item = items_[behind];
      if (item->isEmpty()) continue;
      const int gap = width > 0 ? spacing() : 0;
      if (width > 0 && width + gap + item->sizeHint().width() > area.width()) break;
      width += gap + item->sizeHint().width();
      height = std::max(height, item->sizeHint().height());
    }
    int x = area.x();
    for (qsizetype i = first; place && i < behind; ++i) {
      if (items_[i]->isEmpty()) continue;
      const QSize size = items_[i]->sizeHint();
      items_[i]->setGeometry({x, y + (height - size.height()) / 2, size.width(), size.height()});
      x += size.width() + spacing();
    }
    y += height + (behind < items_.size() && height > 0 ? spacing() : 0);
    first = behind;
  }
  return y - area.y();
}

}  // namespace fathomline
