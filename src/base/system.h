// What the operating system gives, the same on every system: system_posix.cpp and
// system_windows.cpp implement it, and nothing else of the engine asks the system itself.
//
// Paths are UTF-8 wherever the program holds them, with the system's separators.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fathomline {

// Paths.

inline constexpr char kPathSeparator =
    static_cast<char>(std::filesystem::path::preferred_separator);

// For std::filesystem and the streams, which would read a plain string in another character set
// and end at a system's older limit of length.
std::filesystem::path PathOf(std::string_view path);
std::string PathText(const std::filesystem::path& path);

// Whether a part of a file name may hold the character, which is none of the path's own.
bool FileNameHolds(char32_t character);
// Whether a file name of that text would be something else to the system, such as a device.
bool IsReservedFileName(std::string_view name);

// The folder, with a separator at its end, in which a user finds what the programs keep.
std::string DataHome();

// Faults. Each raises with the cause, in the system's own words where there are no better ones, and
// the path.

std::string SystemMessage(std::error_code error);
[[noreturn]] void RaiseSystemError(std::error_code error, const std::string& path);

// An open file, or a stream such as a pipe. Others may read, write, rename and remove it meanwhile.
class SystemFile {
 public:
  enum class Use { Read, Replace, Append };

  // A stream that nobody writes to, or a device, does not hold the program up.
  SystemFile(const std::string& path, Use use);
  ~SystemFile();
  SystemFile(const SystemFile&) = delete;
  SystemFile& operator=(const SystemFile&) = delete;

  // A stream has no size, and its bytes come when they come.
  bool IsStream() const { return isStream_; }
  // In bytes, when it was opened.
  std::uint64_t Size() const { return size_; }

  // The count of bytes that were read; 0 at the end, nothing while a stream has none.
  std::optional<std::size_t> Read(char* into, std::size_t most);
  // Until a stream has bytes.
  void Wait(std::chrono::milliseconds longest);

  // At the end of the file: all of it or, where the system refuses, as on a full disk, nothing. The
  // bytes outlive the program from then on, and the machine once they have been made durable.
  void Write(std::string_view bytes);
  void MakeDurable();

 private:
  // A descriptor or a handle.
  std::intptr_t handle_;
  std::string path_;
  bool isStream_ = false;
  std::uint64_t size_ = 0;
};

// Renames a file, over another one if need be.
void RenameFile(const std::string& from, const std::string& to);
// Raises the fault that reading would begin with. Takes nothing out of a stream.
void ExpectReadable(const std::string& path);

// Holds a file against other programs until it is destroyed, or the program ends in any way.
class FileLock {
 public:
  FileLock() = default;
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  // False where another program holds it. Makes the file if need be.
  bool Take(const std::string& path);

 private:
  std::optional<std::intptr_t> handle_;
};

// The process.

// How far local time is ahead of UTC at that moment.
std::chrono::seconds LocalOffset(std::time_t moment);

// The most memory that the program has used so far, in bytes.
std::uint64_t PeakMemory();

// What stands behind the program's name on its command line, in UTF-8.
std::vector<std::string> Arguments(int argc, const char* const* argv);

// Bytes leave the program as they are written, and a console shows them as UTF-8 and obeys their
// escape sequences. A windowed program gets the console that it was started from.
void PrepareStandardStreams();

}  // namespace fathomline
