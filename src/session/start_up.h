// How the program comes up, how a setup is brought into force, and how the program goes down.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/settings.h"
#include "base/system.h"
#include "pipeline/engine.h"
#include "session/session_control.h"
#include "session/windows.h"
#include "setup/setup_dialog.h"
#include "sources/live_input.h"
#include "toolkit/desktop.h"

namespace fathomline {

class TrialSession;

struct StartOptions {
  // The program folder; empty: what the settings name, or the default one.
  std::string programFolder = {};
  // A setup file to be opened in place of the default one, or a recording.
  std::optional<std::string> setupFile = {};
};

// In the section "Settings" of the settings store: 1 where AIS binary messages are read by the IALA
// proposal.
inline constexpr std::string_view kBinaryStandardIALA = "BinaryStandardIALA";
// In the same section: the program folder, where it is to be another than the default one.
inline constexpr std::string_view kProgramFolder = "ProgramFolder";

// "Keelhaven/Fathomline/" in the user's home, on Windows in the root of drive C.
std::string DefaultProgramFolder();

// Makes the folder of the program's files, with all above it if need be, and names it in the
// records. Raises the system's fault.
void MakeProgramFolder(std::string folder, Records& records);

class StartUp {
 public:
  StartUp(Engine& engine, Desktop& desktop, const Clock& clock, SettingsStore& settings,
          Windows& windows, frmSetup& setupDialog, SessionControl& session, LiveInput& input,
          TrialSession& trial);

  // Opens the main window, with all that follows from it. False: the program cannot start, and a
  // box has told why.
  bool Start(const StartOptions& options);

  void InitialiseProgram();
  // Brings the records into force.
  void ApplySetup();
  // Runs before another setup comes into force: the replay ends, links are closed, and so is every
  // view.
  void CloseSetup();

  // File New and File Open.
  void NewSetup();
  // False where there is no such file; nothing has changed then. Nor has it where the file is no
  // setup, which a box has told; a recording is handed on.
  bool OpenSetup(const std::string& path);

  // The setup in force gives way to a passing one, which `fill` puts into the records; all that it
  // leaves alone stays. The passing one ends as soon as another setup is opened.
  void PassSetup(const std::function<void(Records& records)>& fill);
  // Back to the setup that the passing one has replaced.
  void ReturnFromPassing();
  // It has been saved, and is its user's from now on.
  void KeepPassing();

  // Takes a file that was named where a setup was expected and holds a recording.
  std::function<void(const std::string& path)> onRecording;

  // Ends the program as File Exit does, but asks and tells nothing, whatever else is going on.
  // Before it has started, nothing is saved.
  void EndAtOnce();

  // Run when the windows that the user's setup brings back stand, at the start or after a recording
  // that was named there has been cancelled; and before the windows go at the end.
  std::function<void()> onOpened;
  std::function<void()> onLeaving;

 private:
  // The user's setup, and the limits, which no file holds.
  struct Replaced {
    std::string setup;
    float outlierLimit;
    float hdopLimit;
    std::int16_t satelliteLimit;
    bool rejectNonDifferential;
  };

  void Opened();
  void ReadFirstSetup();
  void ReadDefaultSetup();
  bool NamesRecording() const;
  void Replace();
  void Restore();
  void EndPassing();
  // Whether the file can be a setup. One that is something else is refused in a box.
  bool IsSetup(const std::string& path);
  void ReadSetup(const std::string& path);
  void ForgetMeans();
  void ForgetWindows();
  void SaveSetup();
  void Closing();
  void Unloading();

  Records& records_;
  Statistics& statistics_;
  Desktop& desktop_;
  const Clock& clock_;
  SettingsStore& settings_;
  frmMain& mainWindow_;
  SessionControl& session_;
  LiveInput& input_;
  TrialSession& trial_;
  AISDecoder& ais_;
  frmSetup& setupDialog_;
  StartOptions options_;
  std::optional<Replaced> replaced_;  // by the passing setup
  FileLock lock_;
  bool started_ = false;
};

}  // namespace fathomline
