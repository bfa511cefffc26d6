// The whole program on the desktop: every window of the registry is drawn, named and let go again.
#include "pipeline/program.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QLabel>
#include <QTableView>
#include <QToolButton>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "qt/qt_fixture.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

class ProgramOnTheDesktop : public testing::Test {
 public:
  TemporaryFolder folder;
  SystemClock clock;
  SettingsStore settings;
  QtFace face;
  Program program{{face, clock, settings, [] {}}};

  void SetUp() override {
    std::ifstream in(FATHOMLINE_SOURCE_DIR "/samples/sample.ini.in");
    std::stringstream text;
    text << in.rdbuf();
    std::string setup = text.str();
    const std::string mark = "@SAMPLES@";
    for (auto at = setup.find(mark); at != std::string::npos; at = setup.find(mark)) {
      setup.replace(at, mark.size(), FATHOMLINE_SOURCE_DIR "/samples");
    }
    const std::string file = folder / "sample.ini";
    std::ofstream(file) << setup;
    ASSERT_TRUE(program.startUp.Start({.programFolder = folder / "program", .setupFile = file}));
    face.Draw();
  }

  void PumpUntil(const std::function<bool()>& done) {
    const auto end = face.Now() + std::chrono::seconds(60);
    face.RunUntil([&] { return done() || face.Now() > end; });
    EXPECT_TRUE(done()) << "waited in vain";
  }

  QToolButton* Key(const char* caption) {
    for (auto* const button : face.HostOf(program.mainWindow)->findChildren<QToolButton*>()) {
      if (button->text() == caption) return button;
    }
    return nullptr;
  }
};

TEST_F(ProgramOnTheDesktop, ReplaysARecordingFromPlayToItsEnd) {
  program.OpenView(ViewKind::Statistics, 1);
  face.Draw();
  QTest::mouseClick(Key("PLAY"), Qt::LeftButton);
  EXPECT_TRUE(program.records.OfflineRunning);
  PumpUntil([&] { return !program.records.OfflineRunning; });
  face.Draw();
  face.Draw();
  Grid& grid = program.statisticsWindows[1]->GridOf(SentenceType::GGA);
  const auto* const table = dynamic_cast<QTableView*>(face.WidgetOf(grid));
  ASSERT_NE(table, nullptr);
  EXPECT_NE(grid.Text(1, 1), "");
  EXPECT_EQ(table->model()->index(0, 0).data().toString().toStdString(), grid.Text(1, 1));
}

TEST_F(ProgramOnTheDesktop, AWindowBroughtForwardShowsWhatItsLabelsSay) {
  program.OpenAnalysedWindows(1);
  program.OpenView(ViewKind::Skyplot, 1);
  program.OpenView(ViewKind::NMEA, 1);
  face.Draw();
  program.mainWindow.tbOffline.Click("PLAY");
  PumpUntil([&] { return !program.records.OfflineRunning; });
  program.OpenView(ViewKind::Skyplot, 1);
  face.Draw();
  face.Draw();
  for (Window* const window : program.desktop.Windows()) {
    if (window->Name() != "frmSkyplot" || !window->Visible()) continue;
    for (const Control* const control : window->Controls()) {
      const auto* const label = dynamic_cast<QLabel*>(face.WidgetOf(*control));
      if (label == nullptr || label->visibleRegion().isEmpty()) continue;
      EXPECT_EQ(label->text().toStdString(), control->Text()) << control->Name();
    }
  }
}

TEST_F(ProgramOnTheDesktop, EveryWindowIsDrawnWithNamedControlsAndLetGoAgain) {
  program.OpenAnalysedWindows(1);
  for (const ViewKind kind : {ViewKind::Scatter, ViewKind::Skyplot, ViewKind::NMEA}) {
    program.OpenView(kind, 1);
  }
  program.setupDialog.Open(1);
  program.newWindow.Show();
  program.about.Show();
  face.Draw();
  face.Draw();
  int drawn = 0;
  for (Window* const window : program.desktop.Windows()) {
    if (!window->Visible()) continue;
    SCOPED_TRACE(window->FullName());
    QWidget* const host = face.HostOf(*window);
    ASSERT_NE(host, nullptr);
    ++drawn;
    std::set<QRgb> colours;
    const QImage image = host->grab().toImage();
    for (int y = 0; y < image.height(); y += 3) {
      for (int x = 0; x < image.width(); x += 3) colours.insert(image.pixel(x, y));
    }
    EXPECT_GT(colours.size(), 2U) << "blank";
    if (window->Style() == WindowStyle::Dialog) {
      EXPECT_LE(host->width(), 1280);
      EXPECT_LE(host->height(), 720);
    }
    for (const Control* const control : window->Controls()) {
      if (control->Kind() == ControlKind::MenuItem) continue;
      QWidget* const widget = face.WidgetOf(*control);
      if (widget == nullptr) {
        EXPECT_EQ(control->Kind(), ControlKind::Frame) << control->Name();
        continue;
      }
      EXPECT_EQ(widget->objectName().toStdString(), control->Name());
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << control->Name();
    }
  }
  EXPECT_GT(drawn, 20);
  for (Window* const window : program.desktop.Windows()) {
    if (window->Style() == WindowStyle::Main) continue;
    if (window->Visible() && !window->Close()) ADD_FAILURE() << window->FullName();
  }
  face.Draw();
  for (Window* const window : program.desktop.Windows()) {
    if (!window->Loaded()) {
      EXPECT_EQ(face.HostOf(*window), nullptr) << window->FullName();
    }
  }
}

TEST_F(ProgramOnTheDesktop, StopAsksWhileTheReplayGoesOn) {
  QTest::mouseClick(Key("PLAY"), Qt::LeftButton);
  QTimer clicker;
  int before = -1;
  const auto lines = [&] { return static_cast<int>(program.records.SentenceCount); };
  QObject::connect(&clicker, &QTimer::timeout, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    if (before < 0) before = lines();
    if (lines() == before && program.records.OfflineRunning) return;
    QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
  });
  clicker.start(1);
  face.Draw();
  QTest::mouseClick(Key("STOP"), Qt::LeftButton);
  EXPECT_GE(before, 0);
  EXPECT_GT(lines(), before);
  PumpUntil([&] { return !program.records.OfflineRunning; });
}

}  // namespace
}  // namespace fathomline
