// frmSetup: how one system is read, what is analysed of it and against what.
//
// The dialog edits its own controls only. What it holds comes into force as a whole, when OK has
// been confirmed; then the whole session begins anew.
#pragma once

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "analysis/statistics.h"
#include "base/clock.h"
#include "records/records.h"
#include "setup/comport_scan.h"
#include "setup/reference_editor.h"
#include "setup/setup_apply.h"
#include "setup/setup_session.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/links.h"
#include "toolkit/window.h"

namespace fathomline {

class frmSetup : public Window {
 public:
  frmSetup(Desktop& desktop, Records& records, const Statistics& statistics, const Clock& clock,
           Links& links, SetupSession& session);

  // Opens the dialog for a system. One that is open already comes forward for its own.
  void Open(int system);
  int System() const { return system_; }

  // Raises OutOfRange for a type that has no box.
  CheckBox& SentenceBox(SentenceType type);

  // Writes the coordinates in the user's form, which may have changed meanwhile. What is being
  // typed stays, and is read in the form that it was shown in.
  void Refresh() override;

  Label lblName{*this, "lblName"};
  Choices SSTab1{*this,
                 "SSTab1",
                 ChoicesKind::Tabs,
                 {"General", "NMEA Messages", "Reference pos/hdg", "Rejection criterias",
                  "Antenna offset", "Com Port"}};
  static constexpr int kMessagesTab = 1;
  static constexpr int kLinkTab = 5;

  CheckBox chkEnabled{*this, "chkEnabled", "System enabled"};
  TextBox txtName{*this, "txtName", "SYSTEM 1"};
  Frame frameType{*this, "frameType", "System type"};
  Choices optType{frameType, "optType", ChoicesKind::Options};
  CheckBox chkSetTimeFromPC{*this, "chkSetTimeFromPC", "Set time from PC"};

  Frame frameMessages{*this, "frameMessages", "Messages to analyse"};

 private:
  static std::deque<CheckBox> MakeSentenceBoxes(Frame& frame);
  std::deque<CheckBox> sentenceBoxes_ = MakeSentenceBoxes(frameMessages);

 public:
  CheckBox chkTestCheckSum{*this, "chkTestCheckSum", "NMEA Checksum test "};
  Frame frameToBeImplemented{*this, "frameToBeImplemented", "To be implemented"};
  CheckBox chkHDM{frameToBeImplemented, "chkHDM", "HDM"};
  CheckBox chkHDG{frameToBeImplemented, "chkHDG", "HDG"};
  CheckBox chkDBK{frameToBeImplemented, "chkDBK", "DBK"};
  CheckBox chkDBS{frameToBeImplemented, "chkDBS", "DBS"};
  CheckBox chkLCD{frameToBeImplemented, "chkLCD", "LCD"};
  CheckBox chkGLC{frameToBeImplemented, "chkGLC", "GLC"};
  Choices cmbTimeZone{frameToBeImplemented, "cmbTimeZone", ChoicesKind::Combo, {"UTC"}};

  Frame frameReferenceUsed{*this, "frameReferenceUsed", "Compare with"};
  Choices optReference{frameReferenceUsed, "optReference", ChoicesKind::Options};
  Frame frameReference{*this, "frameReference", "Reference"};
  Choices cmbRefPositions{frameReference, "cmbRefPositions", ChoicesKind::Combo};
  TextBox txtRefName{frameReference, "txtRefName"};
  TextBox txtLat{frameReference, "txtLat"};
  TextBox txtLon{frameReference, "txtLon"};
  // Not of the frame, since it can be read whether or not the fields can be edited.
  Label lblCoordinateExample{*this, "lblCoordinateExample"};
  TextBox txtHgt{frameReference, "txtHgt"};
  TextBox txtHdg{frameReference, "txtHdg"};
  TextBox txtPitch{frameReference, "txtPitch"};
  TextBox txtRoll{frameReference, "txtRoll"};
  Button cmdCopyAvg{frameReference, "cmdCopyAvg", "Copy current &average"};
  Button cmdCopyPrimary{frameReference, "cmdCopyPrimary", "Copy &primary system reference"};

  Frame frameLimits{*this, "frameLimits", "Reject"};
  CheckBox chkOutliers{frameLimits, "chkOutliers", "Reject ouliers"};
  Choices cmbOutliers{frameLimits, "cmbOutliers", ChoicesKind::EditableCombo};
  CheckBox chkHdop{frameLimits, "chkHdop", "Hdop limit"};
  Choices cmbHdop{frameLimits, "cmbHdop", ChoicesKind::EditableCombo};
  CheckBox chkSvs{frameLimits, "chkSvs", "No of satellites limit"};
  Choices cmbSvs{frameLimits, "cmbSvs", ChoicesKind::EditableCombo};
  CheckBox chkNoDiff{frameLimits, "chkNoDiff", "None differenteill GPS"};

  Label lblAntennaOffset{*this, "lblAntennaOffset",
                         "There is nothing to set here: positions are taken as they are received."};

  Frame frameLink{*this, "frameLink", "Connection"};
  Choices optCom{frameLink, "optCom", ChoicesKind::Options, {"Comport", "TCP/IP", "UDP"}};
  Frame frameCOM{*this, "frameCOM", "Comport"};
  Choices cmbComPort{frameCOM, "cmbComPort", ChoicesKind::Combo};
  Label lblComPortAdvice{frameCOM, "lblComPortAdvice"};
  Choices cmbBaudRate{frameCOM,
                      "cmbBaudRate",
                      ChoicesKind::Combo,
                      {"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"}};
  Choices cmbDataBits{frameCOM, "cmbDataBits", ChoicesKind::Combo, {"7", "8"}};
  Choices cmbParity{frameCOM, "cmbParity", ChoicesKind::Combo, {"none", "odd", "even"}};
  Choices cmbStopBits{frameCOM, "cmbStopBits", ChoicesKind::Combo, {"1", "2"}};
  CheckBox chkEmptyBuffer{frameCOM, "chkEmptyBuffer", "Empty Buffer Continously"};
  Button cmdRefreshPorts{frameCOM, "cmdRefreshPorts", "&Refresh"};
  Button cmdComInfo{frameCOM, "cmdComInfo", "&Info..."};
  Frame frameTCPIP{*this, "frameTCPIP", "TCP/IP"};
  Choices cmbIP{frameTCPIP, "cmbIP", ChoicesKind::EditableCombo};
  TextBox txtPort{frameTCPIP, "txtPort"};
  Frame frameUDP{*this, "frameUDP", "UDP"};
  TextBox txtUDP_port{frameUDP, "txtUDP_port", "1000"};
  Frame frameLogfile{*this, "frameLogfile", "Input file"};
  Label lblFileName{frameLogfile, "lblFileName", "not selected", Label::Look::Path};
  Button cmdSelectFile{frameLogfile, "cmdSelectFile", "&Select file..."};

  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  // A limit: its box switches the combo, which must hold a value that the test accepts.
  struct Limit {
    CheckBox& box;
    Choices& combo;
    double least;  // the combo's value must reach it; 0: any but zero
    const char* refusal;
    const char* name;
    double most;  // what its record can hold
    std::string shownText = {};
    double shownValue = 0.0;
  };
  struct ReferenceBox {
    ReferenceField field;
    TextBox& box;
    const char* name;
  };

  Layout GeneralPage();
  Layout MessagesPage();
  Layout ReferencePage();
  Layout LimitsPage();
  Layout LinkPage();
  void FillFixedChoices();
  void ConnectHandlers();

  void LoadSentences(const SetupChoices& choices);
  void LoadReference(const SetupChoices& choices);
  void LoadLimits(const SetupChoices& choices);
  void LoadLink(const SetupChoices& choices);
  void ScanPorts(int wanted);
  void ShowPortAdvice();
  void ShowSerial(const ComportSetup& row);
  void ChoosePort();
  void ShowLinkFrames();
  void ShowAddresses();
  void ShowReference();
  void EnableReference();

  void TickSentence(SentenceType type);
  bool LeaveReference(const ReferenceBox& row);
  void CopyAverage();
  bool LeaveLimit(const Limit& limit);
  bool LeaveAddress();
  bool LeavePort(TextBox& box);
  void ChoosePosition();
  void SelectFile();
  bool Refuse(const std::string& text);
  // The same of what a control holds, which is selected for typing over.
  bool Refuse(Control& control, const std::string& text);

  SetupChoices Held() const;
  double LimitValue(const Limit& limit) const;
  int ChosenPort() const;
  void Ok();

  Records& records_;
  Links& links_;
  SetupSession& session_;
  ComportScan scan_;
  ReferenceEditor reference_;
  SetupApply apply_;
  std::vector<ReferencePosition> positions_;
  std::array<Limit, 3> limits_;
  std::array<ReferenceBox, kReferenceFields.size()> referenceBoxes_;
  int system_ = 1;
};

}  // namespace fathomline
