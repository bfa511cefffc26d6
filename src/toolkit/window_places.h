// Where windows stood when they were last closed, in the section "Settings" of the settings store.
#pragma once

#include <string_view>

#include "base/settings.h"
#include "toolkit/window.h"

namespace fathomline {

inline constexpr std::string_view kSettingsSection = "Settings";

// Keys are the prefix, one of "Left", "Top", "Width", "Height", and the suffix: a system number
// where the window has one of its own. A child window is brought back inside the main window.
void RestorePlace(Window& window, const SettingsStore& settings, std::string_view prefix,
                  const WindowPlace& missing, std::string_view suffix = {});
void SavePlace(const Window& window, SettingsStore& settings, std::string_view prefix,
               std::string_view suffix = {});

// Brings a child window back inside a main window of the given size, in twips, where it lies
// beyond its right or lower edge. A minimised main window, which reports sizes far below zero,
// moves nothing.
void PlaceWindow(Window& window, int mainWidth, int mainHeight);

}  // namespace fathomline
