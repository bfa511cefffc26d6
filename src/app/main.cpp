// The desktop program.
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/screenshots.h"
#include "base/clock.h"
#include "base/command_line.h"
#include "base/settings.h"
#include "base/system.h"
#include "faces/qt/qt_face.h"
#include "faces/qt/qt_links.h"
#include "session/run_desktop.h"
#include "version.h"

namespace {

using namespace fathomline;

struct Wanted {
  StartOptions start;
  std::optional<std::string> screenshots;
};

std::optional<int> Read(const std::vector<std::string>& words, Wanted& wanted, std::ostream& out,
                        std::ostream& err, bool otherOptions) {
  CommandLine line("fathomline", "Judges navigation sensors by their NMEA 0183 sentences.",
                   kVersion);
  line.allow_extras(otherOptions);
  line.AddValue("--screenshots", "DIR",
                "replay the input file, save a picture of every window, end",
                [&](const std::string& text) { wanted.screenshots = text; });
  line.add_option("SETUP.ini|RECORDING", wanted.start.setupFile,
                  "a setup to open instead of the last one, or a recording to look at")
      ->type_name("");
  return line.Take(words, out, err);
}

}  // namespace

int main(int argc, char** argv) {
  PrepareStandardStreams();
  QCoreApplication::setApplicationName(QString::fromUtf8(kProgramTitle).toLower());
  QCoreApplication::setApplicationVersion(QString::fromUtf8(kVersion));
  {
    // Help and version are told without a display. Options of the toolkit are not known yet.
    Wanted ignored;
    std::ostringstream errors;
    const auto told = Read({argv + 1, argv + argc}, ignored, std::cout, errors, true);
    if (told == 0) return 0;
  }
  const QApplication application(argc, argv);
  QGuiApplication::setDesktopFileName(QStringLiteral("org.keelhaven.Fathomline"));
  std::vector<std::string> words;
  for (const QString& word : QCoreApplication::arguments().mid(1)) {
    words.push_back(word.toStdString());
  }
  Wanted wanted;
  if (const auto status = Read(words, wanted, std::cout, std::cerr, false)) return *status;

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
  if (wanted.screenshots) {
    return TakeScreenshots(program, face, wanted.start, *wanted.screenshots);
  }
  return RunDesktop(program, wanted.start);
}
