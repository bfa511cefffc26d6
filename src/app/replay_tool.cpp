#include "app/replay_tool.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "app/replay_options.h"
#include "app/replay_output.h"
#include "base/format.h"
#include "base/system.h"
#include "faces/headless/headless_face.h"
#include "session/program.h"
#include "setup/setup_file.h"

namespace fathomline {
namespace {

// A run that cannot go on; the text says why, in one line.
class RunError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string InOneLine(std::string text) {
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return text;
}

// What was written before may have failed long ago, and its cause is no longer known then.
[[noreturn]] void RefuseFile(const std::string& path) {
  const std::string cause = errno == 0 ? "" : ": " + std::generic_category().message(errno);
  throw RunError("cannot write " + path + cause);
}

std::ofstream OpenOutput(const std::string& path) {
  errno = 0;
  std::ofstream file(PathOf(path), std::ios::binary);
  if (!file) RefuseFile(path);
  return file;
}

void Finish(std::ostream& file, const std::string& path) {
  errno = 0;
  file.flush();
  if (!file) RefuseFile(path);
}

class ReplayRun {
 public:
  ReplayRun(const ReplayOptions& options, std::ostream& out, std::ostream& err)
      : options_(options),
        out_(out),
        err_(err),
        clock_(options.now ? std::unique_ptr<Clock>(std::make_unique<FrozenClock>(*options.now))
                           : std::make_unique<SystemClock>()),
        face_([this](const MessageBox& box) { Tell(box); }),
        program_({face_, *clock_, settings_, [] {}}) {}

  void Run() {
    Prepare();
    program_.windows.charts.SetKeepHidden(false);
    if (options_.windows || !WritesSomething()) program_.windows.OpenAnalysed(kReplayedSystem);
    std::ofstream trace;
    std::unique_ptr<TraceWriter> tracer;
    if (options_.trace) {
      trace = OpenOutput(*options_.trace);
      tracer = std::make_unique<TraceWriter>(trace, program_);
      program_.Listen(tracer.get());
    }
    Replay();
    program_.Listen(nullptr);
    if (options_.trace) Finish(trace, *options_.trace);
    Write();
  }

 private:
  bool WritesSomething() const {
    return options_.report || options_.windows || options_.counters || options_.trace ||
           options_.time;
  }

  void Tell(const MessageBox& box) {
    err_ << box.title << ": " << InOneLine(box.text) << '\n';
    ++boxes_[box.title];
    if (box.kind == "decoder") ++decoderBoxes_[box.title];
  }

  void Prepare() {
    Records& records = program_.engine.records;
    // Looked at before anything else is done, so that a misspelt name leaves nothing behind.
    try {
      ExpectReadable(options_.recording);
      // Waits for the one who writes into a named pipe, and keeps it until the replay has it.
      held_.open(PathOf(options_.recording));
      program_.UseProgramFolder(options_.programFolder.value_or(DefaultProgramFolder()));
    } catch (const Fault& fault) {
      throw RunError(fault.Description());
    }
    records.SetDefaultSetup();
    if (options_.setup) {
      try {
        ExpectReadable(*options_.setup);
      } catch (const Fault& fault) {
        throw RunError(fault.Description());
      }
      if (ReadSetupFile(*options_.setup, records, program_.desktop) != SetupRead::Complete) {
        throw RunError("the setup file cannot be used: " + *options_.setup);
      }
    }
    records.Mode = kOffline;
    CommSetup& setup = records.CommSetups[kReplayedSystem];
    setup.Enabled = true;
    setup.OfflineFile = options_.recording;
    for (int system = kReplayedSystem + 1; system <= kSystems; ++system) {
      records.CommSetups[system].Enabled = false;
      records.CommSetups[system].OfflineFile.clear();
    }
    if (options_.name) setup.Name = *options_.name;
    if (options_.checksum) records.ChecksumTest[kReplayedSystem] = true;
    program_.engine.ais.SetBinaryStandardIALA(options_.binaryStandardIALA);
    if (options_.sessionInfo) records.SessionInfo = *options_.sessionInfo;
    if (options_.outlier) records.OutlierLimit = *options_.outlier;
    TakeMessages();
    TakeReference();
    if (options_.dms) records.CoordinateFormatIsDMS = *options_.dms;
    if (options_.decimals) records.CoordinateDecimals = *options_.decimals;
    records.UseDefaultDecimals();
    records.ReloadWindows = true;
  }

  void TakeMessages() {
    Records& records = program_.engine.records;
    CommSetup& setup = records.CommSetups[kReplayedSystem];
    records.SetMessageFlags(kReplayedSystem);
    if (!options_.messages && options_.setup) return;
    for (const AnalyseFlag& row : kAnalyseFlags) setup.*row.flag = !options_.messages;
    if (!options_.messages) return;
    for (const SentenceType type : *options_.messages) {
      setup.*FindAnalyseFlag(type)->flag = true;
    }
  }

  void TakeReference() {
    ReferenceSetup& reference = program_.engine.records.References[kReplayedSystem];
    if (options_.reference) {
      const std::string name = reference.ReferenceName;
      reference = *options_.reference;
      reference.ReferenceName = name;
      reference.ReferenceUsed = kTruePosition;
    }
    if (options_.referenceUsed) reference.ReferenceUsed = *options_.referenceUsed;
  }

  void Replay() {
    const auto begin = std::chrono::steady_clock::now();
    program_.session.replay.Press("PLAY");
    program_.desktop.RunUntil([this] { return !program_.engine.records.OfflineRunning; });
    seconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  }

  void Write() {
    if (options_.report) {
      program_.engine.report.Print_Report(kReplayedSystem);
      out_ << program_.engine.report.ReportPath(kReplayedSystem) << '\n';
    }
    if (options_.windows) {
      std::error_code error;
      std::filesystem::create_directories(PathOf(*options_.windows), error);
      if (error) {
        throw RunError("cannot make the folder " + *options_.windows + ": " + SystemMessage(error));
      }
    }
    for (Window* const window : program_.desktop.Windows()) {
      if (!window->Visible() || window->Index() != kReplayedSystem) continue;
      if (options_.windows) {
        const std::string path = *options_.windows + kPathSeparator + window->FullName() + ".txt";
        std::ofstream file = OpenOutput(path);
        window->Write(file);
        Finish(file, path);
      } else if (!WritesSomething()) {
        window->Write(out_);
      }
    }
    if (options_.counters) {
      std::ofstream file = OpenOutput(*options_.counters);
      WriteCounters(file, program_, decoderBoxes_);
      Finish(file, *options_.counters);
    }
    for (const auto& [title, count] : boxes_) err_ << count << " x " << title << '\n';
    if (options_.time) WriteTime();
  }

  void WriteTime() {
    const double lines = program_.engine.records.SentenceCount;
    out_ << Format(lines, "0") << " lines in " << Format(seconds_, "0.000") << " s, "
         << Format(seconds_ > 0.0 ? lines / seconds_ : 0.0, "0") << " lines/s, peak memory "
         << Format(static_cast<double>(PeakMemory()) / 1024.0 / 1024.0, "0.0") << " MiB\n";
  }

  const ReplayOptions& options_;
  std::ostream& out_;
  std::ostream& err_;
  BoxCounts boxes_;
  BoxCounts decoderBoxes_;
  std::unique_ptr<Clock> clock_;
  SettingsStore settings_;
  BatchFace face_;
  Program program_;
  std::ifstream held_;
  double seconds_ = 0.0;
};

}  // namespace

int RunReplayTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  try {
    ReplayOptions options;
    if (const auto status = ReadReplayOptions(arguments, options, out, err)) return *status;
    ReplayRun(options, out, err).Run();
    return 0;
  } catch (const RunError& error) {
    err << "fathomline-replay: " << error.what() << '\n';
  }
  return 2;
}

}  // namespace fathomline
