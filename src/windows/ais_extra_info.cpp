#include "windows/ais_extra_info.h"

#include <array>
#include <string>
#include <string_view>

#include "base/format.h"
#include "base/numbers.h"
#include "toolkit/window_places.h"
#include "windows/target_texts.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{0, 0, 14400, 6600};

std::string NineDigits(const TargetView& view) {
  return Format(view.target.MMSI, "000000000");
}

std::string ArrivalTime(const TargetView& view) {
  if (view.target.ETA == DateTime{}) return std::string(kNotAvailable);
  return FormatDateTime(view.target.ETA, "dd mmm hh:mm");
}

// The whole, and the distances from the antenna to the two ends.
std::string Extent(int first, std::string_view firstName, int second, std::string_view secondName) {
  if (first == 0 || first == NoValue) return std::string(kNotAvailable);
  std::string text = PlainText(first + second);
  text.append("     (").append(firstName).append("=").append(PlainText(first));
  text.append(" ").append(secondName).append("=").append(PlainText(second));
  return text.append(")");
}
std::string Length(const TargetView& view) {
  return Extent(view.target.DimensionA, "A", view.target.DimensionB, "B");
}
std::string Breadth(const TargetView& view) {
  return Extent(view.target.DimensionC, "C", view.target.DimensionD, "D");
}

template <std::size_t Id>
std::string MessageCount(const TargetView& view) {
  return PlainText(view.target.MessageCount[Id]);
}

struct Row {
  int grid;
  std::string_view label;
  TargetCell value = nullptr;  // of a heading, and of what nobody writes: none
};

constexpr auto kRows = std::to_array<Row>({
    {0, "MMSI", NineDigits},
    {0, "AIS Class", TargetText<&AISTarget::AISClass>},
    {0, "Latitude", TargetLatitude},
    {0, "Longitude", TargetLongitude},
    {0, "SOG", TargetValue<&AISTarget::SOG>},
    {0, "COG", TargetValue<&AISTarget::COG>},
    {0, "Heading", TargetValue<&AISTarget::Heading>},
    {0, "Rate Of Turn", TargetValue<&AISTarget::ROT>},
    {0, "Nav Status", TargetText<&AISTarget::NavStatusText>},
    {0, "Pos Accuracy", TargetText<&AISTarget::PositionAccuracyText>},
    {1, "Static data"},
    {1, "Name", TargetText<&AISTarget::Name>},
    {1, "Call sign", TargetText<&AISTarget::CallSign>},
    {1, "IMO No.", TargetValue<&AISTarget::IMONumber>},
    {1, "Type of ship", TargetText<&AISTarget::ShipTypeText>},
    {1, "Length", Length},
    {1, "Bredth", Breadth},
    {1, "Pos Device", TargetText<&AISTarget::EPFSText>},
    {1, "Nationality", TargetText<&AISTarget::Country>},
    {2, "Voyage data"},
    {2, "Destination", TargetText<&AISTarget::Destination>},
    {2, "ETA", ArrivalTime},
    {2, "Cargo", TargetText<&AISTarget::CargoText>},
    {2, "Draught", TargetValue<&AISTarget::Draught>},
    {3, "Statistics"},
    {3, "Time 1st msg", TargetTime<&AISTarget::FirstMessage>},
    {3, "Time last msg", TargetTime<&AISTarget::LastMessage>},
    {3, "Period (s)", TargetCount<&AISTarget::PeriodSeconds>},
    {3, "ID1 msgs", MessageCount<1>},
    {3, "ID2 msgs", MessageCount<2>},
    {3, "ID3 msgs", MessageCount<3>},
    {3, "ID5 msgs", MessageCount<5>},
    {4, "Special msg's"},
    {4, "Passengers"},
    {4, "Height over keel"},
});

constexpr int kLabelColumn = 0;
constexpr int kValueColumn = 1;
constexpr int kLabelWidth = 2000;  // twips; the same in all grids, one above the other
constexpr int kValueWidth = 2200;

}  // namespace

frmAISExtraInfo::frmAISExtraInfo(Desktop& desktop, const Records& records, const AISStore& store)
    : Window(desktop,
             {.name = "frmAISExtraInfo", .caption = "AIS Extended Info", .place = kDefaultPlace}),
      fgAISExtraInfo(*this, "fgAISExtraInfo", 0, kGrids - 1, 0, 2, Grid::Heads{0, 1}),
      records_(records),
      store_(store) {
  for (const Row& row : kRows) {
    Grid& grid = fgAISExtraInfo(row.grid);
    grid.SetRows(grid.Rows() + 1);
    grid.Set(grid.Rows() - 1, kLabelColumn, row.label);
  }
  for (Grid& grid : fgAISExtraInfo) {
    grid.SetColumnWidth(kLabelColumn, kLabelWidth);
    grid.SetColumnWidth(kValueColumn, kValueWidth);
  }
  SetContent(Layout::Row(
      {Layout::Column({fgAISExtraInfo(0), fgAISExtraInfo(2), fgAISExtraInfo(4), Layout::Space()}),
       Layout::Column({fgAISExtraInfo(1), fgAISExtraInfo(3), Layout::Space()})}));
}

void frmAISExtraInfo::Open(ExtendedTarget target, int left, int top) {
  extendedTarget_ = target;
  Show();
  WindowPlace place = Place();
  place.left = left;
  place.top = top;
  KeepWithin(*this, place);
  ShowAISTargets(target.System, target.Index);
}

void frmAISExtraInfo::Unload() {
  extendedTarget_ = {};
  due_ = false;
}

void frmAISExtraInfo::ShowAISTargets(int system, int targetIndex) {
  if (!Loaded()) return;
  shown_ = store_.Target(system, targetIndex);
  shownIndex_ = targetIndex;
  due_ = true;
}

void frmAISExtraInfo::Refresh() {
  if (!due_) return;
  due_ = false;
  WriteCaption();
  const TargetView view{shown_, shownIndex_, records_};
  std::array<int, kGrids> next{};
  for (const Row& row : kRows) {
    const int line = next[static_cast<std::size_t>(row.grid)]++;
    if (row.value != nullptr) {
      fgAISExtraInfo(row.grid).Set(line, kValueColumn, row.value(view));
    }
  }
}

void frmAISExtraInfo::WriteCaption() {
  if (shown_.Name.empty()) {
    SetCaption("AIS Extended Info - MMSI :" + PlainText(shown_.MMSI));
  } else {
    SetCaption("AIS Extended Info - " + shown_.Name);
  }
}

}  // namespace fathomline
