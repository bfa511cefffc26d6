#include <iostream>
#include <string>
#include <vector>

#include "app/replay_tool.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return fathomline::RunReplayTool(arguments, std::cout, std::cerr);
}
