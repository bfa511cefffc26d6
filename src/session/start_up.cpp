#include "session/start_up.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "analysis/running_statistics.h"
#include "base/file_kind.h"
#include "base/files.h"
#include "base/system.h"
#include "session/trial_session.h"
#include "setup/setup_file.h"
#include "toolkit/window_places.h"

namespace fathomline {
namespace {

constexpr const char* kFirstStart =
    "No setupfile exist. You have to define a primary system under Setup and open relevant windows "
    "for display under Window! ";

}  // namespace

std::string DefaultProgramFolder() {
  return DataHome() + "Keelhaven" + kPathSeparator + "Fathomline" + kPathSeparator;
}

void MakeProgramFolder(std::string folder, Records& records) {
  folder = PathText(PathOf(folder) / "");
  MakeFolders(folder);
  records.ProgramFolder = std::move(folder);
}

StartUp::StartUp(Engine& engine, Desktop& desktop, const Clock& clock, SettingsStore& settings,
                 Windows& windows, frmSetup& setupDialog, SessionControl& session, LiveInput& input,
                 TrialSession& trial)
    : records_(engine.records),
      statistics_(engine.statistics),
      desktop_(desktop),
      clock_(clock),
      settings_(settings),
      mainWindow_(windows.main),
      session_(session),
      input_(input),
      trial_(trial),
      ais_(engine.ais),
      setupDialog_(setupDialog) {
  mainWindow_.onOpen = [this] {
    records_.OutlierLimit = kOutlierLimitAtStart;
    InitialiseProgram();
    ApplySetup();
    if (!records_.SetupIsPassing) Opened();
  };
  mainWindow_.onClosing = [this] { Closing(); };
  mainWindow_.onUnload = [this] { Unloading(); };
}

void StartUp::Opened() {
  RestoreOrder(desktop_, settings_);
  if (onOpened) onOpened();
}

bool StartUp::Start(const StartOptions& options) {
  options_ = options;
  const auto refuse = [this](const std::string& cause) {
    desktop_.Ask({.text = cause, .icon = BoxIcon::Critical});
    return false;
  };
  try {
    MakeProgramFolder(options.programFolder.empty()
                          ? settings_.Get(kSettingsSection, kProgramFolder, DefaultProgramFolder())
                          : options.programFolder,
                      records_);
    if (!lock_.Take(records_.ProgramFolder + ".lock")) {
      return refuse(std::string(kProgramTitle) + " is already running with the folder " +
                    records_.ProgramFolder);
    }
    desktop_.Show(mainWindow_);
    started_ = mainWindow_.Loaded();
    if (started_ && onRecording && NamesRecording()) onRecording(*options_.setupFile);
    return started_;
  } catch (const Fault& fault) {
    std::string cause = std::string(kProgramTitle) + " cannot start. " + fault.Description();
    if (options.programFolder.empty() && !settings_.Location().empty()) {
      cause.append("\r\n\r\nAnother folder can be named in ").append(settings_.Location());
      cause.append(" :\r\n\r\n[").append(kSettingsSection).append("]\r\n");
      cause.append(kProgramFolder).append("=");
    }
    return refuse(cause);
  }
}

void StartUp::InitialiseProgram() {
  for (DateTime& time : records_.LastSentenceTime) time = clock_.NowUtc();
  if (!settings_.Trouble().empty()) {
    desktop_.Ask({.text = settings_.Trouble(), .icon = BoxIcon::Exclamation});
  }
  ReadFirstSetup();
  records_.UseDefaultDecimals();
  const bool iala = settings_.GetNumber(kSettingsSection, kBinaryStandardIALA, 0) != 0;
  ais_.SetBinaryStandardIALA(iala);
  mainWindow_.mnuOptionsBinaryStandardIALA.SetChecked(iala);
  trial_.ReadSetting();
}

bool StartUp::NamesRecording() const {
  bool recording = false;
  ResumeNext([&] {
    recording = options_.setupFile && FileExists(*options_.setupFile) &&
                KindOfFile(*options_.setupFile) == FileKind::Recording;
  });
  return recording;
}

void StartUp::ReadFirstSetup() {
  if (NamesRecording()) {
    // Its user is asked about that, and about nothing else: no link is opened, no first start told.
    if (FileExists(records_.ProgramFolder + std::string(kSetupFileName))) ReadDefaultSetup();
    Replace();
    records_.SetDefaultSetup();
    ForgetWindows();
    return;
  }
  if (options_.setupFile) {
    if (!FileExists(*options_.setupFile)) {
      desktop_.Say("File " + *options_.setupFile + " do not exist.");
    } else if (IsSetup(*options_.setupFile)) {
      ReadSetup(*options_.setupFile);
      return;
    }
  }
  ReadDefaultSetup();
}

void StartUp::ReadDefaultSetup() {
  const std::string path = records_.ProgramFolder + std::string(kSetupFileName);
  if (!FileExists(path) && !FolderExists(path)) {
    desktop_.Ask({.text = kFirstStart, .icon = BoxIcon::Information});
    records_.SetDefaultSetup();
  } else {
    ReadSetup(path);
  }
}

bool StartUp::IsSetup(const std::string& path) {
  std::string cause;
  ResumeNext([&] {
    switch (KindOfFile(path)) {
      case FileKind::Empty:
        cause = " is empty.";
        break;
      case FileKind::Binary:
        cause = " is not a setup: it is no text.";
        break;
      case FileKind::Setup:
      case FileKind::Recording:
      case FileKind::OtherText:
        break;
    }
  });
  if (cause.empty()) return true;
  desktop_.Ask({.text = path + cause, .icon = BoxIcon::Exclamation});
  return false;
}

void StartUp::ReadSetup(const std::string& path) {
  if (ReadSetupFile(path, records_, desktop_) == SetupRead::Complete) return;
  // A count beyond the list stays from such a file, and nothing could be saved with it.
  const auto longest = static_cast<std::int16_t>(records_.IPList.size());
  records_.IPListCount = std::min(records_.IPListCount, longest);
  // Closing the program will overwrite the default file with what is in force now. Its user may
  // want to mend it, or to have it back.
  const std::string written = records_.ProgramFolder + std::string(kSetupFileName);
  if (!FileExists(written) && !FolderExists(written)) return;
  ResumeNext([&] { KeepSetupFile(written); },
             [this](const Fault& fault) {
               desktop_.Ask({.text = "The setup file could not be kept. " + fault.Description(),
                             .icon = BoxIcon::Exclamation});
             });
}

void StartUp::ApplySetup() {
  for (int system = 1; system <= kSystems; ++system) records_.SetMessageFlags(system);
  records_.ChecksumErrors.Fill(0);
  records_.IgnoredMessages.Fill(0);
  records_.BaseDataFlag = -1;
  if (records_.Offline()) {
    session_.ClickModeOffline();
  } else {
    session_.ClickModeOnline();
  }
  mainWindow_.ShowSystems();
  records_.ReloadWindows = true;
}

void StartUp::CloseSetup() {
  setupDialog_.Close();
  mainWindow_.mnuModeOnline.SetChecked(false);
  mainWindow_.mnuModeOffline.SetChecked(false);
  if (records_.OfflineRunning) records_.OfflineStopped = true;
  for (Window* const window : desktop_.Windows()) {
    if (window->Style() == WindowStyle::Child) window->Close();
  }
  for (int system = 1; system <= kSystems; ++system) input_.CloseLinks(system);
}

void StartUp::Replace() {
  if (!replaced_) {
    replaced_ = {WriteSetup(records_), records_.OutlierLimit, records_.HdopLimit,
                 records_.SatelliteLimit, records_.RejectNonDifferential};
  }
  records_.SetupIsPassing = true;
  settings_.HoldPlaces(true);
}

void StartUp::EndPassing() {
  replaced_.reset();
  records_.SetupIsPassing = false;
  settings_.HoldPlaces(false);
  mainWindow_.ShowUnsaved({});
}

void StartUp::Restore() {
  if (!replaced_) return;
  fathomline::ReadSetup(replaced_->setup, records_);
  records_.OutlierLimit = replaced_->outlierLimit;
  records_.HdopLimit = replaced_->hdopLimit;
  records_.SatelliteLimit = replaced_->satelliteLimit;
  records_.RejectNonDifferential = replaced_->rejectNonDifferential;
  EndPassing();
}

void StartUp::ForgetWindows() {
  for (SystemSetup& flags : records_.SystemSetups) flags = {};
}

void StartUp::PassSetup(const std::function<void(Records& records)>& fill) {
  Replace();
  CloseSetup();
  ForgetMeans();
  ForgetWindows();
  fill(records_);
  records_.UseDefaultDecimals();
  records_.ReloadWindows = true;
  ApplySetup();
}

void StartUp::ReturnFromPassing() {
  CloseSetup();
  Restore();
  records_.ReloadWindows = true;
  ApplySetup();
  Opened();
}

void StartUp::KeepPassing() {
  if (records_.SetupIsPassing) EndPassing();
}

void StartUp::ForgetMeans() {
  for (SystemStatistics& statistics : statistics_) {
    ResetDoubleStat(statistics.LatitudeMean);
    ResetDoubleStat(statistics.LongitudeMean);
    ResetSingleStat(statistics.HeightMean);
  }
}

void StartUp::NewSetup() {
  CloseSetup();
  Restore();
  ForgetWindows();
  records_.SetDefaultSetup();
  ForgetMeans();
  records_.ReloadWindows = true;
  ApplySetup();
}

bool StartUp::OpenSetup(const std::string& path) {
  if (!FileExists(path)) return false;
  if (!IsSetup(path)) return true;
  if (onRecording && KindOfFile(path) == FileKind::Recording) {
    onRecording(path);
    return true;
  }
  CloseSetup();
  Restore();
  ForgetWindows();
  ReadSetup(path);
  records_.ReloadWindows = true;
  ApplySetup();
  return true;
}

// The default file always holds the last state, whatever file was loaded, unless that was made for
// a recording. A full disk must not keep the program from ending.
void StartUp::Closing() {
  if (records_.OfflineRunning) records_.OfflineStopped = true;
  if (!records_.SetupIsPassing) SaveSetup();
  records_.Closing = true;
}

void StartUp::SaveSetup() {
  ResumeNext(
      [this] { WriteSetupFile(records_.ProgramFolder + std::string(kSetupFileName), records_); },
      [this](const Fault& fault) {
        desktop_.Ask(
            {.text = "Setup not saved. " + fault.Description(), .icon = BoxIcon::Exclamation});
      });
}

void StartUp::EndAtOnce() {
  desktop_.StopAsking();
  if (started_) mainWindow_.Close(CloseReason::User);
  desktop_.Quit();
}

void StartUp::Unloading() {
  const auto report = [this](const Fault& fault) { desktop_.Report(fault, &mainWindow_); };
  if (records_.LoggingOn) ResumeNext([this] { session_.Press("LOG"); }, report);
  SaveOrder(desktop_, settings_);
  if (onLeaving && !records_.SetupIsPassing) ResumeNext(onLeaving, report);
  // The windows that were opened last go first. Closing one may close another.
  const std::vector<Window*> windows(desktop_.Windows().rbegin(), desktop_.Windows().rend());
  for (Window* const window : windows) {
    if (window == &mainWindow_) continue;
    ResumeNext([window] { window->Close(CloseReason::Ending); }, report);
  }
  settings_.HoldPlaces(false);
}

}  // namespace fathomline
