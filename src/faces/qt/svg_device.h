// A paint device that writes what is painted as an SVG document (W3C SVG 1.1).
#pragma once

#include <QByteArray>
#include <QPaintDevice>
#include <QSize>
#include <memory>

namespace fathomline {

class SvgDevice : public QPaintDevice {
 public:
  explicit SvgDevice(const QSize& size);
  ~SvgDevice() override;

  QByteArray Document() const;

  QPaintEngine* paintEngine() const override;

 protected:
  int metric(PaintDeviceMetric metric) const override;

 private:
  class Engine;

  QSize size_;
  std::unique_ptr<Engine> engine_;
};

}  // namespace fathomline
