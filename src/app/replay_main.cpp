#include <iostream>

#include "app/replay_tool.h"
#include "base/system.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  fathomline::PrepareStandardStreams();
  return fathomline::RunReplayTool(fathomline::Arguments(argc, argv), std::cout, std::cerr);
}
