// The area of the main window in which the child windows stand.
#pragma once

#include <QSize>

class QMainWindow;
class QMdiArea;
class QWidget;

namespace fathomline {

// Becomes the middle of the main window.
QMdiArea* MakeChildArea(QMainWindow& main);
// The room for child windows, whether or not scroll bars take some of it at present.
QSize RoomOf(const QMdiArea& area);
// Minimised windows in rows from the lower left corner.
void ArrangeIconsOf(const QMdiArea& area);
// What the main window says of itself stands in the middle of the area while that is empty.
void PlaceWelcome(const QMdiArea& area, QWidget& words, bool wanted);

}  // namespace fathomline
