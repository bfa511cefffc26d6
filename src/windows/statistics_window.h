// frmStatistics: the running figures of one system as tables.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "analysis/statistics.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "views/figure_label.h"
#include "views/system_view.h"
#include "windows/statistics_columns.h"
#include "windows/statistics_grids.h"

namespace fathomline {

class frmStatistics : public SystemView {
 public:
  frmStatistics(const ViewSurroundings& surroundings, int system, const Statistics& statistics);

  // A sentence of the type has been taken into the figures. Notes what is to be shown; the texts
  // are written when somebody looks.
  void UpdateStatisticsView(SentenceType type);

  void Refresh() override;

  Frame frameRefPos{*this, "frameRefPos", "Reference position"};
  Label lblRefPosOption{frameRefPos, "lblRefPosOption"};
  FigureLabel lblRefLat{frameRefPos, "lblRefLat"};
  FigureLabel lblRefLon{frameRefPos, "lblRefLon"};
  FigureLabel lblRefHgt{frameRefPos, "lblRefHgt"};
  FigureLabel lblStartTime{frameRefPos, "lblStartTime"};

  Frame frameAvgPos{*this, "frameAvgPos", "Average position"};
  FigureLabel lblAvgLat{frameAvgPos, "lblAvgLat"};
  FigureLabel lblAvgLon{frameAvgPos, "lblAvgLon"};
  FigureLabel lblAvgHgt{frameAvgPos, "lblAvgHgt"};
  FigureLabel lblSdLat{frameAvgPos, "lblSdLat"};
  FigureLabel lblSdLon{frameAvgPos, "lblSdLon"};
  FigureLabel lblSdHgt{frameAvgPos, "lblSdHgt"};
  FigureLabel lblAvgPosCount{frameAvgPos, "lblAvgPosCount"};
  FigureLabel lblCurrentTime{frameAvgPos, "lblCurrentTime"};

  Frame frameHeading{*this, "frameHeading", "Ref.       HDG         PITCH      ROLL"};
  Label lblRefHdgOption{frameHeading, "lblRefHdgOption"};
  FigureLabel lblRefHdg{frameHeading, "lblRefHdg"};
  FigureLabel lblRefPitch{frameHeading, "lblRefPitch"};
  FigureLabel lblRefRoll{frameHeading, "lblRefRoll"};
  FigureLabel lblAvgHdg{frameHeading, "lblAvgHdg"};
  FigureLabel lblAvgPitch{frameHeading, "lblAvgPitch"};
  FigureLabel lblAvgRoll{frameHeading, "lblAvgRoll"};
  FigureLabel lblSdHdg{frameHeading, "lblSdHdg"};
  FigureLabel lblSdPitch{frameHeading, "lblSdPitch"};
  FigureLabel lblSdRoll{frameHeading, "lblSdRoll"};
  FigureLabel lblAvgHdgCount{frameHeading, "lblAvgHdgCount"};
  FigureLabel lblAvgPitchCount{frameHeading, "lblAvgPitchCount"};
  FigureLabel lblAvgRollCount{frameHeading, "lblAvgRollCount"};

  // The grid of a sentence, such as fgGGA. Raises OutOfRange for a type that has none.
  Grid& GridOf(SentenceType type);

 protected:
  void LoadView() override;

 private:
  struct SentenceGrid {
    SentenceGrid(Window& window, const StatisticsGrid& design);
    const StatisticsGrid& design;
    Frame frame;
    Grid grid;
    bool due = false;
  };

  static std::deque<SentenceGrid> MakeGrids(Window& window);
  SentenceGrid* Find(SentenceType type);
  void NoteReferencePosition();
  void NoteReferenceAttitude();
  void WriteCaptions();
  void WriteReference();
  void WriteAverages();
  void WriteTimes();
  void WriteGrid(SentenceGrid& grid);
  std::string Coordinate(double radians, std::string_view type) const;

  const Statistics& statistics_;
  std::deque<SentenceGrid> grids_ = MakeGrids(*this);

 public:
  // Behind the grids of the sentences, which are built from their table.
  Frame frameGSV_GPS{*this, "frameGSV_GPS", "GSV/GPS SNR Statistics"};
  Grid fgGSV_GPS{frameGSV_GPS, "fgGSV_GPS", kStatisticsRows, kGPSSatellites + 1};

 private:
  // The reference as it was at the sentence that shows it; the one in force may move on while
  // the session is paused.
  ReferenceSetup shownReference_;
  bool positionWritten_ = false;
  bool attitudeWritten_ = false;
  bool positionDue_ = false;
  bool attitudeDue_ = false;
  bool averagesDue_ = false;
  const PositionStats* timesOf_ = nullptr;  // whose times are due
};

}  // namespace fathomline
