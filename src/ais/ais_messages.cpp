#include "ais/ais_messages.h"

#include "ais/application_messages.h"

namespace fathomline {
namespace {

template <class... Members>
constexpr bool LayoutsAreSound(const std::tuple<Members AISMessages::*...>&) {
  return (LayoutIsSound<Members>() && ...);
}
static_assert(LayoutsAreSound(AISMessages::Members()));

// What each kind of record needs beyond the walk over its layout.
template <class Record>
void Decode(const AISReception& reception, Record& record) {
  ReadFields(record, reception);
}

void Decode(const AISReception& reception, AISBaseStationReport& record) {
  ReadFields(record, reception);
  if (!SlotTimeoutTellsTime(record)) return;
  record.Hour = ReadValue<std::int16_t>(reception.bits, 155, 159, {});
  record.Minute = ReadValue<std::int16_t>(reception.bits, 160, 166, {});
}

void Decode(const AISReception& reception, AISDGNSSBroadcast& record) {
  ReadFields(record, reception);
  for (std::size_t i = 0; i < static_cast<std::size_t>(record.HeldBlocks()); ++i) {
    const bool coarse = record.ScaleFactor[i] != 0;
    record.PRC[i] = static_cast<float>(record.PRC[i] * (coarse ? 0.32 : 0.02));
    record.RRC[i] = static_cast<float>(record.RRC[i] * (coarse ? 0.032 : 0.002));
  }
  if (record.RequestedBlocks() > AISDGNSSBroadcast::kBlocks) Raise(FaultNumber::OutOfRange);
}

// One record type serves ids 6 and 8, another ids 25 and 26.
void Decode(const AISReception& reception, int id, AISBinaryRecord& record) {
  id == 6 ? DecodeAddressedBinary(reception, record) : DecodeBroadcastBinary(reception, record);
}
void Decode(const AISReception& reception, int id, AISMultiSlotRecord& record) {
  id == 25 ? DecodeAddressedMultiSlot(reception, record)
           : DecodeBroadcastMultiSlot(reception, record);
}
template <class Record>
void Decode(const AISReception& reception, int, Record& record) {
  Decode(reception, record);
}

}  // namespace

void DecodeAISPayload(std::string_view assembly, std::int16_t fillBits, bool binaryStandardIALA,
                      const Clock& clock, AISMessages& messages, std::int16_t& messageId) {
  const PayloadBits bits(assembly);
  messageId = static_cast<std::int16_t>(bits.Unsigned(1, 6));
  const AISReception reception{.bits = bits,
                               .payloadLength = ToInt16(static_cast<double>(assembly.size())),
                               .fillBits = fillBits,
                               .binaryStandardIALA = binaryStandardIALA,
                               .clock = clock};
  VisitMessage(messages, messageId, [&](auto& record) {
    Decode(reception, messageId, record);
    record.Received = clock.NowLocal();
  });
}

}  // namespace fathomline
