#include "faces/qt/chart_parts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "base/datetime.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"

namespace fathomline {
namespace {

constexpr double kFarAway = 1e5;
constexpr int kBandAlpha = 110;

constexpr int kStripMargin = 4;
constexpr int kEntryGap = 10;
constexpr int kSampleWidth = 10;
constexpr int kMostLegendLines = 3;
// Of the plot, for each line of the legend.
constexpr int kHeightPerLegendLine = 55;

// Seconds between two labels of a time axis; beyond the last one they double.
constexpr double kTimeSteps[] = {1,   2,   5,    10,   15,   30,    60,    120,   300,
                                 600, 900, 1800, 3600, 7200, 10800, 21600, 43200, 86400};
constexpr int kLabelGap = 12;
constexpr std::string_view kDatePicture = "dd mmm";

QFont TitleFont(const QCustomPlot& plot) {
  QFont font = plot.font();
  font.setBold(true);
  return font;
}

}  // namespace

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
    const QColor colour = PaintOf(design.colour);
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
  Arrange({});
}

std::vector<LegendStrip::Entry> LegendStrip::Entries() const {
  std::vector<Entry> entries;
  if (!chart_.Text().empty()) entries.push_back({ToQt(chart_.Text()).trimmed(), -1, true, {}});
  for (int i = 0; i < chart_.SeriesCount() && chart_.ShownLegend() != Legend::None; ++i) {
    const Series& series = chart_.Series(i);
    const bool shown = chart_.ShownLegend() == Legend::All || series.Count() > 0;
    if (shown && !series.Title().empty()) entries.push_back({ToQt(series.Title()), i, false, {}});
  }
  for (const QString& word : ToQt(chart_.Note()).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    entries.push_back({word, -1, false, {}});
  }
  return entries;
}

void LegendStrip::Arrange(const QSize& size) {
  const QFontMetrics usual(parentPlot()->font());
  const QFontMetrics bold(TitleFont(*parentPlot()));
  const int width = std::max(size.width() - 2 * kStripMargin, 1);
  const int mostLines = std::clamp(size.height() / kHeightPerLegendLine, 1, kMostLegendLines);
  shown_.clear();
  int x = 0;
  int line = 0;
  for (Entry& entry : Entries()) {
    const int needed = (entry.bold ? bold : usual).horizontalAdvance(entry.text) +
                       (entry.series >= 0 ? kSampleWidth + kStripMargin : 0);
    if (x > 0 && x + needed > width) {
      if (line + 1 == mostLines) {
        shown_.back().text += QChar(0x2026);
        break;
      }
      x = 0;
      ++line;
    }
    entry.place = QRect(x, line * usual.height(), std::min(needed, width), usual.height());
    const bool word = entry.series < 0 && !entry.bold;
    x += needed + (word ? usual.horizontalAdvance(QLatin1Char(' ')) : kEntryGap);
    shown_.push_back(std::move(entry));
  }
  const int height = (line + 1) * usual.height() + kStripMargin;
  setMinimumSize(0, height);
  setMaximumSize(QWIDGETSIZE_MAX, height);
}

void LegendStrip::draw(QCPPainter* painter) {
  for (const Entry& entry : shown_) {
    QRect place = entry.place.translated(rect().topLeft());
    if (entry.series >= 0 && entry.series < chart_.SeriesCount()) {
      const QRect sample(place.left(), place.center().y() - 4, kSampleWidth, 8);
      painter->fillRect(sample, PaintOf(chart_.Series(entry.series).ShownColour()));
      painter->setPen(QColor(0x60, 0x60, 0x60));
      painter->setBrush(Qt::NoBrush);
      painter->drawRect(sample);
      place.adjust(kSampleWidth + kStripMargin, 0, 0, 0);
    }
    painter->setPen(Qt::black);
    painter->setFont(entry.bold ? TitleFont(*parentPlot()) : parentPlot()->font());
    const QString text =
        QFontMetrics(painter->font()).elidedText(entry.text, Qt::ElideRight, rect().width());
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text);
  }
}

void TimeTicker::Fit(const std::string& picture, int pixels, const QFontMetrics& metrics) {
  picture_ = picture;
  pixels_ = pixels;
  const auto width = [&](const std::string_view labelPicture) {
    return metrics.horizontalAdvance(ToQt(FormatDateTime({}, labelPicture))) + kLabelGap;
  };
  timeWidth_ = width(picture_);
  secondsWidth_ = width(WithSeconds());
  dateWidth_ = width(kDatePicture);
}

std::string TimeTicker::WithSeconds() const {
  const bool missing =
      picture_.find("nn") != std::string::npos && picture_.find("ss") == std::string::npos;
  return missing ? picture_ + ":ss" : picture_;
}

double TimeTicker::getTickStep(const QCPRange& range) {
  days_ = range.size() > kSecondsPerDay;
  double step = 1.0;
  std::size_t next = 0;
  const auto crowded = [&] {
    int width = step < 60.0 ? secondsWidth_ : timeWidth_;
    if (days_) width = std::max(width, dateWidth_);
    return range.size() / step * width > pixels_;
  };
  while (crowded()) step = next < std::size(kTimeSteps) ? kTimeSteps[next++] : step * 2.0;
  step_ = step;
  return step;
}

int TimeTicker::getSubTickCount(double) {
  return 0;
}

QString TimeTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  const DateTime moment{BottomScale{true}.FromPlot(tick)};
  const auto text = [&](std::string_view picture) { return ToQt(FormatDateTime(moment, picture)); };
  if (step_ >= kSecondsPerDay) return text(kDatePicture) + QLatin1Char('\n') + text("yyyy");
  const QString time = text(step_ < 60.0 ? WithSeconds() : picture_);
  return days_ ? time + QLatin1Char('\n') + text(kDatePicture) : time;
}

}  // namespace fathomline
