// Lines on their way from a real TCP server, UDP sender and pseudo-terminal into the whole program.
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <ctime>
#include <gmock/gmock.h>
#include <pty.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "faces/qt/conversions.h"
#include "faces/qt/qt_fixture.h"
#include "faces/qt/qt_links.h"
#include "session/program.h"
#include "setup/setup_file.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::ElementsAre;

constexpr int kTcp = 1;
constexpr int kUdp = 2;
constexpr int kSerial = 3;
constexpr int kPort = 5;

const std::string kFirst = Sentence("HEHDT,1,T") + "\r\n";
const std::string kHead = kFirst.substr(0, 8);

class LiveLines : public testing::Test, public LineListener {
 public:
  TemporaryFolder folder;
  SystemClock clock;
  SettingsStore settings;
  QtFace face;
  QtLinks links{settings};
  Program program{{face, clock, settings, [] {}, &links}};
  QTcpServer server;
  QTcpSocket* peer = nullptr;
  QUdpSocket sender;
  quint16 udpPort = 0;
  int master = -1;
  int slave = -1;
  std::string device;
  int lines = 0;
  std::vector<std::string> boxes;
  QTimer clicker;

  void LineDone() override { ++lines; }

  void SetUp() override {
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    ASSERT_TRUE(sender.bind(QHostAddress::AnyIPv4, 0));
    udpPort = sender.localPort();
    sender.close();
    char name[128];
    ASSERT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    device = name;
    settings.Set("Comports", "COM5", device);
    program.Listen(this);
    QObject::connect(&clicker, &QTimer::timeout, [this] { AnswerBox(); });
    clicker.start(1);
  }

  void TearDown() override {
    clicker.stop();
    program.Listen(nullptr);
    if (slave >= 0) ::close(slave);
    if (master >= 0) ::close(master);
  }

  void AnswerBox() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    boxes.push_back(FromQt(box->text()));
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
  }

  // Starts with the three sources open.
  void Start() {
    Records records;
    records.SetDefaultSetup();
    for (const int system : {kTcp, kUdp, kSerial}) {
      records.CommSetups[system].Enabled = true;
      records.CommSetups[system].UseTCPIP = system == kTcp;
      records.CommSetups[system].UseUDP = system == kUdp;
      records.ChecksumTest[system] = true;
      records.MessagesToAnalyse[system] = {"HDT"};
    }
    records.CommSetups[kTcp].IPAddress = "127.0.0.1";
    records.CommSetups[kTcp].TCPPort = server.serverPort();
    records.CommSetups[kUdp].UDPPort = udpPort;
    records.CommSetups[kSerial].Name = "Gyro";
    records.CommSetups[kSerial].ComPort = kPort;
    records.Comport(kPort).System = kSerial;
    folder.Write(kSetupFileName, WriteSetup(records));
    ASSERT_TRUE(program.session.startUp.Start({.programFolder = folder.Path()}));
    PumpUntil([&] {
      return TakePeer() && links.MSComm1(kPort).PortOpen() &&
             links.Winsock1(kTcp).State() == LinkState::Connected &&
             links.WinsockUDP(kUdp).State() == LinkState::Open;
    });
    ASSERT_NE(peer, nullptr);
  }

  bool TakePeer() {
    if (peer == nullptr) peer = server.nextPendingConnection();
    return peer != nullptr;
  }

  void PumpUntil(const std::function<bool()>& done) { fathomline::PumpUntil(face, done); }

  // Each in one write.
  void Send(int system, const std::string& text) {
    const auto size = static_cast<qint64>(text.size());
    if (system == kTcp) {
      EXPECT_EQ(peer->write(text.data(), size), size);
      peer->flush();
    } else if (system == kUdp) {
      EXPECT_EQ(sender.writeDatagram(text.data(), size, QHostAddress::LocalHost, udpPort), size);
    } else {
      EXPECT_EQ(::write(master, text.data(), text.size()), size);
    }
  }

  int Headings(int system) {
    return static_cast<int>(
        program.engine.statistics[system].Of<HDTRecord, &Deviations::deltaHdg>().Stat.Count);
  }
  int BadLines(int system) { return program.engine.records.ChecksumErrors[system]; }
  std::string_view Waiting() { return program.session.input.LineBuffer(kPort); }
};

TEST_F(LiveLines, AWholeLineOfEachSourceReachesItsSystem) {
  Start();
  for (const int system : {kTcp, kUdp, kSerial}) {
    SCOPED_TRACE(system);
    Send(system, kFirst);
    PumpUntil([&] { return lines == system; });
    EXPECT_EQ(Headings(system), 1);
    EXPECT_EQ(BadLines(system), 0);
  }
  EXPECT_TRUE(boxes.empty());
}

TEST_F(LiveLines, ADeviceThatGoesIsToldOnceAndKeepsItsPort) {
  Start();
  Send(kSerial, kHead);
  PumpUntil([&] { return Waiting() == kHead; });
  ::close(slave);
  ::close(master);
  slave = master = -1;
  PumpUntil([&] { return !boxes.empty(); });
  EXPECT_FALSE(links.MSComm1(kPort).PortOpen());
  EXPECT_EQ(Waiting(), "");
  EXPECT_TRUE(program.engine.records.CommSetups[kSerial].Enabled);
  EXPECT_EQ(program.engine.records.CommSetups[kSerial].ComPort, kPort);

  clicker.setInterval(50);
  const auto end = face.Now() + std::chrono::milliseconds(400);
  const std::clock_t before = std::clock();
  face.RunUntil([&] { return face.Now() > end; });
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 5) << "spins";
  EXPECT_THAT(boxes, ElementsAre("The device has gone: " + device +
                                 ". Comport 5 has been closed! System 3 -Gyro"));
  Send(kTcp, kFirst);
  PumpUntil([&] { return Headings(kTcp) == 1; });
}

}  // namespace
}  // namespace fathomline
