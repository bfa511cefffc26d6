#include <iostream>

#include "base/system.h"
#include "simulator/command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  fathomline::PrepareStandardStreams();
  return fathomline::simulator::RunSimulateCommand(fathomline::Arguments(argc, argv), std::cout,
                                                   std::cerr);
}
