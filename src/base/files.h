// Files: a table of open files by number, and the few operations on paths.
//
// Text written reaches the operating system before the call returns, so that a killed program
// loses nothing. All raise a Fault with the cause and the path where the system refuses.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/system.h"

namespace fathomline {

// Reads a file line by line in large blocks. A line ends at LF or CR LF, which both are dropped; a
// CR without LF stays in the line, and a last line without an ending counts. A line that passes
// kLongestLine is cut there, so that no file can fill the memory.
class LineReader {
 public:
  static constexpr std::size_t kLongestLine = std::size_t{16} * 1024 * 1024;

  explicit LineReader(const std::string& path);

  // Whether AtEnd and Next can answer, if need be after waiting until then. A file always can; a
  // stream, such as a pipe, has to bring a line or end first. One that nobody writes to has ended.
  bool Ready(std::chrono::steady_clock::time_point until) {
    return !file_.IsStream() || WaitForLine(until);
  }
  // Both raise the system's fault, for a stream that is not ready too.
  bool AtEnd() { return begin_ == end_ && !Fill(); }
  // The view holds until the next call. Raises PastEndOfFile.
  std::string_view Next();
  // The same line that Next will take.
  std::string_view Peek();

  // Bytes taken so far, and of the whole file; 0 for what has no size, such as a pipe.
  std::uint64_t Position() const { return consumed_; }
  std::uint64_t Size() const { return file_.Size(); }

 private:
  enum class Read { Bytes, Nothing, End };
  Read ReadMore();
  bool Fill();
  bool WaitForLine(std::chrono::steady_clock::time_point until);

  SystemFile file_;
  std::string path_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool exhausted_ = false;
  std::uint64_t consumed_ = 0;
};

// Open files by number. Numbers 1 to 4 belong to the replay; free ones begin at 5.
class FileTable {
 public:
  FileTable();
  ~FileTable();

  int FreeFile() const;

  // Each raises FileAlreadyOpen for a number in use. Output replaces an existing file.
  void OpenForInput(int number, const std::string& path);
  void OpenForOutput(int number, const std::string& path);
  void OpenForAppend(int number, const std::string& path);

  // Each raises BadFileNumber for a number that is not open for it.
  LineReader& Reader(int number);
  // Writes all or, where the system refuses, as on a full disk, nothing.
  void Write(int number, std::string_view bytes);

  bool IsOpen(int number) const { return Find(number) != nullptr; }
  void Close(int number);
  // Every file of the table, whoever opened it.
  void CloseAll();

 private:
  struct OpenFile;
  OpenFile* Find(int number) const;
  void Keep(int number, std::unique_ptr<OpenFile> file);
  void OpenForWriting(int number, const std::string& path, SystemFile::Use use);

  // By number, since a replay asks for its file at every line.
  std::vector<std::unique_ptr<OpenFile>> files_;
};

bool FileExists(const std::string& path);
bool FolderExists(const std::string& path);
// One level; the folder above must exist.
void MakeFolder(const std::string& path);
// With all above it, unless they exist.
void MakeFolders(const std::string& path);
// PathAccess for a file above 256 MiB, and for what is no file.
std::string ReadWholeFile(const std::string& path);
// At most so many bytes from its beginning.
std::string ReadBeginning(const std::string& path, std::size_t most);

// Replaces a file by writing a temporary one beside it and renaming, so that a reader finds the
// old content or the new one whole, whatever happens meanwhile. The temporary one is that file with
// ".tmp" behind its name, or as told; it is gone afterwards.
void ReplaceFile(const std::string& path, std::string_view content);
void ReplaceFile(const std::string& path, std::string_view content, const std::string& temporary);

}  // namespace fathomline
