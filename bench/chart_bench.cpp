// Draws the charts of frmTimeSeriesGGA with a full day at ten points a second in every series, on
// whatever platform Qt is told (QT_QPA_PLATFORM=offscreen): bench-chart [POINTS]
//
// Prints milliseconds of processor time for a repaint, ranges of automatic axes included, and for a
// hover read-out.
#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

#include "base/clock.h"
#include "faces/qt/qt_face.h"
#include "session/program.h"

namespace {

using namespace fathomline;

constexpr double kBegin = 43832.0;
constexpr double kPerDay = 864000.0;
constexpr int kRepaints = 20;

double MillisecondsOf(const std::function<void()>& action) {
  const std::clock_t begin = std::clock();
  action();
  return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

// A noisy walk for lines, runs of small numbers in changing colours for bars.
class Sample {
 public:
  explicit Sample(SeriesKind kind) : kind_(kind) {}

  void AddTo(Series& series, int i) {
    const double x = kBegin + i / kPerDay;
    constexpr int kRun = 700;
    if (kind_ == SeriesKind::Line) {
      walk_ += noise_(random_) * 0.02;
      series.Add(x, static_cast<float>(walk_ + noise_(random_)));
      return;
    }
    if (i % kRun == 0) {
      held_ = static_cast<float>(random_() % 9);
      start_ = x;
    }
    if (kind_ == SeriesKind::Gantt) {
      series.AddGantt(start_, x, held_);
    } else {
      const bool own = random_() % 10 != 0;
      series.Add(x, held_, own ? kSeriesColour : kRed);
    }
  }

 private:
  SeriesKind kind_;
  std::minstd_rand random_{7};
  std::normal_distribution<double> noise_;
  double walk_ = 0.0;
  double start_ = kBegin;
  float held_ = 0.0F;
};

struct Figures {
  double mean = 0.0;
  double worst = 0.0;
};

class Bench {
 public:
  Bench(QtFace& face, frmTimeSeries& window) : face_(face), window_(window) {
    window_.Show();
    for (int i = 0; i < 10; ++i) face_.Turn();
    face_.Draw();
  }

  void Fill(Chart& chart, int index, int points) {
    Series& series = chart.Series(index);
    Sample sample(series.Kind());
    for (int i = 0; i < points; ++i) sample.AddTo(series, i);
  }

  // Each repaint follows a new point, which may move the range of every axis.
  Figures Repaint(const std::vector<Chart*>& charts) {
    Figures figures;
    for (int i = 0; i < kRepaints; ++i) {
      for (Chart* const chart : charts) AgeByOne(chart->Series(0));
      const double spent = MillisecondsOf([&] {
        face_.Draw();
        for (const Chart* const chart : charts) face_.WidgetOf(*chart)->repaint();
      });
      figures.mean += spent / kRepaints;
      figures.worst = std::max(figures.worst, spent);
    }
    return figures;
  }

  Figures Hover(const Chart& chart) {
    Figures figures;
    QWidget& plot = *face_.WidgetOf(chart);
    for (int i = 0; i < kRepaints; ++i) {
      const QPoint at(plot.width() * (i + 1) / (kRepaints + 2), plot.height() / 2);
      QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), Qt::NoButton, {}, {});
      const double spent = MillisecondsOf([&] { QApplication::sendEvent(&plot, &move); });
      figures.mean += spent / kRepaints;
      figures.worst = std::max(figures.worst, spent);
    }
    return figures;
  }

 private:
  static void AgeByOne(Series& series) {
    if (series.Count() == 0) return;
    const double x = series.LastX() + 1.0 / kPerDay;
    series.Add(x, series.At(series.Count() - 1).y);
    series.DeleteOldest();
  }

  QtFace& face_;
  frmTimeSeries& window_;
};

void Print(const char* what, const Figures& figures) {
  std::printf("%-44s %7.2f ms, at most %7.2f ms\n", what, figures.mean, figures.worst);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const int points = argc > 1 ? std::atoi(argv[1]) : static_cast<int>(kPerDay);
  const SystemClock clock;
  SettingsStore settings;
  QtFace face;
  Program program({face, clock, settings, [] {}});
  program.engine.records.SetDefaultSetup();
  frmTimeSeries& window = program.windows.charts.TimeSeriesOf(1, SentenceType::GGA);
  Bench bench(face, window);

  bench.Fill(window.TChart(0), 0, points);
  Print("one line, the whole day", bench.Repaint({&window.TChart(0)}));
  const AxisRange hour{kBegin + 0.5, kBegin + 0.5 + 1.0 / 24.0};
  window.TChart(0).UserZoom({.bottom = hour, .left = {}, .right = {}});
  Print("one line, an hour of it", bench.Repaint({&window.TChart(0)}));
  window.TChart(0).UserUndoZoom();

  std::vector<Chart*> all;
  for (Chart& chart : window.TChart) {
    all.push_back(&chart);
    for (int i = &chart == all.front() ? 1 : 0; i < chart.SeriesCount(); ++i) {
      bench.Fill(chart, i, points);
    }
  }
  constexpr const char* kCharts[] = {"three lines", "three lines", "coloured bars and a line",
                                     "coloured bars, a line, Gantt bars"};
  for (std::size_t i = 0; i < all.size(); ++i) Print(kCharts[i], bench.Repaint({all[i]}));
  Print("all eleven series of four charts", bench.Repaint(all));
  Print("read-out of three lines", bench.Hover(window.TChart(0)));

  Chart& scatter = program.windows.charts.ScatterOf(1).TChart1;
  program.windows.charts.ScatterOf(1).Show();
  for (int i = 0; i < 10; ++i) face.Turn();
  for (Axis* const axis : {&scatter.Left(), &scatter.Bottom()}) {
    axis->SetMinimum(-5.0);
    axis->SetMaximum(5.0);
  }
  std::minstd_rand random;
  std::normal_distribution<double> metres;
  for (int i = 0; i < points; ++i) {
    scatter.Series(0).Add(metres(random), static_cast<float>(metres(random)));
  }
  Print("scatter", bench.Repaint({&scatter}));
  Print("read-out of the scatter", bench.Hover(scatter));
  program.engine.records.Closing = true;
  return 0;
}
