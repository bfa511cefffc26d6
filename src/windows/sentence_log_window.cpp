#include "windows/sentence_log_window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "decoding/coordinate_text.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"
#include "views/definitions.h"
#include "windows/system_choices.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{600, 600, 12600, 7200};
constexpr std::string_view kPlacePrefix = "SentenceLog";
constexpr const char* kAll = "all";
constexpr int kTimeColumn = 0;
constexpr int kSystemColumn = 1;

// As the choices of cmbChecksum.
constexpr auto kChecksums = std::to_array<std::optional<ChecksumVerdict>>(
    {std::nullopt, ChecksumVerdict::Right, ChecksumVerdict::Wrong, ChecksumVerdict::None});

// The entries behind the first, which stands for all of them; the choice stays what it was.
void SetEntries(Choices& combo, const std::set<std::string>& entries) {
  const std::string chosen = combo.Choice() > 0 ? combo.Text() : std::string();
  combo.Clear();
  combo.Add(kAll);
  int choice = 0;
  for (const std::string& entry : entries) {
    combo.Add(entry);
    if (entry == chosen) choice = combo.Count() - 1;
  }
  combo.ShowChoice(choice);
}

LongList::Column Defined(std::string head, int characters) {
  std::string tip = DefinitionOf(DefinedTable::SentenceLog, head);
  return {std::move(head), characters, std::move(tip)};
}

std::string ChosenText(const Choices& combo) {
  return combo.Choice() > 0 ? combo.EntryText(combo.Choice()) : std::string();
}

}  // namespace

frmSentenceLog::frmSentenceLog(Desktop& desktop, const Records& records, Watch& watch,
                               const Clock& clock, SettingsStore& settings)
    : Window(desktop,
             {.name = "frmSentenceLog", .caption = "Sentence Log", .place = kDefaultPlace}),
      lstLines(*this, "lstLines", {Defined("Time", 12), Defined("System", 7), Defined("Line", 60)},
               *this),
      records_(records),
      watch_(watch),
      clock_(clock),
      settings_(settings) {
  for (Choices* const combo : {&cmbSystem, &cmbTalker, &cmbSentence, &cmbChecksum}) {
    combo->onChoose = [this] { ApplyFilter(); };
  }
  txtText.onChange = [this] { ApplyFilter(); };
  txtText.SetToolTip("Shows the lines that contain this text.");
  txtFind.SetToolTip("Goes to the lines that contain this text, without hiding the others.");
  cmdPrevious.onClick = [this] { Find(true); };
  cmdNext.onClick = [this] { Find(false); };
  cmdPause.onClick = [this] { Pause(); };
  cmdClear.onClick = [this] { watch_.ClearLog(); };
  cmdCopy.onClick = [this] { Copy(); };
  cmdCopy.SetToolTip("Copies the selected lines, or all that are shown, as bare sentences.");
  cmdSave.onClick = [this] { Save(); };
  cmdSave.SetToolTip("Saves all lines that are shown as a recording.");
  lstLines.onCopy = [this] { Copy(); };
  SetContent(Layout::Column(
      {Layout::Row({Layout::Words("S&ystem :"), cmbSystem, Layout::Words("&Talker :"), cmbTalker,
                    Layout::Words("&Sentence :"), cmbSentence, Layout::Words("Chec&ksum :"),
                    cmbChecksum, Layout::Space()}),
       Layout::Row({Layout::Words("Te&xt :"), txtText, Layout::Words("&Find :"), txtFind,
                    cmdPrevious, cmdNext}),
       lstLines, Layout::Row({lblShown, Layout::Space(), cmdPause, cmdClear, cmdCopy, cmdSave})}));
}

void frmSentenceLog::Load() {
  ResumeNext([&] { RestorePlace(*this, settings_, kPlacePrefix, kDefaultPlace); });
  steady_ = OwningDesktop().Now();
  local_ = clock_.NowLocalExact();
  ShowSystems(cmbSystem, records_, kAll);
  cmbChecksum.ShowChoice(0);
  watch_.StartLog();
  filtered_.emplace(watch_.Log());
  seenEnd_ = seenFirst_ = 0;
  SetEntries(cmbTalker, {});
  SetEntries(cmbSentence, {});
  shownTalkers_ = shownSentences_ = 0;
  lstLines.Restart();
  ShowCount();
}

void frmSentenceLog::Unload() {
  ResumeNext([&] { SavePlace(*this, settings_, kPlacePrefix); });
  filtered_.reset();
  watch_.StopLog();
}

void frmSentenceLog::Refresh() {
  if (!filtered_) return;
  if (ShowSystems(cmbSystem, records_, kAll)) ApplyFilter();
  const SentenceLog& log = watch_.Log();
  if (std::exchange(seenEnd_, log.End()) != log.End() ||
      std::exchange(seenFirst_, log.First()) != log.First()) {
    filtered_->Follow();
    lstLines.Follow();
    ShowAddresses();
  }
  ShowCount();
}

void frmSentenceLog::ShowAddresses() {
  if (std::exchange(shownTalkers_, filtered_->Talkers().size()) != filtered_->Talkers().size()) {
    SetEntries(cmbTalker, filtered_->Talkers());
  }
  if (std::exchange(shownSentences_, filtered_->Sentences().size()) !=
      filtered_->Sentences().size()) {
    SetEntries(cmbSentence, filtered_->Sentences());
  }
}

void frmSentenceLog::ShowCount() {
  const SentenceLog& log = watch_.Log();
  std::string text = PlainText(static_cast<std::int32_t>(Rows())) + " of " +
                     PlainText(static_cast<std::int32_t>(log.End() - log.First())) + " shown";
  if (log.Held()) text += ", paused: " + std::to_string(log.PassedBy()) + " have passed by";
  lblShown.SetText(text);
}

void frmSentenceLog::ApplyFilter() {
  if (!filtered_) return;
  LogFilter filter;
  if (cmbSystem.Choice() > 0) filter.system = cmbSystem.EntryData(cmbSystem.Choice());
  filter.talker = ChosenText(cmbTalker);
  filter.sentence = ChosenText(cmbSentence);
  if (cmbChecksum.Choice() > 0) {
    filter.checksum = kChecksums.at(static_cast<std::size_t>(cmbChecksum.Choice()));
  }
  filter.text = txtText.Text();
  filtered_->SetFilter(std::move(filter));
  lstLines.Restart();
  ShowCount();
}

std::string frmSentenceLog::Cell(int row, int column) const {
  if (!filtered_ || !filtered_->Held(row)) return {};
  const SentenceLog::Line line = filtered_->At(row);
  switch (column) {
    case kTimeColumn:
      return ArrivalText(line.arrival);
    case kSystemColumn:
      return PlainText(std::int32_t{line.system});
    default: {
      std::string text = FromLatin1(line.text);
      for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
      }
      return text;
    }
  }
}

std::string frmSentenceLog::ArrivalText(SentenceLog::Time arrival) const {
  const double since = std::chrono::duration<double>(arrival - steady_).count();
  const double days = local_.days + since / kSecondsPerDay;
  return FormatSecondsOfDay((days - std::floor(days)) * kSecondsPerDay, 3);
}

void frmSentenceLog::Find(bool backwards) {
  Refresh();
  if (!filtered_) return;
  int from = backwards ? 0 : -1;
  if (!lstLines.Selection().empty()) {
    const std::uint64_t number =
        backwards ? lstLines.Selection().front().first : lstLines.Selection().back().last;
    if (number >= Gone()) from = static_cast<int>(number - Gone());
  }
  const int row = filtered_->Find(txtFind.Text(), from, backwards);
  if (row < 0) {
    OwningDesktop().Beep();
  } else {
    lstLines.SelectRow(row);
  }
}

void frmSentenceLog::Pause() {
  watch_.HoldLog(!watch_.Log().Held());
  cmdPause.SetText(watch_.Log().Held() ? "C&ontinue" : "&Pause");
  ShowCount();
}

std::string frmSentenceLog::Sentences(bool selected, std::string_view lineEnd) const {
  std::string text;
  const auto add = [&](std::uint64_t first, std::uint64_t last) {
    for (std::uint64_t number = std::max(first, Gone()); number <= last; ++number) {
      const auto row = static_cast<int>(number - Gone());
      if (row >= Rows()) return;
      if (filtered_->Held(row)) text.append(filtered_->At(row).text).append(lineEnd);
    }
  };
  if (selected && !lstLines.Selection().empty()) {
    for (const LongList::Range& range : lstLines.Selection()) add(range.first, range.last);
  } else if (Rows() > 0) {
    add(Gone(), Gone() + static_cast<std::uint64_t>(Rows()) - 1);
  }
  return text;
}

void frmSentenceLog::Copy() {
  Refresh();
  OwningDesktop().CopyText(FromLatin1(Sentences(true, "\n")));
}

void frmSentenceLog::Save() {
  // What is shown now, whatever arrives while its user chooses a name.
  Refresh();
  const std::string content = Sentences(false, "\r\n");
  const auto path = OwningDesktop().ChooseFile({.title = "Save Lines As",
                                                .filter = "Recordings (*.log)|*.log",
                                                .defaultExtension = ".log",
                                                .save = true});
  if (!path) return;
  try {
    ReplaceFile(*path, content);
  } catch (const Fault& fault) {
    OwningDesktop().Ask({.text = "The lines could not be saved. " + fault.Description(),
                         .icon = BoxIcon::Exclamation});
  }
}

}  // namespace fathomline
