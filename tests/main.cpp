// Locale and time zone are set before anything else runs: a comma locale where there is one, so
// that a figure which depends on it shows itself.
#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
#if !defined(_WIN32)  // which has its zone from the system alone
  setenv("TZ", "UTC", 1);
#endif
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
