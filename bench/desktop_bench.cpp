// Replays a recording on the Qt face with windows open and painting, on whatever platform Qt is
// told (QT_QPA_PLATFORM=offscreen): bench-desktop RECORDING [all|usual] [GGA,VTG,...]
//
// Prints lines a second, and the longest turn of the event loop, which is what a user feels.
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "pipeline/program.h"
#include "platform/clock.h"
#include "platform/qt/qt_face.h"
#include "setup/setup_file.h"

namespace {

using namespace fathomline;
using Clock_ = std::chrono::steady_clock;

double Seconds(Clock_::duration span) {
  return std::chrono::duration<double>(span).count();
}

void OpenUsualWindows(Program& program) {
  for (const ViewKind kind :
       {ViewKind::Statistics, ViewKind::Numerics, ViewKind::Scatter, ViewKind::Skyplot}) {
    program.OpenView(kind, 1);
  }
  for (Window* const window : program.desktop.Windows()) {
    if (window->Name() == "frmTimeSeriesGGA" && window->Index() == 1) window->Show();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc < 2) {
    std::fputs("bench-desktop RECORDING [all|usual] [GGA,VTG,...]\n", stderr);
    return 2;
  }
  const std::string_view windows = argc > 2 ? argv[2] : "usual";
  std::string_view types = argc > 3 ? argv[3] : "GGA,GLL,VTG,GSA,GSV,ZDA,VHW,DBT,TTM,VDM";

  const SystemClock clock;
  SettingsStore settings;
  QtFace face;
  Program program({face, clock, settings, [] {}});
  Records& records = program.records;
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
  if (!program.startUp.Start({.programFolder = folder})) return 1;

  if (windows == "all") {
    program.OpenAnalysedWindows(1);
    program.OpenView(ViewKind::NMEA, 1);
  } else {
    OpenUsualWindows(program);
  }
  program.desktop.Arrange(Arrangement::TileHorizontally);
  for (int i = 0; i < 20; ++i) face.Turn();

  const std::int32_t before = records.SentenceCount;
  const auto begin = Clock_::now();
  auto last = begin;
  Clock_::duration longest{};
  program.mainWindow.tbOffline.Click("PLAY");
  program.desktop.RunUntil([&] {
    const auto now = Clock_::now();
    longest = std::max(longest, now - last);
    last = now;
    return !records.OfflineRunning;
  });
  const double seconds = Seconds(Clock_::now() - begin);
  const std::int32_t lines = records.SentenceCount - before;
  std::printf("%d lines in %.3f s, %.0f lines/s, longest turn %.1f ms\n", lines, seconds,
              lines / seconds, Seconds(longest) * 1000.0);
  records.Closing = true;
  return 0;
}
