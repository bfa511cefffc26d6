// Live sources over real loopback sockets and pseudo-terminals.
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <pty.h>
#include <unistd.h>

#include "base/settings.h"
#include "faces/qt/qt_fixture.h"
#include "faces/qt/qt_links.h"
#include "support/expect_fault.h"

namespace fathomline {
namespace {

class QtLinksTest : public QtFixture {
 public:
  SettingsStore settings;
  QtLinks links{settings};
};

class TcpLinks : public QtLinksTest {
 public:
  QTcpServer server;
  TcpLink& link = links.Winsock1(1);
  std::string received;
  int arrivals = 0;
  int error = 0;

  void SetUp() override {
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    link.SetRemoteHost("127.0.0.1");
    link.SetRemotePort(server.serverPort());
    link.onDataArrival = [this] {
      ++arrivals;
      received += link.GetData();
    };
    link.onError = [this](int number, const std::string&) {
      error = number;
      link.Close();
    };
    desktop.Start(link);
  }

  QTcpSocket* Connect() {
    link.Connect();
    PumpUntil([&] { return server.hasPendingConnections(); });
    return server.nextPendingConnection();
  }
};

TEST_F(TcpLinks, DataWaitWhileAHandlerShowsABoxAndComeAfterwards) {
  QTcpSocket* const peer = Connect();
  link.onDataArrival = [&] {
    received += link.GetData();
    if (++arrivals > 1) return;
    peer->write("second");
    QTimer::singleShot(100, [] { Answer(QMessageBox::Ok); });
    desktop.Ask({.text = "box"});
    EXPECT_EQ(arrivals, 1);
  };
  peer->write("first,");
  PumpUntil([&] { return received == "first,second"; });
}

TEST_F(TcpLinks, APeerThatClosesIsReportedBehindItsData) {
  QTcpSocket* const peer = Connect();
  peer->write("last words");
  peer->disconnectFromHost();
  PumpUntil([&] { return error != 0; });
  EXPECT_EQ(error, 10054);
  EXPECT_EQ(received, "last words");
}

TEST_F(QtLinksTest, UdpRaisesOneArrivalPerDatagram) {
  QUdpSocket probe;
  ASSERT_TRUE(probe.bind(QHostAddress::AnyIPv4, 0));
  const quint16 port = probe.localPort();
  UdpLink& link = links.WinsockUDP(2);
  EXPECT_THROW(link.Bind(port), Fault);
  EXPECT_EQ(link.State(), LinkState::Closed);
  probe.close();
  std::string received;
  int arrivals = 0;
  link.onDataArrival = [&] {
    ++arrivals;
    received += link.GetData();
  };
  link.Bind(port);
  EXPECT_EQ(link.State(), LinkState::Open);
  desktop.Start(link);
  QUdpSocket sender;
  for (const char* const text : {"one;", "two;", "three;"}) {
    sender.writeDatagram(text, QHostAddress::LocalHost, port);
  }
  PumpUntil([&] { return arrivals == 3; });
  EXPECT_EQ(received, "one;two;three;");
  link.Close();
  EXPECT_EQ(link.State(), LinkState::Closed);
}

class SerialLinks : public QtLinksTest {
 public:
  int master = -1;
  int slave = -1;
  SerialLink& link = links.MSComm1(5);
  std::string received;
  int events = 0;

  void SetUp() override {
    char name[128];
    ASSERT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    settings.Set("Comports", "COM5", name);
    link.SetSettings("4800,N,8,1");
    link.onComm = [this] {
      if (link.CommEvent() != CommEvent::Received) return;
      ++events;
      received += link.Input();
    };
    desktop.Start(link);
  }

  void TearDown() override {
    link.Close();
    if (slave >= 0) ::close(slave);
    if (master >= 0) ::close(master);
  }

  void Send(const std::string& text) const {
    ASSERT_EQ(::write(master, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
};

TEST_F(SerialLinks, RaisesAnEventForEvery32BytesOrPartOfThem) {
  EXPECT_TRUE(links.Probe(5).present);
  EXPECT_FALSE(links.Probe(5).busy);
  link.Open();
  EXPECT_TRUE(link.PortOpen());
  EXPECT_TRUE(links.Probe(5).busy);
  Send(std::string(70, 'x'));
  PumpUntil([&] { return received.size() == 70 && events >= 3; });
  EXPECT_EQ(events, 3);
  Send("$GPGGA\n");
  PumpUntil([&] { return received.size() == 77; });
  EXPECT_EQ(received.substr(70), "$GPGGA\n");
}

TEST_F(SerialLinks, WhatCannotBeOpenedIsAFaultWithItsCause) {
  settings.Set("Comports", "COM5", "/dev/no-such-port");
  EXPECT_FALSE(links.Probe(5).present);
  try {
    link.Open();
    ADD_FAILURE() << "opened";
  } catch (const Fault& fault) {
    EXPECT_NE(fault.Description().find("no-such-port"), std::string::npos);
  }
  EXPECT_FALSE(link.PortOpen());
  for (const char* const bad : {"4800,N,8", "x,N,8,1", "4800,Q,8,1", "4800,N,9,1", "4800,N,8,3"}) {
    link.SetSettings(bad);
    EXPECT_THROW(link.Open(), Fault) << bad;
  }
}

}  // namespace
}  // namespace fathomline
