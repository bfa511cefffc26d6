#include "faces/qt/chart_menu.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPaintEngine>
#include <optional>
#include <sstream>

#include "faces/qt/chart_parts.h"
#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/picture_file.h"
#include "faces/qt/qt_face.h"
#include "toolkit/chart_csv.h"

namespace fathomline {
namespace {

// What waits for a file lets the menu go, which must not happen under its own mouse event.
template <class Action>
QAction* Add(QMenu& menu, const QString& text, QWidget* receiver, Action action) {
  QAction* const entry = menu.addAction(text);
  QObject::connect(entry, &QAction::triggered, receiver, action, Qt::QueuedConnection);
  return entry;
}

// Lies over what series draw beside the area of their chart, below its axes: an SVG document is
// written without regard to clipping.
class PaperAround : public QCPLayerable {
 public:
  explicit PaperAround(QCustomPlot& plot) : QCPLayerable(&plot) {
    plot.addLayer(Layer(), plot.layer(QStringLiteral("main")), QCustomPlot::limAbove);
    setLayer(Layer());
  }
  PaperAround(const PaperAround&) = delete;
  PaperAround& operator=(const PaperAround&) = delete;
  ~PaperAround() override {
    setLayer(QStringLiteral("main"));
    parentPlot()->removeLayer(parentPlot()->layer(Layer()));
  }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override {
    const QRegion around = QRegion(parentPlot()->viewport()) - parentPlot()->axisRect()->rect();
    for (const QRect& piece : around) painter->fillRect(piece, PaintOf(look::kWindowGround));
  }

 private:
  static QString Layer() { return QStringLiteral("paper around"); }
};

void PaintPlot(QCustomPlot& plot, QPaintDevice& device, const QSize& size) {
  QCPPainter painter(&device);
  painter.setMode(QCPPainter::pmVectorized);
  std::optional<PaperAround> paper;
  if (painter.paintEngine()->type() == QPaintEngine::SVG) paper.emplace(plot);
  plot.toPainter(&painter, size.width(), size.height());
}

}  // namespace

void ChartMenu::SavePoints() const {
  const auto path = context.face.ChooseFile({.title = "Save points shown",
                                             .filter = "Comma-separated values|*.csv",
                                             .defaultExtension = "csv",
                                             .save = true});
  if (!path || context.window == nullptr) return;
  std::ostringstream points;
  chart.WriteCsv(points);
  context.face.SaveFile(*path, points.str(), "The points could not be saved.");
}

void ChartMenu::SaveWindow() const {
  const auto path = context.face.ChooseFile({.title = "Save all charts of the window",
                                             .filter = "Comma-separated values|*.csv",
                                             .defaultExtension = "csv",
                                             .save = true});
  if (!path || context.window == nullptr) return;
  std::ostringstream points;
  WriteWindowCsv(*context.window, points);
  context.face.SaveFile(*path, points.str(), "The points could not be saved.");
}

// Those that the head names, and of satellites, which have no head, those with points.
void ChartMenu::AddCurves(QMenu& menu) const {
  std::vector<int> curves = NamedSeries(chart);
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    if (chart.Series(i).Design().satellite >= 0 && chart.Series(i).Count() > 0) curves.push_back(i);
  }
  QMenu* const names = menu.addMenu(QStringLiteral("Cur&ves"));
  names->setEnabled(!curves.empty());
  for (const int index : curves) {
    const Series& series = chart.Series(index);
    QString text = ToQt(series.Title());
    QAction* const entry = Add(*names, text.replace(QLatin1Char('&'), QLatin1String("&&")), &plot,
                               [&to = actions, index] { to.ToggleSeries(index); });
    entry->setCheckable(true);
    entry->setChecked(!series.Hidden());
  }
}

void ChartMenu::Show(const QPoint& at) const {
  auto* const menu = new QMenu(&plot);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& text, auto action) {
    return Add(*menu, text, &plot, action);
  };
  const bool alive = context.window != nullptr;
  const bool held = alive && chart.Held();
  add(QStringLiteral("&Undo zoom"), [&to = actions] { to.UndoZoom(); })->setEnabled(held);
  add(QStringLiteral("Show &all"), [&to = actions] { to.ShowAll(); })->setEnabled(held);
  menu->addSeparator();
  add(QStringLiteral("&Copy picture"),
      [drawn = &plot] { QApplication::clipboard()->setPixmap(drawn->toPixmap()); });
  add(QStringLiteral("&Save picture ..."), [own = *this] {
    const auto paint = [&own](QPaintDevice& device, const QSize& size) {
      PaintPlot(own.plot, device, size);
    };
    own.user([&] { SavePicture(own.context.face, own.plot.size(), paint); });
  });
  add(QStringLiteral("Save &points shown as CSV ..."),
      [own = *this] { own.user([&] { own.SavePoints(); }); });
  if (alive) {
    menu->addSeparator();
    if (HasChartsOverTime(*context.window)) {
      QAction* const cursors =
          add(QStringLiteral("Cu&rsors\tC"), [&to = actions] { to.ToggleCursors(); });
      cursors->setCheckable(true);
      cursors->setChecked(actions.HasCursors());
    }
    AddCurves(*menu);
    if (HasChartsOverTime(*context.window)) {
      add(QStringLiteral("Save all charts of the &window as CSV ..."),
          [own = *this] { own.user([&] { own.SaveWindow(); }); });
    }
  }
  menu->popup(at);
}

}  // namespace fathomline
