// Widgets and layouts side by side, in as many lines as the width asks for.
#pragma once

#include <QLayout>
#include <QList>

namespace fathomline {

class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(int spacing);
  ~FlowLayout() override;

  void addLayout(QLayout* layout);

  void addItem(QLayoutItem* item) override { items_.append(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return Flow(QRect(0, 0, width, 0), false); }
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& area) override;

 private:
  // Returns the height that the items need.
  int Flow(const QRect& area, bool place) const;

  QList<QLayoutItem*> items_;
};

}  // namespace fathomline
