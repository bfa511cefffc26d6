// The way in for a desktop program. All that its main function has to do:
//
//   SystemClock clock;
//   IniSettings settings(file of the user's configuration folder);
//   <a Face>, <its Links>;
//   Program program({face, clock, settings, [] { std::_Exit(1); }, &links});
//   return RunDesktop(program, {.setupFile = name given as argument});
//
// Face and links are made before the program and outlive it.
#pragma once

#include "session/program.h"
#include "session/start_up.h"

namespace fathomline {

// Starts the program and serves it until its main window has been closed, or a signal asks it to
// end. The exit status: 0, or 1 where the program could not start; a box has told why.
int RunDesktop(Program& program, const StartOptions& options);

}  // namespace fathomline
