#include "setup/setup_dialog.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>

#include "base/format.h"
#include "base/numbers.h"
#include "base/system.h"
#include "base/text.h"
#include "decoding/coordinate_text.h"
#include "setup/setup_values.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr std::string_view kNotSelected = "not selected";
constexpr std::string_view kExampleDM = "For example 59 30.5 N and 10 20.5 E";
constexpr std::string_view kExampleDMS = "For example 59 30 15.5 N and 10 20 30.5 E";

// Shows a text that the list may lack.
void ShowOrAdd(Choices& combo, const std::string& text) {
  for (int entry = 0; entry < combo.Count(); ++entry) {
    if (combo.EntryText(entry) != text) continue;
    combo.ShowChoice(entry);
    return;
  }
  combo.Add(text);
  combo.ShowChoice(combo.Count() - 1);
}

}  // namespace

CheckBox& frmSetup::SentenceBox(SentenceType type) {
  const auto* const found = std::find(kSentenceBoxes.begin(), kSentenceBoxes.end(), type);
  if (found == kSentenceBoxes.end()) Raise(FaultNumber::OutOfRange);
  return sentenceBoxes_[static_cast<std::size_t>(found - kSentenceBoxes.begin())];
}

void frmSetup::Open(int system) {
  if (!Loaded()) system_ = system;
  Show();
}

void frmSetup::Load() {
  const SetupChoices choices = ChoicesOf(records_, system_);
  SetCaption(system_ == 1 ? "Setup Primary System"
                          : "Setup Secondary SYSTEM" + NumberText(system_ - 1));
  lblName.SetText(SystemTitle(system_));
  chkEnabled.SetChecked(choices.enabled);
  // A system that has never been set up is offered a name.
  const bool fresh = choices.name.empty() && !choices.enabled;
  txtName.SetText(fresh ? "SYSTEM " + PlainText(system_) : choices.name);
  optType.ShowChoice(SystemTypeButton(choices.systemType));
  chkTestCheckSum.SetChecked(choices.checksumTest);
  chkEmptyBuffer.SetChecked(choices.emptyBuffer);
  chkSetTimeFromPC.SetChecked(choices.setTimeFromPC);
  LoadSentences(choices);
  LoadReference(choices);
  LoadLimits(choices);
  LoadLink(choices);
}

void frmSetup::LoadSentences(const SetupChoices& choices) {
  for (const SentenceType type : kSentenceBoxes) {
    SentenceBox(type).SetChecked(choices.sentences[type]);
  }
}

void frmSetup::LoadReference(const SetupChoices& choices) {
  optReference.ShowChoice(ReferenceButton(choices.reference.ReferenceUsed));
  reference_.Load(system_);
  ShowReference();
  EnableReference();
  positions_ = ReadReferencePositions(records_.ProgramFolder, OwningDesktop());
  for (const ReferencePosition& position : positions_) cmbRefPositions.Add(position.name);
}

void frmSetup::LoadLimits(const SetupChoices& choices) {
  const std::array<double, 3> values = {choices.outlierLimit, choices.hdopLimit,
                                        static_cast<double>(choices.satelliteLimit)};
  auto value = values.begin();
  for (Limit& limit : limits_) {
    limit.shownValue = *value++;
    limit.shownText = Format(limit.shownValue, "0.0");
    limit.combo.ShowText(limit.shownText);
    limit.box.SetChecked(limit.shownValue != 0.0);
    limit.combo.SetEnabled(limit.box.Checked());
  }
  chkNoDiff.SetChecked(choices.rejectNonDifferential);
}

void frmSetup::LoadLink(const SetupChoices& choices) {
  const bool offline = records_.Offline();
  if (offline) SSTab1.SetEntryText(kLinkTab, "Input file");
  frameLogfile.SetVisible(offline);
  frameLink.SetVisible(!offline);
  if (!choices.offlineFile.empty()) lblFileName.SetText(choices.offlineFile);

  optCom.ShowChoice(static_cast<int>(choices.link));
  ShowLinkFrames();
  ShowSerial(choices.serial);
  cmbIP.ShowText(choices.ipAddress);
  ShowAddresses();
  txtPort.SetText(PlainText(choices.tcpPort));
  if (choices.udpPort != 0) txtUDP_port.SetText(PlainText(choices.udpPort));
  // Nobody sees the list in offline mode, and looking takes time.
  if (!offline) ScanPorts(choices.comPort);
}

void frmSetup::ShowSerial(const ComportSetup& row) {
  ShowOrAdd(cmbBaudRate, PlainText(row.Baud));
  ShowOrAdd(cmbDataBits, PlainText(row.DataBits));
  ShowOrAdd(cmbParity, row.Parity);
  ShowOrAdd(cmbStopBits, PlainText(row.StopBits));
}

void frmSetup::ChoosePort() {
  if (ChosenPort() != 0) ShowSerial(records_.Comport(ChosenPort()));
  ShowPortAdvice();
}

void frmSetup::ScanPorts(int wanted) {
  scan_.Run(records_, links_, system_);
  cmbComPort.Clear();
  for (int port = 1; port <= kComports; ++port) {
    if (!records_.Comport(port).Present) continue;
    cmbComPort.Add(scan_.EntryText(records_, port), port);
    if (port == wanted) cmbComPort.ShowChoice(cmbComPort.Count() - 1);
  }
  ShowPortAdvice();
}

int frmSetup::ChosenPort() const {
  return cmbComPort.Choice() == Choices::kNone ? 0 : cmbComPort.EntryData(cmbComPort.Choice());
}

void frmSetup::ShowPortAdvice() {
  if (cmbComPort.Count() == 0) {
    lblComPortAdvice.SetText("No serial port has been found. Connect one and press Refresh.");
    return;
  }
  const int port = ChosenPort();
  lblComPortAdvice.SetText(port == 0 ? "Select the comport that the system is connected to."
                                     : scan_.Advice(port));
}

void frmSetup::ShowLinkFrames() {
  const bool online = !records_.Offline();
  const auto link = static_cast<LinkKind>(optCom.Choice());
  frameCOM.SetVisible(online && link == LinkKind::Comport);
  frameTCPIP.SetVisible(online && link == LinkKind::TcpIp);
  frameUDP.SetVisible(online && link == LinkKind::Udp);
}

// The addresses used lately, newest last, and the one that stands.
void frmSetup::ShowAddresses() {
  const std::string current = cmbIP.Text();
  cmbIP.Clear();
  const auto count = static_cast<std::size_t>(std::max<std::int16_t>(records_.IPListCount, 0));
  bool listed = current.empty();
  for (std::size_t i = 0; i < std::min(count, records_.IPList.size()); ++i) {
    cmbIP.Add(records_.IPList[i]);
    listed = listed || records_.IPList[i] == current;
  }
  if (!listed) cmbIP.Add(current);
  cmbIP.ShowText(current);
}

void frmSetup::ShowReference() {
  for (const ReferenceBox& row : referenceBoxes_) row.box.SetText(reference_.Text(row.field));
}

void frmSetup::EnableReference() {
  const bool enabled = optReference.Choice() == kTrueButton;
  for (const ReferenceBox& row : referenceBoxes_) row.box.SetEnabled(enabled);
  cmbRefPositions.SetEnabled(enabled);
  cmdCopyAvg.SetEnabled(enabled);
  cmdCopyPrimary.SetEnabled(enabled);
}

void frmSetup::TickSentence(SentenceType type) {
  if (!SentenceBox(type).Checked()) return;
  SentenceSelection selection;
  for (const SentenceType each : kSentenceBoxes) selection.Set(each, SentenceBox(each).Checked());
  for (const Exclusion& exclusion : ExclusionsOf(type, selection)) {
    OwningDesktop().Say(exclusion.Message());
    SentenceBox(exclusion.cleared).SetChecked(false);
  }
}

bool frmSetup::Refuse(const std::string& text) {
  OwningDesktop().Ask({.text = text, .icon = BoxIcon::Critical});
  return false;
}

bool frmSetup::Refuse(Control& control, const std::string& text) {
  control.SelectText();
  return Refuse(text);
}

void frmSetup::Refresh() {
  for (const ReferenceBox& row : referenceBoxes_) {
    const bool typed = row.box.Text() != reference_.Text(row.field);
    if (!typed && reference_.FollowFormat(row.field)) row.box.SetText(reference_.Text(row.field));
  }
  lblCoordinateExample.SetText(records_.CoordinateFormatIsDMS ? kExampleDMS : kExampleDM);
}

bool frmSetup::LeaveReference(const ReferenceBox& row) {
  bool taken = true;
  ResumeNext([&] { reference_.Leave(row.field, row.box.Text()); },
             [&](const Fault& fault) {
               taken = Refuse(row.box, std::string(row.name) + ": " + fault.Description() + " - " +
                                           row.box.Text());
             });
  if (taken) row.box.SetText(reference_.Text(row.field));
  return taken;
}

void frmSetup::CopyAverage() {
  if (reference_.CopyAverage()) {
    ShowReference();
  } else {
    OwningDesktop().Ask({.text =
                             "There is no average yet: neither a position nor a heading of this "
                             "system has been analysed. Nothing has been copied.",
                         .icon = BoxIcon::Information});
  }
}

bool frmSetup::LeaveLimit(const Limit& limit) {
  const double value = NumberFromText(limit.combo.Text());
  if (std::abs(value) > limit.most) {
    return Refuse(limit.combo, std::string(limit.name) + ": " +
                                   std::string(Description(FaultNumber::Overflow)) + " - " +
                                   limit.combo.Text());
  }
  const bool good = limit.least > 0.0 ? value >= limit.least : value != 0.0;
  return good || Refuse(limit.combo, limit.refusal);
}

bool frmSetup::LeaveAddress() {
  const std::string address = cmbIP.Text();
  if (!IsIPAddress(address)) {
    return Refuse(cmbIP, address +
                             " is not a valid IP address! Has to be in the range 1.0.0.1 to "
                             "255.255.255.255");
  }
  ReArrange_IP_List(records_, address);
  ShowAddresses();
  return true;
}

bool frmSetup::LeavePort(TextBox& box) {
  return PortNumber(box.Text()) ||
         Refuse(box, box.Text() +
                         " is not a valid port number! Has to be an integer value in the range "
                         "1-65535");
}

void frmSetup::ChoosePosition() {
  const int choice = cmbRefPositions.Choice();
  if (choice == Choices::kNone) return;
  reference_.Choose(positions_[static_cast<std::size_t>(choice)]);
  ShowReference();
}

void frmSetup::SelectFile() {
  FileQuestion question{.title = "Open NMEA raw data File",
                        .filter =
                            "NMEA raw data (*.log;*.txt;*.nmea;*.aivdm)|*.log;*.txt;*.nmea;*.aivdm|"
                            "All files (*.*)|*.*"};
  if (lblFileName.Text() != kNotSelected) {
    question.folder = PathText(PathOf(lblFileName.Text()).parent_path());
  }
  const std::optional<std::string> path = OwningDesktop().ChooseFile(question);
  if (!path || path->empty()) return;
  if (!CanBeStored(*path)) {
    Refuse("The name of the file has a " +
           std::string(path->find('"') != std::string::npos ? "double quote" : "character") +
           ", which the setup file cannot keep: " + *path +
           "\nRename the file or its folder, or select another one.");
    return;
  }
  lblFileName.SetText(*path);
}

double frmSetup::LimitValue(const Limit& limit) const {
  if (!limit.box.Checked()) return 0.0;
  const bool untouched = limit.combo.Text() == limit.shownText;
  return std::abs(untouched ? limit.shownValue : NumberFromText(limit.combo.Text()));
}

SetupChoices frmSetup::Held() const {
  SetupChoices held = ChoicesOf(records_, system_);
  held.enabled = chkEnabled.Checked();
  held.name = txtName.Text();
  held.systemType = kSystemTypes[static_cast<std::size_t>(optType.Choice())].word;
  held.link = static_cast<LinkKind>(optCom.Choice());
  if (!records_.Offline()) held.comPort = ChosenPort();
  held.serial.Baud = ToInt32(ReadNumber(cmbBaudRate.Text()));
  held.serial.DataBits = ToInt16(ReadNumber(cmbDataBits.Text()));
  held.serial.Parity = cmbParity.Text();
  held.serial.StopBits = ToInt16(ReadNumber(cmbStopBits.Text()));
  held.ipAddress = cmbIP.Text();
  held.tcpPort = PortNumber(txtPort.Text()).value_or(0);
  held.udpPort = PortNumber(txtUDP_port.Text()).value_or(0);
  for (std::size_t i = 0; i < kSentenceBoxes.size(); ++i) {
    held.sentences.Set(kSentenceBoxes[i], sentenceBoxes_[i].Checked());
  }
  held.checksumTest = chkTestCheckSum.Checked();
  held.emptyBuffer = chkEmptyBuffer.Checked();
  held.setTimeFromPC = chkSetTimeFromPC.Checked();
  held.reference = reference_.Values();
  held.reference.ReferenceUsed =
      kReferenceOptions[static_cast<std::size_t>(optReference.Choice())].used;
  held.referenceChanged = reference_.ReferenceChanged();
  held.outlierLimit = ToSingle(LimitValue(limits_[0]));
  held.hdopLimit = ToSingle(LimitValue(limits_[1]));
  held.satelliteLimit = ToInt16(LimitValue(limits_[2]));
  held.rejectNonDifferential = chkNoDiff.Checked();
  for (const Limit& limit : limits_) {
    if (limit.box.Checked() && LimitValue(limit) == 0.0) held.emptyLimits.emplace_back(limit.name);
  }
  held.offlineFile = lblFileName.Text() == kNotSelected ? std::string() : lblFileName.Text();
  return held;
}

void frmSetup::Ok() {
  if (apply_.Apply(system_, Held())) Close();
}

}  // namespace fathomline
