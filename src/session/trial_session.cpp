#include "session/trial_session.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

#include "base/datetime.h"
#include "base/files.h"
#include "base/sha256.h"
#include "base/system.h"
#include "toolkit/window_places.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_html.h"
#include "trial/trial_json.h"
#include "version.h"

namespace fathomline {
namespace {

constexpr const char* kNothingYet =
    "There is nothing yet that a trial report could tell of. Start the session first.";
constexpr const char* kNothingKept =
    "No samples are kept for a trial report. Tick Tools > Keep Samples for a Trial Report, and let "
    "the session run.";
constexpr const char* kFull =
    "The memory set aside for samples was full before the session ended: the latest lines are not "
    "in this report.";
constexpr const char* kShorter =
    "The recording is shorter than when it was replayed. Replay it again for its report.";
constexpr int kReplayedSystem = 1;
constexpr std::string_view kPageExtension = ".html";
constexpr std::string_view kFiguresExtension = ".json";

// "report.html" gives "report.json".
std::string FiguresPath(const std::string& page) {
  const bool known = page.ends_with(kPageExtension);
  return page.substr(0, page.size() - (known ? kPageExtension.size() : 0)) +
         std::string(kFiguresExtension);
}

// Size and digest of a recording; none if it cannot be read.
std::optional<trial::RecordingFile> DescribeFile(const std::string& path) {
  std::ifstream file(PathOf(path), std::ios::binary);
  if (!file) return std::nullopt;
  Sha256 digest;
  trial::RecordingFile described;
  described.file = path;
  std::vector<char> block(std::size_t{256} * 1024);
  while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0) {
    const auto size = static_cast<std::size_t>(file.gcount());
    digest.Add({block.data(), size});
    described.bytes += static_cast<trial::Count>(size);
  }
  described.sha256 = digest.HexDigest();
  return described;
}

// A recorder that stands in its place while a report is worked out.
class Lent {
 public:
  using Place = std::unique_ptr<trial::SystemRecorder>;
  Lent(Place& place, Place recorder) : place_(place) { place_ = std::move(recorder); }
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;
  ~Lent() { place_.reset(); }

 private:
  Place& place_;
};

}  // namespace

TrialSession::TrialSession(Engine& engine, const Clock& clock, SettingsStore& settings,
                           Desktop& desktop, frmMain& mainWindow)
    : reading(desktop),
      records_(engine.records),
      statistics_(engine.statistics),
      clock_(clock),
      settings_(settings),
      desktop_(desktop),
      keepSamples_(mainWindow.mnuToolsKeepSamples) {
  mainWindow.mnuToolsTrialReport.onClick = [this] { WriteReport(); };
  reading.onCancel = [this] {
    desktop_.Stop(*this);
    second_.reset();
  };
  keepSamples_.onClick = [this] {
    SetKeeping(!keeping_);
    settings_.Set(kSettingsSection, kKeepTrialSamples, keeping_ ? 1 : 0);
  };
}

TrialSession::~TrialSession() = default;

void TrialSession::ReadSetting() {
  SetKeeping(settings_.GetNumber(kSettingsSection, kKeepTrialSamples, 1) != 0);
}

void TrialSession::SetKeeping(bool keeping) {
  keeping_ = keeping;
  keepSamples_.SetChecked(keeping);
  Clear();
}

void TrialSession::Clear() {
  for (auto& recorder : recorders_) recorder.reset();
  replayed_.Forget(records_.OfflineRunning);
  full_ = false;
}

void TrialSession::BeginReplay() {
  replayed_.Begin(records_.CommSetups[kReplayedSystem].OfflineFile);
}

bool TrialSession::Nothing() const {
  const bool recorded = std::any_of(recorders_.begin(), recorders_.end(),
                                    [](const auto& recorder) { return recorder != nullptr; });
  return !keeping_ || (!recorded && replayed_.Empty());
}

std::size_t TrialSession::Bytes() const {
  std::size_t bytes = 0;
  for (const auto& recorder : recorders_) {
    if (recorder) bytes += recorder->Bytes();
  }
  return bytes;
}

void TrialSession::Keep(int system, std::string_view line) {
  // Looking at the memory costs more than a line.
  constexpr std::uint32_t kLinesBetweenLooks = 0x10000;
  if (full_) return;
  auto& recorder = recorders_[system];
  // Whoever does not test checksums may have a sensor that sends none.
  if (!recorder) {
    recorder = std::make_unique<trial::SystemRecorder>(!records_.ChecksumTest[system]);
  }
  recorder->TakeLine(line);
  if (++taken_ % kLinesBetweenLooks == 0) full_ = Bytes() > kMostBytes;
}

// The name of the setup as far as names of a trial can hold it, if no other system has it.
std::string TrialSession::NameOf(int system) const {
  const auto plain = [this](int of) {
    std::string name = records_.CommSetups[of].Name;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) {
          return !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'));
        },
        '_');
    return name;
  };
  const std::string name = plain(system);
  bool alone = !name.empty();
  for (int other = 1; other <= kSystems; ++other) {
    alone &= other == system || !recorders_[other] || plain(other) != name;
  }
  return alone ? name : std::string(1, static_cast<char>('A' + system - 1));
}

trial::OwnReference TrialSession::ReferenceOf(int system) const {
  const ReferenceSetup& setup = records_.References[system];
  trial::OwnReference choice;
  const bool first = setup.ReferenceUsed == kFirstSample;
  if (first) choice.kind = trial::ReferenceKind::First;
  if (setup.ReferenceUsed == kTruePosition) {
    constexpr double kDegrees = 180.0 / std::numbers::pi;
    choice.kind = trial::ReferenceKind::Given;
    choice.given = {setup.ReferenceLatitude * kDegrees, setup.ReferenceLongitude * kDegrees,
                    setup.ReferenceHeight};
    // As the setup dialog asks for it.
    choice.givenHeights = trial::HeightKind::Geoid;
  }
  if (choice.kind == trial::ReferenceKind::Given ||
      (first && statistics_[system].HeadingMean.Count > 0)) {
    choice.heading = setup.ReferenceHeading;
    choice.pitch = setup.ReferencePitch;
    choice.roll = setup.ReferenceRoll;
  }
  return choice;
}

std::vector<trial::TrialSystem> TrialSession::Systems() const {
  std::vector<trial::TrialSystem> systems;
  for (int system = 1; system <= kSystems; ++system) {
    if (!recorders_[system]) continue;
    trial::TrialSystem& kept = systems.emplace_back();
    kept.name = NameOf(system);
    kept.recorder = recorders_[system].get();
    kept.reference = ReferenceOf(system);
  }
  return systems;
}

trial::Meta TrialSession::About(bool full) const {
  trial::Meta meta;
  meta.version = kVersion;
  std::string note = records_.SessionInfo;
  if (full) note += (note.empty() ? "" : "\n") + std::string(kFull);
  if (!note.empty()) meta.note = note;
  meta.writtenAt = FormatDateTime(clock_.NowUtc(), "yyyy-mm-dd") + "T" +
                   FormatDateTime(clock_.NowUtc(), "hh:nn:ss") + ".000Z";
  for (int system = 1; system <= kSystems; ++system) {
    if (recorders_[system]) meta.unchecked |= !records_.ChecksumTest[system];
  }
  if (records_.Offline()) {
    if (auto file = DescribeFile(records_.CommSetups[kReplayedSystem].OfflineFile)) {
      file->system = NameOf(kReplayedSystem);
      meta.files.push_back(std::move(*file));
    }
  }
  return meta;
}

void TrialSession::WriteReport() {
  if (second_) return;
  if (Nothing()) {
    desktop_.Say(keeping_ ? kNothingYet : kNothingKept);
    return;
  }
  const auto page = desktop_.ChooseFile({.title = "Trial Report",
                                         .filter = "Trial reports (*.html)|*.html",
                                         .defaultExtension = std::string(kPageExtension),
                                         .folder = records_.ProgramFolder,
                                         .save = true});
  if (!page) return;
  page_ = *page;
  // Lines may have come in, and a reset too, while the dialog stood.
  second_ = std::make_unique<SecondReading>(replayed_, !records_.ChecksumTest[kReplayedSystem],
                                            kMostBytes);
  if (!ReadOn(std::chrono::steady_clock::now() + patience_)) return;
  reading.Show();
  desktop_.Start(*this);
}

bool TrialSession::RunSlice(std::chrono::steady_clock::time_point until) {
  return ReadOn(until);
}

// Whether there is more to read. If not, the report has been written or its failure told.
bool TrialSession::ReadOn(std::chrono::steady_clock::time_point until) {
  std::optional<Fault> failure;
  try {
    if (second_->Continue(until)) {
      reading.ShowShare(second_->Share());
      return true;
    }
  } catch (const Fault& fault) {
    failure = fault;
  }
  desktop_.Stop(*this);
  reading.Done();
  const std::unique_ptr<SecondReading> second = std::move(second_);
  if (failure) {
    const bool shorter = failure->Number() == static_cast<int>(FaultNumber::PastEndOfFile);
    Refuse(shorter ? kShorter : failure->Description());
  } else {
    Write(*second);
  }
  return false;
}

void TrialSession::Refuse(const std::string& cause) {
  desktop_.Ask({.text = "Trial report not written. " + cause, .icon = BoxIcon::Exclamation});
}

void TrialSession::Write(SecondReading& second) {
  const std::string page = page_;
  const std::string figuresPath = FiguresPath(page);
  try {
    std::optional<Lent> replayed;
    if (!second.Empty()) replayed.emplace(recorders_[kReplayedSystem], second.Result());
    trial::TrialOptions options;
    options.meta = About(full_ || second.Full());
    const trial::TrialFigures figures = trial::WorkOut(Systems(), options);
    ReplaceFile(page, trial::ToHtml(figures));
    ReplaceFile(figuresPath, trial::JsonText(figures));
  } catch (const Fault& fault) {
    Refuse(fault.Description());
    return;
  }
  const Answer answer =
      desktop_.Ask({.text = "Trial report written to " + page + "\r\nIts figures are in " +
                            figuresPath + "\r\n\r\nOpen it now?",
                    .icon = BoxIcon::Question,
                    .buttons = BoxButtons::YesNo});
  if (answer == Answer::Yes && !desktop_.OpenDocument(page)) {
    desktop_.Say("Nothing on this machine opens " + page);
  }
}

}  // namespace fathomline
