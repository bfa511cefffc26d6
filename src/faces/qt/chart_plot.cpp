#include "faces/qt/chart_plot.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QRubberBand>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fathomline {
namespace {

constexpr double kWheelStep = 0.8;
constexpr double kKeyPan = 0.1;
constexpr int kDragStarts = 4;
// Turns of a wheel that follow each other so quickly are one step to undo.
constexpr qint64 kOneGestureMilliseconds = 700;

}  // namespace

ChartPlot::ChartPlot(Listener& listener) : listener_(listener) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  // A new plot has asked to be drawn by and by. Its view draws it when its window is written; a
  // window of many charts drawn twice is a turn of the event loop that a user feels.
  QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
}

void ChartPlot::SetSizes(const QSize& usual, const QSize& least) {
  if (usual == usual_ && least == least_) return;
  usual_ = usual;
  least_ = least;
  updateGeometry();
}

void ChartPlot::resizeEvent(QResizeEvent* event) {
  listener_.Resized();
  // The plot library complains of a picture without size.
  if (!size().isEmpty()) QCustomPlot::resizeEvent(event);
}

void ChartPlot::paintEvent(QPaintEvent* event) {
  QCustomPlot::paintEvent(event);
  QPainter painter(this);
  listener_.PaintOver(painter);
}

// The strips beside the plot, with or without labels in them.
std::optional<AxisSide> ChartPlot::AxisAt(const QPoint& at) const {
  const QRect area = Area();
  const bool across = at.x() >= area.left() && at.x() <= area.right();
  const bool beside = at.y() >= area.top() && at.y() <= area.bottom();
  if (beside && at.x() < area.left()) return AxisSide::Left;
  if (beside && at.x() > area.right() && yAxis2->visible()) return AxisSide::Right;
  if (across && at.y() > area.bottom()) return AxisSide::Bottom;
  return {};
}

void ChartPlot::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->pos();
  pressedAxis_ = AxisAt(event->pos());
  pressedChip_ = event->button() == Qt::LeftButton && listener_.HeldChip().contains(pressed_);
  pressedCursor_ = false;
  if (event->button() == Qt::LeftButton && !pressedChip_) {
    if (const auto cursor = listener_.CursorLineAt(pressed_)) {
      pressedCursor_ = true;
      listener_.HoldCursor(*cursor);
    }
  }
  dragging_ = false;
  bottomBefore_ = xAxis->range();
  leftBefore_ = yAxis->range();
  rightBefore_ = yAxis2->range();
  event->accept();
}

void ChartPlot::Point(const QPoint& at, const QPoint& global) {
  const bool inside = Area().contains(at);
  const bool chip = listener_.HeldChip().contains(at);
  const bool line = inside && !chip && listener_.CursorLineAt(at);
  const bool hand = chip || AxisAt(at) || listener_.NameAt(at);
  setCursor(hand     ? Qt::PointingHandCursor
            : line   ? Qt::SplitHCursor
            : inside ? Qt::CrossCursor
                     : Qt::ArrowCursor);
  listener_.Hover(inside && !chip ? std::optional(at) : std::nullopt);
  QString tip;
  if (chip) tip = QStringLiteral("A range is held. Click to show all, Backspace for one step.");
  if (line) {
    tip = QStringLiteral(
        "Drag the cursor, or move it with Shift and the arrow keys; Space changes to the other.");
  }
  if (listener_.HeadArea().contains(at)) tip = listener_.HeadText();
  QToolTip::showText(global + QPoint(12, 12), tip, this);
}

void ChartPlot::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->pos();
  if (event->buttons() == Qt::NoButton) {
    Point(at, event->globalPosition().toPoint());
    return;
  }
  if (!dragging_ && (at - pressed_).manhattanLength() < kDragStarts) return;
  if (pressedAxis_ || pressedChip_) return;
  if (pressedCursor_) {
    dragging_ = true;
    listener_.DragCursor(at.x());
    return;
  }
  const bool begins = !std::exchange(dragging_, true);
  listener_.Hover({});
  const bool pans = (event->buttons() & (Qt::RightButton | Qt::MiddleButton)) != 0 ||
                    (event->modifiers() & Qt::ShiftModifier) != 0;
  if (pans) {
    Pan(at);
    listener_.Scroll(true, true, begins ? Chart::Gesture::New : Chart::Gesture::GoesOn);
    return;
  }
  if (band_ == nullptr) band_ = new QRubberBand(QRubberBand::Rectangle, this);
  band_->setGeometry(QRect(pressed_, at).normalized() & Area());
  band_->show();
}

void ChartPlot::mouseReleaseEvent(QMouseEvent* event) {
  if (dragging_ && band_ != nullptr && band_->isVisible()) {
    band_->hide();
    ZoomTo(band_->geometry());
  } else if (!dragging_ && event->button() == Qt::RightButton) {
    listener_.ShowMenu(event->globalPosition().toPoint());
  } else if (!dragging_ && pressedChip_) {
    if (listener_.HeldChip().contains(event->pos())) listener_.ShowAll();
  } else if (const auto name = listener_.NameAt(pressed_);
             !dragging_ && event->button() == Qt::LeftButton && name) {
    if (listener_.NameAt(event->pos()) == name) listener_.ToggleSeries(*name);
  } else if (!dragging_ && event->button() == Qt::LeftButton && pressedAxis_ &&
             AxisAt(event->pos()) == pressedAxis_) {
    // What the click opens may close this window, which must not happen under the mouse event.
    QMetaObject::invokeMethod(
        this, [this, side = *pressedAxis_] { listener_.ClickAxis(side); }, Qt::QueuedConnection);
  }
  dragging_ = pressedChip_ = pressedCursor_ = false;
  pressedAxis_.reset();
}

void ChartPlot::mouseDoubleClickEvent(QMouseEvent* event) {
  if (const auto name = listener_.NameAt(event->pos())) {
    // The second click of two quick ones.
    listener_.ToggleSeries(*name);
    return;
  }
  pressedAxis_ = AxisAt(event->pos());
  pressedChip_ = false;
  if (!pressedAxis_) listener_.UndoZoom();
}

void ChartPlot::wheelEvent(QWheelEvent* event) {
  const QPointF at = event->position();
  if (!Area().contains(at.toPoint())) {
    event->ignore();
    return;
  }
  event->accept();
  const double factor = std::pow(kWheelStep, event->angleDelta().y() / 120.0);
  ZoomBy(factor, at, (event->modifiers() & Qt::ControlModifier) != 0, Continued());
}

Chart::Gesture ChartPlot::Continued() {
  const bool goesOn = lastStep_.isValid() && lastStep_.elapsed() < kOneGestureMilliseconds;
  lastStep_.start();
  return goesOn ? Chart::Gesture::GoesOn : Chart::Gesture::New;
}

void ChartPlot::ZoomBy(double factor, const QPointF& around, bool sides, Chart::Gesture gesture) {
  const bool equal = listener_.EqualScales();
  if (sides || equal) {
    for (QCPAxis* const axis : {yAxis, yAxis2}) {
      axis->scaleRange(factor, axis->pixelToCoord(around.y()));
    }
  }
  if (!sides || equal) xAxis->scaleRange(factor, xAxis->pixelToCoord(around.x()));
  listener_.Zoom(!sides || equal, sides || equal, gesture);
}

void ChartPlot::PanBy(double across, double up) {
  xAxis->moveRange(across * xAxis->range().size());
  for (QCPAxis* const axis : {yAxis, yAxis2}) axis->moveRange(up * axis->range().size());
  listener_.Scroll(across != 0.0, up != 0.0, Continued());
}

bool ChartPlot::CursorKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_C && event.modifiers() == Qt::NoModifier) {
    listener_.ToggleCursors();
    return true;
  }
  if (!listener_.HasCursors()) return false;
  if (event.key() == Qt::Key_Space) {
    listener_.HoldOtherCursor();
    return true;
  }
  const bool steps = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
  if (!steps || (event.modifiers() & Qt::ShiftModifier) == 0) return false;
  constexpr int kPixels = 10;
  const bool fine = (event.modifiers() & Qt::ControlModifier) != 0;
  listener_.StepHeldCursor(event.key() == Qt::Key_Left ? -1 : 1, fine ? 0 : kPixels);
  return true;
}

void ChartPlot::keyPressEvent(QKeyEvent* event) {
  if (CursorKey(*event)) {
    event->accept();
    return;
  }
  const bool sides = (event->modifiers() & Qt::ControlModifier) != 0;
  const QPointF middle = QRectF(Area()).center();
  switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
      listener_.UndoZoom();
      break;
    case Qt::Key_Home:
      listener_.ShowAll();
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ZoomBy(kWheelStep, middle, sides, Continued());
      break;
    case Qt::Key_Minus:
      ZoomBy(1.0 / kWheelStep, middle, sides, Continued());
      break;
    case Qt::Key_Left:
      PanBy(-kKeyPan, 0.0);
      break;
    case Qt::Key_Right:
      PanBy(kKeyPan, 0.0);
      break;
    case Qt::Key_Up:
      PanBy(0.0, kKeyPan);
      break;
    case Qt::Key_Down:
      PanBy(0.0, -kKeyPan);
      break;
    default:
      QCustomPlot::keyPressEvent(event);
      event->ignore();
      return;
  }
  event->accept();
}

void ChartPlot::leaveEvent(QEvent* event) {
  QCustomPlot::leaveEvent(event);
  listener_.Hover({});
}

void ChartPlot::contextMenuEvent(QContextMenuEvent* event) {
  // The right button also drags, so its menu comes when it is released.
  if (event->reason() == QContextMenuEvent::Keyboard) listener_.ShowMenu(event->globalPos());
}

void ChartPlot::Pan(const QPoint& at) {
  const auto shift = [](QCPAxis& axis, const QCPRange& before, double from, double to) {
    axis.setRange(before);
    const double by = axis.pixelToCoord(from) - axis.pixelToCoord(to);
    axis.setRange(before.lower + by, before.upper + by);
  };
  shift(*xAxis, bottomBefore_, pressed_.x(), at.x());
  shift(*yAxis, leftBefore_, pressed_.y(), at.y());
  shift(*yAxis2, rightBefore_, pressed_.y(), at.y());
}

void ChartPlot::ZoomTo(const QRect& area) {
  if (area.width() < kDragStarts || area.height() < kDragStarts) return;
  const auto zoom = [](QCPAxis& axis, double from, double to) {
    const double a = axis.pixelToCoord(from);
    const double b = axis.pixelToCoord(to);
    axis.setRange(std::min(a, b), std::max(a, b));
  };
  zoom(*xAxis, area.left(), area.right());
  zoom(*yAxis, area.bottom(), area.top());
  zoom(*yAxis2, area.bottom(), area.top());
  listener_.Zoom(true, true, Chart::Gesture::New);
}

}  // namespace fathomline
