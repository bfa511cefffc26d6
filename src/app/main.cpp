// The desktop program.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <cstdlib>

#include "app/screenshots.h"
#include "base/clock.h"
#include "base/settings.h"
#include "base/system.h"
#include "faces/qt/qt_face.h"
#include "faces/qt/qt_links.h"
#include "session/run_desktop.h"
#include "version.h"

namespace {

const QString kScreenshots = QStringLiteral("screenshots");

void Describe(QCommandLineParser& parser) {
  parser.setApplicationDescription(
      QStringLiteral("Judges navigation sensors by their NMEA 0183 sentences."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOption({kScreenshots,
                    QStringLiteral("replay the input file, save a picture of every window, end"),
                    QStringLiteral("DIR")});
  parser.addPositionalArgument(QStringLiteral("SETUP.ini"),
                               QStringLiteral("the setup to open instead of the last one"),
                               QStringLiteral("[SETUP.ini]"));
}

// Help and version are told without a display.
void AnswerOnConsole(int argc, char** argv) {
  QCoreApplication console(argc, argv);
  QCommandLineParser parser;
  Describe(parser);
  parser.parse(QCoreApplication::arguments());
  if (parser.isSet(QStringLiteral("help"))) parser.showHelp();
  if (parser.isSet(QStringLiteral("version"))) parser.showVersion();
}

}  // namespace

int main(int argc, char** argv) {
  using namespace fathomline;
  PrepareStandardStreams();
  QCoreApplication::setApplicationName(QString::fromUtf8(kProgramTitle).toLower());
  QCoreApplication::setApplicationVersion(QString::fromUtf8(kVersion));
  AnswerOnConsole(argc, argv);
  const QApplication application(argc, argv);
  QGuiApplication::setDesktopFileName(QStringLiteral("org.keelhaven.Fathomline"));
  QCommandLineParser parser;
  Describe(parser);
  parser.process(application);

  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
  IniSettings settings(
      QDir::toNativeSeparators(folder + QStringLiteral("/settings.ini")).toStdString());
  const SystemClock clock;
  QtLinks links(settings);
  QtFace face;
  Program program({face, clock, settings, [] { std::_Exit(1); }, &links});
  // The desktop's session ends: what there is to save must be saved when this returns.
  QObject::connect(
      &application, &QGuiApplication::commitDataRequest, &application,
      [&program] { program.session.startUp.EndAtOnce(); }, Qt::DirectConnection);
  StartOptions options;
  const QStringList setups = parser.positionalArguments();
  if (!setups.isEmpty()) options.setupFile = setups.front().toStdString();
  if (parser.isSet(kScreenshots)) {
    return TakeScreenshots(program, face, options, parser.value(kScreenshots).toStdString());
  }
  return RunDesktop(program, options);
}
