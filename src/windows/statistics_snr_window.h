// frmStatisticsSNR: the signal-to-noise figures of each satellite, one grid per constellation.
#pragma once

#include <array>
#include <cstddef>
#include <deque>

#include "analysis/statistics.h"
#include "base/settings.h"
#include "records/records.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/window.h"

namespace fathomline {

class frmStatisticsSNR : public Window {
 public:
  frmStatisticsSNR(Desktop& desktop, int system, Records& records, const Statistics& statistics,
                   SettingsStore& settings);

  // Notes what is to be shown of a GSV; any other type does nothing.
  void UpdateStatisticsView(SentenceType type);

  void Refresh() override;

  Frame frameMain{*this, "frameMain"};

  // A grid by its place in the window, from 0: GPS, SBAS, GLONASS, BeiDou, Galileo. Raises
  // OutOfRange.
  Grid& GridOf(std::size_t constellation);

 protected:
  void Load() override;
  void Unload() override;

 private:
  struct Constellation;
  static const std::array<Constellation, 5> kConstellations;

  struct ConstellationGrid {
    ConstellationGrid(Frame& parent, const Constellation& table);
    const Constellation& design;
    Frame frame;
    Grid grid;
  };

  static std::deque<ConstellationGrid> MakeGrids(Frame& parent);
  static void LayOutGrid(ConstellationGrid& grid);

  Records& records_;
  const Statistics& statistics_;
  SettingsStore& settings_;
  std::deque<ConstellationGrid> grids_ = MakeGrids(frameMain);
  bool due_ = false;
};

}  // namespace fathomline
