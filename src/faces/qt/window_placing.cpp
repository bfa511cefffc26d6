#include "faces/qt/window_placing.h"

#include <QCoreApplication>
#include <QLayout>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "faces/qt/child_area.h"
#include "faces/qt/conversions.h"
#include "faces/qt/qt_face.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"

namespace fathomline {
namespace {

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

// Who works by keyboard begins with the first control.
void FocusFirst(QWidget& host) {
  if (host.focusWidget() != nullptr) return;
  for (QWidget* next = host.nextInFocusChain(); next != &host; next = next->nextInFocusChain()) {
    const bool takes = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled();
    if (!takes || !host.isAncestorOf(next) || !next->isVisibleTo(&host)) continue;
    next->setFocus(Qt::TabFocusReason);
    return;
  }
}

}  // namespace

void WindowPlacing::Follow(bool fresh) {
  const ByProgram moving(*this);
  FollowPlace(fresh);
  if (!InArea() && context_.window->Style() != WindowStyle::Main) FollowModality();
  FollowState();
  if (widgets_.host->isVisible()) return;
  // Qt leaves the state that a window had behind when it is shown.
  widgets_.host->show();
  if (!context_.window->Resizable()) FixSize();
  if (context_.window->Style() == WindowStyle::Dialog) FocusFirst(*widgets_.host);
}

void WindowPlacing::FollowPlace(bool fresh) {
  const Window& window = *context_.window;
  QWidget& host = *widgets_.host;
  if (revision_ == window.PlaceRevision()) return;
  if (InArea() && revision_ == kNewWidgets) BringInside();
  revision_ = window.PlaceRevision();
  QRect place = ToPixels(window.Place());
  if (place.width() <= 0 || place.height() <= 0) place.setSize(BodySize());
  if (StateOf(host) != WindowState::Normal) {
    if (window.State() != WindowState::Normal) return;
    host.showNormal();
  }
  if (!InArea()) {
    // The title bar stands above the place.
    const int title = host.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    place = OnScreen(place, AvailableScreen(host).adjusted(0, title, 0, 0));
  }
  if (window.Resizable()) {
    if (fresh) place.setSize(Usable(place.size()));
    if (fresh && OpensInRoom()) place = OnScreen(place, {{}, RoomOf(*context_.face.ChildArea())});
    host.setGeometry(place);
  } else {
    host.move(place.topLeft());
    FixSize();
  }
}

// The frame may have become smaller than it says, on another screen, or larger: one that is
// maximised gets its size only after it has been shown.
void WindowPlacing::BringInside() {
  const QWidget* const main = context_.face.MainHost();
  if (main == nullptr || main->isMinimized()) return;
  const QSize frame = (main->isMaximized() ? AvailableScreen(*main).size() : main->size());
  PlaceWindow(*context_.window, frame.width() * kTwipsPerPixel, frame.height() * kTwipsPerPixel);
}

// A view that nobody has placed yet opens where all of it can be seen. A main window that is still
// to be maximised has no room yet.
bool WindowPlacing::OpensInRoom() const {
  const QWidget* const main = context_.face.MainHost();
  if (!InArea() || context_.window->Place() != context_.window->DesignPlace()) return false;
  return !main->isMaximized() ||
         main->width() * 100 >= AvailableScreen(*main).width() * kMostOfScreen;
}

void WindowPlacing::FollowModality() {
  const bool modal = context_.window->OwningDesktop().Modal() == context_.window;
  const Qt::WindowModality modality = modal ? Qt::ApplicationModal : Qt::NonModal;
  if (widgets_.host->windowModality() == modality) return;
  // Takes effect where the window is shown anew.
  widgets_.host->hide();
  widgets_.host->setWindowModality(modality);
}

void WindowPlacing::FollowState() {
  const WindowState wanted = context_.window->State();
  QWidget& host = *widgets_.host;
  if (!host.isVisible() && wanted == WindowState::Normal) return;
  if (StateOf(host) == wanted) return;
  switch (wanted) {
    case WindowState::Minimised:
      host.showMinimized();
      break;
    case WindowState::Maximised:
      host.showMaximized();
      break;
    case WindowState::Normal:
      host.showNormal();
      break;
  }
}

// A size that nobody has chosen yet is widened to what the window holds when it is opened, as far
// as the room allows. One that its user has left comes back as it is.
QSize WindowPlacing::Usable(const QSize& size) const {
  const WindowStyle style = context_.window->Style();
  if (style == WindowStyle::Main || widgets_.body == nullptr) return size;
  const QSize least = widgets_.body->minimumSizeHint().expandedTo(kLeastUseful);
  const bool dialog = style == WindowStyle::Dialog;
  const QSize design = ToPixels(context_.window->DesignPlace()).size();
  if (!dialog && ToPixels(context_.window->Place()).size() != design) return size;
  if (!dialog && size.width() >= least.width() && size.height() >= kLeastUseful.height()) {
    return size;
  }
  const QMdiArea* const area = InArea() ? context_.face.ChildArea() : nullptr;
  const QSize room = area != nullptr ? RoomOf(*area) : AvailableScreen(*widgets_.host).size();
  const QSize around = widgets_.host->sizeHint() -
                       (widgets_.scroll != nullptr ? widgets_.scroll->sizeHint() : QSize());
  QSize wanted = BodySize() + around;
  if (!dialog) wanted = wanted.expandedTo(kUsualSize);
  wanted = wanted.boundedTo(room * kMostOfRoom / 100);
  return size.expandedTo(wanted);
}

QSize WindowPlacing::BodySize() const {
  QSize size = widgets_.body != nullptr ? widgets_.body->sizeHint() : QSize(400, 300);
  if (widgets_.content != nullptr && widgets_.scroll != nullptr) {
    const QSize around = widgets_.content->sizeHint() - widgets_.scroll->sizeHint();
    size += around.expandedTo(QSize(0, 0));
  }
  return size;
}

// As large as its content, which no longer needs to scroll then. The plain window learns it, since
// whoever arranges windows must know their sizes.
void WindowPlacing::FixSize() {
  Window& window = *context_.window;
  QWidget& host = *widgets_.host;
  // What has been written into boxes within the body asks for its room with an event.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  QSize size = BodySize();
  if (QMdiSubWindow* const child = widgets_.child) {
    child->layout()->activate();
    const QRect inside = child->contentsRect();
    const QSize frame = child->sizeHint() - widgets_.content->sizeHint();
    size += frame.expandedTo(child->size() - inside.size());
    size = size.expandedTo(QSize(window.Place().width / kTwipsPerPixel, 0));
    child->setWindowFlag(Qt::WindowMaximizeButtonHint, false);
  }
  size = size.boundedTo(AvailableScreen(host).size() * kMostOfScreen / 100);
  WindowPlace place = window.Place();
  place.width = size.width() * kTwipsPerPixel;
  place.height = size.height() * kTwipsPerPixel;
  window.SetPlace(place);
  revision_ = window.PlaceRevision();
  if (host.minimumSize() != size || host.maximumSize() != size) host.setFixedSize(size);
  // It may have been placed while it was thought to be smaller.
  if (!InArea()) host.move(OnScreen({host.pos(), size}, AvailableScreen(host)).topLeft());
}

void WindowPlacing::UserMoved() {
  Window* const window = context_.window;
  QWidget& host = *widgets_.host;
  if (byProgram_ || !window->Loaded() || !window->Visible()) return;
  if (!host.isVisible() || StateOf(host) != WindowState::Normal) return;
  WindowPlace place = ToTwips(host.geometry());
  // Twips are finer than pixels: what has not moved keeps its number.
  const QRect present = ToPixels(window->Place());
  if (present.size() == host.geometry().size() || !window->Resizable()) {
    place.width = window->Place().width;
    place.height = window->Place().height;
  }
  const ActionOnStack guard(context_);
  window->UserPlace(place);
  context_.face.DrawSoon();
}

void WindowPlacing::UserChangedState() {
  if (byProgram_ || !widgets_.host->isVisible()) return;
  const ActionOnStack guard(context_);
  context_.window->UserState(StateOf(*widgets_.host));
  context_.face.DrawSoon();
}

}  // namespace fathomline
