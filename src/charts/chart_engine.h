// How samples become points: the peak filter, the NoValue rule, the limit of 24 hours, and the bars
// that stand for runs of equal values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/datetime.h"
#include "charts/chart_tables.h"
#include "toolkit/series.h"

namespace fathomline {

// The block of samples that becomes the next point of a series.
struct SeriesFilter {
  double Value = 0.0;
  std::int16_t Count = 0;
  bool KeepSmallest = false;  // the smallest magnitude instead of the largest
  bool KeepLast = false;      // the latest value instead of an extreme
  bool Bypass = false;
};

// Which of two values a block keeps, by magnitude. The held one wins a tie.
double PickAbsExtreme(double value, double held, bool keepSmallest);

// A fast line takes no colour of its own for a point.
enum class PlotKind : std::uint8_t { FastLine, Line, Bar, Gantt };

struct PlotOptions {
  PlotKind kind = PlotKind::Line;
  bool bypass = false;
  Colour colour = kSeriesColour;
};

// Adds one sample; returns whether it became a point. Of a filtered series every FilterCount-th
// sample does, with the value of the largest magnitude since the last point. NoValue takes part in
// that comparison, so it usually wins its block, which then draws nothing. Points more than 24
// hours away from the newest one go, the oldest first.
bool AddChartPoint(const ChartSettings& settings, Series& series, DateTime x, double value,
                   SeriesFilter& filter, const PlotOptions& options = {});

// Deletes the oldest points as long as they are more than 24 hours away from the newest one.
void KeepOneDay(Series& series);

// Takes away whatever lies more than a day before or behind the moment.
void KeepOneDayAround(Series& series, DateTime moment);

// The runs of equal values of the Gantt series of all systems, by the titles of the series.
class GanttTable {
 public:
  static constexpr std::size_t kSlots = 6;

  // A run of two samples and more draws a bar from its start to each further sample. NoValue, 0 and
  // a step back in time end a run. A series that finds no slot draws nothing.
  void AddGanttPoint(int system, Series& series, DateTime x, std::int32_t value);

  // Lets the next sample of the system begin with an empty table.
  void RaiseGanttReset(int system) { ganttReset_[system] = true; }
  // Ends the runs of the system.
  void EndRuns(int system) { slots_[system] = {}; }

 private:
  struct GanttSlot {
    std::string Title;
    DateTime Start;
    DateTime Last;  // of the samples of the run
    std::int32_t LastValue = 0;
    bool Open = false;
  };

  PerSystem<std::array<GanttSlot, kSlots>> slots_;
  PerSystem<bool> ganttReset_;
};

}  // namespace fathomline
