#include "faces/qt/svg_device.h"

#include <QBuffer>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <limits>

namespace fathomline {
namespace {

constexpr int kDotsPerInch = 96;
constexpr double kMillimetresPerInch = 25.4;

QString Number(double value) {
  return QString::number(value, 'f', 2);
}

QString Paint(const char* attribute, const QColor& colour) {
  return QStringLiteral(" %1=\"%2\" %1-opacity=\"%3\"")
      .arg(QLatin1String(attribute), colour.name(), Number(colour.alphaF()));
}

QString PathData(const QPainterPath& path) {
  QString data;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    if (element.type == QPainterPath::MoveToElement) data += QLatin1Char('M');
    if (element.type == QPainterPath::LineToElement) data += QLatin1Char('L');
    if (element.type == QPainterPath::CurveToElement) data += QLatin1Char('C');
    data += Number(element.x) + QLatin1Char(' ') + Number(element.y) + QLatin1Char(' ');
  }
  return data;
}

}  // namespace

class SvgDevice::Engine : public QPaintEngine {
 public:
  Engine() : QPaintEngine(AllFeatures) {}

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  // The state is asked for where it is used.
  void updateState(const QPaintEngineState&) override {}
  Type type() const override { return User; }

  void drawPath(const QPainterPath& path) override {
    const QPen pen = painter()->pen();
    const QTransform transform = painter()->combinedTransform();
    QString attributes = painter()->brush().style() == Qt::NoBrush
                             ? QStringLiteral(" fill=\"none\"")
                             : Paint("fill", painter()->brush().color());
    if (pen.style() != Qt::NoPen) {
      const double width = pen.widthF() > 0.0 ? pen.widthF() : 1.0;
      attributes +=
          Paint("stroke", pen.color()) + QStringLiteral(" stroke-width=\"%1\"").arg(Number(width));
      QStringList dashes;
      for (const double dash : pen.dashPattern()) dashes.append(Number(dash * width));
      if (!dashes.isEmpty()) {
        attributes += QStringLiteral(" stroke-dasharray=\"%1\"").arg(dashes.join(QLatin1Char(',')));
      }
    }
    if (path.fillRule() == Qt::OddEvenFill) attributes += QStringLiteral(" fill-rule=\"evenodd\"");
    Write(QStringLiteral("<path d=\"%1\"%2/>").arg(PathData(transform.map(path)), attributes));
  }

  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    if (mode != PolylineMode) path.closeSubpath();
    if (mode == PolylineMode && painter()->brush().style() != Qt::NoBrush) {
      const QBrush brush = painter()->brush();
      painter()->setBrush(Qt::NoBrush);
      drawPath(path);
      painter()->setBrush(brush);
      return;
    }
    drawPath(path);
  }

  void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    pixmap.copy(source.toRect()).save(&buffer, "PNG");
    const QRectF area = painter()->combinedTransform().mapRect(target);
    Write(QStringLiteral("<image x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" "
                         "href=\"data:image/png;base64,%5\"/>")
              .arg(Number(area.x()), Number(area.y()), Number(area.width()), Number(area.height()),
                   QString::fromLatin1(bytes.toBase64())));
  }

  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const QTransform t = painter()->combinedTransform();
    const QFont font = item.font();
    const double size =
        font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * kDotsPerInch / 72.0;
    const QPointF mapped = t.map(at);
    Write(QStringLiteral("<text transform=\"matrix(%1 %2 %3 %4 %5 %6)\" font-family=\"%7\" "
                         "font-size=\"%8\"%9>%10</text>")
              .arg(Number(t.m11()), Number(t.m12()), Number(t.m21()), Number(t.m22()),
                   Number(mapped.x()), Number(mapped.y()))
              .arg(font.family().toHtmlEscaped(), Number(size),
                   Paint("fill", painter()->pen().color()) +
                       (font.bold() ? QStringLiteral(" font-weight=\"bold\"") : QString()),
                   item.text().toHtmlEscaped()));
  }

  const QString& Body() const { return body_; }

 private:
  void Write(const QString& element) {
    if (!painter()->hasClipping()) {
      body_ += element + QLatin1Char('\n');
      return;
    }
    const QRectF clip = painter()->combinedTransform().mapRect(painter()->clipBoundingRect());
    if (clip != clip_) {
      clip_ = clip;
      body_ +=
          QStringLiteral(
              "<clipPath id=\"c%1\"><rect x=\"%2\" y=\"%3\" width=\"%4\" height=\"%5\"/>"
              "</clipPath>\n")
              .arg(++clips_)
              .arg(Number(clip.x()), Number(clip.y()), Number(clip.width()), Number(clip.height()));
    }
    body_ += QStringLiteral("<g clip-path=\"url(#c%1)\">%2</g>\n").arg(clips_).arg(element);
  }

  QString body_;
  QRectF clip_;
  int clips_ = 0;
};

SvgDevice::SvgDevice(const QSize& size) : size_(size), engine_(std::make_unique<Engine>()) {}

SvgDevice::~SvgDevice() = default;

QPaintEngine* SvgDevice::paintEngine() const {
  return engine_.get();
}

QByteArray SvgDevice::Document() const {
  return QStringLiteral(
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" "
             "viewBox=\"0 0 %1 %2\">\n%3</svg>\n")
      .arg(QString::number(size_.width()), QString::number(size_.height()), engine_->Body())
      .toUtf8();
}

int SvgDevice::metric(PaintDeviceMetric metric) const {
  const auto millimetres = [](int pixels) {
    return static_cast<int>(pixels * kMillimetresPerInch / kDotsPerInch);
  };
  switch (metric) {
    case PdmWidth:
      return size_.width();
    case PdmHeight:
      return size_.height();
    case PdmWidthMM:
      return millimetres(size_.width());
    case PdmHeightMM:
      return millimetres(size_.height());
    case PdmDepth:
      return 32;
    case PdmNumColors:
      return std::numeric_limits<int>::max();
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
      return kDotsPerInch;
    case PdmDevicePixelRatio:
      return 1;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
  }
  return QPaintDevice::metric(metric);
}

}  // namespace fathomline
