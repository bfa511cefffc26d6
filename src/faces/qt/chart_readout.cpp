#include "faces/qt/chart_readout.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/datetime.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/series_plottable.h"

namespace fathomline {
namespace {

// Pixels.
constexpr double kBeside = 24.0;
constexpr double kUnder = 12.0;
constexpr int kPadding = 6;
constexpr int kInset = 6;
constexpr int kSample = 8;
constexpr int kGap = 6;
constexpr int kFree = 12;

constexpr std::size_t kMostSatellites = 8;

struct Found {
  int index = -1;
  Series::Point point;
  double distance = std::numeric_limits<double>::infinity();
};

Found NearestPoint(const Series& series, const Pointer& to) {
  const bool scattered = series.Kind() == SeriesKind::Points;
  const auto outside = [](double value, double low, double high) {
    return std::abs(value - std::clamp(value, low, std::max(low, high)));
  };
  const auto distance = [&](const AxisRange& x, const AxisRange& y) {
    const double across = outside(to.x, x.low, x.high) / to.perPixelX;
    return scattered ? std::hypot(across, outside(to.left, y.low, y.high) / to.perPixelLeft)
                     : across;
  };
  Found nearest;
  const auto search = [&](const Series::Stretch& stretch) {
    for (int i = stretch.begin; i < stretch.end; ++i) {
      const Series::Point point = series.At(i);
      if (point.null) continue;
      const auto y = static_cast<double>(point.y);
      const double here = distance({point.x, point.end}, {y, y});
      if (here < nearest.distance) nearest = {i, point, here};
    }
  };
  // From the most promising stretch on, so that most of the others need not be looked at.
  std::vector<std::pair<double, int>> stretches;
  for (int s = 0; s < series.StretchCount(); ++s) {
    const Series::Stretch stretch = series.StretchAt(s);
    if (stretch.y) stretches.emplace_back(distance(stretch.x, *stretch.y), s);
  }
  std::sort(stretches.begin(), stretches.end());
  for (const auto& [bound, s] : stretches) {
    if (bound >= nearest.distance) break;
    search(series.StretchAt(s));
  }
  return nearest;
}

// Whether the pointer is on a line between two points that follow each other as evenly as their
// neighbours do, however far apart they are drawn.
bool OnEvenLine(const Series& series, const Found& nearest, double x) {
  if (series.Kind() != SeriesKind::Line) return false;
  const auto at = [&](int index) -> std::optional<double> {
    if (index < 0 || index >= series.Count()) return {};
    const Series::Point point = series.At(index);
    return point.null ? std::nullopt : std::optional(point.x);
  };
  const int towards = x > nearest.point.x ? 1 : -1;
  const auto next = at(nearest.index + towards);
  if (!next) return false;
  const auto gap = [&](int from, int to) {
    const auto a = at(from);
    const auto b = at(to);
    return a && b ? std::abs(*a - *b) : 0.0;
  };
  const double before = gap(nearest.index, nearest.index - towards);
  const double behind = gap(nearest.index + towards, nearest.index + 2 * towards);
  constexpr double kEven = 1.6;
  return std::abs(*next - nearest.point.x) <= kEven * std::max(before, behind);
}

}  // namespace

std::optional<Series::Point> PointBeside(const Series& series, const Pointer& pointer) {
  const Found nearest = NearestPoint(series, pointer);
  if (nearest.index < 0) return {};
  const bool beside = nearest.distance <= kBeside || OnEvenLine(series, nearest, pointer.x);
  return beside ? std::optional(nearest.point) : std::nullopt;
}

QString ValueText(const Series& series, double value, double perPixel) {
  const SeriesDesign& design = series.Design();
  constexpr int kMostDecimals = 4;
  constexpr double kShare = 1000.0;
  int decimals = 0;
  if (!design.whole) {
    const AxisRange span = series.RangeY().value_or(AxisRange{value, value});
    const double fine = std::max(span.high - span.low, std::abs(value)) / kShare;
    const double finest = std::min(fine > 0.0 ? fine : 1.0, perPixel);
    decimals = std::clamp(-static_cast<int>(std::floor(std::log10(finest))), 0, kMostDecimals);
  }
  QString text = QString::number(value, 'f', decimals);
  // No zeros behind.
  while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.'))) text.chop(1);
  if (text == QLatin1String("-0")) text = QStringLiteral("0");
  if (!design.unit.empty()) text += QLatin1Char(' ') + ToQt(design.unit);
  return text;
}

QString MomentText(const Chart& chart, double x, double perPixel) {
  if (!ScaleOf(chart).time) return {};
  const bool days = chart.Bottom().Range().high - chart.Bottom().Range().low > 1.0;
  const std::string_view picture = days ? "dd mmm hh:nn:ss" : "hh:nn:ss";
  // Only a close look needs more than seconds.
  if (perPixel * kSecondsPerDay > 0.1) return ToQt(FormatDateTime({x}, picture));
  const double tenths = std::round(x * kSecondsPerDay * 10.0);
  const double seconds = std::floor(tenths / 10.0);
  return ToQt(FormatDateTime({seconds / kSecondsPerDay}, picture)) +
         QStringLiteral(".%1").arg(tenths - seconds * 10.0, 0, 'f', 0);
}

QString ReadOut::Text() const {
  QStringList all = heads.isEmpty() ? QStringList{head} : heads;
  for (const Line& line : lines) {
    all.append(line.name + QStringLiteral(": ") + line.values.join(QStringLiteral("; ")));
  }
  return all.join(QLatin1Char('\n'));
}

ReadOut ReadOutOf(const Chart& chart, const Pointer& pointer, bool y) {
  struct Entry {
    const Series* series;
    Series::Point point;
    double distance;  // pixels up or down
  };
  std::vector<Entry> entries;
  std::optional<double> x;
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    const Series& series = chart.Series(i);
    if (series.Hidden()) continue;
    const auto point = PointBeside(series, pointer);
    if (!point) continue;
    if (!x || std::abs(point->x - pointer.x) < std::abs(*x - pointer.x)) x = point->x;
    const auto value = static_cast<double>(point->y);
    const double distance = series.RightAxis()
                                ? std::abs(value - pointer.right) / pointer.perPixelRight
                                : std::abs(value - pointer.left) / pointer.perPixelLeft;
    entries.push_back({&series, *point, y ? distance : 0.0});
  }
  if (!x) return {};
  const bool satellites = chart.ShownLegend() == Legend::AtLineEnds;
  const auto rank = [&](const Entry& entry) {
    return satellites || entry.distance <= kUnder ? entry.distance
                                                  : std::numeric_limits<double>::infinity();
  };
  std::stable_sort(entries.begin(), entries.end(),
                   [&](const Entry& a, const Entry& b) { return rank(a) < rank(b); });
  if (satellites && entries.size() > kMostSatellites) entries.resize(kMostSatellites);

  ReadOut readOut;
  readOut.head = MomentText(chart, *x, pointer.perPixelX);
  for (const Entry& entry : entries) {
    const Series& series = *entry.series;
    const double perPixel = series.RightAxis() ? pointer.perPixelRight : pointer.perPixelLeft;
    const auto value = static_cast<double>(entry.point.y);
    if (series.Kind() == SeriesKind::Points) {
      const auto metres = [&](double of) { return ValueText(series, of, perPixel); };
      readOut.head = QStringLiteral("Nearest fix");
      readOut.lines.push_back({QStringLiteral("North"), {metres(value)}, {}});
      readOut.lines.push_back({QStringLiteral("East"), {metres(entry.point.x)}, {}});
      continue;
    }
    const Colour own = entry.point.colour;
    readOut.lines.push_back(
        {series.Title().empty() ? QStringLiteral("Value") : ToQt(series.Title()),
         {ValueText(series, value, perPixel)},
         own == kSeriesColour ? series.ShownColour() : own});
  }
  return readOut;
}

namespace {

struct Widths {
  int names = 0;
  std::vector<int> values;

  int Sum() const {
    int sum = kSample + kGap + names;
    for (const int value : values) sum += 2 * kGap + value;
    return sum;
  }
};

Widths WidthsOf(const ReadOut& readOut, const QFontMetrics& metrics) {
  Widths widths;
  const auto take = [&](const QStringList& texts) {
    const auto count = static_cast<std::size_t>(texts.size());
    if (widths.values.size() < count) widths.values.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      widths.values[i] =
          std::max(widths.values[i], metrics.horizontalAdvance(texts[static_cast<int>(i)]));
    }
  };
  take(readOut.heads);
  for (const ReadOut::Line& line : readOut.lines) {
    widths.names = std::max(widths.names, metrics.horizontalAdvance(line.name));
    take(line.values);
  }
  return widths;
}

bool Headed(const ReadOut& readOut) {
  return !readOut.head.isEmpty() || !readOut.heads.isEmpty();
}

}  // namespace

QSize BoxSize(const ReadOut& readOut, const QFont& font) {
  const QFontMetrics metrics(font);
  const int width =
      std::max(WidthsOf(readOut, metrics).Sum(), metrics.horizontalAdvance(readOut.head));
  const int lines = static_cast<int>(readOut.lines.size()) + (Headed(readOut) ? 1 : 0);
  return {width + 2 * kPadding, lines * metrics.height() + 2 * kPadding};
}

void PaintBox(QPainter& painter, const QRect& box, const ReadOut& readOut, const QFont& font) {
  const QFontMetrics metrics(font);
  const Widths widths = WidthsOf(readOut, metrics);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor ground = PaintOf(look::kChartGround);
  constexpr float kGroundAlpha = 0.93F;
  ground.setAlphaF(kGroundAlpha);
  painter.setPen(QPen(PaintOf(look::kEdge), 1.0));
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);
  painter.setFont(font);
  QRect line(box.left() + kPadding, box.top() + kPadding, box.width() - 2 * kPadding,
             metrics.height());
  const auto write = [&](const QStringList& texts) {
    int right = line.right();
    for (auto i = texts.size(); i-- > 0;) {
      painter.drawText(QRect(line.left(), line.top(), right - line.left() + 1, line.height()),
                       Qt::AlignRight | Qt::AlignVCenter, texts[i]);
      right -= widths.values[static_cast<std::size_t>(i)] + 2 * kGap;
    }
  };
  if (Headed(readOut)) {
    painter.setPen(PaintOf(look::kMutedInk));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, readOut.head);
    write(readOut.heads);
    line.translate(0, line.height());
  }
  for (const ReadOut::Line& entry : readOut.lines) {
    if (entry.colour) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(PaintOf(*entry.colour));
      painter.drawRoundedRect(
          QRect(line.left(), line.center().y() - kSample / 2 + 1, kSample, kSample), 2.0, 2.0);
    }
    painter.setPen(PaintOf(look::kInk));
    painter.drawText(line.adjusted(kSample + kGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     entry.name);
    write(entry.values);
    line.translate(0, line.height());
  }
}

void PaintReadOut(QPainter& painter, const QRect& plot, const QPoint& pointer,
                  const ReadOut& readOut, const QFont& font, const QRect& taken) {
  const QRect free(pointer - QPoint(kFree, kFree), QSize(2 * kFree, 2 * kFree));
  const QRect room = plot.adjusted(kInset, kInset, -kInset, -kInset);
  const bool toLeft = pointer.x() > plot.center().x();
  const bool toTop = pointer.y() > plot.center().y();
  ReadOut shown = readOut;
  for (; !shown.Empty(); shown.lines.pop_back()) {
    const std::size_t left = readOut.lines.size() - shown.lines.size();
    if (left > 0) shown.head = readOut.head + QStringLiteral("  +%1").arg(left);
    QRect box(QPoint(), BoxSize(shown, font));
    box.moveTopLeft({toLeft ? room.left() : room.right() - box.width() + 1,
                     toTop ? room.top() : room.bottom() - box.height() + 1});
    if (!room.contains(box) || box.intersects(free) || box.intersects(taken)) continue;
    PaintBox(painter, box, shown, font);
    return;
  }
}

}  // namespace fathomline
