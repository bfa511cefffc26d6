#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "base/system.h"

namespace fathomline {

// A folder that is gone with its content at the end of the test. Its name has letters beyond ASCII,
// as users' names have.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() /
              PathOf("fathomline-prøve-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // With its trailing separator.
  std::string Path() const { return PathText(path_ / ""); }
  std::string operator/(std::string_view name) const { return PathText(path_ / PathOf(name)); }

  // Makes a file of the given bytes and returns its path.
  std::string Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(path_ / PathOf(name), std::ios::binary) << bytes;
    return *this / name;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace fathomline
