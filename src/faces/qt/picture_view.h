// The view of a picture.
#pragma once

#include "faces/qt/control_view.h"
#include "toolkit/picture.h"

class QPainter;

namespace fathomline {

class PictureView : public ControlView {
 public:
  PictureView(ViewContext& context, Picture& picture);

 protected:
  void Update() override;

 private:
  class Surface;

  void Paint(QPainter& painter, const QRectF& area) const;
  void ShowMenu(const QPoint& at);

  Picture& picture_;
  Surface* surface_;
};

}  // namespace fathomline
