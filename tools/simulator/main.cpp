#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/system.h"
#include "simulator/command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  fathomline::PrepareStandardStreams();
  const std::vector<std::string> arguments = fathomline::Arguments(argc, argv);
  return fathomline::simulator::RunSimulateCommand(
      std::vector<std::string_view>(arguments.begin(), arguments.end()), std::cout, std::cerr);
}
