// The trial of the session that runs: keeps the samples of every system while their lines come in,
// or notes which lines of a recording they were, and writes them as a report when its user asks for
// it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/per_system.h"
#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/replayed_lines.h"
#include "toolkit/desktop.h"
#include "toolkit/task.h"
#include "windows/main_window.h"
#include "windows/trial_reading.h"

namespace fathomline {

namespace trial {
struct Meta;
struct OwnReference;
class SystemRecorder;
struct TrialSystem;
}  // namespace trial

// In the section "Settings" of the settings store: 1 where samples are kept; so where it is not
// set.
inline constexpr std::string_view kKeepTrialSamples = "KeepTrialSamples";

class TrialSession : public Task {
 public:
  // Samples of all systems together; beyond, no more are taken until a reset.
  static constexpr std::size_t kMostBytes = std::size_t{1} << 30;

  // Plugs its entries of the menu Tools.
  TrialSession(Engine& engine, const Clock& clock, SettingsStore& settings, Desktop& desktop,
               frmMain& mainWindow);
  ~TrialSession() override;

  // Keeps samples from then on, or not, as the settings say.
  void ReadSetting();
  // Off at first. Switching off drops what has been kept.
  void SetKeeping(bool keeping);
  bool Keeping() const { return keeping_; }

  // Lines of the recording of the setup follow, from its first.
  void BeginReplay();
  // A line of a system (1 to 4) as it came.
  void TakeLine(int system, std::string_view line) {
    if (replayed_.Notes() && records_.OfflineRunning) {
      replayed_.NoteLine();
    } else if (keeping_) {
      Keep(system, line);
    }
  }
  void Clear();
  // Of the samples kept so far.
  std::size_t Bytes() const;

  // Asks for a file, reads a recording again, writes the page there and its figures as JSON beside
  // it, and offers to open it. The references are those of the setup. Boxes tell what goes wrong.
  void WriteReport();
  // How long its user waits for a recording to be read before a dialog shows how far that is.
  void SetPatience(std::chrono::milliseconds patience) { patience_ = patience; }

  bool RunSlice(std::chrono::steady_clock::time_point until) override;

  frmTrialReading reading;

 private:
  void Keep(int system, std::string_view line);
  bool Nothing() const;
  bool ReadOn(std::chrono::steady_clock::time_point until);
  void Write(SecondReading& second);
  void Refuse(const std::string& cause);
  // The memory set aside may have been full before the end.
  trial::Meta About(bool full) const;
  trial::OwnReference ReferenceOf(int system) const;
  std::vector<trial::TrialSystem> Systems() const;
  std::string NameOf(int system) const;

  const Records& records_;
  const Statistics& statistics_;
  const Clock& clock_;
  SettingsStore& settings_;
  Desktop& desktop_;
  MenuItem& keepSamples_;
  bool keeping_ = false;
  bool full_ = false;
  std::uint32_t taken_ = 0;
  PerSystem<std::unique_ptr<trial::SystemRecorder>> recorders_;
  ReplayedLines replayed_;
  std::unique_ptr<SecondReading> second_;
  std::string page_;  // asked for
  std::chrono::milliseconds patience_{200};
};

}  // namespace fathomline
