#include "windows/satellites_window.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/format.h"
#include "base/look.h"
#include "base/numbers.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"
#include "views/definitions.h"
#include "windows/satellite_pictures.h"
#include "windows/system_choices.h"

namespace fathomline {
namespace {

using Satellite = SatellitesInView::Satellite;
using Signal = SatellitesInView::Signal;

constexpr WindowPlace kDefaultPlace{450, 450, 13200, 9600};
constexpr std::string_view kPlacePrefix = "Satellites";
// A receiver tells its satellites once a second; a replay tells them far more often than that.
constexpr std::chrono::milliseconds kInterval{100};

// A row of the table: a satellite and one of its signals.
struct Row {
  const Satellite* satellite;
  const Signal* signal;
};

// By which rows are put in order; what has no value stands behind all others.
using Key = std::tuple<bool, double>;
Key KeyOf(std::optional<double> value) {
  return {!value.has_value(), value.value_or(0.0)};
}

std::string Text(std::optional<std::int16_t> value) {
  return value ? PlainText(*value) : std::string();
}

struct ListColumn {
  std::string_view heading;
  int width;  // twips
  std::string (*text)(const Row& row);
  Key (*key)(const Row& row);
  bool holdsText = false;  // no figures
};

Key ById(const Row& row) {
  return {false, static_cast<double>(row.satellite->id.system) * 100.0 + row.satellite->id.number};
}
std::optional<std::int16_t> Elevation(const Row& row) {
  if (!row.satellite->position) return {};
  return row.satellite->position->elevation;
}
std::optional<std::int16_t> Azimuth(const Row& row) {
  if (!row.satellite->position) return {};
  return row.satellite->position->azimuth;
}

constexpr auto kColumns = std::to_array<ListColumn>(
    {{"Satellite", 1000, [](const Row& row) { return NameOf(row.satellite->id); }, ById, true},
     {"Constellation", 1300,
      [](const Row& row) {
        return std::string(
            kConstellations.at(static_cast<std::size_t>(row.satellite->id.system)).name);
      },
      ById, true},
     {"Sent as", 800, [](const Row& row) { return PlainText(std::int32_t{row.satellite->sentAs}); },
      [](const Row& row) { return KeyOf(row.satellite->sentAs); }},
     {"Signal", 1000,
      [](const Row& row) { return SignalName(row.satellite->id.system, row.signal->id); },
      [](const Row& row) { return KeyOf(row.signal->id); }, true},
     {"C/N0 dB-Hz", 1100, [](const Row& row) { return Text(row.signal->cn0); },
      [](const Row& row) { return KeyOf(row.signal->cn0); }},
     {"Elevation °", 1000, [](const Row& row) { return Text(Elevation(row)); },
      [](const Row& row) { return KeyOf(Elevation(row)); }},
     {"Azimuth °", 1000, [](const Row& row) { return Text(Azimuth(row)); },
      [](const Row& row) { return KeyOf(Azimuth(row)); }},
     {"Used", 700, [](const Row& row) { return std::string(row.satellite->used ? "yes" : "no"); },
      [](const Row& row) { return KeyOf(row.satellite->used ? 0.0 : 1.0); }, true}});

// A signal that nobody named says nothing beside one that has a name.
bool Superfluous(const Satellite& satellite, const Signal& signal) {
  return signal.id == 0 && !signal.cn0 && satellite.signals.size() > 1;
}

std::string FixText(const SatellitesInView::Solution& solution) {
  switch (solution.fix) {
    case 1:
      return "no fix";
    case 2:
      return "2D";
    case 3:
      return "3D";
    default:
      return "n/a";
  }
}

std::string Dilution(std::optional<double> value) {
  return value ? Format(*value, "0.0") : "n/a";
}

}  // namespace

frmSatellites::frmSatellites(Desktop& desktop, const Records& records, Watch& watch,
                             SettingsStore& settings)
    : Window(desktop, {.name = "frmSatellites", .caption = "Satellites", .place = kDefaultPlace}),
      fgSatellites(*this, "fgSatellites", 1, static_cast<int>(kColumns.size()), {1, 0}),
      records_(records),
      watch_(watch),
      settings_(settings) {
  DesignList(fgSatellites, kColumns, DefinedTable::Satellites);
  picSignals.SetLeast({260, 120});
  cmbSystem.onChoose = [this] { ChooseSystem(); };
  fgSatellites.onClickHead = [this](int clicked) { ChooseOrder(clicked); };
  SetContent(Layout::Column({Layout::Row({Layout::Words("S&ystem :"), cmbSystem, lblSolution}),
                             Layout::Row({picSky, fgSatellites}), picSignals}));
}

void frmSatellites::Load() {
  ResumeNext([&] { RestorePlace(*this, settings_, kPlacePrefix, kDefaultPlace); });
  ShowSystems(cmbSystem, records_, {});
  // The first one that analyses satellites, else the first one that there is.
  for (int i = cmbSystem.Count() - 1; i >= 0; --i) {
    const CommSetup& setup = records_.CommSetups[cmbSystem.EntryData(i)];
    if (setup.AnalyseGSV || setup.AnalyseGSA) cmbSystem.ShowChoice(i);
  }
  ChooseSystem();
}

void frmSatellites::Unload() {
  ResumeNext([&] { SavePlace(*this, settings_, kPlacePrefix); });
  watch_.FollowSatellites(0);
}

void frmSatellites::ChooseSystem() {
  const int choice = cmbSystem.Choice();
  watch_.FollowSatellites(choice == Choices::kNone ? 0 : cmbSystem.EntryData(choice));
  due_ = true;
}

// In order, in the opposite order, and as the satellites are numbered.
void frmSatellites::ChooseOrder(int column) {
  const Grid::Order order = fgSatellites.ShownOrder();
  if (order.column != column) {
    fgSatellites.SetOrder({column, false});
  } else if (!order.descending) {
    fgSatellites.SetOrder({column, true});
  } else {
    fgSatellites.SetOrder({});
  }
  ShowTable();
}

void frmSatellites::Refresh() {
  if (ShowSystems(cmbSystem, records_, {})) ChooseSystem();
  const auto now = OwningDesktop().Now();
  const SatellitesInView& satellites = watch_.Satellites();
  const bool resized = sky_ != picSky.Surface() || signals_ != picSignals.Surface();
  const bool changed = shown_ != satellites.Revision() && now - drawn_ >= kInterval;
  if (!due_ && !resized && !changed) return;
  due_ = false;
  shown_ = satellites.Revision();
  drawn_ = now;
  sky_ = picSky.Surface();
  signals_ = picSignals.Surface();
  ShowSolution();
  ShowTable();
  DrawSky(picSky, satellites.Satellites());
  DrawSignals(picSignals, satellites.Satellites());
}

void frmSatellites::ShowSolution() {
  const SatellitesInView& satellites = watch_.Satellites();
  const SatellitesInView::Solution& solution = satellites.LatestSolution();
  const auto count = static_cast<std::int32_t>(satellites.Satellites().size());
  lblSolution.SetText("Fix " + FixText(solution) + "    PDOP " + Dilution(solution.pdop) +
                      "    HDOP " + Dilution(solution.hdop) + "    VDOP " +
                      Dilution(solution.vdop) + "    " + PlainText(count) + " in view, " +
                      PlainText(std::int32_t{satellites.Used()}) + " used");
}

void frmSatellites::ShowTable() {
  std::vector<Row> rows;
  for (const Satellite& satellite : watch_.Satellites().Satellites()) {
    for (const Signal& signal : satellite.signals) {
      if (!Superfluous(satellite, signal)) rows.push_back({&satellite, &signal});
    }
  }
  const Grid::Order order = fgSatellites.ShownOrder();
  if (order.column >= 0) {
    const auto key = kColumns.at(static_cast<std::size_t>(order.column)).key;
    std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
      const auto [noA, valueA] = key(a);
      const auto [noB, valueB] = key(b);
      if (noA != noB) return noB;
      return order.descending ? valueB < valueA : valueA < valueB;
    });
  }
  fgSatellites.SetRows(static_cast<int>(rows.size()) + 1);
  int at = 1;
  for (const Row& row : rows) {
    int column = 0;
    for (const ListColumn& design : kColumns) fgSatellites.Set(at, column++, design.text(row));
    ++at;
  }
}

}  // namespace fathomline
