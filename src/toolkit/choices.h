// One out of several: combo boxes, lists, groups of option buttons, tabs.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/control.h"

namespace fathomline {

enum class ChoicesKind : std::uint8_t { Combo, EditableCombo, List, Options, Tabs };

class Choices : public Control {
 public:
  static constexpr int kNone = -1;

  Choices(Parent parent, std::string_view name, ChoicesKind kind,
          const std::vector<std::string>& entries = {});

  ChoicesKind ShownAs() const { return shownAs_; }

  // Entries count from 0. An index that is not there raises OutOfRange.
  int Count() const { return static_cast<int>(entries_.size()); }
  const std::string& EntryText(int index) const { return EntryAt(index).text; }
  void SetEntryText(int index, std::string_view text);
  // A number that the program keeps with the entry.
  std::int32_t EntryData(int index) const { return EntryAt(index).data; }
  void Clear();
  void Add(std::string_view text, std::int32_t data = 0);

  // The chosen entry, or kNone. Text() is the text of the entry, or what stands in an editable
  // combo.
  int Choice() const { return choice_; }
  // Silent. An editable combo shows the text of the entry.
  void ShowChoice(int index);
  // Silent, for an editable combo: any text. The first entry that reads so is chosen, else none.
  void ShowText(std::string_view text);
  // Chooses from the program and runs the handler, also where the entry was chosen before.
  void Choose(int index);

  // The user chooses an entry, or types into an editable combo.
  void UserChoose(int index);
  void UserText(std::string_view text);

  std::function<void()> onChoose;
  std::function<void()> onType;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  struct Entry {
    std::string text;
    std::int32_t data = 0;

    bool operator==(const Entry&) const = default;
  };

  const Entry& EntryAt(int index) const;

  ChoicesKind shownAs_;
  std::vector<Entry> entries_;
  std::vector<Entry> designEntries_;
  int choice_ = kNone;
  int designChoice_ = kNone;
};

}  // namespace fathomline
