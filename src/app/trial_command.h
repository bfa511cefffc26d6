// The command that writes the trial of up to four recordings.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace fathomline {

// Returns 0 where all limits are kept, 1 where one is not, 2 where the command line or a file
// cannot be used, with one line on `err` that says why. `progress` says whether `err` is a
// terminal.
//
// Each recording is read by a thread of its own; they share nothing until all have ended.
int RunTrialCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                    bool progress = false);

}  // namespace fathomline
