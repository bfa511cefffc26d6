// Any bytes as a recording: the whole program replays them on the headless face, with every
// sentence analysed, and must come to the end of the file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "faces/headless/headless_face.h"
#include "session/program.h"

namespace {

using namespace fathomline;

// A file without a disc, under a path that the program can open.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size)
      : descriptor_(::memfd_create("recording", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || ::write(descriptor_, data, size) != static_cast<ssize_t>(size)) {
      std::abort();
    }
  }
  ~MemoryFile() { ::close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

// The faults of lines: looked at and forgotten, since an error log on disc would be the whole time.
struct Session {
  FrozenClock clock{DateFromParts(2026, 1, 2)};
  SettingsStore settings;
  BatchFace face{[](const MessageBox&) {}};
  Program program{{face, clock, settings, [] {}}};

  Session() {
    const std::string folder =
        (std::filesystem::temp_directory_path() / "fathomline-replay-fuzz").string();
    program.UseProgramFolder(folder);
    Records& records = program.engine.records;
    records.SetDefaultSetup();
    records.Mode = kOffline;
    records.ReloadWindows = true;
    records.CommSetups[1].Enabled = true;
    for (const AnalyseFlag& row : kAnalyseFlags) records.CommSetups[1].*row.flag = true;
    program.windows.OpenAnalysed(1);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // One program for all inputs: a session after the other is how it is used.
  static Session* const session = new Session;
  Records& records = session->program.engine.records;
  const MemoryFile recording(data, size);
  records.CommSetups[1].OfflineFile = recording.Path();
  records.ChecksumTest[1] = size % 4 == 0;
  records.References[1].ReferenceUsed = static_cast<std::int16_t>(size % 3);
  session->program.session.replay.Press("PLAY");
  session->program.desktop.RunUntil([&] { return !records.OfflineRunning; });
  for (Window* const window : session->program.desktop.Windows()) {
    if (window->Visible()) window->Act([window] { window->Refresh(); });
  }
  return 0;
}
