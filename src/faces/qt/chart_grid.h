// Charts over one time axis, in columns: they share the width and the height that there is.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <vector>

namespace fathomline {

class ChartView;
struct ViewContext;

class ChartGrid : public QWidget {
 public:
  // The least that a plot is, without what stands round it.
  static constexpr QSize kLeastPlot{160, 72};

  // Of alike charts one legend serves all, those without points are a line of words each, and
  // `nothing` stands there as long as none has any. Empty: they are not alike.
  ChartGrid(ViewContext& context, int columns, const QString& nothing);

  void Add(ChartView& chart);
  // A chart has got points, or has none any more.
  void PlaceAnew();
  // Hides one curve in all charts, or brings it back.
  void ToggleSeries(int series);

  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  bool Alike() const { return !nothing_.isEmpty(); }
  // The head that serves all alike charts, and the series that it names there.
  QRect HeadArea() const;
  std::optional<int> NameAt(const QPoint& at) const;
  int ColumnsFor(int width) const;
  // Charts in rows of so many columns, from the top down; returns where they end.
  void Place();
  void PlaceStack(const std::vector<ChartView*>& shown);
  void PlaceAlike(const std::vector<ChartView*>& shown);

  ViewContext& context_;
  int columns_;
  QString nothing_;
  std::vector<ChartView*> charts_;
  bool anyPoints_ = false;
  bool placing_ = false;
};

}  // namespace fathomline
