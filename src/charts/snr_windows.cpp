#include "charts/snr_windows.h"

#include <algorithm>
#include <string>

#include "base/format.h"
#include "base/numbers.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr std::array kFeeds = {SentenceType::GSV};
constexpr int kMostColumns = 8;
constexpr int kSBASRow = 2;
constexpr double kFullCircle = 360.0;

// The three series and the markers of a satellite's chart.
void MakeSatelliteChart(Chart& chart) {
  chart.AddSeries(
      {.title = "SNR", .kind = SeriesKind::Bar, .colour = kTeal, .unit = "dB", .whole = true});
  chart.AddSeries({.title = "Elevation", .colour = kDarkRed, .unit = "deg", .whole = true});
  chart.AddSeries(
      {.title = "Azimuth", .colour = kNavy, .rightAxis = true, .unit = "deg", .whole = true});
  chart.Left().SetTitle("dB, deg");
  chart.Right().SetTitle("deg");
  for (const MarkerKind kind :
       {MarkerKind::HorizontalLine, MarkerKind::HorizontalBand, MarkerKind::HorizontalBand}) {
    chart.AddMarker({.kind = kind, .colour = kOrange, .visible = false});
  }
  chart.SetWhyEmpty("no data");
}

std::array<std::int16_t, 3> ValuesOf(const Satellite& satellite) {
  return {satellite.SNR, satellite.Elevation, satellite.Azimuth};
}

std::string ChartTitle(int prn) {
  return " PRN " + Format(prn, "00");
}

}  // namespace

frmVisibleSNRTimeSeries::frmVisibleSNRTimeSeries(Desktop& desktop, Records& records)
    : Window(desktop, {.name = "frmVisibleSNRTimeSeries",
                       .caption = "Visible SNR TimeSeries",
                       .place = {1500, 1500, 7500, 6000},
                       .style = WindowStyle::Dialog,
                       .resizable = false}),
      records_(records) {
  for (int columns = 1; columns <= kMostColumns; ++columns) {
    cmbColumns.Add(PlainText(columns), columns);
  }
  std::vector<Layout> boxes;
  for (CheckBox& box : chkPRN) {
    box.onClick = [this] { CountShown(); };
    boxes.emplace_back(box);
  }
  cmdOk.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  constexpr int kBoxColumns = 4;
  SetContent(Layout::Column(
      {Layout::Table(kBoxColumns, std::move(boxes)),
       Layout::Form({{"No of columns", cmbColumns}, {"No of series", lblNoOfSeries}}),
       Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmVisibleSNRTimeSeries::Open(int row) {
  row_ = row;
  OwningDesktop().ShowModal(*this);
}

void frmVisibleSNRTimeSeries::Load() {
  const int first = kSNRConstellationTable.at(static_cast<std::size_t>(row_ - 1)).firstPRN;
  for (int i = 0; i < kSNRCharts; ++i) {
    chkPRN(i).SetText("PRN" + Format(first + i, row_ == kSBASRow ? "000" : "00"));
    chkPRN(i).SetChecked(Row().Shown.at(static_cast<std::size_t>(i)));
  }
  cmbColumns.ShowChoice(std::clamp<int>(Row().Columns, 1, kMostColumns) - 1);
  CountShown();
}

void frmVisibleSNRTimeSeries::CountShown() {
  lblNoOfSeries.SetText(PlainText(static_cast<std::int32_t>(std::count_if(
      chkPRN.begin(), chkPRN.end(), [](const CheckBox& box) { return box.Checked(); }))));
}

void frmVisibleSNRTimeSeries::Accept() {
  for (int i = 0; i < kSNRCharts; ++i) {
    Row().Shown.at(static_cast<std::size_t>(i)) = chkPRN(i).Checked();
  }
  Row().Columns = static_cast<std::int16_t>(cmbColumns.EntryData(cmbColumns.Choice()));
  Close();
  if (onApply) onApply(row_);
}

frmTimeSeriesSNR::frmTimeSeriesSNR(const ChartSurroundings& surroundings, int system, int row,
                                   frmVisibleSNRTimeSeries& visible, std::function<bool()> anyOther)
    : ChartWindow(
          surroundings, system, {.windowIndex = kSNRWindowIndex, .charts = kSNRCharts},
          {.name = "frmTimeSeriesSNR",
           .caption = std::string(kSNRConstellationTable.at(static_cast<std::size_t>(row - 1)).name)
                          .append(" SNR Timeseries "),
           .place = {0, 0, 3000, 6000},
           .placeOfItsOwn = false,
           .flag = WindowFlag::TimeSeriesSNR,
           .feeds = kFeeds,
           .part = row}),
      row_(row),
      anyOther_(std::move(anyOther)) {
  int prn = kSNRConstellationTable.at(static_cast<std::size_t>(row - 1)).firstPRN;
  for (Chart& chart : TChart) {
    MakeSatelliteChart(chart);
    chart.Right().SetCompany(AxisRange{0.0, kFullCircle});
    chart.SetText(ChartTitle(prn++));
  }
  mnuWindow.onClick = [this, &visible] { visible.Open(row_); };
}

Chart* frmTimeSeriesSNR::ChartOf(int prn) {
  const int index = prn - kSNRConstellationTable.at(static_cast<std::size_t>(row_ - 1)).firstPRN;
  return index >= 0 && index < kSNRCharts ? &TChart(index) : nullptr;
}

void frmTimeSeriesSNR::Arrange_TimeSeries() {
  const VisibleSNRRow& row = records_.VisibleSNR.at(static_cast<std::size_t>(row_ - 1));
  std::vector<Layout> shown;
  for (int i = 0; i < kSNRCharts; ++i) {
    TChart(i).SetVisible(row.Shown.at(static_cast<std::size_t>(i)));
    if (TChart(i).Visible()) shown.emplace_back(TChart(i));
  }
  std::vector<Layout> controls = ControlRow();
  controls.push_back(Layout::Space());
  const int columns = std::clamp<int>(row.Columns, 1, kMostColumns);
  const std::string nothing =
      std::string("No ")
          .append(kSNRConstellationTable.at(static_cast<std::size_t>(row_ - 1)).name)
          .append(" satellite yet");
  SetContent(Layout::Column(
      {Layout::Row(std::move(controls)), Layout::AlikeCharts(columns, std::move(shown), nothing)}));
}

void frmTimeSeriesSNR::Refresh() {
  ChartWindow::Refresh();
  AxisRange all{0.0, 0.0};  // where the bars stand
  for (const Chart& chart : TChart) {
    for (const int series : {kSNRSeries, kElevationSeries}) {
      const auto range = chart.Series(series).RangeY();
      if (range) all = {std::min(all.low, range->low), std::max(all.high, range->high)};
    }
  }
  if (all.high == all.low) return;
  for (Chart& chart : TChart) chart.Left().SetCompany(all);
}

void frmTimeSeriesSNR::LoadView() {
  ChartWindow::LoadView();
  Arrange_TimeSeries();
}

bool frmTimeSeriesSNR::QueryUnload(CloseReason reason) {
  if (reason != CloseReason::User || records_.Closing) return true;
  return OwningDesktop().Ask({.text = "Are you sure ? All timeseries data will be lost.",
                              .icon = BoxIcon::Question,
                              .buttons = BoxButtons::YesNo,
                              .defaultNo = true}) == Answer::Yes;
}

void frmTimeSeriesSNR::PutAway() {
  ChartWindow::PutAway();
  if (anyOther_()) SetFlag(true);
}

void frmTimeSeriesSNR::UnloadView() {
  if (anyOther_()) SetFlag(true);
}

frmTimeSeriesGSV_SVbySV::frmTimeSeriesGSV_SVbySV(const ChartSurroundings& surroundings, int system,
                                                 int slot)
    : ChartWindow(surroundings, system, {.windowIndex = kFirstSatelliteWindowIndex + slot},
                  {.name = "frmTimeSeriesGSV_SVbySV",
                   .caption = "PRN " + Format(slot, "00") + " Time Series ",
                   .flag = slot <= kLastSatelliteWindow
                               ? std::optional(static_cast<WindowFlag>(
                                     static_cast<int>(WindowFlag::FirstSatellite) + slot))
                               : std::nullopt,
                   .feeds = kFeeds,
                   .part = slot}) {
  MakeSatelliteChart(TChart(0));
  TChart(0).SetText(ChartTitle(slot));
  std::vector<Layout> row = ControlRow();
  row.push_back(Layout::Words("Elevation"));
  row.emplace_back(lblEl);
  row.push_back(Layout::Space());
  SetContent(Layout::Column({Layout::Row(std::move(row)), Layout::Charts(1, {TChart(0)})}));
}

void frmTimeSeriesGSV_SVbySV::LoadView() {
  ChartWindow::LoadView();
  elevation_ = 0;
}

void frmTimeSeriesGSV_SVbySV::Feed(const Satellite& satellite, DateTime moment) {
  elevation_ = satellite.Elevation;
  if (satellite.Elevation == 0) return;
  BeginFeed(moment);
  const auto values = ValuesOf(satellite);
  for (std::size_t i = 0; i < values.size(); ++i) {
    AddChartPoint(Settings(), TChart(0).Series(static_cast<int>(i)), moment, values[i],
                  filters_[i]);
  }
  EndFeed();
}

void frmTimeSeriesGSV_SVbySV::StartAfresh() {
  ChartWindow::StartAfresh();
  filters_ = {};
}

void frmTimeSeriesGSV_SVbySV::Refresh() {
  ChartWindow::Refresh();
  lblEl.SetText(elevation_ > 0 ? PlainText(elevation_) : std::string());
}

void SNRFeeds::FeedAll(int system) {
  const auto loaded = [](const auto& window) { return window->Loaded(); };
  SNRWindows& windows = windows_[system];
  const DateTime moment = records_.MessageTime[system];
  if (std::any_of(windows.ByRow.begin(), windows.ByRow.end(), loaded)) {
    for (const auto& window : windows.ByRow) {
      if (window->Loaded()) window->BeginFeed(moment);
    }
    for (int slot = 1; slot <= kLastSlot; ++slot) FeedSNRSeries(system, slot);
  }
  for (const auto& [slot, window] : windows.BySatellite) {
    if (window->Loaded()) window->Feed(satellites_(system, slot), moment);
  }
}

void SNRFeeds::StartAfresh(int system) {
  for (const auto& window : windows_[system].ByRow) {
    if (window->Loaded()) window->StartAfresh();
  }
  for (const auto& [slot, window] : windows_[system].BySatellite) {
    if (window->Loaded()) window->StartAfresh();
  }
}

void SNRFeeds::FeedSNRSeries(int system, int slot) {
  const Satellite& satellite = satellites_(system, slot);
  const int row = SNRRowOf(slot);
  if (row == 0 || satellite.Elevation == 0) return;
  frmTimeSeriesSNR& window = *windows_[system].ByRow[static_cast<std::size_t>(row - 1)];
  if (!window.Loaded()) return;
  Chart* const chart = window.ChartOf(slot);
  if (chart == nullptr) return;
  // In the order of the series; the charts of GSV keep elevation, azimuth and ratio.
  constexpr auto kFilterChart = std::to_array<std::size_t>({2, 0, 1});
  const auto values = ValuesOf(satellite);
  for (std::size_t i = 0; i < values.size(); ++i) {
    AddChartPoint(
        window.Settings(), chart->Series(static_cast<int>(i)), records_.MessageTime[system],
        values[i],
        series_.FiltersOfSatellites(system)[kFilterChart[i]][static_cast<std::size_t>(slot)]);
  }
  window.EndFeed();
}

}  // namespace fathomline
