#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace fathomline {

// A folder that is gone with its content at the end of the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "fathomline-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // With its trailing separator.
  std::string Path() const { return path_ + "/"; }
  std::string operator/(std::string_view name) const { return Path().append(name); }

  // Makes a file of the given bytes and returns its path.
  std::string Write(std::string_view name, std::string_view bytes) const {
    const std::string path = *this / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

 private:
  std::string path_;
};

}  // namespace fathomline
