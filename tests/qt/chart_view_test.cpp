// Charts on the desktop: axes, gaps, colours, mouse and export.
#include <QFile>
#include <QTemporaryDir>
#include <qcustomplot.h>

#include "platform/chart.h"
#include "platform/qt/picture_file.h"
#include "qt/qt_fixture.h"

namespace fathomline {
namespace {

constexpr double kDay = 46000.0;

class ChartViews : public QtFixture {
 public:
  PlainWindow window{desktop, {.name = "frmChart", .place = {0, 0, 12000, 6000}}};
  Chart chart{window, "TChart1", "Deviation"};

  // Loading a window empties its charts, so the points come afterwards.
  void SetUp() override { ShowDrawn(window); }

  QCustomPlot& Drawn() {
    face.Draw();
    return *Find<QCustomPlot>(chart);
  }

  QImage Picture() {
    face.Draw();
    return Find<QCustomPlot>(chart)->toPixmap().toImage();
  }

  // The pixel of a point of the plot.
  QPoint At(double key, double value) {
    const QCustomPlot& plot = *Find<QCustomPlot>(chart);
    return {static_cast<int>(plot.xAxis->coordToPixel(key)),
            static_cast<int>(plot.yAxis->coordToPixel(value))};
  }

  // Whether the colour stands at the point or right beside it.
  static bool Near(const QImage& image, const QPoint& at, const QColor& colour) {
    for (int x = -2; x <= 2; ++x) {
      for (int y = -2; y <= 2; ++y) {
        const QColor seen = image.pixelColor(at + QPoint(x, y));
        // A thin line is blended with its ground.
        constexpr int kBlended = 190;
        if (std::abs(seen.red() - colour.red()) + std::abs(seen.green() - colour.green()) +
                std::abs(seen.blue() - colour.blue()) <
            kBlended) {
          return true;
        }
      }
    }
    return false;
  }
};

TEST_F(ChartViews, ANullPointLeavesAGapInTheLine) {
  auto& series = chart.AddSeries({.title = "dN", .colour = kBlue});
  for (const double x : {0.0, 1.0}) series.Add(x, 5.0F);
  series.AddNull(2.0);
  for (const double x : {3.0, 4.0}) series.Add(x, 5.0F);
  const QImage image = Picture();
  EXPECT_TRUE(Near(image, At(0.5, 5.0), Qt::blue));
  EXPECT_FALSE(Near(image, At(2.0, 5.0), Qt::blue));
  EXPECT_TRUE(Near(image, At(3.5, 5.0), Qt::blue));
}

TEST_F(ChartViews, APeakAmongManyPointsIsSeen) {
  auto& series = chart.AddSeries({.title = "dN", .colour = kRed});
  for (int i = 0; i < 100000; ++i) series.Add(i, i == 50123 ? 10.0F : 0.0F);
  const QImage image = Picture();
  EXPECT_TRUE(Near(image, At(50123.0, 9.0), Qt::red));
}

TEST_F(ChartViews, BarsAndGanttBarsTakeTheColourOfTheirPoint) {
  auto& bars = chart.AddSeries({.title = "Svs", .kind = SeriesKind::Bar, .colour = kBlue});
  bars.Add(0.0, 4.0F);
  bars.Add(10.0, 8.0F, kYellow);
  auto& gantt = chart.AddSeries({.title = "Sv", .kind = SeriesKind::Gantt, .colour = kMagenta});
  gantt.AddGantt(2.0, 8.0, 6.0F);
  const QImage image = Picture();
  EXPECT_TRUE(Near(image, At(10.0, 4.0), Qt::yellow));
  EXPECT_TRUE(Near(image, At(0.0, 2.0), Qt::blue));
  EXPECT_TRUE(Near(image, At(5.0, 6.0), Qt::magenta));
  EXPECT_FALSE(Near(image, At(9.0, 6.0), Qt::magenta));
}

TEST_F(ChartViews, ATimeAxisCountsSecondsOfUtc) {
  chart.Bottom().SetLabelFormat("hh:nn:ss");
  auto& series = chart.AddSeries({.title = "dN"});
  series.Add(kDay, 1.0F);
  series.Add(kDay + 0.5, 2.0F);
  QCustomPlot& plot = Drawn();
  EXPECT_NEAR(plot.xAxis->range().size(), 43200.0, 1e-3);
  EXPECT_NEAR(std::fmod(plot.xAxis->range().lower, 86400.0), 0.0, 1e-3);
}

TEST_F(ChartViews, TheWheelZoomsAndADoubleClickUndoes) {
  auto& series = chart.AddSeries({.title = "dN"});
  series.Add(0.0, 0.0F);
  series.Add(100.0, 1.0F);
  int zooms = 0;
  int undone = 0;
  chart.onZoom = [&] { ++zooms; };
  chart.onUndoZoom = [&] { ++undone; };
  QCustomPlot& plot = Drawn();
  const QPoint middle = At(50.0, 0.5);
  QWheelEvent wheel(middle, plot.mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&plot, &wheel);
  EXPECT_EQ(zooms, 1);
  ASSERT_TRUE(chart.Bottom().Zoom().has_value());
  EXPECT_NEAR(chart.Bottom().Zoom()->high - chart.Bottom().Zoom()->low, 80.0, 1.0);
  series.Add(200.0, 1.0F);
  face.Draw();
  EXPECT_NEAR(plot.xAxis->range().size(), 80.0, 1.0);
  QTest::mouseDClick(&plot, Qt::LeftButton, {}, middle);
  EXPECT_EQ(undone, 1);
  EXPECT_NEAR(plot.xAxis->range().upper, 200.0, 1e-6);
}

TEST_F(ChartViews, ARubberBandZoomsBothAxes) {
  auto& series = chart.AddSeries({.title = "dN"});
  series.Add(0.0, 0.0F);
  series.Add(100.0, 100.0F);
  QCustomPlot& plot = Drawn();
  QTest::mousePress(&plot, Qt::LeftButton, {}, At(20.0, 80.0));
  for (const QPoint at : {At(40.0, 60.0), At(60.0, 40.0)}) {
    QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&plot, &move);
  }
  QTest::mouseRelease(&plot, Qt::LeftButton, {}, At(60.0, 40.0));
  ASSERT_TRUE(chart.Bottom().Zoom() && chart.Left().Zoom());
  EXPECT_NEAR(chart.Bottom().Zoom()->low, 20.0, 1.0);
  EXPECT_NEAR(chart.Bottom().Zoom()->high, 60.0, 1.0);
  EXPECT_NEAR(chart.Left().Zoom()->low, 40.0, 2.0);
  EXPECT_NEAR(chart.Left().Zoom()->high, 80.0, 2.0);
}

TEST_F(ChartViews, AClickOnAnAxisComesWhenTheMouseEventIsOver) {
  chart.AddSeries({.title = "dN"}).Add(0.0, 0.0F);
  std::optional<AxisSide> clicked;
  chart.onClickAxis = [&](AxisSide side) { clicked = side; };
  QCustomPlot& plot = Drawn();
  plot.replot();
  const QPoint below(plot.axisRect()->rect().center().x(), plot.axisRect()->rect().bottom() + 8);
  QTest::mouseClick(&plot, Qt::LeftButton, {}, below);
  PumpUntil([&] { return clicked.has_value(); });
  EXPECT_EQ(clicked, AxisSide::Bottom);
}

TEST_F(ChartViews, PicturesAreWrittenInEveryFormatAlsoOfAHiddenWindow) {
  auto& series = chart.AddSeries({.title = "Northing", .colour = kBlue});
  series.Add(0.0, 0.0F);
  series.Add(1.0, 1.0F);
  QCustomPlot& plot = Drawn();
  window.Hide();
  face.Draw();
  const PaintOnto paint = [&](QPaintDevice& device, const QSize& size) {
    QCPPainter painter(&device);
    painter.setMode(QCPPainter::pmVectorized);
    plot.toPainter(&painter, size.width(), size.height());
  };
  const QTemporaryDir folder;
  for (const char* const name : {"a.png", "a.svg", "a.pdf"}) {
    EXPECT_EQ(WritePicture(folder.filePath(name), {640, 200}, paint), QString());
  }
  EXPECT_EQ(QImage(folder.filePath("a.png")).size(), QSize(1280, 400));
  QFile svg(folder.filePath("a.svg"));
  ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
  const QByteArray text = svg.readAll();
  EXPECT_TRUE(text.contains(">Northing</text>"));
  EXPECT_TRUE(text.contains("stroke=\"#0000ff\""));
  QFile pdf(folder.filePath("a.pdf"));
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_TRUE(pdf.readAll().startsWith("%PDF"));
  EXPECT_NE(WritePicture(folder.filePath("none/a.png"), {64, 64}, paint), QString());
}

}  // namespace
}  // namespace fathomline
