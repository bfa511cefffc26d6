#include "faces/qt/chart_cursors.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/datetime.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"

namespace fathomline {
namespace {

// Pixels.
constexpr double kGrip = 5.0;
constexpr int kInset = 6;
constexpr int kChipAcross = 4;

constexpr auto kLetters = std::to_array<QChar>({u'A', u'B'});
const QString kDifference = QStringLiteral("B \u2212 A");

// The x nearest to `to` of the points that lie from `from` on in a direction: -1, 1, or 0 for all.
std::optional<double> NearestFrom(const Chart& chart, double to, int direction, double from) {
  const auto beyond = [&](double x) { return direction == 0 || (x - from) * direction > 0.0; };
  std::optional<double> nearest;
  const auto nearer = [&](double x) {
    return !nearest || std::abs(x - to) < std::abs(*nearest - to);
  };
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    const Series& series = chart.Series(i);
    if (series.Hidden()) continue;
    for (int s = 0; s < series.StretchCount(); ++s) {
      const Series::Stretch stretch = series.StretchAt(s);
      const bool any = beyond(stretch.x.low) || beyond(stretch.x.high);
      if (!any || !stretch.y || !nearer(std::clamp(to, stretch.x.low, stretch.x.high))) continue;
      for (int p = stretch.begin; p < stretch.end; ++p) {
        const Series::Point point = series.At(p);
        if (!point.null && beyond(point.end) && nearer(point.end)) nearest = point.end;
      }
    }
  }
  return nearest;
}

// "0:04:57", with tenths of a second where there are any, and whole days before it.
QString SpanText(double days) {
  constexpr double kTenthsPerDay = kSecondsPerDay * 10.0;
  constexpr qint64 kTenths = 10;
  constexpr qint64 kSixty = 60;
  constexpr qint64 kHours = 24;
  const qint64 all = std::llround(std::abs(days) * kTenthsPerDay);
  const qint64 seconds = all / kTenths;
  const auto two = [](qint64 number) {
    return QStringLiteral("%1").arg(number % kSixty, 2, 10, QLatin1Char('0'));
  };
  QString text = days < 0.0 && all > 0 ? QStringLiteral("\u2212") : QString();
  const qint64 hours = seconds / kSixty / kSixty;
  if (hours >= kHours) text += QStringLiteral("%1 d ").arg(hours / kHours);
  text += QStringLiteral("%1:%2:%3").arg(hours % kHours).arg(two(seconds / kSixty), two(seconds));
  if (all % kTenths != 0) text += QStringLiteral(".%1").arg(all % kTenths);
  return text;
}

}  // namespace

double NearestPointX(const Chart& chart, double x) {
  return NearestFrom(chart, x, 0, x).value_or(x);
}

ChartCursors PlaceCursors(const Chart& chart) {
  const AxisRange shown = chart.Bottom().Range();
  const double third = (shown.high - shown.low) / 3.0;
  return {.x = {NearestPointX(chart, shown.low + third), NearestPointX(chart, shown.high - third)}};
}

void StepCursor(ChartCursors& cursors, const Chart& chart, int direction, double far) {
  double& x = cursors.x.at(cursors.held);
  x = NearestFrom(chart, x + direction * far, direction, x).value_or(x);
}

void NameColumns(ReadOut& readOut) {
  readOut.heads = {kLetters[0], kLetters[1], kDifference};
}

ReadOut CursorReadOut(const Chart& chart, const ChartCursors& cursors, const Pointer& scale) {
  ReadOut readOut;
  for (std::size_t i = 0; i < cursors.x.size(); ++i) {
    readOut.heads.append(kLetters[i] + QLatin1Char(' ') +
                         MomentText(chart, cursors.x[i], scale.perPixelX));
  }
  readOut.heads.append(kDifference + QStringLiteral("  ") + SpanText(cursors.x[1] - cursors.x[0]));
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    const Series& series = chart.Series(i);
    if (series.Hidden()) continue;
    const double perPixel = series.RightAxis() ? scale.perPixelRight : scale.perPixelLeft;
    const auto text = [&](double value) { return ValueText(series, value, perPixel); };
    std::array<std::optional<double>, 2> values;
    QStringList texts;
    for (std::size_t c = 0; c < values.size(); ++c) {
      Pointer pointer = scale;
      pointer.x = cursors.x[c];
      if (const auto point = PointBeside(series, pointer)) values[c] = point->y;
      texts.append(values[c] ? text(*values[c]) : QStringLiteral("\u2013"));
    }
    if (!values[0] && !values[1]) continue;
    // A quality or a station is a name, of which there is no difference.
    const bool name = series.Design().digits || series.Kind() == SeriesKind::Gantt;
    const bool both = values[0] && values[1] && !name;
    texts.append(both ? text(*values[1] - *values[0]) : QStringLiteral("\u2013"));
    readOut.lines.push_back(
        {series.Title().empty() ? QStringLiteral("Value") : ToQt(series.Title()), texts,
         series.ShownColour()});
  }
  return readOut;
}

namespace {

// With as many lines as have room, and the differences alone where all three columns would cover
// most of the plot.
ReadOut Fitted(ReadOut readOut, const QSize& room, const QFont& font) {
  constexpr int kMostPercent = 60;
  if (BoxSize(readOut, font).width() > room.width() * kMostPercent / 100) {
    readOut.heads = {readOut.heads.back()};
    for (ReadOut::Line& line : readOut.lines) line.values = {line.values.back()};
  }
  const std::size_t all = readOut.lines.size();
  while (!readOut.Empty() && BoxSize(readOut, font).height() > room.height()) {
    readOut.lines.pop_back();
    readOut.head = QStringLiteral("+%1").arg(all - readOut.lines.size());
  }
  // Without a curve beside them the moments alone are worth a line.
  const QSize size = BoxSize(readOut, font);
  if (size.width() > room.width() || size.height() > room.height()) return {};
  return readOut;
}

}  // namespace

QRect PaintCursors(QPainter& painter, const QRect& plot, const std::array<double, 2>& pixels,
                   const ChartCursors& cursors, const ReadOut& readOut, const QFont& font) {
  const QFontMetrics metrics(font);
  const auto inside = [&](double x) { return x >= plot.left() && x <= plot.right(); };
  const QRect room = plot.adjusted(kInset, kInset, -kInset, -kInset);
  const ReadOut shown = Fitted(readOut, room.size(), font);
  QRect box;
  if (!shown.heads.isEmpty()) {
    const QSize size = BoxSize(shown, font);
    int fewest = std::numeric_limits<int>::max();
    const int right = room.right() - size.width() + 1;
    const int below = room.bottom() - size.height() + 1;
    for (const QPoint corner : {QPoint(room.left(), below), QPoint(right, below),
                                QPoint(room.left(), room.top()), QPoint(right, room.top())}) {
      const QRect there(corner, size);
      const auto crossed = std::count_if(pixels.begin(), pixels.end(), [&](double x) {
        return x > there.left() - kInset && x < there.right() + kInset;
      });
      if (crossed >= fewest) continue;
      fewest = static_cast<int>(crossed);
      box = there;
    }
  }
  painter.setFont(font);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    if (!inside(pixels[i])) continue;
    const double x = std::round(pixels[i]);
    const bool held = i == cursors.held;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(
        QPen(PaintOf(look::kAccent), held ? 2.0 : 1.0, held ? Qt::SolidLine : Qt::DashLine));
    painter.drawLine(QLineF(x, plot.top(), x, plot.bottom()));
    const int width = metrics.horizontalAdvance(kLetters[i]) + 2 * kChipAcross;
    QRect chip(static_cast<int>(x) - width / 2, plot.top(), width, metrics.height());
    chip.moveLeft(std::clamp(chip.left(), plot.left(), plot.right() - width));
    painter.fillRect(chip, PaintOf(look::kSelection));
    painter.setPen(PaintOf(look::kSelectedInk));
    painter.drawText(chip, Qt::AlignCenter, kLetters[i]);
  }
  if (!box.isEmpty()) PaintBox(painter, box, shown, font);
  return box;
}

std::optional<std::size_t> CursorAt(const QRect& plot, const std::array<double, 2>& pixels,
                                    const QPoint& at) {
  if (!plot.contains(at)) return {};
  std::optional<std::size_t> found;
  double nearest = kGrip;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const double distance = std::abs(pixels[i] - at.x());
    if (distance > nearest) continue;
    nearest = distance;
    found = i;
  }
  return found;
}

}  // namespace fathomline
