// The AIS list of a crowded sea on the Qt face: as many stations as it holds, all of them
// reporting.
//
//   QT_QPA_PLATFORM=offscreen bench-target-list [SECONDS [MESSAGES_PER_SECOND]]
//
// Prints what the turns of the event loop cost, and whether the list stayed where its user left it.
#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "base/clock.h"
#include "faces/qt/qt_face.h"
#include "session/program.h"
#include "setup/setup_file.h"
#include "simulator/ais_encoder.h"

namespace {

using namespace fathomline;
using SteadyClock = std::chrono::steady_clock;

constexpr int kStations = AISStore::kMaximumTargets;
constexpr int kSelectedRow = 300;

double Seconds(SteadyClock::duration span) {
  return std::chrono::duration<double>(span).count();
}

// Four reports of each station, each from another place.
std::vector<std::string> Reports() {
  using simulator::EncodedField;
  std::vector<std::string> reports;
  simulator::EncodedPayload payload;
  for (int i = 0; i < 4 * kStations; ++i) {
    simulator::MessageValues values;
    values.Set(EncodedField::MessageId, 1);
    values.Set(EncodedField::MMSI, 257000000 + i % kStations);
    values.Set(EncodedField::SpeedOverGround, i % 300);
    values.Set(EncodedField::CourseOverGround, i * 7 % 3600);
    values.Set(EncodedField::Longitude, simulator::EncodeAngle(5.0 + i * 0.0013));
    values.Set(EncodedField::Latitude, simulator::EncodeAngle(59.0 + i * 0.0007));
    EncodePayload(simulator::kPositionReportLayout, values, payload);
    reports.push_back("!AIVDM,1,1,,A," + payload.characters + ",0*00");
  }
  return reports;
}

void SetUp(Program& program) {
  Records& records = program.engine.records;
  const std::string folder =
      (std::filesystem::temp_directory_path() / "fathomline-bench-target-list/").string();
  std::filesystem::create_directories(folder);
  records.SetDefaultSetup();
  records.Mode = kOffline;
  records.CommSetups[1].Enabled = true;
  records.MessagesToAnalyse[1][0] = "VDM";
  records.CoordinateDecimals = 4;
  WriteSetupFile(folder + "Fathomline.ini", records);
  if (!program.session.startUp.Start({.programFolder = folder})) std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const double seconds = argc > 1 ? std::atof(argv[1]) : 10.0;
  const double rate = argc > 2 ? std::atof(argv[2]) : 1000.0;

  const SystemClock clock;
  SettingsStore settings;
  QtFace face;
  Program program({face, clock, settings, [] {}});
  SetUp(program);
  program.windows.OpenView(ViewKind::AISTargets, 1);
  const std::vector<std::string> reports = Reports();
  for (const std::string& report : reports) program.engine.pipeline.ProcessSentence(1, report);
  for (int i = 0; i < 20; ++i) face.Turn();
  face.Draw();

  frmAISTargets& list = *program.windows.aisTargets[1];
  auto* const table = qobject_cast<QTableView*>(face.WidgetOf(list.fgAISTargets));
  if (table == nullptr) return 1;
  table->selectRow(kSelectedRow);
  table->scrollTo(table->model()->index(kSelectedRow, 0), QAbstractItemView::PositionAtCenter);
  const int scrolled = table->verticalScrollBar()->value();

  std::vector<double> turns;
  std::size_t sent = 0;
  const std::uint64_t updates = face.Updates();
  const std::clock_t cpu = std::clock();
  const auto begin = SteadyClock::now();
  while (Seconds(SteadyClock::now() - begin) < seconds) {
    const auto due = static_cast<std::size_t>(Seconds(SteadyClock::now() - begin) * rate);
    const auto turn = SteadyClock::now();
    for (; sent < due; ++sent) {
      program.engine.pipeline.ProcessSentence(1, reports[sent % reports.size()]);
    }
    face.Turn();
    turns.push_back(Seconds(SteadyClock::now() - turn) * 1000.0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  const double used = static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
  std::sort(turns.begin(), turns.end());
  const auto share = [&](double part) {
    return turns[static_cast<std::size_t>(part * static_cast<double>(turns.size() - 1))];
  };
  std::printf("%zu messages of %d stations in %.1f s, %.0f updates a second, %.0f %% of a core\n",
              sent, list.fgAISTargets.Rows() - 1, seconds,
              static_cast<double>(face.Updates() - updates) / seconds, used / seconds * 100.0);
  std::printf("turn of the event loop: median %.2f ms, 99 %% below %.2f ms, longest %.2f ms\n",
              share(0.5), share(0.99), share(1.0));
  std::printf("selected row %d of %d, scrolled to %d of %d\n", table->currentIndex().row(),
              kSelectedRow, table->verticalScrollBar()->value(), scrolled);
  program.engine.records.Closing = true;
  return 0;
}
