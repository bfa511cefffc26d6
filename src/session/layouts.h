// How the windows stand: named arrangements, what the last session has left, and what the user has
// closed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/settings.h"
#include "session/start_up.h"
#include "session/windows.h"
#include "toolkit/desktop.h"
#include "windows/layouts_dialog.h"

namespace fathomline {

// In the section "Settings" of the settings store: 1 where the windows of the last session are
// opened again at the start.
inline constexpr std::string_view kReopenWindows = "ReopenWindows";

// The arrangements stand in the section "Layouts": "Layout1" and so on, and "LastSession". Each is
// a text of lines: its name, then a line for each window, those in front last, with the window's
// full name, its place in twips and its state, parted by commas.
class Layouts : public LayoutDesk {
 public:
  // `tools` are the windows beside the views of the systems that the user can open at any time.
  Layouts(Desktop& desktop, Windows& windows, std::vector<Window*> tools, SettingsStore& settings,
          StartUp& startUp);

  std::vector<std::string> LayoutNames() const override;
  void SaveLayout(const std::string& name) override;
  // Windows that do not belong to it are put away. One that would show nothing, since its system or
  // its sentences are not analysed, stays closed, and a box names it.
  void LoadLayout(const std::string& name) override;
  void DeleteLayout(const std::string& name) override;

  // Brings back the window that the user has closed last, where it stood.
  void ReopenClosed();

 private:
  struct Standing {
    std::string window;  // its full name
    WindowPlace place;
    WindowState state = WindowState::Normal;
  };
  using Arrangement = std::vector<Standing>;
  struct Closed {
    Window* window;
    WindowPlace place;
    WindowState state;
  };

  void ToggleReopening();
  bool Reopening() const;
  // The whole text of the arrangement by that name; its number, or that of the next free one.
  int NumberOf(const std::string& name) const;
  std::string Stored(int number) const;
  void Store(int number, std::string_view text);

  Arrangement Present() const;
  static std::string TextOf(const std::string& name, const Arrangement& arrangement);
  static Arrangement Parse(std::string_view text);

  void OpenLastSession();
  void NoteClosed(Window& window);
  // None where there is no such window.
  Window* Find(std::string_view fullName);
  bool CanOpen(const Window& window) const;
  // Whether it is one that is opened and put away with a layout, and not by something else.
  bool IsOurs(const Window& window) const;
  static void Open(Window& window);

  Desktop& desktop_;
  Windows& windows_;
  std::vector<Window*> tools_;
  SettingsStore& settings_;
  std::vector<Closed> closed_;

 public:
  frmLayouts dialog;
};

}  // namespace fathomline
