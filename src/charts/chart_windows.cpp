#include "charts/chart_windows.h"

#include "toolkit/desktop.h"

namespace fathomline {

ChartWindows::ChartWindows(const ViewSurroundings& surroundings, const Statistics& statistics,
                           const Clock& clock)
    : records_(surroundings.records),
      clock_(clock),
      yAxis(surroundings.desktop),
      setTimeDate(surroundings.desktop),
      xAxis(surroundings.desktop, setTimeDate),
      xyAxis(surroundings.desktop, scales_),
      visibleSNR(surroundings.desktop, surroundings.records),
      surroundings_{surroundings, statistics, tables_, yAxis, xAxis},
      feeds_(records_, statistics, satellites_, timeSeries_),
      snrFeeds_(records_, satellites_, feeds_, snr_) {
  for (int system = 1; system <= kSystems; ++system) MakeWindows(system);
  visibleSNR.onApply = [this](int row) {
    for (int system = 1; system <= kSystems; ++system) {
      if (SNROf(system, row).Loaded()) SNROf(system, row).Arrange_TimeSeries();
    }
  };
}

void ChartWindows::MakeWindows(int system) {
  scatters_[system] = std::make_unique<frmScatter>(surroundings_, system, surroundings_.statistics,
                                                   scales_, xyAxis);
  auto& skyplot = skyplots_[system];
  skyplot = std::make_unique<frmSkyplot>(surroundings_, system, satellites_, clock_);
  skyplot->onGroupDone = [this, system] {
    feeds_.UpdateTimeSeries(system, SentenceType::GSV);
    snrFeeds_.FeedAll(system);
  };
  skyplot->onChooseSatellite = [this, system](int slot) { OpenSatellite(system, slot); };
  for (std::size_t i = 0; i < kTimeSeriesClasses.size(); ++i) {
    const TimeSeriesClass& design = kTimeSeriesClasses[i];
    GanttTable* const gantt = design.type == SentenceType::GGA   ? &ganttGGA_
                              : design.type == SentenceType::GNS ? &ganttGNS_
                                                                 : nullptr;
    timeSeries_[system][i] = std::make_unique<frmTimeSeries>(surroundings_, system, design, gantt);
  }
  SNRWindows& windows = snr_[system];
  for (int row = 1; row <= kSNRConstellations; ++row) {
    const auto at = static_cast<std::size_t>(row - 1);
    const auto anyOther = [&windows, at] {
      for (std::size_t other = 0; other < windows.ByRow.size(); ++other) {
        if (other != at && windows.ByRow[other]->Visible()) return true;
      }
      return false;
    };
    windows.ByRow[at] =
        std::make_unique<frmTimeSeriesSNR>(surroundings_, system, row, visibleSNR, anyOther);
  }
}

void ChartWindows::StartSeriesAfresh(int system) {
  feeds_.StartAfresh(system);
  snrFeeds_.StartAfresh(system);
}

void ChartWindows::UpdateScatter(int system, SentenceType type) {
  if (scatters_[system]->Loaded()) scatters_[system]->UpdateScatter(type);
}

ViewState ChartWindows::StateOf(bool shown) const {
  if (shown) return ViewState::Shown;
  return keepHidden_ ? ViewState::Hidden : ViewState::Closed;
}

void ChartWindows::ResetTimeSeries() {
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records_.CommSetups[system];
    if (!setup.Enabled) continue;
    for (std::size_t i = 0; i < kTimeSeriesClasses.size(); ++i) {
      const TimeSeriesClass& design = kTimeSeriesClasses[i];
      frmTimeSeries& window = *timeSeries_[system][i];
      if (setup.*design.analysed) {
        window.Reset(StateOf(records_.SystemSetups[system][design.flag]));
      } else {
        window.Close();
      }
    }
    ResetSatelliteWindows(system);
  }
}

void ChartWindows::ResetSatelliteWindows(int system) {
  const bool analysed = records_.CommSetups[system].AnalyseGSV;
  const auto reset = [&](ChartWindow& window) {
    if (!window.Loaded()) return;
    if (analysed) {
      window.Reset(StateOf(window.Visible()));
    } else {
      window.Close();
    }
  };
  for (const auto& window : snr_[system].ByRow) reset(*window);
  for (const auto& [slot, window] : snr_[system].BySatellite) reset(*window);
}

void ChartWindows::ResetScatter() {
  for (int system = 1; system <= kSystems; ++system) {
    if (!records_.CommSetups[system].Enabled) continue;
    scatters_[system]->Reset(StateOf(scatters_[system]->Visible()));
  }
}

void ChartWindows::ResetSkyplot() {
  for (int system = 1; system <= kSystems; ++system) {
    if (records_.SystemSetups[system][WindowFlag::Skyplot]) {
      skyplots_[system]->Reset(ViewState::Shown);
    }
  }
}

void ChartWindows::OpenTimeSeries(int system) {
  if (records_.CommSetups[system].AnalyseGSV) OpenSkyplot(system);
  for (std::size_t i = 0; i < kTimeSeriesClasses.size(); ++i) {
    if (records_.CommSetups[system].*kTimeSeriesClasses[i].analysed) {
      timeSeries_[system][i]->ShowView();
    }
  }
}

void ChartWindows::OpenSNR(int system, int row) {
  OpenSkyplot(system);
  SNROf(system, row).ShowView();
}

frmTimeSeriesGSV_SVbySV& ChartWindows::SatelliteWindow(int system, int slot) {
  if (!IsSlot(slot)) Raise(FaultNumber::OutOfRange);
  auto& window = snr_[system].BySatellite[slot];
  if (!window) {
    window = std::make_unique<frmTimeSeriesGSV_SVbySV>(surroundings_, system, slot);
  }
  return *window;
}

void ChartWindows::OpenSatellite(int system, int slot) {
  SatelliteWindow(system, slot).ShowView();
}

void ChartWindows::OpenFigures(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  OpenTimeSeries(system);
  if (setup.AnalysesAny(kPositionTypes)) OpenScatter(system);
  if (setup.AnalysesAny(kSatelliteTypes)) OpenSkyplot(system);
}

void ChartWindows::OpenAnalysed(int system) {
  OpenFigures(system);
  if (!records_.CommSetups[system].AnalyseGSV) return;
  for (int row = 1; row <= kSNRConstellations; ++row) OpenSNR(system, row);
}

frmTimeSeries& ChartWindows::TimeSeriesOf(int system, SentenceType type) {
  for (const auto& window : timeSeries_[system]) {
    if (window->Type() == type) return *window;
  }
  Raise(FaultNumber::OutOfRange);
}

frmTimeSeriesSNR& ChartWindows::SNROf(int system, int row) {
  if (row < 1 || row > kSNRConstellations) Raise(FaultNumber::OutOfRange);
  return *snr_[system].ByRow[static_cast<std::size_t>(row - 1)];
}

}  // namespace fathomline
