#include "charts/chart_window.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/numbers.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

struct SystemLabel {
  std::string_view text;
  Colour colour;
};
constexpr std::array<SystemLabel, kSystems> kSystemLabels = {{{"PRIMARY SYSTEM (blue)", kBlue},
                                                              {"(Green)", kGreen},
                                                              {"(red)", kRed},
                                                              {"(yellow)", kYellow}}};

constexpr std::int32_t kSecondsPerHour = 3600;
constexpr std::int32_t kSecondsPerMinute = 60;

// The seconds after midnight at which the block of the day begins that holds the moment. A block of
// less than an hour begins within the hour, a longer one within the day.
std::int32_t BlockStart(DateTime moment, std::int32_t block) {
  const CalendarTime time = ToCalendar(moment);
  if (block < kSecondsPerHour) {
    const std::int32_t minutes = block / kSecondsPerMinute;
    return kSecondsPerHour * time.hour + block * (time.minute / minutes);
  }
  return block * (time.hour / (block / kSecondsPerHour));
}

// One behind the other with a little of each one visible, since many are opened at once.
WindowPlace PlaceOf(const ChartWindowDesign& design) {
  constexpr int kWidth = 9900;
  constexpr int kControls = 1050;
  constexpr int kChartHeight = 2550;
  constexpr int kStep = 300;
  constexpr int kSteps = 14;
  const int corner = kStep * (design.windowIndex % kSteps);
  return {corner, corner, kWidth, kControls + kChartHeight * design.charts};
}

SystemViewDesign Completed(SystemViewDesign view, const ChartWindowDesign& design) {
  constexpr std::string_view kPrefix = "frm";
  view.placeKey = view.name.substr(kPrefix.size());
  if (view.place == WindowPlace{}) view.place = PlaceOf(design);
  view.icon = ViewIcon::OfSecondarySystems;
  return view;
}

}  // namespace

ChartWindow::ChartWindow(const ChartSurroundings& surroundings, int system,
                         const ChartWindowDesign& design, const SystemViewDesign& view)
    : SystemView(surroundings, system, Completed(view, design)),
      TChart(*this, "TChart", 0, design.charts - 1),
      around_(surroundings),
      chartSettings_(surroundings.tables(system, design.windowIndex)) {
  for (const std::string_view mode : kAxisModes) cmbOption.Add(mode);
  for (const TimeSpan& span : kTimeSpans) cmbInterval.Add(span.text, span.seconds);
  for (const FilterChoice& choice : kFilterChoices) cmbFilter.Add(choice.text, choice.count);
  cmbOption.onChoose = [this] { TakeOption(); };
  cmbInterval.onChoose = [this] { TakeInterval(); };
  cmbFilter.onChoose = [this] { TakeFilter(); };
  for (Chart& chart : TChart) {
    chart.onClickAxis = [this, &chart](AxisSide side) { ClickAxis(chart, side); };
    chart.onZoom = chart.onScroll = chart.onUndoZoom = [this, &chart] { FollowZoom(chart); };
  }
  const SystemLabel& label = kSystemLabels.at(static_cast<std::size_t>(Index() - 1));
  lblSystemColor.SetText(label.text);
  lblSystemColor.SetColour(label.colour);
}

void ChartWindow::LoadView() {
  for (Choices* combo : {&cmbOption, &cmbInterval, &cmbFilter}) combo->Choose(0);
}

bool ChartWindow::QueryUnload(CloseReason reason) {
  if (reason != CloseReason::User || records_.Closing) return true;
  ChartWindow::PutAway();
  return false;
}

void ChartWindow::PutAway() {
  Hide();
  SetFlag(false);
}

std::vector<Layout> ChartWindow::ControlRow() {
  return {Label1, cmbOption, cmbInterval, Label2, cmbFilter, lblFilter, lblSystemColor};
}

void ChartWindow::TakeOption() {
  Settings().TimeAxisMode = cmbOption.Text();
  const bool automatic = Settings().TimeAxisMode == kAxisAutomatic;
  cmbInterval.SetVisible(!automatic && Settings().TimeAxisMode != kAxisManual);
  for (Chart& chart : TChart) {
    Axis& bottom = chart.Bottom();
    // The axis stays where it is until somebody moves it.
    if (!automatic && bottom.Automatic()) {
      const AxisRange shown = bottom.Range();
      bottom.SetAutomatic(false);
      bottom.SetMinimum(shown.low);
      bottom.SetMaximum(shown.high);
    }
    bottom.SetAutomatic(automatic);
  }
  SetAutoFilterFromWindow();
}

void ChartWindow::TakeInterval() {
  Settings().TimeWindow = cmbInterval.EntryData(cmbInterval.Choice());
  for (Chart& chart : TChart) chart.Bottom().SetLabelFormat("hh:nn");
  SetAutoFilterFromWindow();
}

void ChartWindow::TakeFilter() {
  const auto count = static_cast<std::int16_t>(cmbFilter.EntryData(cmbFilter.Choice()));
  Settings().AutoFilter = count == 0;
  Settings().FilterCount = count;
  lblFilter.SetVisible(count != kFilterOff);
  if (count != kFilterOff) lblFilter.SetText(PlainText(count));
  SetAutoFilterFromWindow();
}

void ChartWindow::ShowFilterCount() {
  lblFilter.SetText(PlainText(Settings().FilterCount));
}

void ChartWindow::SetAutoFilterFromWindow() {
  if (Settings().TimeAxisMode == kAxisAutomatic || !Settings().AutoFilter) return;
  Settings().FilterCount = FilterCountFromWindow(Settings().TimeWindow);
  ShowFilterCount();
}

void ChartWindow::SetAutoFilterFromCount() {
  Settings().FilterCount = FilterCountFromPoints(TChart(0).Series(0).Count());
  if (ReadNumber(lblFilter.Text()) != Settings().FilterCount) ShowFilterCount();
}

void ChartWindow::Refresh() {
  if (ChartCount() == 1) return;
  std::optional<AxisRange> all;
  for (const Chart& chart : TChart) {
    for (int i = 0; i < chart.SeriesCount(); ++i) {
      const auto range = chart.Series(i).RangeX();
      if (!range) continue;
      all = all ? AxisRange{std::min(all->low, range->low), std::max(all->high, range->high)}
                : *range;
    }
  }
  for (Chart& chart : TChart) chart.Bottom().SetCompany(all);
}

void ChartWindow::StartAfresh() {
  for (Chart& chart : TChart) {
    for (int i = 0; i < chart.SeriesCount(); ++i) chart.Series(i).Clear();
  }
}

void ChartWindow::BeginFeed(DateTime moment) {
  // Each series keeps to its own day as it is fed; this is for those that are fed no more, and for
  // jumps of the time.
  constexpr double kSweepAfter = 60.0 / kSecondsPerDay;
  if (!(moment >= swept_) || moment.days - swept_.days > kSweepAfter) {
    swept_ = moment;
    for (Chart& chart : TChart) {
      for (int i = 0; i < chart.SeriesCount(); ++i) KeepOneDayAround(chart.Series(i), moment);
    }
  }
  const std::string& mode = Settings().TimeAxisMode;
  if (mode != kAxisManual && mode != kAxisAutomatic) SetChartTimeWindow(moment);
}

void ChartWindow::EndFeed() {
  if (Settings().AutoFilter && Settings().TimeAxisMode == kAxisAutomatic) SetAutoFilterFromCount();
}

void ChartWindow::SetChartTimeWindow(DateTime moment) {
  Axis& axis = TChart(0).Bottom();
  if (cmbOption.Text() == kAxisScrolling) {
    const std::int32_t seconds = cmbInterval.EntryData(cmbInterval.Choice());
    axis.SetMaximum(moment.days);
    axis.SetMinimum(moment.days - seconds / kSecondsPerDay);
  } else if (cmbOption.Text() == kAxisFixed) {
    const std::int32_t block = Settings().TimeWindow;
    const double start = records_.MessageDate[Index()].days +
                         BlockStart(records_.MessageTime[Index()], block) / kSecondsPerDay;
    axis.SetMinimum(start);
    axis.SetMaximum(start + block / kSecondsPerDay);
  } else {
    return;
  }
  CopyBottomAxis();
}

void ChartWindow::CopyBottomAxis() {
  if (ChartCount() == 1) return;
  const Axis& first = TChart(0).Bottom();
  const AxisRange range = first.Range();
  for (Chart& chart : TChart) {
    Axis& bottom = chart.Bottom();
    if (&bottom == &first) continue;
    if (!first.Zoom()) {
      bottom.SetMaximum(range.high);
      bottom.SetMinimum(range.low);
    }
    bottom.SetZoom(first.Zoom());
  }
}

void ChartWindow::FollowZoom(Chart& chart) {
  for (Chart& other : TChart) {
    if (&other != &chart) other.MatchSteps(chart);
  }
  TChart(0).Bottom().SetZoom(chart.Bottom().Zoom());
  CopyBottomAxis();
}

void ChartWindow::ClickAxis(Chart& chart, AxisSide side) {
  const AxisTarget target{this, &TChart, &chart, side};
  if (side != AxisSide::Bottom) {
    Around().yAxis.Open(target);
  } else if (cmbOption.Text() == kAxisManual) {
    Around().xAxis.Open(target);
  } else {
    OwningDesktop().Say("Time Axis has to be selected as manual to adjust Start/End time");
  }
}

}  // namespace fathomline
