#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/trial_command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return fathomline::RunTrialCommand(arguments, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
