// The menu of a chart, and what it copies and saves.
#pragma once

#include <QPoint>
#include <functional>

#include "faces/qt/chart_plot.h"
#include "faces/qt/control_view.h"
#include "toolkit/chart.h"

namespace fathomline {

// What a chart's menu works on. `user` wraps an action of the user that may last.
struct ChartMenu {
  ViewContext& context;
  Chart& chart;
  ChartPlot& plot;
  ChartPlot::Listener& actions;
  std::function<void(const std::function<void()>&)> user;

  void Show(const QPoint& at) const;

 private:
  void AddCurves(QMenu& menu) const;
  void SavePoints() const;
  void SaveWindow() const;
};

}  // namespace fathomline
