#include "platform/qt/window_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/controls.h"
#include "platform/desktop.h"
#include "platform/qt/bar_views.h"
#include "platform/qt/conversions.h"
#include "platform/qt/layout_builder.h"
#include "platform/qt/look.h"
#include "platform/qt/qt_face.h"

namespace fathomline {
namespace {

constexpr int kLeastChildWidth = 180;
constexpr int kLeastChildHeight = 90;
// A window never takes more of the screen than this when it sizes itself, in hundredths.
constexpr int kMostOfScreen = 92;
constexpr int kMostOfRoom = 85;
constexpr QSize kLeastUseful{340, 240};
constexpr QSize kUsualSize{640, 440};

QRect AvailableScreen(const QWidget& widget) {
  const QScreen* const screen = widget.screen();
  return screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 1280, 720);
}

// A place on the screen of which something can be seen and taken hold of.
QRect OnScreen(QRect place, const QRect& screen) {
  place.setSize(place.size().boundedTo(screen.size()));
  place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() + 1 - place.width()));
  place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() + 1 - place.height()));
  return place;
}

WindowState StateOf(const QWidget& host) {
  if (host.isMinimized()) return WindowState::Minimised;
  return host.isMaximized() ? WindowState::Maximised : WindowState::Normal;
}

class Placing {
 public:
  explicit Placing(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~Placing() { flag_ = before_; }
  Placing(const Placing&) = delete;
  Placing& operator=(const Placing&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

WindowView::WindowView(QtFace& face, Window& window) : context_{face, &window} {}

WindowView::~WindowView() {
  DropHost();
}

bool WindowView::CanGo() const {
  return context_.onStack == 0 && (Plain() == nullptr || Plain()->Depth() == 0);
}

void WindowView::Forget() {
  // Its controls have gone, so nothing may be painted of them any more.
  context_.window = nullptr;
  for (const auto& view : views_) view->Forget();
  if (host_ != nullptr) host_->hide();
}

bool WindowView::Shown() const {
  return Plain() != nullptr && host_ != nullptr && host_->isVisible();
}

bool WindowView::WantsFront() const {
  return Shown() && Plain()->FrontOrder() != frontOrder_;
}

void WindowView::BringToFront() {
  frontOrder_ = Plain()->FrontOrder();
  if (child_ != nullptr && child_->mdiArea() != nullptr) {
    child_->mdiArea()->setActiveSubWindow(child_);
    child_->raise();
  } else {
    host_->raise();
    host_->activateWindow();
  }
}

int WindowView::Draw() {
  Window* const window = Plain();
  if (window == nullptr) return 0;
  if (!window->Loaded() || !window->Visible()) {
    if (host_ != nullptr && host_->isVisible()) {
      const Placing placing(placing_);
      host_->hide();
    }
    if (!window->Loaded() && host_ != nullptr && CanGo()) DropHost();
    return 0;
  }
  if (host_ == nullptr) MakeHost();
  if (std::exchange(loads_, window->Loads()) != window->Loads()) fresh_ = true;
  if (contentRevision_ != window->ContentRevision() && CanGo()) Fill();
  if (fresh_ || AnySeen()) {
    window->Act([window] { window->Refresh(); });
    if (Plain() == nullptr || !window->Loaded() || host_ == nullptr) return 0;
  }
  int updates = 0;
  for (const auto& view : views_) updates += view->Sync() ? 1 : 0;
  if (menus_ != nullptr) menus_->Sync();
  FollowFrame();
  FollowWelcome();
  fresh_ = false;
  return updates;
}

bool WindowView::AnySeen() const {
  if (main_ != nullptr) return true;
  if (!host_->isVisible() || host_->isMinimized()) return false;
  return std::any_of(views_.begin(), views_.end(), [](const auto& view) { return view->Seen(); });
}

void WindowView::MakeHost() {
  Window& window = *Plain();
  const Placing placing(placing_);
  QMdiArea* const children = context_.face.ChildArea();
  if (window.Style() == WindowStyle::Main) {
    main_ = new QMainWindow;
    area_ = new QMdiArea(main_);
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setBackground(QColor(0xC4, 0xCC, 0xD4));
    main_->setCentralWidget(area_);
    host_ = main_;
  } else if (window.Style() == WindowStyle::Child && children != nullptr) {
    child_ = new QMdiSubWindow;
    child_->setAttribute(Qt::WA_DeleteOnClose, false);
    children->addSubWindow(child_);
    connect(child_, &QMdiSubWindow::aboutToActivate, this, [this] { UserRaised(); });
    host_ = child_;
  } else {
    const bool dialog = window.Style() == WindowStyle::Dialog;
    host_ = new QWidget(context_.face.MainHost(), dialog ? Qt::Dialog : Qt::Window);
  }
  host_->setObjectName(ToQt(window.FullName()));
  host_->installEventFilter(this);
  revision_ = placeRevision_ = contentRevision_ = ~std::uint64_t{0};
  fresh_ = true;
  Fill();
}

void WindowView::DropHost() {
  const Placing placing(placing_);
  menus_.reset();
  // The widgets first: as they go they may still turn to their views.
  if (host_ != nullptr) {
    host_->removeEventFilter(this);
    delete host_.data();
  }
  views_.clear();
}

void WindowView::Fill() {
  const Placing placing(placing_);
  Window& window = *Plain();
  contentRevision_ = window.ContentRevision();
  menus_.reset();
  delete content_.data();
  if (main_ != nullptr) {
    const auto own = Qt::FindDirectChildrenOnly;
    for (QToolBar* const bar : main_->findChildren<QToolBar*>(QString(), own)) delete bar;
    delete main_->findChild<QStatusBar*>(QString(), own);
  }
  views_.clear();

  BuiltContent built = BuildContent(context_);
  views_ = std::move(built.views);
  body_ = built.body;
  std::vector<ControlView*> bars;
  for (const auto& view : views_) {
    if (view->Widget()->parentWidget() == nullptr) bars.push_back(view.get());
  }
  if (main_ != nullptr) {
    FillMain(bars, built.body);
  } else {
    FillOther(bars, built.body);
  }
}

void WindowView::FillMain(std::vector<ControlView*> bars, QWidget* body) {
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
  content_ = body;
  body->setParent(area_->viewport());
  body->setAutoFillBackground(true);
}

void WindowView::FillOther(const std::vector<ControlView*>& bars, QWidget* body) {
  auto* const content = new QWidget;
  content_ = content;
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
  scroll_ = new QScrollArea;
  scroll_->setWidgetResizable(true);
  scroll_->setFrameShape(QFrame::NoFrame);
  if (Plain()->Style() == WindowStyle::Dialog) scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(body);
  column->addWidget(scroll_, 1);
  for (ControlView* const bar : bars) {
    if (bar->Plain().Kind() == ControlKind::StatusBar) column->addWidget(bar->Widget());
  }
  if (child_ != nullptr) {
    child_->setWidget(content);
    child_->setMinimumSize(kLeastChildWidth, kLeastChildHeight);
  } else {
    delete host_->layout();
    auto* const outer = new QVBoxLayout(host_);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(content);
  }
}

void WindowView::FollowFrame() {
  Window& window = *Plain();
  const Placing placing(placing_);
  if (revision_ != window.Revision()) {
    revision_ = window.Revision();
    host_->setWindowTitle(ToQt(window.Caption()));
    host_->setAccessibleName(ToQt(window.Caption()));
    host_->setWindowIcon(ProgramIcon(window.IconColour()));
  }
  FollowPlace();
  const bool modal = window.OwningDesktop().Modal() == &window;
  const Qt::WindowModality modality = modal ? Qt::ApplicationModal : Qt::NonModal;
  if (child_ == nullptr && main_ == nullptr && host_->windowModality() != modality) {
    // Takes effect where the window is shown anew.
    host_->hide();
    host_->setWindowModality(modality);
  }
  FollowState();
  if (!host_->isVisible()) {
    // Qt leaves the state that a window had behind when it is shown.
    host_->show();
    if (!window.Resizable()) FixSize();
    if (window.Style() == WindowStyle::Dialog) FocusFirst();
  }
}

// So that the keyboard works in a dialog from the start.
void WindowView::FocusFirst() {
  if (host_->focusWidget() != nullptr) return;
  for (QWidget* next = host_->nextInFocusChain(); next != host_; next = next->nextInFocusChain()) {
    if ((next->focusPolicy() & Qt::TabFocus) == 0 || !next->isEnabled()) continue;
    if (!next->isVisibleTo(host_)) continue;
    next->setFocus(Qt::TabFocusReason);
    return;
  }
}

void WindowView::FollowPlace() {
  Window& window = *Plain();
  if (placeRevision_ == window.PlaceRevision()) return;
  placeRevision_ = window.PlaceRevision();
  QRect place = ToPixels(window.Place());
  if (place.width() <= 0 || place.height() <= 0) place.setSize(BodySize());
  if (StateOf(*host_) != WindowState::Normal) {
    if (window.State() != WindowState::Normal) return;
    host_->showNormal();
  }
  if (child_ == nullptr) {
    // The title bar stands above the place.
    const int title = host_->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    place = OnScreen(place, AvailableScreen(*host_).adjusted(0, title, 0, 0));
  }
  if (window.Resizable()) {
    if (fresh_) place.setSize(Usable(place.size()));
    host_->setGeometry(place);
  } else {
    host_->move(place.topLeft());
    FixSize();
  }
}

// A place that leaves next to nothing to be seen, as an old or a very small one may, is widened
// when the window is opened, as far as the room allows.
QSize WindowView::Usable(const QSize& size) const {
  if (main_ != nullptr || body_ == nullptr) return size;
  const QSize least = body_->minimumSizeHint().expandedTo(kLeastUseful);
  const bool dialog = Plain()->Style() == WindowStyle::Dialog;
  if (!dialog && size.width() >= least.width() && size.height() >= kLeastUseful.height()) {
    return size;
  }
  const QMdiArea* const children = context_.face.ChildArea();
  const QSize room = child_ != nullptr && children != nullptr ? children->viewport()->size()
                                                              : AvailableScreen(*host_).size();
  const QSize around = host_->sizeHint() - (scroll_ != nullptr ? scroll_->sizeHint() : QSize());
  QSize wanted = BodySize() + around;
  if (!dialog) wanted = wanted.expandedTo(kUsualSize);
  wanted = wanted.boundedTo(room * kMostOfRoom / 100);
  return size.expandedTo(wanted);
}

QSize WindowView::BodySize() const {
  QSize size = body_ != nullptr ? body_->sizeHint() : QSize(400, 300);
  if (content_ != nullptr && scroll_ != nullptr) {
    const QSize around = content_->sizeHint() - scroll_->sizeHint();
    size += around.expandedTo(QSize(0, 0));
  }
  return size;
}

// As large as its content, which no longer needs to scroll then.
void WindowView::FixSize() {
  const QRect screen = AvailableScreen(*host_);
  QSize size = BodySize();
  if (child_ != nullptr) {
    child_->layout()->activate();
    const QRect inside = child_->contentsRect();
    const QSize frame = child_->sizeHint() - content_->sizeHint();
    size += frame.expandedTo(child_->size() - inside.size());
    size = size.expandedTo(QSize(Plain()->Place().width / kTwipsPerPixel, 0));
    child_->setWindowFlag(Qt::WindowMaximizeButtonHint, false);
  }
  size = size.boundedTo(screen.size() * kMostOfScreen / 100);
  if (host_->minimumSize() == size && host_->maximumSize() == size) return;
  host_->setFixedSize(size);
}

void WindowView::FollowState() {
  const WindowState wanted = Plain()->State();
  if (!host_->isVisible() && wanted == WindowState::Normal) return;
  if (StateOf(*host_) == wanted) return;
  switch (wanted) {
    case WindowState::Minimised:
      host_->showMinimized();
      break;
    case WindowState::Maximised:
      host_->showMaximized();
      break;
    case WindowState::Normal:
      host_->showNormal();
      break;
  }
}

void WindowView::FollowWelcome() {
  if (main_ == nullptr || body_ == nullptr) return;
  const auto children = area_->subWindowList();
  const bool empty = std::none_of(children.begin(), children.end(),
                                  [](const QMdiSubWindow* child) { return child->isVisible(); });
  const bool says = Plain()->Content().ShownKind() != Layout::Kind::Nothing;
  body_->setVisible(empty && says);
  if (!empty || !says) return;
  const QSize size = body_->sizeHint();
  const QSize room = area_->viewport()->size();
  body_->setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 3,
                     size.width(), size.height());
  body_->lower();
}

void WindowView::ArrangeIcons() {
  int x = 0;
  int y = area_->viewport()->height();
  for (QMdiSubWindow* const child : area_->subWindowList()) {
    if (!child->isVisible() || !child->isMinimized()) continue;
    if (x + child->width() > area_->viewport()->width() && x > 0) {
      x = 0;
      y -= child->height();
    }
    child->move(x, y - child->height());
    x += child->width();
  }
}

void WindowView::UserMoved() {
  Window* const window = Plain();
  if (placing_ || window == nullptr || !window->Loaded() || !window->Visible()) return;
  if (!host_->isVisible() || StateOf(*host_) != WindowState::Normal) return;
  WindowPlace place = ToTwips(host_->geometry());
  // Twips are finer than pixels: what has not moved keeps its number.
  const QRect present = ToPixels(window->Place());
  if (present.size() == host_->geometry().size() || !window->Resizable()) {
    place.width = window->Place().width;
    place.height = window->Place().height;
  }
  ++context_.onStack;
  window->UserPlace(place);
  --context_.onStack;
  context_.face.DrawSoon();
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
  ++context_.onStack;
  window->Act([window] { window->Show(); });
  --context_.onStack;
  frontOrder_ = window->FrontOrder();
  context_.face.DrawSoon();
}

bool WindowView::ClickButton(int role) {
  for (Control* const control : Plain()->Controls()) {
    if (control->Kind() != ControlKind::Button) continue;
    auto& button = static_cast<Button&>(*control);
    if (static_cast<int>(button.ButtonRole()) != role || !button.Usable()) continue;
    ++context_.onStack;
    button.Click();
    --context_.onStack;
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
      return ClickButton(static_cast<int>(Button::Role::Default));
    case Qt::Key_Escape:
      if (ClickButton(static_cast<int>(Button::Role::Cancel))) return true;
      if (Plain()->Style() != WindowStyle::Dialog) return false;
      ++context_.onStack;
      Plain()->UserClose();
      --context_.onStack;
      return true;
    default:
      return false;
  }
}

bool WindowView::eventFilter(QObject* watched, QEvent* event) {
  Window* const window = Plain();
  if (watched != host_ || window == nullptr) return false;
  switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      ++context_.onStack;
      window->UserClose();
      --context_.onStack;
      context_.face.DrawSoon();
      return true;
    case QEvent::Move:
    case QEvent::Resize:
      UserMoved();
      return false;
    case QEvent::WindowStateChange:
      if (!placing_ && host_->isVisible()) {
        ++context_.onStack;
        window->UserState(StateOf(*host_));
        --context_.onStack;
        context_.face.DrawSoon();
      }
      return false;
    case QEvent::KeyPress:
      return PressKey(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

}  // namespace fathomline
