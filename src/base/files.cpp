#include "base/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "base/fault.h"

namespace fathomline {
namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr std::size_t kLargestWhole = std::size_t{256} * 1024 * 1024;
constexpr int kFirstFreeNumber = 5;

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

FaultNumber NumberOf(int error, const std::string& path) {
  switch (error) {
    case ENOENT:
      return FolderExists(FolderOf(path)) ? FaultNumber::FileNotFound : FaultNumber::PathNotFound;
    case ENOTDIR:
      return FaultNumber::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return FaultNumber::PermissionDenied;
    case EISDIR:
    case EEXIST:
    case EFBIG:
      return FaultNumber::PathAccess;
    case ENOSPC:
    case EDQUOT:
      return FaultNumber::DiskFull;
    default:
      return FaultNumber::DeviceError;
  }
}

[[noreturn]] void RaiseSystemError(int error, const std::string& path) {
  const FaultNumber number = NumberOf(error, path);
  std::string cause(Description(number));
  if (number == FaultNumber::DeviceError || number == FaultNumber::PathAccess) {
    cause.append(" (").append(std::strerror(error)).append(")");
  }
  Raise(number, cause + ": " + path);
}

int OpenDescriptor(const std::string& path, int flags) {
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) RaiseSystemError(errno, path);
  return descriptor;
}

// A pipe that nobody writes to, or a device, must not hold the program up.
int OpenToRead(const std::string& path) {
  return OpenDescriptor(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
}

void WriteAll(int descriptor, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      RaiseSystemError(errno, path);
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// Closes on the way out; keeps what it was given until then.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  ~Descriptor() { ::close(descriptor_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Get() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace

LineReader::LineReader(const std::string& path)
    : descriptor_(OpenToRead(path)),
      path_(path),
      buffer_(std::make_unique<char[]>(kBlock)),
      capacity_(kBlock) {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) return;
  isStream_ = !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
  if (S_ISREG(status.st_mode)) size_ = static_cast<std::uint64_t>(status.st_size);
}

LineReader::~LineReader() {
  ::close(descriptor_);
}

// Brings more bytes behind those that wait.
LineReader::Read LineReader::ReadMore() {
  if (exhausted_) return Read::End;
  if (begin_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == capacity_) {
    auto larger = std::make_unique<char[]>(capacity_ * 2);
    std::memcpy(larger.get(), buffer_.get(), end_);
    buffer_ = std::move(larger);
    capacity_ *= 2;
  }
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, buffer_.get() + end_, capacity_ - end_);
  } while (count < 0 && errno == EINTR);
  if (count < 0 && errno == EAGAIN) return Read::Nothing;
  if (count <= 0) {
    exhausted_ = true;
    if (count < 0) RaiseSystemError(errno, path_);
    return Read::End;
  }
  end_ += static_cast<std::size_t>(count);
  return Read::Bytes;
}

bool LineReader::Fill() {
  const Read read = ReadMore();
  if (read == Read::Nothing) RaiseSystemError(EAGAIN, path_);
  return read == Read::Bytes;
}

bool LineReader::WaitForLine(std::chrono::steady_clock::time_point until) {
  using std::chrono::milliseconds;
  for (std::size_t scanned = 0;;) {
    const std::size_t waiting = end_ - begin_;
    const char* const line = buffer_.get() + begin_;
    if (std::memchr(line + scanned, '\n', waiting - scanned) != nullptr) return true;
    if (waiting >= kLongestLine) return true;
    scanned = waiting;
    const Read read = ReadMore();
    if (read == Read::End) return true;
    if (read == Read::Bytes) continue;
    const auto left = std::chrono::ceil<milliseconds>(until - std::chrono::steady_clock::now());
    if (left <= milliseconds{0}) return false;
    pollfd input{descriptor_, POLLIN, 0};
    ::poll(&input, 1, static_cast<int>(left.count()));
  }
}

std::string_view LineReader::Next() {
  if (AtEnd()) Raise(FaultNumber::PastEndOfFile);
  std::size_t scanned = 0;
  for (;;) {
    const char* const line = buffer_.get() + begin_;
    const std::size_t waiting = end_ - begin_;
    const auto* const feed =
        static_cast<const char*>(std::memchr(line + scanned, '\n', waiting - scanned));
    if (feed != nullptr) {
      auto length = static_cast<std::size_t>(feed - line);
      begin_ += length + 1;
      consumed_ += length + 1;
      if (length > 0 && line[length - 1] == '\r') --length;
      return {line, length};
    }
    scanned = waiting;
    if (waiting < kLongestLine && Fill()) continue;
    const std::string_view last(buffer_.get() + begin_, waiting);
    begin_ = end_;
    consumed_ += waiting;
    return last;
  }
}

struct FileTable::OpenFile {
  std::unique_ptr<LineReader> reader;
  std::unique_ptr<Descriptor> writer;
  std::string path;
};

FileTable::FileTable() = default;
FileTable::~FileTable() = default;

int FileTable::FreeFile() const {
  int number = kFirstFreeNumber;
  while (IsOpen(number)) ++number;
  return number;
}

void FileTable::OpenForInput(int number, const std::string& path) {
  if (IsOpen(number)) Raise(FaultNumber::FileAlreadyOpen);
  auto file = std::make_unique<OpenFile>();
  file->reader = std::make_unique<LineReader>(path);
  file->path = path;
  files_.emplace(number, std::move(file));
}

void FileTable::OpenForWriting(int number, const std::string& path, int flags) {
  if (IsOpen(number)) Raise(FaultNumber::FileAlreadyOpen);
  auto file = std::make_unique<OpenFile>();
  file->writer = std::make_unique<Descriptor>(OpenDescriptor(path, O_WRONLY | O_CREAT | flags));
  file->path = path;
  files_.emplace(number, std::move(file));
}

void FileTable::OpenForOutput(int number, const std::string& path) {
  OpenForWriting(number, path, O_TRUNC);
}

void FileTable::OpenForAppend(int number, const std::string& path) {
  OpenForWriting(number, path, O_APPEND);
}

LineReader& FileTable::Reader(int number) {
  const auto found = files_.find(number);
  if (found == files_.end() || !found->second->reader) Raise(FaultNumber::BadFileNumber);
  return *found->second->reader;
}

void FileTable::Write(int number, std::string_view bytes) {
  const auto found = files_.find(number);
  if (found == files_.end() || !found->second->writer) Raise(FaultNumber::BadFileNumber);
  const int descriptor = found->second->writer->Get();
  const off_t begin = ::lseek(descriptor, 0, SEEK_END);
  try {
    WriteAll(descriptor, bytes, found->second->path);
  } catch (const Fault&) {
    // What comes when there is room again must not continue half a line.
    if (begin >= 0 && ::ftruncate(descriptor, begin) == 0) ::lseek(descriptor, begin, SEEK_SET);
    throw;
  }
}

void FileTable::Close(int number) {
  files_.erase(number);
}
void FileTable::CloseAll() {
  files_.clear();
}

bool FileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool FolderExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void MakeFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) != 0) RaiseSystemError(errno, path);
}

void RenameFile(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) RaiseSystemError(errno, to);
}

std::string ReadWholeFile(const std::string& path) {
  const Descriptor file(OpenToRead(path));
  struct stat status {};
  if (::fstat(file.Get(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
    Raise(FaultNumber::PathAccess,
          std::string(Description(FaultNumber::PathAccess)) + " (Not a file): " + path);
  }
  std::string content;
  for (;;) {
    const std::size_t have = content.size();
    content.resize(have + kBlock);
    const ssize_t count = ::read(file.Get(), content.data() + have, kBlock);
    content.resize(have + static_cast<std::size_t>(count > 0 ? count : 0));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) RaiseSystemError(errno, path);
    if (count == 0) return content;
    if (content.size() > kLargestWhole) RaiseSystemError(EFBIG, path);
  }
}

void ExpectReadable(const std::string& path) {
  if (::access(path.c_str(), R_OK) != 0) RaiseSystemError(errno, path);
  if (FolderExists(path)) RaiseSystemError(EISDIR, path);
}

void ReplaceFile(const std::string& path, std::string_view content) {
  ReplaceFile(path, content, path + ".tmp");
}

void ReplaceFile(const std::string& path, std::string_view content, const std::string& temporary) {
  try {
    {
      const Descriptor file(OpenDescriptor(temporary, O_WRONLY | O_CREAT | O_TRUNC));
      WriteAll(file.Get(), content, temporary);
      if (::fsync(file.Get()) != 0) RaiseSystemError(errno, temporary);
    }
    RenameFile(temporary, path);
  } catch (const Fault&) {
    ::unlink(temporary.c_str());
    throw;
  }
}

}  // namespace fathomline
