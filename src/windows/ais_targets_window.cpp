#include "windows/ais_targets_window.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ais/ais_messages.h"
#include "base/numbers.h"
#include "base/text.h"
#include "views/definitions.h"
#include "windows/target_texts.h"

namespace fathomline {
namespace {

constexpr std::array kFeeds = {SentenceType::VDM};
constexpr WindowPlace kDefaultPlace{0, 0, 15900, 7500};
// The extended window opens so far below the list's upper edge.
constexpr int kExtraInfoBelow = 4000;

// The rate at which the field ends; the ship turns at this rate or faster. Degrees a minute.
constexpr float kFastestROT = 720.0F;

std::string MMSIText(const TargetView& view) {
  return PlainText(view.target.MMSI);
}
std::string IndexText(const TargetView& view) {
  return PlainText(view.index);
}
std::string ROTText(const TargetView& view) {
  std::string text = ValueText(view.target.ROT);
  if (std::abs(view.target.ROT) == kFastestROT) text.insert(0, ">");
  return text;
}

// By what a list is put in order; none where the cell says "n/a".
using TargetKey = std::optional<double> (*)(const TargetView& view);
template <auto Member>
std::optional<double> Key(const TargetView& view) {
  const auto value = static_cast<double>(view.target.*Member);
  return value == NoValue ? std::nullopt : std::optional(value);
}
std::optional<double> TimeKey(const TargetView& view) {
  return view.target.LastMessage.days;
}
std::optional<double> IndexKey(const TargetView& view) {
  return view.index;
}

struct ListColumn {
  std::string_view heading;
  TargetCell text;
  TargetKey key;           // none: sorts by the text
  int width = 0;           // twips; 0 leaves it to the desktop
  bool holdsText = false;  // no figures
};

constexpr auto kColumns = std::to_array<ListColumn>({
    {"MMSI", MMSIText, Key<&AISTarget::MMSI>},
    {"Name", TargetText<&AISTarget::Name>, nullptr, 3200, true},
    {"Lat", TargetLatitude, Key<&AISTarget::Latitude>, 1500},
    {"Lon", TargetLongitude, Key<&AISTarget::Longitude>},
    {"SOG", TargetValue<&AISTarget::SOG>, Key<&AISTarget::SOG>},
    {"COG", TargetValue<&AISTarget::COG>, Key<&AISTarget::COG>},
    {"HDG", TargetValue<&AISTarget::Heading>, Key<&AISTarget::Heading>},
    {"ROT", ROTText, Key<&AISTarget::ROT>},
    {"Time last msg", TargetTime<&AISTarget::LastMessage>, TimeKey},
    {"Index", IndexText, IndexKey},
});
constexpr int kMMSIColumn = 0;
constexpr int kNameColumn = 1;

constexpr std::uint16_t Bits(std::initializer_list<int> columns) {
  std::uint16_t bits = 0;
  for (const int column : columns) bits = static_cast<std::uint16_t>(bits | 1U << column);
  return bits;
}

constexpr std::uint16_t kAllColumns = Bits({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
constexpr std::uint16_t kOfNewRow = Bits({kMMSIColumn});
constexpr std::uint16_t kOfEveryMessage = Bits({8, 9});

// What a message id can have changed.
struct IdColumns {
  std::int16_t id;
  std::uint16_t columns;
};
constexpr auto kIdColumns = std::to_array<IdColumns>({
    {1, Bits({2, 3, 4, 5, 6, 7})},
    {2, Bits({2, 3, 4, 5, 6, 7})},
    {3, Bits({2, 3, 4, 5, 6, 7})},
    {4, Bits({1, 2, 3})},
    {5, Bits({1})},
    {9, Bits({1, 2, 3, 4, 5})},
    {18, Bits({1, 2, 3, 4, 5, 6})},
    {19, Bits({1, 2, 3, 4, 5, 6})},
    {21, Bits({1, 2, 3})},
});
constexpr std::uint16_t ColumnsOf(std::int16_t messageId) {
  for (const IdColumns& row : kIdColumns) {
    if (row.id == messageId) return row.columns;
  }
  return 0;
}

}  // namespace

frmAISTargets::frmAISTargets(const ViewSurroundings& surroundings, int system,
                             const AISDecoder& decoder, const AISStore& store,
                             frmAISExtraInfo& extraInfo)
    : SystemView(surroundings, system,
                 {.name = "frmAISTargets",
                  .caption = "AIS Targets ",
                  .place = kDefaultPlace,
                  .placeKey = "AISTargets",
                  .flag = WindowFlag::AISTargets,
                  .feeds = kFeeds}),
      fgAISTargets(*this, "fgAISTargets", 1, static_cast<int>(kColumns.size()), {1, 0}),
      decoder_(decoder),
      store_(store),
      extraInfo_(extraInfo) {
  DesignList(fgAISTargets, kColumns, DefinedTable::AIS);
  fgAISTargets.SetSortable();
  fgAISTargets.sortKey = [this](int row, int sorted) {
    return kColumns.at(static_cast<std::size_t>(sorted))
        .key({store_.Target(Index(), row), row, records_});
  };
  SetContent(Layout::Column({Layout::Form({{"&Search :", txtSearch}}), fgAISTargets,
                             Layout::Form({{"Application message :", lblDescription}})}));

  txtSearch.onChange = [this] { Search(); };
  fgAISTargets.onClickRow = [this](int row, int x, int /*y*/) {
    extraInfo_.Open({static_cast<std::int16_t>(Index()), static_cast<std::int16_t>(row)},
                    Place().left + x, Place().top + kExtraInfoBelow);
  };
}

void frmAISTargets::LoadView() {
  const int count = store_.AISTargetCount(Index());
  fgAISTargets.SetRows(count + 1);
  due_.fill(0);
  std::fill_n(due_.begin() + 1, count, kAllColumns);
}

void frmAISTargets::UpdateAISTargets(SentenceType type) {
  if (type != SentenceType::VDM && type != SentenceType::VDO) return;
  if (store_.AISNoTarget(Index())) return;
  const int current = store_.AISCurrentTarget(Index());
  std::uint16_t columns = kOfEveryMessage | ColumnsOf(decoder_.Receiver(Index()).AISMessageId);
  if (current >= fgAISTargets.Rows()) {
    fgAISTargets.SetRows(current + 1);
    columns |= kOfNewRow;
  }
  due_[static_cast<std::size_t>(current)] |= columns;

  const ExtendedTarget& extended = extraInfo_.AISExtendedTarget();
  if (extended.System == Index() && extended.Index == current) {
    extraInfo_.ShowAISTargets(Index(), current);
  }
}

void frmAISTargets::Refresh() {
  for (int row = 1; row < fgAISTargets.Rows(); ++row) {
    auto& due = due_[static_cast<std::size_t>(row)];
    if (due != 0) WriteRow(row, std::exchange(due, std::uint16_t{0}));
  }
  WriteDescription();
}

void frmAISTargets::WriteRow(int row, std::uint16_t columns) {
  const TargetView view{store_.Target(Index(), row), row, records_};
  for (; columns != 0; columns = static_cast<std::uint16_t>(columns & (columns - 1))) {
    const int column = std::countr_zero(columns);
    fgAISTargets.Set(row, column, kColumns[static_cast<std::size_t>(column)].text(view));
  }
}

void frmAISTargets::WriteDescription() {
  const AISReceiver& receiver = decoder_.Receiver(Index());
  const AISMessages& messages = receiver.Messages();
  const auto write = [&](const AISApplicationData& data) {
    lblDescription.SetText(PlainText(receiver.ApplicationMMSI) + ": " + data.Description);
  };
  switch (receiver.ApplicationMessageId) {
    case 6:
      return write(messages.Id6);
    case 8:
      return write(messages.Id8);
    case 25:
      return write(messages.Id25);
    case 26:
      return write(messages.Id26);
    default:
      return;
  }
}

void frmAISTargets::Search() {
  Refresh();
  fgAISTargets.MarkRow(FirstMatch(UpperCase(Trim(txtSearch.Text()))));
}

int frmAISTargets::FirstMatch(const std::string& typed) const {
  if (typed.empty()) return 0;
  for (int row = 1; row < fgAISTargets.Rows(); ++row) {
    if (fgAISTargets.Text(row, kMMSIColumn).starts_with(typed)) return row;
    const std::string name = UpperCase(fgAISTargets.Text(row, kNameColumn));
    if (name.find(typed) != std::string::npos) return row;
  }
  return 0;
}

}  // namespace fathomline
