#include "toolkit/bars.h"

#include <algorithm>
#include <utility>

#include "toolkit/window.h"

namespace fathomline {

namespace {

// The element of a table that counts from 1.
template <class Table>
auto& NumberedFromOne(Table& table, int number) {
  if (number < 1 || number > static_cast<int>(table.size())) Raise(FaultNumber::OutOfRange);
  return table[static_cast<std::size_t>(number - 1)];
}

}  // namespace

StatusBar::StatusBar(Parent parent, std::string_view name, const std::vector<std::string>& texts,
                     int atRight)
    : Control(ControlKind::StatusBar, parent, name), atRight_(atRight) {
  SetPanels(texts);
}

const StatusBar::Panel& StatusBar::PanelAt(int panel) const {
  return NumberedFromOne(panels_, panel);
}

StatusBar::Panel& StatusBar::PanelAt(int panel) {
  return NumberedFromOne(panels_, panel);
}

void StatusBar::SetPanels(const std::vector<std::string>& texts) {
  std::vector<Panel> panels;
  panels.reserve(texts.size());
  for (const std::string& text : texts) panels.push_back({text});
  Change(panels_, panels);
}

void StatusBar::SetPanelText(int panel, std::string_view text) {
  Change(PanelAt(panel).text, text);
}

void StatusBar::SetPanelVisible(int panel, bool visible) {
  Change(PanelAt(panel).visible, visible);
}

void StatusBar::SetPanelColour(int panel, std::optional<Colour> colour) {
  Change(PanelAt(panel).colour, colour);
}

void StatusBar::SetPanelToolTip(int panel, std::string_view text) {
  Change(PanelAt(panel).toolTip, text);
}

void StatusBar::ClickPanel(int panel) {
  OwningWindow().Act([this, panel] {
    if (onClickPanel && PanelVisible(panel)) onClickPanel(panel);
  });
}

void StatusBar::Seal() {
  Control::Seal();
  design_ = panels_;
}

void StatusBar::Reset() {
  Control::Reset();
  Change(panels_, design_);
}

ToolBar::ToolBar(Parent parent, std::string_view name, std::vector<Button> buttons)
    : Control(ControlKind::ToolBar, parent, name), buttons_(std::move(buttons)) {}

const ToolBar::Button& ToolBar::ButtonAt(int button) const {
  return NumberedFromOne(buttons_, button);
}

ToolBar::Button& ToolBar::Changeable(int button) {
  return NumberedFromOne(buttons_, button);
}

void ToolBar::SetKey(int button, std::string_view key) {
  Change(Changeable(button).key, key);
}

void ToolBar::SetCaption(int button, std::string_view caption) {
  Change(Changeable(button).caption, caption);
}

void ToolBar::SetButtonEnabled(int button, bool enabled) {
  Change(Changeable(button).enabled, enabled);
}

void ToolBar::Click(std::string_view key) {
  const auto found = std::find_if(buttons_.begin(), buttons_.end(), [key](const Button& button) {
    return button.key == key && button.enabled;
  });
  if (found == buttons_.end() || !Usable()) return;
  OwningWindow().Act([this, pressed = found->key] {
    if (onClick) onClick(pressed);
  });
}

void ToolBar::Seal() {
  Control::Seal();
  design_ = buttons_;
}

void ToolBar::Reset() {
  Control::Reset();
  Change(buttons_, design_);
}

MenuItem::MenuItem(Window& window, std::string_view name, std::string_view caption)
    : Control(ControlKind::MenuItem, window, name, caption) {}

MenuItem::MenuItem(MenuItem& menu, std::string_view name, std::string_view caption,
                   std::string_view shortcut)
    : Control(ControlKind::MenuItem, menu.OwningWindow(), name, caption),
      menu_(&menu),
      shortcut_(shortcut) {}

void MenuItem::Click() {
  for (const MenuItem* item = this; item != nullptr; item = item->menu_) {
    if (!item->Usable()) return;
  }
  OwningWindow().Act([this] {
    if (onClick) onClick();
  });
}

void MenuItem::Seal() {
  Control::Seal();
  designChecked_ = checked_;
}

void MenuItem::Reset() {
  Control::Reset();
  SetChecked(designChecked_);
}

}  // namespace fathomline
