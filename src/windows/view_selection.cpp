#include "windows/view_selection.h"

#include <array>
#include <span>
#include <utility>

#include "base/numbers.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

// A view that needs one of some sentence types, and the refusal where none is analysed.
struct Need {
  std::span<const SentenceType> types;
  const char* refusal;
};

constexpr std::array kSNRTypes = {SentenceType::GSV};
constexpr Need kNothing{{}, nullptr};
constexpr Need kPosition{
    kPositionTypes,
    "Scatterplot not relevant when neither GGA, GNS, GLL nor RMC message is enabled"};
constexpr Need kSatellites{kSatelliteTypes,
                           "Skyplot not relevant when neither GSA nor GSV message is enabled"};
constexpr Need kSNR{kSNRTypes, "SNR plot not relevant when GSV message is not enabled"};

struct Entry {
  ViewKind kind;
  const char* text;
  Need need;
};
constexpr auto kEntries = std::to_array<Entry>({
    {ViewKind::Numerics, "Numerics", kNothing},
    {ViewKind::Statistics, "Statistics", kNothing},
    {ViewKind::TimeSeries, "Time Serie Plot", kNothing},
    {ViewKind::Scatter, "ScatterPlot", kPosition},
    {ViewKind::Skyplot, "SkyPlot", kSatellites},
    {ViewKind::ARPATargets, "ARPA Targets", kNothing},
    {ViewKind::NMEA, "NMEA Monitor", kNothing},
    {ViewKind::AISTargets, "AIS Targets", kNothing},
    {ViewKind::SNRGPS, "SNR GPS", kSNR},
    {ViewKind::SNRSBAS, "SNR SBAS", kSNR},
    {ViewKind::SNRGLONASS, "SNR GLONASS", kSNR},
    {ViewKind::SNRBeiDou, "SNR BeiDou", kSNR},
    {ViewKind::SNRGalileo, "SNR Galileo", kSNR},
});

}  // namespace

frmNewWindow::frmNewWindow(Desktop& desktop, const Records& records,
                           std::function<void(ViewKind, int)> open)
    : Window(desktop, {.name = "frmNewWindow",
                       .caption = "New Window",
                       .place = {3000, 2000, 5000, 5500},
                       .style = WindowStyle::Dialog,
                       .resizable = false}),
      records_(records),
      open_(std::move(open)) {
  for (const Entry& entry : kEntries) cmbType.Add(entry.text);
  cmdOk.onClick = [this] { Ok(); };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(Layout::Column({Layout::Form({{"System :", cmbSystem}, {"Window :", cmbType}}),
                             Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmNewWindow::Load() {
  cmbSystem.Add("Primary System          - " + records_.CommSetups[1].Name, 1);
  for (int system = 2; system <= kSystems; ++system) {
    const CommSetup& setup = records_.CommSetups[system];
    if (!setup.Enabled) continue;
    cmbSystem.Add("Secondary System" + NumberText(system - 1) + " - " + setup.Name, system);
  }
  cmbSystem.ShowChoice(0);
  cmbType.ShowChoice(0);
}

void frmNewWindow::Ok() {
  if (cmbSystem.Choice() == Choices::kNone || cmbType.Choice() == Choices::kNone) return;
  const int system = cmbSystem.EntryData(cmbSystem.Choice());
  const Entry& entry = kEntries.at(static_cast<std::size_t>(cmbType.Choice()));
  if (!entry.need.types.empty() && !records_.CommSetups[system].AnalysesAny(entry.need.types)) {
    OwningDesktop().Say(entry.need.refusal);
    return;
  }
  Close();
  open_(entry.kind, system);
}

}  // namespace fathomline
