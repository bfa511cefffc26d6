// Sees every event before its widget does: asks the field that the user is about to leave, and
// notes that something has been done.
#pragma once

#include <QObject>

class QFocusEvent;
class QWidget;

namespace fathomline {

class QtFace;

class InputWatcher : public QObject {
 public:
  // Watches the whole application as long as it lives.
  explicit InputWatcher(QtFace& face);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool MayGoTo(QObject* watched);
  void FocusComes(QObject* watched, const QFocusEvent& event);
  QWidget* FieldToKeep(QObject* watched) const;

  QtFace& face_;
};

}  // namespace fathomline
