#include "faces/qt/child_area.h"

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>

#include "faces/qt/look.h"

namespace fathomline {
QMdiArea* MakeChildArea(QMainWindow& main) {
  auto* const area = new QMdiArea(&main);
  area->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area->setBackground(PaintOf(look::kChildArea));
  main.setCentralWidget(area);
  return area;
}

QSize RoomOf(const QMdiArea& area) {
  return area.maximumViewportSize();
}

void ArrangeIconsOf(const QMdiArea& area) {
  const QSize room = RoomOf(area);
  int x = 0;
  int y = room.height();
  for (QMdiSubWindow* const child : area.subWindowList()) {
    if (!child->isVisible() || !child->isMinimized()) continue;
    if (x + child->width() > room.width() && x > 0) {
      x = 0;
      y -= child->height();
    }
    child->move(x, y - child->height());
    x += child->width();
  }
}

void PlaceWelcome(const QMdiArea& area, QWidget& words, bool wanted) {
  const auto children = area.subWindowList();
  const bool empty = std::none_of(children.begin(), children.end(),
                                  [](const QMdiSubWindow* child) { return child->isVisible(); });
  words.setVisible(empty && wanted);
  if (!empty || !wanted) return;
  const QSize size = words.sizeHint();
  const QSize room = area.viewport()->size();
  words.setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 3,
                    size.width(), size.height());
  words.lower();
}

}  // namespace fathomline
