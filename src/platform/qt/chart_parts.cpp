#include "platform/qt/chart_parts.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/datetime.h"
#include "platform/qt/conversions.h"

namespace fathomline {
namespace {

constexpr double kUnixEpochDays = 25569.0;
// Beyond this a smooth line costs more than it shows.
constexpr int kSmoothPoints = 20000;
constexpr double kLineWidth = 1.4;
constexpr double kFarAway = 1e5;
constexpr double kBarShare = 0.7;
constexpr double kWidestBar = 26.0;
constexpr double kDenseBars = 5.0;
constexpr double kGanttShare = 0.6;
constexpr double kThinnestGantt = 3.0;
constexpr double kThickestGantt = 14.0;
constexpr int kDotSize = 3;
constexpr int kBandAlpha = 70;

constexpr int kStripMargin = 4;
constexpr int kEntryGap = 14;
constexpr int kSampleWidth = 14;
constexpr int kMostLegendLines = 2;

QFont TitleFont(const QCustomPlot& plot) {
  QFont font = plot.font();
  font.setBold(true);
  return font;
}

}  // namespace

double BottomScale::ToPlot(double x) const {
  return time ? (x - kUnixEpochDays) * kSecondsPerDay : x;
}

double BottomScale::FromPlot(double key) const {
  return time ? key / kSecondsPerDay + kUnixEpochDays : key;
}

BottomScale ScaleOf(const Chart& chart) {
  return {!chart.Bottom().LabelFormat().empty()};
}

// From values to pixels, worked out once per drawing: a day of points is a million of them.
class SeriesPlottable::Place {
 public:
  Place(const QCPAxis& bottom, const QCPAxis& side, const BottomScale& scale)
      : area(bottom.axisRect()->rect()) {
    const QCPRange keys = bottom.range();
    const double low = bottom.coordToPixel(keys.lower);
    const double high = bottom.coordToPixel(keys.upper);
    const double lowX = scale.FromPlot(keys.lower);
    perX_ = (high - low) / (scale.FromPlot(keys.upper) - lowX);
    atX_ = lowX;
    pixelX_ = low;
    const QCPRange values = side.range();
    pixelY_ = side.coordToPixel(values.lower);
    perY_ = (side.coordToPixel(values.upper) - pixelY_) / values.size();
    atY_ = values.lower;
  }

  double X(double x) const { return std::clamp(pixelX_ + (x - atX_) * perX_, -kFarAway, kFarAway); }
  double Y(double y) const { return std::clamp(pixelY_ + (y - atY_) * perY_, -kFarAway, kFarAway); }
  double UnitHeight() const { return std::abs(perY_); }
  bool Across(double x) const { return x >= area.left() - 1.0 && x <= area.right() + 1.0; }

  const QRectF area;

 private:
  double perX_;
  double atX_;
  double pixelX_;
  double perY_;
  double atY_;
  double pixelY_;
};

SeriesPlottable::SeriesPlottable(QCPAxis* bottom, QCPAxis* side, const Chart& chart, int index)
    : QCPAbstractPlottable(bottom, side), chart_(chart), index_(index) {
  setSelectable(QCP::stNone);
}

const Series& SeriesPlottable::Shown() const {
  return chart_.Series(index_);
}

QCPRange SeriesPlottable::getKeyRange(bool& found, QCP::SignDomain) const {
  const auto range = index_ < chart_.SeriesCount() ? Shown().RangeX() : std::nullopt;
  found = range.has_value();
  const BottomScale scale = ScaleOf(chart_);
  return found ? QCPRange(scale.ToPlot(range->low), scale.ToPlot(range->high)) : QCPRange();
}

QCPRange SeriesPlottable::getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const {
  const auto range = index_ < chart_.SeriesCount() ? Shown().RangeY() : std::nullopt;
  found = range.has_value();
  return found ? QCPRange(range->low, range->high) : QCPRange();
}

QColor SeriesPlottable::ColourOf(const Series::Point& point) const {
  return ToQt(point.colour == kSeriesColour ? Shown().ShownColour() : point.colour);
}

void SeriesPlottable::draw(QCPPainter* painter) {
  // Between two ticks the program may have taken series away.
  if (index_ >= chart_.SeriesCount() || Shown().Count() == 0) return;
  const Place place(*keyAxis(), *valueAxis(), ScaleOf(chart_));
  painter->setAntialiasing(Shown().Count() <= kSmoothPoints);
  switch (Shown().Kind()) {
    case SeriesKind::Line:
      DrawLine(*painter, place);
      break;
    case SeriesKind::Bar:
      DrawBars(*painter, place);
      break;
    case SeriesKind::Gantt:
      DrawGantt(*painter, place);
      break;
    case SeriesKind::Points:
      DrawPoints(*painter, place);
      break;
  }
}

namespace {

// Collects the points of a line, a column of pixels at a time.
class LineStrip {
 public:
  explicit LineStrip(QCPPainter& painter) : painter_(painter) {}

  void Colour(const QColor& colour) {
    if (colour == colour_) return;
    const bool joined = open_;
    Flush();
    const QPointF last = line_.isEmpty() ? QPointF() : line_.back();
    Paint();
    if (joined) line_.append(last);
    colour_ = colour;
  }

  void Add(double x, double y, bool inside) {
    // Points outside are needed only where the line enters and leaves.
    const double column = inside ? std::floor(x) : (x < 0.0 ? -kFarAway : kFarAway);
    if (open_ && column == column_ && inside == inside_) {
      low_ = std::min(low_, y);
      high_ = std::max(high_, y);
      last_ = {x, y};
      return;
    }
    Flush();
    open_ = true;
    inside_ = inside;
    column_ = column;
    first_ = last_ = {x, y};
    low_ = high_ = y;
  }

  void Break() {
    Flush();
    Paint();
  }

 private:
  void Flush() {
    if (!open_) return;
    open_ = false;
    line_.append(first_);
    if (inside_ && low_ < std::min(first_.y(), last_.y())) line_.append({first_.x(), low_});
    if (inside_ && high_ > std::max(first_.y(), last_.y())) line_.append({first_.x(), high_});
    if (last_ != first_) line_.append(last_);
  }

  void Paint() {
    if (line_.size() == 1) {
      painter_.setPen(Qt::NoPen);
      painter_.setBrush(colour_);
      painter_.drawEllipse(line_.front(), kLineWidth, kLineWidth);
    } else if (line_.size() > 1) {
      painter_.setBrush(Qt::NoBrush);
      painter_.setPen(QPen(colour_, painter_.antialiasing() ? kLineWidth : 1.0));
      painter_.drawPolyline(line_);
    }
    line_.clear();
  }

  QCPPainter& painter_;
  QPolygonF line_;
  QColor colour_;
  QPointF first_;
  QPointF last_;
  double low_ = 0.0;
  double high_ = 0.0;
  double column_ = 0.0;
  bool inside_ = false;
  bool open_ = false;
};

}  // namespace

void SeriesPlottable::DrawLine(QCPPainter& painter, const Place& place) const {
  const Series& series = Shown();
  LineStrip strip(painter);
  const QColor usual = ToQt(series.ShownColour());
  strip.Colour(usual);
  for (int i = 0; i < series.Count(); ++i) {
    const Series::Point point = series.At(i);
    if (point.null || !std::isfinite(point.y)) {
      strip.Break();
      continue;
    }
    strip.Colour(point.colour == kSeriesColour ? usual : ToQt(point.colour));
    const double x = place.X(point.x);
    strip.Add(x, place.Y(static_cast<double>(point.y)), place.Across(x));
  }
  strip.Break();
}

void SeriesPlottable::DrawBars(QCPPainter& painter, const Place& place) const {
  struct Bar {
    float y = 0.0F;
    Colour colour = kSeriesColour;
    bool used = false;
  };
  const Series& series = Shown();
  const int left = static_cast<int>(place.area.left());
  std::vector<Bar> bars(static_cast<std::size_t>(std::max(place.area.width(), 0.0)) + 3);
  for (int i = 0; i < series.Count(); ++i) {
    const Series::Point point = series.At(i);
    if (point.null) continue;
    const double x = place.X(point.x);
    if (!place.Across(x)) continue;
    const auto column = static_cast<std::size_t>(std::max(static_cast<int>(x) - left + 1, 0));
    if (column >= bars.size()) continue;
    Bar& bar = bars[column];
    if (bar.used && std::abs(point.y) < std::abs(bar.y)) continue;
    bar = {point.y, point.colour, true};
  }
  double nearest = kWidestBar / kBarShare;
  int before = -1;
  for (std::size_t i = 0; i < bars.size(); ++i) {
    if (!bars[i].used) continue;
    const int column = static_cast<int>(i);
    if (before >= 0) nearest = std::min(nearest, static_cast<double>(column - before));
    before = column;
  }
  // Gaps of a pixel between bars of a few would only flicker.
  const double width = nearest <= kDenseBars ? nearest + 1.0 : nearest * kBarShare;
  const double ground = place.Y(0.0);
  painter.setAntialiasing(false);
  for (std::size_t i = 0; i < bars.size(); ++i) {
    if (!bars[i].used) continue;
    const double x = left + static_cast<double>(i) - 1.0;
    const double top = place.Y(static_cast<double>(bars[i].y));
    const QColor colour =
        ToQt(bars[i].colour == kSeriesColour ? series.ShownColour() : bars[i].colour);
    painter.fillRect(QRectF(x - width / 2.0, std::min(top, ground), width,
                            std::max(std::abs(top - ground), 1.0)),
                     colour);
  }
}

void SeriesPlottable::DrawGantt(QCPPainter& painter, const Place& place) const {
  const Series& series = Shown();
  const double height =
      std::clamp(place.UnitHeight() * kGanttShare, kThinnestGantt, kThickestGantt);
  painter.setAntialiasing(false);
  for (int i = 0; i < series.Count(); ++i) {
    const Series::Point point = series.At(i);
    if (point.null) continue;
    // A bar that grows is stored anew each time; only its longest is seen.
    if (i + 1 < series.Count()) {
      const Series::Point next = series.At(i + 1);
      if (next.x == point.x && next.y == point.y && next.end >= point.end) continue;
    }
    const double from = place.X(point.x);
    const double to = place.X(point.end);
    if (to < place.area.left() || from > place.area.right()) continue;
    const double y = place.Y(static_cast<double>(point.y));
    painter.fillRect(QRectF(from, y - height / 2.0, std::max(to - from, 1.0), height),
                     ColourOf(point));
  }
}

void SeriesPlottable::DrawPoints(QCPPainter& painter, const Place& place) const {
  const Series& series = Shown();
  const int width = static_cast<int>(place.area.width()) + 1;
  const int height = static_cast<int>(place.area.height()) + 1;
  if (width <= 0 || height <= 0) return;
  std::vector<bool> taken(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  painter.setAntialiasing(false);
  // The newest first: it alone shows where several fall onto one pixel.
  for (int i = series.Count() - 1; i >= 0; --i) {
    const Series::Point point = series.At(i);
    if (point.null) continue;
    const QPointF at(place.X(point.x), place.Y(static_cast<double>(point.y)));
    if (!place.area.contains(at)) continue;
    const auto column = static_cast<int>(at.x() - place.area.left());
    const auto row = static_cast<int>(at.y() - place.area.top());
    const auto pixel = static_cast<std::size_t>(row * width + column);
    if (pixel >= taken.size() || taken[pixel]) continue;
    taken[pixel] = true;
    painter.fillRect(QRectF(std::floor(at.x()) - kDotSize / 2, std::floor(at.y()) - kDotSize / 2,
                            kDotSize, kDotSize),
                     ColourOf(point));
  }
}

MarkerLayer::MarkerLayer(QCustomPlot* plot, const Chart& chart)
    : QCPLayerable(plot, QStringLiteral("main")), chart_(chart) {}

QRect MarkerLayer::clipRect() const {
  return parentPlot()->axisRect()->rect();
}

void MarkerLayer::draw(QCPPainter* painter) {
  const QRectF area = clipRect();
  const QCustomPlot& plot = *parentPlot();
  for (int i = 0; i < chart_.ToolCount(); ++i) {
    const Marker& marker = chart_.Tools(i);
    const MarkerDesign& design = marker.Design();
    if (!design.visible) continue;
    const QColor colour = ToQt(design.colour);
    painter->setPen(QPen(colour, 1, design.dashed ? Qt::DashLine : Qt::SolidLine));
    const auto level = [&](double y) {
      return std::clamp(plot.yAxis->coordToPixel(y), -kFarAway, kFarAway);
    };
    switch (design.kind) {
      case MarkerKind::HorizontalLine: {
        const double y = level(marker.Value());
        painter->drawLine(QLineF(area.left(), y, area.right(), y));
        break;
      }
      case MarkerKind::HorizontalBand: {
        const double low = level(marker.Band().low);
        const double high = level(marker.Band().high);
        QColor fill = colour;
        fill.setAlpha(kBandAlpha);
        painter->fillRect(QRectF(area.left(), std::min(low, high), area.width(),
                                 std::max(std::abs(low - high), 1.0)),
                          fill);
        break;
      }
      case MarkerKind::VerticalLine: {
        const double key = ScaleOf(chart_).ToPlot(marker.Value());
        const double x = std::clamp(plot.xAxis->coordToPixel(key), -kFarAway, kFarAway);
        painter->drawLine(QLineF(x, area.top(), x, area.bottom()));
        break;
      }
      case MarkerKind::Circle: {
        const double key = ScaleOf(chart_).ToPlot(0.0);
        const double across = plot.xAxis->coordToPixel(key + marker.Value());
        const QPointF middle(plot.xAxis->coordToPixel(key), level(0.0));
        painter->setBrush(Qt::NoBrush);
        painter->drawEllipse(middle, std::abs(across - middle.x()),
                             std::abs(level(marker.Value()) - middle.y()));
        break;
      }
    }
  }
}

LegendStrip::LegendStrip(QCustomPlot* plot, const Chart& chart)
    : QCPLayoutElement(plot), chart_(chart) {
  setMargins({kStripMargin, kStripMargin, kStripMargin, 0});
  // A layout element that is made outside a layout has no layer of its own yet.
  setLayer(QStringLiteral("legend"));
  Arrange(0);
}

template <class Visit>
int LegendStrip::Flow(int width, Visit&& visit) const {
  const QCustomPlot& plot = *parentPlot();
  const QFontMetrics metrics(plot.font());
  const int lineHeight = metrics.height();
  int x = 0;
  int line = 0;
  QString title = ToQt(chart_.Text());
  if (!chart_.Note().empty())
    title += (title.isEmpty() ? QString() : QStringLiteral("  ")) + ToQt(chart_.Note());
  if (!title.isEmpty()) {
    visit(QRect(0, 0, width, lineHeight), title, -1);
    x = QFontMetrics(TitleFont(plot)).horizontalAdvance(title) + kEntryGap;
  }
  if (!chart_.Legend()) return 1;
  for (int i = 0; i < chart_.SeriesCount(); ++i) {
    const QString entry = ToQt(chart_.Series(i).Title());
    if (entry.isEmpty()) continue;
    const int needed = kSampleWidth + kStripMargin + metrics.horizontalAdvance(entry);
    if (x > 0 && x + needed > width) {
      x = 0;
      if (++line >= kMostLegendLines) return kMostLegendLines;
    }
    visit(QRect(x, line * lineHeight, needed, lineHeight), entry, i);
    x += needed + kEntryGap;
  }
  return line + 1;
}

void LegendStrip::Arrange(int width) {
  lines_ = Flow(std::max(width - 2 * kStripMargin, 1), [](const QRect&, const QString&, int) {});
  const int height = lines_ * QFontMetrics(parentPlot()->font()).height() + kStripMargin;
  setMinimumSize(0, height);
  setMaximumSize(QWIDGETSIZE_MAX, height);
}

void LegendStrip::draw(QCPPainter* painter) {
  const QPoint corner = rect().topLeft();
  const QFont usual = parentPlot()->font();
  Flow(rect().width(), [&](QRect place, const QString& text, int series) {
    place.translate(corner);
    painter->setPen(Qt::black);
    if (series < 0) {
      painter->setFont(TitleFont(*parentPlot()));
      const QString shown =
          QFontMetrics(TitleFont(*parentPlot())).elidedText(text, Qt::ElideRight, place.width());
      painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter, shown);
      return;
    }
    const QRect sample(place.left(), place.center().y() - 4, kSampleWidth, 8);
    painter->fillRect(sample, ToQt(chart_.Series(series).ShownColour()));
    painter->setPen(QColor(0x60, 0x60, 0x60));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(sample);
    painter->setPen(Qt::black);
    painter->setFont(usual);
    painter->drawText(place.adjusted(kSampleWidth + kStripMargin, 0, 2, 0),
                      Qt::AlignLeft | Qt::AlignVCenter, text);
  });
}

TimeTicker::TimeTicker() {
  setDateTimeSpec(Qt::UTC);
}

double TimeTicker::getTickStep(const QCPRange& range) {
  days_ = range.size() > kSecondsPerDay && picture_.find_first_of("dD") == std::string::npos;
  return QCPAxisTickerDateTime::getTickStep(range);
}

QString TimeTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  const DateTime moment{tick / kSecondsPerDay + kUnixEpochDays};
  QString label = ToQt(FormatDateTime(moment, picture_));
  if (days_) label += QLatin1Char('\n') + ToQt(FormatDateTime(moment, "dd mmm"));
  return label;
}

}  // namespace fathomline
