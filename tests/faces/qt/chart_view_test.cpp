// Charts on the desktop: axes, gaps, colours, mouse and export.
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QSet>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <deque>
#include <qcustomplot.h>
#include <sstream>

#include "faces/qt/look.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_fixture.h"
#include "toolkit/chart.h"

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

  void Drag(Qt::MouseButton button, Qt::KeyboardModifiers with, QPoint from, QPoint to) {
    QCustomPlot& plot = *Find<QCustomPlot>(chart);
    QTest::mousePress(&plot, button, with, from);
    for (const QPoint at : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), Qt::NoButton, button, with);
      QApplication::sendEvent(&plot, &move);
    }
    QTest::mouseRelease(&plot, button, with, to);
  }

  void ChooseFromMenu(const char* action) {
    QTest::mouseClick(Find<QCustomPlot>(chart), Qt::RightButton);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* const entry : menu->actions()) {
      if (entry->text().remove(QLatin1Char('&')) != QLatin1String(action)) continue;
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
      return;
    }
    ADD_FAILURE() << action;
  }

  static void AnswerFileDialog(const QString& path) {
    auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    dialog->selectFile(path);
    QMetaObject::invokeMethod(dialog, "accept");
  }

  // Whether the colour stands at the point or right beside it.
  static bool Near(const QImage& image, const QPoint& at, const QColor& colour) {
    for (int x = -2; x <= 2; ++x) {
      for (int y = -2; y <= 2; ++y) {
        const QColor seen = image.pixelColor(at + QPoint(x, y));
        // A thin line is blended with its ground.
        constexpr int kBlended = 150;
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

TEST_F(ChartViews, ANullPointLeavesAGapAndAPeakAmongManyPointsIsSeen) {
  auto& series = chart.AddSeries({.title = "dN", .colour = kBlue});
  for (const double x : {0.0, 1.0}) series.Add(x, 5.0F);
  series.AddNull(2.0);
  for (const double x : {3.0, 4.0}) series.Add(x, 5.0F);
  QImage image = Picture();
  EXPECT_TRUE(Near(image, At(0.5, 5.0), PaintOf(kBlue)));
  EXPECT_FALSE(Near(image, At(2.0, 5.0), PaintOf(kBlue)));
  EXPECT_TRUE(Near(image, At(3.5, 5.0), PaintOf(kBlue)));
  series.Clear();
  for (int i = 0; i < 100000; ++i) series.Add(i, i == 50123 ? 10.0F : 0.0F);
  image = Picture();
  EXPECT_TRUE(Near(image, At(50123.0, 9.0), PaintOf(kBlue)));
}

TEST_F(ChartViews, BarsAndGanttBarsTakeTheColourOfTheirPoint) {
  auto& bars = chart.AddSeries({.title = "Svs", .kind = SeriesKind::Bar, .colour = kBlue});
  bars.Add(0.0, 4.0F);
  bars.Add(10.0, 8.0F, kYellow);
  auto& gantt = chart.AddSeries({.title = "Sv", .kind = SeriesKind::Gantt, .colour = kMagenta});
  for (const double end : {4.0, 8.0}) gantt.AddGantt(2.0, end, 6.0F);
  const QImage image = Picture();
  EXPECT_TRUE(Near(image, At(10.0, 8.0), PaintOf(kYellow)));
  EXPECT_TRUE(Near(image, At(0.0, 4.0), PaintOf(kBlue)));
  EXPECT_TRUE(Near(image, At(7.0, 6.0), PaintOf(kMagenta)));
  EXPECT_FALSE(Near(image, At(9.0, 6.0), PaintOf(kMagenta)));
}

TEST_F(ChartViews, LabelsOfATimeAxisStandApartInUtc) {
  chart.Bottom().SetLabelFormat("hh:nn");
  chart.Bottom().SetAutomatic(false);
  chart.AddSeries({.title = "dN"}).Add(kDay, 1.0F);
  QCustomPlot& plot = Drawn();
  const QFontMetrics metrics(plot.xAxis->tickLabelFont());
  for (const double seconds :
       {5.0, 20.0, 600.0, 900.0, 1800.0, 3600.0, 7200.0, 21600.0, 43200.0, 86400.0, 3e5, 1e9}) {
    chart.Bottom().SetMinimum(kDay);
    chart.Bottom().SetMaximum(kDay + seconds / 86400.0);
    for (const int width : {270, 300, 417, 640, 1300, 1920}) {
      plot.resize(width, 150);
      face.Draw();
      plot.replot();
      EXPECT_NEAR(plot.xAxis->range().size(), seconds, 1e-3 + seconds * 1e-9);
      double free = 0.0;
      const auto ticks = plot.xAxis->tickVector();
      const auto labels = plot.xAxis->tickVectorLabels();
      EXPECT_FALSE(ticks.isEmpty());
      const auto different = QSet<QString>(labels.begin(), labels.end()).size();
      EXPECT_TRUE(seconds == 86400.0 || different == labels.size()) << seconds;
      for (int i = 0; i < ticks.size(); ++i) {
        int wide = 0;
        for (const QString& line : labels[i].split(QLatin1Char('\n'))) {
          wide = std::max(wide, metrics.horizontalAdvance(line));
        }
        const double middle = plot.xAxis->coordToPixel(ticks[i]);
        EXPECT_GT(middle - wide / 2.0, free) << seconds << " s on " << width << " pixels";
        free = middle + wide / 2.0;
      }
      EXPECT_LE(free, width) << seconds << " s on " << width << " pixels";
    }
  }
  EXPECT_NEAR(std::fmod(plot.xAxis->range().lower, 86400.0), 0.0, 1e-3);
}

TEST_F(ChartViews, TheMouseZoomsPansAndUndoesAndAZoomHoldsWhileDataComeIn) {
  auto& series = chart.AddSeries({.title = "dN"});
  series.Add(0.0, 0.0F);
  series.Add(100.0, 100.0F);
  int zooms = 0;
  int undone = 0;
  int scrolls = 0;
  chart.onZoom = [&] { ++zooms; };
  chart.onUndoZoom = [&] { ++undone; };
  chart.onScroll = [&] { ++scrolls; };
  QCustomPlot& plot = Drawn();
  const QPoint middle = At(50.0, 50.0);
  const auto bottom = [this] { return chart.Bottom().Range(); };
  const auto undo = [&] {
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, middle);
    face.Draw();
  };
  QWheelEvent wheel(middle, plot.mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&plot, &wheel);
  EXPECT_EQ(zooms, 1);
  EXPECT_NEAR(bottom().high - bottom().low, 80.0, 1.0);
  series.Add(200.0, 1.0F);
  face.Draw();
  EXPECT_NEAR(plot.xAxis->range().size(), 80.0, 1.0);
  undo();
  EXPECT_EQ(undone, 1);
  EXPECT_NEAR(plot.xAxis->range().upper, 200.0, 1e-6);
  series.DeleteOldest();
  series.Add(0.0, 0.0F);

  Drag(Qt::LeftButton, {}, At(20.0, 80.0), At(60.0, 40.0));
  EXPECT_NEAR(bottom().low, 20.0, 2.0);
  EXPECT_NEAR(bottom().high, 60.0, 2.0);
  EXPECT_NEAR(chart.Left().Range().low, 40.0, 2.0);
  EXPECT_NEAR(chart.Left().Range().high, 80.0, 2.0);
  face.Draw();
  Drag(Qt::RightButton, {}, At(40.0, 60.0), At(50.0, 50.0));
  EXPECT_NEAR(bottom().low, 10.0, 2.0);
  EXPECT_NEAR(chart.Left().Range().low, 50.0, 2.0);
  face.Draw();
  Drag(Qt::LeftButton, Qt::ShiftModifier, At(30.0, 60.0), At(20.0, 60.0));
  EXPECT_NEAR(bottom().low, 20.0, 2.0);
  EXPECT_EQ(zooms, 2);
  EXPECT_GE(scrolls, 2);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "a drag opens no menu";
}

TEST_F(ChartViews, TheMouseReadsOutTheNearestPointOfEachSeries) {
  chart.Bottom().SetLabelFormat("hh:nn");
  auto& north = chart.AddSeries({.title = "dN"});
  auto& east = chart.AddSeries({.title = "dE", .unit = "m"});
  for (int i = 0; i < 1000; ++i) {
    north.Add(kDay + i / 1440.0, static_cast<float>(i));
    if (i % 100 == 0) east.Add(kDay + i / 1440.0, -0.5F);
  }
  QCustomPlot& plot = Drawn();
  const QPoint at(static_cast<int>(plot.xAxis->coordToPixel(plot.xAxis->range().center())),
                  plot.axisRect()->center().y());
  QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), Qt::NoButton, {}, {});
  QApplication::sendEvent(&plot, &move);
  const auto read = [&] {
    plot.grab();
    return plot.accessibleDescription().split(QLatin1Char('\n'));
  };
  QStringList lines = read();
  ASSERT_EQ(lines.size(), 3) << lines.join(u'|').toStdString();
  // The middle of 0 to 999 minutes; a column of pixels is about two of them.
  EXPECT_TRUE(lines[0].startsWith(QStringLiteral("08:"))) << lines[0].toStdString();
  EXPECT_NEAR(lines[1].section(QLatin1Char(' '), -1).toDouble(), 499.5, 3.0);
  EXPECT_EQ(lines[2], QStringLiteral("dE: -0.5 m"));
  // What has ended long before says nothing more; what is under the pointer comes first.
  for (int i = 1000; i < 1200; ++i) north.Add(kDay + i / 1440.0, static_cast<float>(i));
  for (int i = 901; i < 1000; ++i) east.Add(kDay + i / 1440.0, -0.5F);
  face.Draw();
  const auto hover = [&](double minute, double value) {
    const double second = (kDay + minute / 1440.0 - 25569.0) * 86400.0;
    const QPoint to = At(second, value);
    QMouseEvent there(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::NoButton, {}, {});
    QApplication::sendEvent(&plot, &there);
    lines = read();
  };
  hover(1150.0, 1100.0);
  EXPECT_EQ(lines.size(), 2) << lines.join(u'|').toStdString();
  hover(950.0, 0.0);
  EXPECT_TRUE(lines[1].startsWith(QStringLiteral("dE"))) << lines[1].toStdString();
}

TEST_F(ChartViews, AHeldRangeIsSeenAndLedBackByClickOrKey) {
  auto& series = chart.AddSeries({.title = "dN"});
  for (int i = 0; i <= 100; ++i) series.Add(i, static_cast<float>(i % 7));
  QCustomPlot& plot = Drawn();
  const auto key = [&](Qt::Key pressed) {
    QTest::keyClick(&plot, pressed);
    face.Draw();
    return chart.Bottom().Range().high - chart.Bottom().Range().low;
  };
  // Where the chip stands there is its colour, and nothing of it without a zoom.
  const auto chip = [&] {
    const QImage image = plot.grab().toImage();
    for (int x = plot.axisRect()->right() - 40; x < plot.axisRect()->right(); ++x) {
      const QPoint at(x, plot.axisRect()->top() + 7);
      if (image.pixelColor(at) == PaintOf(look::kSelection)) return at;
    }
    return QPoint();
  };
  EXPECT_TRUE(chip().isNull());
  EXPECT_NEAR(key(Qt::Key_Plus), 80.0, 1e-6);
  QTest::qWait(750);  // a further step, not the same turn of the wheel
  EXPECT_NEAR(key(Qt::Key_Plus), 64.0, 1e-6);
  EXPECT_NEAR(key(Qt::Key_Backspace), 80.0, 1e-6);
  ASSERT_FALSE(chip().isNull());
  QTest::mouseClick(&plot, Qt::LeftButton, {}, chip());
  face.Draw();
  EXPECT_FALSE(chart.Held());
  EXPECT_TRUE(chip().isNull());
}

TEST_F(ChartViews, ThePairOfCursorsTellsTheDifferences) {
  chart.Bottom().SetLabelFormat("hh:nn");
  auto& north = chart.AddSeries({.title = "dN", .colour = kBlue, .unit = "m"});
  // Each minute of an hour and a half, and a point in between.
  for (int i = 0; i <= 90; ++i) north.Add(kDay + i / 1440.0, static_cast<float>(i));
  chart.AddSeries({.title = "Qual", .kind = SeriesKind::Bar, .digits = true}).Add(kDay, 1.0F);
  QCustomPlot& plot = Drawn();
  const auto told = [&] {
    plot.grab();
    return plot.accessibleDescription().split(QLatin1Char('\n'));
  };
  const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(&plot, pressed, with);
    return told();
  };
  EXPECT_EQ(told(), QStringList{QString()}) << "off until called for";
  EXPECT_EQ(key(Qt::Key_C), (QStringList{"A 00:30:00", "B 01:00:00", "B \u2212 A  0:30:00",
                                         "dN: 30 m; 60 m; 30 m"}));
  const double half = (kDay + 30.0 / 1440.0 - 25569.0) * 86400.0;
  EXPECT_TRUE(Near(plot.grab().toImage(), At(half, 20.0), PaintOf(look::kAccent)));
  // B is the one that keys move, by points with Ctrl and by pixels without; then A.
  EXPECT_EQ(key(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier)[1], "B 01:01:00");
  EXPECT_EQ(key(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier)[1], "B 01:00:00");
  EXPECT_LT(key(Qt::Key_Left, Qt::ShiftModifier)[1], "B 01:00:00");
  key(Qt::Key_Space);
  EXPECT_EQ(key(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier)[0], "A 00:31:00");
  // Drawn past the other one, the difference is negative; the zoom has not been touched.
  const double minute = 60.0;
  Drag(Qt::LeftButton, {}, At(half + minute, 45.0), At(half + 50.0 * minute, 45.0));
  const QStringList crossed = told();
  EXPECT_EQ(crossed[0], "A 01:20:00");
  EXPECT_TRUE(crossed[2].startsWith(QStringLiteral("B \u2212 A  \u22120:2")))
      << qPrintable(crossed[2]);
  EXPECT_FALSE(chart.Held());
  // A line that has been hidden says nothing; a reset or the key takes the cursors away.
  chart.UserToggle(0);
  EXPECT_EQ(told().size(), 3);
  chart.UserToggle(0);
  face.Draw();
  const QPoint line = At(half + 50.0 * minute, 20.0);
  EXPECT_TRUE(Near(plot.grab().toImage(), line, PaintOf(look::kAccent)));
  key(Qt::Key_C);
  EXPECT_FALSE(Near(plot.grab().toImage(), line, PaintOf(look::kAccent)));
}

TEST_F(ChartViews, AClickOnANameHidesItsCurveAndKeepsItsPoints) {
  chart.AddSeries({.title = "dLat", .colour = kBlue}).Add(0.0, 0.0F);
  auto& high = chart.AddSeries({.title = "dLon", .colour = kRed});
  chart.Series(0).Add(10.0, 1.0F);
  for (const double x : {0.0, 10.0}) high.Add(x, 100.0F);
  QCustomPlot& plot = Drawn();
  std::ostringstream told;
  window.Write(told);
  const QRect head(0, 0, plot.width(), plot.axisRect()->top() - 6);
  // Where the sample of a curve stands in the head.
  const auto sample = [&](Colour colour) {
    const QImage image = Picture();
    for (int x = 0; x < head.width(); ++x) {
      for (int y = 0; y < head.height(); ++y) {
        if (image.pixelColor(x, y) == PaintOf(colour)) return QPoint(x + 2, y);
      }
    }
    return QPoint();
  };
  EXPECT_TRUE(Near(Picture(), At(5.0, 100.0), PaintOf(kRed)));
  const QPoint name = sample(kRed);
  ASSERT_FALSE(name.isNull());
  QTest::mouseClick(&plot, Qt::LeftButton, {}, name);
  EXPECT_TRUE(high.Hidden());
  EXPECT_TRUE(sample(kRed).isNull()) << "dimmed";
  EXPECT_FALSE(sample(look::kDisabledInk).isNull());
  EXPECT_EQ(chart.Left().Range(), (AxisRange{0.0, 1.0})) << "what is seen has the room";
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{0.0, 10.0}));
  std::ostringstream hidden;
  window.Write(hidden);
  EXPECT_EQ(hidden.str(), told.str());
  QTest::mouseClick(&plot, Qt::LeftButton, {}, sample(kBlue));
  EXPECT_EQ(chart.Left().Range().high, 100.0) << "of nothing but hidden curves it keeps the scale";
  QTest::mouseClick(&plot, Qt::LeftButton, {}, name);
  face.Draw();
  EXPECT_TRUE(Near(Picture(), At(5.0, 100.0), PaintOf(kRed)));
  // Loading the window again forgets it.
  window.Close();
  ShowDrawn(window);
  EXPECT_EQ(chart.SeriesCount(), 0);
}

TEST_F(ChartViews, StandInAGridThatSharesItsRoomAmongThoseWithPoints) {
  PlainWindow many{desktop, {.name = "frmMany", .place = {0, 0, 12000, 9000}}};
  std::deque<Chart> charts;
  std::vector<Layout> cells;
  for (int i = 0; i < 6; ++i) {
    charts.emplace_back(many, "TChart" + std::to_string(i), "PRN " + std::to_string(i));
    charts.back().AddSeries({.title = "SNR", .kind = SeriesKind::Bar});
    charts.back().Bottom().SetLabelFormat("hh:nn");
    cells.emplace_back(charts.back());
  }
  many.SetContent(Layout::AlikeCharts(4, std::move(cells), "No satellite yet"));
  ShowDrawn(many);
  for (const int filled : {1, 2, 4})
    charts[static_cast<std::size_t>(filled)].Series(0).Add(1.0, 40.0F);
  const auto place = [&](int i) {
    return face.WidgetOf(charts[static_cast<std::size_t>(i)])->geometry();
  };
  const auto draw = [&] {
    for (int i = 0; i < 3; ++i) {
      face.Draw();
      QApplication::processEvents();
    }
  };
  draw();
  EXPECT_EQ(place(1).top(), place(4).top()) << "three of a row";
  EXPECT_LT(place(1).right(), place(2).left());
  EXPECT_GE(place(1).height(), 96);
  EXPECT_EQ(place(0).height(), 20);
  EXPECT_GT(place(0).top(), place(1).bottom());
  charts[0].Series(0).Add(1.0, 40.0F);
  draw();
  EXPECT_GE(place(0).height(), 96);
  EXPECT_LT(place(0).left(), place(1).left());
  // A click on a name of the common legend hides that curve in every chart, a second one shows it.
  auto* const plot = static_cast<QCustomPlot*>(face.WidgetOf(charts[1]));
  QWidget& grid = *plot->parentWidget();
  QPoint name(grid.width(), 8);
  do {
    name.rx() -= 2;
    QMouseEvent move(QEvent::MouseMove, name, grid.mapToGlobal(name), Qt::NoButton, {}, {});
    QApplication::sendEvent(&grid, &move);
  } while (name.x() > 0 && grid.cursor().shape() != Qt::PointingHandCursor);
  for (const bool hidden : {true, false}) {
    QTest::mouseClick(&grid, Qt::LeftButton, {}, name);
    for (const Chart& each : charts) EXPECT_EQ(each.Series(0).Hidden(), hidden);
  }
  // The cursors go through all charts, and the one with the keyboard tells what they stand at.
  for (int i = 2; i <= 31; ++i) charts[1].Series(0).Add(i, static_cast<float>(i));
  draw();
  plot->setFocus();
  QTest::keyClick(plot, Qt::Key_C);
  plot->grab();
  EXPECT_TRUE(plot->accessibleDescription().contains("SNR: 11; 21; 10"))
      << qPrintable(plot->accessibleDescription());
  // As many columns as have room, and never wider than the window.
  face.HostOf(many)->resize(420, 500);
  draw();
  EXPECT_GT(place(1).top(), place(0).bottom());
  for (int i = 0; i < 6; ++i) EXPECT_LE(place(i).right(), 420) << i;
}

TEST_F(ChartViews, EqualScalesHaveEqualTicks) {
  chart.SetEqualScales(true);
  chart.AddSeries({.title = "Fixes"}).Add(0.0, 0.0F);
  const auto step = [](const QCPAxis& axis) {
    EXPECT_GE(axis.tickVector().size(), 2);
    return axis.tickVector().value(1) - axis.tickVector().value(0);
  };
  // Labels that are wide to the east and low to the north.
  for (double end = 11000.0; end < 110000.0; end *= 1.3) {
    for (Axis* const axis : {&chart.Bottom(), &chart.Left()}) {
      axis->SetAutomatic(false);
      axis->SetMinimum(-end);
      axis->SetMaximum(end);
    }
    QCustomPlot& plot = Drawn();
    plot.replot();
    EXPECT_EQ(step(*plot.xAxis), step(*plot.yAxis)) << end;
  }
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

TEST_F(ChartViews, TheMenuCopiesAndSavesPicturesAndPoints) {
  auto& series = chart.AddSeries({.title = "Northing", .colour = kBlue});
  series.Add(0.0, 0.0F);
  series.Add(1.0, 1.5F);
  Drawn();
  const QTemporaryDir folder;
  const auto saved = [&](const char* action, const char* name) {
    const QString path = folder.filePath(QString::fromLatin1(name));
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [path] { AnswerFileDialog(path); });
    answer.start(1);
    ChooseFromMenu(action);
    PumpUntil([&] { return QFile::exists(path); });
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  };
  QApplication::clipboard()->clear();
  ChooseFromMenu("Copy picture");
  PumpUntil([] { return !QApplication::clipboard()->image().isNull(); });
  EXPECT_EQ(QApplication::clipboard()->image().size(), Find<QCustomPlot>(chart)->size());
  EXPECT_EQ(saved("Save points shown as CSV ...", "a.csv"),
            "X,Series,Value\n0,Northing,0\n1,Northing,1.5\n");
  const QImage png = QImage::fromData(saved("Save picture ...", "a.png"));
  EXPECT_EQ(png.size(), Find<QCustomPlot>(chart)->size() * 2);
  EXPECT_TRUE(saved("Save picture ...", "a.pdf").startsWith("%PDF"));
  const QByteArray svg = saved("Save picture ...", "a.svg");
  EXPECT_TRUE(svg.contains(">Northing</text>"));
  EXPECT_TRUE(svg.contains(PaintOf(kBlue).name().toUtf8()));
  chart.Left().SetAutomatic(false);
  chart.Left().SetMinimum(1.0);
  face.Draw();
  QImage drawn(Find<QCustomPlot>(chart)->size(), QImage::Format_RGB32);
  QPainter painter(&drawn);
  QSvgRenderer(saved("Save picture ...", "cut.svg")).render(&painter);
  painter.end();
  const QRect area = Find<QCustomPlot>(chart)->axisRect()->rect();
  const auto blueFrom = [&](int top, int bottom) {
    for (int y = top; y < bottom; ++y) {
      for (int x = 0; x < drawn.width(); ++x) {
        if (drawn.pixelColor(x, y) == PaintOf(kBlue)) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(blueFrom(area.top(), area.bottom()));
  EXPECT_FALSE(blueFrom(area.bottom() + 2, drawn.height())) << "a curve ends where its chart does";
  EXPECT_NE(WritePicture(folder.filePath("none/a.png"), {64, 64}, [](QPaintDevice&, QSize) {}),
            QString());
}

}  // namespace
}  // namespace fathomline
