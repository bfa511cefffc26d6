#include "app/trial_command.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "app/trial_options.h"
#include "base/sha256.h"
#include "base/system.h"
#include "trial/recorder.h"
#include "trial/trial_csv.h"
#include "trial/trial_html.h"
#include "trial/trial_json.h"
#include "trial/trial_summary.h"

namespace fathomline {
namespace {

// A run that cannot go on; the text says why, in one line.
class RunError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] void RefuseFile(const char* what, const std::string& path) {
  const std::string cause = errno == 0 ? "" : ": " + std::generic_category().message(errno);
  throw RunError(std::string("cannot ") + what + " " + path + cause);
}

// Reads one recording to its end.
class Reading {
 public:
  Reading(const TrialRecording& recording, bool unchecked)
      : recording_(recording), recorder_(unchecked) {}

  // What cannot be told before this is the fault that Finish raises.
  void Run() noexcept {
    try {
      Read();
    } catch (const std::exception& error) {
      fault_ = error.what();
    }
    hasEnded_ = true;
  }

  bool HasEnded() const { return hasEnded_; }
  std::uint64_t Taken() const { return taken_; }

  // What was read, or RunError.
  trial::RecordingFile Finish() const {
    if (fault_) throw RunError(*fault_);
    return {.system = recording_.system,
            .file = recording_.path,
            .bytes = static_cast<trial::Count>(taken_.load()),
            .sha256 = digest_.HexDigest()};
  }
  const trial::SystemRecorder& Recorder() const { return recorder_; }

 private:
  void Read() {
    errno = 0;
    std::ifstream file;
    // Without a buffer of its own.
    file.rdbuf()->pubsetbuf(nullptr, 0);
    file.open(PathOf(recording_.path), std::ios::binary);
    if (!file) RefuseFile("read", recording_.path);
    constexpr std::size_t kBlock = std::size_t{256} * 1024;
    std::vector<char> block(kBlock);
    trial::LineCutter lines(recorder_);
    while (file) {
      file.read(block.data(), static_cast<std::streamsize>(block.size()));
      const auto count = static_cast<std::size_t>(file.gcount());
      const std::string_view bytes(block.data(), count);
      digest_.Add(bytes);
      lines.TakeBytes(bytes);
      taken_ += count;
    }
    if (file.bad()) RefuseFile("read", recording_.path);
    lines.End();
  }

  const TrialRecording& recording_;
  trial::SystemRecorder recorder_;
  Sha256 digest_;
  std::atomic<std::uint64_t> taken_ = 0;
  std::atomic<bool> hasEnded_ = false;
  std::optional<std::string> fault_;
};

class TrialRun {
 public:
  TrialRun(const TrialCommand& command, std::ostream& out, std::ostream& err, bool progress)
      : command_(command), out_(out), err_(err), progress_(progress && !command.quiet) {}

  bool Run() {
    Read();
    trial::TrialOptions options = command_.options;
    std::vector<trial::TrialSystem> systems;
    for (std::size_t i = 0; i < readings_.size(); ++i) {
      options.meta.files.push_back(readings_[i]->Finish());
      systems.push_back({.name = command_.recordings[i].system,
                         .recorder = &readings_[i]->Recorder(),
                         .stream = command_.recordings[i].stream});
    }
    trial::TrialFigures figures = trial::WorkOut(systems, options);
    trial::JudgeLimits(figures, command_.limits);
    Write(figures);
    return figures.kept;
  }

 private:
  void Read() {
    std::vector<std::jthread> threads;
    for (const TrialRecording& recording : command_.recordings) {
      readings_.push_back(std::make_unique<Reading>(recording, command_.unchecked));
      threads.emplace_back([reading = readings_.back().get()] { reading->Run(); });
    }
    if (progress_) ShowProgress();
  }

  void ShowProgress() {
    std::uintmax_t size = 0;
    for (const TrialRecording& recording : command_.recordings) {
      std::error_code error;
      const std::uintmax_t one = std::filesystem::file_size(PathOf(recording.path), error);
      if (!error) size += one;
    }
    constexpr auto kPeriod = std::chrono::milliseconds(100);
    const auto all = [&](auto&& has) {
      for (const auto& reading : readings_) {
        if (!has(*reading)) return false;
      }
      return true;
    };
    while (!all([](const Reading& reading) { return reading.HasEnded(); })) {
      std::uint64_t taken = 0;
      for (const auto& reading : readings_) taken += reading->Taken();
      err_ << "\rReading: " << taken / 1'000'000 << " MB";
      if (size > 0) err_ << " of " << size / 1'000'000 << " MB";
      err_ << std::flush;
      std::this_thread::sleep_for(kPeriod);
    }
    // Leaves the line as it was.
    err_ << "\r\x1b[K" << std::flush;
  }

  template <class Writer>
  static void WriteFile(const std::string& path, Writer&& write) {
    errno = 0;
    std::ofstream file(PathOf(path), std::ios::binary);
    if (!file) RefuseFile("write", path);
    write(file);
    file.flush();
    if (!file) RefuseFile("write", path);
  }

  void Write(const trial::TrialFigures& figures) {
    if (command_.html) {
      WriteFile(*command_.html, [&](std::ostream& file) { file << trial::ToHtml(figures); });
    }
    if (command_.json) {
      WriteFile(*command_.json, [&](std::ostream& file) { file << trial::JsonText(figures); });
    }
    if (command_.csv) {
      std::error_code error;
      std::filesystem::create_directories(PathOf(*command_.csv), error);
      if (error) {
        throw RunError("cannot make the folder " + *command_.csv + ": " + error.message());
      }
      for (const trial::CsvFile& csv : trial::kCsvFiles) {
        WriteFile(*command_.csv + "/" + std::string(csv.name),
                  [&](std::ostream& file) { csv.write(figures, file); });
      }
    }
    if (command_.quiet) return;
    if (!command_.WritesSomething()) trial::WriteSummary(figures, out_);
    for (const trial::LimitFigures& limit : figures.limits) {
      if (!limit.kept) err_ << trial::LimitText(limit) << '\n';
    }
  }

  const TrialCommand& command_;
  std::ostream& out_;
  std::ostream& err_;
  bool progress_;
  std::vector<std::unique_ptr<Reading>> readings_;
};

}  // namespace

int RunTrialCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                    bool progress) {
  try {
    const TrialCommand command = ParseTrialCommand(arguments);
    if (command.shown) {
      out << *command.shown;
      return 0;
    }
    return TrialRun(command, out, err, progress).Run() ? 0 : 1;
  } catch (const TrialUsageError& error) {
    err << "fathomline-trial: " << error.what() << '\n';
  } catch (const RunError& error) {
    err << "fathomline-trial: " << error.what() << '\n';
  }
  return 2;
}

}  // namespace fathomline
