// Status bars, tool bars and menus.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/control.h"

namespace fathomline {

// Panels count from 1. A panel that is not there raises OutOfRange.
class StatusBar : public Control {
 public:
  // The last ones, so many, stand at the right end.
  StatusBar(Parent parent, std::string_view name, const std::vector<std::string>& texts = {},
            int atRight = 0);

  int Panels() const { return static_cast<int>(panels_.size()); }
  // Replaces all panels; the new ones are visible.
  void SetPanels(const std::vector<std::string>& texts);
  const std::string& PanelText(int panel) const { return PanelAt(panel).text; }
  void SetPanelText(int panel, std::string_view text);
  bool PanelVisible(int panel) const { return PanelAt(panel).visible; }
  void SetPanelVisible(int panel, bool visible);
  // None: as the desktop draws its texts.
  std::optional<Colour> PanelColour(int panel) const { return PanelAt(panel).colour; }
  void SetPanelColour(int panel, std::optional<Colour> colour);
  const std::string& PanelToolTip(int panel) const { return PanelAt(panel).toolTip; }
  void SetPanelToolTip(int panel, std::string_view text);
  int PanelsAtRight() const { return atRight_; }

  // The user clicks a panel. Only a bar with a handler can be clicked.
  void ClickPanel(int panel);
  std::function<void(int panel)> onClickPanel;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  struct Panel {
    std::string text;
    std::string toolTip = {};
    std::optional<Colour> colour = {};
    bool visible = true;

    bool operator==(const Panel&) const = default;
  };

  const Panel& PanelAt(int panel) const;
  Panel& PanelAt(int panel);

  std::vector<Panel> panels_;
  std::vector<Panel> design_;
  int atRight_ = 0;
};

// Buttons count from 1; the key tells the handler which one was pressed, and may change.
class ToolBar : public Control {
 public:
  struct Button {
    std::string key;
    std::string caption;
    bool enabled = true;

    bool operator==(const Button&) const = default;
  };

  ToolBar(Parent parent, std::string_view name, std::vector<Button> buttons);

  int Buttons() const { return static_cast<int>(buttons_.size()); }
  // A button that is not there raises OutOfRange.
  const Button& ButtonAt(int button) const;
  void SetKey(int button, std::string_view key);
  void SetCaption(int button, std::string_view caption);
  void SetButtonEnabled(int button, bool enabled);

  // The user presses the button that has this key now.
  void Click(std::string_view key);
  std::function<void(const std::string& key)> onClick;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  Button& Changeable(int button);

  std::vector<Button> buttons_;
  std::vector<Button> design_;
};

// An entry of the window's menu bar, or of another entry. The text is its caption, with a mnemonic
// behind "&"; "-" draws a dividing line. Entries stand in the order in which they are built. The
// shortcut is a combination of keys such as "Ctrl+S", which chooses the entry wherever the user is
// in the window; the menu shows it.
class MenuItem : public Control {
 public:
  MenuItem(Window& window, std::string_view name, std::string_view caption);
  MenuItem(MenuItem& menu, std::string_view name, std::string_view caption,
           std::string_view shortcut = {});

  // The entry that this one belongs to; none for the entries of the menu bar.
  const MenuItem* Menu() const { return menu_; }
  const std::string& Shortcut() const { return shortcut_; }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Change(checked_, checked); }
  // One out of several, of which the checked one is drawn as such.
  bool IsOption() const { return option_; }
  void MakeOption() { option_ = true; }

  // The user chooses it.
  void Click();
  std::function<void()> onClick;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  const MenuItem* menu_ = nullptr;
  std::string shortcut_;
  bool checked_ = false;
  bool designChecked_ = false;
  bool option_ = false;
};

}  // namespace fathomline
