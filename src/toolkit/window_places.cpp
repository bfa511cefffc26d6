#include "toolkit/window_places.h"

#include <algorithm>
#include <string>

#include "toolkit/desktop.h"

namespace fathomline {
namespace {

struct Measure {
  std::string_view name;
  int WindowPlace::*member;
};
constexpr Measure kMeasures[] = {{"Left", &WindowPlace::left},
                                 {"Top", &WindowPlace::top},
                                 {"Width", &WindowPlace::width},
                                 {"Height", &WindowPlace::height}};

constexpr std::string_view kState = "State";
constexpr std::string_view kWindowOrder = "WindowOrder";

constexpr int kMinimisedHeight = -2250;
constexpr int kMinimisedWidth = -2750;
constexpr int kEdge = 1750;
constexpr int kMovedInside = 2250;

std::string Key(std::string_view prefix, std::string_view measure, std::string_view suffix) {
  return std::string(prefix).append(measure).append(suffix);
}

}  // namespace

void RestorePlace(Window& window, const SettingsStore& settings, std::string_view prefix,
                  const WindowPlace& missing, std::string_view suffix) {
  WindowPlace place;
  for (const Measure& measure : kMeasures) {
    place.*measure.member = settings.GetNumber(kSettingsSection, Key(prefix, measure.name, suffix),
                                               missing.*measure.member);
  }
  window.SetPlace(place);
  const auto state = settings.GetNumber(kSettingsSection, Key(prefix, kState, suffix), 0);
  if (state == static_cast<int>(WindowState::Maximised)) window.SetState(WindowState::Maximised);
  if (window.Style() != WindowStyle::Child) return;
  const Desktop& desktop = window.OwningDesktop();
  for (const Window* main : desktop.Windows()) {
    if (main->Style() != WindowStyle::Main) continue;
    if (state == static_cast<int>(WindowState::Minimised) && !main->Visible()) {
      window.SetState(WindowState::Minimised);
    }
    // The place of a maximised window is the one that it goes back to, and its room is not known
    // before it is shown; the face brings the windows of the start inside.
    const bool maximised = main->State() == WindowState::Maximised;
    if (maximised && !main->Visible()) continue;
    PlaceWindow(window, maximised ? desktop.ChildArea().width : main->Place().width,
                maximised ? desktop.ChildArea().height : main->Place().height);
  }
}

void SavePlace(const Window& window, SettingsStore& settings, std::string_view prefix,
               std::string_view suffix) {
  if (settings.PlacesHeld()) return;
  for (const Measure& measure : kMeasures) {
    settings.Set(kSettingsSection, Key(prefix, measure.name, suffix),
                 window.Place().*measure.member);
  }
  const bool minimised = window.State() == WindowState::Minimised;
  const bool kept = !minimised || (window.Style() == WindowStyle::Child &&
                                   window.ClosedBy() == CloseReason::Ending);
  const WindowState state = kept ? window.State() : WindowState::Normal;
  settings.Set(kSettingsSection, Key(prefix, kState, suffix), static_cast<std::int32_t>(state));
}

KeptArrangement::KeptArrangement(Desktop& desktop) : desktop_(desktop) {
  for (Window* const window : desktop_.ShownChildren()) {
    kept_.push_back({window, window->Place(), window->State()});
  }
}

KeptArrangement::~KeptArrangement() {
  std::vector<Window*> fresh = desktop_.ShownChildren();
  for (const Standing& standing : kept_) {
    if (std::erase(fresh, standing.window) == 0) continue;
    standing.window->SetPlace(standing.place);
    standing.window->SetState(standing.state);
    desktop_.Raise(*standing.window);
  }
  for (Window* const window : fresh) desktop_.Raise(*window);
}

void RestoreOrder(Desktop& desktop, const SettingsStore& settings) {
  const std::string names = settings.Get(kSettingsSection, kWindowOrder, {});
  for (std::string_view rest = names; !rest.empty();) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    for (Window* const window : desktop.ShownChildren()) {
      if (window->FullName() == rest.substr(0, end)) desktop.Raise(*window);
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

void SaveOrder(const Desktop& desktop, SettingsStore& settings) {
  if (settings.PlacesHeld()) return;
  std::string names;
  for (const Window* const window : desktop.ShownChildren()) {
    if (!names.empty()) names += ',';
    names += window->FullName();
  }
  settings.Set(kSettingsSection, kWindowOrder, names);
}

void KeepWithin(Window& window, WindowPlace place) {
  const Desktop::Area& room = window.OwningDesktop().ChildArea();
  place.left = std::max(std::min(place.left, room.width - place.width), 0);
  place.top = std::max(std::min(place.top, room.height - place.height), 0);
  window.SetPlace(place);
}

void PlaceWindow(Window& window, int mainWidth, int mainHeight) {
  if (mainHeight < kMinimisedHeight || mainWidth < kMinimisedWidth) return;
  WindowPlace place = window.Place();
  if (place.top > mainHeight - kEdge) place.top = mainHeight - kMovedInside;
  if (place.left > mainWidth - kEdge) place.left = mainWidth - kMovedInside;
  window.SetPlace(place);
}

}  // namespace fathomline
