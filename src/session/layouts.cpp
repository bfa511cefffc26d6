#include "session/layouts.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/fault.h"
#include "base/strict_number.h"
#include "base/text.h"
#include "toolkit/window_places.h"

namespace fathomline {
namespace {

constexpr std::string_view kSection = "Layouts";
constexpr std::string_view kLayout = "Layout";
constexpr std::string_view kLastSession = "LastSession";
// Nobody remembers more of them.
constexpr std::size_t kMostClosed = 20;
constexpr std::string_view kSatelliteWindow = "frmTimeSeriesGSV_SVbySV-";

// Takes what stands in front of the character, which goes with it; all where there is none.
std::string_view TakeUntil(std::string_view& rest, char end) {
  const std::size_t at = std::min(rest.find(end), rest.size());
  const std::string_view taken = rest.substr(0, at);
  rest.remove_prefix(std::min(at + 1, rest.size()));
  return taken;
}

std::optional<int> TakeNumber(std::string_view& rest, char end) {
  return StrictNumber<int>(TakeUntil(rest, end));
}

// As a user knows it: "Statistics 2 - Gyro", also before it has been opened.
std::string TitleOf(const Window& window) {
  const std::string& caption = window.Caption();
  return caption.ends_with(' ') ? caption + std::to_string(window.Index()) : caption;
}

}  // namespace

Layouts::Layouts(Desktop& desktop, Windows& windows, std::vector<Window*> tools,
                 SettingsStore& settings, StartUp& startUp)
    : desktop_(desktop),
      windows_(windows),
      tools_(std::move(tools)),
      settings_(settings),
      dialog(desktop, *this) {
  frmMain& main = windows_.main;
  main.mnuWindowReopen.SetEnabled(false);
  main.mnuWindowReopen.onClick = [this] { ReopenClosed(); };
  main.mnuWindowLayouts.onClick = [this] { dialog.Show(); };
  main.mnuOptionsReopen.onClick = [this] { ToggleReopening(); };
  main.mnuOptionsReopen.SetChecked(Reopening());
  desktop_.onUserClosed = [this](Window& window) { NoteClosed(window); };
  startUp.onOpened = [this] { OpenLastSession(); };
  startUp.onLeaving = [this] {
    if (Reopening()) settings_.Set(kSection, kLastSession, TextOf("", Present()));
  };
}

bool Layouts::Reopening() const {
  return settings_.GetNumber(kSettingsSection, kReopenWindows, 0) != 0;
}

void Layouts::ToggleReopening() {
  settings_.Set(kSettingsSection, kReopenWindows, Reopening() ? 0 : 1);
  windows_.main.mnuOptionsReopen.SetChecked(Reopening());
}

std::string Layouts::Stored(int number) const {
  return settings_.Get(kSection, std::string(kLayout) + std::to_string(number), "");
}

void Layouts::Store(int number, std::string_view text) {
  settings_.Set(kSection, std::string(kLayout) + std::to_string(number), text);
}

std::vector<std::string> Layouts::LayoutNames() const {
  std::vector<std::string> names;
  for (int number = 1;; ++number) {
    const std::string text = Stored(number);
    if (text.empty()) return names;
    std::string_view rest = text;
    names.emplace_back(TakeUntil(rest, '\n'));
  }
}

int Layouts::NumberOf(const std::string& name) const {
  const std::vector<std::string> names = LayoutNames();
  return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin()) + 1;
}

void Layouts::SaveLayout(const std::string& name) {
  Store(NumberOf(name), TextOf(name, Present()));
}

void Layouts::DeleteLayout(const std::string& name) {
  for (int number = NumberOf(name); !Stored(number).empty(); ++number) {
    Store(number, Stored(number + 1));
  }
}

Layouts::Arrangement Layouts::Present() const {
  Arrangement arrangement;
  for (const Window* const window : desktop_.ShownChildren()) {
    arrangement.push_back({window->FullName(), window->Place(), window->State()});
  }
  return arrangement;
}

std::string Layouts::TextOf(const std::string& name, const Arrangement& arrangement) {
  std::string text = name + "\n";
  for (const Standing& standing : arrangement) {
    text += standing.window;
    for (const int number : {standing.place.left, standing.place.top, standing.place.width,
                             standing.place.height, static_cast<int>(standing.state)}) {
      text += "," + std::to_string(number);
    }
    text += "\n";
  }
  return text;
}

// Lines that cannot be read are passed over: a person may have edited them.
Layouts::Arrangement Layouts::Parse(std::string_view text) {
  Arrangement arrangement;
  TakeUntil(text, '\n');
  while (!text.empty()) {
    std::string_view line = TakeUntil(text, '\n');
    const std::string_view name = TakeUntil(line, ',');
    std::array<int, 5> numbers{};
    bool whole = true;
    for (int& number : numbers) {
      const std::optional<int> read = TakeNumber(line, ',');
      whole = whole && read.has_value();
      number = read.value_or(0);
    }
    const auto [left, top, width, height, state] = numbers;
    if (!whole || width <= 0 || height <= 0 || state < 0 ||
        state > static_cast<int>(WindowState::Maximised)) {
      continue;
    }
    arrangement.push_back(
        {std::string(name), {left, top, width, height}, static_cast<WindowState>(state)});
  }
  return arrangement;
}

Window* Layouts::Find(std::string_view fullName) {
  for (Window* const window : desktop_.Windows()) {
    if (window->FullName() == fullName) return window;
  }
  if (!fullName.starts_with(kSatelliteWindow)) return nullptr;
  fullName.remove_prefix(kSatelliteWindow.size());
  const int system = TakeNumber(fullName, '-').value_or(0);
  const int slot = TakeNumber(fullName, '-').value_or(0);
  if (system < 1 || system > kSystems || !IsSlot(slot)) return nullptr;
  return &windows_.charts.SatelliteWindow(system, slot);
}

bool Layouts::IsOurs(const Window& window) const {
  return dynamic_cast<const SystemView*>(&window) != nullptr ||
         std::find(tools_.begin(), tools_.end(), &window) != tools_.end();
}

bool Layouts::CanOpen(const Window& window) const {
  const auto* const view = dynamic_cast<const SystemView*>(&window);
  return view != nullptr ? view->HasData() : IsOurs(window);
}

void Layouts::Open(Window& window) {
  if (auto* const view = dynamic_cast<SystemView*>(&window)) {
    view->ShowView();
  } else {
    window.Show();
  }
}

void Layouts::LoadLayout(const std::string& name) {
  const Arrangement arrangement = Parse(Stored(NumberOf(name)));
  if (arrangement.empty() && Stored(NumberOf(name)).empty()) return;
  for (Window* const window : desktop_.ShownChildren()) {
    const bool stays = std::any_of(
        arrangement.begin(), arrangement.end(),
        [window](const Standing& standing) { return standing.window == window->FullName(); });
    if (stays || !IsOurs(*window)) continue;
    if (auto* const view = dynamic_cast<SystemView*>(window)) {
      view->PutAway();
    } else {
      window->Close();
    }
  }
  std::string left;
  for (const Standing& standing : arrangement) {
    Window* const window = Find(standing.window);
    if (window == nullptr) continue;
    if (CanOpen(*window)) {
      Open(*window);
    } else if (!window->Visible()) {
      if (IsOurs(*window)) left += "\r\n" + TitleOf(*window);
      continue;
    }
    desktop_.Raise(*window);
    KeepWithin(*window, standing.place);
    window->SetState(standing.state);
  }
  if (left.empty()) return;
  desktop_.Ask(
      {.text = "These windows stay closed, since the setup analyses nothing that they show:"
               "\r\n" +
               left,
       .icon = BoxIcon::Information});
}

// What the setup has brought back already stands where it was left.
void Layouts::OpenLastSession() {
  if (!Reopening()) return;
  for (const Standing& standing : Parse(settings_.Get(kSection, kLastSession, ""))) {
    Window* const window = Find(standing.window);
    if (window == nullptr) continue;
    if (!window->Visible()) {
      if (!CanOpen(*window)) continue;
      Open(*window);
      window->SetPlace(standing.place);
      window->SetState(standing.state);
    }
    desktop_.Raise(*window);
  }
}

void Layouts::NoteClosed(Window& window) {
  if (!IsOurs(window)) return;
  std::erase_if(closed_, [&window](const Closed& closed) { return closed.window == &window; });
  closed_.push_back({&window, window.Place(), window.State()});
  if (closed_.size() > kMostClosed) closed_.erase(closed_.begin());
  windows_.main.mnuWindowReopen.SetEnabled(true);
}

void Layouts::ReopenClosed() {
  for (bool done = false; !done && !closed_.empty();) {
    const Closed closed = closed_.back();
    closed_.pop_back();
    if (closed.window->Visible() || !CanOpen(*closed.window)) continue;
    Open(*closed.window);
    KeepWithin(*closed.window, closed.place);
    closed.window->SetState(closed.state);
    done = true;
  }
  windows_.main.mnuWindowReopen.SetEnabled(!closed_.empty());
}

}  // namespace fathomline
