#include "faces/qt/picture_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/marks.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_face.h"

namespace fathomline {
namespace {

constexpr QSize kUsualSize{420, 420};
constexpr QSize kLeastSize{200, 200};

// Where the numbers of dots may stand: round the dot, the nearest to the right first.
constexpr std::array<std::array<int, 2>, 8> kSides = {
    {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, -1}, {-1, -1}, {1, 1}, {-1, 1}}};

// Pixels.
constexpr double kDotGap = 3.0;
constexpr double kDotGrowth = 3.0;
constexpr double kRingStroke = 2.0;
constexpr double kLabelGap = 2.0;

constexpr double kSmallText = 0.9;
constexpr QSizeF kTextRoom{1000.0, 400.0};

QFont SmallFont(QFont font) {
  font.setPointSizeF(font.pointSizeF() * kSmallText);
  return font;
}

void DrawText(QPainter& painter, const QPointF& at, const Shape& shape) {
  const QFont usual = painter.font();
  if (shape.pen.small) painter.setFont(SmallFont(usual));
  const auto corner = [](double place, double room, int anchor) {
    return place - room * (anchor + 1) / 2.0;
  };
  const auto side = [](int anchor, int first, int middle, int last) {
    return anchor < 0 ? first : anchor == 0 ? middle : last;
  };
  painter.setPen(PaintOf(shape.pen.colour, ColourUse::Text));
  painter.drawText(QRectF(QPointF(corner(at.x(), kTextRoom.width(), shape.anchor.x),
                                  corner(at.y(), kTextRoom.height(), shape.anchor.y)),
                          kTextRoom),
                   side(shape.anchor.x, Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight) |
                       side(shape.anchor.y, Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom),
                   ToQt(shape.text));
  painter.setFont(usual);
}

}  // namespace

class PictureView::Surface : public QWidget {
 public:
  explicit Surface(PictureView& view) : view_(view) {
    setMinimumSize(kLeastSize);
    const bool free = view.picture_.InPixels();
    QSizePolicy policy(QSizePolicy::Expanding,
                       free ? QSizePolicy::Expanding : QSizePolicy::Preferred);
    policy.setHeightForWidth(!free);
    setSizePolicy(policy);
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

  QSize sizeHint() const override { return view_.picture_.InPixels() ? minimumSize() : kUsualSize; }
  // As high as what is drawn, which keeps its shape.
  int heightForWidth(int width) const override {
    const Picture::Scale& scale = view_.picture_.ShownScale();
    const double across = std::abs(scale.right - scale.left);
    if (across == 0.0) return width;
    return static_cast<int>(width * std::abs(scale.bottom - scale.top) / across);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    view_.Paint(painter, rect());
  }

  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    if (view_.Context().window == nullptr) return;
    const QFontMetricsF metrics(SmallFont(font()));
    view_.picture_.SetSurface({width(), height()},
                              {metrics.horizontalAdvance(QLatin1Char('0')), metrics.height()});
    view_.Context().face.DrawSoon();
  }

  void contextMenuEvent(QContextMenuEvent* event) override { view_.ShowMenu(event->globalPos()); }

 private:
  PictureView& view_;
};

PictureView::PictureView(ViewContext& context, Picture& picture)
    : ControlView(context, picture), picture_(picture), surface_(new Surface(*this)) {
  SetWidget(surface_);
}

void PictureView::Update() {
  if (picture_.InPixels()) {
    surface_->setMinimumSize(picture_.Least().width, picture_.Least().height);
  }
  surface_->update();
}

void PictureView::Paint(QPainter& painter, const QRectF& area) const {
  painter.fillRect(area, PaintOf(look::kChartGround));
  if (Context().window == nullptr) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(surface_->font());
  if (picture_.InPixels()) {
    PaintLaidOut(painter, area.topLeft());
    return;
  }
  const Picture::Scale& scale = picture_.ShownScale();
  const double width = scale.right - scale.left;
  const double height = scale.bottom - scale.top;
  if (width == 0.0 || height == 0.0) return;
  // One factor for both directions, so that circles stay round.
  const double factor = std::min(area.width() / std::abs(width), area.height() / std::abs(height));
  const double right = std::copysign(factor, width);
  const double down = std::copysign(factor, height);
  const QPointF middle = area.center();
  const Place place = [&](double x, double y) {
    return QPointF(middle.x() + (x - (scale.left + scale.right) / 2.0) * right,
                   middle.y() + (y - (scale.top + scale.bottom) / 2.0) * down);
  };
  Frame frame{QRectF(middle.x() - factor * std::abs(width) / 2.0,
                     middle.y() - factor * std::abs(height) / 2.0, factor * std::abs(width),
                     factor * std::abs(height)),
              {}};
  for (const Shape& shape : picture_.Persistent()) PaintScale(painter, shape, place, factor, frame);
  const auto& dots = picture_.Transient();
  for (const Shape& shape : dots) {
    if (shape.kind != ShapeKind::Dot) continue;
    const double size = shape.pen.width + kDotGrowth;
    frame.taken.append(QRectF(place(shape.x, shape.y), QSizeF())
                           .adjusted(-size / 2, -size / 2, size / 2, size / 2));
  }
  for (const Shape& shape : dots) PaintShape(painter, shape, place, factor);
  for (const Shape& shape : dots) {
    if (shape.kind == ShapeKind::Text) PaintNumber(painter, shape, place(shape.x, shape.y), frame);
  }
}

// What was drawn for the size of the surface stands where it was put.
void PictureView::PaintLaidOut(QPainter& painter, const QPointF& corner) const {
  const Place place = [&](double x, double y) { return corner + QPointF(x, y); };
  for (const auto* layer : {&picture_.Persistent(), &picture_.Transient()}) {
    for (const Shape& shape : *layer) {
      if (shape.kind == ShapeKind::Text) {
        DrawText(painter, place(shape.x, shape.y), shape);
      } else {
        PaintShape(painter, shape, place, 1.0);
      }
    }
  }
}

// All but texts.
void PictureView::PaintShape(QPainter& painter, const Shape& shape, const Place& place,
                             double factor) {
  const QColor colour = PaintOf(shape.pen.scale ? look::kSkyRings : shape.pen.colour);
  painter.setPen(QPen(colour, shape.pen.width, shape.pen.dashed ? Qt::DashLine : Qt::SolidLine));
  painter.setBrush(Qt::NoBrush);
  const QPointF at = place(shape.x, shape.y);
  switch (shape.kind) {
    case ShapeKind::Line:
      painter.drawLine(at, place(shape.toX, shape.toY));
      break;
    case ShapeKind::Circle:
      painter.drawEllipse(at, shape.radius * factor, shape.radius * factor);
      break;
    case ShapeKind::Dot: {
      const double radius =
          (shape.pen.width + kDotGrowth) / 2.0 - (shape.hollow ? kRingStroke / 2.0 : 0.0);
      painter.setPen(shape.hollow ? QPen(colour, kRingStroke) : QPen(Qt::NoPen));
      painter.setBrush(shape.hollow ? QBrush(Qt::NoBrush) : QBrush(colour));
      painter.drawEllipse(at, radius, radius);
      break;
    }
    case ShapeKind::Mark:
      DrawMark(painter, at, shape.mark, shape.radius, colour, shape.filled);
      break;
    case ShapeKind::Box: {
      const QRectF box = QRectF(at, place(shape.toX, shape.toY)).normalized();
      if (shape.filled) {
        painter.fillRect(box, PaintOf(shape.pen.colour, ColourUse::Fill));
      } else {
        painter.drawRect(box);
      }
      break;
    }
    case ShapeKind::Text:
      break;
  }
}

// Words of the scale stand on ground of their own, and within the picture.
void PictureView::PaintScale(QPainter& painter, const Shape& shape, const Place& place,
                             double factor, Frame& frame) const {
  // A circle on another one says nothing: a mask of nothing lies on the rim.
  const auto& shapes = picture_.Persistent();
  const bool covered =
      shape.kind == ShapeKind::Circle && shape.pen.dashed &&
      std::any_of(shapes.begin(), shapes.end(), [&](const Shape& other) {
        return other.kind == ShapeKind::Circle && !other.pen.dashed && other.radius == shape.radius;
      });
  if (covered) return;
  if (shape.kind != ShapeKind::Text) {
    PaintShape(painter, shape, place, factor);
    return;
  }
  const QString text = ToQt(shape.text).trimmed();
  const QFontMetricsF metrics(painter.font());
  QRectF label(place(shape.x, shape.y) + QPointF(kLabelGap, 0.0),
               QSizeF(metrics.horizontalAdvance(text) + 2.0 * kLabelGap, metrics.height()));
  if (label.bottom() > frame.area.bottom()) label.moveBottom(frame.area.bottom() - kLabelGap);
  painter.fillRect(label, PaintOf(look::kChartGround));
  painter.setPen(shape.pen.scale ? PaintOf(look::kMutedInk)
                                 : PaintOf(shape.pen.colour, ColourUse::Text));
  painter.drawText(label, Qt::AlignCenter, text);
  frame.taken.append(label);
}

// Beside its dot, on the side where it covers least.
void PictureView::PaintNumber(QPainter& painter, const Shape& shape, QPointF dot, Frame& frame) {
  const QString text = ToQt(shape.text).trimmed();
  const QFontMetricsF metrics(painter.font());
  const QSizeF size(metrics.horizontalAdvance(text), metrics.ascent());
  const double away = (shape.pen.width + kDotGrowth) / 2.0 + kDotGap;
  QRectF best;
  double least = std::numeric_limits<double>::infinity();
  for (const auto& [across, down] : kSides) {
    QRectF place({}, size);
    place.moveCenter(
        dot + QPointF(across * (away + size.width() / 2.0), down * (away + size.height() / 2.0)));
    double covered = 0.0;
    for (const QRectF& other : frame.taken) {
      const QRectF both = place.intersected(other);
      covered += both.width() * both.height();
    }
    const QRectF inside = place.intersected(frame.area);
    covered += size.width() * size.height() - inside.width() * inside.height();
    if (covered >= least) continue;
    least = covered;
    best = place;
  }
  frame.taken.append(best);
  // A line that it stands on is not to run through it.
  QColor halo = PaintOf(look::kChartGround);
  constexpr float kHaloAlpha = 0.8F;
  halo.setAlphaF(kHaloAlpha);
  painter.fillRect(best.adjusted(-1.0, 0.0, 1.0, 0.0), halo);
  painter.setPen(PaintOf(shape.pen.colour, ColourUse::Text));
  painter.drawText(QPointF(best.left(), best.bottom()), text);
}

void PictureView::ShowMenu(const QPoint& at) {
  const auto paint = [this](QPaintDevice& device, const QSize& size) {
    QPainter painter(&device);
    Paint(painter, QRectF(QPointF(), size));
  };
  auto* const menu = new QMenu(surface_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  // What waits for a file lets the menu go, which must not happen under its own mouse event.
  const auto add = [this, menu](const QString& text, auto action) {
    QObject::connect(menu->addAction(text), &QAction::triggered, surface_, action,
                     Qt::QueuedConnection);
  };
  add(QStringLiteral("&Copy picture"),
      [this] { QApplication::clipboard()->setPixmap(surface_->grab()); });
  add(QStringLiteral("&Save picture ..."),
      [this, paint] { User([&] { SavePicture(Context().face, surface_->size(), paint); }); });
  menu->popup(at);
}

}  // namespace fathomline
