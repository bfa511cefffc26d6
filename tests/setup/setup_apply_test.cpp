#include "setup/setup_apply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "setup/setup_desk.h"
#include "setup/setup_file.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class SetupApplyTest : public SetupDesk {
 protected:
  bool Apply(int system, const SetupChoices& choices) {
    face.ExpectBox(kSure, Answer::Yes);
    return apply.Apply(system, choices);
  }
  SetupChoices Enabled(int system, LinkKind link = LinkKind::Udp) {
    SetupChoices choices = ChoicesOf(records, system);
    choices.enabled = true;
    choices.link = link;
    choices.udpPort = 2000;
    return choices;
  }
  // A view of a system, which keeps its flag as views do.
  struct View : Window {
    View(Desktop& desktop, Records& owner, const char* name, int system, WindowFlag its)
        : Window(desktop, {.name = name, .index = system}), records(owner), flag(its) {
      records.SystemSetups[system][flag] = true;
      Show();
    }
    void Unload() override { records.SystemSetups[Index()][flag] = false; }
    Records& records;
    WindowFlag flag;
  };

  SetupApply apply{records, desktop, session};
};

TEST_F(SetupApplyTest, NoLeavesEverythingAsItWas) {
  Setup(2).Name = "Gyro";
  const std::string before = WriteSetup(records);
  SetupChoices choices = Enabled(2);
  choices.name = "other";
  choices.referenceChanged = true;
  face.ExpectBox(kSure, Answer::No);
  EXPECT_FALSE(apply.Apply(2, choices));
  EXPECT_EQ(WriteSetup(records), before);
  EXPECT_TRUE(session.calls.empty());
  EXPECT_FALSE(FileExists(folder / kSetupFileName));
  EXPECT_EQ(face.Boxes().back().buttons, BoxButtons::YesNo);
}

TEST_F(SetupApplyTest, ASerialPortGetsItsRow) {
  Setup(2).ComPort = 3;
  records.Comport(3).System = 2;
  SetupChoices choices = Enabled(2, LinkKind::Comport);
  choices.comPort = 5;
  choices.serial.Baud = 38400;
  choices.serial.DataBits = 7;
  choices.serial.Parity = "even";
  choices.serial.StopBits = 2;
  choices.name = "Bridge \"A\"";
  choices.systemType = "Gyro";
  Setup(2).UseTCPIP = true;
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_TRUE(Setup(2).Enabled);
  EXPECT_FALSE(Setup(2).UseTCPIP);
  EXPECT_EQ(Setup(2).ComPort, 5);
  EXPECT_EQ(Setup(2).Name, "Bridge 'A'");
  EXPECT_EQ(Setup(2).SystemType, "Gyro");
  const ComportSetup& row = records.Comport(5);
  EXPECT_EQ(row.System, 2);
  EXPECT_EQ(row.Baud, 38400);
  EXPECT_EQ(row.DataBits, 7);
  EXPECT_EQ(row.Parity, "even");
  EXPECT_EQ(row.StopBits, 2);
  EXPECT_EQ(records.Comport(3).System, 0);
  EXPECT_THAT(session.calls, ElementsAre("close 2", "reset", "open 2", "show"));
  EXPECT_TRUE(records.ReloadWindows);
  Records stored;
  ReadSetup(ReadWholeFile(folder / kSetupFileName), stored);
  EXPECT_EQ(stored.CommSetups[2].ComPort, 5);
  EXPECT_EQ(stored.Comport(5).Baud, 38400);
}

TEST_F(SetupApplyTest, ABusyPortDisablesTheSystem) {
  Setup(1).Enabled = true;
  Setup(1).ComPort = 3;
  records.Comport(5).Status = "busy";
  SetupChoices choices = Enabled(1, LinkKind::Comport);
  choices.comPort = 5;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("You have selected a comport which is busy! Please, select another comport!");
  EXPECT_FALSE(apply.Apply(1, choices));
  EXPECT_FALSE(Setup(1).Enabled);
  EXPECT_EQ(Setup(1).ComPort, 0);
  EXPECT_EQ(records.Comport(5).System, 0);
  EXPECT_THAT(session.calls, ElementsAre("close 1", "show"));
  EXPECT_EQ(face.Boxes().back().icon, BoxIcon::Critical);
}

TEST_F(SetupApplyTest, WithoutAPortNothingHappens) {
  Setup(1).UseTCPIP = true;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("");
  EXPECT_FALSE(apply.Apply(1, Enabled(1, LinkKind::Comport)));
  EXPECT_TRUE(session.calls.empty());
  EXPECT_TRUE(Setup(1).UseTCPIP);
  // A system that is not enabled needs none.
  SetupChoices choices = Enabled(1, LinkKind::Comport);
  choices.enabled = false;
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_THAT(session.calls, ElementsAre("close 1", "reset", "show"));
}

// A port that a disabled system still names would else be closed with that system's next apply.
TEST_F(SetupApplyTest, APortHasOneOwner) {
  Setup(1).ComPort = 2;
  SetupChoices choices = Enabled(3, LinkKind::Comport);
  choices.comPort = 2;
  EXPECT_TRUE(Apply(3, choices));
  EXPECT_EQ(Setup(1).ComPort, 0);
  EXPECT_EQ(records.Comport(2).System, 3);
  SetupChoices udp = Enabled(3, LinkKind::Udp);
  EXPECT_TRUE(Apply(3, udp));
  EXPECT_EQ(Setup(3).ComPort, 0);
  EXPECT_EQ(records.Comport(2).System, 0);
}

TEST_F(SetupApplyTest, NetworkLinksExcludeEachOther) {
  SetupChoices choices = Enabled(1, LinkKind::TcpIp);
  choices.ipAddress = "10.0.0.7";
  choices.tcpPort = 4001;
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_TRUE(Setup(1).UseTCPIP);
  EXPECT_FALSE(Setup(1).UseUDP);
  EXPECT_EQ(Setup(1).IPAddress, "10.0.0.7");
  EXPECT_EQ(Setup(1).TCPPort, 4001);
  EXPECT_EQ(Setup(1).UDPPort, 0);
  choices = Enabled(1, LinkKind::Udp);
  choices.ipAddress = "10.0.0.8";
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_FALSE(Setup(1).UseTCPIP);
  EXPECT_TRUE(Setup(1).UseUDP);
  EXPECT_EQ(Setup(1).UDPPort, 2000);
  EXPECT_EQ(Setup(1).IPAddress, "10.0.0.7");
}

TEST_F(SetupApplyTest, ConflictsAreToldAndDoNotStop) {
  for (const int other : {2, 4}) {
    Setup(other).Enabled = true;
    Setup(other).IPAddress = "10.0.0.7";
    Setup(other).TCPPort = 4001;
    Setup(other).UDPPort = 2000;
  }
  Setup(3) = Setup(2);
  Setup(3).Enabled = false;
  SetupChoices choices = Enabled(1, LinkKind::TcpIp);
  choices.ipAddress = "10.0.0.7";
  choices.tcpPort = 4001;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Warning! System 2 has the same IP address and portno. A conflict will occure.");
  face.ExpectBox("Warning! System 4 has the same IP address and portno. A conflict will occure.");
  EXPECT_TRUE(apply.Apply(1, choices));

  session.udpPortIsFree = false;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Warning! System 2 has the same UDP portno. A conflict will occure.");
  face.ExpectBox("Warning! System 4 has the same UDP portno. A conflict will occure.");
  face.ExpectBox("UDP port 2000 not opened. Select another port number!");
  session.calls.clear();
  EXPECT_TRUE(apply.Apply(1, Enabled(1, LinkKind::Udp)));
  EXPECT_THAT(session.calls, ElementsAre("close 1", "bind 2000", "reset", "open 1", "show"));
}

TEST_F(SetupApplyTest, OfflineTakesTheFileAndOpensNothing) {
  records.Mode = kOffline;
  Setup(1).OfflineFile = "/old.log";
  Setup(1).ComPort = 4;
  records.Comport(4).System = 1;
  SetupChoices choices = Enabled(1, LinkKind::Comport);
  choices.offlineFile.clear();
  choices.emptyBuffer = true;
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_EQ(Setup(1).OfflineFile, "/old.log");
  choices.offlineFile = "/new.log";
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_EQ(Setup(1).OfflineFile, "/new.log");
  EXPECT_FALSE(records.Emptybuffer[1]);
  // The port is there when the session goes online again.
  EXPECT_EQ(Setup(1).ComPort, 4);
  EXPECT_EQ(records.Comport(4).System, 1);
  EXPECT_THAT(session.calls, ElementsAre("close 1", "reset", "show", "close 1", "reset", "show"));
}

TEST_F(SetupApplyTest, WordsStandWithoutGapsInTheOrderOfTheBoxes) {
  records.MessagesToAnalyse[1][7] = "GGA";
  SetupChoices choices = Enabled(1);
  choices.sentences = {};
  for (const SentenceType type : {SentenceType::VDM, SentenceType::GLL, SentenceType::ZDA}) {
    choices.sentences.Set(type, true);
  }
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_THAT(records.MessagesToAnalyse[1],
              ElementsAre("GLL", "ZDA", "VDM", "", "", "", "", "", "", "", "", ""));
  EXPECT_TRUE(Setup(1).AnalyseGLL && Setup(1).AnalyseZDA && Setup(1).AnalyseVDM);
  EXPECT_FALSE(Setup(1).AnalyseGGA);
  const SetupChoices again = ChoicesOf(records, 1);
  EXPECT_EQ(again.sentences.Ticked(), choices.sentences.Ticked());
}

TEST_F(SetupApplyTest, TheEleventhSentenceIsNamed) {
  SetupChoices choices = Enabled(1);
  for (const SentenceType type : kSentenceBoxes) {
    choices.sentences.Set(type, type != SentenceType::GNS && type != SentenceType::GLL &&
                                    type != SentenceType::RMC && type != SentenceType::HDT);
  }
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Only 10 NMEA messages can be analysed for a system. Not analysed: TTM, VDM.");
  EXPECT_TRUE(apply.Apply(1, choices));
  EXPECT_EQ(records.MessagesToAnalyse[1][9], "DBT");
  EXPECT_EQ(records.MessagesToAnalyse[1][10], "");
  EXPECT_FALSE(Setup(1).AnalyseTTM);
}

TEST_F(SetupApplyTest, WindowsWithoutDataAreClosed) {
  View gga(desktop, records, "frmTimeSeriesGGA", 1, WindowFlag::TimeSeriesGGA);
  View vtg(desktop, records, "frmTimeSeriesVTG", 1, WindowFlag::TimeSeriesVTG);
  View scatter(desktop, records, "frmScatter", 1, WindowFlag::Scatter);
  View skyplot(desktop, records, "frmSkyplot", 1, WindowFlag::Skyplot);
  View snr(desktop, records, "frmTimeSeriesSNR", 1, WindowFlag::TimeSeriesSNR);
  View targets(desktop, records, "frmAISTargets", 1, WindowFlag::AISTargets);
  View numerics(desktop, records, "frmNumerics", 1, WindowFlag::Numerics);
  View others(desktop, records, "frmTimeSeriesGGA", 2, WindowFlag::TimeSeriesGGA);
  const auto satellite = static_cast<WindowFlag>(14 + 149);
  records.SystemSetups[1][satellite] = true;

  SetupChoices choices = Enabled(1);
  for (const SentenceType type : {SentenceType::GLL, SentenceType::VTG, SentenceType::GSA}) {
    choices.sentences.Set(type, true);
  }
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_FALSE(gga.Loaded());
  EXPECT_FALSE(snr.Loaded());
  EXPECT_FALSE(targets.Loaded());
  EXPECT_FALSE(records.SystemSetups[1][satellite]);
  for (const Window* kept : {&vtg, &scatter, &skyplot, &numerics, &others}) {
    EXPECT_TRUE(kept->Loaded()) << kept->Name();
  }
  EXPECT_TRUE(records.SystemSetups[1][WindowFlag::Scatter]);

  choices.enabled = false;
  EXPECT_TRUE(Apply(1, choices));
  for (const Window* closed : {&vtg, &scatter, &skyplot, &numerics}) {
    EXPECT_FALSE(closed->Loaded()) << closed->Name();
  }
  EXPECT_TRUE(others.Loaded());
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::Numerics]);
}

TEST_F(SetupApplyTest, ReferenceAndLimitsAreTaken) {
  SetupChoices choices = Enabled(2);
  choices.reference = {kTruePosition, "Mast \"1\"", 1.0, 0.5, 2.5F, 90.0F, 1.0F, -1.0F};
  choices.outlierLimit = 30.0F;
  choices.hdopLimit = 2.5F;
  choices.satelliteLimit = 5;
  choices.rejectNonDifferential = true;
  choices.setTimeFromPC = choices.checksumTest = choices.emptyBuffer = true;
  records.ChecksumErrors[3] = records.IgnoredMessages[4] = 7;
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_EQ(records.References[2].ReferenceName, "Mast '1'");
  EXPECT_EQ(records.References[2].ReferenceUsed, kTruePosition);
  EXPECT_EQ(records.References[2].ReferenceRoll, -1.0F);
  EXPECT_EQ(records.OutlierLimit, 30.0F);
  EXPECT_EQ(records.HdopLimit, 2.5F);
  EXPECT_EQ(records.SatelliteLimit, 5);
  EXPECT_TRUE(records.RejectNonDifferential);
  EXPECT_TRUE(records.SetTimeFromPC[2] && records.ChecksumTest[2] && records.Emptybuffer[2]);
  EXPECT_EQ(records.ChecksumErrors[3], 0);
  EXPECT_EQ(records.IgnoredMessages[4], 0);
  EXPECT_FALSE(FileExists(folder / kReferenceFileName));
  choices.referenceChanged = true;
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_EQ(ReadWholeFile(folder / kReferenceFileName), "\"Mast '1'\",1,0.5,2.5\r\n");
}

}  // namespace
}  // namespace fathomline
