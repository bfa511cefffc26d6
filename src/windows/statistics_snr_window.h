// frmStatisticsSNR: the signal-to-noise figures of each satellite, one grid per constellation.
#pragma once

#include <array>
#include <cstddef>
#include <deque>

#include "analysis/statistics.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "views/system_view.h"

namespace fathomline {

class frmStatisticsSNR : public SystemView {
 public:
  frmStatisticsSNR(const ViewSurroundings& surroundings, int system, const Statistics& statistics);

  // Notes what is to be shown of a GSV; any other type does nothing.
  void UpdateStatisticsView(SentenceType type);

  void Refresh() override;

  Frame frameMain{*this, "frameMain"};

  // A grid by its place in the window, from 0: GPS, SBAS, GLONASS, BeiDou, Galileo. Raises
  // OutOfRange.
  Grid& GridOf(std::size_t constellation);

 protected:
  void LoadView() override;

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

  const Statistics& statistics_;
  std::deque<ConstellationGrid> grids_ = MakeGrids(frameMain);
  bool due_ = false;
};

}  // namespace fathomline
