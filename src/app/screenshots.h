// Pictures of every window for the documents.
#pragma once

#include <string>

#include "pipeline/program.h"
#include "pipeline/start_up.h"
#include "platform/qt/qt_face.h"

namespace fathomline {

// Starts the program with the setup file, replays its recording with every window of system 1
// open, and writes one PNG per window, named after it, into the folder. The exit status.
int TakeScreenshots(Program& program, QtFace& face, const StartOptions& options,
                    const std::string& folder);

}  // namespace fathomline
