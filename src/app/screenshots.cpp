#include "app/screenshots.h"

#include <QDir>
#include <QPixmap>
#include <QString>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <iterator>
#include <string_view>

namespace fathomline {
namespace {

constexpr int kSystem = 1;
constexpr WindowPlace kMainPlace{0, 0, 1280 * kTwipsPerPixel, 800 * kTwipsPerPixel};

class Camera {
 public:
  Camera(Program& program, QtFace& face, const std::string& folder)
      : program_(program), face_(face), folder_(QString::fromStdString(folder)) {}

  void Take(const Window& window) {
    Settle();
    // Not all of it need stand on the screen.
    face_.DrawWhole(window);
    if (QWidget* const host = face_.HostOf(window)) Save(*host, window.FullName());
  }

  void Save(QWidget& widget, const std::string& name) {
    widget.grab().save(folder_.filePath(QString::fromStdString(name) + QStringLiteral(".png")));
  }

  // Until everything has been laid out, drawn and painted.
  void Settle() {
    const auto until = face_.Now() + std::chrono::milliseconds(250);
    program_.desktop.RunUntil([&] { return face_.Now() >= until; });
    face_.Draw();
    // What has been written asks for its room with an event.
    face_.Turn();
  }

 private:
  Program& program_;
  QtFace& face_;
  QDir folder_;
};

}  // namespace

int TakeScreenshots(Program& program, QtFace& face, const StartOptions& options,
                    const std::string& folder) {
  QDir().mkpath(QString::fromStdString(folder));
  if (!program.session.startUp.Start(options)) return 1;
  Camera camera(program, face, folder);
  program.windows.main.SetState(WindowState::Normal);
  program.windows.main.SetPlace(kMainPlace);
  camera.Settle();
  camera.Save(*face.HostOf(program.windows.main), "start");

  program.windows.OpenAnalysed(kSystem);
  for (const ViewKind kind : {ViewKind::Scatter, ViewKind::Skyplot, ViewKind::NMEA}) {
    program.windows.OpenView(kind, kSystem);
  }
  for (Window* const window : std::initializer_list<Window*>{&program.session.tools.sources,
                                                             &program.session.tools.sentenceLog,
                                                             &program.session.tools.satellites}) {
    window->Show();
  }
  camera.Settle();
  program.windows.main.tbOffline.Click("PLAY");
  program.desktop.RunUntil([&] { return !program.engine.records.OfflineRunning; });
  if (program.engine.targets.AISTargetCount(kSystem) > 0)
    program.windows.aisExtraInfo.Open({kSystem, 1}, 0, 0);
  const std::vector<Window*> windows = program.desktop.Windows();
  for (Window* const window : windows) {
    if (!window->Visible() || window->Style() != WindowStyle::Child) continue;
    window->Show();
    camera.Take(*window);
  }
  // The usual windows of a session side by side; all of them would be as small as stamps.
  constexpr std::string_view kUsual[] = {"frmNumerics", "frmStatistics", "frmTimeSeriesGGA",
                                         "frmSkyplot"};
  for (Window* const window : windows) {
    if (window->Style() != WindowStyle::Child || !window->Visible()) continue;
    if (std::find(std::begin(kUsual), std::end(kUsual), window->Name()) == std::end(kUsual)) {
      window->Hide();
    }
  }
  program.desktop.Arrange(Arrangement::TileHorizontally);
  camera.Take(program.windows.main);
  program.session.setupDialog.Open(kSystem);
  camera.Take(program.session.setupDialog);
  program.session.setupDialog.Close();
  for (Window* const window : std::initializer_list<Window*>{
           &program.windows.newWindow, &program.windows.geoFormat, &program.windows.document,
           &program.windows.about, &program.windows.comportInfo}) {
    window->Show();
    camera.Take(*window);
    window->Close();
  }
  return 0;
}

}  // namespace fathomline
