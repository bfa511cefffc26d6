#include "charts/chart_window.h"

#include <array>
#include <string>

#include "base/numbers.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"

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

}  // namespace

std::optional<Colour> SystemIcon(int system) {
  if (system == 1) return {};
  return SystemColour(system);
}

ChartWindow::ChartWindow(const ChartSurroundings& surroundings, int system,
                         const ChartWindowDesign& design)
    : Window(surroundings.desktop, {.name = std::string(design.name),
                                    .index = system,
                                    .caption = design.caption,
                                    .part = design.part}),
      TChart(*this, "TChart", 0, design.charts - 1),
      around_(surroundings),
      design_(design),
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

void ChartWindow::LoadHidden() {
  OwningDesktop().Load(*this);
  SetFlag(false);
}

void ChartWindow::ShowWindow() {
  Show();
  SetFlag(true);
}

void ChartWindow::SetFlag(bool shown) {
  if (design_.flag) Around().records.SystemSetups[Index()][*design_.flag] = shown;
}

void ChartWindow::Load() {
  SetCaption(design_.caption + PlainText(Index()) + " - " +
             Around().records.CommSetups[Index()].Name);
  SetIconColour(SystemIcon(Index()));
  ResumeNext(
      [&] { RestorePlace(*this, Around().settings, PlaceKey(), DefaultPlace(), PlaceSuffix()); });
  SetFlag(true);
  for (Choices* combo : {&cmbOption, &cmbInterval, &cmbFilter}) combo->Choose(0);
}

bool ChartWindow::QueryUnload(CloseReason reason) {
  if (reason != CloseReason::User || Around().records.Closing) return true;
  Hide();
  SetFlag(false);
  return false;
}

void ChartWindow::Unload() {
  SetFlag(false);
  ResumeNext([&] { SavePlace(*this, Around().settings, PlaceKey(), PlaceSuffix()); });
}

std::string ChartWindow::PlaceKey() const {
  constexpr std::string_view kPrefix = "frm";
  return Name().substr(kPrefix.size());
}

std::string ChartWindow::PlaceSuffix() const {
  return PlainText(Index());
}

// One behind the other with a little of each one visible, since many are opened at once.
WindowPlace ChartWindow::DefaultPlace() const {
  constexpr int kWidth = 9900;
  constexpr int kControls = 1050;
  constexpr int kChartHeight = 2550;
  constexpr int kStep = 300;
  constexpr int kSteps = 14;
  const int corner = kStep * (design_.windowIndex % kSteps);
  return {corner, corner, kWidth, kControls + kChartHeight * ChartCount()};
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

void ChartWindow::BeginFeed(DateTime moment) {
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
    const double start = Around().records.MessageDate[Index()].days +
                         BlockStart(Around().records.MessageTime[Index()], block) / kSecondsPerDay;
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
