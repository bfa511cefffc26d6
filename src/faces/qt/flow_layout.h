// Widgets and layouts side by side, in as many lines as the width asks for.
#pragma once

#include <QLayout>
#include <QList>

namespace fathomline {

// Its height follows the width that it has been given. It does not speak of height for width, since
// a scroll area would then no longer let what stands beside it shrink.
class FlowLayout final : public QLayout {
 public:
  explicit FlowLayout(int spacing);
  ~FlowLayout() override;

  void addLayout(QLayout* layout);

  void addItem(QLayoutItem* item) override { items_.append(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& area) override;

 private:
  // Returns the height that the items need.
  int Flow(const QRect& area, bool place) const;

  QList<QLayoutItem*> items_;
  int height_ = 0;
};

}  // namespace fathomline
