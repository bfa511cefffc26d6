#include "sources/link_keeper.h"

#include <gmock/gmock.h>

#include "base/settings.h"
#include "support/headless_links.h"
#include "support/scripted_face.h"

namespace fathomline {
namespace {

using std::chrono::milliseconds;
using ::testing::Each;
using ::testing::ElementsAre;

constexpr int kTcp = 1, kUdp = 2, kSerial = 3;

struct NoLines : LineSink {
  void ProcessSentence(int, std::string_view) override { ++lines; }
  int lines = 0;
};
struct NoFaults : FaultLog {
  void WriteErrorLog(const Fault&) override { ADD_FAILURE(); }
};

// A box that nobody expects fails the test.
struct Keeper : ::testing::Test {
  Keeper() {
    for (const int system : {kTcp, kUdp, kSerial}) {
      records.CommSetups[system].Enabled = true;
      records.CommSetups[system].Name = "Gyro";
    }
    records.CommSetups[kTcp].UseTCPIP = true;
    records.CommSetups[kTcp].IPAddress = "10.1.2.3";
    records.CommSetups[kTcp].TCPPort = 8040;
    records.CommSetups[kUdp].UseUDP = true;
    records.CommSetups[kUdp].UDPPort = 10110;
    records.CommSetups[kSerial].ComPort = 5;
    records.Comport(5).System = kSerial;
    settings.Set("Comports", "COM5", "/dev/gyro");
  }
  ~Keeper() override { EXPECT_TRUE(face.Exhausted()); }

  // Passes time in turns as a desktop does. The seconds at which the TCP link was connected.
  std::vector<int> Pass(int seconds) {
    std::vector<int> connects;
    std::size_t seen = tcp.statesAtConnect.size();
    for (int i = 0; i < seconds * 20; ++i) {
      face.Advance(milliseconds(50));
      if (tcp.statesAtConnect.size() > seen) connects.push_back((i + 10) / 20);
      seen = tcp.statesAtConnect.size();
    }
    return connects;
  }
  LinkStage Stage(int system) { return keeper.Look(system).stage; }

  ScriptedFace face;
  Desktop desktop{face};
  Records records;
  HeadlessLinks links;
  SettingsStore settings;
  NoLines sink;
  NoFaults faults;
  LiveInput input{records, links, desktop, sink, faults};
  LinkKeeper keeper{records, links, input, desktop, settings};
  HeadlessTcpLink& tcp = links.Winsock1(kTcp);
  HeadlessUdpLink& udp = links.WinsockUDP(kUdp);
  HeadlessSerialLink& serial = links.MSComm1(5);
};

TEST_F(Keeper, TriesAConnectionAgainAfterGrowingDelaysAndNeverASilentOne) {
  keeper.SetKeeping(true);
  input.OpenPorts();
  EXPECT_THAT(Pass(3600), ElementsAre()) << "an hour without a line";
  EXPECT_EQ(Stage(kTcp), LinkStage::Open);
  EXPECT_NEAR(keeper.Look(kTcp).openFor, 3600.0, 0.1);
  EXPECT_EQ(keeper.Look(kTcp).address, "10.1.2.3:8040");
  EXPECT_EQ(keeper.Look(kUdp).address, "port 10110");
  EXPECT_EQ(keeper.Look(kSerial).address, "COM5 (/dev/gyro) 4800,n,8,1");

  tcp.refusal = {10061, "Connection refused"};
  tcp.Fail(10054, "The remote host closed the connection");
  face.Advance(milliseconds(50));
  EXPECT_EQ(Stage(kTcp), LinkStage::Waiting);
  EXPECT_NEAR(keeper.Look(kTcp).nextTry, 1.0, 0.1);
  EXPECT_THAT(Pass(110), ElementsAre(1, 3, 8, 18, 48, 78, 108));
  EXPECT_EQ(keeper.Look(kTcp).cause, "Connection refused");
  EXPECT_EQ(keeper.Look(kTcp).tries, 7);

  tcp.refusal.reset();
  Pass(29);
  EXPECT_EQ(Stage(kTcp), LinkStage::Open);
  EXPECT_EQ(keeper.Look(kTcp).cause, "");
  // Lost again before it was steady, the delays go on; later they begin anew.
  tcp.Fail(10054, "reset");
  EXPECT_THAT(Pass(29), ElementsAre());
  EXPECT_THAT(Pass(9), ElementsAre(1));
  tcp.Fail(10054, "reset");
  EXPECT_THAT(Pass(9), ElementsAre(1));
  EXPECT_THAT(tcp.statesAtConnect, Each(LinkState::Closed));
  EXPECT_TRUE(records.CommSetups[kTcp].Enabled);
}

TEST_F(Keeper, OpensADeviceAndAPortAsSoonAsTheyAreThere) {
  keeper.SetKeeping(true);
  serial.refusal = "No such file or directory";
  serial.info.present = false;
  udp.refusal = "The address is in use";
  input.OpenPorts();
  for (const int system : {kUdp, kSerial}) {
    EXPECT_EQ(Stage(system), LinkStage::Waiting);
    EXPECT_TRUE(records.CommSetups[system].Enabled);
  }
  Pass(600);
  EXPECT_GT(keeper.Look(kSerial).nextTry, 0.9) << "it has just been looked for";
  serial.refusal.reset();
  serial.info.present = true;
  udp.refusal.reset();
  Pass(2);
  EXPECT_EQ(Stage(kUdp), LinkStage::Open);
  EXPECT_EQ(Stage(kSerial), LinkStage::Open);
  serial.Arrive("$HEHDT,1.0,T*00 and thirty two\r\n");
  serial.info.present = false;
  serial.Lose("The device has gone");
  EXPECT_EQ(keeper.Look(kSerial).cause, "The device has gone");
  Pass(5);
  serial.info.present = true;
  Pass(2);
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(records.CommSetups[kSerial].ComPort, 5);
}

// What is told without the option is told as ever; asking for one try never brings a box.
TEST_F(Keeper, LeavesEverythingAsToldWhileItsOptionIsOff) {
  input.OpenPorts();
  tcp.refusal = {10061, "Connection refused"};
  tcp.Fail(10054, "reset");
  face.ExpectBox("TCP/IP Error, system 1 :10054 - reset");
  EXPECT_THAT(Pass(100), ElementsAre());
  EXPECT_EQ(Stage(kTcp), LinkStage::Lost);
  EXPECT_EQ(keeper.Look(kTcp).cause, "reset");
  face.ExpectBox("The device has gone. Comport 5 has been closed! System 3 -Gyro");
  serial.Lose("The device has gone");

  keeper.Reconnect(kTcp);
  EXPECT_THAT(Pass(100), ElementsAre());
  EXPECT_EQ(keeper.Look(kTcp).cause, "Connection refused");
  serial.refusal = "Permission denied";
  keeper.Reconnect(kSerial);
  EXPECT_EQ(keeper.Look(kSerial).cause, "Permission denied");
  EXPECT_TRUE(records.CommSetups[kSerial].Enabled);
  serial.refusal.reset();
  keeper.Reconnect(kSerial);
  EXPECT_EQ(Stage(kSerial), LinkStage::Open);
  tcp.refusal.reset();
  keeper.Reconnect(kTcp);
  Pass(1);
  EXPECT_EQ(Stage(kTcp), LinkStage::Open);
  tcp.Fail(10054, "again");
  face.ExpectBox("TCP/IP Error, system 1 :10054 - again");
  Pass(1);
  serial.refusal = "Permission denied";
  face.ExpectBox("Permission denied. Comport 5 not available! System 3 -Gyro disabled");
  input.OpenPort(kSerial);
  EXPECT_FALSE(records.CommSetups[kSerial].Enabled);
}

TEST_F(Keeper, EndsWithTheLinkThatItWasAskedFor) {
  keeper.SetKeeping(true);
  tcp.refusal = {10061, "Connection refused"};
  input.OpenPorts();
  Pass(5);
  EXPECT_EQ(Stage(kTcp), LinkStage::Waiting);
  input.CloseLinks(kTcp);
  EXPECT_THAT(Pass(100), ElementsAre());
  EXPECT_EQ(Stage(kTcp), LinkStage::Closed);
  input.OpenPort(kTcp);
  Pass(5);
  records.CommSetups[kTcp].Enabled = false;
  EXPECT_THAT(Pass(100), ElementsAre());
  EXPECT_EQ(Stage(kTcp), LinkStage::Lost);
  records.CommSetups[kTcp].Enabled = true;
  records.Mode = kOffline;
  records.CommSetups[kTcp].OfflineFile = "/a.log";
  input.CloseForOffline();
  EXPECT_THAT(Pass(100), ElementsAre());
  EXPECT_EQ(keeper.Look(kTcp).address, "/a.log");
  EXPECT_EQ(Stage(kTcp), LinkStage::Closed);
  records.Mode = kOnline;
  input.OpenPort(kTcp);
  Pass(1);
  keeper.SetKeeping(false);
  EXPECT_THAT(Pass(100), ElementsAre());
  keeper.SetKeeping(true);
  EXPECT_THAT(Pass(5), ElementsAre(0, 2)) << "at once";
  LinkKeeper next(records, links, input, desktop, settings);
  EXPECT_TRUE(next.Keeping()) << "it is kept in the settings";
}

}  // namespace
}  // namespace fathomline
