// Where windows stood when they were last closed, in the section "Settings" of the settings store.
#pragma once

#include <string_view>
#include <vector>

#include "base/settings.h"
#include "toolkit/window.h"

namespace fathomline {

inline constexpr std::string_view kSettingsSection = "Settings";

// Keys are the prefix, one of "Left", "Top", "Width", "Height", "State", and the suffix: a system
// number where the window has one of its own. A child window is brought back inside the main
// window. Maximised comes back as it was left; minimised does so only for child windows left so at
// the end of the program, and while it starts. Nothing is saved while the settings hold the places.
void RestorePlace(Window& window, const SettingsStore& settings, std::string_view prefix,
                  const WindowPlace& missing, std::string_view suffix = {});
void SavePlace(const Window& window, SettingsStore& settings, std::string_view prefix,
               std::string_view suffix = {});

// How the child windows stand: which are shown, where, in which state and order. Closing them and
// showing them again loses that; so does nothing as long as one of these lives, which sets it right
// at its end. Windows shown meanwhile for the first time come in front.
class KeptArrangement {
 public:
  explicit KeptArrangement(Desktop& desktop);
  ~KeptArrangement();
  KeptArrangement(const KeptArrangement&) = delete;
  KeptArrangement& operator=(const KeptArrangement&) = delete;

 private:
  struct Standing {
    Window* window;
    WindowPlace place;
    WindowState state;
  };

  Desktop& desktop_;
  std::vector<Standing> kept_;
};

// The order of the child windows that are shown, by the key "WindowOrder".
void RestoreOrder(Desktop& desktop, const SettingsStore& settings);
void SaveOrder(const Desktop& desktop, SettingsStore& settings);

// Gives a child window that place, moved as little as it takes to have all of it in the room of the
// main window, or else its upper left corner.
void KeepWithin(Window& window, WindowPlace place);

// Brings a child window back inside a main window of the given size, in twips, where it lies
// beyond its right or lower edge. A minimised main window, which reports sizes far below zero,
// moves nothing.
void PlaceWindow(Window& window, int mainWidth, int mainHeight);

}  // namespace fathomline
