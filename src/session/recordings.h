// Recordings opened by name: from the menu, dropped on the main window, or handed to the program.
#pragma once

#include <string>
#include <vector>

#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/start_up.h"
#include "session/windows.h"
#include "setup/recording_dialog.h"
#include "sources/offline_replay.h"
#include "toolkit/desktop.h"

namespace fathomline {

// In the settings store: the paths, by their number in the menu.
inline constexpr std::string_view kRecentSection = "Recent recordings";

class Recordings {
 public:
  Recordings(Engine& engine, Desktop& desktop, SettingsStore& settings, Windows& windows,
             StartUp& startUp, OfflineReplay& replay);

  // Whatever the file holds: a setup comes into force, a recording is looked through and offered,
  // anything else is refused in a box.
  void Open(const std::string& path);
  // The same of a file that is known to be a recording.
  void Offer(const std::string& path);

  frmOpenRecording dialog;

 private:
  void PlugMenu();
  void Choose();
  void OpenRecent(int item);
  bool Exists(const std::string& path);
  void Refuse(const std::string& text);
  std::string WhatEnds() const;
  void Begin(const std::string& path, const RecordingChoice& choice);
  void Cancelled();

  std::vector<std::string> Recent() const;
  void SetRecent(std::vector<std::string> paths);

  Records& records_;
  MessageDriver& driver_;
  Desktop& desktop_;
  SettingsStore& settings_;
  Windows& windows_;
  StartUp& startUp_;
  OfflineReplay& replay_;
  bool begun_ = false;  // a recording has been in force since the start
};

}  // namespace fathomline
