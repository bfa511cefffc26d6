// The view of a chart: axes, ticks and mouse by QCustomPlot, everything else in chart_parts.
#pragma once

#include <QPoint>
#include <vector>

#include "faces/qt/control_view.h"
#include "toolkit/chart.h"

class QCPAxis;

namespace fathomline {

class LegendStrip;
class TimeTicker;

class ChartView : public ControlView {
 public:
  ChartView(ViewContext& context, Chart& chart);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;
  bool Waits() const override { return true; }

 private:
  class Plot;
  friend class Plot;

  void Build();
  void Style();
  void FollowSeries();
  void FollowAxis(QCPAxis& axis, const Axis& plain);
  AxisRange RoomAround(const Axis& axis) const;
  void Fit();
  bool Scattered() const;
  bool AnyRightAxis() const;
  void ShowMenu(const QPoint& at);
  void SavePoints();
  QString ReadOut(const QPoint& at) const;
  // The ranges that the plot's own axes show now, as those of the chart.
  Chart::Ranges PlotRanges(bool bottom, bool sides) const;
  void Zoom(const Chart::Ranges& ranges);
  void Scroll(const Chart::Ranges& ranges);
  void UndoZoom();
  void ClickAxis(AxisSide side);

  Chart& chart_;
  Plot* plot_;
  LegendStrip* strip_ = nullptr;
  std::shared_ptr<TimeTicker> timeTicker_;
  std::vector<bool> sides_;
};

}  // namespace fathomline
