// The latest message of each id of one system, and its decoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

#include "ais/application_records.h"
#include "ais/message_ids.h"
#include "ais/position_records.h"
#include "ais/service_records.h"
#include "ais/static_records.h"
#include "base/clock.h"

namespace fathomline {

struct AISMessages {
  AISPositionReport Id1;
  AISPositionReport Id2;
  AISPositionReport Id3;
  AISBaseStationReport Id4;
  AISStaticVoyageData Id5;
  AISBinaryRecord Id6;
  AISReceptionTime Id7;
  AISBinaryRecord Id8;
  AISSARReport Id9;
  AISUTCInquiry Id10;
  AISReceptionTime Id11;
  AISSafetyText Id12;
  AISReceptionTime Id13;
  AISBroadcastText Id14;
  AISReceptionTime Id15;
  AISAssignmentCommand Id16;
  AISDGNSSBroadcast Id17;
  AISClassBPosition Id18;
  AISClassBExtended Id19;
  AISDataLinkManagement Id20;
  AISAidToNavigation Id21;
  AISChannelManagement Id22;
  AISGroupAssignment Id23;
  AISStaticDataReport Id24;
  AISMultiSlotRecord Id25;
  AISMultiSlotRecord Id26;
  AISLongRangeBroadcast Id27;

  // The records in the order of their ids, from 1.
  static constexpr auto Members() {
    using M = AISMessages;
    return std::tuple{&M::Id1,  &M::Id2,  &M::Id3,  &M::Id4,  &M::Id5,  &M::Id6,  &M::Id7,
                      &M::Id8,  &M::Id9,  &M::Id10, &M::Id11, &M::Id12, &M::Id13, &M::Id14,
                      &M::Id15, &M::Id16, &M::Id17, &M::Id18, &M::Id19, &M::Id20, &M::Id21,
                      &M::Id22, &M::Id23, &M::Id24, &M::Id25, &M::Id26, &M::Id27};
  }
};

static_assert(std::tuple_size_v<decltype(AISMessages::Members())> == kAISMessageIds);

// Calls visit(record) with the record of an id from 1 to 27; any other id has none. Every record
// can be walked with VisitFields.
template <class Messages, class Visitor>
void VisitMessage(Messages& messages, int id, Visitor&& visit) {
  [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    static constexpr auto members = AISMessages::Members();
    const auto index = static_cast<std::size_t>(id - 1);
    static_cast<void>(
        ((index == Index && (visit(messages.*std::get<Index>(members)), true)) || ...));
  }
  (std::make_index_sequence<static_cast<std::size_t>(kAISMessageIds)>{});
}

// Unpacks an assembled payload, stores the message's id, 0 to 63, and fills the record of that id.
// No payload is too short or too long: bits that are missing read as zero, and those beyond the
// first 168 characters are passed over. `binaryStandardIALA` says that the function identifiers of
// binary messages are those of the IALA proposal, not of IMO 236. Raises OutOfRange where an id 17
// asks for more correction blocks than its record holds.
void DecodeAISPayload(std::string_view assembly, std::int16_t fillBits, bool binaryStandardIALA,
                      const Clock& clock, AISMessages& messages, std::int16_t& messageId);

}  // namespace fathomline
