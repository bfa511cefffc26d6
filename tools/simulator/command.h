// The command line of fathomline-simulate.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "simulator/outlets.h"
#include "simulator/simulator.h"

namespace fathomline::simulator {

enum class OutletKind { Tcp, Udp, Terminal };

struct OutletChoice {
  OutletKind kind;
  Endpoint endpoint;     // of sockets
  std::string linkPath;  // of a terminal; empty: none
};

struct SimulateCommand {
  SimulationOptions options;
  std::vector<OutletChoice> outlets;  // none: everything is written at once
  double speed = 1.0;                 // simulated seconds a second; 0: as fast as can be
  std::string output;                 // empty: standard output, or not written where it is live
  std::string truth;                  // empty: not written
};

// Fills the command from the arguments (without the program's name). Returns the exit status where
// there is nothing to be simulated: help or version has been told on `out`, or what is wrong in one
// line on `err`.
std::optional<int> ReadSimulateCommand(const std::vector<std::string>& arguments,
                                       SimulateCommand& command, std::ostream& out,
                                       std::ostream& err);

// Does what the arguments ask for. Returns the exit status: 0, or 2 with one line on `err`. A live
// simulation tells on `out`, a line each, where it can be had, and on `err` who comes and goes.
int RunSimulateCommand(const std::vector<std::string>& arguments, std::ostream& out,
                       std::ostream& err);

}  // namespace fathomline::simulator
