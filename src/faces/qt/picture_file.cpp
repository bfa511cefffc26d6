#include "faces/qt/picture_file.h"

#include <QFile>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/qt_face.h"

namespace fathomline {
namespace {

// Pixels of a PNG to a logical pixel, so that it can be printed.
constexpr int kPixelDensity = 2;
constexpr int kResolution = 96;
constexpr double kPointsPerPixel = 72.0 / kResolution;

}  // namespace

QString WritePicture(const QString& path, const QSize& size, const PaintOnto& paint) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
    QSvgGenerator device;
    device.setOutputDevice(&file);
    device.setResolution(kResolution);
    device.setSize(size);
    device.setViewBox(QRect(QPoint(), size));
    paint(device, size);
  } else if (path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) {
    QPdfWriter device(&file);
    device.setResolution(kResolution);
    device.setPageSize(QPageSize(QSizeF(size) * kPointsPerPixel, QPageSize::Point));
    device.setPageMargins({});
    paint(device, size);
  } else {
    QImage image(size * kPixelDensity, QImage::Format_RGB32);
    image.setDevicePixelRatio(kPixelDensity);
    image.fill(PaintOf(look::kWindowGround));
    paint(image, size);
    if (!image.save(&file, "PNG")) return QStringLiteral("the picture could not be written");
  }
  return file.flush() && file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

void SavePicture(QtFace& face, const QSize& size, const PaintOnto& paint) {
  const auto path = face.ChooseFile({.title = "Save picture",
                                     .filter = "PNG picture|*.png|SVG drawing|*.svg|PDF|*.pdf",
                                     .defaultExtension = "png",
                                     .save = true});
  if (!path) return;
  const QString cause = WritePicture(ToQt(*path), size, paint);
  if (!cause.isEmpty()) face.TellFailure("The picture could not be saved.", FromQt(cause));
}

}  // namespace fathomline
