// The replay tool: the program on the headless face, driven by a command line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace fathomline {

// Runs with the arguments behind the tool's name. Returns the exit status: 0, or 2 where the
// command line or a file cannot be used, which `err` then says in one line.
int RunReplayTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace fathomline
