// The trial of the session that runs: keeps the samples of every system while their lines come in,
// and writes them as a report when its user asks for it.
#pragma once

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
#include "toolkit/desktop.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "windows/main_window.h"

namespace fathomline {

// In the section "Settings" of the settings store: 1 where samples are kept; so where it is not
// set.
inline constexpr std::string_view kKeepTrialSamples = "KeepTrialSamples";

class TrialSession {
 public:
  // Samples of all systems together; beyond, no more are taken until a reset.
  static constexpr std::size_t kMostBytes = std::size_t{1} << 30;

  // Plugs its entries of the menu Tools.
  TrialSession(Engine& engine, const Clock& clock, SettingsStore& settings, Desktop& desktop,
               frmMain& mainWindow);

  // Keeps samples from then on, or not, as the settings say.
  void ReadSetting();
  // Off at first. Switching off drops what has been kept.
  void SetKeeping(bool keeping);
  bool Keeping() const { return keeping_; }

  // A line of a system (1 to 4) as it came.
  void TakeLine(int system, std::string_view line) {
    if (keeping_) Keep(system, line);
  }
  void Clear();
  // Of the samples kept so far.
  std::size_t Bytes() const;

  // Asks for a file, writes the page there and its figures as JSON beside it, and offers to open
  // it. The references are those of the setup. Boxes tell what goes wrong.
  void WriteReport();

 private:
  void Keep(int system, std::string_view line);
  trial::Meta About() const;
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
};

}  // namespace fathomline
