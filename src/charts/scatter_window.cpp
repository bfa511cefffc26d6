#include "charts/scatter_window.h"

#include <algorithm>
#include <cmath>

#include "base/format.h"
#include "base/numbers.h"
#include "decoding/coordinate_text.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr WindowPlace kPlace{0, 0, 7200, 7800};

constexpr std::array<std::string_view, kSystems> kTitles = {
    "PRIMARY SYSTEM (blue)", "Secondary system 1 (Green)", "Secondary system 2 (red)",
    "Secondary system 3 (yellow)"};

// The lower edge of the last bin of a statistic, which holds everything beyond.
constexpr float kBeyondBins = 10.0F;
constexpr std::string_view kFirstRange = " +/- 1.0 m";

}  // namespace

frmXYAxis::frmXYAxis(Desktop& desktop, ScatterScales& scales)
    : Window(desktop, {.name = "frmXYAxis",
                       .caption = "Scale",
                       .place = {1500, 1500, 4200, 2100},
                       .style = WindowStyle::Dialog,
                       .resizable = false}),
      scales_(scales) {
  cmdOk.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(Layout::Column({chkAutomatic, Layout::Form({{"Max value +/-", txtMax}}),
                             Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmXYAxis::Open(const frmScatter& scatter) {
  scatter_ = &scatter;
  OwningDesktop().ShowModal(*this);
}

void frmXYAxis::Load() {
  // Shown on its own it has no plot to tell of.
  if (scatter_ == nullptr) return;
  const ScatterScale& scale = scales_[scatter_->Index()];
  chkAutomatic.SetChecked(scale.ScatterAuto);
  txtMax.SetText(Format(scale.ScatterAuto ? scatter_->TChart1.Left().Maximum()
                                          : static_cast<double>(scale.ScatterRange),
                        "0.0"));
}

void frmXYAxis::Accept() {
  if (scatter_ == nullptr) {
    Close();
    return;
  }
  ScatterScale& scale = scales_[scatter_->Index()];
  if (!chkAutomatic.Checked()) {
    const float range = ToSingle(NumberFromText(txtMax.Text()));
    if (range <= 0.0F) {
      OwningDesktop().Say("Max value must be above 0. Try again!");
      return;
    }
    scale.ScatterRange = range;
  }
  scale.ScatterAuto = chkAutomatic.Checked();
  Close();
}

frmScatter::frmScatter(const ViewSurroundings& surroundings, int system,
                       const Statistics& statistics, ScatterScales& scales, frmXYAxis& dialog)
    : SystemView(surroundings, system,
                 {.name = "frmScatter",
                  .caption = "Scatter plot ",
                  .place = kPlace,
                  .placeKey = "Scatter",
                  .icon = ViewIcon::OfSecondarySystems,
                  .flag = WindowFlag::Scatter,
                  .feeds = kPositionTypes}),
      statistics_(statistics),
      scales_(scales) {
  points_ = &TChart1.AddSeries(
      {.title = "Fixes", .kind = SeriesKind::Points, .colour = SystemColour(system)});
  TChart1.AddSeries({.title = "Dummy for extra axis", .kind = SeriesKind::Points});
  TChart1.SetLegend(Legend::None);
  TChart1.SetEqualScales(true);
  TChart1.SetWhyEmpty("No fix yet");
  TChart1.SetText(kTitles.at(static_cast<std::size_t>(system - 1)));
  for (Axis* axis : {&TChart1.Left(), &TChart1.Bottom()}) {
    axis->SetAutomatic(false);
    axis->SetMinimum(-1.0);
  }
  for (const MarkerKind line : {MarkerKind::VerticalLine, MarkerKind::HorizontalLine}) {
    TChart1.AddMarker({.kind = line, .colour = kNavy, .dashed = true});
  }
  for (const Colour colour : {kDarkGreen, kDarkRed}) {
    TChart1.AddMarker({.kind = MarkerKind::Circle, .colour = colour, .visible = false});
  }
  // Both axes have one scale, so it does not matter which one is clicked.
  TChart1.onClickAxis = [this, &dialog](AxisSide) { dialog.Open(*this); };
  TChart1.onZoom = TChart1.onScroll = TChart1.onUndoZoom = [this] { NameAxes(); };
  for (MenuItem* const item : {&mnuCircle68, &mnuCircle95}) {
    item->onClick = [this, item] {
      item->SetChecked(!item->Checked());
      Refresh();
    };
  }
  SetContent(TChart1);
}

void frmScatter::PutAway() {
  Hide();
  SetFlag(false);
}

void frmScatter::LoadView() {
  range_ = kFirstRange;
  NameAxes();
  scales_[Index()].ScatterShownRange = 0.0F;
  latest_ = nullptr;
}

void frmScatter::UpdateScatter(SentenceType type) {
  const PositionStats* const position = FindPositionStats(type);
  if (position == nullptr || position->dN(statistics_[Index()]).Stat.NoValueSeen) return;
  const Deviations& present = statistics_[Index()].Present;
  latest_ = position;
  AddScatterPoint(present.dN, present.dE);
}

void frmScatter::AddScatterPoint(float deltaLat, float deltaLon) {
  constexpr float kMissing = NoValue;
  if (deltaLat == kMissing || deltaLon == kMissing) return;
  const float range = HalfRange();
  if (range != scales_[Index()].ScatterShownRange) ShowRange(range);
  points_->Add(static_cast<double>(deltaLon), deltaLat, SystemColour(Index()));
  TChart1.Tools(kEastLine).SetValue(static_cast<double>(deltaLon));
  TChart1.Tools(kNorthLine).SetValue(static_cast<double>(deltaLat));
}

float frmScatter::HalfRange() const {
  const ScatterScale& scale = scales_[Index()];
  if (!scale.ScatterAuto) return scale.ScatterRange;
  double furthest = 0.0;
  for (const auto& range : {points_->RangeX(), points_->RangeY()}) {
    if (range) furthest = std::max({furthest, std::abs(range->low), std::abs(range->high)});
  }
  return ToSingle(std::floor(furthest) + 1.0);
}

void frmScatter::ShowRange(float range) {
  for (Axis* axis : {&TChart1.Left(), &TChart1.Bottom()}) {
    const auto zoom = axis->Zoom();
    axis->SetMaximum(static_cast<double>(range));
    axis->SetMinimum(static_cast<double>(-range));
    // Only a scale that somebody has chosen undoes what the user looks at.
    if (scales_[Index()].ScatterAuto) axis->SetZoom(zoom);
  }
  const bool whole = range == std::floor(range);
  range_ = whole ? " +/-" + NumberText(range) : " +/- " + Format(static_cast<double>(range), "0.0");
  range_ += " m";
  NameAxes();
  scales_[Index()].ScatterShownRange = range;
}

// The range that was set, or what the user has zoomed to.
void frmScatter::NameAxes() {
  const auto title = [this](std::string_view word, const Axis& axis) {
    std::string text(word);
    if (!axis.Zoom()) return text + range_;
    const AxisRange shown = axis.Range();
    const std::string_view picture = shown.high - shown.low < 2.0 ? "0.00" : "0.0";
    return text + " " + Format(shown.low, picture) + " to " + Format(shown.high, picture) + " m";
  };
  TChart1.Left().SetTitle(title("Northing", TChart1.Left()));
  TChart1.Bottom().SetTitle(title("Easting", TChart1.Bottom()));
}

void frmScatter::ShowCircle(MenuItem& item, Tool circle, float radius) {
  constexpr std::string_view kBeyond = " (> 10 m)";
  const bool beyond = radius >= kBeyondBins;
  std::string text = item.Text();
  if (const auto at = text.find(kBeyond); at != std::string::npos) text.resize(at);
  item.SetText(beyond ? text.append(kBeyond) : text);
  TChart1.Tools(circle).SetValue(static_cast<double>(radius));
  TChart1.Tools(circle).SetVisible(item.Checked() && !beyond);
}

void frmScatter::Refresh() {
  Percentiles figures;
  if (latest_ != nullptr && (mnuCircle68.Checked() || mnuCircle95.Checked())) {
    figures = latest_->dRad(statistics_[Index()]).ComputePercentiles();
  }
  ShowCircle(mnuCircle68, kCircle68, figures.P68);
  ShowCircle(mnuCircle95, kCircle95, figures.P95);
}

}  // namespace fathomline
