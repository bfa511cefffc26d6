// Pictures of every window for the documents.
#pragma once

#include <string>

#include "faces/qt/qt_face.h"
#include "session/program.h"
#include "session/start_up.h"

namespace fathomline {

// Starts the program with the setup file, replays its recording with every window of system 1
// open, and writes one PNG per window, named after it, into the folder. The exit status.
int TakeScreenshots(Program& program, QtFace& face, const StartOptions& options,
                    const std::string& folder);

}  // namespace fathomline
