// Combo boxes and what belongs to them in one line; what has no room waits behind a button.
#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QToolButton>
#include <QWidget>
#include <cstddef>
#include <vector>

namespace fathomline {

class ControlRow : public QWidget {
 public:
  explicit ControlRow(int spacing);

  // Widgets that stay together, such as words and what they name.
  void AddGroup(std::vector<QWidget*> group);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  static int WidthOf(const std::vector<QWidget*>& group, int spacing);
  void Arrange();
  void Distribute(std::size_t inLine);
  void OrderTabs();
  void OpenRest();

  int spacing_;
  QHBoxLayout* line_;
  QToolButton* more_;
  QFrame* rest_;
  std::vector<std::vector<QWidget*>> groups_;
  std::size_t inLine_ = 0;
  bool arranging_ = false;
};

}  // namespace fathomline
