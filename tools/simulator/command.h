// The command line of fathomline-simulate.
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "simulator/simulator.h"

namespace fathomline::simulator {

struct SimulateCommand {
  SimulationOptions options;
  std::string output;  // empty: standard output
  std::string truth;   // empty: not written
  bool help = false;
  bool version = false;
};

// Raises InvalidCall, with a line for the user, where an argument is wrong.
SimulateCommand ParseSimulateCommand(std::span<const std::string_view> arguments);

// Does what the arguments (without the program's name) ask for. Returns the exit status: 0, or 2
// with one line on `err`.
int RunSimulateCommand(std::span<const std::string_view> arguments, std::ostream& out,
                       std::ostream& err);

}  // namespace fathomline::simulator
