// The feeds: each processed sentence becomes points on the charts of its window.
#pragma once

#include <array>
#include <bitset>
#include <memory>

#include "charts/satellite_table.h"
#include "charts/time_series_window.h"

namespace fathomline {

// The windows of one system, in the order of kTimeSeriesClasses.
using TimeSeriesWindows = std::array<std::unique_ptr<frmTimeSeries>, kTimeSeriesClasses.size()>;

class SeriesFeeds {
 public:
  // The filters of the charts of GSV, by chart and slot.
  using SatelliteFilters = std::array<std::array<SeriesFilter, kLastSlot + 1>, 3>;

  SeriesFeeds(const Records& records, const Statistics& statistics,
              const SatelliteTable& satellites, PerSystem<TimeSeriesWindows>& windows)
      : records_(records), statistics_(statistics), satellites_(satellites), windows_(windows) {}

  // Plots the latest sentence of a type where the type is analysed and its window is loaded,
  // visible or not. Times are those of the sentence.
  void UpdateTimeSeries(int system, SentenceType type);

  // Breaks the lines of the next feed of the system.
  void RaiseBreak(int system) { state_[system].breakLines = true; }

  // The series of the system start afresh; no sample waits in a filter for its point.
  void StartAfresh(int system);

  // Shared with the windows of signal-to-noise ratios.
  SatelliteFilters& FiltersOfSatellites(int system) { return state_[system].gsv; }

 private:
  struct State {
    DateTime PlotTime;
    bool breakLines = false;
    std::array<SeriesFilter, kTimeSeriesRows.size()> filters;
    std::array<SeriesFilter, kLastSlot + 1> gsa;
    SatelliteFilters gsv;
    std::bitset<kLastSlot + 1> UsedNow;
    std::bitset<kLastSlot + 1> UsedBefore;
    std::int16_t PrevQuality = 0;
    bool ageBreak = false;  // the kind of fix has changed since the last age
  };

  void FeedRows(int system, frmTimeSeries& window);
  const SingleStat& HeadingStat(int system) const;
  void FeedRow(int system, frmTimeSeries& window, std::size_t plot);
  static void FeedComputed(frmTimeSeries& window, std::size_t plot);
  void FeedHeading(int system, frmTimeSeries& window);
  void FeedQuality(State& state, frmTimeSeries& window, std::size_t plot, std::int16_t quality);
  void FeedUsedSatellites(int system, frmTimeSeries& window);
  void FeedSatellites(int system, frmTimeSeries& window);
  void BreakLines(State& state, frmTimeSeries& window);

  const Records& records_;
  const Statistics& statistics_;
  const SatelliteTable& satellites_;
  PerSystem<TimeSeriesWindows>& windows_;
  PerSystem<State> state_;
};

}  // namespace fathomline
