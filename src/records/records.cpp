#include "records/records.h"

#include <algorithm>

#include "base/look.h"
#include "base/text.h"

namespace fathomline {
namespace {

constexpr std::int16_t kDefaultDecimals = 4;

}  // namespace

bool CommSetup::Analyses(SentenceType type) const {
  const AnalyseFlag* const found = FindAnalyseFlag(type);
  return found != nullptr && this->*(found->flag);
}

bool CommSetup::AnalysesAny(std::span<const SentenceType> types) const {
  return std::any_of(types.begin(), types.end(),
                     [this](SentenceType type) { return Analyses(type); });
}

void Records::SetDefaultSetup() {
  for (CommSetup& setup : CommSetups) {
    CommSetup defaults;
    defaults.IPAddress = "127.0.0.1";
    defaults.TCPPort = 8040;
    defaults.UseUDP = setup.UseUDP;
    defaults.UDPPort = setup.UDPPort;
    defaults.AnalyseTTM = setup.AnalyseTTM;
    defaults.AnalyseVDM = setup.AnalyseVDM;
    setup = defaults;
  }
  ChecksumTest.Fill(false);
  Mode = kOnline;
}

void Records::UseDefaultDecimals() {
  if (!CoordinateFormatIsDMS && CoordinateDecimals == 0) CoordinateDecimals = kDefaultDecimals;
}

void Records::SetMessageFlags(int system) {
  CommSetup& setup = CommSetups[system];
  for (const AnalyseFlag& row : kAnalyseFlags) setup.*row.flag = false;
  const MessageList& wanted = MessagesToAnalyse[system];
  for (std::size_t row = 0; row < kUsedMessageRows && !wanted[row].empty(); ++row) {
    // "VDO" has no flag of its own, and a longer word is no sentence type.
    const SentenceType type = SentenceTypeOf(wanted[row]);
    if (wanted[row].size() != 3 || type == SentenceType::VDO) continue;
    if (const AnalyseFlag* const found = FindAnalyseFlag(type)) setup.*found->flag = true;
  }
}

std::string Records::FilePartOf(int system) const {
  const std::string role = system == 1 ? "Prim-" : "Sec" + std::to_string(system - 1) + "-";
  return role + FileNamePart(CommSetups[system].Name);
}

Colour SystemColour(int system) {
  if (system < 1 || system > kSystems) Raise(FaultNumber::OutOfRange);
  return kSystemColours[static_cast<std::size_t>(system - 1)];
}

std::string SystemTitle(int system) {
  return system == 1 ? "Primary System" : "Secondary System " + std::to_string(system - 1);
}

}  // namespace fathomline
