// The others rely on the first.
// clang-format off
#include <windows.h>
#include <psapi.h>
#include <shellapi.h>
// clang-format on

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <thread>

#include "base/fault.h"
#include "base/system.h"

namespace fathomline {
namespace {

// Behind this length a path is a plain name of the file system, to which no limit applies. A folder
// has to leave room for a short file name within the limit of 260.
constexpr std::size_t kLongestPlainPath = 240;
constexpr std::wstring_view kBeyondLimit = L"\\\\?\\";
constexpr std::wstring_view kNetworkBeyondLimit = L"\\\\?\\UNC\\";

std::error_code LastError() {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::wstring Wide(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int count = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
  wide.resize(static_cast<std::size_t>(count));
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  const auto length = static_cast<int>(wide.size());
  std::string text(wide.size() * 3, '\0');
  const int count = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(),
                                          static_cast<int>(text.size()), nullptr, nullptr);
  text.resize(static_cast<std::size_t>(count));
  return text;
}

std::wstring FullName(const std::wstring& path) {
  std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

HANDLE HandleOf(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t Open(const std::string& path, DWORD access, DWORD sharing, DWORD making) {
  HANDLE const handle = ::CreateFileW(PathOf(path).c_str(), access, sharing, nullptr, making,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle != INVALID_HANDLE_VALUE) return reinterpret_cast<std::intptr_t>(handle);
  std::error_code error = LastError();
  std::error_code ignored;
  // Opening a folder is "access denied" here.
  if (std::filesystem::is_directory(PathOf(path), ignored)) {
    error = std::make_error_code(std::errc::is_a_directory);
  } else if (error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_LOCK_VIOLATION) {
    error = std::make_error_code(std::errc::permission_denied);
  }
  RaiseSystemError(error, path);
}

constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::intptr_t Open(const std::string& path, SystemFile::Use use) {
  switch (use) {
    case SystemFile::Use::Read:
      return Open(path, GENERIC_READ, kSharedByAll, OPEN_EXISTING);
    case SystemFile::Use::Replace:
      return Open(path, GENERIC_WRITE, kSharedByAll, CREATE_ALWAYS);
    case SystemFile::Use::Append:
      break;
  }
  return Open(path, GENERIC_WRITE, kSharedByAll, OPEN_ALWAYS);
}

}  // namespace

std::filesystem::path PathOf(std::string_view path) {
  std::wstring wide = Wide(path);
  std::replace(wide.begin(), wide.end(), L'/', L'\\');
  if (wide.starts_with(kBeyondLimit)) return wide;
  if (wide.size() < kLongestPlainPath) return wide;
  std::wstring full = FullName(wide);
  if (full.starts_with(L"\\\\")) return std::wstring(kNetworkBeyondLimit) + full.substr(2);
  return std::wstring(kBeyondLimit) + full;
}

std::string PathText(const std::filesystem::path& path) {
  const std::wstring_view whole = path.native();
  if (whole.starts_with(kNetworkBeyondLimit)) {
    return "\\\\" + Narrow(whole.substr(kNetworkBeyondLimit.size()));
  }
  return Narrow(whole.starts_with(kBeyondLimit) ? whole.substr(kBeyondLimit.size()) : whole);
}

// "Naming Files, Paths, and Namespaces" in the documentation of Windows.
bool FileNameHolds(char32_t character) {
  return character >= 0x20 && character != 0x7F &&
         std::u32string_view(U"\\/:*?\"<>|").find(character) == std::u32string_view::npos;
}

bool IsReservedFileName(std::string_view name) {
  if (name.ends_with('.') || name.ends_with(' ')) return true;
  std::string stem(name.substr(0, name.find('.')));
  stem.erase(stem.find_last_not_of(' ') + 1);
  std::transform(stem.begin(), stem.end(), stem.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL"};
  if (std::find(std::begin(kDevices), std::end(kDevices), stem) != std::end(kDevices)) return true;
  const bool numbered = stem.starts_with("COM") || stem.starts_with("LPT");
  return numbered && stem.size() == 4 && stem[3] >= '0' && stem[3] <= '9';
}

// Where the manuals say that the program's folder is.
std::string DataHome() {
  return "C:\\";
}

std::string SystemMessage(std::error_code error) {
  if (error.category() != std::system_category()) return error.message();
  std::array<wchar_t, 512> text{};
  DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, static_cast<DWORD>(error.value()), 0, text.data(),
                                  static_cast<DWORD>(text.size()), nullptr);
  while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' ||
                        text[length - 1] == L' ' || text[length - 1] == L'.')) {
    --length;
  }
  return length > 0 ? Narrow({text.data(), length}) : error.message();
}

SystemFile::SystemFile(const std::string& path, Use use) : handle_(Open(path, use)), path_(path) {
  const DWORD kind = ::GetFileType(HandleOf(handle_));
  isStream_ = kind != FILE_TYPE_DISK;
  if (use == Use::Read && kind == FILE_TYPE_CHAR) {
    // A port or console would hold the program up.
    ::CloseHandle(HandleOf(handle_));
    RaiseSystemError({ERROR_NOT_SUPPORTED, std::system_category()}, path);
  }
  LARGE_INTEGER size{};
  if (!isStream_ && ::GetFileSizeEx(HandleOf(handle_), &size) != 0) {
    size_ = static_cast<std::uint64_t>(size.QuadPart);
  }
}

SystemFile::~SystemFile() {
  ::CloseHandle(HandleOf(handle_));
}

std::optional<std::size_t> SystemFile::Read(char* into, std::size_t most) {
  HANDLE const handle = HandleOf(handle_);
  const auto ended = [] {
    const DWORD error = ::GetLastError();
    return error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF ||
           error == ERROR_PIPE_NOT_CONNECTED;
  };
  if (isStream_) {
    DWORD waiting = 0;
    if (::PeekNamedPipe(handle, nullptr, 0, nullptr, &waiting, nullptr) == 0) {
      if (ended()) return 0;
      RaiseSystemError(LastError(), path_);
    }
    if (waiting == 0) return {};
    most = std::min<std::size_t>(most, waiting);
  }
  DWORD count = 0;
  const auto block = static_cast<DWORD>(std::min<std::size_t>(most, 1U << 30U));
  if (::ReadFile(handle, into, block, &count, nullptr) != 0) return count;
  if (ended()) return 0;
  RaiseSystemError(LastError(), path_);
}

// A pipe cannot be waited for without taking from it.
void SystemFile::Wait(std::chrono::milliseconds longest) {
  std::this_thread::sleep_for(std::min(longest, std::chrono::milliseconds(5)));
}

void SystemFile::Write(std::string_view bytes) {
  HANDLE const handle = HandleOf(handle_);
  LARGE_INTEGER begin{};
  const bool seekable = ::SetFilePointerEx(handle, {}, &begin, FILE_END) != 0;
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto block = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 30U));
    if (::WriteFile(handle, bytes.data(), block, &written, nullptr) == 0) {
      const std::error_code error = LastError();
      // What comes when there is room again must not continue half a line.
      if (seekable && ::SetFilePointerEx(handle, begin, nullptr, FILE_BEGIN) != 0) {
        ::SetEndOfFile(handle);
      }
      RaiseSystemError(error, path_);
    }
    bytes.remove_prefix(written);
  }
}

void SystemFile::MakeDurable() {
  if (::FlushFileBuffers(HandleOf(handle_)) == 0) RaiseSystemError(LastError(), path_);
}

void RenameFile(const std::string& from, const std::string& to) {
  // Virus scanners and indexers open a fresh file for a moment.
  constexpr int kTries = 10;
  constexpr std::chrono::milliseconds kPause{20};
  for (int i = 1;
       ::MoveFileExW(PathOf(from).c_str(), PathOf(to).c_str(), MOVEFILE_REPLACE_EXISTING) == 0;
       ++i) {
    std::error_code error = LastError();
    std::error_code ignored;
    if (std::filesystem::is_directory(PathOf(to), ignored)) {
      RaiseSystemError(std::make_error_code(std::errc::is_a_directory), to);
    }
    const bool held =
        error.value() == ERROR_ACCESS_DENIED || error.value() == ERROR_SHARING_VIOLATION;
    if (held) error = std::make_error_code(std::errc::permission_denied);
    if (!held || i == kTries) RaiseSystemError(error, to);
    std::this_thread::sleep_for(kPause);
  }
}

void ExpectReadable(const std::string& path) {
  const SystemFile file(path, SystemFile::Use::Read);
}

FileLock::~FileLock() {
  if (handle_) ::CloseHandle(HandleOf(*handle_));
}

bool FileLock::Take(const std::string& path) {
  constexpr DWORD kSharedByNobody = 0;
  HANDLE const handle =
      ::CreateFileW(PathOf(path).c_str(), GENERIC_READ | GENERIC_WRITE, kSharedByNobody, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    if (::GetLastError() == ERROR_SHARING_VIOLATION) return false;
    RaiseSystemError(LastError(), path);
  }
  handle_ = reinterpret_cast<std::intptr_t>(handle);
  return true;
}

std::chrono::seconds LocalOffset(std::time_t moment) {
  // FILETIME counts 100 ns from 1601.
  constexpr std::int64_t kTicks = 10'000'000;
  constexpr std::int64_t kUnixEpoch = 11'644'473'600;
  const auto ticks = static_cast<std::uint64_t>((std::int64_t{moment} + kUnixEpoch) * kTicks);
  const FILETIME utc{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
  SYSTEMTIME utcParts{};
  SYSTEMTIME localParts{};
  FILETIME local{};
  if (::FileTimeToSystemTime(&utc, &utcParts) == 0 ||
      ::SystemTimeToTzSpecificLocalTime(nullptr, &utcParts, &localParts) == 0 ||
      ::SystemTimeToFileTime(&localParts, &local) == 0) {
    return {};
  }
  const auto localTicks = (std::uint64_t{local.dwHighDateTime} << 32U) | local.dwLowDateTime;
  return std::chrono::seconds(static_cast<std::int64_t>(localTicks - ticks) / kTicks);
}

std::uint64_t PeakMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
  return counters.PeakWorkingSetSize;
}

// The arguments of main are in the older character set.
std::vector<std::string> Arguments(int /*argc*/, const char* const* /*argv*/) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
  ::LocalFree(words);
  return arguments;
}

void PrepareStandardStreams() {
  constexpr DWORD kEscapes = ENABLE_VIRTUAL_TERMINAL_PROCESSING;
  if (::GetConsoleWindow() == nullptr && ::AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
    // What was redirected stays so.
    if (::_fileno(stdout) < 0) std::freopen("CONOUT$", "w", stdout);
    if (::_fileno(stderr) < 0) std::freopen("CONOUT$", "w", stderr);
  }
  ::SetConsoleOutputCP(CP_UTF8);
  for (const DWORD stream : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
    HANDLE const console = ::GetStdHandle(stream);
    DWORD mode = 0;
    if (::GetConsoleMode(console, &mode) != 0) ::SetConsoleMode(console, mode | kEscapes);
  }
  for (std::FILE* const stream : {stdout, stderr}) {
    if (::_fileno(stream) >= 0) ::_setmode(::_fileno(stream), _O_BINARY);
  }
}

}  // namespace fathomline
