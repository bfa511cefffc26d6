#include "ais/ais_decoder.h"

#include "ais/ais_messages.h"

namespace fathomline {
namespace {

// Application data that say what they are. Ids 25 and 26 may come without that.
const AISApplicationData* ApplicationDataOf(std::int16_t messageId, const AISMessages& messages) {
  switch (messageId) {
    case 6:
      return &messages.Id6;
    case 8:
      return &messages.Id8;
    case 25:
      return messages.Id25.Structured == 1 ? &messages.Id25 : nullptr;
    case 26:
      return messages.Id26.Structured == 1 ? &messages.Id26 : nullptr;
    default:
      return nullptr;
  }
}

}  // namespace

AISReceiver::AISReceiver() : messages_(std::make_unique<AISMessages>()) {}
AISReceiver::~AISReceiver() = default;

void AISDecoder::ProcessVDM(int system, const VDMRecord& sentence) {
  AISReceiver& receiver = receivers_[system];
  std::string& assembly = receiver.AISAssembly;
  if (assembly.size() + sentence.Payload.size() > AISReceiver::kLongestAssembly) {
    assembly.clear();
    Raise(FaultNumber::Overflow);
  }
  assembly.append(sentence.Payload);
  if (sentence.TotalFragments != sentence.FragmentNumber) {
    receiver.AISMessageId = kOpenGroup;
    return;
  }
  try {
    DecodeAISPayload(assembly, sentence.FillBits, binaryStandardIALA_, clock_, *receiver.messages_,
                     receiver.AISMessageId);
  } catch (const Fault&) {
    assembly.clear();
    throw;
  }
  assembly.clear();
  if (const AISApplicationData* const data =
          ApplicationDataOf(receiver.AISMessageId, receiver.Messages())) {
    receiver.ApplicationMessageId = receiver.AISMessageId;
    receiver.ApplicationMMSI = data->MMSI;
  }
}

}  // namespace fathomline
