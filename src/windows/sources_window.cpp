#include "windows/sources_window.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"
#include "views/definitions.h"
#include "windows/source_marks.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{300, 300, 12600, 7200};
constexpr std::string_view kPlacePrefix = "Sources";
// Figures that change more often than this cannot be read.
constexpr std::chrono::milliseconds kInterval{250};
constexpr const char* kNoSource =
    "No system is enabled. Define one under Setup, or open a setup file with File > Open.";

struct ListColumn {
  std::string_view heading;
  int width = 0;           // twips; 0 leaves it to the desktop
  bool holdsText = false;  // no figures
};

constexpr auto kSourceColumns = std::to_array<ListColumn>({{"State", 1100, true},
                                                           {"System", 1800, true},
                                                           {"Link", 700, true},
                                                           {"Address", 2200, true},
                                                           {"Condition", 2100, true},
                                                           {"Lines/s", 900},
                                                           {"Last line", 1100},
                                                           {"Checksum errors", 1500}});
constexpr auto kSentenceColumns = std::to_array<ListColumn>({{"State", 1100, true},
                                                             {"System", 800},
                                                             {"Talker", 800, true},
                                                             {"Sentence", 1300, true},
                                                             {"Lines/s", 900},
                                                             {"Last line", 1100},
                                                             {"Lines", 1100}});

// Of a figure; an age in seconds, whatever unit it is shown in.
std::optional<double> ValueOf(const std::string& text) {
  if (text.empty() || text.front() < '0' || text.front() > '9') return {};
  const bool minutes = text.find(" min") != std::string::npos;
  const bool hours = text.find(" h") != std::string::npos;
  return ReadNumber(text) * (hours ? 3600.0 : minutes ? 60.0 : 1.0);
}

template <std::size_t Count>
void SetHeads(Grid& grid, const std::array<ListColumn, Count>& columns) {
  DesignList(grid, columns, DefinedTable::Sources);
  grid.SetSortable();
  grid.sortKey = [&grid](int row, int sorted) { return ValueOf(grid.Text(row, sorted)); };
}

void SetRow(Grid& grid, int row, const Mark& mark, const std::vector<std::string>& texts) {
  if (row >= grid.Rows()) grid.SetRows(row + 1);
  grid.Set(row, 0, mark.text);
  grid.SetCellColour(row, 0, mark.colour);
  int column = 1;
  for (const std::string& text : texts) grid.Set(row, column++, text);
}

std::string LinkText(SourceKind kind) {
  switch (kind) {
    case SourceKind::Tcp:
      return "TCP";
    case SourceKind::Udp:
      return "UDP";
    case SourceKind::Serial:
      return "Serial";
    case SourceKind::File:
      return "File";
    case SourceKind::None:
      break;
  }
  return "none";
}

}  // namespace

frmSources::frmSources(Desktop& desktop, const Records& records, LinkDesk& links,
                       const SourceActivity& activity, SettingsStore& settings)
    : Window(desktop, {.name = "frmSources", .caption = "Sources", .place = kDefaultPlace}),
      fgSources(*this, "fgSources", 1, static_cast<int>(kSourceColumns.size()), {1, 0}),
      fgSentences(frameSentences, "fgSentences", 1, static_cast<int>(kSentenceColumns.size()),
                  {1, 0}),
      records_(records),
      links_(links),
      activity_(activity),
      settings_(settings) {
  SetHeads(fgSources, kSourceColumns);
  fgSources.SetFewRows();
  SetHeads(fgSentences, kSentenceColumns);
  std::vector<Layout> buttons;
  for (int system = 1; system <= kSystems; ++system) {
    cmdReconnect(system).SetText("Reconnect &" + PlainText(std::int32_t{system}));
    cmdReconnect(system).onClick = [this, system] {
      links_.Reconnect(system);
      due_ = true;
    };
    buttons.emplace_back(cmdReconnect(system));
  }
  buttons.emplace_back(chkReconnect);
  buttons.push_back(Layout::Space());
  chkReconnect.SetToolTip(
      "A connection that was refused or has broken, a device that was pulled out and a port that "
      "is in use are tried again, without a message box. A link that is merely silent is not.");
  chkReconnect.onClick = [this] {
    links_.SetKeeping(chkReconnect.Checked());
    due_ = true;
  };
  SetContent(Layout::Column({lblNone, fgSources, Layout::Row(std::move(buttons)),
                             Layout::Box(frameSentences, fgSentences)}));
}

void frmSources::Load() {
  ResumeNext([&] { RestorePlace(*this, settings_, kPlacePrefix, kDefaultPlace); });
  due_ = true;
}

void frmSources::Unload() {
  ResumeNext([&] { SavePlace(*this, settings_, kPlacePrefix); });
}

void frmSources::Refresh() {
  const auto now = OwningDesktop().Now();
  if (!due_ && now - looked_ < kInterval) return;
  looked_ = now;
  due_ = false;
  Look();
}

void frmSources::Look() {
  chkReconnect.SetChecked(links_.Keeping());
  int row = 1;
  int sentence = 1;
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records_.CommSetups[system];
    cmdReconnect(system).SetVisible(setup.Enabled && !records_.Offline());
    // A system that a box has told to be disabled still says why.
    if (!setup.Enabled && links_.Look(system).stage != LinkStage::Lost) continue;
    ShowSource(row++, system);
    sentence = ShowSentences(sentence, system);
  }
  fgSources.SetRows(row);
  fgSentences.SetRows(sentence);
  lblNone.SetText(row == 1 ? kNoSource : "");
  lblNone.SetVisible(row == 1);
}

void frmSources::ShowSource(int row, int system) {
  const CommSetup& setup = records_.CommSetups[system];
  const SourceReading reading =
      ReadSource(records_, links_, activity_, system, OwningDesktop().Now());
  std::string name = PlainText(std::int32_t{system});
  if (!setup.Name.empty()) name += " - " + setup.Name;
  const bool tested = records_.ChecksumTest[system];
  SetRow(fgSources, row, reading.mark,
         {name, LinkText(reading.link.kind), reading.link.address,
          setup.Enabled ? reading.condition : "disabled: " + reading.condition,
          RateText(reading.source.rate), reading.lastLine,
          tested ? PlainText(records_.ChecksumErrors[system]) : "not tested"});
}

int frmSources::ShowSentences(int row, int system) {
  const auto now = OwningDesktop().Now();
  const auto add = [&](Mark mark, std::string talker, std::string sentence, double rate,
                       const std::string& age, std::int64_t lines) {
    if (records_.Offline()) mark = {"", mark.colour};
    SetRow(fgSentences, row++, mark,
           {PlainText(std::int32_t{system}), std::move(talker), std::move(sentence), RateText(rate),
            age, std::to_string(lines)});
  };
  for (const auto& sentence : activity_.Sentences(system, now)) {
    add(MarkOf(sentence.state), sentence.address.Talker(), sentence.address.Sentence(),
        sentence.rate, AgeText(sentence.age), sentence.lines);
  }
  const SourceActivity::Source source = activity_.Look(system, now);
  if (source.unreadable > 0) add({}, "", "unreadable", 0.0, "", source.unreadable);
  return row;
}

}  // namespace fathomline
