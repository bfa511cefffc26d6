#include "simulator/terminal_outlet.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <utility>

namespace fathomline::simulator {

TerminalOutlet::TerminalOutlet(std::string linkPath, std::ostream& log)
    : log_(log), linkPath_(std::move(linkPath)) {
  constexpr std::string_view kAction = "make";
  constexpr std::string_view kObject = "a pseudo-terminal";
  master_ = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  std::array<char, 64> path{};
  if (!master_.Valid() || ::grantpt(master_.Get()) != 0 || ::unlockpt(master_.Get()) != 0) {
    RaiseSystemFault(kAction, kObject, NetworkError());
  }
  if (const int error = ::ptsname_r(master_.Get(), path.data(), path.size()); error != 0) {
    RaiseSystemFault(kAction, kObject, {error, std::generic_category()});
  }
  path_ = path.data();
  // Only a terminal that was open once tells that nobody has it open.
  const FileDescriptor reader(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings{};
  if (!reader.Valid() || ::tcgetattr(reader.Get(), &settings) != 0) {
    RaiseSystemFault(kAction, kObject, NetworkError());
  }
  // Bytes as they are, and no echo.
  ::cfmakeraw(&settings);
  ::tcsetattr(reader.Get(), TCSANOW, &settings);
  if (linkPath_.empty()) return;
  std::error_code error;
  if (std::filesystem::is_symlink(linkPath_, error)) std::filesystem::remove(linkPath_, error);
  std::filesystem::create_symlink(path_, linkPath_, error);
  if (error) RaiseSystemFault("link", "\"" + linkPath_ + "\"", error);
}

TerminalOutlet::~TerminalOutlet() {
  if (linkPath_.empty()) return;
  // A later simulation may have taken the place.
  std::error_code ignored;
  if (std::filesystem::read_symlink(linkPath_, ignored) == path_) {
    std::filesystem::remove(linkPath_, ignored);
  }
}

std::string TerminalOutlet::Where() const {
  return "pty " + path_ + (linkPath_.empty() ? "" : " " + linkPath_);
}

bool TerminalOutlet::HasPeer() const {
  pollfd terminal{master_.Get(), 0, 0};
  return ::poll(&terminal, 1, 0) == 0 || (terminal.revents & POLLHUP) == 0;
}

// Without a reader there would be no end of the news that there is none.
void TerminalOutlet::Watch(std::vector<pollfd>& watched) const {
  if (!HasPeer()) return;
  const int events = queue_.Size() > 0 ? POLLIN | POLLOUT : POLLIN;
  watched.push_back({master_.Get(), static_cast<short>(events), 0});
}

void TerminalOutlet::Serve() {
  if (!HasPeer()) {
    queue_.Clear();
    return;
  }
  std::array<char, 4096> ignored;
  while (::read(master_.Get(), ignored.data(), ignored.size()) > 0) {
  }
  queue_.Flush([this](std::string_view bytes) -> std::optional<std::size_t> {
    const ssize_t written = ::write(master_.Get(), bytes.data(), bytes.size());
    if (written >= 0) return static_cast<std::size_t>(written);
    if (errno == EAGAIN || errno == EINTR) return 0;
    return {};
  });
}

void TerminalOutlet::Send(const LineBatch& lines) {
  if (!HasPeer()) return;
  if (!queue_.Stalled() && queue_.Add(lines.Text())) return;
  if (!std::exchange(lossTold_, true)) {
    log_ << "the reader of " << path_ << " reads too slowly and loses lines" << std::endl;
  }
}

bool TerminalOutlet::Drained() const {
  if (!HasPeer()) return true;
  if (Backlog() > 0) return false;
  const FileDescriptor reader(::open(path_.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  int unread = 0;
  return !reader.Valid() || ::ioctl(reader.Get(), FIONREAD, &unread) != 0 || unread == 0;
}

std::unique_ptr<Outlet> MakeTerminalOutlet(const std::string& linkPath, std::ostream& log) {
  return std::make_unique<TerminalOutlet>(linkPath, log);
}

}  // namespace fathomline::simulator
