#include "setup/setup_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "setup/setup_desk.h"
#include "setup/setup_file.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> Entries(const Choices& choices) {
  std::vector<std::string> entries;
  for (int i = 0; i < choices.Count(); ++i) entries.push_back(choices.EntryText(i));
  return entries;
}

class SetupDialogTest : public SetupDesk {
 protected:
  void Open(int system = 1) { dialog.Open(system); }
  void Ok() {
    face.ExpectBox(kSure, Answer::Yes);
    dialog.cmdOk.Click();
  }
  // Goes to a control that nothing refuses to leave.
  void Leave() { dialog.FocusTo(dialog.txtName); }

  frmSetup dialog{desktop, records, statistics, clock, links, session};
};

TEST_F(SetupDialogTest, OpensWithWhatIsInForce) {
  Setup(3).Name = "Deck gyro";
  Setup(3).SystemType = "Gyro";
  Setup(3).Enabled = true;
  Setup(3).UseUDP = true;
  Setup(3).UDPPort = 4800;
  records.MessagesToAnalyse[3] = {"HDT", "ROT"};
  records.ChecksumTest[3] = true;
  records.HdopLimit = 2.5F;
  Open(3);
  EXPECT_EQ(dialog.Caption(), "Setup Secondary SYSTEM 2");
  EXPECT_EQ(dialog.lblName.Text(), "Secondary System 2");
  EXPECT_EQ(dialog.txtName.Text(), "Deck gyro");
  EXPECT_EQ(dialog.optType.Text(), "Gyro");
  EXPECT_TRUE(dialog.chkEnabled.Checked());
  EXPECT_TRUE(dialog.SentenceBox(SentenceType::HDT).Checked());
  EXPECT_FALSE(dialog.SentenceBox(SentenceType::GGA).Checked());
  EXPECT_TRUE(dialog.chkTestCheckSum.Checked());
  EXPECT_TRUE(dialog.frameUDP.Shown());
  EXPECT_FALSE(dialog.frameCOM.Shown());
  EXPECT_EQ(dialog.txtUDP_port.Text(), "4800");
  EXPECT_EQ(dialog.cmbHdop.Text(), "2.5");
  EXPECT_TRUE(dialog.cmbHdop.Enabled());
  EXPECT_FALSE(dialog.chkSvs.Checked());
  EXPECT_FALSE(dialog.cmbSvs.Enabled());
  EXPECT_EQ(dialog.cmbSvs.Text(), "0.0");
  // The outlier limit at start is not in its list.
  EXPECT_TRUE(dialog.chkOutliers.Checked());
  EXPECT_EQ(dialog.cmbOutliers.Text(), "15.0");
  EXPECT_THAT(Entries(dialog.cmbOutliers),
              ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "20", "30", "40", "50",
                          "60", "70", "80", "90", "100"));
  EXPECT_THAT(Entries(dialog.cmbHdop),
              ElementsAre("1.5", "2.0", "2.5", "3.0", "3.5", "4.0", "4.5", "5.0", "5.5", "6.0"));
  EXPECT_THAT(Entries(dialog.cmbSvs), ElementsAre("4", "5", "6", "7", "8", "9", "10"));
  EXPECT_EQ(dialog.chkGLC.ToolTip(), "Not yet implemented: has no effect.");
}

TEST_F(SetupDialogTest, AFreshSystemIsOfferedAName) {
  Open(2);
  EXPECT_EQ(dialog.txtName.Text(), "SYSTEM 2");
  EXPECT_EQ(dialog.txtUDP_port.Text(), "1000");
  EXPECT_EQ(dialog.cmbBaudRate.Text(), "4800");
  EXPECT_EQ(dialog.cmbDataBits.Text(), "8");
  EXPECT_EQ(dialog.cmbComPort.Choice(), Choices::kNone);
  EXPECT_THAT(dialog.lblComPortAdvice.Text(), HasSubstr("Select the comport"));
  EXPECT_TRUE(dialog.frameCOM.Shown());
  dialog.cmdCancel.Click();
  Open(1);
  EXPECT_EQ(dialog.Caption(), "Setup Primary System");
  EXPECT_EQ(dialog.lblName.Text(), "Primary System");
}

TEST_F(SetupDialogTest, OkWithoutAChangeMovesNothing) {
  Setup(1).Enabled = true;
  Setup(1).UseTCPIP = true;
  Setup(1).Name = "Primary";
  Setup(1).SystemType = "AIS";
  records.References[1] = {kAverageOverTime, "R",    0.123456789012345, -1.9, 1.23456F, 359.996F,
                           0.001F,           -0.004F};
  records.MessagesToAnalyse[1] = {"GLL", "VDM"};
  records.OutlierLimit = 12.345F;
  const std::string before = WriteSetup(records);
  Open();
  for (const Control* control : dialog.Controls()) {
    if (!control->onLeave || !control->Usable()) continue;
    EXPECT_TRUE(control->onLeave()) << control->Name();
  }
  records.IPListCount = 0;  // where the address went when it was left
  records.IPList = {};
  Ok();
  EXPECT_FALSE(dialog.Loaded());
  EXPECT_EQ(WriteSetup(records), before);
  EXPECT_EQ(records.OutlierLimit, 12.345F);
  EXPECT_FALSE(FileExists(folder / kReferenceFileName));
}

TEST_F(SetupDialogTest, CancelAndTheCloseBoxChangeNothing) {
  const std::string before = WriteSetup(records);
  for (const bool byButton : {true, false}) {
    Open();
    dialog.chkEnabled.Click();
    dialog.SentenceBox(SentenceType::GGA).Click();
    dialog.optCom.UserChoose(1);
    dialog.txtPort.UserText("no port");
    byButton ? dialog.cmdCancel.Click() : dialog.UserClose();
    EXPECT_FALSE(dialog.Loaded());
  }
  EXPECT_EQ(WriteSetup(records), before);
  Open();
  EXPECT_FALSE(dialog.chkEnabled.Checked());
  EXPECT_EQ(dialog.txtPort.Text(), "8040");
}

TEST_F(SetupDialogTest, TheBoxJustTickedWins) {
  Open();
  const auto box = [this](SentenceType type) -> CheckBox& { return dialog.SentenceBox(type); };
  for (const SentenceType type : {SentenceType::GGA, SentenceType::VTG, SentenceType::ZDA}) {
    box(type).Click();
  }
  EXPECT_TRUE(face.Boxes().empty());
  face.Expect({.text = "Only one of GGA/GNS/GLL/RMC message, containing position data, can be "
                       "enabled simultaneously. GGA disabled.",
               .meanwhile = [&] {
                 EXPECT_TRUE(box(SentenceType::GGA).Checked());
                 EXPECT_TRUE(box(SentenceType::VTG).Checked());
               }});
  face.Expect({.text = "Only one of RMC/VTG message, containing SOG/COG, can be enabled "
                       "simultaneously. VTG disabled.",
               .meanwhile = [&] { EXPECT_FALSE(box(SentenceType::GGA).Checked()); }});
  face.ExpectBox(
      "Only one of RMC/ZDA message, containing date, can be enabled simultaneously. ZDA disabled.");
  box(SentenceType::RMC).Click();
  for (const SentenceType type : {SentenceType::GGA, SentenceType::VTG, SentenceType::ZDA}) {
    EXPECT_FALSE(box(type).Checked());
  }
  EXPECT_TRUE(box(SentenceType::RMC).Checked());
  box(SentenceType::RMC).Click();
  EXPECT_FALSE(box(SentenceType::RMC).Checked());
}

TEST_F(SetupDialogTest, ALimitMustBeUsableBeforeItIsLeft) {
  Open();
  dialog.chkHdop.Click();
  dialog.cmbHdop.UserText("0");
  face.ExpectBox("A hdop value <> 0 has to be selected");
  Leave();
  EXPECT_EQ(dialog.Focus(), &dialog.cmbHdop);
  dialog.cmbHdop.UserText("-2,5");
  dialog.chkSvs.Click();
  dialog.cmbSvs.UserText("3");
  face.ExpectBox("No of svs > 3 has to be selected");
  dialog.chkSvs.Click();
  EXPECT_TRUE(dialog.chkSvs.Checked());
  dialog.cmbSvs.UserChoose(2);
  dialog.cmbOutliers.UserText("none");
  face.ExpectBox("A outlier <> 0 has to be selected");
  dialog.SSTab1.UserChoose(0);
  EXPECT_EQ(dialog.SSTab1.Choice(), 0);
  EXPECT_EQ(dialog.Focus(), &dialog.cmbOutliers);
  // OK first asks the field that is left.
  face.ExpectBox("A outlier <> 0 has to be selected");
  dialog.cmdOk.Click();
  dialog.cmbOutliers.UserText("-40");
  Ok();
  EXPECT_EQ(records.HdopLimit, 2.5F);
  EXPECT_EQ(records.SatelliteLimit, 6);
  EXPECT_EQ(records.OutlierLimit, 40.0F);
  Open();
  dialog.chkOutliers.Click();
  EXPECT_FALSE(dialog.cmbOutliers.Enabled());
  Ok();
  EXPECT_EQ(records.OutlierLimit, 0.0F);
}

TEST_F(SetupDialogTest, AddressesAndPortsAreTested) {
  records.IPListCount = 2;
  records.IPList[0] = "10.0.0.1";
  records.IPList[1] = "10.0.0.2";
  Open();
  dialog.optCom.UserChoose(1);
  EXPECT_TRUE(dialog.frameTCPIP.Shown());
  EXPECT_FALSE(dialog.frameCOM.Shown());
  EXPECT_THAT(Entries(dialog.cmbIP), ElementsAre("10.0.0.1", "10.0.0.2", "127.0.0.1"));
  dialog.cmbIP.UserText("10.0.0.0");
  face.ExpectBox(
      "10.0.0.0 is not a valid IP address! Has to be in the range 1.0.0.1 to 255.255.255.255");
  dialog.FocusTo(dialog.txtPort);
  EXPECT_EQ(dialog.Focus(), &dialog.cmbIP);
  dialog.cmbIP.UserText("10.0.0.3");
  dialog.txtPort.UserText("65536");
  EXPECT_EQ(records.IPListCount, 3);
  EXPECT_THAT(Entries(dialog.cmbIP), ElementsAre("10.0.0.1", "10.0.0.2", "10.0.0.3"));
  EXPECT_EQ(dialog.cmbIP.Text(), "10.0.0.3");
  face.ExpectBox(
      "65536 is not a valid port number! Has to be an integer value in the range 1-65535");
  Leave();
  dialog.txtPort.UserText("65535");
  dialog.optCom.UserChoose(2);
  dialog.txtUDP_port.UserText("0");
  face.ExpectBox("0 is not a valid port number! Has to be an integer value in the range 1-65535");
  Leave();
  dialog.txtUDP_port.UserText("1");
  dialog.optCom.UserChoose(1);
  dialog.chkEnabled.Click();
  Ok();
  EXPECT_EQ(Setup(1).IPAddress, "10.0.0.3");
  EXPECT_EQ(Setup(1).TCPPort, 65535);
  EXPECT_EQ(Setup(1).UDPPort, 0);
}

TEST_F(SetupDialogTest, PortsAreListedWithTheirState) {
  Setup(1).Enabled = true;
  Setup(1).ComPort = 1;
  Setup(2).Enabled = true;
  Setup(2).ComPort = 2;
  Setup(4).ComPort = 3;  // not enabled: holds nothing
  links.MSComm1(1).Open();
  links.MSComm1(2).Open();
  links.MSComm1(3).info.device = "/dev/ttyUSB7";
  links.MSComm1(3).info.description = "Survey receiver";
  Open();
  EXPECT_THAT(
      Entries(dialog.cmbComPort),
      ElementsAre("COM1 - current", "COM2 - busy", "COM3 - free   /dev/ttyUSB7 (Survey receiver)"));
  EXPECT_EQ(dialog.cmbComPort.Choice(), 0);
  EXPECT_EQ(dialog.lblComPortAdvice.Text(), "");

  links.MSComm1(3).refusal = "Permission denied";
  links.MSComm1(12).info.present = true;
  links.MSComm1(13).info.present = true;
  links.MSComm1(13).Open();  // by ourselves, for a system that has since been disabled
  dialog.cmdRefreshPorts.Click();
  EXPECT_EQ(dialog.cmbComPort.Count(), 5);
  EXPECT_EQ(dialog.cmbComPort.EntryText(4), "COM13 - busy");
  dialog.cmbComPort.UserChoose(4);
  EXPECT_EQ(dialog.lblComPortAdvice.Text(), "");
  dialog.cmbComPort.UserChoose(0);
  EXPECT_THAT(dialog.cmbComPort.EntryText(2), HasSubstr("COM3 - busy"));
  EXPECT_EQ(dialog.cmbComPort.Text(), "COM1 - current");
  dialog.cmbComPort.UserChoose(2);
  EXPECT_THAT(dialog.lblComPortAdvice.Text(), HasSubstr("group dialout"));
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("You have selected a comport which is busy! Please, select another comport!");
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Loaded());
  EXPECT_FALSE(Setup(1).Enabled);
  dialog.cmbComPort.UserChoose(3);
  dialog.cmbBaudRate.UserChoose(5);
  Ok();
  EXPECT_FALSE(dialog.Loaded());
  EXPECT_TRUE(Setup(1).Enabled);
  EXPECT_EQ(Setup(1).ComPort, 12);
  EXPECT_EQ(records.Comport(12).Baud, 38400);
}

TEST_F(SetupDialogTest, WithoutAnyPortItSaysSo) {
  for (int port = 1; port <= kSerialPorts; ++port) links.MSComm1(port).info.present = false;
  Open();
  EXPECT_THAT(dialog.lblComPortAdvice.Text(), HasSubstr("No serial port has been found"));
  dialog.chkEnabled.Click();
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("");
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Loaded());
}

TEST_F(SetupDialogTest, OfflineShowsTheInputFileOnly) {
  records.Mode = kOffline;
  Open();
  EXPECT_EQ(dialog.SSTab1.EntryText(frmSetup::kLinkTab), "Input file");
  EXPECT_TRUE(dialog.frameLogfile.Shown());
  for (const Frame* frame :
       {&dialog.frameLink, &dialog.frameCOM, &dialog.frameTCPIP, &dialog.frameUDP}) {
    EXPECT_FALSE(frame->Shown()) << frame->Name();
  }
  EXPECT_EQ(dialog.lblFileName.Text(), "not selected");
  face.ExpectFile(std::nullopt);
  dialog.cmdSelectFile.Click();
  EXPECT_EQ(dialog.lblFileName.Text(), "not selected");
  EXPECT_EQ(face.Files().back().title, "Open NMEA raw data File");
  face.ExpectFile("/data/a \"b\".log");
  face.ExpectBox("");
  dialog.cmdSelectFile.Click();
  EXPECT_EQ(dialog.lblFileName.Text(), "not selected");
  face.ExpectFile("/data/voyage.log");
  dialog.cmdSelectFile.Click();
  dialog.chkEnabled.Click();
  Ok();
  EXPECT_EQ(Setup(1).OfflineFile, "/data/voyage.log");
  Open();
  EXPECT_EQ(dialog.lblFileName.Text(), "/data/voyage.log");
  // The design comes back with the mode.
  dialog.cmdCancel.Click();
  records.Mode = kOnline;
  Open();
  EXPECT_EQ(dialog.SSTab1.EntryText(frmSetup::kLinkTab), "Com Port");
}

TEST_F(SetupDialogTest, TheReferenceIsEditedOnlyWhereItCounts) {
  folder.Write(kReferenceFileName, "\"Quay\",1,0.2,3\r\n\"Mast\",0.5,0.1,4\r\n");
  Open();
  for (const Control* control : std::initializer_list<const Control*>{
           &dialog.txtRefName, &dialog.txtLat, &dialog.txtLon, &dialog.txtHgt, &dialog.txtHdg,
           &dialog.txtPitch, &dialog.txtRoll, &dialog.cmbRefPositions, &dialog.cmdCopyAvg,
           &dialog.cmdCopyPrimary}) {
    EXPECT_FALSE(control->Enabled()) << control->Name();
    dialog.optReference.UserChoose(1);
    EXPECT_TRUE(control->Enabled()) << control->Name();
    dialog.optReference.UserChoose(2);
    EXPECT_FALSE(control->Enabled()) << control->Name();
  }
  dialog.optReference.UserChoose(1);
  EXPECT_THAT(Entries(dialog.cmbRefPositions), ElementsAre("Quay", "Mast"));
  dialog.cmbRefPositions.UserChoose(0);
  EXPECT_EQ(dialog.txtRefName.Text(), "Quay");
  EXPECT_EQ(dialog.txtLat.Text(), "57° 17.7468' N");
  EXPECT_EQ(dialog.txtHgt.Text(), "3.000");
  Ok();
  EXPECT_EQ(records.References[1].ReferenceUsed, kTruePosition);
  EXPECT_EQ(records.References[1].ReferenceLatitude, 1.0);
  EXPECT_EQ(ReadWholeFile(folder / kReferenceFileName),
            "\"Quay\",1,0.2,3\r\n\"Mast\",0.5,0.1,4\r\n");
}

TEST_F(SetupDialogTest, AReferenceTypedIsStoredAndOffered) {
  records.CoordinateFormatIsDMS = true;
  Open(2);
  dialog.optReference.UserChoose(1);
  dialog.txtRefName.UserText("My \"pier\"");
  dialog.txtLat.UserText("59 30 12,25");
  dialog.txtLon.UserText("10 20 0 W");
  dialog.txtHgt.UserText("4,5");
  dialog.txtPitch.UserText("0,126");
  Leave();
  EXPECT_EQ(dialog.txtLat.Text(), "59° 30' 12.2500\" N");
  EXPECT_EQ(dialog.txtLon.Text(), "010° 20' 00.0000\" W");
  EXPECT_EQ(dialog.txtHgt.Text(), "4.500");
  EXPECT_EQ(dialog.txtPitch.Text(), "0.13");
  face.ExpectBox(kSure, Answer::No);
  dialog.cmdOk.Click();
  EXPECT_EQ(records.References[2].ReferenceName, "");
  Ok();
  EXPECT_EQ(records.References[2].ReferenceName, "My 'pier'");
  EXPECT_EQ(records.References[2].ReferencePitch, 0.126F);
  Open(1);
  EXPECT_THAT(Entries(dialog.cmbRefPositions), ElementsAre("My 'pier'"));
  dialog.optReference.UserChoose(1);
  dialog.cmbRefPositions.UserChoose(0);
  EXPECT_EQ(dialog.txtLat.Text(), "59° 30' 12.2500\" N");
  // Copying makes it a change, which updates the entry.
  dialog.cmdCancel.Click();
  records.References[1] = records.References[2];
  Open(3);
  dialog.optReference.UserChoose(1);
  dialog.cmdCopyPrimary.Click();
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("The reference target 'My 'pier'' already exist. The position will be updated!");
  dialog.cmdOk.Click();
  EXPECT_EQ(records.References[3].ReferenceLatitude, records.References[2].ReferenceLatitude);
}

TEST_F(SetupDialogTest, ComInfoIsAskedOfTheSession) {
  Open();
  dialog.cmdComInfo.Click();
  EXPECT_THAT(session.calls, ElementsAre("info"));
}

}  // namespace
}  // namespace fathomline
