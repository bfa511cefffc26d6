#include "ais/ais_decoder.h"

namespace fathomline {

void AISDecoder::ProcessVDM(int system, const VDMRecord& sentence) {
  AISReceiver& receiver = receivers_[Index(system)];
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
}

}  // namespace fathomline
