// How the choices of the setup dialog come into force.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/records.h"
#include "setup/setup_rules.h"
#include "setup/setup_session.h"
#include "toolkit/desktop.h"

namespace fathomline {

// In the order of the buttons.
enum class LinkKind : std::int8_t { Comport, TcpIp, Udp };

// What the dialog holds of one system.
struct SetupChoices {
  bool enabled = false;
  std::string name;
  std::string systemType;
  LinkKind link = LinkKind::Comport;
  int comPort = 0;  // 0: none chosen
  ComportSetup serial;
  std::string ipAddress;
  std::int32_t tcpPort = 0;
  std::int32_t udpPort = 0;
  SentenceSelection sentences;
  bool checksumTest = false;
  bool emptyBuffer = false;
  bool setTimeFromPC = false;
  ReferenceSetup reference;
  bool referenceChanged = false;
  // 0: no limit.
  float outlierLimit = 0.0F;
  float hdopLimit = 0.0F;
  std::int16_t satelliteLimit = 0;
  std::vector<std::string> emptyLimits;  // that are ticked and have no value
  bool rejectNonDifferential = false;
  std::string offlineFile;  // empty: none selected
};

// The choices as the records hold them.
SetupChoices ChoicesOf(const Records& records, int system);

// What may have been forgotten among the choices, a sentence for each.
std::vector<std::string> DoubtsAbout(const SetupChoices& choices, bool online);

class SetupApply {
 public:
  SetupApply(Records& records, Desktop& desktop, SetupSession& session)
      : records_(records), desktop_(desktop), session_(session) {}

  // Asks, and brings the choices into force. False where the user is to stay in the dialog: after
  // No nothing has changed; a busy port leaves the system disabled and without a port.
  bool Apply(int system, const SetupChoices& choices);

 private:
  bool Sure();
  // Whether the user wants to keep what may have been forgotten.
  bool KeepsDoubts(const SetupChoices& choices);
  void TakeLink(int system, const SetupChoices& choices);
  bool TakeComport(int system, const SetupChoices& choices);
  void TakeEnabled(int system, const SetupChoices& choices);
  void TakeSentences(int system, const SetupChoices& choices);
  void CloseWindowsWithoutData(int system);
  void TakeReference(int system, const SetupChoices& choices);
  void WarnOfConflicts(int system);
  void WarnOfSameAddress(int system);
  void WarnOfSameUdpPort(int system);
  void TakeLimits(const SetupChoices& choices);
  void Restart(int system);
  void Stop(const std::string& text);

  Records& records_;
  Desktop& desktop_;
  SetupSession& session_;
};

}  // namespace fathomline
