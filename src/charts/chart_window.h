// What all windows of charts over time have in common: the choice of the time axis and of the
// filter, and charts that keep one time span.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/statistics.h"
#include "base/settings.h"
#include "charts/axis_dialogs.h"
#include "charts/chart_engine.h"
#include "charts/chart_tables.h"
#include "records/records.h"
#include "toolkit/chart.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

// What the windows of this room work on. All of it outlives them.
struct ChartSurroundings {
  Desktop& desktop;
  Records& records;
  const Statistics& statistics;
  SettingsStore& settings;
  ChartTables& tables;
  frmYAxis& yAxis;
  frmXAxis& xAxis;
};

// The system's own colour for the icons of secondary systems, none for the primary one.
std::optional<Colour> SystemIcon(int system);

// What tells a window of charts from the others.
struct ChartWindowDesign {
  std::string_view name;
  std::string caption;  // in front of the number and the name of the system
  int windowIndex = 0;
  int charts = 1;
  // Set while the window is shown. None: where the system has no flag for it.
  std::optional<WindowFlag> flag = {};
  int part = 0;
};

// A close request of the user hides the window; it goes on plotting.
class ChartWindow : public Window {
 public:
  // Loads it without showing it.
  void LoadHidden();
  // Shows it and says so to its system.
  void ShowWindow();

  int ChartCount() const { return TChart.Last() + 1; }
  // Where the settings of the window stand in ChartTables.
  const ChartSettings& Settings() const { return chartSettings_; }
  ChartSettings& Settings() { return chartSettings_; }

  // Moves the time axis of the first chart so that it fits the moment, and the others after it;
  // for "Scrolling time" and "Fixed time" only.
  void SetChartTimeWindow(DateTime moment);
  // Gives every chart the time axis of the first one, a zoom of the user included.
  void CopyBottomAxis();

  // Work out the filter where it is automatic: from the points drawn, which follows the data in
  // "Automatic", and from the time span in the other modes.
  void SetAutoFilterFromCount();
  void SetAutoFilterFromWindow();

  // The steps around each feed: the time axis before the points, the filter after them.
  void BeginFeed(DateTime moment);
  void EndFeed();

  Label Label1{*this, "Label1", "Time Axis"};
  Choices cmbOption{*this, "cmbOption", ChoicesKind::Combo};
  Choices cmbInterval{*this, "cmbInterval", ChoicesKind::Combo};
  Label Label2{*this, "Label2", "Filter"};
  Choices cmbFilter{*this, "cmbFilter", ChoicesKind::Combo};
  Label lblFilter{*this, "lblFilter", "0"};
  Label lblSystemColor{*this, "lblSystemColor", "PRIMARY SYSTEM (blue)"};
  ControlArray<Chart> TChart;

 protected:
  ChartWindow(const ChartSurroundings& surroundings, int system, const ChartWindowDesign& design);

  // Sets the combo boxes on their first entries.
  void Load() override;
  bool QueryUnload(CloseReason reason) override;
  void Unload() override;
  // The key of its place in the settings, and what stands behind the measure in it.
  virtual std::string PlaceKey() const;
  virtual std::string PlaceSuffix() const;
  virtual WindowPlace DefaultPlace() const;
  void SetFlag(bool shown);

  const ChartSurroundings& Around() const { return around_; }
  // The combo boxes and what stands beside them, in one row.
  std::vector<Layout> ControlRow();

 private:
  void TakeOption();
  void TakeInterval();
  void TakeFilter();
  void ClickAxis(Chart& chart, AxisSide side);
  void FollowZoom(Chart& chart);
  void ShowFilterCount();

  ChartSurroundings around_;
  ChartWindowDesign design_;
  ChartSettings& chartSettings_;
};

}  // namespace fathomline
