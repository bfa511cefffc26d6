// The envelopes of the binary AIS messages and the choice of what their application data means.
#pragma once

#include "ais/application_records.h"

namespace fathomline {

// Each reads the envelope of its id, decodes the application data that the function identifier
// names, and leaves a line about the message in `Description`. The identifiers are those of IMO
// SN/Circ.236 or of the IALA proposal, as the reception says; the area code plays no part.
void DecodeAddressedBinary(const AISReception& reception, AISBinaryRecord& record);        // id 6
void DecodeBroadcastBinary(const AISReception& reception, AISBinaryRecord& record);        // id 8
void DecodeAddressedMultiSlot(const AISReception& reception, AISMultiSlotRecord& record);  // id 25
void DecodeBroadcastMultiSlot(const AISReception& reception, AISMultiSlotRecord& record);  // id 26

}  // namespace fathomline
