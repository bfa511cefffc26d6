// frmTimeSeriesGGA and the other windows that plot one sentence of one system, all built from
// their rows in the table.
#pragma once

#include <memory>
#include <vector>

#include "charts/chart_window.h"
#include "charts/time_series_table.h"

namespace fathomline {

// Mean and standard deviation (divisor n - 1) of the points so far.
class PointFigures {
 public:
  void Add(double value);
  double Mean() const { return mean_; }
  // 0 of a single point.
  double Deviation() const;

 private:
  double count_ = 0.0;
  double mean_ = 0.0;
  double squares_ = 0.0;
};

class frmTimeSeries : public ChartWindow {
 public:
  // A series with the row that says what it plots.
  struct Plot {
    const TimeSeriesRow* row;
    Series* series;
    std::size_t filter;  // the row that its filter belongs to
  };

  // `gantt` is the table of the windows that show bars of equal values, else none.
  frmTimeSeries(const ChartSurroundings& surroundings, int system, const TimeSeriesClass& design,
                GanttTable* gantt);

  SentenceType Type() const { return class_.type; }
  const std::vector<Plot>& Plots() const { return plots_; }
  GanttTable& Gantt() { return *gantt_; }

  // Whether data of differential corrections are to be plotted, and their age.
  bool PlotsDGPS() const { return chkDGPS && chkDGPS->Checked(); }
  bool PlotsAge() const { return PlotsDGPS() && !(chkAgeOff && chkAgeOff->Checked()); }

  void StartAfresh() override;
  void Refresh() override;

  // The points of the first series so far, for the series that the chart works out from them.
  PointFigures& Figures() { return figures_; }

  // GGA and GNS only; the second and the label of GGA alone.
  std::unique_ptr<CheckBox> chkDGPS;
  std::unique_ptr<CheckBox> chkAgeOff;
  std::unique_ptr<Label> lblTest;

 protected:
  void LoadView() override;
  void UnloadView() override;

 private:
  void MakeCharts();
  void MakeMarkers();
  // It and those behind it have a series for each satellite.
  int FirstSatelliteChart() const;
  void AddSatellites();
  void ClickDGPS();

  const TimeSeriesClass& class_;
  GanttTable* gantt_;
  std::vector<Plot> plots_;
  PointFigures figures_;
};

}  // namespace fathomline
