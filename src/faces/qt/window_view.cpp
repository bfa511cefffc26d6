#include "faces/qt/window_view.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "faces/qt/bar_views.h"
#include "faces/qt/child_area.h"
#include "faces/qt/conversions.h"
#include "faces/qt/layout_builder.h"
#include "faces/qt/look.h"
#include "faces/qt/qt_face.h"
#include "toolkit/controls.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr int kLeastChildWidth = 180;
constexpr int kLeastChildHeight = 90;

// Files of this machine; what else may be dropped is nothing.
std::vector<std::string> FilesOf(const QDropEvent& event) {
  std::vector<std::string> paths;
  for (const QUrl& url : event.mimeData()->urls()) {
    if (url.isLocalFile()) paths.push_back(FromQt(QDir::toNativeSeparators(url.toLocalFile())));
  }
  return paths;
}

}  // namespace

WindowView::WindowView(QtFace& face, Window& window)
    : context_{face, &window}, placing_(context_, widgets_) {}

WindowView::~WindowView() {
  DropHost();
}

bool WindowView::CanGo() const {
  return context_.onStack == 0 && (Plain() == nullptr || Plain()->Depth() == 0);
}

void WindowView::Forget() {
  // Its controls have gone, so nothing may be painted of them any more.
  context_.window = nullptr;
  // The widgets may have gone before, with the main window that they stood in.
  if (widgets_.host == nullptr) return;
  for (const auto& view : views_) view->Forget();
  widgets_.host->hide();
}

bool WindowView::Shown() const {
  return Plain() != nullptr && widgets_.host != nullptr && widgets_.host->isVisible();
}

bool WindowView::Settled() const {
  return Shown() && loads_ == Plain()->Loads() && contentRevision_ == Plain()->ContentRevision() &&
         placing_.Settled();
}

bool WindowView::WantsFront() const {
  return Shown() && Plain()->FrontOrder() != frontOrder_;
}

void WindowView::BringToFront() {
  frontOrder_ = Plain()->FrontOrder();
  if (widgets_.child != nullptr && widgets_.child->mdiArea() != nullptr) {
    widgets_.child->mdiArea()->setActiveSubWindow(widgets_.child);
    widgets_.child->raise();
  } else {
    widgets_.host->raise();
    widgets_.host->activateWindow();
  }
}

int WindowView::Draw() {
  Window* const window = Plain();
  if (window == nullptr) return 0;
  if (!window->Loaded() || !window->Visible()) {
    if (widgets_.host != nullptr && widgets_.host->isVisible()) {
      const WindowPlacing::ByProgram making(placing_);
      widgets_.host->hide();
    }
    if (!window->Loaded() && widgets_.host != nullptr && CanGo()) DropHost();
    return 0;
  }
  if (widgets_.host == nullptr) {
    if (AwaitsMain()) return 0;
    MakeHost();
  }
  if (std::exchange(loads_, window->Loads()) != window->Loads()) fresh_ = true;
  if (contentRevision_ != window->ContentRevision() && CanGo()) Fill();
  if (fresh_ || AnySeen()) {
    window->Act([window] { window->Refresh(); });
    if (Plain() == nullptr || !window->Loaded() || widgets_.host == nullptr) return 0;
  }
  int updates = 0;
  for (const auto& view : views_) updates += view->Sync() ? 1 : 0;
  if (menus_ != nullptr) menus_->Sync();
  FollowFrame();
  fresh_ = false;
  return updates;
}

bool WindowView::AnySeen() const {
  if (main_ != nullptr) return true;
  if (!widgets_.host->isVisible() || widgets_.host->isMinimized()) return false;
  return std::any_of(views_.begin(), views_.end(), [](const auto& view) { return view->Seen(); });
}

// Covered windows too, which are not refreshed otherwise.
void WindowView::WriteAll() {
  if (Window* const window = Plain()) {
    window->Act([window] { window->Refresh(); });
  }
  for (const auto& view : views_) view->Write();
}

bool WindowView::AwaitsMain() const {
  if (Plain()->Style() != WindowStyle::Child || context_.face.ChildArea() != nullptr) return false;
  const auto& windows = Plain()->OwningDesktop().Windows();
  return std::any_of(windows.begin(), windows.end(),
                     [](const Window* window) { return window->Style() == WindowStyle::Main; });
}

void WindowView::MakeHost() {
  Window& window = *Plain();
  const WindowPlacing::ByProgram making(placing_);
  QMdiArea* const children = context_.face.ChildArea();
  if (window.Style() == WindowStyle::Main) {
    main_ = new QMainWindow;
    area_ = MakeChildArea(*main_);
    widgets_.host = main_;
  } else if (window.Style() == WindowStyle::Child && children != nullptr) {
    widgets_.child = new QMdiSubWindow;
    widgets_.child->setAttribute(Qt::WA_DeleteOnClose, false);
    children->addSubWindow(widgets_.child);
    connect(widgets_.child, &QMdiSubWindow::aboutToActivate, this, [this] { UserRaised(); });
    widgets_.host = widgets_.child;
  } else {
    const bool dialog = window.Style() == WindowStyle::Dialog;
    widgets_.host = new QWidget(context_.face.MainHost(), dialog ? Qt::Dialog : Qt::Window);
  }
  widgets_.host->setObjectName(ToQt(window.FullName()));
  widgets_.host->installEventFilter(this);
  widgets_.host->setAcceptDrops(static_cast<bool>(window.onDrop));
  MakeAnew();
  placing_.Restart();
  fresh_ = true;
  Fill();
}

void WindowView::DropHost() {
  const WindowPlacing::ByProgram making(placing_);
  menus_.reset();
  // The widgets first: as they go they may still turn to their views.
  if (widgets_.host != nullptr) {
    widgets_.host->removeEventFilter(this);
    delete widgets_.host.data();
  }
  views_.clear();
}

void WindowView::Fill() {
  const WindowPlacing::ByProgram making(placing_);
  Window& window = *Plain();
  contentRevision_ = window.ContentRevision();
  menus_.reset();
  delete widgets_.content.data();
  if (main_ != nullptr) {
    const auto own = Qt::FindDirectChildrenOnly;
    for (QToolBar* const bar : main_->findChildren<QToolBar*>(QString(), own)) delete bar;
    delete main_->findChild<QStatusBar*>(QString(), own);
  }
  views_.clear();

  BuiltContent built = BuildContent(context_);
  views_ = std::move(built.views);
  widgets_.body = built.body;
  std::vector<ControlView*> bars;
  for (const auto& view : views_) {
    if (view->Widget()->parentWidget() == nullptr) bars.push_back(view.get());
  }
  if (main_ != nullptr) {
    FillMain(bars, built.body);
  } else {
    FillOther(bars, built.body, built.foot);
    if (built.scrollsDownOnly) {
      widgets_.scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
  }
}

void WindowView::FillMain(const std::vector<ControlView*>& bars, QWidget* body) {
  if (MenuView::Needed(*Plain())) {
    main_->menuBar()->clear();
    menus_ = std::make_unique<MenuView>(context_, *main_->menuBar());
  }
  for (ControlView* const bar : bars) {
    if (bar->Plain().Kind() == ControlKind::StatusBar) {
      main_->setStatusBar(static_cast<QStatusBar*>(bar->Widget()));
    } else if (auto* const tools = qobject_cast<QToolBar*>(bar->Widget())) {
      main_->addToolBar(tools);
    }
  }
  // What the main window says of itself stands in the middle of an empty area.
  widgets_.content = body;
  body->setParent(area_->viewport());
  body->setAutoFillBackground(true);
}

void WindowView::FillOther(const std::vector<ControlView*>& bars, QWidget* body, QWidget* foot) {
  auto* const content = new QWidget;
  widgets_.content = content;
  auto* const column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  if (MenuView::Needed(*Plain())) {
    auto* const menuBar = new QMenuBar(content);
    menus_ = std::make_unique<MenuView>(context_, *menuBar);
    column->setMenuBar(menuBar);
  }
  for (ControlView* const bar : bars) {
    if (bar->Plain().Kind() == ControlKind::ToolBar) column->addWidget(bar->Widget());
  }
  widgets_.scroll = new QScrollArea;
  widgets_.scroll->setWidgetResizable(true);
  widgets_.scroll->setFrameShape(QFrame::NoFrame);
  if (Plain()->Style() == WindowStyle::Dialog) widgets_.scroll->setFocusPolicy(Qt::NoFocus);
  widgets_.scroll->setWidget(body);
  column->addWidget(widgets_.scroll, 1);
  if (foot != nullptr) column->addWidget(foot);
  for (ControlView* const bar : bars) {
    if (bar->Plain().Kind() == ControlKind::StatusBar) column->addWidget(bar->Widget());
  }
  if (widgets_.child != nullptr) {
    widgets_.child->setWidget(content);
    widgets_.child->setMinimumSize(kLeastChildWidth, kLeastChildHeight);
  } else {
    delete widgets_.host->layout();
    auto* const outer = new QVBoxLayout(widgets_.host);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(content);
  }
}

// Something of what stands in the body is to be seen.
bool WindowView::BodySpeaks() const {
  return std::any_of(views_.begin(), views_.end(), [this](const auto& view) {
    return view->Plain().Shown() && widgets_.body->isAncestorOf(view->Widget());
  });
}

void WindowView::FollowFrame() {
  Window& window = *Plain();
  if (revision_ != window.Revision()) {
    const WindowPlacing::ByProgram naming(placing_);
    revision_ = window.Revision();
    widgets_.host->setWindowTitle(ToQt(window.Caption()));
    widgets_.host->setAccessibleName(ToQt(window.Caption()));
    widgets_.host->setWindowIcon(ProgramIcon(window.IconColour(), window.Index()));
  }
  placing_.Follow(fresh_);
  if (area_ != nullptr && widgets_.body != nullptr) {
    PlaceWelcome(*area_, *widgets_.body, BodySpeaks());
  }
}

// The area also activates the window in front anew when the program gets the input back, which
// brings nothing forward.
void WindowView::UserRaised() {
  Window* const window = Plain();
  if (window == nullptr || context_.face.Drawing() || !window->Loaded() || !window->Visible()) {
    return;
  }
  if (window->State() == WindowState::Minimised) return;
  const auto& windows = window->OwningDesktop().Windows();
  const bool covered = std::any_of(windows.begin(), windows.end(), [window](const Window* other) {
    return other->Style() == WindowStyle::Child && other->Visible() &&
           other->FrontOrder() > window->FrontOrder();
  });
  if (!covered) return;
  const ActionOnStack guard(context_);
  window->Act([window] { window->Show(); });
  frontOrder_ = window->FrontOrder();
  context_.face.DrawSoon();
}

bool WindowView::ClickButton(Button::Role role) {
  for (Control* const control : Plain()->Controls()) {
    if (control->Kind() != ControlKind::Button) continue;
    auto& button = static_cast<Button&>(*control);
    if (button.ButtonRole() != role || !button.Usable()) continue;
    const ActionOnStack guard(context_);
    button.Click();
    context_.face.DrawSoon();
    return true;
  }
  return false;
}

bool WindowView::PressKey(const QKeyEvent& event) {
  if (Plain() == nullptr || main_ != nullptr) return false;
  const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (!plain) return false;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return ClickButton(Button::Role::Default);
    case Qt::Key_Escape:
      if (ClickButton(Button::Role::Cancel)) return true;
      if (Plain()->Style() != WindowStyle::Dialog) return false;
      UserClosed();
      return true;
    default:
      return false;
  }
}

void WindowView::UserClosed() {
  const ActionOnStack guard(context_);
  Plain()->UserClose();
  context_.face.DrawSoon();
}

bool WindowView::OfferFiles(QDragEnterEvent& event) {
  if (!Plain()->onDrop || FilesOf(event).empty()) return false;
  event.setDropAction(Qt::CopyAction);
  event.accept();
  return true;
}

// Whoever drops something waits for that to end, and a box may stand for long.
bool WindowView::DropFiles(QDropEvent& event) {
  const std::vector<std::string> paths = FilesOf(event);
  if (!Plain()->onDrop || paths.empty()) return false;
  event.setDropAction(Qt::CopyAction);
  event.accept();
  QTimer::singleShot(0, this, [this, paths] {
    if (Plain() == nullptr) return;
    const ActionOnStack guard(context_);
    Plain()->UserDrop(paths);
    context_.face.DrawSoon();
  });
  return true;
}

bool WindowView::eventFilter(QObject* watched, QEvent* event) {
  Window* const window = Plain();
  if (watched != widgets_.host || window == nullptr) return false;
  switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      UserClosed();
      return true;
    case QEvent::Move:
    case QEvent::Resize:
      placing_.UserMoved();
      return false;
    case QEvent::WindowStateChange:
      placing_.UserChangedState();
      return false;
    case QEvent::DragEnter:
      return OfferFiles(*static_cast<QDragEnterEvent*>(event));
    case QEvent::Drop:
      return DropFiles(*static_cast<QDropEvent*>(event));
    case QEvent::KeyPress:
      return PressKey(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

}  // namespace fathomline
