// Links that are lost and come back, over real loopback sockets and pseudo-terminals, with the
// whole program behind them. A message box fails the test.
#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <filesystem>
#include <gmock/gmock.h>
#include <pty.h>
#include <string>
#include <unistd.h>

#include "faces/qt/conversions.h"
#include "faces/qt/qt_fixture.h"
#include "faces/qt/qt_links.h"
#include "session/program.h"
#include "setup/setup_file.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

constexpr int kPort = 5;
const std::string kHeading = Sentence("HEHDT,101.1,T") + "\r\n";

class LostLinks : public testing::Test {
 public:
  TemporaryFolder folder;
  SystemClock clock;
  SettingsStore settings;
  QtFace face;
  QtLinks links{settings};
  std::unique_ptr<Program> program;
  QTimer boxes;

  void SetUp() override {
    settings.Set("Settings", "ReconnectLostLinks", 1);
    QObject::connect(&boxes, &QTimer::timeout, [] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      ADD_FAILURE() << FromQt(box->text());
      QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    boxes.start(20);
  }

  void Start(const std::function<void(Records&)>& fill) {
    Records records;
    records.SetDefaultSetup();
    records.CommSetups[1].Enabled = true;
    records.MessagesToAnalyse[1] = {"HDT"};
    fill(records);
    folder.Write(kSetupFileName, WriteSetup(records));
    program = std::make_unique<Program>(Surroundings{face, clock, settings, [] {}, &links});
    ASSERT_TRUE(program->session.startUp.Start({.programFolder = folder.Path()}));
  }

  void PumpUntil(const std::function<bool()>& done) { fathomline::PumpUntil(face, done); }
  void Pump(std::chrono::milliseconds span) {
    const auto end = face.Now() + span;
    face.RunUntil([&] { return face.Now() > end; });
  }
  std::int64_t Headings() { return program->engine.statistics[1].Of<HDTRecord>()[0].Stat.Count; }
  bool Open() { return program->session.keeper.Look(1).stage == LinkStage::Open; }
};

TEST_F(LostLinks, ADeviceMayBeRemovedAndComeBackAsAnother) {
  const std::string device = folder / "gyro";
  settings.Set("Comports", "COM5", device);
  int master = -1;
  int slave = -1;
  const auto plug = [&] {
    char name[128];
    ASSERT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    std::filesystem::create_symlink(name, device);
  };
  const auto pull = [&] {
    std::filesystem::remove(device);
    ::close(slave);
    ::close(master);
  };
  Start([](Records& records) {
    records.CommSetups[1].ComPort = kPort;
    records.Comport(kPort).System = 1;
  });
  EXPECT_EQ(program->session.keeper.Look(1).stage, LinkStage::Waiting) << "it is not there yet";
  EXPECT_TRUE(program->engine.records.CommSetups[1].Enabled);
  for (int round = 1; round <= 3; ++round) {
    plug();
    PumpUntil([&] { return Open(); });
    for (int i = 0; i < 3; ++i) {
      ASSERT_EQ(::write(master, kHeading.data(), kHeading.size()),
                static_cast<ssize_t>(kHeading.size()));
      PumpUntil([&] { return Headings() >= 3 * (round - 1) + i + 1; });
    }
    pull();
    PumpUntil([&] { return program->session.keeper.Look(1).stage == LinkStage::Waiting; });
    EXPECT_THAT(program->session.keeper.Look(1).cause, testing::HasSubstr("gone"));
    EXPECT_EQ(Headings(), 3 * round);
  }
  const std::clock_t before = std::clock();
  Pump(std::chrono::milliseconds(500));
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 4) << "spins";
}

// A ship's server: sends to whoever is connected, fast, until it is taken down.
struct Server {
  explicit Server(quint16 port) {
    EXPECT_TRUE(listener.listen(QHostAddress::LocalHost, port)) << FromQt(listener.errorString());
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [this] {
      peer = listener.nextPendingConnection();
      ++connections;
    });
    QObject::connect(&load, &QTimer::timeout, &listener, [this] {
      for (int line = 0; peer != nullptr && line < 20; ++line) Send();
    });
  }
  void Send() {
    peer->write(kHeading.data(), static_cast<qint64>(kHeading.size()));
    ++sent;
  }

  QTcpServer listener;
  QTimer load;
  QPointer<QTcpSocket> peer;
  int connections = 0;
  std::int64_t sent = 0;
};

TEST_F(LostLinks, AServerMayRestartUnderLoadAndASilentOneIsKept) {
  quint16 port = 0;
  {
    QTcpServer free;
    ASSERT_TRUE(free.listen(QHostAddress::LocalHost));
    port = free.serverPort();
  }
  Start([port](Records& records) {
    records.CommSetups[1].UseTCPIP = true;
    records.CommSetups[1].IPAddress = "127.0.0.1";
    records.CommSetups[1].TCPPort = port;
  });
  program->session.keeper.SetPatience({.delays = {20, 40, 60, 80, 200}, .look = 20, .steady = 100});
  PumpUntil([&] { return program->session.keeper.Look(1).tries >= 5; });

  std::int64_t received = 0;
  std::int64_t sent = 0;
  for (int restart = 1; restart <= 10; ++restart) {
    Server server(port);
    server.load.start(1);
    PumpUntil([&] { return Open() && server.sent >= 200 && Headings() > received; });
    // Every other one goes down in order, the rest as a process that is killed does: with an error,
    // and what is on its way is lost.
    const bool killed = restart % 2 == 0;
    server.load.stop();
    if (killed) {
      server.peer->abort();
    } else {
      server.peer->disconnectFromHost();
      const std::int64_t all = received + server.sent;
      PumpUntil([&] { return Headings() == all; });
    }
    PumpUntil([&] { return program->session.keeper.Look(1).stage == LinkStage::Waiting; });
    EXPECT_EQ(server.connections, 1) << restart;
    EXPECT_GT(Headings(), received) << restart;
    received = Headings();
    sent += server.sent;
  }
  EXPECT_LE(received, sent);
  EXPECT_TRUE(program->engine.records.CommSetups[1].Enabled);

  // The cable is out for longer than any delay: nothing comes, and nothing is closed.
  Server server(port);
  PumpUntil([&] { return Open() && server.peer != nullptr; });
  Pump(std::chrono::milliseconds(600));
  EXPECT_EQ(server.connections, 1);
  EXPECT_EQ(program->session.keeper.Look(1).tries, 0) << "it has held";
  server.Send();
  PumpUntil([&] { return Headings() == received + 1; });
}

TEST_F(LostLinks, AUdpPortIsTakenAsSoonAsItIsFree) {
  QUdpSocket other;
  ASSERT_TRUE(other.bind(QHostAddress::AnyIPv4, 0, QUdpSocket::DontShareAddress));
  const quint16 port = other.localPort();
  Start([port](Records& records) {
    records.CommSetups[1].UseUDP = true;
    records.CommSetups[1].UDPPort = port;
  });
  EXPECT_EQ(program->session.keeper.Look(1).stage, LinkStage::Waiting);
  Pump(std::chrono::milliseconds(1500));
  EXPECT_FALSE(Open());
  other.close();
  PumpUntil([&] { return Open(); });
  other.writeDatagram(kHeading.data(), static_cast<qint64>(kHeading.size()),
                      QHostAddress::LocalHost, port);
  PumpUntil([&] { return Headings() == 1; });
}

}  // namespace
}  // namespace fathomline
