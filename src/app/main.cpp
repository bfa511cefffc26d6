// The desktop program. A setup file may be named as its only argument.
#include <QApplication>
#include <QStandardPaths>
#include <cstdlib>

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
  return RunDesktop(program, options);
}
