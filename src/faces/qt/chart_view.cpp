#include "faces/qt/chart_view.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QRubberBand>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <qcustomplot.h>
#include <sstream>

#include "base/datetime.h"
#include "base/numbers.h"
#include "faces/qt/chart_parts.h"
#include "faces/qt/conversions.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_face.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

constexpr QSize kUsualSize{640, 170};
// Four of them stand side by side on a small screen.
constexpr QSize kLeastSize{250, 110};
// The same for every chart, so that the time axes of stacked charts stand under each other.
struct SideMargins {
  int left;
  int right;
  int withoutAxis;
};
constexpr SideMargins kUsualMargins{82, 66, 30};
constexpr SideMargins kNarrowMargins{62, 56, 30};
constexpr int kNarrow = 420;
constexpr int kTopMargin = 6;
constexpr int kTickRoom = 8;
constexpr int kTicksApart = 46;
constexpr double kAroundAutomatic = 0.05;
constexpr double kWheelStep = 0.8;
constexpr int kDragStarts = 4;
constexpr double kNarrowestAxis = 1e-9;

// Black, navy and blue stand out from it as well as white, yellow and cyan do.
constexpr QRgb kPlotGround = 0xFFA6ACB2;
constexpr QRgb kGridLines = 0xFF979DA3;
constexpr QRgb kFrameLines = 0xFF404040;

double Step(const QCPRange& range) {
  return range.size() / 5.0;
}

// Digits that tell two neighbouring ticks apart without an exponent.
int Digits(const QCPRange& range) {
  const double largest = std::max({std::abs(range.lower), std::abs(range.upper), 1e-12});
  const double step = std::max(Step(range), 1e-12);
  const int apart = static_cast<int>(std::ceil(std::log10(largest / step))) + 2;
  const int whole = static_cast<int>(std::floor(std::log10(largest))) + 2;
  return std::clamp(std::max(apart, whole), 4, 14);
}

}  // namespace

class ChartView::Plot : public QCustomPlot {
 public:
  explicit Plot(ChartView& view) : view_(view) {
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(kLeastSize);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }

  QSize sizeHint() const override { return kUsualSize; }
  QSize minimumSizeHint() const override { return kLeastSize; }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    view_.Fit();
    QCustomPlot::resizeEvent(event);
  }

  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = event->pos();
    pressedAxis_ = AxisAt(event->pos());
    dragging_ = false;
    bottomBefore_ = xAxis->range();
    leftBefore_ = yAxis->range();
    rightBefore_ = yAxis2->range();
    event->accept();
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    const QPoint at = event->pos();
    if (event->buttons() == Qt::NoButton) {
      setCursor(AxisAt(at) != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor);
      const QString text = axisRect()->rect().contains(at) ? view_.ReadOut(at) : QString();
      QToolTip::showText(event->globalPosition().toPoint() + QPoint(14, 10), text, this);
      return;
    }
    if (!dragging_ && (at - pressed_).manhattanLength() < kDragStarts) return;
    if (pressedAxis_ != nullptr) return;
    dragging_ = true;
    if (Pans(*event)) {
      Pan(at);
      return;
    }
    if (band_ == nullptr) band_ = new QRubberBand(QRubberBand::Rectangle, this);
    band_->setGeometry(QRect(pressed_, at).normalized() & axisRect()->rect());
    band_->show();
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (dragging_ && band_ != nullptr && band_->isVisible()) {
      band_->hide();
      ZoomTo(band_->geometry());
    } else if (!dragging_ && event->button() == Qt::RightButton) {
      view_.ShowMenu(event->globalPosition().toPoint());
    } else if (!dragging_ && event->button() == Qt::LeftButton && pressedAxis_ != nullptr &&
               AxisAt(event->pos()) == pressedAxis_) {
      const AxisSide side = pressedAxis_ == xAxis   ? AxisSide::Bottom
                            : pressedAxis_ == yAxis ? AxisSide::Left
                                                    : AxisSide::Right;
      // What the click opens may close this window, which must not happen under the mouse event.
      QMetaObject::invokeMethod(
          this, [this, side] { view_.ClickAxis(side); }, Qt::QueuedConnection);
    }
    dragging_ = false;
    pressedAxis_ = nullptr;
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override {
    pressedAxis_ = AxisAt(event->pos());
    if (pressedAxis_ == nullptr) view_.UndoZoom();
  }

  void wheelEvent(QWheelEvent* event) override {
    const QPointF at = event->position();
    if (!axisRect()->rect().contains(at.toPoint())) {
      event->ignore();
      return;
    }
    const double factor = std::pow(kWheelStep, event->angleDelta().y() / 120.0);
    const bool sides = (event->modifiers() & Qt::ControlModifier) != 0;
    if (sides) {
      for (QCPAxis* const axis : {yAxis, yAxis2}) {
        axis->scaleRange(factor, axis->pixelToCoord(at.y()));
      }
    } else {
      xAxis->scaleRange(factor, xAxis->pixelToCoord(at.x()));
    }
    event->accept();
    view_.Zoom(view_.PlotRanges(!sides, sides));
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    // The right button also drags, so its menu comes when it is released.
    if (event->reason() == QContextMenuEvent::Keyboard) view_.ShowMenu(event->globalPos());
  }

 private:
  static bool Pans(const QMouseEvent& event) {
    return (event.buttons() & (Qt::RightButton | Qt::MiddleButton)) != 0 ||
           (event.modifiers() & Qt::ShiftModifier) != 0;
  }

  QCPAxis* AxisAt(const QPoint& at) const {
    for (QCPAxis* const axis : {xAxis, yAxis, yAxis2}) {
      if (axis->visible() && axis->getPartAt(at) != QCPAxis::spNone) return axis;
    }
    return nullptr;
  }

  void Pan(const QPoint& at) {
    const auto shift = [](QCPAxis& axis, const QCPRange& before, double from, double to) {
      axis.setRange(before);
      const double by = axis.pixelToCoord(from) - axis.pixelToCoord(to);
      axis.setRange(before.lower + by, before.upper + by);
    };
    shift(*xAxis, bottomBefore_, pressed_.x(), at.x());
    shift(*yAxis, leftBefore_, pressed_.y(), at.y());
    shift(*yAxis2, rightBefore_, pressed_.y(), at.y());
    view_.Scroll(view_.PlotRanges(true, true));
  }

  void ZoomTo(const QRect& area) {
    if (area.width() < kDragStarts || area.height() < kDragStarts) return;
    const auto zoom = [](QCPAxis& axis, double from, double to) {
      const double a = axis.pixelToCoord(from);
      const double b = axis.pixelToCoord(to);
      axis.setRange(std::min(a, b), std::max(a, b));
    };
    zoom(*xAxis, area.left(), area.right());
    zoom(*yAxis, area.bottom(), area.top());
    zoom(*yAxis2, area.bottom(), area.top());
    view_.Zoom(view_.PlotRanges(true, true));
  }

  ChartView& view_;
  QPoint pressed_;
  QCPAxis* pressedAxis_ = nullptr;
  QRubberBand* band_ = nullptr;
  QCPRange bottomBefore_;
  QCPRange leftBefore_;
  QCPRange rightBefore_;
  bool dragging_ = false;
};

ChartView::ChartView(ViewContext& context, Chart& chart)
    : ControlView(context, chart),
      chart_(chart),
      plot_(new Plot(*this)),
      timeTicker_(std::make_shared<TimeTicker>()) {
  Build();
  Style();
  SetWidget(plot_);
}

void ChartView::Build() {
  plot_->setMouseTracking(true);
  // Figures look the same everywhere in the program, whatever the language of the desktop.
  plot_->setLocale(QLocale::c());
  plot_->legend->setVisible(false);
  plot_->yAxis2->setVisible(false);
  plot_->plotLayout()->insertRow(0);
  plot_->plotLayout()->setRowSpacing(0);
  strip_ = new LegendStrip(plot_, chart_);
  plot_->plotLayout()->addElement(0, 0, strip_);
  plot_->axisRect()->setAutoMargins(QCP::msNone);
  // The plottables of series stand above the markers, which are drawn with the layer's first.
  new MarkerLayer(plot_, chart_);
  plot_->setNoAntialiasingOnDrag(true);
  // A layer of its own would be a second picture to clear and to lay over the first.
  plot_->layer(QStringLiteral("overlay"))->setMode(QCPLayer::lmLogical);
}

void ChartView::Style() {
  plot_->setBackground(plot_->palette().window());
  plot_->axisRect()->setBackground(QBrush(QColor{kPlotGround}));
  plot_->xAxis2->setVisible(true);
  plot_->xAxis2->setTicks(false);
  plot_->xAxis2->setTickLabels(false);
  for (QCPAxis* const axis : {plot_->xAxis, plot_->yAxis, plot_->yAxis2, plot_->xAxis2}) {
    axis->setBasePen(QPen(QColor{kFrameLines}));
    axis->setTickPen(QPen(QColor{kFrameLines}));
    axis->setSubTickPen(QPen(QColor{kFrameLines}));
    axis->grid()->setPen(QPen(QColor{kGridLines}, 1, Qt::SolidLine));
    axis->grid()->setZeroLinePen(QPen(QColor{kFrameLines}, 0, Qt::DotLine));
    axis->setTickLabelFont(plot_->font());
    axis->setLabelFont(plot_->font());
    axis->setLabelPadding(2);
    axis->setTickLabelPadding(4);
  }
}

void ChartView::FollowSeries() {
  std::vector<bool> sides;
  sides.reserve(static_cast<std::size_t>(chart_.SeriesCount()));
  for (int i = 0; i < chart_.SeriesCount(); ++i) sides.push_back(chart_.Series(i).RightAxis());
  if (sides == sides_) return;
  sides_ = sides;
  plot_->clearPlottables();
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    QCPAxis* const side = sides_[static_cast<std::size_t>(i)] ? plot_->yAxis2 : plot_->yAxis;
    new SeriesPlottable(plot_->xAxis, side, chart_, i);
  }
}

void ChartView::FollowAxis(QCPAxis& axis, const Axis& plain) {
  const bool bottom = plain.Side() == AxisSide::Bottom;
  if (bottom) axis.setLabel(ToQt(plain.Title()));
  axis.setVisible(plain.Visible());
  const AxisRange range = plain.Range();
  double low = std::min(range.low, range.high);
  double high = std::max(range.low, range.high);
  if (bottom) {
    const BottomScale scale = ScaleOf(chart_);
    low = scale.ToPlot(low);
    high = scale.ToPlot(high);
    if (!scale.time) {
      axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    } else {
      const auto keep = timeTicker_;
      axis.setTicker(QSharedPointer<QCPAxisTicker>(timeTicker_.get(), [keep](QCPAxisTicker*) {}));
    }
  } else {
    const auto room = RoomAround(plain);
    low -= room.low * (high - low);
    high += room.high * (high - low);
  }
  const double least = std::max(std::abs(high) * 1e-14, kNarrowestAxis);
  if (!(high - low > least)) high = low + std::max(least, 1e-6);
  axis.setRange(low, high);
  axis.setNumberFormat(QStringLiteral("g"));
  axis.setNumberPrecision(Digits(axis.range()));
}

// What an axis shows beyond its ends, as shares of its range.
AxisRange ChartView::RoomAround(const Axis& axis) const {
  if (axis.Zoom()) return {0.0, 0.0};
  bool used = false;
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const auto& series = chart_.Series(i);
    if (series.RightAxis() != (axis.Side() == AxisSide::Right)) continue;
    used = true;
    // A thick bar on the edge would be cut in two.
    if (series.Kind() == SeriesKind::Gantt) return {kAroundAutomatic, kAroundAutomatic};
  }
  // A right axis without a series is a second scale of the left one.
  if (!used && axis.Side() == AxisSide::Right) return RoomAround(chart_.Left());
  // A curve that touches the frame is hard to tell from it.
  const auto room = [&](bool automatic) {
    return axis.Automatic() || automatic ? kAroundAutomatic : 0.0;
  };
  return {room(axis.AutomaticMinimum()), room(axis.AutomaticMaximum())};
}

void ChartView::Update() {
  FollowSeries();
  FollowAxis(*plot_->xAxis, chart_.Bottom());
  FollowAxis(*plot_->yAxis, chart_.Left());
  FollowAxis(*plot_->yAxis2, chart_.Right());
  plot_->setAccessibleName(chart_.Text().empty() ? SpokenName() : ToQt(chart_.Text()));
  Fit();
  plot_->replot(QCustomPlot::rpQueuedRefresh);
}

bool ChartView::Scattered() const {
  return chart_.SeriesCount() > 0 && chart_.Series(0).Kind() == SeriesKind::Points;
}

// Charts of one window stand under each other, so all leave room for an axis that one of them has.
bool ChartView::AnyRightAxis() const {
  const auto& controls = Context().window->Controls();
  return std::any_of(controls.begin(), controls.end(), [](const Control* control) {
    return control->Kind() == ControlKind::Chart && control->Shown() &&
           static_cast<const Chart*>(control)->Right().Visible();
  });
}

// Room for legend and labels, and no more ticks than have room.
void ChartView::Fit() {
  if (Context().window == nullptr) return;
  strip_->Arrange(plot_->size());
  const bool time = ScaleOf(chart_).time;
  const QFontMetrics metrics = plot_->fontMetrics();
  const int lines = (time ? TimeTicker::Lines(plot_->xAxis->range()) : 1) +
                    (chart_.Bottom().Title().empty() ? 0 : 1);
  const int bottom = kTickRoom + lines * metrics.height();
  const SideMargins& sides = plot_->width() < kNarrow ? kNarrowMargins : kUsualMargins;
  QMargins margins(sides.left, kTopMargin, AnyRightAxis() ? sides.right : sides.withoutAxis,
                   bottom);
  int width = plot_->width() - margins.left() - margins.right();
  int height = plot_->height() - bottom - kTopMargin - strip_->minimumSize().height();
  if (Scattered()) {
    // Metres are as long to the north as to the east.
    const int side = std::max(std::min(width, height), 1);
    margins += QMargins((width - side) / 2, 0, width - side - (width - side) / 2, height - side);
    width = height = side;
  }
  plot_->axisRect()->setMargins(margins);
  if (time) {
    timeTicker_->Fit(chart_.Bottom().LabelFormat(), width, metrics);
  } else {
    const int label = metrics.horizontalAdvance(QStringLiteral("00000.00"));
    plot_->xAxis->ticker()->setTickCount(std::clamp(width / (label * 2), 2, 10));
  }
  for (const Axis* const plain : {&chart_.Left(), &chart_.Right()}) {
    QCPAxis& axis = plain == &chart_.Left() ? *plot_->yAxis : *plot_->yAxis2;
    axis.ticker()->setTickCount(std::clamp(height / kTicksApart + 1, 2, 10));
    axis.setLabel(metrics.elidedText(ToQt(plain->Title()), Qt::ElideRight, std::max(height, 1)));
  }
}

Chart::Ranges ChartView::PlotRanges(bool bottom, bool sides) const {
  const auto range = [](const QCPAxis& axis) {
    return AxisRange{axis.range().lower, axis.range().upper};
  };
  Chart::Ranges ranges;
  if (bottom) {
    const BottomScale scale = ScaleOf(chart_);
    const AxisRange plot = range(*plot_->xAxis);
    ranges.bottom = AxisRange{scale.FromPlot(plot.low), scale.FromPlot(plot.high)};
  }
  if (sides) {
    ranges.left = range(*plot_->yAxis);
    if (chart_.Right().Visible()) ranges.right = range(*plot_->yAxis2);
  }
  return ranges;
}

void ChartView::Zoom(const Chart::Ranges& ranges) {
  User([&] { chart_.UserZoom(ranges); });
}

void ChartView::Scroll(const Chart::Ranges& ranges) {
  User([&] { chart_.UserScroll(ranges); });
}

void ChartView::UndoZoom() {
  User([this] { chart_.UserUndoZoom(); });
}

void ChartView::ClickAxis(AxisSide side) {
  User([&] { chart_.ClickAxis(side); });
}

// The point of each series that is nearest in time to the mouse.
QString ChartView::ReadOut(const QPoint& at) const {
  if (Context().window == nullptr) return {};
  const BottomScale scale = ScaleOf(chart_);
  const Chart::Ranges shown = PlotRanges(true, true);
  const NearestTo to{scale.FromPlot(plot_->xAxis->pixelToCoord(at.x())),
                     plot_->yAxis->pixelToCoord(at.y()), shown.bottom->high - shown.bottom->low,
                     shown.left->high - shown.left->low};
  QStringList lines;
  std::optional<double> nearestX;
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const auto& series = chart_.Series(i);
    const auto nearest = NearestPoint(series, to);
    if (!nearest) continue;
    if (!nearestX || std::abs(nearest->x - to.x) < std::abs(*nearestX - to.x)) {
      nearestX = nearest->x;
    }
    const QString title = series.Title().empty() ? QStringLiteral("value") : ToQt(series.Title());
    lines.append(QStringLiteral("%1: %2").arg(title, ToQt(PlainText(nearest->y)).trimmed()));
  }
  if (!nearestX) return {};
  lines.prepend(scale.time ? ToQt(FormatDateTime({*nearestX}, "dd mmm yyyy hh:nn:ss"))
                           : QString::number(*nearestX, 'g', 8));
  return lines.join(QLatin1Char('\n'));
}

void ChartView::SavePoints() {
  const auto path = Context().face.ChooseFile({.title = "Save points shown",
                                               .filter = "Comma-separated values|*.csv",
                                               .defaultExtension = "csv",
                                               .save = true});
  if (!path || Context().window == nullptr) return;
  std::ostringstream points;
  chart_.WriteCsv(points);
  Context().face.SaveFile(*path, points.str(), "The points could not be saved.");
}

void ChartView::ShowMenu(const QPoint& at) {
  const auto paint = [this](QPaintDevice& device, const QSize& size) {
    QCPPainter painter(&device);
    painter.setMode(QCPPainter::pmVectorized);
    plot_->toPainter(&painter, size.width(), size.height());
  };
  auto* const menu = new QMenu(plot_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  // What waits for a file lets the menu go, which must not happen under its own mouse event.
  const auto add = [this, menu](const QString& text, auto action) {
    QObject::connect(menu->addAction(text), &QAction::triggered, plot_, action,
                     Qt::QueuedConnection);
  };
  add(QStringLiteral("&Undo zoom"), [this] { UndoZoom(); });
  menu->addSeparator();
  add(QStringLiteral("&Copy picture"),
      [this] { QApplication::clipboard()->setPixmap(plot_->toPixmap()); });
  add(QStringLiteral("&Save picture ..."),
      [this, paint] { User([&] { SavePicture(Context().face, plot_->size(), paint); }); });
  add(QStringLiteral("Save &points shown as CSV ..."), [this] { User([this] { SavePoints(); }); });
  menu->popup(at);
}

}  // namespace fathomline
