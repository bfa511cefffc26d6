#include <iostream>
#include <string_view>
#include <vector>

#include "simulator/command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  return fathomline::simulator::RunSimulateCommand(arguments, std::cout, std::cerr);
}
