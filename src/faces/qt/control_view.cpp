#include "faces/qt/control_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "faces/qt/bar_views.h"
#include "faces/qt/chart_view.h"
#include "faces/qt/choices_views.h"
#include "faces/qt/conversions.h"
#include "faces/qt/grid_view.h"
#include "faces/qt/long_list_view.h"
#include "faces/qt/look.h"
#include "faces/qt/picture_view.h"
#include "faces/qt/qt_face.h"
#include "faces/qt/simple_views.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/long_list.h"
#include "toolkit/picture.h"
#include "toolkit/window.h"

namespace fathomline {

ActionOnStack::ActionOnStack(ViewContext& context) : context_(context) {
  ++context_.onStack;
  context_.face.BeginAction(context_);
}

ActionOnStack::~ActionOnStack() {
  context_.face.EndAction();
  --context_.onStack;
}

void ControlView::SetWidget(QWidget* widget) {
  widget_ = widget;
  widget->setObjectName(ToQt(control_.Name()));
  // A label reads out its text as long as it has no other name.
  if (control_.Kind() != ControlKind::Label) widget->setAccessibleName(SpokenName());
  context_.face.Register(*widget, *this);
}

// "cmbFilter" as "Filter", "fgAISTargets" as "AIS Targets".
QString ControlView::SpokenName() const {
  const QString name = ToQt(control_.Name());
  const auto first = std::find_if(name.begin(), name.end(), [](QChar c) { return !c.isLower(); });
  QString spoken;
  for (auto at = first; at != name.end(); ++at) {
    const bool begins = at != first && at->isUpper();
    const bool behindLower = begins && !(at - 1)->isUpper();
    const bool beforeLower = begins && at + 1 != name.end() && (at + 1)->isLower();
    if (behindLower || beforeLower) spoken += QLatin1Char(' ');
    spoken += *at;
  }
  return spoken.replace(QLatin1Char('_'), QLatin1Char(' ')).simplified();
}

void ControlView::AddCompanion(QWidget* companion) {
  companions_.emplace_back(companion);
  drawn_ = false;
}

bool ControlView::Seen() const {
  return widget_ != nullptr && widget_->isVisible() && !widget_->visibleRegion().isEmpty();
}

// Whether it comes or goes, or changes between usable and not.
bool ControlView::Appears() const {
  return !drawn_ || control_.Shown() != shown_ || control_.Usable() != usable_;
}

void ControlView::Appear() {
  shown_ = control_.Shown();
  usable_ = control_.Usable();
  drawn_ = true;
  const auto follow = [this](QWidget& widget) {
    widget.setVisible(shown_);
    widget.setEnabled(usable_);
  };
  follow(*widget_);
  for (const auto& companion : companions_) {
    if (companion != nullptr) follow(*companion);
  }
}

bool ControlView::Sync() {
  if (widget_ == nullptr) return false;
  if (Appears()) {
    if (Waits() && !Seen()) {
      Appear();
    } else {
      Write();
    }
    return true;
  }
  if (revision_ == control_.Revision() || !Seen()) return false;
  Write();
  return true;
}

void ControlView::Write() {
  if (widget_ == nullptr) return;
  const bool outer = std::exchange(writing_, true);
  revision_ = control_.Revision();
  if (Appears()) Appear();
  if (!control_.ToolTip().empty()) widget_->setToolTip(ToQt(control_.ToolTip()));
  Update();
  writing_ = outer;
}

bool ControlView::SelectionDue() {
  return std::exchange(selections_, control_.Selections()) != control_.Selections();
}

void ControlView::User(const std::function<void()>& action) {
  if (writing_ || context_.window == nullptr) return;
  const ActionOnStack guard(context_);
  action();
  if (context_.window != nullptr) Write();
  context_.face.DrawSoon();
}

bool IsPress(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
         event.key() == Qt::Key_Space;
}

void PaintFocusRing(QWidget& widget) {
  if (!widget.hasFocus()) return;
  constexpr double kWidth = 2.0;
  QPainter painter(&widget);
  painter.setPen(QPen(PaintOf(look::kFocusRing), kWidth));
  painter.drawRect(widget.rect().adjusted(1, 1, -1, -1));
}

std::unique_ptr<ControlView> MakeControlView(ViewContext& context, Control& control) {
  switch (control.Kind()) {
    case ControlKind::Label:
      return std::make_unique<LabelView>(context, static_cast<Label&>(control));
    case ControlKind::Button:
      return std::make_unique<ButtonView>(context, static_cast<Button&>(control));
    case ControlKind::TextBox:
      if (static_cast<TextBox&>(control).Multiline()) {
        return std::make_unique<TextAreaView>(context, static_cast<TextBox&>(control));
      }
      return std::make_unique<TextLineView>(context, static_cast<TextBox&>(control));
    case ControlKind::CheckBox:
      return std::make_unique<CheckBoxView>(context, static_cast<CheckBox&>(control));
    case ControlKind::Progress:
      return std::make_unique<ProgressView>(context, static_cast<ProgressBar&>(control));
    case ControlKind::Choices:
      return MakeChoicesView(context, static_cast<Choices&>(control));
    case ControlKind::Grid:
      return std::make_unique<GridView>(context, static_cast<Grid&>(control));
    case ControlKind::LongList:
      return std::make_unique<LongListView>(context, static_cast<LongList&>(control));
    case ControlKind::Chart:
      return std::make_unique<ChartView>(context, static_cast<Chart&>(control));
    case ControlKind::Picture:
      return std::make_unique<PictureView>(context, static_cast<Picture&>(control));
    case ControlKind::StatusBar:
      return std::make_unique<StatusBarView>(context, static_cast<StatusBar&>(control));
    case ControlKind::ToolBar:
      return std::make_unique<ToolBarView>(context, static_cast<ToolBar&>(control));
    case ControlKind::Frame:
      return std::make_unique<FrameView>(context, static_cast<Frame&>(control));
    case ControlKind::MenuItem:
      break;
  }
  return nullptr;
}

}  // namespace fathomline
