#include "ais/ais_decoder.h"

namespace fathomline {
namespace {

bool CarriesApplicationData(std::int16_t messageId) {
  return messageId == 6 || messageId == 8 || messageId == 25 || messageId == 26;
}

}  // namespace

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
    DecodeAISPayload(assembly, sentence.FillBits, options_, clock_, receiver.Messages,
                     receiver.AISMessageId);
  } catch (const Fault&) {
    assembly.clear();
    throw;
  }
  assembly.clear();
  if (CarriesApplicationData(receiver.AISMessageId)) {
    receiver.ApplicationMessageId = receiver.AISMessageId;
  }
}

}  // namespace fathomline
