#include "session/recordings.h"

#include <algorithm>
#include <filesystem>

#include "base/file_kind.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/system.h"
#include "session/figure_windows.h"

namespace fathomline {
namespace {

constexpr int kSystem = 1;
constexpr const char* kFilter =
    "Recordings (*.log *.nmea *.aivdm *.txt *.dat)|*.log;*.nmea;*.aivdm;*.txt;*.dat|"
    "All files (*)|*";

// A setup that analyses that file and nothing else. What its user likes, such as the form of
// coordinates, stays.
void Fill(Records& records, const std::string& path, const RecordingChoice& choice) {
  records.SetDefaultSetup();
  records.Mode = kOffline;
  for (int system = 1; system <= kSystems; ++system) {
    records.MessagesToAnalyse[system] = {};
    records.References[system] = {};
  }
  records.Emptybuffer.Fill(false);
  records.SetTimeFromPC.Fill(false);
  records.NotDisplayDGPS.Fill(false);
  records.SessionInfo.clear();
  records.OutlierLimit = kOutlierLimitAtStart;
  records.HdopLimit = 0.0F;
  records.SatelliteLimit = 0;
  records.RejectNonDifferential = false;

  CommSetup& setup = records.CommSetups[kSystem];
  setup.Enabled = true;
  setup.Name = choice.name;
  setup.SystemType = choice.systemType;
  setup.OfflineFile = path;
  records.ChecksumTest[kSystem] = choice.checksumTest;
  for (std::size_t row = 0; const SentenceType type : choice.sentences.Ticked()) {
    records.MessagesToAnalyse[kSystem].at(row++) = ToText(type);
  }
}

}  // namespace

Recordings::Recordings(Engine& engine, Desktop& desktop, SettingsStore& settings, Windows& windows,
                       StartUp& startUp, OfflineReplay& replay)
    : dialog(desktop),
      records_(engine.records),
      driver_(engine.driver),
      desktop_(desktop),
      settings_(settings),
      windows_(windows),
      startUp_(startUp),
      replay_(replay) {
  startUp_.onRecording = [this](const std::string& path) { Offer(path); };
  dialog.onOpen = [this](const std::string& path, const RecordingChoice& choice) {
    Begin(path, choice);
  };
  dialog.onCancel = [this] { Cancelled(); };
  PlugMenu();
}

void Recordings::PlugMenu() {
  frmMain& main = windows_.main;
  main.mnuFileOpenRecording.onClick = [this] { Choose(); };
  for (int item = 1; item <= frmMain::kRecentRecordings; ++item) {
    main.mnuFileRecentRecording(item).onClick = [this, item] { OpenRecent(item); };
  }
  main.onDrop = [this](const std::vector<std::string>& paths) {
    if (!paths.empty()) Open(paths.front());
  };
  main.onMenus = [this] { windows_.main.ShowRecentRecordings(Recent()); };
}

void Recordings::Choose() {
  const auto path = desktop_.ChooseFile({.title = "Open Recording", .filter = kFilter});
  if (path) Open(*path);
}

void Recordings::Refuse(const std::string& text) {
  desktop_.Ask({.text = text, .icon = BoxIcon::Exclamation});
}

bool Recordings::Exists(const std::string& path) {
  if (FileExists(path)) return true;
  desktop_.Say("File " + path + " do not exist.");
  return false;
}

void Recordings::Open(const std::string& path) {
  if (!Exists(path)) return;
  try {
    switch (KindOfFile(path)) {
      case FileKind::Setup:
        startUp_.OpenSetup(path);
        break;
      case FileKind::Empty:
        Refuse(path + " is empty.");
        break;
      case FileKind::Binary:
        Refuse(path + " is no recording: it is no text.");
        break;
      case FileKind::OtherText:
        Refuse(path + " is no recording: there is no NMEA 0183 sentence at its beginning.");
        break;
      case FileKind::Recording:
        Offer(path);
        break;
    }
  } catch (const Fault& fault) {
    Refuse(path + " cannot be read. " + fault.Description());
  }
}

// A pipe would be empty when it has been looked through.
void Recordings::Offer(const std::string& path) {
  if (!std::filesystem::is_regular_file(PathOf(path))) {
    Refuse(path +
           " is no file that can be looked through. To replay it, choose Mode > Offline and select "
           "it as the input file under Setup > Primary System.");
    if (!begun_) Cancelled();
    return;
  }
  dialog.Open(PathText(std::filesystem::absolute(PathOf(path))), WhatEnds());
}

std::string Recordings::WhatEnds() const {
  const bool live =
      !records_.Offline() && std::any_of(records_.CommSetups.begin(), records_.CommSetups.end(),
                                         [](const CommSetup& setup) { return setup.Enabled; });
  if (live) return "The live session ends when the recording is opened.";
  if (records_.OfflineRunning) return "The replay that runs ends when the recording is opened.";
  return {};
}

void Recordings::Begin(const std::string& path, const RecordingChoice& choice) {
  begun_ = true;
  startUp_.PassSetup([&](Records& records) { Fill(records, path, choice); });
  driver_.KnowDates(kSystem, {path, choice.firstDate, choice.stepsBackStay});
  windows_.main.ShowUnsaved(PathText(PathOf(path).filename()));
  std::vector<std::string> recent = Recent();
  std::erase(recent, path);
  recent.insert(recent.begin(), path);
  SetRecent(std::move(recent));
  OpenFigureWindows(desktop_, windows_, kSystem);
  replay_.Press("PLAY");
}

// Nothing else has been in force since the start.
void Recordings::Cancelled() {
  if (records_.SetupIsPassing && !begun_ && !records_.Closing) startUp_.ReturnFromPassing();
}

void Recordings::OpenRecent(int item) {
  std::vector<std::string> recent = Recent();
  const auto at = static_cast<std::size_t>(item - 1);
  if (at >= recent.size()) return;
  const std::string path = recent[at];
  if (!FileExists(path)) {
    recent.erase(recent.begin() + item - 1);
    SetRecent(std::move(recent));
  }
  Open(path);
}

std::vector<std::string> Recordings::Recent() const {
  std::vector<std::string> paths;
  for (int item = 1; item <= frmMain::kRecentRecordings; ++item) {
    std::string path = settings_.Get(kRecentSection, PlainText(item), "");
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

void Recordings::SetRecent(std::vector<std::string> paths) {
  paths.resize(frmMain::kRecentRecordings);
  for (int item = 1; const std::string& path : paths) {
    settings_.Set(kRecentSection, PlainText(item++), path);
  }
  windows_.main.ShowRecentRecordings(Recent());
}

}  // namespace fathomline
