// Signal-to-noise ratio, elevation and azimuth of single satellites over time: frmTimeSeriesSNR
// with a chart for each satellite of a constellation, frmTimeSeriesGSV_SVbySV with one satellite,
// and frmVisibleSNRTimeSeries, which chooses the satellites shown.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "charts/chart_window.h"
#include "charts/satellite_table.h"
#include "charts/series_feeds.h"
#include "toolkit/bars.h"

namespace fathomline {

inline constexpr int kSNRCharts = 32;

struct SNRConstellation {
  std::string_view name;
  int firstPRN;  // of the first chart
};
// Rows count from 1, as those of Records::VisibleSNR do from 0.
inline constexpr std::array<SNRConstellation, kSNRConstellations> kSNRConstellationTable = {
    {{"GPS", 1}, {"SBAS", 33}, {"GLONASS", 65}, {"BeiDou", 100}, {"Galileo", 150}}};

// The row whose window takes a satellite, 0 for none. No satellite comes to the last row.
constexpr int SNRRowOf(int prn) {
  if (prn < 33) return 1;
  if (prn < 65) return 2;
  if (prn < 97) return 3;
  return prn > 99 && prn < 133 ? 4 : 0;
}

// The series of a satellite's chart.
inline constexpr int kSNRSeries = 0;
inline constexpr int kElevationSeries = 1;
inline constexpr int kAzimuthSeries = 2;

class frmVisibleSNRTimeSeries : public Window {
 public:
  frmVisibleSNRTimeSeries(Desktop& desktop, Records& records);

  // Returns when the dialog is closed.
  void Open(int row);

  // The row has been changed.
  std::function<void(int row)> onApply;

  ControlArray<CheckBox> chkPRN{*this, "chkPRN", 0, kSNRCharts - 1, ""};
  Choices cmbColumns{*this, "cmbColumns", ChoicesKind::Combo};
  Label lblNoOfSeries{*this, "lblNoOfSeries"};
  Button cmdOk{*this, "cmdOk", "OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  VisibleSNRRow& Row() { return records_.VisibleSNR[static_cast<std::size_t>(row_ - 1)]; }
  void CountShown();
  void Accept();

  Records& records_;
  int row_ = 1;
};

class frmTimeSeriesSNR : public ChartWindow {
 public:
  // `anyOther` tells whether another of the system's windows is shown, for which the flag stays.
  frmTimeSeriesSNR(const ChartSurroundings& surroundings, int system, int row,
                   frmVisibleSNRTimeSeries& visible, std::function<bool()> anyOther);

  // The chart of a satellite; none for PRN 132, which has no place in its window.
  Chart* ChartOf(int prn);
  // Lays out the charts that are to be shown, in the columns chosen. No points are lost.
  void Arrange_TimeSeries();
  // Gives all charts one left scale.
  void Refresh() override;

  void PutAway() override;

  MenuItem mnuWindow{*this, "mnuWindow", "&Window"};

 protected:
  void LoadView() override;
  bool QueryUnload(CloseReason reason) override;
  void UnloadView() override;

 private:
  int row_;
  std::function<bool()> anyOther_;
};

class frmTimeSeriesGSV_SVbySV : public ChartWindow {
 public:
  frmTimeSeriesGSV_SVbySV(const ChartSurroundings& surroundings, int system, int slot);

  void Feed(const Satellite& satellite, DateTime moment);
  void Refresh() override;
  void StartAfresh() override;

  Label lblEl{*this, "lblEl"};

 protected:
  void LoadView() override;

 private:
  std::array<SeriesFilter, 3> filters_;
  std::int16_t elevation_ = 0;
};

// The windows of one system.
struct SNRWindows {
  std::array<std::unique_ptr<frmTimeSeriesSNR>, kSNRConstellations> ByRow;
  // Made when first opened, by slot.
  std::map<int, std::unique_ptr<frmTimeSeriesGSV_SVbySV>> BySatellite;
};

class SNRFeeds {
 public:
  SNRFeeds(const Records& records, const SatelliteTable& satellites, SeriesFeeds& series,
           PerSystem<SNRWindows>& windows)
      : records_(records), satellites_(satellites), series_(series), windows_(windows) {}

  // Feeds all slots, behind the last sentence of a group.
  void FeedAll(int system);
  void StartAfresh(int system);
  // A satellite that is in view, into the windows that are loaded. A filter block is shared with
  // the charts of GSV.
  void FeedSNRSeries(int system, int slot);

 private:
  const Records& records_;
  const SatelliteTable& satellites_;
  SeriesFeeds& series_;
  PerSystem<SNRWindows>& windows_;
};

}  // namespace fathomline
