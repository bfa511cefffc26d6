#include "faces/qt/input_watcher.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTimer>
#include <QWidget>

#include "faces/qt/control_view.h"
#include "faces/qt/qt_face.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

// The wheel scrolls the page rather than a combo box that it happens to pass over.
bool IsIdleCombo(QObject* watched) {
  if (!watched->inherits("QComboBox")) return false;
  return !static_cast<QWidget*>(watched)->hasFocus();
}

}  // namespace

InputWatcher::InputWatcher(QtFace& face) : face_(face) {
  qApp->installEventFilter(this);
}

bool InputWatcher::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      face_.DrawSoon();
      if (MayGoTo(watched)) return false;
      // Qt has moved the focus before anybody could object.
      if (QWidget* const back = FieldToKeep(watched)) back->setFocus(Qt::OtherFocusReason);
      return true;
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Close:
      face_.DrawSoon();
      return false;
    case QEvent::FocusIn:
      FocusComes(watched, *static_cast<QFocusEvent*>(event));
      return false;
    case QEvent::Wheel:
      return IsIdleCombo(watched);
    default:
      return false;
  }
}

// Whether the field that has the focus lets it go. A press that it refuses is not delivered.
bool InputWatcher::MayGoTo(QObject* watched) {
  if (!watched->isWidgetType()) return true;
  ControlView* const view = face_.ViewOf(watched);
  if (view == nullptr || !view->TakesFocus()) return true;
  ViewContext& context = view->Context();
  Window* const window = context.window;
  if (window == nullptr || !window->Loaded() || !view->Plain().Usable()) return true;
  if (window->Focus() == &view->Plain()) return true;
  bool granted = false;
  const ActionOnStack guard(context);
  window->Act([&] { granted = window->FocusTo(view->Plain()); });
  return granted && context.window != nullptr && window->Loaded();
}

void InputWatcher::FocusComes(QObject* watched, const QFocusEvent& event) {
  switch (event.reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
      break;
    default:
      return;
  }
  if (MayGoTo(watched)) return;
  if (QWidget* const back = FieldToKeep(watched)) {
    QTimer::singleShot(0, back, [back] { back->setFocus(Qt::OtherFocusReason); });
  }
}

// The widget of the control that has refused to let the focus go.
QWidget* InputWatcher::FieldToKeep(QObject* watched) const {
  ControlView* const view = face_.ViewOf(watched);
  Window* const window = view != nullptr ? view->Context().window : nullptr;
  if (window == nullptr || window->Focus() == nullptr) return nullptr;
  return face_.WidgetOf(*window->Focus());
}

}  // namespace fathomline
