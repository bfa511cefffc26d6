#include "faces/qt/chart_parts.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <optional>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"

namespace fathomline {
namespace {

constexpr double kFarAway = 1e5;
constexpr double kSmallFont = 0.9;
constexpr int kGap = 4;
constexpr int kEntryGap = 12;
constexpr int kSampleWidth = 16;
constexpr int kSampleHeight = 9;
constexpr int kLeastNote = 60;

void PaintSample(QPainter& painter, const QRect& room, const Series& series) {
  const QColor hue = PaintOf(series.Hidden() ? look::kDisabledInk : series.ShownColour());
  const QPointF left(room.left(), room.center().y() + 0.5);
  const QPointF right(room.right() + 1.0, left.y());
  painter.setRenderHint(QPainter::Antialiasing);
  switch (series.Kind()) {
    case SeriesKind::Bar:
      if (series.Design().steps) {
        painter.setPen(QPen(PaintOf(look::kMutedInk), 1.0));
        painter.drawLine(left, right);
        break;
      }
      if (!series.Hidden()) {
        painter.fillRect(room, PaintOf(series.ShownColour(), ColourUse::Fill));
      }
      painter.fillRect(QRect(room.left(), room.top(), room.width(), kBarEdge), hue);
      break;
    case SeriesKind::Gantt:
      painter.fillRect(room.adjusted(0, 2, 0, -2), hue);
      break;
    case SeriesKind::Points:
      painter.setPen(Qt::NoPen);
      painter.setBrush(hue);
      painter.drawEllipse(QRectF(room).center(), 3.0, 3.0);
      break;
    case SeriesKind::Line:
      if (series.ShownColour() == look::kDeviationBand) {
        painter.setPen(QPen(PaintOf(look::kEdge), 1.0));
        painter.setBrush(hue);
        painter.drawRect(QRectF(room).adjusted(0.5, 0.5, -0.5, -0.5));
        break;
      }
      painter.setPen(QPen(hue, 2.0));
      painter.drawLine(left, right);
      break;
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

QFont SmallFont(const QFont& usual) {
  QFont font = usual;
  if (font.pointSizeF() > 0.0) {
    font.setPointSizeF(font.pointSizeF() * kSmallFont);
  } else {
    font.setPixelSize(static_cast<int>(std::round(font.pixelSize() * kSmallFont)));
  }
  return font;
}

MarkerLayer::MarkerLayer(QCustomPlot* plot, const Chart& chart)
    : QCPLayerable(plot, QStringLiteral("main")), chart_(chart) {}

QRect MarkerLayer::clipRect() const {
  return parentPlot()->axisRect()->rect();
}

void MarkerLayer::draw(QCPPainter* painter) {
  const QRectF area = clipRect();
  for (int i = 0; i < chart_.ToolCount(); ++i) {
    if (chart_.Tools(i).Design().visible) DrawMarker(*painter, area, chart_.Tools(i));
  }
  const QFont font = parentPlot()->font();
  if (!title_.isEmpty()) {
    QFont bold = font;
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(PaintOf(look::kInk));
    painter->drawText(area.adjusted(kGap + 2, 2, -kGap, 0), Qt::AlignLeft | Qt::AlignTop, title_);
  }
  if (words_.isEmpty()) return;
  painter->setFont(font);
  painter->setPen(PaintOf(look::kMutedInk, ColourUse::Text));
  const QString words = QFontMetrics(font).elidedText(words_, Qt::ElideRight,
                                                      static_cast<int>(area.width()) - 2 * kGap);
  painter->drawText(area, Qt::AlignCenter, words);
}

void MarkerLayer::DrawMarker(QCPPainter& painter, const QRectF& area, const Marker& marker) const {
  const QCustomPlot& plot = *parentPlot();
  const MarkerDesign& design = marker.Design();
  const QColor colour = PaintOf(design.colour);
  painter.setAntialiasing(false);
  painter.setPen(QPen(colour, 1, design.dashed ? Qt::DashLine : Qt::SolidLine));
  const auto level = [&](double y) {
    return std::clamp(plot.yAxis->coordToPixel(y), -kFarAway, kFarAway);
  };
  switch (design.kind) {
    case MarkerKind::HorizontalLine: {
      const double y = level(marker.Value());
      painter.drawLine(QLineF(area.left(), y, area.right(), y));
      break;
    }
    case MarkerKind::HorizontalBand: {
      const double low = level(marker.Band().low);
      const double high = level(marker.Band().high);
      painter.fillRect(QRectF(area.left(), std::min(low, high), area.width(),
                              std::max(std::abs(low - high), 1.0)),
                       colour);
      break;
    }
    case MarkerKind::VerticalLine: {
      const double key = ScaleOf(chart_).ToPlot(marker.Value());
      const double x = std::clamp(plot.xAxis->coordToPixel(key), -kFarAway, kFarAway);
      painter.drawLine(QLineF(x, area.top(), x, area.bottom()));
      break;
    }
    case MarkerKind::Circle: {
      const double key = ScaleOf(chart_).ToPlot(0.0);
      const double across = plot.xAxis->coordToPixel(key + marker.Value());
      const QPointF middle(plot.xAxis->coordToPixel(key), level(0.0));
      painter.setAntialiasing(true);
      painter.setPen(QPen(colour, 1.5));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(middle, std::abs(across - middle.x()),
                          std::abs(level(marker.Value()) - middle.y()));
      break;
    }
  }
}

// Above the series, whose ends are known when they have been drawn.
EndNumbers::EndNumbers(QCustomPlot* plot, const Chart& chart)
    : QCPLayerable(plot, QStringLiteral("axes")), chart_(chart) {}

int EndNumbers::Width(const QFontMetrics& metrics) {
  return metrics.horizontalAdvance(QStringLiteral("000")) + 2 * kGap;
}

void EndNumbers::draw(QCPPainter* painter) {
  struct Number {
    QPointF end;
    const SeriesPlottable* line;
    double y;  // where it comes to stand
  };
  const QRectF area = parentPlot()->axisRect()->rect();
  const QFont font = SmallFont(parentPlot()->font());
  const QFontMetrics metrics(font);
  // Digits have no descenders, so that they may stand closer than lines of text.
  const double apart = metrics.ascent();
  // Lines that go on to the newest point say their numbers beside the plot.
  constexpr double kStillHere = 24.0;
  std::vector<Number> beside;
  std::vector<Number> within;
  for (int i = 0; i < parentPlot()->plottableCount(); ++i) {
    const auto* const line = dynamic_cast<SeriesPlottable*>(parentPlot()->plottable(i));
    if (line == nullptr || !line->LineEnd()) continue;
    const QPointF end = *line->LineEnd();
    const bool here = end.x() > area.right() - kStillHere;
    (here ? beside : within).push_back({end, line, end.y()});
  }
  std::sort(beside.begin(), beside.end(),
            [](const Number& a, const Number& b) { return a.end.y() < b.end.y(); });
  const auto room = static_cast<std::size_t>(std::max(area.height() / apart, 1.0));
  std::size_t left = 0;
  if (beside.size() > room) {
    left = beside.size() - (room - 1);
    beside.resize(room - 1);
  }
  double free = area.top() + apart / 2.0;
  for (Number& number : beside) free = (number.y = std::max(number.y, free)) + apart;
  double limit = area.bottom() - apart / 2.0 - (left > 0 ? apart : 0.0);
  for (auto number = beside.rbegin(); number != beside.rend(); ++number) {
    limit = (number->y = std::min(number->y, limit)) - apart;
  }

  painter->setFont(font);
  std::vector<QRectF> taken;
  const auto write = [&](const QString& text, QPointF at, const QColor& colour) {
    const QRectF place(at.x(), at.y() - apart / 2.0, metrics.horizontalAdvance(text) + 1.0, apart);
    if (std::any_of(taken.begin(), taken.end(),
                    [&](const QRectF& other) { return other.intersects(place); })) {
      return false;
    }
    taken.push_back(place);
    painter->setPen(colour);
    painter->drawText(QPointF(place.left(), place.bottom() - 1.0), text);
    return true;
  };
  const auto name = [this](const Number& number) {
    return ToQt(chart_.Series(number.line->Index()).Title());
  };
  const auto colour = [this](const Number& number) {
    return PaintOf(chart_.Series(number.line->Index()).ShownColour());
  };
  for (const Number& number : beside) {
    write(name(number), {area.right() + kGap, number.y}, colour(number));
  }
  for (const Number& number : within) {
    if (!write(name(number), number.end + QPointF(kGap, 0.0), colour(number))) ++left;
  }
  if (left > 0) {
    write(QStringLiteral("+%1").arg(left), {area.right() + kGap, area.bottom() - apart / 2.0},
          PaintOf(look::kMutedInk));
  }
}

std::vector<int> NamedSeries(const Chart& chart) {
  std::vector<int> named;
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    const Series& series = chart.Series(i);
    bool shown = !series.Title().empty();
    switch (chart.ShownLegend()) {
      case Legend::None:
        shown = false;
        break;
      case Legend::WithPoints:
        shown = shown && series.Count() > 0;
        break;
      case Legend::AtLineEnds:
        shown = shown && series.Design().satellite < 0;
        break;
      case Legend::All:
        break;
    }
    if (shown) named.push_back(i);
  }
  return named;
}

int Head::Height(const QFont& usual) {
  return QFontMetrics(usual).height() + kGap;
}

QString Head::Whole(const Chart& chart) {
  QStringList lines;
  const auto add = [&lines](const QString& text) {
    if (!text.isEmpty()) lines.append(text);
  };
  add(ToQt(chart.Text()).trimmed());
  if (!chart.Left().Title().empty())
    add(QStringLiteral("Left: %1").arg(ToQt(chart.Left().Title())));
  if (chart.Right().Visible() && !chart.Right().Title().empty()) {
    add(QStringLiteral("Right: %1").arg(ToQt(chart.Right().Title())));
  }
  const auto named = NamedSeries(chart);
  for (const int index : named) {
    const Series& series = chart.Series(index);
    const QString right = series.RightAxis() ? QStringLiteral(" (right)") : QString();
    const QString hidden = series.Hidden() ? QStringLiteral(" (hidden)") : QString();
    add(ToQt(series.Title()) + right + hidden);
  }
  add(ToQt(chart.Note()));
  if (!named.empty()) add(QStringLiteral("Click a name to hide or show its curve."));
  return lines.join(QLatin1Char('\n'));
}

std::vector<Head::Entry> Head::Write(QPainter* painter, const QRect& area, const Chart& chart,
                                     const QFont& usual, const Parts& parts) {
  const QFont small = SmallFont(usual);
  QFont bold = usual;
  bold.setBold(true);
  const QColor ink = PaintOf(look::kInk);
  const QColor muted = PaintOf(look::kMutedInk);
  int left = area.left() + kGap;
  int right = area.right() - kGap;
  const auto write = [&](const QString& text, const QFont& font, const QColor& colour) {
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, right - left);
    if (painter != nullptr) {
      painter->setFont(font);
      painter->setPen(colour);
      painter->drawText(QRect(left, area.top(), right - left, area.height()),
                        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, shown);
    }
    left += metrics.horizontalAdvance(shown) + kEntryGap;
  };
  const QFontMetrics metrics(small);
  if (parts.rightUnit && chart.Right().Visible() && !chart.Right().Title().empty()) {
    const QString unit = ToQt(chart.Right().Title());
    if (painter != nullptr) {
      painter->setFont(small);
      painter->setPen(muted);
      painter->drawText(QRect(area.left(), area.top(), right - area.left(), area.height()),
                        Qt::AlignRight | Qt::AlignVCenter, unit);
    }
    right -= metrics.horizontalAdvance(unit) + kEntryGap;
  }
  if (parts.title && !chart.Text().empty()) write(ToQt(chart.Text()).trimmed(), bold, ink);
  if (!chart.Left().Title().empty()) write(ToQt(chart.Left().Title()), small, muted);

  QFont struck = small;
  struck.setStrikeOut(true);
  std::vector<Entry> entries;
  const auto named = NamedSeries(chart);
  for (std::size_t i = 0; i < named.size(); ++i) {
    const Series& series = chart.Series(named[i]);
    const QString title = ToQt(series.Title());
    const int needed = kSampleWidth + kGap + metrics.horizontalAdvance(title);
    const QString rest = QStringLiteral("+%1").arg(named.size() - i);
    const bool last = i + 1 == named.size();
    const int behind = last ? 0 : kEntryGap + metrics.horizontalAdvance(rest);
    if (left + needed + behind > right) {
      write(rest, small, muted);
      return entries;
    }
    entries.push_back({QRect(left, area.top(), needed, area.height()), named[i]});
    if (painter != nullptr) {
      PaintSample(*painter,
                  QRect(left, area.center().y() - kSampleHeight / 2, kSampleWidth, kSampleHeight),
                  series);
    }
    left += kSampleWidth + kGap;
    if (series.Hidden()) {
      write(title, struck, PaintOf(look::kDisabledInk));
    } else {
      write(title, small, ink);
    }
  }
  if (!chart.Note().empty() && right - left >= kLeastNote) {
    write(ToQt(chart.Note()), small, muted);
  }
  return entries;
}

void Head::Paint(QPainter& painter, const QRect& area, const Chart& chart, const QFont& usual,
                 const Parts& parts) {
  Write(&painter, area, chart, usual, parts);
}

std::optional<int> Head::SeriesAt(const QPoint& at, const QRect& area, const Chart& chart,
                                  const QFont& usual, const Parts& parts) {
  if (!area.contains(at)) return {};
  for (const Entry& entry : Write(nullptr, area, chart, usual, parts)) {
    if (entry.room.contains(at)) return entry.series;
  }
  return {};
}

HeadRow::HeadRow(QCustomPlot* plot, const Chart& chart) : QCPLayoutElement(plot), chart_(chart) {
  // A layout element that is made outside a layout has no layer of its own yet.
  setLayer(QStringLiteral("legend"));
  SetShown(true);
}

void HeadRow::SetShown(bool shown) {
  shown_ = shown;
  const int height = shown ? Head::Height(parentPlot()->font()) : 0;
  setMinimumSize(0, height);
  setMaximumSize(QWIDGETSIZE_MAX, height);
}

void HeadRow::draw(QCPPainter* painter) {
  if (!shown_) return;
  Head::Paint(*painter, rect(), chart_, parentPlot()->font(),
              {.rightUnit = parentPlot()->yAxis2->visible()});
}

std::optional<int> HeadRow::SeriesAt(const QPoint& at) const {
  if (!shown_) return {};
  return Head::SeriesAt(at, rect(), chart_, parentPlot()->font(),
                        {.rightUnit = parentPlot()->yAxis2->visible()});
}

}  // namespace fathomline
