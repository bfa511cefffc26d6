// Pictures as files: PNG, SVG and PDF.
#pragma once

#include <QSize>
#include <functional>

class QPaintDevice;

namespace fathomline {

class QtFace;

// Paints the picture onto a device, as large as the size says in logical pixels.
using PaintOnto = std::function<void(QPaintDevice& device, const QSize& size)>;

// Asks for a file and writes the picture in the format of its ending; a box tells of a failure.
void SavePicture(QtFace& face, const QSize& size, const PaintOnto& paint);

// Returns the cause where the file cannot be written, and an empty text otherwise.
QString WritePicture(const QString& path, const QSize& size, const PaintOnto& paint);

}  // namespace fathomline
