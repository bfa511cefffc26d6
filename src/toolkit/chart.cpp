#include "toolkit/chart.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "base/csv.h"
#include "base/datetime.h"
#include "base/numbers.h"
#include "toolkit/window.h"

namespace fathomline {

namespace {

// Half the range around a single value.
constexpr double kAroundValue = 1.0;
constexpr double kAroundMoment = 30.0 / kSecondsPerDay;

}  // namespace

Axis::Axis(const Chart& chart, std::uint64_t& changes, AxisSide side)
    : chart_(chart), changes_(changes), side_(side) {
  state_.visible = side != AxisSide::Right;
}

AxisRange Axis::Range() const {
  if (state_.zoom) return *state_.zoom;
  const bool automaticLow = state_.automatic || state_.automaticMinimum;
  const bool automaticHigh = state_.automatic || state_.automaticMaximum;
  AxisRange range{state_.minimum, state_.maximum};
  if (automaticLow || automaticHigh) {
    const AxisRange worked = chart_.AutomaticRange(side_);
    if (automaticLow) range.low = worked.low;
    if (automaticHigh) range.high = worked.high;
  }
  return range;
}

void Axis::SetEnd(double& end, double value) {
  Change(end, value);
  SetZoom({});
}

void Axis::SetMinimum(double minimum) {
  SetEnd(state_.minimum, minimum);
}

void Axis::SetMaximum(double maximum) {
  SetEnd(state_.maximum, maximum);
}

void Axis::SetAutomatic(bool automatic) {
  if (automatic != state_.automatic) SetZoom({});
  Change(state_.automatic, automatic);
  SetAutomaticMinimum(automatic);
  SetAutomaticMaximum(automatic);
}

Marker::Marker(std::uint64_t& changes, MarkerDesign design) : changes_(changes) {
  state_.design = design;
}

void Marker::SetVisible(bool visible) {
  State state = state_;
  state.design.visible = visible;
  Set(state);
}

void Marker::Set(const State& state) {
  if (state_ == state) return;
  state_ = state;
  ++changes_;
}

Chart::Chart(Parent parent, std::string_view name, std::string_view title)
    : Control(ControlKind::Chart, parent, name, title),
      left_(*this, Changes(), AxisSide::Left),
      right_(*this, Changes(), AxisSide::Right),
      bottom_(*this, Changes(), AxisSide::Bottom) {}

class Series& Chart::AddSeries(SeriesDesign design) {
  if (design.rightAxis) right_.SetVisible(true);
  Touch();
  return series_.emplace_back(Changes(), std::move(design));
}

class Series& Chart::Series(int index) {
  if (index < 0 || index >= SeriesCount()) Raise(FaultNumber::OutOfRange);
  return series_[static_cast<std::size_t>(index)];
}

const class Series& Chart::Series(int index) const {
  return const_cast<Chart*>(this)->Series(index);
}

AxisRange Chart::AutomaticRange(AxisSide side) const {
  std::optional<AxisRange> all;
  const auto include = [&all](const AxisRange& range) {
    all = all ? AxisRange{std::min(all->low, range.low), std::max(all->high, range.high)} : range;
  };
  const auto beside = [side](const class fathomline::Series& series) {
    return side == AxisSide::Bottom || series.RightAxis() == (side == AxisSide::Right);
  };
  const bool anySeen = std::any_of(series_.begin(), series_.end(), [&](const auto& series) {
    return beside(series) && !series.Hidden() && series.RangeY();
  });
  for (const auto& series : series_) {
    if (!beside(series)) continue;
    if (side != AxisSide::Bottom && series.Hidden() && anySeen) continue;
    const auto range = side == AxisSide::Bottom ? series.RangeX() : series.RangeY();
    if (!range) continue;
    include(*range);
    if (side != AxisSide::Bottom && series.Kind() == SeriesKind::Bar) include({0.0, 0.0});
  }
  const Axis& axis = side == AxisSide::Left ? left_ : side == AxisSide::Right ? right_ : bottom_;
  if (const auto company = axis.Company()) include(*company);
  if (!all) return {};
  if (all->low == all->high) {
    const bool time = side == AxisSide::Bottom && !bottom_.LabelFormat().empty();
    const double around = time ? kAroundMoment : kAroundValue;
    return {all->low - around, all->high + around};
  }
  return *all;
}

Marker& Chart::AddMarker(MarkerDesign design) {
  Touch();
  return markers_.emplace_back(Changes(), design);
}

Marker& Chart::Tools(int index) {
  if (index < 0 || index >= ToolCount()) Raise(FaultNumber::OutOfRange);
  return markers_[static_cast<std::size_t>(index)];
}

const Marker& Chart::Tools(int index) const {
  return const_cast<Chart*>(this)->Tools(index);
}

void Chart::WriteCsv(std::ostream& out) const {
  const bool time = !bottom_.LabelFormat().empty();
  const AxisRange shown = bottom_.Range();
  out << (time ? "Time (UTC)" : "X") << ",Series,Value\n";
  for (const auto& series : series_) {
    for (int i = 0; i < series.Count(); ++i) {
      const auto point = series.At(i);
      if (point.null || point.end < shown.low || point.x > shown.high) continue;
      out << (time ? FormatDateTime({point.x}, "yyyy-mm-dd hh:nn:ss") : ExactText(point.x)) << ',';
      WriteCsvCell(out, series.Title());
      out << ',' << ExactText(point.y) << '\n';
    }
  }
}

void Chart::ClickAxis(AxisSide side) {
  OwningWindow().UserAct(*this, [this, side] {
    if (onClickAxis) onClickAxis(side);
  });
}

void Chart::UserToggle(int series) {
  OwningWindow().UserAct(*this, [this, series] {
    auto& toggled = Series(series);
    toggled.SetHidden(!toggled.Hidden());
  });
}

bool Chart::Empty() const {
  return std::none_of(series_.begin(), series_.end(),
                      [](const auto& series) { return series.RangeY().has_value(); });
}

bool Chart::AnyHeldInWindow() const {
  const auto& controls = OwningWindow().Controls();
  return std::any_of(controls.begin(), controls.end(), [](const Control* control) {
    return control->Kind() == ControlKind::Chart && static_cast<const Chart*>(control)->Held();
  });
}

// Both axes get the longer of the ranges wanted, each round its own middle.
Chart::Ranges Chart::EquallyScaled(const Ranges& ranges) const {
  const AxisRange bottom = ranges.bottom.value_or(bottom_.Range());
  const AxisRange left = ranges.left.value_or(left_.Range());
  double half = 0.0;
  if (ranges.bottom) half = std::max(half, (bottom.high - bottom.low) / 2.0);
  if (ranges.left) half = std::max(half, (left.high - left.low) / 2.0);
  const auto round = [half](const AxisRange& range) {
    const double middle = (range.low + range.high) / 2.0;
    return AxisRange{middle - half, middle + half};
  };
  return {round(bottom), round(left), ranges.right};
}

void Chart::Zoom(Ranges ranges, Gesture gesture, const std::function<void()>& handler) {
  OwningWindow().UserAct(*this, [&] {
    if (!AnyHeldInWindow()) steps_.clear();
    if (gesture == Gesture::New || steps_.empty()) BeginStep();
    if (state_.equalScales && (ranges.bottom || ranges.left)) ranges = EquallyScaled(ranges);
    if (ranges.bottom) bottom_.SetZoom(ranges.bottom);
    if (ranges.left) left_.SetZoom(ranges.left);
    if (ranges.right) right_.SetZoom(ranges.right);
    if (handler) handler();
  });
}

void Chart::UserZoom(const Ranges& ranges, Gesture gesture) {
  Zoom(ranges, gesture, onZoom);
}

void Chart::UserScroll(const Ranges& ranges, Gesture gesture) {
  Zoom(ranges, gesture, onScroll);
}

void Chart::UndoStep() {
  Step before;
  if (!steps_.empty()) {
    before = steps_.back();
    steps_.pop_back();
  }
  // An axis that the program has moved since is not led back.
  if (left_.Zoom()) left_.SetZoom(before.left);
  if (right_.Zoom()) right_.SetZoom(before.right);
  if (bottom_.Zoom()) bottom_.SetZoom(before.bottom);
}

void Chart::UserUndoZoom() {
  OwningWindow().UserAct(*this, [this] {
    UndoStep();
    if (onUndoZoom) onUndoZoom();
  });
}

void Chart::UserShowAll() {
  OwningWindow().UserAct(*this, [this] {
    steps_.clear();
    UndoStep();
    if (onUndoZoom) onUndoZoom();
  });
}

void Chart::MatchSteps(const Chart& other) {
  if (other.steps_.empty()) {
    steps_.clear();
    UndoStep();
  }
  while (steps_.size() > other.steps_.size()) UndoStep();
  while (steps_.size() < other.steps_.size()) BeginStep();
}

void Chart::Seal() {
  Control::Seal();
  design_ = state_;
  for (Axis* axis : {&left_, &right_, &bottom_}) axis->design_ = axis->state_;
  sealedSeries_.clear();
  for (const auto& series : series_) sealedSeries_.push_back(series.Design());
  for (Marker& marker : markers_) marker.sealed_ = marker.state_;
  sealedMarkers_ = markers_.size();
}

void Chart::Reset() {
  Control::Reset();
  Change(state_, design_);
  steps_.clear();
  for (Axis* axis : {&left_, &right_, &bottom_}) axis->Change(axis->state_, axis->design_);
  if (series_.size() > sealedSeries_.size() || markers_.size() > sealedMarkers_) Touch();
  while (series_.size() > sealedSeries_.size()) series_.pop_back();
  for (std::size_t i = 0; i < series_.size(); ++i) {
    series_[i].Clear();
    series_[i].SetDesign(sealedSeries_[i]);
    series_[i].SetHidden(false);
  }
  while (markers_.size() > sealedMarkers_) markers_.pop_back();
  for (Marker& marker : markers_) marker.Set(marker.sealed_);
}

}  // namespace fathomline
