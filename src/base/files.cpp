#include "base/files.h"

#include <algorithm>
#include <cstring>
#include <system_error>
#include <utility>

#include "base/fault.h"
#include "base/system.h"

namespace fathomline {
namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr std::size_t kLargestWhole = std::size_t{256} * 1024 * 1024;
constexpr int kFirstFreeNumber = 5;

}  // namespace

LineReader::LineReader(const std::string& path)
    : file_(path, SystemFile::Use::Read),
      path_(path),
      buffer_(std::make_unique<char[]>(kBlock)),
      capacity_(kBlock) {}

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
  exhausted_ = true;  // which a fault leaves it
  const std::optional<std::size_t> count = file_.Read(buffer_.get() + end_, capacity_ - end_);
  exhausted_ = count == 0U;
  if (!count) return Read::Nothing;
  end_ += *count;
  return exhausted_ ? Read::End : Read::Bytes;
}

bool LineReader::Fill() {
  const Read read = ReadMore();
  if (read == Read::Nothing) {
    RaiseSystemError(std::make_error_code(std::errc::resource_unavailable_try_again), path_);
  }
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
    file_.Wait(left);
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

std::string_view LineReader::Peek() {
  const std::uint64_t consumed = consumed_;
  const std::string_view line = Next();
  begin_ = static_cast<std::size_t>(line.data() - buffer_.get());
  consumed_ = consumed;
  return line;
}

struct FileTable::OpenFile {
  std::unique_ptr<LineReader> reader;
  std::unique_ptr<SystemFile> writer;
};

FileTable::FileTable() = default;
FileTable::~FileTable() = default;

FileTable::OpenFile* FileTable::Find(int number) const {
  const auto place = static_cast<std::size_t>(number);
  return place < files_.size() ? files_[place].get() : nullptr;
}

void FileTable::Keep(int number, std::unique_ptr<OpenFile> file) {
  const auto place = static_cast<std::size_t>(number);
  if (place >= files_.size()) files_.resize(place + 1);
  files_[place] = std::move(file);
}

int FileTable::FreeFile() const {
  int number = kFirstFreeNumber;
  while (IsOpen(number)) ++number;
  return number;
}

void FileTable::OpenForInput(int number, const std::string& path) {
  if (IsOpen(number)) Raise(FaultNumber::FileAlreadyOpen);
  auto file = std::make_unique<OpenFile>();
  file->reader = std::make_unique<LineReader>(path);
  Keep(number, std::move(file));
}

void FileTable::OpenForWriting(int number, const std::string& path, SystemFile::Use use) {
  if (IsOpen(number)) Raise(FaultNumber::FileAlreadyOpen);
  auto file = std::make_unique<OpenFile>();
  file->writer = std::make_unique<SystemFile>(path, use);
  Keep(number, std::move(file));
}

void FileTable::OpenForOutput(int number, const std::string& path) {
  OpenForWriting(number, path, SystemFile::Use::Replace);
}

void FileTable::OpenForAppend(int number, const std::string& path) {
  OpenForWriting(number, path, SystemFile::Use::Append);
}

LineReader& FileTable::Reader(int number) {
  const OpenFile* const file = Find(number);
  if (file == nullptr || !file->reader) Raise(FaultNumber::BadFileNumber);
  return *file->reader;
}

void FileTable::Write(int number, std::string_view bytes) {
  const OpenFile* const file = Find(number);
  if (file == nullptr || !file->writer) Raise(FaultNumber::BadFileNumber);
  file->writer->Write(bytes);
}

void FileTable::Close(int number) {
  if (Find(number) != nullptr) files_[static_cast<std::size_t>(number)].reset();
}
void FileTable::CloseAll() {
  files_.clear();
}

bool FileExists(const std::string& path) {
  std::error_code ignored;
  const auto status = std::filesystem::status(PathOf(path), ignored);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool FolderExists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(PathOf(path), ignored);
}

void MakeFolder(const std::string& path) {
  std::error_code error;
  if (std::filesystem::create_directory(PathOf(path), error)) return;
  RaiseSystemError(error ? error : std::make_error_code(std::errc::file_exists), path);
}

void MakeFolders(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(PathOf(path), error);
  if (error) Raise(FaultNumber::PathAccess, SystemMessage(error) + ": " + path);
}

std::string ReadWholeFile(const std::string& path) {
  SystemFile file(path, SystemFile::Use::Read);
  if (file.IsStream()) {
    Raise(FaultNumber::PathAccess,
          std::string(Description(FaultNumber::PathAccess)) + " (Not a file): " + path);
  }
  std::string content;
  for (;;) {
    const std::size_t have = content.size();
    content.resize(have + kBlock);
    const std::size_t count = file.Read(content.data() + have, kBlock).value_or(0);
    content.resize(have + count);
    if (count == 0) return content;
    if (content.size() > kLargestWhole) {
      RaiseSystemError(std::make_error_code(std::errc::file_too_large), path);
    }
  }
}

std::string ReadBeginning(const std::string& path, std::size_t most) {
  SystemFile file(path, SystemFile::Use::Read);
  std::string content(most, '\0');
  std::size_t have = 0;
  while (have < most) {
    const std::size_t count = file.Read(content.data() + have, most - have).value_or(0);
    if (count == 0) break;
    have += count;
  }
  content.resize(have);
  return content;
}

void ReplaceFile(const std::string& path, std::string_view content) {
  ReplaceFile(path, content, path + ".tmp");
}

void ReplaceFile(const std::string& path, std::string_view content, const std::string& temporary) {
  try {
    {
      SystemFile file(temporary, SystemFile::Use::Replace);
      file.Write(content);
      file.MakeDurable();
    }
    RenameFile(temporary, path);
  } catch (const Fault&) {
    std::error_code ignored;
    std::filesystem::remove(PathOf(temporary), ignored);
    throw;
  }
}

}  // namespace fathomline
