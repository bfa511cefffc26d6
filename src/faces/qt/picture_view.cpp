#include "faces/qt/picture_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <cmath>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/marks.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_face.h"

namespace fathomline {
namespace {

constexpr QSize kUsualSize{420, 420};
constexpr QSize kLeastSize{240, 240};
constexpr QRgb kPaper = 0xFFD4DAE0;

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
  const auto side = [](int anchor, Qt::Alignment first, Qt::Alignment middle, Qt::Alignment last) {
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
  painter.fillRect(area, QColor{kPaper});
  if (Context().window == nullptr) return;
  painter.setRenderHint(QPainter::Antialiasing);
  const Picture::Scale& scale = picture_.ShownScale();
  const double width = scale.right - scale.left;
  const double height = scale.bottom - scale.top;
  if (!picture_.InPixels() && (width == 0.0 || height == 0.0)) return;
  // One factor for both directions, so that circles stay round.
  const double factor = std::min(area.width() / std::abs(width), area.height() / std::abs(height));
  const double right = std::copysign(factor, width);
  const double down = std::copysign(factor, height);
  const QPointF middle = area.center();
  const auto place = [&](double x, double y) {
    if (picture_.InPixels()) return area.topLeft() + QPointF(x, y);
    return QPointF(middle.x() + (x - (scale.left + scale.right) / 2.0) * right,
                   middle.y() + (y - (scale.top + scale.bottom) / 2.0) * down);
  };
  for (const auto* layer : {&picture_.Persistent(), &picture_.Transient()}) {
    for (const Shape& shape : *layer) {
      const QColor colour = PaintOf(shape.pen.colour);
      painter.setPen(
          QPen(colour, shape.pen.width, shape.pen.dashed ? Qt::DashLine : Qt::SolidLine));
      painter.setBrush(Qt::NoBrush);
      const QPointF at = place(shape.x, shape.y);
      switch (shape.kind) {
        case ShapeKind::Line:
          painter.drawLine(at, place(shape.toX, shape.toY));
          break;
        case ShapeKind::Circle:
          painter.drawEllipse(at, shape.radius * factor, shape.radius * factor);
          break;
        case ShapeKind::Dot:
          painter.setPen(Qt::NoPen);
          painter.setBrush(colour);
          painter.drawEllipse(at, shape.pen.width / 2.0, shape.pen.width / 2.0);
          break;
        case ShapeKind::Text:
          DrawText(painter, at, shape);
          break;
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
      }
    }
  }
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
