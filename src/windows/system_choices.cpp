#include "windows/system_choices.h"

#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"

namespace fathomline {

bool ShowSystems(Choices& combo, const Records& records, std::string_view all) {
  std::vector<std::pair<std::string, int>> entries;
  if (!all.empty()) entries.emplace_back(all, 0);
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records.CommSetups[system];
    if (!setup.Enabled) continue;
    std::string text = PlainText(std::int32_t{system});
    if (!setup.Name.empty()) text += " - " + setup.Name;
    entries.emplace_back(std::move(text), system);
  }
  bool same = combo.Count() == static_cast<int>(entries.size());
  for (int i = 0; same && i < combo.Count(); ++i) {
    const auto& [text, system] = entries[static_cast<std::size_t>(i)];
    same = combo.EntryText(i) == text && combo.EntryData(i) == system;
  }
  if (same) return false;
  const int before = combo.Choice() == Choices::kNone ? -1 : combo.EntryData(combo.Choice());
  combo.Clear();
  int choice = entries.empty() ? Choices::kNone : 0;
  for (const auto& [text, system] : entries) {
    combo.Add(text, system);
    if (system == before) choice = combo.Count() - 1;
  }
  combo.ShowChoice(choice);
  return choice == Choices::kNone ? before != -1 : combo.EntryData(choice) != before;
}

}  // namespace fathomline
