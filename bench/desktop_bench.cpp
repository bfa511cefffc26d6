// Replays a recording on the Qt face with windows open and painting, on whatever platform Qt is
// told (QT_QPA_PLATFORM=offscreen): bench-desktop RECORDING [all|usual|watch|log] [GGA,VTG,...]
//
// The windows are all views of the system, the usual ones, Sources and Satellites, or these with
// the sentence log. Prints how long the windows take to open, lines a second, and the longest turn
// of the event loop in both, which is what a user feels.
#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/clock.h"
#include "faces/qt/qt_face.h"
#include "session/program.h"
#include "setup/setup_file.h"

namespace {

using namespace fathomline;
using SteadyClock = std::chrono::steady_clock;

double Seconds(SteadyClock::duration span) {
  return std::chrono::duration<double>(span).count();
}

struct Run {
  double seconds = 0.0;
  double longestTurn = 0.0;  // in milliseconds
};

Run RunUntil(Program& program, const std::function<bool()>& done) {
  const auto begin = SteadyClock::now();
  auto last = begin;
  SteadyClock::duration longest{};
  program.desktop.RunUntil([&] {
    const auto now = SteadyClock::now();
    longest = std::max(longest, now - std::exchange(last, now));
    return done();
  });
  return {Seconds(last - begin), Seconds(longest) * 1000.0};
}

bool AllDrawn(const Program& program, const QtFace& face) {
  const auto& windows = program.desktop.Windows();
  return std::all_of(windows.begin(), windows.end(), [&](const Window* window) {
    const QWidget* const host = face.HostOf(*window);
    return !window->Visible() || (host != nullptr && host->isVisible());
  });
}

void OpenUsualWindows(Program& program) {
  for (const ViewKind kind :
       {ViewKind::Statistics, ViewKind::Numerics, ViewKind::Scatter, ViewKind::Skyplot}) {
    program.windows.OpenView(kind, 1);
  }
  for (Window* const window : program.desktop.Windows()) {
    if (window->Name() == "frmTimeSeriesGGA" && window->Index() == 1) window->Show();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const std::string_view windows = argc > 2 ? argv[2] : "usual";
  constexpr std::array<std::string_view, 4> kWindows = {"all", "usual", "watch", "log"};
  if (argc < 2 || std::find(kWindows.begin(), kWindows.end(), windows) == kWindows.end()) {
    std::fputs("bench-desktop RECORDING [all|usual|watch|log] [GGA,VTG,...]\n", stderr);
    return 2;
  }
  std::string_view types = argc > 3 ? argv[3] : "GGA,GLL,VTG,GSA,GSV,ZDA,VHW,DBT,TTM,VDM";

  const SystemClock clock;
  SettingsStore settings;
  QtFace face;
  Program program({face, clock, settings, [] {}});
  Records& records = program.engine.records;
  const std::string folder =
      (std::filesystem::temp_directory_path() / "fathomline-bench-desktop/").string();
  std::filesystem::create_directories(folder);
  // A setup of its own, so that no first-start box waits for somebody.
  records.SetDefaultSetup();
  records.Mode = kOffline;
  records.CommSetups[1].Enabled = true;
  records.CommSetups[1].Name = "Bench";
  records.CommSetups[1].OfflineFile = argv[1];
  for (std::size_t row = 0; row < kUsedMessageRows && !types.empty(); ++row) {
    const std::size_t comma = std::min(types.find(','), types.size());
    records.MessagesToAnalyse[1][row] = types.substr(0, comma);
    types.remove_prefix(std::min(comma + 1, types.size()));
  }
  records.CoordinateDecimals = 4;
  WriteSetupFile(folder + "Fathomline.ini", records);
  if (!program.session.startUp.Start({.programFolder = folder})) return 1;

  if (windows == "all") {
    program.windows.OpenAnalysed(1);
    program.windows.OpenView(ViewKind::NMEA, 1);
  } else if (windows == "usual") {
    OpenUsualWindows(program);
  } else {
    Tools& tools = program.session.tools;
    tools.sources.Show();
    tools.satellites.Show();
    if (windows == "log") tools.sentenceLog.Show();
  }
  program.desktop.Arrange(Arrangement::TileHorizontally);
  const Run opening = RunUntil(program, [&] { return AllDrawn(program, face); });
  std::printf("opened in %.3f s, longest turn %.1f ms\n", opening.seconds, opening.longestTurn);

  const std::int32_t before = records.SentenceCount;
  program.windows.main.tbOffline.Click("PLAY");
  const Run replay = RunUntil(program, [&] { return !records.OfflineRunning; });
  const std::int32_t lines = records.SentenceCount - before;
  std::printf("%d lines in %.3f s, %.0f lines/s, longest turn %.1f ms\n", lines, replay.seconds,
              lines / replay.seconds, replay.longestTurn);
  records.Closing = true;
  return 0;
}
