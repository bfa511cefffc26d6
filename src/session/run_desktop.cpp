#include "session/run_desktop.h"

#include "session/end_request.h"

namespace fathomline {

int RunDesktop(Program& program, const StartOptions& options) {
  const EndRequest end(program.desktop, [&program] { program.session.startUp.EndAtOnce(); });
  if (!program.session.startUp.Start(options)) return 1;
  program.desktop.RunUntil([] { return false; });
  return 0;
}

}  // namespace fathomline
