// Four simulated systems, one over TCP, one over UDP and two over pseudo-terminals, feed the real
// program on the desktop face for a long time. What the program logs is compared with what was
// sent.
//
//   QT_QPA_PLATFORM=offscreen soak SIMULATOR [SECONDS [LINES_PER_SECOND [SPEED [charts]]]]
//
// Seconds and rate are those of the simulated time, which goes by SPEED times as fast: a day in ten
// minutes with "86400 4 144".
#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/serial_devices.h"
#include "faces/qt/qt_face.h"
#include "faces/qt/qt_links.h"
#include "session/run_desktop.h"
#include "setup/setup_file.h"
#include "support/temporary_folder.h"
#include "toolkit/chart.h"

namespace fathomline {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kFirstComport = 5;
constexpr std::array<const char*, kSystems> kNames = {"Tcp", "Udp", "SerialA", "SerialB"};
constexpr std::chrono::milliseconds kLookInterval{50};
constexpr std::chrono::seconds kReportInterval{30};

// In kilobytes: "VmRSS", "VmHWM".
long MemoryUse(std::string_view key) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key)) return std::strtol(line.c_str() + key.size() + 1, nullptr, 10);
  }
  return 0;
}

std::vector<std::string> Lines(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

struct Comparison {
  std::size_t sent = 0;
  std::size_t received = 0;
  std::size_t lost = 0;     // sent and not received, in their order
  std::size_t waiting = 0;  // of these, at the very end
  std::size_t strange = 0;  // received and never sent, such as the halves of a line
};

// Lines that are alike, such as headings of a vessel that lies still, count one by one.
Comparison Compare(const std::vector<std::string>& sent, const std::vector<std::string>& received) {
  Comparison result{sent.size(), received.size()};
  std::map<std::string_view, long> balance;
  for (const std::string& line : sent) ++balance[line];
  for (const std::string& line : received) --balance[line];
  for (const auto& [line, count] : balance) {
    (count > 0 ? result.lost : result.strange) += static_cast<std::size_t>(std::labs(count));
  }
  if (!received.empty()) {
    const auto last = std::find(sent.rbegin(), sent.rend(), received.back());
    result.waiting = static_cast<std::size_t>(last - sent.rbegin());
  }
  return result;
}

class Soak {
 public:
  Soak(QString simulator, int seconds, int linesPerSecond, int speed, bool charts)
      : simulator_(std::move(simulator)),
        seconds_(seconds),
        linesPerSecond_(linesPerSecond),
        speed_(speed),
        charts_(charts) {}

  int Run() {
    StartSimulators();
    WriteSetupFile();
    StartOptions options;
    options.programFolder = folder_.Path();
    if (!program_.session.startUp.Start(options)) return 1;
    for (int system = 1; system <= kSystems; ++system) {
      program_.windows.OpenView(ViewKind::Numerics, system);
      program_.windows.OpenView(ViewKind::Statistics, system);
      if (charts_) program_.windows.OpenView(ViewKind::TimeSeries, system);
    }
    program_.windows.OpenView(ViewKind::NMEA, 3);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [this] { Look(); });
    look.start(kLookInterval);
    looked_ = started_ = reported_ = SteadyClock::now();
    program_.session.control.Press("LOG");
    if (!program_.engine.records.CommSetups[kUdpSystem].Enabled) return 1;
    StartSimulator(kUdpSystem, {"--udp", QString::number(udpPort_)});
    program_.desktop.RunUntil([this] { return done_; });
    look.stop();
    return Report();
  }

 private:
  static constexpr int kUdpSystem = 2;

  QProcess& Simulator(int system) { return simulators_[static_cast<std::size_t>(system - 1)]; }
  std::string CopyPath(int system) const { return folder_ / ("sent" + std::to_string(system)); }

  void StartSimulator(int system, const QStringList& where) {
    const QString rate = QString::number(linesPerSecond_ / 4);
    QStringList arguments = where;
    arguments << "--sentences" << QStringLiteral("GGA:%1,RMC:%1,HDT:%1,ATT:%1").arg(rate)
              << "--duration" << QString::number(seconds_) << "--seed" << QString::number(system)
              << "--speed" << QString::number(speed_) << "--output"
              << QString::fromStdString(CopyPath(system));
    QProcess& process = Simulator(system);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(simulator_, arguments);
    process.waitForReadyRead();
  }

  void StartSimulators() {
    StartSimulator(1, {"--tcp", "0"});
    tcpPort_ = Simulator(1).readLine().trimmed().split(':').last().toInt();
    for (int system = 3; system <= kSystems; ++system) {
      const std::string link = folder_ / kNames[static_cast<std::size_t>(system - 1)];
      StartSimulator(system, {"--pty-link", QString::fromStdString(link)});
      settings_.Set(kComportsSection, "COM" + std::to_string(kFirstComport + system), link);
    }
    QUdpSocket free;
    free.bind(QHostAddress::LocalHost, 0);
    udpPort_ = free.localPort();
  }

  void WriteSetupFile() const {
    Records records;
    records.SetDefaultSetup();
    for (int system = 1; system <= kSystems; ++system) {
      CommSetup& setup = records.CommSetups[system];
      setup.Enabled = true;
      setup.Name = kNames[static_cast<std::size_t>(system - 1)];
      std::size_t row = 0;
      for (const char* type : {"GGA", "RMC", "HDT", "ATT"}) {
        records.MessagesToAnalyse[system][row++] = type;
      }
      if (system <= kUdpSystem) continue;
      setup.ComPort = static_cast<std::int16_t>(kFirstComport + system);
      ComportSetup& port = records.Comport(setup.ComPort);
      port.System = static_cast<std::int16_t>(system);
      port.Baud = 115200;
    }
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].IPAddress = "127.0.0.1";
    records.CommSetups[1].TCPPort = tcpPort_;
    records.CommSetups[kUdpSystem].UseUDP = true;
    records.CommSetups[kUdpSystem].UDPPort = udpPort_;
    folder_.Write(kSetupFileName, WriteSetup(records));
  }

  void Look() {
    const auto now = SteadyClock::now();
    longestTurn_ = std::max<Milliseconds>(longestTurn_, now - looked_ - kLookInterval);
    looked_ = now;
    if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      std::printf("box: %s\n", qPrintable(box->text().simplified()));
      box->accept();
    }
    if (now - reported_ >= kReportInterval) Tell(now);
    const bool running = std::any_of(simulators_.begin(), simulators_.end(), [](const QProcess& p) {
      return p.state() != QProcess::NotRunning;
    });
    const std::int32_t count = program_.engine.records.SentenceCount;
    if (running || std::exchange(count_, count) != count) quietSince_ = now;
    if (now - quietSince_ >= std::chrono::seconds(2)) done_ = true;
  }

  // The one thing that grows with a session: charts keep a day, whether or not they are shown.
  int ChartPoints() const {
    int points = 0;
    for (const Window* const window : program_.desktop.Windows()) {
      for (const Control* const control : window->Controls()) {
        const auto* const chart = dynamic_cast<const Chart*>(control);
        for (int i = 0; chart != nullptr && i < chart->SeriesCount(); ++i) {
          points += chart->Series(i).Count();
        }
      }
    }
    return points;
  }

  void Tell(SteadyClock::time_point now) {
    reported_ = now;
    const std::chrono::duration<double> passed = now - started_;
    const long memory = MemoryUse("VmRSS:");
    memory_.push_back(memory);
    std::printf("%5.0f s  %9d lines  %7ld kB  %8d chart points  longest turn %.0f ms\n",
                passed.count(), program_.engine.records.SentenceCount, memory, ChartPoints(),
                longestTurn_.count());
    std::fflush(stdout);
  }

  int Report() {
    Tell(SteadyClock::now());
    bool complete = true;
    for (int system = 1; system <= kSystems; ++system) {
      const std::string& log = program_.engine.records.LogFileName[system];
      const Comparison result =
          Compare(Lines(CopyPath(system)), Lines(folder_.Path() + "log/" + log));
      std::printf("%-8s sent %zu, received %zu, lost %zu (at the end %zu), never sent %zu\n",
                  kNames[static_cast<std::size_t>(system - 1)], result.sent, result.received,
                  result.lost, result.waiting, result.strange);
      complete = complete && result.lost == result.waiting && result.strange == 0;
    }
    std::printf("memory: first %ld kB, last %ld kB, peak %ld kB; error log entries: %d\n",
                memory_.front(), memory_.back(), MemoryUse("VmHWM:"),
                static_cast<int>(program_.engine.records.ErrorCount));
    std::fflush(stdout);
    return complete ? 0 : 1;
  }

  QString simulator_;
  int seconds_;
  int linesPerSecond_;
  int speed_;
  bool charts_;
  int tcpPort_ = 0;
  int udpPort_ = 0;
  TemporaryFolder folder_;
  std::array<QProcess, kSystems> simulators_;
  SettingsStore settings_;
  SystemClock clock_;
  QtLinks links_{settings_};
  QtFace face_;
  Program program_{{face_, clock_, settings_, [] { std::_Exit(1); }, &links_}};
  SteadyClock::time_point started_;
  SteadyClock::time_point reported_;
  SteadyClock::time_point looked_;
  SteadyClock::time_point quietSince_ = SteadyClock::now();
  Milliseconds longestTurn_{};
  std::vector<long> memory_;
  std::int32_t count_ = 0;
  bool done_ = false;
};

}  // namespace
}  // namespace fathomline

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() < 2) {
    std::fputs("Usage: soak SIMULATOR [SECONDS [LINES_PER_SECOND [SPEED [charts]]]]\n", stderr);
    return 2;
  }
  const int seconds = arguments.size() > 2 ? arguments[2].toInt() : 600;
  const int lines = arguments.size() > 3 ? arguments[3].toInt() : 1000;
  const int speed = arguments.size() > 4 ? arguments[4].toInt() : 1;
  fathomline::Soak soak(arguments[1], seconds, lines, speed, arguments.size() > 5);
  const int status = soak.Run();
  std::fflush(stdout);
  return status;
}
