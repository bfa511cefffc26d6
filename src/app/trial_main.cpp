#include <iostream>
#include <unistd.h>

#include "app/trial_command.h"
#include "base/system.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  fathomline::PrepareStandardStreams();
  const auto arguments = fathomline::Arguments(argc, argv);
  return fathomline::RunTrialCommand(arguments, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
