#include "setup/setup_apply.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "charts/satellite_table.h"
#include "setup/comport_scan.h"
#include "setup/reference_positions.h"
#include "setup/setup_file.h"
#include "views/system_view.h"

namespace fathomline {
namespace {

std::string JoinedWords(const std::vector<SentenceType>& types, std::size_t from) {
  std::string text;
  for (std::size_t i = from; i < types.size(); ++i) {
    if (!text.empty()) text += ", ";
    text += ToText(types[i]);
  }
  return text;
}

}  // namespace

SetupChoices ChoicesOf(const Records& records, int system) {
  const CommSetup& setup = records.CommSetups[system];
  SetupChoices choices;
  choices.enabled = setup.Enabled;
  choices.name = setup.Name;
  choices.systemType = setup.SystemType;
  if (setup.UseTCPIP) {
    choices.link = LinkKind::TcpIp;
  } else if (setup.UseUDP) {
    choices.link = LinkKind::Udp;
  }
  if (setup.ComPort >= 1 && setup.ComPort <= kComports) {
    choices.comPort = setup.ComPort;
    choices.serial = records.Comports[static_cast<std::size_t>(setup.ComPort - 1)];
  }
  choices.ipAddress = setup.IPAddress;
  choices.tcpPort = setup.TCPPort;
  choices.udpPort = setup.UDPPort;
  const MessageList& words = records.MessagesToAnalyse[system];
  for (const SentenceType type : kSentenceBoxes) {
    choices.sentences.Set(type, std::find(words.begin(), words.end(), ToText(type)) != words.end());
  }
  choices.checksumTest = records.ChecksumTest[system];
  choices.emptyBuffer = records.Emptybuffer[system];
  choices.setTimeFromPC = records.SetTimeFromPC[system];
  choices.reference = records.References[system];
  choices.outlierLimit = records.OutlierLimit;
  choices.hdopLimit = records.HdopLimit;
  choices.satelliteLimit = records.SatelliteLimit;
  choices.rejectNonDifferential = records.RejectNonDifferential;
  choices.offlineFile = setup.OfflineFile;
  return choices;
}

std::vector<std::string> DoubtsAbout(const SetupChoices& choices, bool online) {
  std::vector<std::string> doubts;
  for (const std::string& limit : choices.emptyLimits) {
    doubts.push_back(limit + " is ticked, but has no value. It will not be applied.");
  }
  if (!choices.enabled) return doubts;
  if (choices.sentences.Ticked().empty()) {
    doubts.emplace_back(
        "The system is enabled, but no NMEA message is ticked. Nothing will be analysed.");
  }
  if (!online && choices.offlineFile.empty()) {
    doubts.emplace_back(
        "The system is enabled, but no input file is selected. There is nothing to replay.");
  }
  const bool tcp = choices.link == LinkKind::TcpIp;
  const bool udp = choices.link == LinkKind::Udp;
  const bool linked = (!tcp || (IsIPAddress(choices.ipAddress) && choices.tcpPort != 0)) &&
                      (!udp || choices.udpPort != 0);
  if (online && !linked) {
    doubts.push_back(std::string("The system is enabled, but ") +
                     (tcp ? "its IP address or port" : "its UDP port") +
                     " is not set. Nothing will be received.");
  }
  return doubts;
}

bool SetupApply::Apply(int system, const SetupChoices& choices) {
  if (!Sure() || !KeepsDoubts(choices)) return false;
  const bool online = !records_.Offline();
  const bool serial = online && choices.enabled && choices.link == LinkKind::Comport;
  if (serial && choices.comPort == 0) {
    Stop("No comport has been selected! Please, select a comport, or untick \"System enabled\"!");
    return false;
  }
  session_.CloseLinks(system);
  TakeLink(system, choices);
  if (serial && !TakeComport(system, choices)) return false;
  TakeEnabled(system, choices);
  CommSetup& setup = records_.CommSetups[system];
  setup.Name = WithoutQuotes(choices.name);
  setup.SystemType = choices.systemType;
  TakeSentences(system, choices);
  CloseWindowsWithoutData(system);
  records_.ChecksumTest[system] = choices.checksumTest;
  if (online) records_.Emptybuffer[system] = choices.emptyBuffer;
  records_.SetTimeFromPC[system] = choices.setTimeFromPC;
  TakeReference(system, choices);
  if (online) WarnOfConflicts(system);
  TakeLimits(choices);
  if (!online && !choices.offlineFile.empty()) setup.OfflineFile = choices.offlineFile;
  Restart(system);
  if (choices.referenceChanged) {
    const ReferenceSetup& reference = choices.reference;
    StoreReferencePosition(records_.ProgramFolder,
                           {WithoutQuotes(reference.ReferenceName), reference.ReferenceLatitude,
                            reference.ReferenceLongitude, reference.ReferenceHeight},
                           desktop_);
  }
  if (!records_.SetupIsPassing) {
    WriteSetupFile(records_.ProgramFolder + std::string(kSetupFileName), records_);
  }
  return true;
}

bool SetupApply::Sure() {
  return desktop_.Ask({.text = "Are you sure? All statistics and graphics will be reset.(Remember "
                               "to open relevant windows for display under Window)",
                       .icon = BoxIcon::Question,
                       .buttons = BoxButtons::YesNo}) == Answer::Yes;
}

bool SetupApply::KeepsDoubts(const SetupChoices& choices) {
  for (const std::string& doubt : DoubtsAbout(choices, !records_.Offline())) {
    if (desktop_.Ask({.text = doubt + " Keep it so?",
                      .icon = BoxIcon::Question,
                      .buttons = BoxButtons::YesNo,
                      .defaultNo = true}) != Answer::Yes) {
      return false;
    }
  }
  return true;
}

void SetupApply::Stop(const std::string& text) {
  desktop_.Ask({.text = text, .icon = BoxIcon::Critical});
}

void SetupApply::TakeLink(int system, const SetupChoices& choices) {
  CommSetup& setup = records_.CommSetups[system];
  setup.UseTCPIP = choices.link == LinkKind::TcpIp;
  setup.UseUDP = choices.link == LinkKind::Udp;
  if (setup.UseTCPIP) {
    setup.IPAddress = choices.ipAddress;
    setup.TCPPort = choices.tcpPort;
  } else if (setup.UseUDP) {
    setup.UDPPort = choices.udpPort;
  }
  // A port that is not used would be closed under its next owner.
  if (choices.link != LinkKind::Comport) setup.ComPort = 0;
}

bool SetupApply::TakeComport(int system, const SetupChoices& choices) {
  CommSetup& setup = records_.CommSetups[system];
  ComportSetup& row = records_.Comport(choices.comPort);
  if (row.Status.find(kPortBusy) != std::string::npos) {
    Stop("You have selected a comport which is busy! Please, select another comport!");
    setup.Enabled = false;
    setup.ComPort = 0;
    session_.ShowSetups();
    return false;
  }
  // A system that has been disabled may still name the port.
  for (CommSetup& other : records_.CommSetups) {
    if (other.ComPort == choices.comPort) other.ComPort = 0;
  }
  setup.ComPort = ToInt16(choices.comPort);
  row.Baud = choices.serial.Baud;
  row.DataBits = choices.serial.DataBits;
  row.Parity = choices.serial.Parity;
  row.StopBits = choices.serial.StopBits;
  return true;
}

void SetupApply::TakeEnabled(int system, const SetupChoices& choices) {
  CommSetup& setup = records_.CommSetups[system];
  setup.Enabled = choices.enabled;
  if (!setup.Enabled) setup.ComPort = 0;
  if (setup.ComPort != 0) records_.Comport(setup.ComPort).System = ToInt16(system);
}

void SetupApply::TakeSentences(int system, const SetupChoices& choices) {
  const std::vector<SentenceType> ticked = choices.sentences.Ticked();
  MessageList& words = records_.MessagesToAnalyse[system];
  words = {};
  const std::size_t used = std::min<std::size_t>(ticked.size(), kUsedMessageRows);
  for (std::size_t row = 0; row < used; ++row) words[row] = ToText(ticked[row]);
  if (used < ticked.size()) {
    desktop_.Ask({.text = "Only " + PlainText(kUsedMessageRows) +
                          " NMEA messages can be analysed for a system. Not analysed: " +
                          JoinedWords(ticked, used) + ".",
                  .icon = BoxIcon::Exclamation});
  }
  records_.SetMessageFlags(system);
}

void SetupApply::CloseWindowsWithoutData(int system) {
  // A copy, since closing one may open or close others.
  const std::vector<Window*> windows(desktop_.Windows().begin(), desktop_.Windows().end());
  for (Window* const window : windows) {
    auto* const view = dynamic_cast<SystemView*>(window);
    if (view != nullptr && view->Index() == system) view->CloseUnlessFed();
  }
  const CommSetup& setup = records_.CommSetups[system];
  if (setup.Enabled && setup.AnalyseGSV) return;
  // The windows of satellites are made when they are first opened, and a setup may name others.
  SystemSetup& flags = records_.SystemSetups[system];
  for (int entry = 1; entry <= kLastSatelliteWindow; ++entry) {
    flags[static_cast<WindowFlag>(static_cast<int>(WindowFlag::FirstSatellite) + entry)] = false;
  }
}

void SetupApply::TakeReference(int system, const SetupChoices& choices) {
  ReferenceSetup& reference = records_.References[system];
  reference = choices.reference;
  reference.ReferenceName = WithoutQuotes(reference.ReferenceName);
}

void SetupApply::WarnOfConflicts(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  if (!setup.Enabled) return;
  if (setup.UseTCPIP) WarnOfSameAddress(system);
  if (setup.UseUDP) WarnOfSameUdpPort(system);
}

void SetupApply::WarnOfSameAddress(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  for (int other = 1; other <= kSystems; ++other) {
    const CommSetup& theirs = records_.CommSetups[other];
    if (other == system || !theirs.Enabled || !theirs.UseTCPIP) continue;
    if (theirs.IPAddress != setup.IPAddress || theirs.TCPPort != setup.TCPPort) continue;
    desktop_.Ask({.text = "Warning! System" + NumberText(other) +
                          " has the same IP address and portno. A conflict will occure.",
                  .icon = BoxIcon::Exclamation});
  }
}

void SetupApply::WarnOfSameUdpPort(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  for (int other = 1; other <= kSystems; ++other) {
    const CommSetup& theirs = records_.CommSetups[other];
    const bool udp = theirs.UseUDP && !theirs.UseTCPIP;
    if (other == system || !theirs.Enabled || !udp || theirs.UDPPort != setup.UDPPort) continue;
    desktop_.Ask({.text = "Warning! System" + NumberText(other) +
                          " has the same UDP portno. A conflict will occure.",
                  .icon = BoxIcon::Exclamation});
  }
  if (session_.CanBindUdp(system, setup.UDPPort)) return;
  desktop_.Ask(
      {.text = "UDP port" + NumberText(setup.UDPPort) + " not opened. Select another port number!",
       .icon = BoxIcon::Exclamation});
}

void SetupApply::TakeLimits(const SetupChoices& choices) {
  records_.OutlierLimit = choices.outlierLimit;
  records_.HdopLimit = choices.hdopLimit;
  records_.SatelliteLimit = choices.satelliteLimit;
  records_.RejectNonDifferential = choices.rejectNonDifferential;
}

void SetupApply::Restart(int system) {
  // The counts begin anew with the setup that they are counted under.
  records_.ChecksumErrors.Fill(0);
  records_.IgnoredMessages.Fill(0);
  records_.ReloadWindows = true;
  session_.ResetAll();
  if (!records_.Offline() && records_.CommSetups[system].Enabled) session_.OpenLink(system);
  session_.ShowSetups();
}

}  // namespace fathomline
