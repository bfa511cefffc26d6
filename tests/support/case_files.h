// The reviewed files of a folder of tests, one for each instance of a test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace fathomline {

// The names of the *.txt files, without the ending.
inline std::vector<std::string> CaseFiles(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().stem() != "CMakeLists" && entry.path().extension() == ".txt") {
      names.push_back(entry.path().stem().string());
    }
  }
  return names;
}

}  // namespace fathomline
