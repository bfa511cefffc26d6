#include "session/run_desktop.h"

namespace fathomline {

int RunDesktop(Program& program, const StartOptions& options) {
  if (!program.session.startUp.Start(options)) return 1;
  program.desktop.RunUntil([] { return false; });
  return 0;
}

}  // namespace fathomline
