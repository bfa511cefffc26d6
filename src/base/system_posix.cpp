#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/fault.h"
#include "base/system.h"

namespace fathomline {
namespace {

// The error of the call before.
std::error_code LastError() {
  // To its user, a used-up share of the disk is a full disk.
  return {errno == EDQUOT ? ENOSPC : errno, std::generic_category()};
}

int Open(const std::string& path, int flags) {
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) RaiseSystemError(LastError(), path);
  return descriptor;
}

int FlagsOf(SystemFile::Use use) {
  switch (use) {
    case SystemFile::Use::Read:
      return O_RDONLY | O_NONBLOCK | O_NOCTTY;
    case SystemFile::Use::Replace:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case SystemFile::Use::Append:
      break;
  }
  return O_WRONLY | O_CREAT | O_APPEND;
}

int DescriptorOf(std::intptr_t handle) {
  return static_cast<int>(handle);
}

}  // namespace

std::filesystem::path PathOf(std::string_view path) {
  return {path};
}

std::string PathText(const std::filesystem::path& path) {
  return path.string();
}

bool FileNameHolds(char32_t character) {
  return character >= 0x20 && character != 0x7F && character != U'/';
}

bool IsReservedFileName(std::string_view /*name*/) {
  return false;
}

std::string DataHome() {
  const char* const home = std::getenv("HOME");
  return std::string(home == nullptr ? "." : home) + kPathSeparator;
}

std::string SystemMessage(std::error_code error) {
  return error.message();
}

SystemFile::SystemFile(const std::string& path, Use use)
    : handle_(Open(path, FlagsOf(use))), path_(path) {
  struct stat status {};
  if (::fstat(DescriptorOf(handle_), &status) != 0) return;
  isStream_ = !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
  if (S_ISREG(status.st_mode)) size_ = static_cast<std::uint64_t>(status.st_size);
}

SystemFile::~SystemFile() {
  ::close(DescriptorOf(handle_));
}

std::optional<std::size_t> SystemFile::Read(char* into, std::size_t most) {
  for (;;) {
    const ssize_t count = ::read(DescriptorOf(handle_), into, most);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN) return {};
    if (errno != EINTR) RaiseSystemError(LastError(), path_);
  }
}

void SystemFile::Wait(std::chrono::milliseconds longest) {
  pollfd input{DescriptorOf(handle_), POLLIN, 0};
  ::poll(&input, 1, static_cast<int>(longest.count()));
}

void SystemFile::Write(std::string_view bytes) {
  const int descriptor = DescriptorOf(handle_);
  const off_t begin = ::lseek(descriptor, 0, SEEK_END);
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      const std::error_code error = LastError();
      // What comes when there is room again must not continue half a line.
      if (begin >= 0 && ::ftruncate(descriptor, begin) == 0) ::lseek(descriptor, begin, SEEK_SET);
      RaiseSystemError(error, path_);
    }
  }
}

void SystemFile::MakeDurable() {
  if (::fsync(DescriptorOf(handle_)) != 0) RaiseSystemError(LastError(), path_);
}

void RenameFile(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) RaiseSystemError(LastError(), to);
}

void ExpectReadable(const std::string& path) {
  if (::access(path.c_str(), R_OK) != 0) RaiseSystemError(LastError(), path);
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    RaiseSystemError(std::make_error_code(std::errc::is_a_directory), path);
  }
}

FileLock::~FileLock() {
  if (handle_) ::close(DescriptorOf(*handle_));
}

bool FileLock::Take(const std::string& path) {
  handle_ = Open(path, O_RDWR | O_CREAT);
  // Ends with the program, however it ends.
  if (::flock(DescriptorOf(*handle_), LOCK_EX | LOCK_NB) == 0) return true;
  if (errno != EWOULDBLOCK) RaiseSystemError(LastError(), path);
  return false;
}

std::chrono::seconds LocalOffset(std::time_t moment) {
  std::tm local{};
  ::localtime_r(&moment, &local);
  return std::chrono::seconds(local.tm_gmtoff);
}

std::uint64_t PeakMemory() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

std::vector<std::string> Arguments(int argc, const char* const* argv) {
  return {argv + 1, argv + argc};
}

void PrepareStandardStreams() {}

}  // namespace fathomline
