#include "faces/qt/series_plottable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "base/datetime.h"
#include "faces/qt/chart_parts.h"
#include "faces/qt/look.h"
#include "faces/qt/marks.h"

namespace fathomline {
namespace {

constexpr double kUnixEpochDays = 25569.0;
constexpr double kLineWidth = 1.5;
// A line of so few is smooth on a narrow chart too.
constexpr int kSmoothPoints = 800;
constexpr double kFarAway = 1e5;
constexpr double kWidestBar = 26.0;
constexpr double kMarksApart = 96.0;
// Of the marks of one satellite against those of the next.
constexpr double kMarkShift = 7.0;
constexpr double kMarkRadius = 3.0;
constexpr double kLeastDigitRoom = 14.0;
constexpr double kGanttShare = 0.6;
constexpr double kThinnestGantt = 3.0;
constexpr double kThickestGantt = 14.0;
constexpr int kDotSize = 3;

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
  // Columns of pixels count from the left edge; what lies beside the area is one column each.
  static constexpr int kBefore = -1;

  Place(const QCPAxis& bottom, const QCPAxis& side, const BottomScale& scale)
      : area(bottom.axisRect()->rect()), columns(static_cast<int>(area.width()) + 1) {
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
  QPointF At(const Series::Point& point) const {
    return {X(point.x), Y(static_cast<double>(point.y))};
  }
  int Column(double pixel) const {
    const double from = pixel - area.left() + 1.0;
    if (from < 0.0) return kBefore;
    return std::min(static_cast<int>(from), columns + 1);
  }
  bool Across(int column) const { return column >= 0 && column <= columns; }
  bool OneColumn(const AxisRange& x) const { return Column(X(x.low)) == Column(X(x.high)); }
  double UnitHeight() const { return std::abs(perY_); }

  const QRectF area;
  const int columns;

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

QColor SeriesPlottable::ColourOf(Colour colour, ColourUse use) const {
  return PaintOf(colour == kSeriesColour ? Shown().ShownColour() : colour, use);
}

void SeriesPlottable::draw(QCPPainter* painter) {
  end_ = {};
  // Between two ticks the program may have taken series away.
  if (index_ >= chart_.SeriesCount() || Shown().Count() == 0 || Shown().Hidden()) return;
  const Place place(*keyAxis(), *valueAxis(), ScaleOf(chart_));
  painter->setAntialiasing(false);
  switch (Shown().Kind()) {
    case SeriesKind::Line:
      DrawLine(*painter, place);
      break;
    case SeriesKind::Bar:
      if (Shown().Design().steps) {
        DrawSteps(*painter, place);
      } else {
        DrawBars(*painter, place);
      }
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
  // Neighbouring points that fall onto one column; low and high are pixels.
  struct Run {
    int column = 0;
    bool inside = false;
    QPointF first;
    QPointF last;
    double low = 0.0;
    double high = 0.0;
  };

  // A line of a satellite has marks from `firstMark` pixels on, if its round has one.
  struct Style {
    int smoothPoints = 0;
    bool dashed = false;
    std::optional<MarkShape> mark;
    double firstMark = 0.0;
  };

  LineStrip(QCPPainter& painter, const Style& style) : painter_(painter), style_(style) {}

  // The last point drawn that lies within the plot.
  std::optional<QPointF> End() const { return end_; }

  void SetColour(const QColor& colour) {
    const bool joined = open_;
    Flush();
    const QPointF last = line_.isEmpty() ? QPointF() : line_.back();
    Paint();
    if (joined) line_.append(last);
    colour_ = colour;
  }

  void Add(const Run& run) {
    if (open_ && run.column == run_.column) {
      run_.low = std::min(run_.low, run.low);
      run_.high = std::max(run_.high, run.high);
      run_.last = run.last;
      return;
    }
    Flush();
    open_ = true;
    run_ = run;
  }

  void Break() {
    Flush();
    Paint();
  }

 private:
  void Flush() {
    if (!open_) return;
    open_ = false;
    const auto& [column, inside, first, last, low, high] = run_;
    line_.append(first);
    // Points outside are needed only where the line enters and leaves.
    if (inside && low < std::min(first.y(), last.y())) line_.append({first.x(), low});
    if (inside && high > std::max(first.y(), last.y())) line_.append({first.x(), high});
    if (last != first) line_.append(last);
    if (inside) end_ = last;
  }

  void Paint() {
    if (line_.size() == 1) {
      painter_.setAntialiasing(true);
      painter_.setPen(Qt::NoPen);
      painter_.setBrush(colour_);
      painter_.drawEllipse(line_.front(), kLineWidth, kLineWidth);
    } else if (line_.size() > 1) {
      painter_.setBrush(Qt::NoBrush);
      // Where the line fills its columns there is nothing to smooth.
      const bool smooth = line_.size() <= style_.smoothPoints;
      QPen pen(colour_, smooth ? kLineWidth : 1.0);
      constexpr double kDash = 8.0;
      constexpr double kDashGap = 4.0;
      if (smooth && style_.dashed) {
        pen.setDashPattern({kDash / kLineWidth, kDashGap / kLineWidth});
        pen.setCapStyle(Qt::FlatCap);
      }
      painter_.setAntialiasing(smooth);
      painter_.setPen(pen);
      painter_.drawPolyline(line_);
      if (style_.mark) PaintMarks();
    }
    line_.clear();
  }

  // At the same columns of the plot, however the line runs.
  void PaintMarks() {
    const auto behind = [this](double x) {
      return style_.firstMark + kMarksApart * std::ceil((x - style_.firstMark) / kMarksApart);
    };
    for (qsizetype i = 1; i < line_.size(); ++i) {
      const QPointF from = line_[i - 1];
      const QPointF to = line_[i];
      for (double x = behind(from.x()); x < to.x(); x += kMarksApart) {
        const double y = from.y() + (to.y() - from.y()) * (x - from.x()) / (to.x() - from.x());
        DrawMark(painter_, {x, y}, *style_.mark, kMarkRadius, colour_, true);
      }
    }
  }

  QCPPainter& painter_;
  Style style_;
  std::optional<QPointF> end_;
  QPolygonF line_;
  QColor colour_;
  Run run_;
  bool open_ = false;
};

}  // namespace

void SeriesPlottable::DrawLine(QCPPainter& painter, const Place& place) {
  const Series& series = Shown();
  LineStrip::Style style{.smoothPoints = std::max(place.columns, kSmoothPoints), .mark = {}};
  const int satellite = series.Design().satellite;
  if (satellite >= 0) {
    const int round = SatelliteRound(satellite);
    style.dashed = round % 2 == 1;
    style.mark = MarkOfRound(round);
    style.firstMark = place.area.left() + std::fmod(kMarkShift * satellite, kMarksApart);
  }
  LineStrip strip(painter, style);
  Colour colour = kSeriesColour;
  strip.SetColour(ColourOf(colour));
  const auto add = [&](const Series::Point& first, const Series::Point& last, double low,
                       double high) {
    if (first.colour != colour) strip.SetColour(ColourOf(colour = first.colour));
    const QPointF from = place.At(first);
    const int column = place.Column(from.x());
    strip.Add({column, place.Across(column), from, place.At(last), place.Y(high), place.Y(low)});
  };
  for (int s = 0; s < series.StretchCount(); ++s) {
    const Series::Stretch stretch = series.StretchAt(s);
    if (stretch.uniform && place.OneColumn(stretch.x)) {
      add(series.At(stretch.begin), series.At(stretch.end - 1), stretch.y->low, stretch.y->high);
      continue;
    }
    int i = stretch.begin;
    while (i < stretch.end) {
      const Series::Point first = series.At(i);
      if (first.null || !std::isfinite(first.y)) {
        strip.Break();
        ++i;
        continue;
      }
      // As far as one column goes.
      const int column = place.Column(place.X(first.x));
      Series::Point last = first;
      float low = first.y;
      float high = first.y;
      while (++i < stretch.end) {
        const Series::Point point = series.At(i);
        const bool joins = !point.null && std::isfinite(point.y) && point.colour == first.colour &&
                           place.Column(place.X(point.x)) == column;
        if (!joins) break;
        low = std::min(low, point.y);
        high = std::max(high, point.y);
        last = point;
      }
      add(first, last, static_cast<double>(low), static_cast<double>(high));
    }
  }
  strip.Break();
  if (satellite >= 0) end_ = strip.End();
}

std::vector<SeriesPlottable::Bar> SeriesPlottable::BarsOf(const Place& place) const {
  const Series& series = Shown();
  std::vector<Bar> bars(static_cast<std::size_t>(place.columns) + 1);
  const auto add = [&](int column, double y, Colour colour) {
    Bar& bar = bars[static_cast<std::size_t>(column)];
    if (!bar.used || std::abs(y) >= std::abs(bar.y)) bar = {y, colour, true};
  };
  for (int s = 0; s < series.StretchCount(); ++s) {
    const Series::Stretch stretch = series.StretchAt(s);
    const int first = place.Column(place.X(stretch.x.low));
    const int last = place.Column(place.X(stretch.x.high));
    if (!stretch.y || (first == last && !place.Across(first))) continue;
    if (first == last && stretch.uniform) {
      const auto& [low, high] = *stretch.y;
      add(first, std::abs(low) > std::abs(high) ? low : high, series.At(stretch.begin).colour);
      continue;
    }
    for (int i = stretch.begin; i < stretch.end; ++i) {
      const Series::Point point = series.At(i);
      const int column = first == last ? first : place.Column(place.X(point.x));
      if (point.null || !place.Across(column)) continue;
      add(column, static_cast<double>(point.y), point.colour);
    }
  }
  return bars;
}

void SeriesPlottable::DrawBars(QCPPainter& painter, const Place& place) const {
  const std::vector<Bar> bars = BarsOf(place);
  int nearest = static_cast<int>(kWidestBar);
  int before = -1;
  for (int column = 0; column <= place.columns; ++column) {
    if (!bars[static_cast<std::size_t>(column)].used) continue;
    if (before >= 0) nearest = std::min(nearest, column - before);
    before = column;
  }
  // A missed sample leaves no gap, neither in a run of equal bars nor behind it.
  const int apart = 2 * nearest;
  const double half = nearest / 2.0;
  const double ground = place.Y(0.0);
  const bool digits = Shown().Design().digits;
  // From and to are columns.
  const auto paint = [&](const Bar& bar, double from, double to) {
    const double left = std::max(place.area.left() + from - 1.0, place.area.left());
    const double right = std::min(place.area.left() + to - 1.0, place.area.right() + 1.0);
    const double end = place.Y(bar.y);
    const QRectF run(left, std::min(end, ground), std::max(right - left, 1.0),
                     std::abs(end - ground));
    painter.fillRect(run, ColourOf(bar.colour, ColourUse::Fill));
    const double edge = bar.y < 0.0 ? end - kBarEdge : end;
    painter.fillRect(QRectF(run.left(), edge, run.width(), kBarEdge), ColourOf(bar.colour));
    if (!digits || run.width() < kLeastDigitRoom) return;
    painter.setPen(ColourOf(bar.colour, ColourUse::Text));
    const QFontMetricsF metrics(painter.font());
    // Above the edge where there is no room below it.
    const bool below = run.height() > metrics.height() + kBarEdge;
    const double top = below ? end + kBarEdge : end - metrics.height();
    painter.drawText(QRectF(run.left(), top, run.width(), metrics.height()), Qt::AlignCenter,
                     QString::number(bar.y));
  };
  painter.setFont(SmallFont(parentPlot()->font()));
  std::optional<double> from;
  for (int column = 0; column <= place.columns;) {
    const Bar& bar = bars[static_cast<std::size_t>(column)];
    if (!bar.used) {
      ++column;
      continue;
    }
    int last = column;
    int next = column + 1;
    for (; next <= place.columns && next - last <= apart; ++next) {
      const Bar& other = bars[static_cast<std::size_t>(next)];
      if (!other.used) continue;
      if (other.y != bar.y || other.colour != bar.colour) break;
      last = next;
    }
    const bool joined = next <= place.columns && next - last <= apart;
    const double to = joined ? (last + next) / 2.0 : last + half;
    paint(bar, from.value_or(column - half), to);
    from = joined ? std::optional(to) : std::nullopt;
    column = last + 1;
  }
}

void SeriesPlottable::DrawSteps(QCPPainter& painter, const Place& place) const {
  const std::vector<Bar> bars = BarsOf(place);
  QPolygonF steps;
  for (int column = 0; column <= place.columns; ++column) {
    const Bar& bar = bars[static_cast<std::size_t>(column)];
    if (!bar.used) continue;
    const QPointF at(place.area.left() + column - 1.0, place.Y(bar.y));
    if (!steps.isEmpty()) steps.append({at.x(), steps.back().y()});
    steps.append(at);
  }
  painter.setPen(QPen(PaintOf(look::kMutedInk), 1.0));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(steps);
}

void SeriesPlottable::DrawGantt(QCPPainter& painter, const Place& place) const {
  const Series& series = Shown();
  const double height =
      std::clamp(place.UnitHeight() * kGanttShare, kThinnestGantt, kThickestGantt);
  // A bar that grows is stored anew each time; only its longest is seen.
  std::optional<Series::Point> longest;
  const auto paint = [&] {
    if (!longest) return;
    const double from = place.X(longest->x);
    const double to = place.X(longest->end);
    if (to < place.area.left() || from > place.area.right()) return;
    const double y = place.Y(static_cast<double>(longest->y));
    painter.fillRect(QRectF(from, y - height / 2.0, std::max(to - from, 1.0), height),
                     ColourOf(longest->colour));
  };
  const auto grows = [&](const Series::Point& bar) {
    return longest && bar.x == longest->x && bar.y == longest->y && bar.end >= longest->end;
  };
  for (int s = 0; s < series.StretchCount(); ++s) {
    const Series::Stretch stretch = series.StretchAt(s);
    const bool oneRun = stretch.uniform && stretch.y->low == stretch.y->high &&
                        series.At(stretch.begin).x == series.At(stretch.end - 1).x;
    for (int i = oneRun ? stretch.end - 1 : stretch.begin; i < stretch.end; ++i) {
      const Series::Point bar = series.At(i);
      if (bar.null) continue;
      if (!grows(bar)) paint();
      longest = bar;
    }
  }
  paint();
}

void SeriesPlottable::DrawPoints(QCPPainter& painter, const Place& place) const {
  const Series& series = Shown();
  const int width = static_cast<int>(place.area.width()) + 1;
  const int height = static_cast<int>(place.area.height()) + 1;
  // With room for the dots at the edges.
  constexpr int kAround = kDotSize / 2;
  const int stride = width + 2 * kAround;
  std::vector<char> covered(static_cast<std::size_t>(stride) *
                            static_cast<std::size_t>(height + 2 * kAround));
  constexpr char kCovered = 1;
  constexpr char kMiddle = 2;
  std::vector<QRect> dots;
  std::vector<Colour> colours;
  // The newest first: what it covers need not be drawn.
  for (int i = series.Count() - 1; i >= 0; --i) {
    const Series::Point point = series.At(i);
    if (point.null) continue;
    const QPointF at = place.At(point);
    const int column = static_cast<int>(std::floor(at.x() - place.area.left()));
    const int row = static_cast<int>(std::floor(at.y() - place.area.top()));
    if (column < 0 || column >= width || row < 0 || row >= height) continue;
    // Two thirds of a cloud fall onto what is there already.
    char& middle = covered[static_cast<std::size_t>((row + kAround) * stride + column + kAround)];
    if ((middle & kMiddle) != 0) continue;
    bool seen = false;
    for (int y = row; y < row + kDotSize; ++y) {
      char* const line = &covered[static_cast<std::size_t>(y * stride + column)];
      for (int x = 0; x < kDotSize; ++x) {
        seen = seen || line[x] == 0;
        line[x] |= kCovered;
      }
    }
    middle |= kMiddle;
    if (!seen) continue;
    dots.emplace_back(static_cast<int>(place.area.left()) + column - kAround,
                      static_cast<int>(place.area.top()) + row - kAround, kDotSize, kDotSize);
    colours.push_back(point.colour);
  }
  std::reverse(dots.begin(), dots.end());
  std::reverse(colours.begin(), colours.end());
  painter.setPen(Qt::NoPen);
  for (std::size_t from = 0; from < dots.size();) {
    std::size_t to = from + 1;
    while (to < dots.size() && colours[to] == colours[from]) ++to;
    painter.setBrush(ColourOf(colours[from]));
    painter.drawRects(&dots[from], static_cast<int>(to - from));
    from = to;
  }
}

}  // namespace fathomline
