#include "toolkit/choices.h"

#include <algorithm>

#include "toolkit/window.h"

namespace fathomline {

Choices::Choices(Parent parent, std::string_view name, ChoicesKind kind,
                 const std::vector<std::string>& entries)
    : Control(ControlKind::Choices, parent, name), shownAs_(kind) {
  for (const std::string& entry : entries) Add(entry);
  if (kind == ChoicesKind::Tabs && !entries.empty()) ShowChoice(0);
}

const Choices::Entry& Choices::EntryAt(int index) const {
  if (index < 0 || index >= Count()) Raise(FaultNumber::OutOfRange);
  return entries_[static_cast<std::size_t>(index)];
}

void Choices::SetEntryText(int index, std::string_view text) {
  EntryAt(index);
  Change(entries_[static_cast<std::size_t>(index)].text, text);
  if (index == choice_) SetText(text);
}

void Choices::Clear() {
  if (entries_.empty() && Text().empty()) return;
  entries_.clear();
  choice_ = kNone;
  SetText({});
  Touch();
}

void Choices::Add(std::string_view text, std::int32_t data) {
  entries_.push_back({std::string(text), data});
  Touch();
}

void Choices::ShowChoice(int index) {
  SetText(index == kNone ? std::string() : EntryText(index));
  Change(choice_, index);
}

void Choices::ShowText(std::string_view text) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [text](const Entry& entry) { return entry.text == text; });
  Change(choice_, found == entries_.end() ? kNone : static_cast<int>(found - entries_.begin()));
  SetText(text);
}

void Choices::Choose(int index) {
  ShowChoice(index);
  if (onChoose) onChoose();
}

void Choices::UserChoose(int index) {
  OwningWindow().UserAct(*this, [this, index] { Choose(index); });
}

void Choices::UserText(std::string_view text) {
  OwningWindow().UserAct(*this, [this, text] {
    ShowText(text);
    if (onType) onType();
  });
}

void Choices::Seal() {
  Control::Seal();
  designEntries_ = entries_;
  designChoice_ = choice_;
}

void Choices::Reset() {
  Control::Reset();
  Change(entries_, designEntries_);
  Change(choice_, designChoice_);
}

}  // namespace fathomline
