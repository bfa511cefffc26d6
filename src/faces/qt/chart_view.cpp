#include "faces/qt/chart_view.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <algorithm>
#include <cmath>
#include <qcustomplot.h>
#include <sstream>
#include <utility>

#include "base/datetime.h"
#include "faces/qt/chart_grid.h"
#include "faces/qt/chart_parts.h"
#include "faces/qt/chart_readout.h"
#include "faces/qt/chart_ticks.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_face.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

// Pixels.
constexpr QSize kUsualSize{640, 170};
constexpr int kTopMargin = 6;
constexpr int kTickLength = 4;
constexpr int kTickPadding = 3;
constexpr int kEdgeRoom = 4;
constexpr int kTicksApart = 40;
constexpr int kLabelsApart = 16;
// Where other charts below it say the time.
constexpr int kClickStrip = 10;
constexpr int kNarrow = 200;
// Steps of the room for labels, so that it does not come and go with every digit.
constexpr int kRoomStep = 6;
constexpr int kFocusRing = 2;

constexpr double kAroundAutomatic = 0.05;
constexpr double kNarrowestAxis = 1e-9;

QSharedPointer<QCPAxisTicker> Shared(const std::shared_ptr<QCPAxisTicker>& ticker) {
  return {ticker.get(), [ticker](QCPAxisTicker*) {}};
}

int WidestOf(const QStringList& labels, const QFontMetrics& metrics) {
  int widest = 0;
  for (const QString& label : labels) widest = std::max(widest, metrics.horizontalAdvance(label));
  return widest;
}

}  // namespace

ChartView::ChartView(ViewContext& context, Chart& chart)
    : ControlView(context, chart),
      chart_(chart),
      plot_(new ChartPlot(*this)),
      timeTicks_(std::make_shared<TimeTicker>()),
      bottomTicks_(std::make_shared<ValueTicker>()),
      leftTicks_(std::make_shared<ValueTicker>()),
      rightTicks_(std::make_shared<ValueTicker>()) {
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
  plot_->yAxis->setTicker(Shared(leftTicks_));
  plot_->yAxis2->setTicker(Shared(rightTicks_));
}

void ChartView::Style() {
  const QFont small = SmallFont(plot_->font());
  const QPen frame(PaintOf(look::kFrameLines), 1.0);
  plot_->setBackground(PaintOf(look::kWindowGround));
  plot_->axisRect()->setBackground(QBrush(PaintOf(look::kChartGround)));
  for (QCPAxis* const axis : {plot_->xAxis, plot_->yAxis, plot_->yAxis2}) {
    // The plot is framed at the left and at the bottom.
    axis->setBasePen(axis == plot_->yAxis2 ? QPen(Qt::NoPen) : frame);
    axis->setTickPen(frame);
    axis->setTickLength(0, kTickLength);
    axis->setTickLabelPadding(kTickPadding);
    axis->setTickLabelColor(PaintOf(look::kMutedInk));
    axis->setTickLabelFont(small);
    axis->setLabelFont(small);
    axis->setLabelColor(PaintOf(look::kMutedInk));
    axis->setLabelPadding(0);
    axis->grid()->setPen(QPen(PaintOf(look::kGridLines), 1.0));
    axis->grid()->setZeroLinePen(QPen(PaintOf(look::kFrameLines), 1.0, Qt::DotLine));
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
  const AxisRange range = plain.Range();
  double low = std::min(range.low, range.high);
  double high = std::max(range.low, range.high);
  if (bottom) {
    const BottomScale scale = ScaleOf(chart_);
    low = scale.ToPlot(low);
    high = scale.ToPlot(high);
    axis.setLabel(ToQt(plain.Title()));
    axis.setTicker(scale.time ? Shared(timeTicks_) : Shared(bottomTicks_));
  } else {
    const auto room = RoomAround(plain);
    low -= room.low * (high - low);
    high += room.high * (high - low);
  }
  const double least = std::max(std::abs(high) * 1e-14, kNarrowestAxis);
  if (!(high - low > least)) high = low + std::max(least, 1e-6);
  axis.setRange(low, high);
}

// What an axis shows beyond its ends, as shares of its range.
AxisRange ChartView::RoomAround(const Axis& axis) const {
  if (axis.Zoom()) return {0.0, 0.0};
  bool used = false;
  bool bars = false;
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const auto& series = chart_.Series(i);
    if (series.RightAxis() != (axis.Side() == AxisSide::Right)) continue;
    used = true;
    bars = bars || (series.Kind() == SeriesKind::Bar && series.Count() > 0);
    // A thick bar on the edge would be cut in two.
    if (series.Kind() == SeriesKind::Gantt) return {kAroundAutomatic, kAroundAutomatic};
  }
  // A right axis without a series is a second scale of the left one.
  if (!used && axis.Side() == AxisSide::Right) return RoomAround(chart_.Left());
  // A curve that touches the frame is hard to tell from it; bars stand on it.
  const auto room = [&](bool automatic) {
    return axis.Automatic() || automatic ? kAroundAutomatic : 0.0;
  };
  const bool grounded = bars && axis.Range().low == 0.0;
  return {grounded ? 0.0 : room(axis.AutomaticMinimum()), room(axis.AutomaticMaximum())};
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
  FollowAxis(*plot_->xAxis, chart_.Bottom());
  FollowAxis(*plot_->yAxis, chart_.Left());
  FollowAxis(*plot_->yAxis2, chart_.Right());
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
  int below = kClickStrip;
  if (lowest) {
    const int lines = (ScaleOf(chart_).time ? TimeTicker::Lines(plot_->xAxis->range()) : 1) +
                      (chart_.Bottom().Title().empty() ? 0 : 1);
    const QFontMetrics metrics(SmallFont(plot_->font()));
    below = kTickLength + kTickPadding + lines * metrics.height() + 2;
  }
  return head + kTopMargin + below;
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
  FitTicks(std::max(width, 1), std::max(height, 1));
  TellCompany();

  const bool time = ShowsTime();
  plot_->xAxis->setTicks(time && lowest_);
  plot_->xAxis->setTickLabels(time && lowest_);
  plot_->xAxis->grid()->setVisible(time && !empty_);
  if (!lowest_) plot_->xAxis->setLabel({});
  plot_->yAxis->setTicks(!empty_);
  plot_->yAxis->setTickLabels(!empty_);
  plot_->yAxis->grid()->setVisible(!empty_);
  plot_->yAxis2->setVisible(chart_.Right().Visible() && !empty_ && !Narrow());
  markers_->SetWords(Words());
  markers_->SetTitle(alike_ ? ToQt(chart_.Text()).trimmed() : QString());
}

void ChartView::FitTicks(int width, int height) {
  const QFontMetrics metrics(SmallFont(plot_->font()));
  int apart = kTicksApart;
  if (ScaleOf(chart_).time) {
    timeTicks_->Fit(chart_.Bottom().LabelFormat(), width, metrics);
  } else {
    bottomTicks_->Fit(width, apart);
    apart = std::max(apart,
                     WidestOf(bottomTicks_->Labels(plot_->xAxis->range()), metrics) + kLabelsApart);
    bottomTicks_->Fit(width, apart);
  }
  leftTicks_->Fit(height, chart_.EqualScales() ? apart : kTicksApart);
  rightTicks_->Fit(height, kTicksApart);

  const int beside = kTickLength + kTickPadding + kEdgeRoom;
  const int left = WidestOf(leftTicks_->Labels(plot_->yAxis->range()), metrics);
  wantsLeft_ = empty_ ? 0 : left + beside;
  wantsRight_ = kEdgeRoom;
  if (chart_.Right().Visible() && !empty_ && !Narrow()) {
    wantsRight_ = WidestOf(rightTicks_->Labels(plot_->yAxis2->range()), metrics) + beside;
  }
  if (chart_.ShownLegend() == Legend::AtLineEnds) {
    wantsRight_ = std::max(wantsRight_, EndNumbers::Width(metrics));
  }
  // The first and the last label stand out beyond the plot.
  const int overhang = ScaleOf(chart_).time
                           ? timeTicks_->Overhang()
                           : WidestOf(bottomTicks_->Labels(plot_->xAxis->range()), metrics) / 2 + 2;
  wantsLeft_ = std::max(wantsLeft_, overhang);
  wantsRight_ = std::max(wantsRight_, overhang);
}

// Plots of one window stand under each other, so all leave the room that one of them wants.
void ChartView::TellCompany() {
  ChartCompany& company = Context().charts;
  int left = 0;
  int right = 0;
  for (const ChartView* const chart : company.charts) {
    if (chart->line_ || !chart->plot_->isVisible()) continue;
    left = std::max(left, chart->wantsLeft_);
    right = std::max(right, chart->wantsRight_);
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
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const auto range = chart_.Series(i).RangeX();
    if (range && range->high >= shown.low && range->low <= shown.high) return {};
  }
  return QStringLiteral("No points in this span");
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
  const QRect area = plot_->axisRect()->rect();
  auto& hover = Context().charts.hover;
  // The plot may have moved under the mouse.
  if (pointer_ && hover) {
    hover = ScaleOf(chart_).FromPlot(plot_->xAxis->pixelToCoord(pointer_->x()));
  }
  if (hover && Context().window != nullptr && !empty_) {
    const double x = plot_->xAxis->coordToPixel(ScaleOf(chart_).ToPlot(*hover));
    const bool line = !chart_.EqualScales() && x >= area.left() && x <= area.right();
    if (line) {
      painter.setPen(QPen(PaintOf(look::kMutedInk), 1.0));
      painter.drawLine(QLineF(std::round(x), area.top(), std::round(x), area.bottom()));
    }
    if (pointer_ || (line && !alike_)) {
      const QPoint at = pointer_.value_or(QPoint(static_cast<int>(std::round(x)), area.bottom()));
      const ReadOut readOut = ReadOutOf(chart_, PointerAt(*hover, at.y()), pointer_.has_value());
      PaintReadOut(painter, area, at, readOut, small);
      if (pointer_) plot_->setAccessibleDescription(readOut.Text());
    }
  }
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
    QAction* const entry = menu->addAction(text);
    QObject::connect(entry, &QAction::triggered, plot_, action, Qt::QueuedConnection);
    return entry;
  };
  const bool held = Context().window != nullptr && chart_.Held();
  add(QStringLiteral("&Undo zoom"), [this] { UndoZoom(); })->setEnabled(held);
  add(QStringLiteral("Show &all"), [this] { ShowAll(); })->setEnabled(held);
  menu->addSeparator();
  add(QStringLiteral("&Copy picture"),
      [this] { QApplication::clipboard()->setPixmap(plot_->toPixmap()); });
  add(QStringLiteral("&Save picture ..."),
      [this, paint] { User([&] { SavePicture(Context().face, plot_->size(), paint); }); });
  add(QStringLiteral("Save &points shown as CSV ..."), [this] { User([this] { SavePoints(); }); });
  menu->popup(at);
}

}  // namespace fathomline
