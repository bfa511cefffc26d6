#include "charts/time_series_window.h"

#include <cmath>

#include "base/format.h"
#include "base/look.h"
#include "charts/satellite_table.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr int kDGPSChart = 3;

std::string NothingYet(SentenceType type) {
  return "No " + std::string(ToText(type)) + " yet";
}

// Of the title of an axis: what stands in brackets, or the whole where it is a unit.
std::string UnitIn(std::string_view title) {
  if (const auto open = title.find('('); open != std::string_view::npos) {
    return std::string(title.substr(open + 1, title.find(')') - open - 1));
  }
  const bool unit = title.find(',') == std::string_view::npos && title != "PRN" && title != "dop";
  return std::string(unit ? title : std::string_view());
}

bool WholeValues(FeedRule rule) {
  return rule == FeedRule::SatelliteCount || rule == FeedRule::Quality ||
         rule == FeedRule::Station || rule == FeedRule::FixType;
}

}  // namespace

void PointFigures::Add(double value) {
  count_ += 1.0;
  const double difference = value - mean_;
  mean_ += difference / count_;
  squares_ += difference * (value - mean_);
}

double PointFigures::Deviation() const {
  return count_ > 1.0 ? std::sqrt(squares_ / (count_ - 1.0)) : 0.0;
}

frmTimeSeries::frmTimeSeries(const ChartSurroundings& surroundings, int system,
                             const TimeSeriesClass& design, GanttTable* gantt)
    : ChartWindow(surroundings, system,
                  {.windowIndex = design.windowIndex, .charts = design.charts},
                  {.name = std::string(design.name),
                   .caption = std::string(design.caption),
                   .flag = design.flag,
                   .feeds = {&design.type, 1}}),
      class_(design),
      gantt_(gantt) {
  std::vector<Layout> row = ControlRow();
  if (gantt_ != nullptr) {
    chkDGPS = std::make_unique<CheckBox>(*this, "chkDGPS", "Plot DGPS data(chart4)", true);
    chkDGPS->onClick = [this] { ClickDGPS(); };
    row.emplace_back(*chkDGPS);
  }
  if (Type() == SentenceType::GGA) {
    chkAgeOff = std::make_unique<CheckBox>(*this, "chkAgeOff", "Age off");
    lblTest = std::make_unique<Label>(*this, "lblTest");
    row.emplace_back(*chkAgeOff);
    row.emplace_back(*lblTest);
  }
  constexpr std::string_view kFurtherDatum = "-99";
  if (Type() == SentenceType::GSA) cmbFilter.SetTag(kFurtherDatum);
  row.push_back(Layout::Space());

  MakeCharts();
  MakeMarkers();
  SetContent(Layout::Column(
      {Layout::Row(std::move(row)), Layout::Charts(1, {TChart.begin(), TChart.end()})}));
}

void frmTimeSeries::MakeCharts() {
  for (const TimeSeriesChart& design : kTimeSeriesCharts) {
    if (design.type != Type()) continue;
    Chart& chart = TChart(design.chart);
    chart.Left().SetTitle(design.left);
    chart.Right().SetTitle(design.right);
    chart.SetNote(design.note);
    chart.SetWhyEmpty(Type() == SentenceType::GNS && design.chart == kDGPSChart
                          ? "No differential data yet"
                          : NothingYet(Type()));
  }
  for (std::size_t i = 0; i < kTimeSeriesRows.size(); ++i) {
    const TimeSeriesRow& row = kTimeSeriesRows[i];
    if (row.type != Type()) continue;
    Chart& chart = TChart(row.chart);
    const bool satellites = row.chart >= FirstSatelliteChart();
    const std::string& axis = (row.rightAxis ? chart.Right() : chart.Left()).Title();
    const bool whole = satellites || WholeValues(row.rule);
    std::string unit =
        row.unit.empty() && row.rule != FeedRule::Station ? UnitIn(axis) : std::string(row.unit);
    const bool bars = row.kind == SeriesKind::Bar;  // of counts and codes
    if (bars || WholeValues(row.rule)) unit.clear();
    Series& series = chart.AddSeries({.title = std::string(row.title),
                                      .kind = row.kind,
                                      .colour = row.colour,
                                      .rightAxis = row.rightAxis,
                                      .unit = std::move(unit),
                                      .whole = whole,
                                      .satellite = satellites && !bars ? 0 : -1,
                                      .steps = satellites && bars,
                                      .digits = row.rule == FeedRule::Quality});
    plots_.push_back({&row, &series, FilterRow(i)});
  }
  for (int i = FirstSatelliteChart(); i < ChartCount(); ++i) {
    TChart(i).SetLegend(Legend::AtLineEnds);
  }
}

void frmTimeSeries::MakeMarkers() {
  Chart& chart = TChart(0);
  if (gantt_ != nullptr) {
    chart.AddMarker({.kind = MarkerKind::HorizontalLine, .colour = kDarkRed});
    chart.AddMarker({.kind = MarkerKind::HorizontalBand, .colour = look::kDeviationBand});
    // Only ever widened by the program.
    TChart(kDGPSChart).Right().SetAutomatic(false);
  } else if (Type() == SentenceType::HDT) {
    chart.AddMarker({.kind = MarkerKind::HorizontalLine, .colour = kBlack, .dashed = true});
    chart.AddMarker({.kind = MarkerKind::HorizontalBand, .colour = look::kDeviationBand});
    chart.AddMarker({.kind = MarkerKind::HorizontalLine, .colour = kDarkRed});
    chart.Right().SetAutomatic(false);
    chart.Right().SetVisible(true);
  }
}

int frmTimeSeries::FirstSatelliteChart() const {
  if (Type() == SentenceType::GSV) return 0;
  return Type() == SentenceType::GSA ? 1 : ChartCount();
}

void frmTimeSeries::AddSatellites() {
  for (int i = FirstSatelliteChart(); i < ChartCount(); ++i) {
    for (int slot = 1; slot <= kLastSlot; ++slot) {
      TChart(i).AddSeries({.title = Format(slot, "00"),
                           .colour = SatelliteColour(slot),
                           .unit = UnitIn(TChart(i).Left().Title()),
                           .whole = true,
                           .satellite = slot});
    }
  }
}

void frmTimeSeries::LoadView() {
  ChartWindow::LoadView();
  AddSatellites();
  figures_ = {};
  if (!chkDGPS) return;
  chkDGPS->SetChecked(!records_.NotDisplayDGPS[Index()]);
  TChart(kDGPSChart).SetVisible(chkDGPS->Checked());
}

void frmTimeSeries::UnloadView() {
  if (gantt_ != nullptr) gantt_->RaiseGanttReset(Index());
}

void frmTimeSeries::Refresh() {
  ChartWindow::Refresh();
  if (Type() != SentenceType::GSV) return;
  const bool fed = Around().records.SystemSetups[Index()][WindowFlag::Skyplot];
  for (Chart& chart : TChart) {
    chart.SetWhyEmpty(fed ? NothingYet(Type()) : "Fed while the sky plot is open");
  }
}

void frmTimeSeries::StartAfresh() {
  ChartWindow::StartAfresh();
  figures_ = {};
  if (gantt_ == nullptr) return;
  gantt_->EndRuns(Index());
  Axis& stations = TChart(kDGPSChart).Right();
  stations.SetMaximum(1.0);
  stations.SetMinimum(0.0);
}

void frmTimeSeries::ClickDGPS() {
  if (State() == WindowState::Maximised) {
    chkDGPS->SetChecked(!chkDGPS->Checked());
    OwningDesktop().Say("No effect as long as form is maximized!");
    return;
  }
  records_.NotDisplayDGPS[Index()] = !chkDGPS->Checked();
  TChart(kDGPSChart).SetVisible(chkDGPS->Checked());
}

}  // namespace fathomline
