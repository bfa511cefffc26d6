// AIS lines alone: sentence in, message decoded, target stored.
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ais/ais_decoder.h"
#include "ais/ais_messages.h"
#include "ais/target_store.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "decoding/sentence_decoders.h"

namespace {

using namespace fathomline;

class SilentDialogs : public Dialogs {
 public:
  Answer Ask(const MessageBox&) override { return Answer::Ok; }
  std::optional<std::string> ChooseFile(const FileQuestion&) override { return std::nullopt; }
  void Beep() override {}
};

// About what a harbour sends: mostly position reports, some base stations, a voyage in two parts.
constexpr std::array<std::string_view, 10> kSentences = {
    "!AIVDM,1,1,,B,13u?etPv2;0n:dDPwUM1U1Cb069D,0*27",
    "!AIVDM,1,1,,B,177KQJ5000G?tO`K>RA1wUbN0TKH,0*5C",
    "!AIVDM,1,1,,B,33J=hV0OhmNv;lbQ<CA`sW>T00rQ,0*79",
    "!AIVDM,1,1,,B,402=481uaUcf;OQ55JS9ITi025Jp,0*2B",
    "!AIVDM,1,1,,B,2kn:Vh8P?vClb4QUugH>3s?oGVsa,0*3D",
    "!AIVDM,1,1,,B,C3mQ:jh<EvJf4@4>5:3AvWoB@2dVbH20000000000000BPD:R1SP,0*19",
    "!AIVDM,1,1,,B,E>kb9O9aS@7PUh10dh19@;0Tah2cWrfP:l?M`00003vP100,4*05",
    "!AIVDM,1,1,,B,13u?etPv2;0n:dDPwUM1U1Cb069D,0*27",
    "!AIVDM,2,1,3,B,53o8Uf42:N2Th5QWL00pu8@iU<1<uE@P0000001B<PF8<??pt=U4SkDkiK@S,0*07",
    "!AIVDM,2,2,3,A,i3i@0000008,2*5C",
};

void DecodeLines(benchmark::State& state) {
  const SystemClock clock;
  SilentDialogs dialogs;
  const auto decoder = std::make_unique<AISDecoder>(clock);
  AISStore store(dialogs);
  VDMRecord record;
  std::int64_t lines = 0;
  for (auto _ : state) {
    for (std::string_view sentence : kSentences) {
      Extract(sentence, record, dialogs);
      decoder->ProcessVDM(1, record);
      const AISReceiver& receiver = decoder->Receiver(1);
      store.StoreAISTarget(1, receiver.AISMessageId, receiver.Messages(), DateTime{45000.0});
    }
    lines += static_cast<std::int64_t>(kSentences.size());
  }
  benchmark::DoNotOptimize(store.AISTargetCount(1));
  state.SetItemsProcessed(lines);
}
BENCHMARK(DecodeLines);

}  // namespace
