#include "faces/qt/chart_view.h"

#include <algorithm>
#include <cmath>
#include <qcustomplot.h>
#include <utility>

#include "base/datetime.h"
#include "faces/qt/chart_cursors.h"
#include "faces/qt/chart_grid.h"
#include "faces/qt/chart_menu.h"
#include "faces/qt/chart_parts.h"
#include "faces/qt/chart_readout.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

// Pixels.
constexpr QSize kUsualSize{640, 170};
constexpr int kTopMargin = 6;
constexpr int kEdgeRoom = 4;
// Where other charts below it say the time.
constexpr int kClickStrip = 10;
constexpr int kNarrow = 200;
// Steps of the room for labels, so that it does not come and go with every digit.
constexpr int kRoomStep = 6;
constexpr int kFocusRing = 2;

}  // namespace

ChartView::ChartView(ViewContext& context, Chart& chart)
    : ControlView(context, chart),
      chart_(chart),
      plot_(new ChartPlot(*this)),
      axes_(*plot_, chart) {
  Build();
  Style();
  SetWidget(plot_);
  Context().charts.charts.push_back(this);
}

ChartView::~ChartView() {
  std::erase(Context().charts.charts, this);
}

void ChartView::Build() {
  // Figures look the same everywhere in the program, whatever the language of the desktop.
  plot_->setLocale(QLocale::c());
  plot_->legend->setVisible(false);
  plot_->yAxis2->setVisible(false);
  plot_->xAxis2->setVisible(false);
  plot_->plotLayout()->insertRow(0);
  plot_->plotLayout()->setRowSpacing(0);
  head_ = new HeadRow(plot_, chart_);
  plot_->plotLayout()->addElement(0, 0, head_);
  plot_->axisRect()->setAutoMargins(QCP::msNone);
  // The plottables of series stand above the markers, which are drawn with the layer's first.
  markers_ = new MarkerLayer(plot_, chart_);
  if (chart_.ShownLegend() == Legend::AtLineEnds) new EndNumbers(plot_, chart_);
  plot_->setNoAntialiasingOnDrag(true);
  // A layer of its own would be a second picture to clear and to lay over the first.
  plot_->layer(QStringLiteral("overlay"))->setMode(QCPLayer::lmLogical);
}

void ChartView::Style() {
  plot_->setBackground(PaintOf(look::kWindowGround));
  plot_->axisRect()->setBackground(QBrush(PaintOf(look::kChartGround)));
  axes_.Style();
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

void ChartView::Update() {
  const bool empty = chart_.Empty();
  if (empty != empty_) {
    empty_ = empty;
    if (grid_ != nullptr) grid_->PlaceAnew();
  }
  plot_->setAccessibleName(chart_.Text().empty() ? SpokenName() : ToQt(chart_.Text()));
  if (line_) {
    plot_->update();
    return;
  }
  Style();
  FollowSeries();
  axes_.Follow();
  // Labels of a further line change what is left for all.
  if (grid_ != nullptr && std::exchange(around_, Around(lowest_)) != around_) grid_->PlaceAnew();
  Fit();
  plot_->replot(QCustomPlot::rpQueuedRefresh);
}

bool ChartView::Seen() const {
  if (ControlView::Seen()) return true;
  return grid_ != nullptr && alike_ && plot_->isVisible() && !grid_->visibleRegion().isEmpty();
}

void ChartView::JoinGrid(ChartGrid& grid, bool alike) {
  grid_ = &grid;
  alike_ = alike;
  head_->SetShown(!alike);
}

void ChartView::SetPlace(bool lowest, bool line) {
  if (lowest == lowest_ && line == line_) return;
  lowest_ = lowest;
  line_ = line;
  plot_->setFocusPolicy(line_ ? Qt::NoFocus : Qt::StrongFocus);
  if (line_) {
    plot_->update();
    return;
  }
  Fit();
  plot_->replot(QCustomPlot::rpQueuedRefresh);
}

bool ChartView::Narrow() const {
  return plot_->width() < kNarrow;
}

// An empty chart has no time of its own, but may stand below others that have.
bool ChartView::ShowsTime() const {
  return !empty_ || (ScaleOf(chart_).time && chart_.Bottom().Company());
}

int ChartView::Around(bool lowest) const {
  const int head = alike_ ? 0 : Head::Height(plot_->font());
  return head + kTopMargin + (lowest ? axes_.Below() : kClickStrip);
}

// Room for what stands round the plot, and no more ticks than have room.
void ChartView::Fit() {
  if (Context().window == nullptr || line_) return;
  const ChartCompany& company = Context().charts;
  const int head = alike_ ? 0 : Head::Height(plot_->font());
  QMargins margins(company.left, kTopMargin, company.right, Around(lowest_) - head - kTopMargin);
  int width = plot_->width() - margins.left() - margins.right();
  int height = plot_->height() - head - margins.top() - margins.bottom();
  if (chart_.EqualScales()) {
    // Metres are as long to the north as to the east.
    const int side = std::max(std::min(width, height), 1);
    margins += QMargins((width - side) / 2, 0, width - side - (width - side) / 2, height - side);
    width = height = side;
    constexpr int kLeastScatter = 200;
    const int least = kLeastScatter + company.left + company.right;
    plot_->SetSizes({kUsualSize.height() * 2, kUsualSize.height() * 2},
                    {least, kLeastScatter + Around(true)});
  } else if (grid_ == nullptr) {
    plot_->SetSizes(kUsualSize, {ChartGrid::kLeastPlot.width() + company.left + company.right,
                                 ChartGrid::kLeastPlot.height() + Around(true)});
  }
  plot_->axisRect()->setMargins(margins);
  const bool right = chart_.Right().Visible() && !empty_ && !Narrow();
  axes_.Fit({std::max(width, 1), std::max(height, 1)}, empty_, right);
  TellCompany();

  const bool time = ShowsTime();
  plot_->xAxis->setTicks(time && lowest_);
  plot_->xAxis->setTickLabels(time && lowest_);
  plot_->xAxis->grid()->setVisible(time && !empty_);
  if (!lowest_) plot_->xAxis->setLabel({});
  plot_->yAxis->setTicks(!empty_);
  plot_->yAxis->setTickLabels(!empty_);
  plot_->yAxis->grid()->setVisible(!empty_);
  plot_->yAxis2->setVisible(right);
  markers_->SetWords(Words());
  markers_->SetTitle(alike_ ? ToQt(chart_.Text()).trimmed() : QString());
}

// Plots of one window stand under each other, so all leave the room that one of them wants.
void ChartView::TellCompany() {
  ChartCompany& company = Context().charts;
  int left = 0;
  int right = 0;
  for (const ChartView* const chart : company.charts) {
    if (chart->line_ || !chart->plot_->isVisible()) continue;
    left = std::max(left, chart->axes_.Left());
    right = std::max(right, chart->axes_.Right());
  }
  // It grows at once and shrinks only where that is worth while.
  const auto follow = [](int& room, int wanted) {
    const int stepped = (wanted + kRoomStep - 1) / kRoomStep * kRoomStep;
    if (stepped <= room && stepped >= room - kRoomStep) return false;
    room = stepped;
    return true;
  };
  const bool changed = static_cast<int>(follow(company.left, left)) +
                           static_cast<int>(follow(company.right, right)) >
                       0;
  if (!changed) return;
  for (ChartView* const chart : company.charts) chart->FollowCompany();
}

void ChartView::FollowCompany() {
  if (line_ || !plot_->isVisible()) return;
  Fit();
  plot_->replot(QCustomPlot::rpQueuedRefresh);
}

// What stands in the middle of a plot in which there is nothing to be seen.
QString ChartView::Words() const {
  if (empty_) return ToQt(chart_.WhyEmpty());
  const AxisRange shown = chart_.Bottom().Range();
  bool hidden = false;
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const auto& series = chart_.Series(i);
    const auto range = series.RangeX();
    if (!range || range->high < shown.low || range->low > shown.high) continue;
    if (!series.Hidden()) return {};
    hidden = true;
  }
  return hidden ? QStringLiteral("All curves are hidden")
                : QStringLiteral("No points in this span");
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

void ChartView::Zoom(bool bottom, bool sides, Chart::Gesture gesture) {
  User([&] { chart_.UserZoom(PlotRanges(bottom, sides), gesture); });
}

void ChartView::Scroll(bool bottom, bool sides, Chart::Gesture gesture) {
  User([&] { chart_.UserScroll(PlotRanges(bottom, sides), gesture); });
}

void ChartView::UndoZoom() {
  User([this] { chart_.UserUndoZoom(); });
}

void ChartView::ShowAll() {
  User([this] { chart_.UserShowAll(); });
}

void ChartView::ClickAxis(AxisSide side) {
  User([&] { chart_.ClickAxis(side); });
}

Pointer ChartView::PointerAt(double x, double y) const {
  const auto perPixel = [](const QCPAxis& axis, double pixels) {
    return axis.range().size() / std::max(pixels, 1.0);
  };
  const BottomScale scale = ScaleOf(chart_);
  const QRect area = plot_->axisRect()->rect();
  Pointer pointer;
  pointer.x = x;
  pointer.left = plot_->yAxis->pixelToCoord(y);
  pointer.right = plot_->yAxis2->pixelToCoord(y);
  pointer.perPixelX = perPixel(*plot_->xAxis, area.width()) / (scale.time ? kSecondsPerDay : 1.0);
  pointer.perPixelLeft = perPixel(*plot_->yAxis, area.height());
  pointer.perPixelRight = perPixel(*plot_->yAxis2, area.height());
  return pointer;
}

void ChartView::Hover(std::optional<QPoint> at) {
  if (at == pointer_) return;
  pointer_ = at;
  ChartCompany& company = Context().charts;
  company.hover.reset();
  if (at && !empty_) {
    company.hover = ScaleOf(chart_).FromPlot(plot_->xAxis->pixelToCoord(at->x()));
  }
  for (ChartView* const chart : company.charts) chart->plot_->update();
}

// Alike charts are too many to be read out all at once.
void ChartView::PaintOver(QPainter& painter) {
  const QFont small = SmallFont(plot_->font());
  if (line_) {
    const QString words = ToQt(chart_.Text()).trimmed() + QLatin1Char(' ') + Words();
    painter.fillRect(plot_->rect(), PaintOf(look::kWindowGround));
    painter.setFont(small);
    painter.setPen(PaintOf(look::kMutedInk));
    painter.drawText(plot_->rect().adjusted(kEdgeRoom, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(small).elidedText(words, Qt::ElideRight, plot_->width()));
    return;
  }
  PaintHover(painter, PaintCursorLines(painter));
  if (const QRect chip = HeldChip(); !chip.isEmpty()) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PaintOf(look::kSelection));
    painter.drawRoundedRect(chip, chip.height() / 2.0, chip.height() / 2.0);
    painter.setFont(small);
    painter.setPen(PaintOf(look::kSelectedInk));
    painter.drawText(chip, Qt::AlignCenter, QStringLiteral("Held"));
  }
  if (plot_->hasFocus()) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(PaintOf(look::kFocusRing), kFocusRing));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot_->rect().adjusted(1, 1, -1, -1));
  }
}

// Returns what their box covers.
QRect ChartView::PaintCursorLines(QPainter& painter) {
  const ChartCursors* const cursors = Cursors();
  if (cursors == nullptr || empty_) return {};
  const bool readsOut = !alike_ || pointer_ || plot_->hasFocus();
  ReadOut readOut;
  if (readsOut) {
    readOut = CursorReadOut(chart_, *cursors, PointerAt(cursors->x[0], 0.0));
    plot_->setAccessibleDescription(readOut.Text());
    // In a stack the uppermost one says the moments for all.
    const auto& charts = Context().charts.charts;
    const auto upper = std::find_if(charts.begin(), charts.end(), [](const ChartView* chart) {
      return chart->plot_->isVisible() && !chart->empty_;
    });
    if (!alike_ && *upper != this) NameColumns(readOut);
  }
  return PaintCursors(painter, plot_->axisRect()->rect(), CursorPixels(), *cursors, readOut,
                      SmallFont(plot_->font()));
}

void ChartView::PaintHover(QPainter& painter, const QRect& taken) {
  auto& hover = Context().charts.hover;
  // The plot may have moved under the mouse.
  if (pointer_ && hover) {
    hover = ScaleOf(chart_).FromPlot(plot_->xAxis->pixelToCoord(pointer_->x()));
  }
  if (!hover || Context().window == nullptr || empty_) return;
  const QRect area = plot_->axisRect()->rect();
  const double x = plot_->xAxis->coordToPixel(ScaleOf(chart_).ToPlot(*hover));
  const bool line = !chart_.EqualScales() && x >= area.left() && x <= area.right();
  if (line) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(PaintOf(look::kMutedInk), 1.0));
    painter.drawLine(QLineF(std::round(x), area.top(), std::round(x), area.bottom()));
  }
  if (!pointer_ && (!line || alike_)) return;
  const QPoint at = pointer_.value_or(QPoint(static_cast<int>(std::round(x)), area.bottom()));
  const ReadOut readOut = ReadOutOf(chart_, PointerAt(*hover, at.y()), pointer_.has_value());
  PaintReadOut(painter, area, at, readOut, SmallFont(plot_->font()), taken);
  if (pointer_ && Cursors() == nullptr) plot_->setAccessibleDescription(readOut.Text());
}

QRect ChartView::HeldChip() const {
  if (Context().window == nullptr || line_ || !chart_.Held()) return {};
  const QFontMetrics metrics(SmallFont(plot_->font()));
  constexpr int kAcross = 8;
  constexpr int kInset = 4;
  const QSize size(metrics.horizontalAdvance(QStringLiteral("Held")) + 2 * kAcross,
                   metrics.height() + 2);
  const QRect area = plot_->axisRect()->rect();
  return {QPoint(area.right() - kInset - size.width(), area.top() + kInset), size};
}

QRect ChartView::HeadArea() const {
  if (alike_ || line_) return {};
  return {0, 0, plot_->width(), Head::Height(plot_->font())};
}

QString ChartView::HeadText() const {
  return Context().window == nullptr ? QString() : Head::Whole(chart_);
}

std::optional<int> ChartView::NameAt(const QPoint& at) const {
  return Context().window == nullptr || line_ ? std::nullopt : head_->SeriesAt(at);
}

// Alike charts have one head, which speaks for all of them.
void ChartView::ToggleSeries(int series) {
  if (alike_) {
    grid_->ToggleSeries(series);
  } else {
    Toggle(series);
  }
}

void ChartView::Toggle(int series) {
  User([&] { chart_.UserToggle(series); });
}

ChartCursors* ChartView::Cursors() const {
  const Window* const window = Context().window;
  auto& cursors = Context().charts.cursors;
  const bool there = window != nullptr && cursors && cursors->load == window->Loads();
  return there ? &*cursors : nullptr;
}

std::array<double, 2> ChartView::CursorPixels() const {
  std::array<double, 2> pixels{};
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = plot_->xAxis->coordToPixel(ScaleOf(chart_).ToPlot(Cursors()->x[i]));
  }
  return pixels;
}

void ChartView::PaintCursorsAnew() {
  for (ChartView* const chart : Context().charts.charts) chart->plot_->update();
}

std::optional<std::size_t> ChartView::CursorLineAt(const QPoint& at) const {
  if (Cursors() == nullptr || line_ || empty_) return {};
  return CursorAt(plot_->axisRect()->rect(), CursorPixels(), at);
}

void ChartView::ToggleCursors() {
  const Window* const window = Context().window;
  if (window == nullptr || !ScaleOf(chart_).time) return;
  auto& cursors = Context().charts.cursors;
  if (Cursors() != nullptr) {
    cursors.reset();
    plot_->setAccessibleDescription({});
  } else if (!line_ && !empty_) {
    cursors = PlaceCursors(chart_);
    cursors->load = window->Loads();
  }
  PaintCursorsAnew();
}

void ChartView::HoldCursor(std::size_t cursor) {
  Cursors()->held = cursor;
  PaintCursorsAnew();
}

void ChartView::HoldOtherCursor() {
  HoldCursor(1 - Cursors()->held);
}

void ChartView::DragCursor(int x) {
  ChartCursors* const cursors = Cursors();
  if (cursors == nullptr) return;
  const QRect area = plot_->axisRect()->rect();
  const double key = plot_->xAxis->pixelToCoord(std::clamp(x, area.left(), area.right()));
  cursors->x.at(cursors->held) = NearestPointX(chart_, ScaleOf(chart_).FromPlot(key));
  PaintCursorsAnew();
}

void ChartView::StepHeldCursor(int direction, int pixels) {
  ChartCursors* const cursors = Cursors();
  StepCursor(*cursors, chart_, direction, pixels * PointerAt(cursors->x[0], 0.0).perPixelX);
  PaintCursorsAnew();
}

void ChartView::ShowMenu(const QPoint& at) {
  ChartMenu{Context(), chart_, *plot_, *this, [this](const auto& action) { User(action); }}.Show(
      at);
}

}  // namespace fathomline
