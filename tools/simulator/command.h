// The command line of fathomline-simulate.
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <string_view>
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
  bool help = false;
  bool version = false;
};

// Raises InvalidCall, with a line for the user, where an argument is wrong.
SimulateCommand ParseSimulateCommand(std::span<const std::string_view> arguments);

// Does what the arguments (without the program's name) ask for. Returns the exit status: 0, or 2
// with one line on `err`. A live simulation tells on `out`, a line each, where it can be had, and
// on `err` who comes and goes.
int RunSimulateCommand(std::span<const std::string_view> arguments, std::ostream& out,
                       std::ostream& err);

}  // namespace fathomline::simulator
