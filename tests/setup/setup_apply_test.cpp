#include "setup/setup_apply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tuple>

#include "base/files.h"
#include "setup/setup_desk.h"
#include "setup/setup_file.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

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
    choices.sentences.Set(SentenceType::ROT, true);
    return choices;
  }
  SetupApply apply{records, desktop, session};
};

TEST_F(SetupApplyTest, ASerialPortGetsItsRow) {
  SetupOf(2).UseTCPIP = true;
  SetupOf(2).ComPort = 3;
  records.Comport(3).System = 2;
  SetupChoices choices = Enabled(2, LinkKind::Comport);
  choices.comPort = 5;
  choices.serial = {0, false, "", 38400, 7, "even", 2};
  choices.name = "Bridge \"A\"";
  choices.systemType = "Gyro";
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_THAT(session.calls, ElementsAre("close 2", "reset", "open 2", "show"));
  EXPECT_TRUE(records.ReloadWindows);
  EXPECT_EQ(records.Comport(3).System, 0);
  Records stored;
  ReadSetup(ReadWholeFile(folder / kSetupFileName), stored);
  for (Records* const each : {&records, &stored}) {
    const CommSetup& setup = each->CommSetups[2];
    EXPECT_TRUE(setup.Enabled && !setup.UseTCPIP);
    EXPECT_EQ(setup.ComPort, 5);
    EXPECT_EQ(setup.Name, "Bridge 'A'");
    EXPECT_EQ(setup.SystemType, "Gyro");
    const ComportSetup& row = each->Comport(5);
    EXPECT_EQ(std::tie(row.System, row.Baud, row.DataBits, row.Parity, row.StopBits),
              std::make_tuple(2, 38400, 7, "even", 2));
  }
}

TEST_F(SetupApplyTest, WithoutAFreePortTheUserStaysInTheDialog) {
  SetupOf(1).Enabled = SetupOf(1).UseTCPIP = true;
  SetupOf(1).ComPort = 3;
  records.Comport(5).Status = "busy";
  SetupChoices choices = Enabled(1, LinkKind::Comport);
  choices.comPort = 0;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("");
  EXPECT_FALSE(apply.Apply(1, choices));
  EXPECT_TRUE(session.calls.empty());
  EXPECT_TRUE(SetupOf(1).UseTCPIP);

  choices.comPort = 5;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("You have selected a comport which is busy! Please, select another comport!");
  EXPECT_FALSE(apply.Apply(1, choices));
  EXPECT_EQ(face.Boxes().back().icon, BoxIcon::Critical);
  EXPECT_FALSE(SetupOf(1).Enabled);
  EXPECT_EQ(SetupOf(1).ComPort, 0);
  EXPECT_EQ(records.Comport(5).System, 0);
  EXPECT_THAT(session.calls, ElementsAre("close 1", "show"));
  // A system that is not enabled needs none.
  choices.enabled = false;
  choices.comPort = 0;
  EXPECT_TRUE(Apply(1, choices));
}

// A port that a disabled system still names would else be closed with that system's next apply.
TEST_F(SetupApplyTest, ASystemHasOneLinkAndAPortOneOwner) {
  SetupOf(1).ComPort = 2;
  SetupChoices choices = Enabled(3, LinkKind::Comport);
  choices.comPort = 2;
  choices.ipAddress = "10.0.0.7";
  choices.tcpPort = 4001;
  EXPECT_TRUE(Apply(3, choices));
  EXPECT_EQ(SetupOf(1).ComPort, 0);
  EXPECT_EQ(records.Comport(2).System, 3);
  EXPECT_EQ(SetupOf(3).TCPPort, 8040);

  choices.link = LinkKind::TcpIp;
  EXPECT_TRUE(Apply(3, choices));
  EXPECT_EQ(SetupOf(3).ComPort, 0);
  EXPECT_EQ(records.Comport(2).System, 0);
  EXPECT_TRUE(SetupOf(3).UseTCPIP && !SetupOf(3).UseUDP);
  EXPECT_EQ(SetupOf(3).IPAddress, "10.0.0.7");
  EXPECT_EQ(SetupOf(3).TCPPort, 4001);
  EXPECT_EQ(SetupOf(3).UDPPort, 0);

  choices.link = LinkKind::Udp;
  choices.ipAddress = "10.0.0.8";
  EXPECT_TRUE(Apply(3, choices));
  EXPECT_TRUE(SetupOf(3).UseUDP && !SetupOf(3).UseTCPIP);
  EXPECT_EQ(SetupOf(3).UDPPort, 2000);
  EXPECT_EQ(SetupOf(3).IPAddress, "10.0.0.7");
}

TEST_F(SetupApplyTest, ConflictsAreToldAndDoNotStop) {
  for (const int other : {2, 4}) {
    SetupOf(other).Enabled = true;
    SetupOf(other).UseTCPIP = true;
    SetupOf(other).IPAddress = "10.0.0.7";
    SetupOf(other).TCPPort = 4001;
    SetupOf(other).UDPPort = 2000;
  }
  SetupOf(3) = SetupOf(2);
  SetupOf(3).Enabled = false;
  SetupChoices choices = Enabled(1, LinkKind::TcpIp);
  choices.ipAddress = "10.0.0.7";
  choices.tcpPort = 4001;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Warning! System 2 has the same IP address and portno. A conflict will occure.");
  face.ExpectBox("Warning! System 4 has the same IP address and portno. A conflict will occure.");
  EXPECT_TRUE(apply.Apply(1, choices));

  // Of a link that is not theirs, the others may keep any address.
  for (const int other : {2, 4}) {
    SetupOf(other).UseTCPIP = false;
    SetupOf(other).UseUDP = true;
  }
  EXPECT_TRUE(Apply(1, choices));
  session.udpPortIsFree = false;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Warning! System 2 has the same UDP portno. A conflict will occure.");
  face.ExpectBox("Warning! System 4 has the same UDP portno. A conflict will occure.");
  face.ExpectBox("UDP port 2000 not opened. Select another port number!");
  session.calls.clear();
  EXPECT_TRUE(apply.Apply(1, Enabled(1, LinkKind::Udp)));
  EXPECT_THAT(session.calls, ElementsAre("close 1", "bind 2000", "reset", "open 1", "show"));
}

TEST_F(SetupApplyTest, WhatMayHaveBeenForgottenIsDoubted) {
  struct Row {
    void (*forget)(SetupChoices& choices);
    bool online;
    const char* doubt;
  };
  for (const Row& row : {Row{[](SetupChoices&) {}, true, nullptr},
                         {[](SetupChoices& c) { c.sentences = {}; }, true, "no NMEA message"},
                         {[](SetupChoices& c) { c.offlineFile.clear(); }, false, "no input file"},
                         {[](SetupChoices& c) { c.udpPort = 0; }, true, "UDP port"},
                         {[](SetupChoices& c) { c.udpPort = 0; }, false, nullptr},
                         {[](SetupChoices& c) {
                            c.link = LinkKind::TcpIp;
                            c.ipAddress = "x";
                          },
                          true, "IP address or port"},
                         {[](SetupChoices& c) { c.emptyLimits = {"Hdop limit"}; }, true, "Hdop"}}) {
    SetupChoices choices = Enabled(1);
    choices.offlineFile = "a.log";
    choices.tcpPort = 8040;
    row.forget(choices);
    const std::vector<std::string> doubts = DoubtsAbout(choices, row.online);
    ASSERT_EQ(doubts.size(), row.doubt == nullptr ? 0U : 1U);
    for (const std::string& doubt : doubts) EXPECT_THAT(doubt, testing::HasSubstr(row.doubt));
  }
  SetupChoices disabled = Enabled(1);
  disabled.enabled = false;
  disabled.sentences = {};
  disabled.udpPort = 0;
  EXPECT_THAT(DoubtsAbout(disabled, true), ElementsAre());
}

TEST_F(SetupApplyTest, OfflineTakesTheFileAndOpensNothing) {
  records.Mode = kOffline;
  SetupOf(1).OfflineFile = "/old.log";
  SetupOf(1).ComPort = 4;
  records.Comport(4).System = 1;
  SetupChoices choices = Enabled(1, LinkKind::Comport);
  choices.offlineFile.clear();
  choices.emptyBuffer = true;
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("", Answer::No);
  EXPECT_FALSE(apply.Apply(1, choices));
  EXPECT_TRUE(session.calls.empty());
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox(
      "The system is enabled, but no input file is selected. There is nothing to "
      "replay. Keep it so?",
      Answer::Yes);
  EXPECT_TRUE(apply.Apply(1, choices));
  EXPECT_EQ(SetupOf(1).OfflineFile, "/old.log");
  choices.offlineFile = "/new.log";
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_EQ(SetupOf(1).OfflineFile, "/new.log");
  EXPECT_FALSE(records.Emptybuffer[1]);
  // The port is there when the session goes online again.
  EXPECT_EQ(SetupOf(1).ComPort, 4);
  EXPECT_EQ(records.Comport(4).System, 1);
  EXPECT_THAT(session.calls, ElementsAre("close 1", "reset", "show", "close 1", "reset", "show"));
}

TEST_F(SetupApplyTest, TenWordsStandWithoutGapsInTheOrderOfTheBoxes) {
  records.MessagesToAnalyse[1][7] = "GGA";
  SetupChoices choices = Enabled(1);
  choices.sentences = {};
  for (const auto type : {SentenceType::VDM, SentenceType::GLL, SentenceType::ZDA}) {
    choices.sentences.Set(type, true);
  }
  EXPECT_TRUE(Apply(1, choices));
  EXPECT_THAT(records.MessagesToAnalyse[1],
              ElementsAre("GLL", "ZDA", "VDM", "", "", "", "", "", "", "", "", ""));
  EXPECT_TRUE(SetupOf(1).AnalyseGLL && SetupOf(1).AnalyseZDA && SetupOf(1).AnalyseVDM);
  EXPECT_FALSE(SetupOf(1).AnalyseGGA);
  EXPECT_EQ(ChoicesOf(records, 1).sentences.Ticked(), choices.sentences.Ticked());

  for (const SentenceType type : kSentenceBoxes) choices.sentences.Set(type, true);
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox(
      "Only 10 NMEA messages can be analysed for a system. Not analysed: ATT, ROT, VHW, DBT, TTM, "
      "VDM.");
  EXPECT_TRUE(apply.Apply(1, choices));
  EXPECT_EQ(records.MessagesToAnalyse[1][9], "HDT");
  EXPECT_EQ(records.MessagesToAnalyse[1][10], "");
  EXPECT_FALSE(SetupOf(1).AnalyseTTM);
}

TEST(SetupApplyToViews, ClosesThoseThatNothingFeeds) {
  TestProgram test;
  Records& records = test.records;
  Windows& windows = test.program.windows;
  records.Mode = kOffline;
  records.CommSetups[2].Enabled = true;
  for (const int system : {1, 2}) {
    test.Analyse({"GGA", "GLL", "RMC", "VTG", "GSA", "GSV", "HDT", "TTM", "VDM"}, system);
    windows.OpenAnalysed(system);
    windows.OpenView(ViewKind::NMEA, system);
    windows.charts.OpenSatellite(system, 7);
  }
  // Of a satellite whose window has not been opened yet.
  constexpr int kLastSatellite = 14 + 149;
  records.SystemSetups[1][static_cast<WindowFlag>(kLastSatellite)] = true;
  const auto shown = [&](int system) {
    std::vector<std::string> names;
    for (const Window* window : test.program.desktop.Windows()) {
      if (window->Index() == system && window->Visible()) names.push_back(window->FullName());
    }
    return names;
  };
  const auto flags = [&](int system) {
    std::vector<int> set;
    for (int flag = 0; flag < static_cast<int>(kWindowFlags); ++flag) {
      if (records.SystemSetups[system][static_cast<WindowFlag>(flag)]) set.push_back(flag);
    }
    return set;
  };
  const std::vector<std::string> ofOther = shown(2);
  EXPECT_EQ(ofOther.size(), 21U);

  SetupApply apply{records, test.program.desktop, test.program.session.setup};
  SetupChoices choices = ChoicesOf(records, 1);
  choices.offlineFile = "/voyage.log";
  for (const SentenceType type : kSentenceBoxes) choices.sentences.Set(type, false);
  for (const SentenceType type : {SentenceType::GLL, SentenceType::VTG, SentenceType::GSA}) {
    choices.sentences.Set(type, true);
  }
  test.face.ExpectBox(kSure, Answer::Yes);
  EXPECT_TRUE(apply.Apply(1, choices));
  EXPECT_THAT(shown(1), UnorderedElementsAre("frmNumerics-1", "frmStatistics-1", "frmNMEA-1",
                                             "frmScatter-1", "frmSkyplot-1", "frmTimeSeriesGLL-1",
                                             "frmTimeSeriesVTG-1", "frmTimeSeriesGSA-1"));
  EXPECT_THAT(flags(1), ElementsAre(0, 2, 5, 6, 9, 11, 12))
      << "a saved setup tells the monitor that it is closed";

  choices.enabled = false;
  test.face.ExpectBox(kSure, Answer::Yes);
  EXPECT_TRUE(apply.Apply(1, choices));
  EXPECT_THAT(shown(1), IsEmpty());
  EXPECT_THAT(flags(1), IsEmpty());
  EXPECT_EQ(shown(2), ofOther);
}

TEST_F(SetupApplyTest, FlagsAreTakenCountsBeginAndAChangedReferenceIsStored) {
  SetupChoices choices = Enabled(2);
  choices.reference = {kTruePosition, "Mast \"1\"", 1.0, 0.5, 2.5F};
  choices.rejectNonDifferential = choices.setTimeFromPC = choices.checksumTest =
      choices.emptyBuffer = true;
  records.ChecksumErrors[3] = records.IgnoredMessages[4] = 7;
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_EQ(records.References[2].ReferenceName, "Mast '1'");
  EXPECT_TRUE(records.RejectNonDifferential && records.SetTimeFromPC[2] &&
              records.ChecksumTest[2] && records.Emptybuffer[2]);
  EXPECT_EQ(records.ChecksumErrors[3] + records.IgnoredMessages[4], 0);
  EXPECT_FALSE(FileExists(folder / kReferenceFileName));
  choices.referenceChanged = true;
  EXPECT_TRUE(Apply(2, choices));
  EXPECT_EQ(ReadWholeFile(folder / kReferenceFileName), "\"Mast '1'\",1,0.5,2.5\r\n");
}

}  // namespace
}  // namespace fathomline
