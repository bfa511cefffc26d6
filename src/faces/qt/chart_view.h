// The view of a chart: axes and ticks by the plot library, everything else in chart_parts.
#pragma once

#include <QPoint>
#include <QString>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "faces/qt/chart_axes.h"
#include "faces/qt/chart_plot.h"
#include "faces/qt/control_view.h"
#include "toolkit/chart.h"

namespace fathomline {

class ChartGrid;
class EndNumbers;
class HeadRow;
class MarkerLayer;
struct Pointer;
struct ReadOut;

class ChartView : public ControlView, private ChartPlot::Listener {
 public:
  ChartView(ViewContext& context, Chart& chart);
  ~ChartView() override;
  bool TakesFocus() const override { return true; }
  // One in a grid may have no room of its own as long as it has no points.
  bool Seen() const override;

  const Chart& Shown() const { return chart_; }
  // It stands in a grid from now on; of alike charts the grid says what all have in common.
  void JoinGrid(ChartGrid& grid, bool alike);
  // Whether it is the lowest of its column, which labels the time. A chart without points may be no
  // more than a line of words.
  void SetPlace(bool lowest, bool line);
  // Pixels that are not plot: the head and the room for labels, of the lowest one or of another.
  int Around(bool lowest) const;
  // The room beside the plots has changed.
  void FollowCompany();
  // Hides one curve, or brings it back.
  void Toggle(int series);

 protected:
  void Update() override;
  bool Waits() const override { return true; }

 private:
  void Build();
  void Style();
  void FollowSeries();
  void Fit();
  void TellCompany();
  bool Narrow() const;
  bool ShowsTime() const;
  QString Words() const;
  Pointer PointerAt(double x, double y) const;
  // Those of the window since it was last loaded, if they have been called for.
  ChartCursors* Cursors() const;
  std::array<double, 2> CursorPixels() const;
  void PaintCursorsAnew();
  QRect PaintCursorLines(QPainter& painter);
  void PaintHover(QPainter& painter, const QRect& taken);
  // The ranges that the plot's own axes show now, as those of the chart.
  Chart::Ranges PlotRanges(bool bottom, bool sides) const;

  void Resized() override { Fit(); }
  void ClickAxis(AxisSide side) override;
  void Zoom(bool bottom, bool sides, Chart::Gesture gesture) override;
  void Scroll(bool bottom, bool sides, Chart::Gesture gesture) override;
  void UndoZoom() override;
  void ShowAll() override;
  void ShowMenu(const QPoint& at) override;
  void Hover(std::optional<QPoint> at) override;
  void PaintOver(QPainter& painter) override;
  QRect HeldChip() const override;
  QRect HeadArea() const override;
  QString HeadText() const override;
  bool EqualScales() const override { return chart_.EqualScales(); }
  std::optional<int> NameAt(const QPoint& at) const override;
  void ToggleSeries(int series) override;
  bool HasCursors() const override { return Cursors() != nullptr; }
  std::optional<std::size_t> CursorLineAt(const QPoint& at) const override;
  void ToggleCursors() override;
  void HoldCursor(std::size_t cursor) override;
  void HoldOtherCursor() override;
  void DragCursor(int x) override;
  void StepHeldCursor(int direction, int pixels) override;

  Chart& chart_;
  ChartPlot* plot_;
  ChartAxes axes_;
  HeadRow* head_ = nullptr;
  MarkerLayer* markers_ = nullptr;
  std::vector<bool> sides_;
  ChartGrid* grid_ = nullptr;
  bool alike_ = false;
  bool lowest_ = true;
  bool line_ = false;
  bool empty_ = true;
  int around_ = 0;
  std::optional<QPoint> pointer_;
};

}  // namespace fathomline
