#include "charts/chart_engine.h"

#include <cmath>

#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr std::int64_t kLongestSeconds = 86400;

}  // namespace

double PickAbsExtreme(double value, double held, bool keepSmallest) {
  const bool better =
      keepSmallest ? std::abs(value) < std::abs(held) : std::abs(value) > std::abs(held);
  return better ? value : held;
}

bool AddChartPoint(const ChartSettings& settings, Series& series, DateTime x, double value,
                   SeriesFilter& filter, const PlotOptions& options) {
  if (settings.FilterCount > 0 && !filter.Bypass && !options.bypass) {
    if (filter.Count == 0) {
      filter.Value = value;
      filter.Count = 1;
      return false;
    }
    filter.Value =
        filter.KeepLast ? value : PickAbsExtreme(value, filter.Value, filter.KeepSmallest);
    if (++filter.Count < settings.FilterCount) return false;
    filter.Count = 0;
  } else {
    filter.Value = value;
  }
  if (filter.Value == NoValue) return false;
  series.Add(x.days, static_cast<float>(filter.Value),
             options.kind == PlotKind::FastLine ? kSeriesColour : options.colour);
  KeepOneDay(series);
  return true;
}

void KeepOneDay(Series& series) {
  // Rounding to whole seconds cannot lift a span of less than a day above the limit, whatever a
  // double leaves of its microseconds.
  constexpr double kSurelyShort = 1.0 - 0.001 / kSecondsPerDay;
  if (series.Count() == 0) return;
  while (std::abs(series.LastX() - series.FirstX()) > kSurelyShort &&
         std::abs(DifferenceInSeconds({series.FirstX()}, {series.LastX()})) > kLongestSeconds) {
    series.DeleteOldest();
  }
}

void KeepOneDayAround(Series& series, DateTime moment) {
  // Of a moment whose own series keeps exactly a day of whole seconds.
  constexpr double kDay = (kLongestSeconds + 1) / kSecondsPerDay;
  series.KeepWithin({moment.days - kDay, moment.days + kDay});
}

void GanttTable::AddGanttPoint(int system, Series& series, DateTime x, std::int32_t value) {
  if (ganttReset_[system]) {
    slots_ = {};
    ganttReset_[system] = false;
  }
  GanttSlot* slot = nullptr;
  for (GanttSlot& candidate : slots_[system]) {
    if (candidate.Title.empty()) candidate.Title = series.Title();
    if (candidate.Title != series.Title()) continue;
    slot = &candidate;
    break;
  }
  if (slot == nullptr) return;
  if (value == NoValue || value == 0) {
    slot->LastValue = value;
  } else if (value != slot->LastValue || x < slot->Last) {
    // No bar runs backwards in time.
    slot->LastValue = value;
    slot->Start = slot->Last = x;
    slot->Open = true;
  } else {
    slot->Last = x;
    if (series.Count() > 0 && !slot->Open) series.Delete(series.Count() - 1);
    series.AddGantt(slot->Start.days, x.days, static_cast<float>(value));
    slot->Open = true;
  }
}

}  // namespace fathomline
