#include "faces/qt/chart_axes.h"

#include <algorithm>
#include <cmath>

#include "faces/qt/chart_parts.h"
#include "faces/qt/chart_ticks.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/series_plottable.h"

namespace fathomline {
namespace {

// Pixels.
constexpr int kTickLength = 4;
constexpr int kTickPadding = 3;
constexpr int kEdgeRoom = 4;
constexpr int kTicksApart = 40;
constexpr int kLabelsApart = 16;

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

ChartAxes::ChartAxes(QCustomPlot& plot, const Chart& chart)
    : plot_(plot),
      chart_(chart),
      timeTicks_(std::make_shared<TimeTicker>()),
      bottomTicks_(std::make_shared<ValueTicker>()),
      leftTicks_(std::make_shared<ValueTicker>()),
      rightTicks_(std::make_shared<ValueTicker>()) {
  plot_.yAxis->setTicker(Shared(leftTicks_));
  plot_.yAxis2->setTicker(Shared(rightTicks_));
}

void ChartAxes::Style() {
  const QFont small = SmallFont(plot_.font());
  const QPen frame(PaintOf(look::kFrameLines), 1.0);
  for (QCPAxis* const axis : {plot_.xAxis, plot_.yAxis, plot_.yAxis2}) {
    // The plot is framed at the left and at the bottom.
    axis->setBasePen(axis == plot_.yAxis2 ? QPen(Qt::NoPen) : frame);
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

void ChartAxes::Follow() {
  FollowAxis(*plot_.xAxis, chart_.Bottom());
  FollowAxis(*plot_.yAxis, chart_.Left());
  FollowAxis(*plot_.yAxis2, chart_.Right());
}

void ChartAxes::FollowAxis(QCPAxis& axis, const Axis& plain) {
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
AxisRange ChartAxes::RoomAround(const Axis& axis) const {
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

int ChartAxes::Below() const {
  const int lines = (ScaleOf(chart_).time ? TimeTicker::Lines(plot_.xAxis->range()) : 1) +
                    (chart_.Bottom().Title().empty() ? 0 : 1);
  const QFontMetrics metrics(SmallFont(plot_.font()));
  return kTickLength + kTickPadding + lines * metrics.height() + 2;
}

void ChartAxes::Fit(const QSize& size, bool empty, bool right) {
  const QFontMetrics metrics(SmallFont(plot_.font()));
  int apart = kTicksApart;
  if (ScaleOf(chart_).time) {
    timeTicks_->Fit(chart_.Bottom().LabelFormat(), size.width(), metrics);
  } else {
    bottomTicks_->Fit(size.width(), apart);
    apart = std::max(apart,
                     WidestOf(bottomTicks_->Labels(plot_.xAxis->range()), metrics) + kLabelsApart);
    bottomTicks_->Fit(size.width(), apart);
  }
  leftTicks_->Fit(size.height(), chart_.EqualScales() ? apart : kTicksApart);
  rightTicks_->Fit(size.height(), kTicksApart);

  const int beside = kTickLength + kTickPadding + kEdgeRoom;
  const int left = WidestOf(leftTicks_->Labels(plot_.yAxis->range()), metrics);
  wantsLeft_ = empty ? 0 : left + beside;
  wantsRight_ = kEdgeRoom;
  if (right) {
    wantsRight_ = WidestOf(rightTicks_->Labels(plot_.yAxis2->range()), metrics) + beside;
  }
  if (chart_.ShownLegend() == Legend::AtLineEnds) {
    wantsRight_ = std::max(wantsRight_, EndNumbers::Width(metrics));
  }
  // The first and the last label stand out beyond the plot.
  const int overhang = ScaleOf(chart_).time
                           ? timeTicks_->Overhang()
                           : WidestOf(bottomTicks_->Labels(plot_.xAxis->range()), metrics) / 2 + 2;
  wantsLeft_ = std::max(wantsLeft_, overhang);
  wantsRight_ = std::max(wantsRight_, overhang);
}

}  // namespace fathomline
