// What all windows of charts over time have in common: the choice of the time axis and of the
// filter, and charts that keep one time span.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/statistics.h"
#include "charts/axis_dialogs.h"
#include "charts/chart_engine.h"
#include "charts/chart_tables.h"
#include "toolkit/chart.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "views/system_view.h"

namespace fathomline {

// What the windows of this room work on. All of it outlives them.
struct ChartSurroundings : ViewSurroundings {
  const Statistics& statistics;
  ChartTables& tables;
  frmYAxis& yAxis;
  frmXAxis& xAxis;
};

// What tells a window of charts from the others.
struct ChartWindowDesign {
  int windowIndex = 0;
  int charts = 1;
};

// A close request of the user hides the window; it goes on plotting.
class ChartWindow : public SystemView {
 public:
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

  // The steps around each feed: the time axis before the points, the filter after them. Points that
  // lie more than a day from the moment leave all charts of the window.
  void BeginFeed(DateTime moment);
  void EndFeed();
  // Takes all points away; choices, zooms and places stay.
  virtual void StartAfresh();
  // Lets charts whose time axes are automatic show one span.
  void Refresh() override;

  // It goes on plotting.
  void PutAway() override;

  Label Label1{*this, "Label1", "Time Axis"};
  Choices cmbOption{*this, "cmbOption", ChoicesKind::Combo};
  Choices cmbInterval{*this, "cmbInterval", ChoicesKind::Combo};
  Label Label2{*this, "Label2", "Filter"};
  Choices cmbFilter{*this, "cmbFilter", ChoicesKind::Combo};
  Label lblFilter{*this, "lblFilter", "0"};
  Label lblSystemColor{*this, "lblSystemColor", "PRIMARY SYSTEM (blue)"};
  ControlArray<Chart> TChart;

 protected:
  // A view without a place of its own gets one by its index and the number of its charts, and the
  // key of its class.
  ChartWindow(const ChartSurroundings& surroundings, int system, const ChartWindowDesign& design,
              const SystemViewDesign& view);

  // Sets the combo boxes on their first entries.
  void LoadView() override;
  bool QueryUnload(CloseReason reason) override;

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
  ChartSettings& chartSettings_;
  DateTime swept_;  // when points were last looked through for their age
};

}  // namespace fathomline
