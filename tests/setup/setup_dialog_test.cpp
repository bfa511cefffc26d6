#include "setup/setup_dialog.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>

#include "base/files.h"
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

std::vector<std::string> Texts(std::initializer_list<const Control*> controls) {
  std::vector<std::string> texts;
  for (const Control* control : controls) texts.push_back(control->Text());
  return texts;
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
  SetupOf(3).Name = "Deck gyro";
  SetupOf(3).SystemType = "Gyro";
  SetupOf(3).Enabled = SetupOf(3).UseUDP = records.ChecksumTest[3] = true;
  SetupOf(3).UDPPort = 4800;
  records.MessagesToAnalyse[3] = {"HDT", "ROT"};
  records.HdopLimit = 2.5F;
  Open(3);
  EXPECT_EQ(dialog.Caption(), "Setup Secondary SYSTEM 2");
  // The outlier limit at start is not in its list.
  EXPECT_THAT(Texts({&dialog.lblName, &dialog.txtName, &dialog.optType, &dialog.txtUDP_port,
                     &dialog.cmbHdop, &dialog.cmbSvs, &dialog.cmbOutliers}),
              ElementsAre("Secondary System 2", "Deck gyro", "Gyro", "4800", "2.5", "0.0", "15.0"));
  EXPECT_TRUE(dialog.chkEnabled.Checked() && dialog.chkTestCheckSum.Checked() &&
              dialog.chkOutliers.Checked() && dialog.chkHdop.Checked());
  EXPECT_TRUE(dialog.SentenceBox(SentenceType::HDT).Checked());
  EXPECT_FALSE(dialog.SentenceBox(SentenceType::GGA).Checked() || dialog.chkSvs.Checked());
  EXPECT_TRUE(dialog.cmbHdop.Enabled() && !dialog.cmbSvs.Enabled());
  EXPECT_TRUE(dialog.frameUDP.Shown() && !dialog.frameCOM.Shown());
}

TEST_F(SetupDialogTest, AFreshSystemIsOfferedANameAndUsualSettings) {
  Open(1);
  EXPECT_THAT(Texts({&dialog.lblName, &dialog.txtName, &dialog.txtUDP_port, &dialog.cmbBaudRate,
                     &dialog.cmbDataBits, &dialog.cmbComPort, &dialog.lblComPortAdvice}),
              ElementsAre("Primary System", "SYSTEM 1", "1000", "4800", "8", "",
                          "Select the comport that the system is connected to."));
  dialog.cmdComInfo.Click();
  EXPECT_THAT(session.calls, ElementsAre("info"));
}

TEST_F(SetupDialogTest, OkWithoutAChangeMovesNothing) {
  SetupOf(1).Enabled = true;
  SetupOf(1).UseTCPIP = true;
  SetupOf(1).Name = "Primary";
  SetupOf(1).SystemType = "AIS";
  records.References[1] = {kAverageOverTime, "R",    0.123456789012345, -1.9, 1.23456F, 359.996F,
                           0.001F,           -0.004F};
  records.MessagesToAnalyse[1] = {"GLL", "VDM"};
  records.OutlierLimit = 12.345F;
  records.SetTimeFromPC[1] = true;
  const std::string before = WriteSetup(records);
  Open();
  EXPECT_EQ(dialog.optReference.Choice(), 2);
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

// Whatever is entered, by each kind of link: it is in force, and shown when the dialog opens again.
TEST_F(SetupDialogTest, WhatIsEnteredIsShownAgain) {
  const auto entered = [this] {
    std::map<std::string, std::string> states;
    for (const Control* const control : dialog.Controls()) {
      // What is set for a port belongs to the port.
      if (control->OwningFrame() == &dialog.frameCOM && !dialog.frameCOM.Shown()) continue;
      std::string& state = states[control->Name()];
      if (control->Kind() == ControlKind::TextBox) state = control->Text();
      if (control->Kind() == ControlKind::CheckBox) {
        state = static_cast<const CheckBox*>(control)->Checked() ? "ticked" : "clear";
      }
      if (control->Kind() == ControlKind::Choices && control != &dialog.SSTab1 &&
          control != &dialog.cmbRefPositions) {
        const auto& choices = static_cast<const Choices&>(*control);
        const bool typed = choices.ShownAs() == ChoicesKind::EditableCombo;
        state = typed ? choices.Text() : NumberText(choices.Choice());
      }
      if (!control->Enabled()) state = "disabled";
    }
    return states;
  };
  for (const int link : {0, 1, 2}) {
    Open(2);
    dialog.txtName.UserText("Mast " + NumberText(link));
    dialog.optType.UserChoose(link + 1);
    dialog.optCom.UserChoose(link);
    if (!dialog.chkEnabled.Checked()) dialog.chkEnabled.Click();
    for (CheckBox* const box :
         {&dialog.chkSetTimeFromPC, &dialog.chkTestCheckSum, &dialog.chkNoDiff, &dialog.chkHdop,
          &dialog.chkSvs, &dialog.chkOutliers, &dialog.SentenceBox(SentenceType::GGA),
          &dialog.SentenceBox(SentenceType::ROT)}) {
      box->Click();
    }
    if (dialog.chkHdop.Checked()) dialog.cmbHdop.UserText("2.5");
    if (dialog.chkSvs.Checked()) dialog.cmbSvs.UserText("6.0");
    if (dialog.chkOutliers.Checked()) dialog.cmbOutliers.UserText("20.0");
    if (link == 0) {
      dialog.SentenceBox(SentenceType::ZDA).Click();
      dialog.cmbComPort.UserChoose(1);
      for (Choices* const combo : {&dialog.cmbBaudRate, &dialog.cmbParity, &dialog.cmbStopBits}) {
        combo->UserChoose(1);
      }
      dialog.cmbDataBits.UserChoose(0);
      dialog.chkEmptyBuffer.Click();
      dialog.optReference.UserChoose(1);
      dialog.txtRefName.UserText("Quay");
      int value = 0;
      for (TextBox* const box : {&dialog.txtLat, &dialog.txtLon, &dialog.txtHgt, &dialog.txtHdg,
                                 &dialog.txtPitch, &dialog.txtRoll}) {
        box->UserText(PlainText(std::int32_t{++value}));
      }
    }
    if (link == 1) dialog.cmbIP.UserText("10.1.2.3");
    if (link == 1) dialog.txtPort.UserText("4001");
    if (link == 2) dialog.txtUDP_port.UserText("5000");
    if (link > 0) dialog.optReference.UserChoose(link == 1 ? 2 : 0);
    Leave();
    const auto before = entered();
    Ok();
    Open(2);
    EXPECT_EQ(entered(), before);
    dialog.cmdCancel.Click();
    EXPECT_EQ(records.ChecksumTest[2], link != 1);
    EXPECT_EQ(SetupOf(2).UseTCPIP, link == 1);
    EXPECT_EQ(SetupOf(2).UseUDP, link == 2);
  }
  EXPECT_EQ(SetupOf(2).SystemType, "Speed Log");
  EXPECT_EQ(records.Comport(2).Baud, 2400);
  EXPECT_EQ(records.Comport(2).Parity, "odd");
  EXPECT_EQ(records.References[2].ReferenceHeading, 4.0F);
  EXPECT_EQ(records.References[2].ReferenceRoll, 6.0F);
}

TEST_F(SetupDialogTest, CancelAndTheCloseBoxChangeNothing) {
  const std::string before = WriteSetup(records);
  for (const bool byButton : {true, false}) {
    Open();
    EXPECT_FALSE(dialog.chkEnabled.Checked());
    EXPECT_EQ(dialog.txtPort.Text(), "8040");
    dialog.chkEnabled.Click();
    dialog.SentenceBox(SentenceType::GGA).Click();
    dialog.optCom.UserChoose(1);
    dialog.txtPort.UserText("no port");
    byButton ? dialog.cmdCancel.Click() : dialog.UserClose();
    EXPECT_FALSE(dialog.Loaded());
  }
  EXPECT_EQ(WriteSetup(records), before);
}

TEST_F(SetupDialogTest, TheBoxJustTickedWins) {
  Open();
  const auto box = [this](SentenceType type) -> CheckBox& { return dialog.SentenceBox(type); };
  const std::array others = {SentenceType::GGA, SentenceType::VTG, SentenceType::ZDA};
  for (const SentenceType type : others) box(type).Click();
  // One box after the other: while the first message stands, only its turn has come.
  face.Expect({.text = "Only one of GGA/GNS/GLL/RMC message, containing position data, can be "
                       "enabled simultaneously. GGA disabled.",
               .meanwhile = [&] { EXPECT_TRUE(box(SentenceType::VTG).Checked()); }});
  face.ExpectBox(
      "Only one of RMC/VTG message, containing SOG/COG, can be enabled simultaneously. "
      "VTG disabled.");
  face.ExpectBox(
      "Only one of RMC/ZDA message, containing date, can be enabled simultaneously. ZDA "
      "disabled.");
  box(SentenceType::RMC).Click();
  for (const SentenceType type : others) EXPECT_FALSE(box(type).Checked());
  EXPECT_TRUE(box(SentenceType::RMC).Checked());
  box(SentenceType::HDT).Click();
  face.ExpectBox(
      "Only one of HDT/ATT message, containing true heading, can be enabled simultaneously. HDT "
      "disabled.");
  box(SentenceType::ATT).Click();
}

TEST_F(SetupDialogTest, ALimitMustBeUsableBeforeItIsLeft) {
  Open();
  struct Row {
    CheckBox& box;
    Choices& combo;
    const char* bad;
    const char* refusal;
    const char* good;
  };
  for (const Row& row :
       {Row{dialog.chkHdop, dialog.cmbHdop, "0", "A hdop value <> 0 has to be selected", "-2,5"},
        {dialog.chkSvs, dialog.cmbSvs, "3", "No of svs > 3 has to be selected", "6"},
        {dialog.chkOutliers, dialog.cmbOutliers, "none", "A outlier <> 0 has to be selected",
         "-40"}}) {
    if (!row.box.Checked()) row.box.Click();
    row.combo.UserText(row.bad);
    // Neither another field, nor another page, nor OK can be gone to.
    for (int i = 0; i < 3; ++i) face.ExpectBox(row.refusal);
    Leave();
    dialog.SSTab1.UserChoose(3);
    dialog.cmdOk.Click();
    EXPECT_EQ(dialog.SSTab1.Choice(), 0);
    EXPECT_EQ(dialog.Focus(), &row.combo);
    row.combo.UserText(row.good);
  }
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
  records.IPList = {"10.0.0.1", "10.0.0.2"};
  Open();
  dialog.optCom.UserChoose(1);
  EXPECT_TRUE(dialog.frameTCPIP.Shown() && !dialog.frameCOM.Shown());
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
  const std::string refusal =
      " is not a valid port number! Has to be an integer value in the range 1-65535";
  face.ExpectBox("65536" + refusal);
  Leave();
  dialog.txtPort.UserText("65535");
  dialog.optCom.UserChoose(2);
  dialog.txtUDP_port.UserText("0");
  face.ExpectBox("0" + refusal);
  Leave();
  EXPECT_EQ(dialog.Focus(), &dialog.txtUDP_port);
}

TEST_F(SetupDialogTest, PortsAreListedWithTheirState) {
  SetupOf(1).Enabled = SetupOf(2).Enabled = true;
  records.MessagesToAnalyse[1] = {"GGA"};
  SetupOf(1).ComPort = 1;
  SetupOf(2).ComPort = 2;
  SetupOf(4).ComPort = 3;  // not enabled: holds nothing
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
  links.MSComm1(12).info.present = links.MSComm1(16).info.present = true;
  links.MSComm1(16).Open();  // by ourselves, for a system that has since been disabled
  dialog.cmdRefreshPorts.Click();
  EXPECT_EQ(dialog.cmbComPort.Text(), "COM1 - current");
  EXPECT_EQ(dialog.cmbComPort.EntryText(3), "COM12 - free");
  EXPECT_EQ(dialog.cmbComPort.EntryText(4), "COM16 - busy");
  dialog.cmbComPort.UserChoose(4);
  EXPECT_EQ(dialog.lblComPortAdvice.Text(), "");
  dialog.cmbComPort.UserChoose(2);
  EXPECT_THAT(dialog.cmbComPort.Text(), HasSubstr("COM3 - busy"));
  EXPECT_THAT(dialog.lblComPortAdvice.Text(), HasSubstr("group dialout"));
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("You have selected a comport which is busy! Please, select another comport!");
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Loaded());
  dialog.cmbComPort.UserChoose(3);
  Ok();
  EXPECT_EQ(SetupOf(1).ComPort, 12);
  SetupOf(4).Enabled = true;  // and holds port 3
  SetupOf(2).ComPort = 16;
  Open(2);
  EXPECT_EQ(dialog.cmbComPort.EntryText(3), "COM12 - busy") << "of the primary system";
  EXPECT_EQ(dialog.cmbComPort.Text(), "COM16 - current");
  dialog.cmbComPort.UserChoose(2);
  EXPECT_EQ(dialog.lblComPortAdvice.Text(), "");
  dialog.cmdCancel.Click();
  for (int port = 1; port <= kSerialPorts; ++port) links.MSComm1(port).info.present = false;
  Open();
  EXPECT_THAT(dialog.lblComPortAdvice.Text(), HasSubstr("No serial port has been found"));
}

TEST_F(SetupDialogTest, APortThatCannotBeLookedAtSaysSoOnce) {
  struct : HeadlessLinks {
    SerialPortInfo Probe(int) override { Raise(FaultNumber::DeviceError); }
  } broken;
  records.Comport(2).Status = "free";
  ComportScan scan;
  for (int times = 0; times < 2; ++times) scan.Run(records, broken, 1);
  EXPECT_EQ(scan.EntryText(records, 1) + scan.EntryText(records, 2),
            "COM1 - err noneCOM2 - err free");
}

TEST_F(SetupDialogTest, APortThatIsChosenShowsItsOwnSettings) {
  records.Comport(2) = {0, true, "free", 14400, 7, "even", 2};  // as no list has it
  records.MessagesToAnalyse[1] = {"GGA"};
  SetupOf(1).Enabled = true;
  Open();
  dialog.cmbComPort.UserChoose(1);
  EXPECT_THAT(
      Texts({&dialog.cmbBaudRate, &dialog.cmbDataBits, &dialog.cmbParity, &dialog.cmbStopBits}),
      ElementsAre("14400", "7", "even", "2"));
  dialog.cmbBaudRate.UserChoose(3);
  dialog.cmdRefreshPorts.Click();
  Ok();
  EXPECT_EQ(records.Comport(2).Baud, 9600);
  EXPECT_EQ(records.Comport(2).Parity, "even");
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
  const std::string file = "/data/voyage.log";
  for (const auto& [chosen, shown] :
       std::map<std::optional<std::string>, std::string>{{std::nullopt, "not selected"},
                                                         {"/data/a \"b\".log", "not selected"},
                                                         {"/data/\u0142odz.log", file},
                                                         {"/data/\xFF.log", file},
                                                         {file, file}}) {
    face.ExpectFile(chosen);
    if (chosen && *chosen != file) {
      const std::string what = chosen->find('"') == chosen->npos ? "character" : "double quote";
      face.ExpectBox("The name of the file has a " + what + ", which the setup file cannot keep: " +
                     *chosen + "\nRename the file or its folder, or select another one.");
    }
    dialog.cmdSelectFile.Click();
    EXPECT_EQ(dialog.lblFileName.Text(), shown);
  }
  EXPECT_EQ(face.Files().back().title, "Open NMEA raw data File");
  EXPECT_THAT(face.Files().back().folder, HasSubstr("data"));
  EXPECT_THAT(face.Files().back().filter, HasSubstr("|*.log;*.txt;*.nmea;*.aivdm|"));
  Ok();
  EXPECT_EQ(SetupOf(1).OfflineFile, file);
  Open();
  EXPECT_EQ(dialog.lblFileName.Text(), file);
  // The design comes back with the mode.
  dialog.cmdCancel.Click();
  records.Mode = kOnline;
  Open();
  EXPECT_EQ(dialog.SSTab1.EntryText(frmSetup::kLinkTab), "Com Port");
}

TEST_F(SetupDialogTest, CoordinatesAreReadInTheFormThatTheyAreShownIn) {
  Open();
  dialog.optReference.UserChoose(1);
  dialog.Refresh();
  const std::string example = dialog.lblCoordinateExample.Text();
  dialog.txtLat.UserText("10 30.5 S");
  dialog.txtLon.UserText("20 15.5");
  records.CoordinateFormatIsDMS = true;
  records.CoordinateDecimals = 1;
  dialog.Refresh();
  EXPECT_NE(dialog.lblCoordinateExample.Text(), example);
  EXPECT_EQ(dialog.txtLat.Text(), "10\u00B0 30' 30.0\" S");
  EXPECT_EQ(dialog.txtLon.Text(), "20 15.5") << "it is being typed";
  Leave();
  EXPECT_EQ(dialog.txtLon.Text(), "020\u00B0 15' 30.0\" E");
}

TEST_F(SetupDialogTest, WhatCannotBeTakenIsNamedAndSelected) {
  Open();
  dialog.optReference.UserChoose(1);
  face.ExpectBox("");
  dialog.cmdCopyAvg.Click();
  EXPECT_EQ(dialog.txtRefName.Text(), "") << "there is no average yet";
  dialog.txtHgt.UserText("1e39");
  face.ExpectBox("Height: Overflow - 1e39");
  Leave();
  EXPECT_EQ(dialog.Focus(), &dialog.txtHgt);
  EXPECT_EQ(dialog.txtHgt.Selections(), 1U);
  dialog.txtHgt.UserText("1");
  dialog.chkSvs.Click();
  dialog.cmbSvs.UserText("40000");
  face.ExpectBox("No of satellites limit: Overflow - 40000");
  Leave();
  EXPECT_EQ(dialog.cmbSvs.Selections(), 1U);
  dialog.cmbSvs.UserText("5");
  // Ticked, but never gone to.
  dialog.chkHdop.Click();
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("Hdop limit is ticked, but has no value. It will not be applied. Keep it so?",
                 Answer::No);
  dialog.cmdOk.Click();
  EXPECT_TRUE(dialog.Loaded());
}

TEST_F(SetupDialogTest, TheReferenceIsEditedOnlyWhereItCounts) {
  const std::string file = "\"Quay\",1,0.2,3\r\n\"Mast\",0.5,0.1,4\r\n";
  folder.Write(kReferenceFileName, file);
  Open();
  for (const int button : {0, 2, 1}) {
    dialog.optReference.UserChoose(button);
    for (const Control* control : dialog.Controls()) {
      if (control->OwningFrame() != &dialog.frameReference) continue;
      EXPECT_EQ(control->Enabled(), button == 1) << control->Name();
    }
  }
  EXPECT_THAT(Entries(dialog.cmbRefPositions), ElementsAre("Quay", "Mast"));
  dialog.cmbRefPositions.UserChoose(0);
  EXPECT_EQ(dialog.txtRefName.Text(), "Quay");
  EXPECT_EQ(dialog.txtLat.Text(), "57° 17.7468' N");
  EXPECT_EQ(dialog.txtHgt.Text(), "3.000");
  Ok();
  EXPECT_EQ(records.References[1].ReferenceUsed, kTruePosition);
  EXPECT_EQ(records.References[1].ReferenceLatitude, 1.0);
  EXPECT_EQ(ReadWholeFile(folder / kReferenceFileName), file);
  // Copying is a change, which updates the entry; a No keeps it for the next OK.
  Open(3);
  dialog.optReference.UserChoose(1);
  dialog.cmdCopyPrimary.Click();
  dialog.txtPitch.UserText("0,126");
  const std::string before = WriteSetup(records);
  session.calls.clear();
  face.ExpectBox(kSure, Answer::No);
  dialog.cmdOk.Click();
  EXPECT_EQ(dialog.txtPitch.Text(), "0.13");
  EXPECT_EQ(WriteSetup(records), before);
  EXPECT_TRUE(session.calls.empty());
  face.ExpectBox(kSure, Answer::Yes);
  face.ExpectBox("The reference target 'Quay' already exist. The position will be updated!");
  dialog.cmdOk.Click();
  EXPECT_EQ(records.References[3].ReferenceLatitude, 1.0);
  EXPECT_EQ(records.References[3].ReferencePitch, 0.126F);
}

}  // namespace
}  // namespace fathomline
