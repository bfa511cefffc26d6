#include "platform/qt/qt_face.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "platform/control.h"
#include "platform/qt/control_view.h"
#include "platform/qt/conversions.h"
#include "platform/qt/help_window.h"
#include "platform/qt/look.h"
#include "platform/qt/window_view.h"
#include "platform/window.h"

namespace fathomline {
namespace {

using namespace std::chrono_literals;

constexpr auto kTick = 40ms;
// After a drawing that took t comes a pause of so many t, so that what is worked on beside it, a
// replay above all, keeps four fifths of the time.
constexpr int kPauseFactor = 4;
constexpr auto kLongestPause = 250ms;
constexpr qsizetype kLongestBoxText = 1500;
constexpr int kLongestUnbroken = 60;

// Long sentences have no blanks at which a line could end: lets it end behind a comma.
QString Breakable(const QString& text) {
  QString broken;
  int run = 0;
  for (const QChar c : text.left(kLongestBoxText)) {
    broken += c;
    run = c.isSpace() ? 0 : run + 1;
    if (run > kLongestUnbroken && (c == QLatin1Char(',') || run > 2 * kLongestUnbroken)) {
      broken += QChar(0x200B);
      run = 0;
    }
  }
  if (text.size() > kLongestBoxText) broken += QChar(0x2026);
  return broken;
}

QMessageBox::Icon ToQt(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Critical:
      return QMessageBox::Critical;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// "Description|*.ext|Description|*.ext" as the filters of a Qt file dialog.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = fathomline::ToQt(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i];
    description = description.section(QLatin1Char('('), 0, 0).trimmed();
    QString patterns = parts[i + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (patterns == QLatin1String("*.*")) patterns = QStringLiteral("*");
    filters.append(QStringLiteral("%1 (%2)").arg(description, patterns));
  }
  return filters;
}

}  // namespace

// Sees every event before its widget does: asks the field that the user is about to leave, and
// notes that something has been done.
class QtFace::Watcher : public QObject {
 public:
  explicit Watcher(QtFace& face) : face_(face) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
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
        return FocusComes(watched, *static_cast<QFocusEvent*>(event));
      case QEvent::Wheel:
        return IsIdleCombo(watched);
      default:
        return false;
    }
  }

 private:
  // Whether the field that has the focus lets it go. A press that it refuses is not delivered.
  bool MayGoTo(QObject* watched) {
    if (!watched->isWidgetType()) return true;
    ControlView* const view = face_.ViewOf(watched);
    if (view == nullptr || !view->TakesFocus()) return true;
    ViewContext& context = view->Context();
    Window* const window = context.window;
    if (window == nullptr || !window->Loaded() || !view->Plain().Usable()) return true;
    if (window->Focus() == &view->Plain()) return true;
    bool granted = false;
    ++context.onStack;
    window->Act([&] { granted = window->FocusTo(view->Plain()); });
    --context.onStack;
    return granted && context.window != nullptr && window->Loaded();
  }

  bool FocusComes(QObject* watched, const QFocusEvent& event) {
    switch (event.reason()) {
      case Qt::TabFocusReason:
      case Qt::BacktabFocusReason:
      case Qt::ShortcutFocusReason:
        break;
      default:
        return false;
    }
    if (MayGoTo(watched)) return false;
    if (QWidget* const back = FieldToKeep(watched)) {
      QTimer::singleShot(0, back, [back] { back->setFocus(Qt::OtherFocusReason); });
    }
    return false;
  }

  // The widget of the control that has refused to let the focus go.
  QWidget* FieldToKeep(QObject* watched) {
    ControlView* const view = face_.ViewOf(watched);
    Window* const window = view != nullptr ? view->Context().window : nullptr;
    if (window == nullptr || window->Focus() == nullptr) return nullptr;
    return face_.WidgetOf(*window->Focus());
  }

  static bool IsIdleCombo(QObject* watched) {
    if (!watched->inherits("QComboBox")) return false;
    return !static_cast<QWidget*>(watched)->hasFocus();
  }

  QtFace& face_;
};

QtFace::QtFace() : watcher_(std::make_unique<Watcher>(*this)), wake_(std::make_unique<QTimer>()) {
  ApplyLook(*qApp);
  QApplication::setQuitOnLastWindowClosed(false);
  wake_->setSingleShot(true);
  wake_->setTimerType(Qt::PreciseTimer);
}

QtFace::~QtFace() {
  // Child windows stand in the main window and go before it.
  while (!windows_.empty()) windows_.pop_back();
}

void QtFace::Register(QWidget& widget, ControlView& view) {
  views_.insert(&widget, &view);
  QObject::connect(&widget, &QObject::destroyed, watcher_.get(),
                   [this](QObject* gone) { views_.remove(gone); });
}

ControlView* QtFace::ViewOf(QObject* widget) const {
  for (; widget != nullptr; widget = widget->parent()) {
    if (ControlView* const view = views_.value(widget)) return view;
  }
  return nullptr;
}

WindowView* QtFace::ViewOf(const Window& window) const {
  for (const auto& view : windows_) {
    if (view->Plain() == &window) return view.get();
  }
  return nullptr;
}

QWidget* QtFace::HostOf(const Window& window) const {
  const WindowView* const view = ViewOf(window);
  return view == nullptr ? nullptr : view->Host();
}

QWidget* QtFace::WidgetOf(const Control& control) const {
  for (auto it = views_.begin(); it != views_.end(); ++it) {
    if (&it.value()->Plain() == &control) return it.value()->Widget();
  }
  return nullptr;
}

QWidget* QtFace::MainHost() const {
  for (const auto& view : windows_) {
    if (view->Area() != nullptr) return view->Host();
  }
  return nullptr;
}

QMdiArea* QtFace::ChildArea() const {
  for (const auto& view : windows_) {
    if (view->Area() != nullptr) return view->Area();
  }
  return nullptr;
}

void QtFace::Forget(Window& window) {
  if (WindowView* const view = ViewOf(window)) view->Forget();
}

bool QtFace::Quitting() const {
  return Served() == nullptr || Served()->Quitting();
}

QWidget* QtFace::DialogParent() const {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  // The window at work stays until its handler has returned, and gets the input back.
  for (const auto& view : windows_) {
    if (view->Shown() && view->Host()->isActiveWindow() && !view->CanGo()) {
      return view->Host()->window();
    }
  }
  return MainHost();
}

Face::Reply QtFace::Ask(const MessageBox& box) {
  QMessageBox shown(DialogParent());
  shown.setObjectName(QStringLiteral("messageBox"));
  shown.setWindowTitle(fathomline::ToQt(box.title));
  shown.setIcon(ToQt(box.icon));
  shown.setTextFormat(Qt::PlainText);
  shown.setText(Breakable(fathomline::ToQt(box.text)));
  shown.setTextInteractionFlags(Qt::TextSelectableByMouse);
  if (box.buttons == BoxButtons::YesNo) {
    shown.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    shown.setDefaultButton(box.defaultNo ? QMessageBox::No : QMessageBox::Yes);
    shown.setEscapeButton(QMessageBox::No);
  } else {
    shown.setStandardButtons(QMessageBox::Ok);
  }
  QCheckBox* silence = nullptr;
  if (box.canBeSilenced) {
    silence = new QCheckBox(QStringLiteral("Do not show this message again in this session"));
    silence->setObjectName(QStringLiteral("silence"));
    shown.setCheckBox(silence);
  }
  bool answered = false;
  QObject::connect(&shown, &QDialog::finished, &shown, [&answered] { answered = true; });
  shown.setWindowModality(Qt::ApplicationModal);
  shown.show();
  RunUntil([&] { return answered || Quitting(); });
  DrawSoon();

  Reply reply;
  reply.silence = silence != nullptr && silence->isChecked();
  if (box.buttons == BoxButtons::YesNo) {
    const QAbstractButton* const clicked = shown.clickedButton();
    const bool yes = clicked != nullptr && clicked == shown.button(QMessageBox::Yes);
    reply.answer = yes ? Answer::Yes : Answer::No;
  }
  return reply;
}

void QtFace::TellFailure(const std::string& what, const std::string& cause) {
  Ask({.text = what + "\n" + cause, .icon = BoxIcon::Critical});
}

std::optional<std::string> QtFace::ChooseFile(const FileQuestion& question) {
  QFileDialog dialog(DialogParent(), fathomline::ToQt(question.title));
  dialog.setObjectName(QStringLiteral("fileDialog"));
  dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  const QStringList filters = NameFilters(question.filter);
  if (!filters.isEmpty()) dialog.setNameFilters(filters);
  if (!question.defaultExtension.empty()) {
    dialog.setDefaultSuffix(fathomline::ToQt(question.defaultExtension));
  }
  if (!question.folder.empty()) dialog.setDirectory(fathomline::ToQt(question.folder));
  // The ending follows the chosen kind of file.
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& kind) {
    const QString suffix = kind.section(QLatin1String("(*."), 1).section(QLatin1Char(')'), 0, 0);
    if (!suffix.isEmpty()) dialog.setDefaultSuffix(suffix);
  });
  bool answered = false;
  bool accepted = false;
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&](int result) {
    answered = true;
    accepted = result == QDialog::Accepted;
  });
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.show();
  RunUntil([&] { return answered || Quitting(); });
  DrawSoon();
  const QStringList files = dialog.selectedFiles();
  if (!accepted || files.isEmpty()) return {};
  return FromQt(files.front());
}

void QtFace::ShowPageSetup() {
  if (printer_ == nullptr) printer_ = std::make_unique<QPrinter>();
  QPageSetupDialog dialog(printer_.get(), DialogParent());
  dialog.setObjectName(QStringLiteral("pageSetup"));
  bool answered = false;
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&answered] { answered = true; });
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.show();
  RunUntil([&] { return answered || Quitting(); });
}

bool QtFace::ShowHelp(HelpStart start) {
  if (help_ == nullptr) help_ = std::make_unique<HelpWindow>();
  help_->Open(start);
  return true;
}

void QtFace::Beep() {
  QApplication::beep();
}

void QtFace::ArrangeIcons() {
  for (const auto& view : windows_) {
    if (view->Area() != nullptr) view->ArrangeIcons();
  }
}

void QtFace::Turn() {
  ++turns_;
  const auto begin = Now();
  QCoreApplication::processEvents();
  // What has been drawn before is painted with the events that follow.
  if (std::exchange(painting_, false)) {
    const auto cost = drawCost_ + (Now() - begin);
    const auto pause =
        std::min<std::chrono::steady_clock::duration>(cost * kPauseFactor, kLongestPause);
    earliestDraw_ = Now() + pause;
    nextDraw_ = std::max(nextDraw_, earliestDraw_);
  }
  // Within an action of the user something on the stack may still need what is to be deleted.
  if (turns_ == 1) QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  if (Desktop* const desktop = Served()) {
    const Desktop::Outcome outcome = desktop->Turn();
    busy_ = outcome.busy;
    nextDue_ = outcome.nextDue;
  } else {
    busy_ = false;
    nextDue_.reset();
  }
  DrawWhenDue();
  --turns_;
}

void QtFace::RunUntil(const std::function<bool()>& done) {
  while (!done()) {
    Turn();
    if (!busy_ && !done()) Wait();
  }
}

// Until the next tick, the next timer of the desktop or the next event, whichever comes first.
void QtFace::Wait() {
  auto until = nextDraw_;
  if (drawSoon_) until = earliestDraw_;
  if (nextDue_) until = std::min(until, *nextDue_);
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(until - Now());
  if (rest <= 0ms) return;
  wake_->start(rest);
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  wake_->stop();
}

void QtFace::DrawWhenDue() {
  const auto now = Now();
  if (now < (drawSoon_ ? earliestDraw_ : nextDraw_)) return;
  Draw();
  painting_ = true;
  drawCost_ = Now() - now;
  nextDraw_ = Now() + kTick;
}

void QtFace::Draw() {
  // A window that shows a box while it is drawn.
  if (drawing_) return;
  const OnStack guard(drawing_);
  drawSoon_ = false;
  if (Desktop* const desktop = Served()) {
    // First, since a window that is covered is not written; and behind, for those made here.
    RaiseWindows();
    const std::vector<Window*> present = desktop->Windows();
    for (Window* const window : present) {
      if (window->Style() == WindowStyle::Main) DrawWindow(*window);
    }
    for (Window* const window : present) {
      if (window->Style() != WindowStyle::Main) DrawWindow(*window);
    }
    if (const QMdiArea* const area = ChildArea()) {
      desktop->SetChildArea({area->viewport()->width() * kTwipsPerPixel,
                             area->viewport()->height() * kTwipsPerPixel});
    }
    RaiseWindows();
  }
  std::erase_if(windows_,
                [](const auto& view) { return view->Plain() == nullptr && view->CanGo(); });
}

// Those brought forward since the last time, in the order in which that was done. A window made
// only now may come behind some that stand in front already; these are raised again.
void QtFace::RaiseWindows() {
  std::optional<std::uint64_t> lowest;
  for (const auto& view : windows_) {
    if (!view->WantsFront()) continue;
    const std::uint64_t order = view->Plain()->FrontOrder();
    lowest = std::min(lowest.value_or(order), order);
  }
  if (!lowest) return;
  std::vector<WindowView*> raised;
  for (const auto& view : windows_) {
    if (view->Shown() && view->Plain()->FrontOrder() >= *lowest) raised.push_back(view.get());
  }
  std::sort(raised.begin(), raised.end(), [](const WindowView* a, const WindowView* b) {
    return a->Plain()->FrontOrder() < b->Plain()->FrontOrder();
  });
  for (WindowView* const view : raised) view->BringToFront();
}

void QtFace::DrawWindow(Window& window) {
  WindowView* view = ViewOf(window);
  if (view == nullptr) {
    if (!window.Loaded() || !window.Visible()) return;
    // The main window first, since the others stand in it and go before it.
    windows_.push_back(std::make_unique<WindowView>(*this, window));
    view = windows_.back().get();
  }
  updates_ += static_cast<std::uint64_t>(view->Draw());
}

}  // namespace fathomline
