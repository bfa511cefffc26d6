#include "faces/qt/qt_face.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QMdiArea>
#include <QPrinter>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <algorithm>

#include "base/fault.h"
#include "base/files.h"
#include "faces/qt/child_area.h"
#include "faces/qt/control_view.h"
#include "faces/qt/conversions.h"
#include "faces/qt/help_window.h"
#include "faces/qt/input_watcher.h"
#include "faces/qt/look.h"
#include "faces/qt/modal_dialogs.h"
#include "faces/qt/window_view.h"
#include "toolkit/control.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

using namespace std::chrono_literals;

constexpr auto kTick = 40ms;
// Windows are drawn and painted for so long at a stretch; those that are left follow with the next
// drawing, so that even a desktop full of windows answers its user.
constexpr auto kLongestDrawing = 15ms;
// After a drawing that took t comes a pause of so many t, so that what is worked on beside it, a
// replay above all, keeps four fifths of the time.
constexpr int kPauseFactor = 4;
constexpr auto kLongestPause = 250ms;

}  // namespace

QtFace::QtFace()
    : watcher_(std::make_unique<InputWatcher>(*this)), wake_(std::make_unique<QTimer>()) {
  ApplyLook(*qApp, LookChoice::System);
  QApplication::setQuitOnLastWindowClosed(false);
  wake_->setSingleShot(true);
  wake_->setTimerType(Qt::PreciseTimer);
}

QtFace::~QtFace() {
  // Child windows stand in the main window and go before it.
  while (!windows_.empty()) windows_.pop_back();
}

void QtFace::SetLook(LookChoice choice) {
  if (!ApplyLook(*qApp, choice)) return;
  for (const auto& view : windows_) view->MakeAnew();
  help_.reset();
  DrawSoon();
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

bool QtFace::RunDialog(QDialog& dialog) {
  const QPointer<QWidget> active = QApplication::activeWindow();
  std::optional<int> result;
  const auto finished = QObject::connect(&dialog, &QDialog::finished, &dialog,
                                         [&result](int code) { result = code; });
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.show();
  RunUntil([&] { return result || Quitting(); });
  QObject::disconnect(finished);
  // A box of the background does not take the input away from where the user types.
  if (active != nullptr && active != dialog.parentWidget() && active->isVisible()) {
    dialog.hide();
    active->activateWindow();
  }
  DrawSoon();
  return result == QDialog::Accepted;
}

QWidget* QtFace::DialogParent() const {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  // The window at work stays until its handler has returned, and gets the input back. Behind a box
  // that has just gone, no window may have it yet.
  for (auto at = atWork_.rbegin(); at != atWork_.rend(); ++at) {
    const WindowView* const view = (*at)->window != nullptr ? ViewOf(*(*at)->window) : nullptr;
    if (view != nullptr && view->Shown()) return view->Host()->window();
  }
  return MainHost();
}

DialogStand QtFace::Stand() {
  return {DialogParent(), [this](QDialog& dialog) { return RunDialog(dialog); }};
}

Face::Reply QtFace::Ask(const MessageBox& box) {
  return ShowBox(Stand(), box);
}

void QtFace::TellFailure(const std::string& what, const std::string& cause) {
  Ask({.text = what + "\n" + cause, .icon = BoxIcon::Critical});
}

void QtFace::SaveFile(const std::string& path, std::string_view content,
                      const std::string& failure) {
  ResumeNext([&] { ReplaceFile(path, content); },
             [&](const Fault& fault) { TellFailure(failure, fault.Description()); });
}

std::optional<std::string> QtFace::ChooseFile(const FileQuestion& question) {
  return ShowFileDialog(Stand(), question);
}

void QtFace::ShowPageSetup() {
  if (printer_ == nullptr) printer_ = std::make_unique<QPrinter>();
  ShowPageSetupDialog(Stand(), *printer_);
}

bool QtFace::ShowHelp(HelpStart start) {
  if (help_ == nullptr) help_ = std::make_unique<HelpWindow>();
  help_->Open(start);
  return true;
}

void QtFace::CopyText(std::string_view text) {
  QApplication::clipboard()->setText(ToQt(text));
}

bool QtFace::OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

void QtFace::Beep() {
  QApplication::beep();
}

void QtFace::ArrangeIcons() {
  if (const QMdiArea* const area = ChildArea()) ArrangeIconsOf(*area);
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
  if (DrawFor(kLongestDrawing)) {
    painting_ = true;
    drawCost_ = Now() - now;
    nextDraw_ = Now() + kTick;
  } else {
    earliestDraw_ = nextDraw_ = Now();
  }
}

void QtFace::Draw() {
  DrawFor({});
}

void QtFace::DrawWhole(const Window& window) {
  Draw();
  if (WindowView* const view = ViewOf(window)) view->WriteAll();
  // What has been written asks for its room with an event.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

bool QtFace::DrawFor(std::optional<Span> time) {
  // A window that shows a box while it is drawn.
  if (drawing_) return true;
  bool settled = true;
  const OnStack guard(drawing_);
  drawSoon_ = false;
  if (Desktop* const desktop = Served()) {
    // First, since a window that is covered is not written; and behind, for those made here.
    RaiseWindows();
    settled = DrawWindows(desktop->Windows(), time);
    if (const QMdiArea* const area = ChildArea()) {
      const QSize room = RoomOf(*area) * kTwipsPerPixel;
      desktop->SetChildArea({room.width(), room.height()});
    }
    RaiseWindows();
  }
  std::erase_if(windows_,
                [](const auto& view) { return view->Plain() == nullptr && view->CanGo(); });
  return settled;
}

// The main window, dialogs and the window in front are drawn each time, since the user looks at
// them; the others in turn, as many as there is time for.
bool QtFace::DrawWindows(std::vector<Window*> windows, std::optional<Span> time) {
  std::uint64_t front = 0;
  for (const Window* const window : windows) {
    if (window->Visible() && window->Style() == WindowStyle::Child) {
      front = std::max(front, window->FrontOrder());
    }
  }
  // The others stand in the main window, so that comes first.
  const auto rank = [front](const Window* window) {
    if (window->Style() == WindowStyle::Main) return 0;
    return window->Style() == WindowStyle::Dialog || window->FrontOrder() == front ? 1 : 2;
  };
  std::stable_sort(windows.begin(), windows.end(),
                   [&](const Window* a, const Window* b) { return rank(a) < rank(b); });
  const auto inTurn = std::find_if(windows.begin(), windows.end(),
                                   [&](const Window* window) { return rank(window) == 2; });
  const auto first = std::find(inTurn, windows.end(), nextInTurn_);
  if (first != windows.end()) std::rotate(inTurn, first, windows.end());
  nextInTurn_ = nullptr;

  bool settled = true;
  std::optional<std::chrono::steady_clock::time_point> end;
  for (auto at = windows.begin(); at != windows.end(); ++at) {
    Window& window = **at;
    if (time && at == inTurn) end = Now() + *time;
    if (end && window.Visible() && Now() >= *end) {
      if (nextInTurn_ == nullptr) nextInTurn_ = &window;
      const WindowView* const view = ViewOf(window);
      settled = settled && view != nullptr && view->Settled();
      continue;
    }
    DrawWindow(window);
    if (time) PaintNow();
  }
  return settled;
}

// What is painted only with the events that follow could not be counted in.
void QtFace::PaintNow() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
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
