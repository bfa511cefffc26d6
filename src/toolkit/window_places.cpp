#include "toolkit/window_places.h"

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
  if (window.Style() != WindowStyle::Child) return;
  const Desktop& desktop = window.OwningDesktop();
  for (const Window* main : desktop.Windows()) {
    if (main->Style() != WindowStyle::Main) continue;
    // The place of a maximised window is the one that it goes back to.
    const bool maximised = main->State() == WindowState::Maximised;
    PlaceWindow(window, maximised ? desktop.ChildArea().width : main->Place().width,
                maximised ? desktop.ChildArea().height : main->Place().height);
  }
}

void SavePlace(const Window& window, SettingsStore& settings, std::string_view prefix,
               std::string_view suffix) {
  for (const Measure& measure : kMeasures) {
    settings.Set(kSettingsSection, Key(prefix, measure.name, suffix),
                 window.Place().*measure.member);
  }
}

void PlaceWindow(Window& window, int mainWidth, int mainHeight) {
  if (mainHeight < kMinimisedHeight || mainWidth < kMinimisedWidth) return;
  WindowPlace place = window.Place();
  if (place.top > mainHeight - kEdge) place.top = mainHeight - kMovedInside;
  if (place.left > mainWidth - kEdge) place.left = mainWidth - kMovedInside;
  window.SetPlace(place);
}

}  // namespace fathomline
