// The desktop program. A setup file may be named as its first argument; "--screenshots FOLDER"
// behind it takes pictures of every window instead of waiting for a user.
#include <QApplication>
#include <QStandardPaths>
#include <cstdlib>

#include "app/screenshots.h"
#include "pipeline/run_desktop.h"
#include "platform/clock.h"
#include "platform/qt/qt_face.h"
#include "platform/qt/qt_links.h"
#include "platform/settings.h"
#include "version.h"

int main(int argc, char** argv) {
  using namespace fathomline;
  QCoreApplication::setApplicationName(QString::fromUtf8(kProgramTitle).toLower());
  QCoreApplication::setApplicationVersion(QString::fromUtf8(kVersion));
  const QApplication application(argc, argv);
  QGuiApplication::setApplicationDisplayName(QString::fromUtf8(kProgramTitle));

  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
  IniSettings settings((folder + QStringLiteral("/settings.ini")).toStdString());
  const SystemClock clock;
  QtLinks links(settings);
  QtFace face;
  Program program({face, clock, settings, [] { std::_Exit(1); }, &links});
  StartOptions options;
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() > 1) options.setupFile = arguments[1].toStdString();
  if (arguments.size() > 3 && arguments[2] == QStringLiteral("--screenshots")) {
    return TakeScreenshots(program, face, options, arguments[3].toStdString());
  }
  return RunDesktop(program, options);
}
