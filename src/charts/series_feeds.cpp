#include "charts/series_feeds.h"

#include <algorithm>
#include <utility>

#include "base/look.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr int kMeanLine = 0;
constexpr int kDeviationBand = 1;
constexpr int kHeadingLine = 2;

constexpr int kUsedChart = 1;
constexpr int kSNRChart = 2;
// Only satellites up to this one break their lines when they leave the solution.
constexpr int kLastBroken = 99;

void SetBand(Marker& band, float mean, float deviation) {
  band.SetBand({static_cast<double>(mean) - static_cast<double>(deviation),
                static_cast<double>(mean) + static_cast<double>(deviation)});
}

Colour SatelliteCountColour(double satellites) {
  if (satellites < 4.0) return kRed;
  return satellites == 4.0 ? kMagenta : kSeriesColour;
}

constexpr std::int16_t kFirstQuality = 1;
constexpr std::int16_t kFirstDifferential = 2;
constexpr std::int16_t kLastQuality = 8;  // what is beyond draws no bar

// Whatever is not even autonomous is as red as that.
Colour QualityColour(std::int16_t quality) {
  if (quality == kFirstDifferential) return kSeriesColour;  // which is the same blue
  return kQualityColours[static_cast<std::size_t>(std::max(quality, kFirstQuality))];
}

// An axis that only ever widens.
void IncludeStation(Axis& axis, std::int32_t station) {
  if (station == NoValue) return;
  const double number = station;
  if (number + 1.0 > axis.Maximum()) {
    if (axis.Minimum() > number) axis.SetMinimum(number - 1.0);
    axis.SetMaximum(number + 1.0);
  }
  if (number - 1.0 < axis.Minimum()) axis.SetMinimum(number - 1.0);
}

}  // namespace

void SeriesFeeds::UpdateTimeSeries(int system, SentenceType type) {
  for (std::size_t i = 0; i < kTimeSeriesClasses.size(); ++i) {
    const TimeSeriesClass& design = kTimeSeriesClasses[i];
    if (design.type != type) continue;
    frmTimeSeries* const window = windows_[system][i].get();
    if (window == nullptr || !window->Loaded() || !(records_.CommSetups[system].*design.analysed)) {
      return;
    }
    FeedRows(system, *window);
    return;
  }
}

void SeriesFeeds::StartAfresh(int system) {
  state_[system] = {};
  for (const auto& window : windows_[system]) {
    if (window->Loaded()) window->StartAfresh();
  }
}

void SeriesFeeds::FeedRows(int system, frmTimeSeries& window) {
  const SentenceType type = window.Type();
  if (type == SentenceType::HDT && HeadingStat(system).NoValueSeen) return;
  const GSVRecord& gsv = records_.Messages[system].GSV.Record;
  if (type == SentenceType::GSV && gsv.MessageNumber != gsv.MessageCount) return;

  State& state = state_[system];
  state.PlotTime = records_.MessageTime[system];
  window.BeginFeed(state.PlotTime);
  if (state.breakLines) BreakLines(state, window);
  for (std::size_t plot = 0; plot < window.Plots().size(); ++plot) {
    const TimeSeriesRow& row = *window.Plots()[plot].row;
    if (row.value == nullptr) continue;
    if (row.statistic != nullptr && row.statistic(statistics_[system]).Stat.NoValueSeen) continue;
    FeedRow(system, window, plot);
  }
  if (type == SentenceType::GSA) FeedUsedSatellites(system, window);
  if (type == SentenceType::GSV) FeedSatellites(system, window);
  window.EndFeed();
}

const SingleStat& SeriesFeeds::HeadingStat(int system) const {
  return statistics_[system].Of<HDTRecord, &Deviations::deltaHdg>().Stat;
}

void SeriesFeeds::FeedRow(int system, frmTimeSeries& window, std::size_t plot) {
  State& state = state_[system];
  const frmTimeSeries::Plot& fed = window.Plots()[plot];
  Series& series = *fed.series;
  const double value = fed.row->value({records_.Messages[system], statistics_[system].Present});
  const auto add = [&](const PlotOptions& options = {}) {
    return AddChartPoint(window.Settings(), series, state.PlotTime, value,
                         state.filters[fed.filter], options);
  };
  switch (fed.row->rule) {
    case FeedRule::Radius: {
      if (add()) FeedComputed(window, plot);
      const SingleStat& radius = fed.row->statistic(statistics_[system]).Stat;
      window.TChart(0).Tools(kMeanLine).SetValue(static_cast<double>(radius.Mean));
      SetBand(window.TChart(0).Tools(kDeviationBand), radius.Mean, radius.Sdev);
      break;
    }
    case FeedRule::SatelliteCount:
      add({.kind = PlotKind::Bar, .colour = SatelliteCountColour(value)});
      break;
    case FeedRule::Quality:
      FeedQuality(state, window, plot, static_cast<std::int16_t>(value));
      break;
    case FeedRule::Age:
      if (!window.PlotsAge()) break;
      if (fed.row->type == SentenceType::GGA && std::exchange(state.ageBreak, false)) {
        series.AddNull(state.PlotTime.days);
      }
      add();
      break;
    case FeedRule::Station: {
      if (!window.PlotsDGPS()) break;
      const auto station = static_cast<std::int32_t>(value);
      window.Gantt().AddGanttPoint(system, series, state.PlotTime, station);
      IncludeStation(window.TChart(fed.row->chart).Right(), station);
      break;
    }
    case FeedRule::Heading:
      add();
      FeedHeading(system, window);
      break;
    case FeedRule::FixType:
      series.SetColour(records_.Messages[system].GSA.Record.Mode == 'M' ? kYellow : kBlack);
      add();
      break;
    case FeedRule::None:
    case FeedRule::Computed:
      add();
      break;
  }
}

void SeriesFeeds::FeedComputed(frmTimeSeries& window, std::size_t plot) {
  const Series& source = *window.Plots()[plot].series;
  const Series::Point newest = source.At(source.Count() - 1);
  PointFigures& figures = window.Figures();
  figures.Add(static_cast<double>(newest.y));
  const std::array<double, 2> values = {figures.Mean(), figures.Deviation()};
  for (const double value : values) {
    Series& computed = *window.Plots()[++plot].series;
    computed.Add(newest.x, static_cast<float>(value));
    KeepOneDay(computed);
  }
}

void SeriesFeeds::FeedQuality(State& state, frmTimeSeries& window, std::size_t plot,
                              std::int16_t quality) {
  if (!window.PlotsDGPS()) return;
  const frmTimeSeries::Plot& bars = window.Plots()[plot];
  if (quality <= kLastQuality) {
    AddChartPoint(window.Settings(), *bars.series, state.PlotTime, quality,
                  state.filters[bars.filter],
                  {.kind = PlotKind::Bar, .colour = QualityColour(quality)});
  }
  if ((quality >= kFirstDifferential) != (state.PrevQuality >= kFirstDifferential)) {
    state.ageBreak = true;
  }
  state.PrevQuality = quality;
}

void SeriesFeeds::FeedHeading(int system, frmTimeSeries& window) {
  Chart& chart = window.TChart(0);
  const ReferenceSetup& reference = records_.References[system];
  const auto heading = static_cast<double>(reference.ReferenceHeading);
  ResumeNext([&] {
    const AxisRange left = chart.Left().Range();
    chart.Right().SetMaximum(left.high + heading);
    chart.Right().SetMinimum(left.low + heading);
  });
  const SingleStat& stat = HeadingStat(system);
  const float line = reference.ReferenceUsed == kAverageOverTime ? 0.0F : stat.Mean;
  chart.Tools(kHeadingLine).SetValue(static_cast<double>(line));
  SetBand(chart.Tools(kDeviationBand), line, stat.Sdev);
}

void SeriesFeeds::FeedUsedSatellites(int system, frmTimeSeries& window) {
  State& state = state_[system];
  Chart& chart = window.TChart(kUsedChart);
  for (const std::int16_t prn : records_.Messages[system].GSA.Record.PRN) {
    if (prn < 0 || prn > kLastSlot) continue;
    const auto n = static_cast<std::size_t>(prn);
    AddChartPoint(window.Settings(), chart.Series(prn), state.PlotTime, prn, state.gsa[n]);
    state.UsedNow.set(n);
  }
  if (state.UsedBefore.any()) {
    for (int n = 1; n <= kLastBroken; ++n) {
      const auto slot = static_cast<std::size_t>(n);
      if (state.UsedBefore[slot] && !state.UsedNow[slot]) {
        chart.Series(n).AddNull(state.PlotTime.days);
      }
    }
  }
  state.UsedBefore = state.UsedNow;
  state.UsedNow.reset();
}

// Reads the table as the sentences before this one have left it.
void SeriesFeeds::FeedSatellites(int system, frmTimeSeries& window) {
  State& state = state_[system];
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    const Satellite& satellite = satellites_(system, slot);
    if (satellite.Elevation == 0) continue;
    const std::array<std::int16_t, 3> values = {satellite.Elevation, satellite.Azimuth,
                                                satellite.SNR};
    for (std::size_t chart = 0; chart < values.size(); ++chart) {
      AddChartPoint(window.Settings(), window.TChart(static_cast<int>(chart)).Series(slot),
                    state.PlotTime, values[chart],
                    state.gsv[chart][static_cast<std::size_t>(slot)]);
    }
  }
  AddChartPoint(window.Settings(), window.TChart(kSNRChart).Series(0), state.PlotTime,
                records_.Messages[system].GSV.Record.SatellitesInView, state.gsv[kSNRChart][0],
                {.kind = PlotKind::Bar});
}

void SeriesFeeds::BreakLines(State& state, frmTimeSeries& window) {
  for (Chart& chart : window.TChart) {
    for (int i = 0; i < chart.SeriesCount(); ++i) {
      Series& series = chart.Series(i);
      if (series.Count() > 0) series.AddNull(state.PlotTime.days);
    }
  }
  state.breakLines = false;
}

}  // namespace fathomline
