// All windows of this room, for all systems, and the calls by which the session works them.
#pragma once

#include <memory>

#include "base/clock.h"
#include "charts/axis_dialogs.h"
#include "charts/scatter_window.h"
#include "charts/series_feeds.h"
#include "charts/skyplot_window.h"
#include "charts/snr_windows.h"
#include "charts/time_series_window.h"

namespace fathomline {

class ChartWindows {
 public:
  ChartWindows(const ViewSurroundings& surroundings, const Statistics& statistics,
               const Clock& clock);
  ChartWindows(const ChartWindows&) = delete;
  ChartWindows& operator=(const ChartWindows&) = delete;

  // The latest sentence of a type, which its decoder and the statistics have taken. The charts of
  // GSV wait for the tracking, which takes the satellites into the table that they read.
  void UpdateTimeSeries(int system, SentenceType type) {
    if (type != SentenceType::GSV) feeds_.UpdateTimeSeries(system, type);
  }
  // Breaks the lines of the system's next feed.
  void RaiseBreak(int system) { feeds_.RaiseBreak(system); }
  void UpdateScatter(int system, SentenceType type);
  void UpdateSkyplot(int system) { skyplots_[system]->UpdateSkyplot(); }
  // The sky plot, and behind it the charts that are fed from its table.
  void UpdateSatelliteTracking(int system) { skyplots_[system]->UpdateSatelliteTracking(); }
  // Empties the time series and those of the signal-to-noise ratios: what they hold has no time of
  // its own.
  void StartSeriesAfresh(int system);

  // Bring the windows back empty, as they were: shown, hidden or closed. For every enabled system
  // there are, loaded, the time series of each analysed type and the scatter plot.
  void ResetTimeSeries();
  void ResetScatter();
  void ResetSkyplot();

  // Open what a user asks for. The time series are those of the analysed types; those of GSV and a
  // window of signal-to-noise ratios open the skyplot with them, which feeds them. Rows of
  // constellations are 1 to 5. A slot beyond the table raises OutOfRange.
  void OpenTimeSeries(int system);
  void OpenScatter(int system) { scatters_[system]->ShowView(); }
  void OpenSkyplot(int system) { skyplots_[system]->ShowView(); }
  void OpenSNR(int system, int row);
  void OpenSatellite(int system, int slot);
  // The window of one satellite, which is made when it is first asked for.
  frmTimeSeriesGSV_SVbySV& SatelliteWindow(int system, int slot);
  // Opens everything that the analysed sentences of the system feed, but the windows of
  // signal-to-noise ratios, of which there are many.
  void OpenFigures(int system);
  // These too.
  void OpenAnalysed(int system);

  // Whether windows that are not shown are loaded and fed. Off, for a run that nobody watches: a
  // window opened later begins empty.
  void SetKeepHidden(bool keep) { keepHidden_ = keep; }

  // Raises OutOfRange for a type that has no time series.
  frmTimeSeries& TimeSeriesOf(int system, SentenceType type);
  frmScatter& ScatterOf(int system) { return *scatters_[system]; }
  frmSkyplot& SkyplotOf(int system) { return *skyplots_[system]; }
  frmTimeSeriesSNR& SNROf(int system, int row);

  const SatelliteTable& Satellites() const { return satellites_; }

 private:
  void MakeWindows(int system);
  // How a window that is to be fed comes back.
  ViewState StateOf(bool shown) const;
  void ResetSatelliteWindows(int system);

  Records& records_;
  const Clock& clock_;
  bool keepHidden_ = true;

  ChartTables tables_;
  GanttTable ganttGGA_;
  GanttTable ganttGNS_;
  ScatterScales scales_;
  SatelliteTable satellites_;

 public:
  frmYAxis yAxis;
  frmSetTimeDate setTimeDate;
  frmXAxis xAxis;
  frmXYAxis xyAxis;
  frmVisibleSNRTimeSeries visibleSNR;

 private:
  ChartSurroundings surroundings_;
  PerSystem<std::unique_ptr<frmScatter>> scatters_;
  PerSystem<std::unique_ptr<frmSkyplot>> skyplots_;
  PerSystem<TimeSeriesWindows> timeSeries_;
  PerSystem<SNRWindows> snr_;
  SeriesFeeds feeds_;
  SNRFeeds snrFeeds_;
};

}  // namespace fathomline
