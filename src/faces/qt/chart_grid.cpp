#include "faces/qt/chart_grid.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "faces/qt/chart_parts.h"
#include "faces/qt/chart_view.h"
#include "faces/qt/control_view.h"
#include "faces/qt/look.h"

namespace fathomline {
namespace {

// Pixels.
constexpr int kSpacing = 4;
constexpr int kLeastAlike = 96;
constexpr int kLineHeight = 20;
constexpr int kLineWidth = 120;
constexpr int kUsualWidth = 640;
constexpr int kUsualStack = 170;
constexpr int kLeastWidth = 120;
// Beside a plot before it is known what its labels want.
constexpr int kUsualBeside = 80;

int Rows(std::size_t count, int columns) {
  return (static_cast<int>(count) + columns - 1) / columns;
}

}  // namespace

ChartGrid::ChartGrid(ViewContext& context, int columns, const QString& nothing)
    : context_(context), columns_(std::max(columns, 1)), nothing_(nothing) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMinimumWidth(kLeastWidth);
  setMouseTracking(true);
}

void ChartGrid::Add(ChartView& chart) {
  charts_.push_back(&chart);
  chart.Widget()->setParent(this);
  chart.JoinGrid(*this, Alike());
}

QSize ChartGrid::sizeHint() const {
  const int rows = Rows(charts_.size(), columns_);
  return {kUsualWidth, std::max(rows * (Alike() ? kLeastAlike : kUsualStack), minimumHeight())};
}

void ChartGrid::PlaceAnew() {
  Place();
  update();
}

bool ChartGrid::event(QEvent* event) {
  // A chart comes or goes.
  if (event->type() == QEvent::LayoutRequest) PlaceAnew();
  return QWidget::event(event);
}

void ChartGrid::resizeEvent(QResizeEvent*) {
  Place();
}

// As many as are told, as long as each has the least width.
int ChartGrid::ColumnsFor(int width) const {
  const ChartCompany& company = context_.charts;
  const int beside = company.left > 0 ? company.left + company.right : kUsualBeside;
  const int fit = (width + kSpacing) / (kLeastPlot.width() + beside + kSpacing);
  return std::clamp(fit, 1, columns_);
}

void ChartGrid::Place() {
  if (placing_) return;
  placing_ = true;
  std::vector<ChartView*> shown;
  for (ChartView* const chart : charts_) {
    if (chart->Plain().Shown()) shown.push_back(chart);
  }
  if (Alike()) {
    PlaceAlike(shown);
  } else {
    PlaceStack(shown);
  }
  placing_ = false;
}

// Plots of equal height; the lowest one has the labels of all.
void ChartGrid::PlaceStack(const std::vector<ChartView*>& shown) {
  if (shown.empty()) return;
  int around = 0;
  for (const ChartView* const chart : shown) around += chart->Around(chart == shown.back());
  const int count = static_cast<int>(shown.size());
  setMinimumHeight(around + count * kLeastPlot.height());
  int free = std::max(height() - around, count * kLeastPlot.height());
  int y = 0;
  int left = count;
  for (ChartView* const chart : shown) {
    const bool lowest = chart == shown.back();
    const int plot = free / left--;
    free -= plot;
    const int whole = chart->Around(lowest) + plot;
    chart->SetPlace(lowest, false);
    chart->Widget()->setGeometry(0, y, width(), whole);
    y += whole;
  }
}

void ChartGrid::PlaceAlike(const std::vector<ChartView*>& shown) {
  std::vector<ChartView*> filled;
  std::vector<ChartView*> empty;
  for (ChartView* const chart : shown) (chart->Shown().Empty() ? empty : filled).push_back(chart);
  anyPoints_ = !filled.empty();
  if (!anyPoints_) {
    setMinimumHeight(kLineHeight);
    for (ChartView* const chart : shown) {
      chart->SetPlace(false, true);
      chart->Widget()->setGeometry(0, 0, 0, 0);
    }
    return;
  }
  const int head = Head::Height(font());
  const int columns = std::min(ColumnsFor(width()), static_cast<int>(filled.size()));
  const int lineColumns = std::max(width() / kLineWidth, 1);
  const int rows = Rows(filled.size(), columns);
  const int lines = Rows(empty.size(), lineColumns) * kLineHeight;
  const int labels = filled.front()->Around(true) - filled.front()->Around(false);
  const int fixed = head + lines + labels + (rows - 1) * kSpacing;
  setMinimumHeight(fixed + rows * kLeastAlike);

  int free = std::max(height() - fixed, rows * kLeastAlike);
  int y = head;
  const auto count = static_cast<int>(filled.size());
  const auto left = [this](int column, int of) { return column * (width() + kSpacing) / of; };
  for (int row = 0; row < rows; ++row) {
    const int chartHeight = free / (rows - row);
    free -= chartHeight;
    const bool last = row + 1 == rows;
    for (int column = 0; column < columns && row * columns + column < count; ++column) {
      const int at = row * columns + column;
      ChartView& chart = *filled[static_cast<std::size_t>(at)];
      const bool lowest = at + columns >= count;
      const int x = left(column, columns);
      // The one above a gap in the last row takes its labels into the gap.
      const int whole = chartHeight + (lowest ? labels : 0);
      chart.SetPlace(lowest, false);
      chart.Widget()->setGeometry(x, y, left(column + 1, columns) - kSpacing - x, whole);
    }
    y += chartHeight + (last ? labels : kSpacing);
  }
  for (std::size_t i = 0; i < empty.size(); ++i) {
    const auto column = static_cast<int>(i) % lineColumns;
    const int x = left(column, lineColumns);
    empty[i]->SetPlace(false, true);
    empty[i]->Widget()->setGeometry(x, y + static_cast<int>(i) / lineColumns * kLineHeight,
                                    left(column + 1, lineColumns) - kSpacing - x, kLineHeight);
  }
}

void ChartGrid::ToggleSeries(int series) {
  const bool hidden = !charts_.front()->Shown().Series(series).Hidden();
  for (ChartView* const chart : charts_) {
    if (chart->Shown().Series(series).Hidden() != hidden) chart->Toggle(series);
  }
  update();
}

std::optional<int> ChartGrid::NameAt(const QPoint& at) const {
  if (!Alike() || !anyPoints_ || context_.window == nullptr) return {};
  return Head::SeriesAt(at, HeadArea(), charts_.front()->Shown(), font(), {.title = false});
}

QRect ChartGrid::HeadArea() const {
  return {0, 0, width(), Head::Height(font())};
}

void ChartGrid::mouseReleaseEvent(QMouseEvent* event) {
  const auto name = NameAt(event->pos());
  if (event->button() == Qt::LeftButton && name) ToggleSeries(*name);
}

void ChartGrid::mouseMoveEvent(QMouseEvent* event) {
  const bool name = NameAt(event->pos()).has_value();
  setCursor(name ? Qt::PointingHandCursor : Qt::ArrowCursor);
  const QString tip =
      name ? QStringLiteral("Click a name to hide or show its curve in all charts.") : QString();
  QToolTip::showText(event->globalPosition().toPoint() + QPoint(12, 12), tip, this);
}

void ChartGrid::paintEvent(QPaintEvent*) {
  if (!Alike() || charts_.empty() || context_.window == nullptr) return;
  QPainter painter(this);
  if (anyPoints_) {
    Head::Paint(painter, HeadArea(), charts_.front()->Shown(), font(), {.title = false});
    return;
  }
  painter.setPen(PaintOf(look::kMutedInk));
  painter.drawText(rect(), Qt::AlignHCenter | Qt::AlignTop, nothing_);
}

}  // namespace fathomline
