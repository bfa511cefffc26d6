// Platform, locale and time zone are set before the application is made; one serves all tests. The
// platform and the size of the font may be told, for a run on another screen.
#include <QApplication>
#include <QFont>
#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  const QByteArray platform = qgetenv("FATHOMLINE_TEST_PLATFORM");
  setenv("QT_QPA_PLATFORM", platform.isEmpty() ? "offscreen" : platform.constData(), 1);
  setenv("TZ", "UTC", 1);
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  if (const int percent = qEnvironmentVariableIntValue("FATHOMLINE_TEST_FONT"); percent > 0) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * percent / 100.0);
    QApplication::setFont(font);
  }
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  return RUN_ALL_TESTS();
}
