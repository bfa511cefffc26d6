#include "faces/qt/control_row.h"

#include <QEvent>
#include <QVBoxLayout>
#include <algorithm>

namespace fathomline {

ControlRow::ControlRow(int spacing)
    : spacing_(spacing),
      line_(new QHBoxLayout(this)),
      more_(new QToolButton(this)),
      rest_(new QFrame(this, Qt::Popup)) {
  line_->setContentsMargins(0, 0, 0, 0);
  line_->setSpacing(spacing);
  line_->addStretch();
  line_->addWidget(more_);
  more_->setText(QStringLiteral("\u22EF"));
  more_->setAccessibleName(QStringLiteral("More settings"));
  more_->setToolTip(QStringLiteral("More settings"));
  more_->hide();
  connect(more_, &QToolButton::clicked, this, [this] { OpenRest(); });
  rest_->setFrameShape(QFrame::StyledPanel);
  auto* const column = new QVBoxLayout(rest_);
  column->setSpacing(spacing);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ControlRow::AddGroup(std::vector<QWidget*> group) {
  for (QWidget* const widget : group) line_->insertWidget(line_->count() - 2, widget);
  groups_.push_back(std::move(group));
  inLine_ = groups_.size();
  OrderTabs();
}

int ControlRow::WidthOf(const std::vector<QWidget*>& group, int spacing) {
  int width = 0;
  for (const QWidget* const widget : group) {
    if (widget->isHidden()) continue;
    const QSize size = widget->sizeHint().expandedTo(widget->minimumSize());
    width += (width > 0 ? spacing : 0) + size.width();
  }
  return width;
}

QSize ControlRow::sizeHint() const {
  QSize size(0, more_->sizeHint().height());
  for (const auto& group : groups_) {
    const int width = WidthOf(group, spacing_);
    if (width > 0) size.rwidth() += (size.width() > 0 ? spacing_ : 0) + width;
    for (const QWidget* const widget : group) {
      size.setHeight(std::max(size.height(), widget->sizeHint().height()));
    }
  }
  return size;
}

QSize ControlRow::minimumSizeHint() const {
  return {more_->sizeHint().width(), sizeHint().height()};
}

bool ControlRow::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  // One of them comes or goes, or says something else.
  if (event->type() == QEvent::LayoutRequest) Arrange();
  return handled;
}

void ControlRow::resizeEvent(QResizeEvent*) {
  Arrange();
}

void ControlRow::Arrange() {
  if (arranging_) return;
  arranging_ = true;
  const int more = more_->sizeHint().width() + spacing_;
  std::size_t fit = groups_.size();
  if (sizeHint().width() > width()) {
    int used = 0;
    for (fit = 0; fit < groups_.size(); ++fit) {
      const int wide = WidthOf(groups_[fit], spacing_);
      if (wide > 0) used += wide + (used > 0 ? spacing_ : 0);
      if (used + more > width()) break;
    }
  }
  if (fit != inLine_) Distribute(fit);
  more_->setVisible(fit < groups_.size());
  if (fit == groups_.size()) rest_->hide();
  arranging_ = false;
}

// So many groups stay in the line.
void ControlRow::Distribute(std::size_t inLine) {
  inLine_ = inLine;
  auto* const column = static_cast<QVBoxLayout*>(rest_->layout());
  std::vector<QLayoutItem*> emptied;
  while (column->count() > 0) emptied.push_back(column->takeAt(0));
  int at = 0;
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    QHBoxLayout* row = line_;
    if (i >= inLine) {
      row = new QHBoxLayout;
      row->setSpacing(spacing_);
      row->addStretch();
      column->addLayout(row);
      at = 0;
    }
    for (QWidget* const widget : groups_[i]) {
      // Another parent would hide it.
      const bool shown = !widget->isHidden();
      row->insertWidget(at++, widget);
      widget->setVisible(shown);
    }
  }
  for (QLayoutItem* const item : emptied) delete item;
  OrderTabs();
}

// As they stand, with the button behind what is in the line. What comes back from the rest would
// otherwise stand behind all others.
void ControlRow::OrderTabs() {
  QWidget* before = nullptr;
  const auto next = [&before](QWidget* widget) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0) return;
    if (before != nullptr) setTabOrder(before, widget);
    before = widget;
  };
  for (std::size_t i = 0; i < inLine_; ++i) {
    for (QWidget* const widget : groups_[i]) next(widget);
  }
  next(more_);
  before = nullptr;
  for (std::size_t i = inLine_; i < groups_.size(); ++i) {
    for (QWidget* const widget : groups_[i]) next(widget);
  }
}

void ControlRow::OpenRest() {
  rest_->adjustSize();
  const QPoint below = more_->mapToGlobal(QPoint(more_->width(), more_->height()));
  rest_->move(below - QPoint(rest_->width(), 0));
  rest_->show();
  rest_->setFocus();
}

}  // namespace fathomline
