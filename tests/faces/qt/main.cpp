// Platform, locale and time zone are set before the application is made; one serves all tests.
#include <QApplication>
#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("TZ", "UTC", 1);
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  return RUN_ALL_TESTS();
}
