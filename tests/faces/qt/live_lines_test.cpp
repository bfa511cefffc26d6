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
using testing::StartsWith;

constexpr int kTcp = 1;
constexpr int kUdp = 2;
constexpr int kSerial = 3;
constexpr int kRefused = 4;
constexpr int kPort = 5;

// 15 bytes each, so that two of them are one event of a serial port.
const std::string kFirst = Sentence("HEHDT,1,T") + "\r\n";
const std::string kSecond = Sentence("HEHDT,2,T") + "\r\n";
const std::string kThird = Sentence("HEHDT,3,T") + "\r\n";
const std::string kHead = kSecond.substr(0, 8);
const std::string kTail = kSecond.substr(8);

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
  // A box is answered as soon as this holds.
  std::function<bool()> mayAnswer = [] { return true; };
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
    if (box == nullptr || !mayAnswer()) return;
    boxes.push_back(FromQt(box->text()));
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
  }

  // Starts with the three sources open, and with what the test adds to them.
  void Start(const std::function<void(Records&)>& add = [](Records&) {}) {
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
    add(records);
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
    return static_cast<int>(program.engine.statistics[system].Of<HDTRecord>()[0].Stat.Count);
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

TEST_F(LiveLines, ASocketTakesAllLinesOfAReadAndForgetsTheHeadOfTheNext) {
  Start();
  for (const int system : {kTcp, kUdp}) {
    SCOPED_TRACE(system);
    lines = 0;
    Send(system, kFirst + kThird + kHead);
    PumpUntil([&] { return lines == 2; });
    EXPECT_EQ(Headings(system), 2);
    EXPECT_EQ(BadLines(system), 0);
    Send(system, kTail + kThird);
    PumpUntil([&] { return lines == 4; });
    EXPECT_EQ(Headings(system), 3);
    EXPECT_EQ(BadLines(system), 1);
  }
}

TEST_F(LiveLines, ASerialPortJoinsALineAndGivesOneAnEvent) {
  Start();
  Send(kSerial, kHead);
  PumpUntil([&] { return Waiting() == kHead; });
  EXPECT_EQ(lines, 0);
  Send(kSerial, kTail);
  PumpUntil([&] { return lines == 1; });
  EXPECT_EQ(Headings(kSerial), 1);
  EXPECT_EQ(Waiting(), "");

  Send(kSerial, kFirst + kSecond);
  PumpUntil([&] { return lines == 2; });
  for (int turn = 0; turn < 10; ++turn) face.Turn();
  EXPECT_EQ(lines, 2);
  EXPECT_EQ(Waiting(), kSecond);
  Send(kSerial, kThird);
  PumpUntil([&] { return lines == 3; });
  EXPECT_EQ(Waiting(), kThird);

  // 45 bytes are two events, for four lines that wait.
  Send(kSerial, kFirst + kSecond + kFirst);
  PumpUntil([&] { return lines == 5; });
  for (int turn = 0; turn < 10; ++turn) face.Turn();
  EXPECT_EQ(lines, 5);
  EXPECT_EQ(Waiting(), kSecond + kFirst);
  EXPECT_EQ(Headings(kSerial), 5);
  EXPECT_EQ(BadLines(kSerial), 0);
}

TEST_F(LiveLines, EmptybufferCountsWhatItDropsAndKeepsTheFragment) {
  Start([](Records& records) { records.Emptybuffer[kSerial] = true; });
  StatusBar& bar = program.windows.main.sbStatusBar;
  EXPECT_EQ(bar.PanelText(kSerial + 8), "0");
  const std::string fragment = kThird.substr(0, 2);
  Send(kSerial, kFirst + kSecond + fragment);
  PumpUntil([&] { return program.engine.records.IgnoredMessages[kSerial] == 1; });
  EXPECT_EQ(bar.PanelText(kSerial + 8), "1");
  EXPECT_EQ(Waiting(), fragment);
  Send(kSerial, kThird.substr(2));
  PumpUntil([&] { return lines == 2; });
  EXPECT_EQ(Headings(kSerial), 2);
  EXPECT_EQ(program.engine.records.IgnoredMessages[kSerial], 1);
  EXPECT_EQ(BadLines(kSerial), 0);
}

TEST_F(LiveLines, ARefusedConnectionIsToldWhileTheOthersGoOn) {
  const auto latest = face.Now() + std::chrono::seconds(10);
  // The box stands before the start is over, and until a line of each other source is through.
  bool sent = false;
  mayAnswer = [&] {
    if (!sent && TakePeer()) {
      EXPECT_EQ(lines, 0);
      for (const int system : {kTcp, kUdp, kSerial}) Send(system, kFirst);
      sent = true;
    }
    return lines == 3 || face.Now() > latest;
  };
  QTcpServer refusing;
  ASSERT_TRUE(refusing.listen(QHostAddress::LocalHost));
  const int port = refusing.serverPort();
  refusing.close();
  Start([&](Records& records) {
    records.CommSetups[kRefused].Enabled = true;
    records.CommSetups[kRefused].UseTCPIP = true;
    records.CommSetups[kRefused].IPAddress = "127.0.0.1";
    records.CommSetups[kRefused].TCPPort = port;
  });
  PumpUntil([&] { return !boxes.empty(); });
  EXPECT_THAT(boxes, ElementsAre(StartsWith("TCP/IP Error, system 4 :10061 - ")));
  for (const int system : {kTcp, kUdp, kSerial}) EXPECT_EQ(Headings(system), 1) << system;
  EXPECT_EQ(links.Winsock1(kRefused).State(), LinkState::Closed);
  EXPECT_TRUE(program.engine.records.CommSetups[kRefused].Enabled);
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
