#include "sources/live_input.h"

#include <gmock/gmock.h>

#include "support/headless_links.h"
#include "support/scripted_face.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;

struct RecordedLines : LineSink {
  void ProcessSentence(int system, std::string_view line) override {
    lines.push_back(std::to_string(system) + ":" + std::string(line));
    if (onLine) onLine();
  }
  void ShowInput(int, std::string_view text) override { inputs.emplace_back(text); }
  void ShowIgnoredMessages(int system, std::int32_t count) override {
    ignored.emplace_back(system, count);
  }

  std::vector<std::string> lines;
  std::vector<std::string> inputs;
  std::vector<std::pair<int, int>> ignored;
  std::function<void()> onLine;
};

struct RecordedFaults : FaultLog {
  void WriteErrorLog(const Fault& fault) override { faults.push_back(fault.Description()); }
  std::vector<std::string> faults;
};

struct Live : ::testing::Test {
  ~Live() override { EXPECT_TRUE(face.Exhausted()); }

  void UseSerial(int system, std::int16_t port) {
    CommSetup& setup = records.CommSetups[system];
    setup.Enabled = true;
    setup.Name = "Gyro";
    setup.ComPort = port;
    setup.TCPPort = 8040;
    records.Comport(port).System = static_cast<std::int16_t>(system);
  }
  void Deliver() { face.Turn(); }
  void Receive(int port, std::string_view bytes) {
    links.MSComm1(port).Arrive(bytes);
    Deliver();
  }

  ScriptedFace face;
  Desktop desktop{face};
  Records records;
  HeadlessLinks links;
  RecordedLines sink;
  RecordedFaults faults;
  LiveInput input{records, links, desktop, sink, faults};
};

TEST_F(Live, OpensOneLinkPerEnabledSystem) {
  UseSerial(1, 5);
  records.Comport(5).Baud = 38400;
  records.Comport(5).Parity = "even";
  records.Comport(5).System = 0;  // as an old setup file leaves it
  UseSerial(2, 6);
  records.CommSetups[2].UseTCPIP = records.CommSetups[2].UseUDP = true;
  records.CommSetups[2].IPAddress = "10.1.2.3";
  UseSerial(3, 7);
  records.CommSetups[3].UseUDP = true;
  records.CommSetups[3].UDPPort = 10110;
  UseSerial(4, 8);
  records.CommSetups[4].Enabled = false;
  input.OpenPorts();
  EXPECT_EQ(links.MSComm1(5).Settings(), "38400,e,8,1");
  EXPECT_TRUE(links.MSComm1(5).PortOpen());
  EXPECT_EQ(records.Comport(5).System, 1);
  EXPECT_EQ(links.Winsock1(2).RemoteHost(), "10.1.2.3");
  EXPECT_EQ(links.Winsock1(2).RemotePort(), 8040);
  EXPECT_EQ(links.Winsock1(2).State(), LinkState::Connected);
  EXPECT_EQ(links.WinsockUDP(2).State(), LinkState::Closed);
  EXPECT_EQ(links.WinsockUDP(3).BoundPort(), 10110);
  EXPECT_FALSE(links.MSComm1(8).PortOpen());
}

TEST_F(Live, APortThatIsTakenDisablesItsSystemAndNoOther) {
  UseSerial(1, 5);
  links.MSComm1(5).refusal = "Permission denied";
  UseSerial(2, 6);
  records.CommSetups[2].UseUDP = true;
  records.CommSetups[2].UDPPort = 1000;
  links.WinsockUDP(2).refusal = "Address already in use";
  UseSerial(3, 7);
  face.ExpectBox("Permission denied. Comport 5 not available! System 1 -Gyro disabled");
  face.ExpectBox("Address already in use. UDP Port 1000 not available! System 2 -Gyro disabled");
  input.OpenPorts();
  for (int system : {1, 2}) {
    EXPECT_FALSE(records.CommSetups[system].Enabled);
    EXPECT_EQ(records.CommSetups[system].ComPort, 0);
  }
  EXPECT_TRUE(links.MSComm1(7).PortOpen());
}

// A line goes up to its line feed, carriage returns and all, and an event gives at most one.
TEST_F(Live, EventsOfAPortGiveOneLineEach) {
  struct Row {
    bool emptybuffer;
    std::vector<const char*> reads;
    std::vector<std::string> lines;
    const char* left;
    int ignored;
  };
  constexpr std::int16_t kPort = kSerialPorts;  // the last one
  UseSerial(2, kPort);
  for (const Row& row :
       {Row{false, {"$GPGGA,1", ",2*5A\r\n"}, {"2:$GPGGA,1,2*5A\r\n"}, "", 0},
        Row{false, {"a\rb\n", "c"}, {"2:a\rb\n"}, "c", 0},
        Row{false, {"one\ntwo\nthr", "ee\n"}, {"2:one\n", "2:two\n"}, "three\n", 0},
        Row{true, {"1\n2\n3\n4"}, {"2:1\n"}, "4", 2}}) {
    sink.lines.clear();
    records.Emptybuffer[2] = row.emptybuffer;
    input.OpenPorts();
    for (const char* read : row.reads) Receive(kPort, read);
    EXPECT_EQ(sink.lines, row.lines);
    EXPECT_EQ(input.LineBuffer(kPort), row.left);
    EXPECT_EQ(records.IgnoredMessages[2], row.ignored);
  }
  EXPECT_THAT(sink.ignored, ElementsAre(std::pair(2, 2)));
  records.SystemSetups[2][WindowFlag::NMEA] = true;
  Receive(kPort, "\nb\n");
  EXPECT_THAT(sink.inputs, ElementsAre("4\nb\n")) << "the monitor sees the whole buffer";
}

TEST_F(Live, ErrorsAndTooLongALineThrowWhatWaitsAway) {
  UseSerial(1, 5);
  input.OpenPorts();
  using enum CommEvent;
  for (const CommEvent event : {Break, Framing, Overrun, ReceiveOverflow, Parity}) {
    Receive(5, "$GPG");
    links.MSComm1(5).Arrive(event);
    Deliver();
    EXPECT_EQ(input.LineBuffer(5), "");
  }
  Receive(5, "$GPG");
  links.MSComm1(5).Arrive(static_cast<CommEvent>(1007));
  Deliver();
  EXPECT_EQ(input.LineBuffer(5), "$GPG") << "any other event does nothing";
  Receive(5, std::string(65535 - 4, 'x'));
  EXPECT_EQ(input.LineBuffer(5).size(), 65535U);
  Receive(5, "x");
  EXPECT_EQ(input.LineBuffer(5), "");
}

TEST_F(Live, AFaultOfALineGoesToTheErrorLogAndTheNextLineComes) {
  UseSerial(1, 5);
  input.OpenPorts();
  sink.onLine = [] { Raise(FaultNumber::Overflow); };
  Receive(5, "one\n");
  EXPECT_THAT(faults.faults, ElementsAre("Overflow"));
  sink.onLine = {};
  Receive(5, "two\n");
  EXPECT_EQ(sink.lines.back(), "1:two\n");
}

TEST_F(Live, ADeviceThatGoesAwayIsToldAndItsSystemKeepsThePort) {
  UseSerial(1, 5);
  UseSerial(4, 6);
  input.OpenPorts();
  Receive(5, "half a li");
  for (const int port : {5, 6}) {
    face.ExpectBox("The device has gone. Comport " + std::to_string(port) +
                   " has been closed! System " + (port == 5 ? "1" : "4") + " -Gyro");
    links.MSComm1(port).Lose("The device has gone");
  }
  EXPECT_TRUE(records.CommSetups[1].Enabled);
  EXPECT_EQ(records.CommSetups[1].ComPort, 5);
  input.OpenPorts();
  EXPECT_EQ(input.LineBuffer(5), "");
}

TEST_F(Live, SocketsTakeWholeReadsAndForgetTheRest) {
  UseSerial(1, 5);
  records.CommSetups[1].UseTCPIP = true;
  UseSerial(4, 6);
  records.CommSetups[4].UseUDP = true;
  records.SystemSetups[4][WindowFlag::NMEA] = true;
  records.Emptybuffer[1] = true;
  input.OpenPorts();
  links.Winsock1(1).Arrive("one\r\ntwo\r\nthr");
  Deliver();
  EXPECT_THAT(sink.lines, ElementsAre("1:one\r\n", "1:two\r\n"));
  links.Winsock1(1).Arrive("ee\r\n");
  Deliver();
  EXPECT_EQ(sink.lines.back(), "1:ee\r\n") << "the head of the line is lost";
  EXPECT_EQ(records.IgnoredMessages[1], 0);

  links.WinsockUDP(4).Arrive("a\nb\n");
  links.WinsockUDP(4).Arrive("no line feed");
  Deliver();
  EXPECT_THAT(sink.inputs, ElementsAre("a\nb\nno line feed"));
  EXPECT_EQ(sink.lines.back(), "4:b\n");
}

TEST_F(Live, ATcpErrorIsToldAndTheLinkClosed) {
  UseSerial(2, 5);
  records.CommSetups[2].UseTCPIP = true;
  records.CommSetups[2].TCPPort = 65544;
  face.ExpectBox("TCP/IP Error, system 2 :10049 - Port 65544 is not in the range 1-65535");
  input.OpenPorts();
  records.CommSetups[2].TCPPort = 8040;
  links.Winsock1(2).refusal = {10061, "Connection refused"};
  input.OpenPorts();
  face.ExpectBox("TCP/IP Error, system 2 :10061 - Connection refused");
  Deliver();
  EXPECT_EQ(input.TcpState(2), LinkState::Closed);
  EXPECT_TRUE(records.CommSetups[2].Enabled);
  Deliver();
}

TEST_F(Live, ClosingTheLinksOfASystemFreesItsPort) {
  UseSerial(1, 5);
  UseSerial(2, 6);
  input.OpenPorts();
  input.CloseLinks(1);
  EXPECT_FALSE(links.MSComm1(5).PortOpen());
  EXPECT_EQ(records.Comport(5).System, 0);
  EXPECT_TRUE(links.MSComm1(6).PortOpen());

  records.CommSetups[1].ComPort = 6;
  input.CloseLinks(1);
  EXPECT_TRUE(links.MSComm1(6).PortOpen()) << "it is another system's now";
  EXPECT_EQ(records.Comport(6).System, 2);
}

TEST(LiveInputsEnd, ClosesEveryLinkAndHearsThemNoMore) {
  ScriptedFace face;
  Desktop desktop(face);
  Records records;
  HeadlessLinks links;
  RecordedLines sink;
  RecordedFaults faults;
  {
    const LiveInput input(records, links, desktop, sink, faults);
    for (int port = 1; port <= kSerialPorts; ++port) links.MSComm1(port).Open();
    for (int system = 1; system <= kSystems; ++system) {
      links.Winsock1(system).Connect();
      links.WinsockUDP(system).Bind(system);
    }
  }
  for (int port = 1; port <= kSerialPorts; ++port) {
    const SerialLink& link = links.MSComm1(port);
    EXPECT_FALSE(link.PortOpen() || link.onComm || link.onLost) << port;
  }
  for (int system = 1; system <= kSystems; ++system) {
    const TcpLink& tcp = links.Winsock1(system);
    EXPECT_TRUE(tcp.State() == LinkState::Closed && !tcp.onDataArrival && !tcp.onError) << system;
    const UdpLink& udp = links.WinsockUDP(system);
    EXPECT_TRUE(udp.State() == LinkState::Closed && !udp.onDataArrival) << system;
  }
}

}  // namespace
}  // namespace fathomline
