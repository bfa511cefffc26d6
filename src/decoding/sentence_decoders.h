// The decoder: one sentence in, its record filled from its layout.
//
// It judges nothing: no status, unit, quality, range or checksum is looked at. It consumes its
// sentence: what it did not cut off is left in the argument. A field that cannot be stored (a
// number too large for its width) keeps its old value and the rest is still decoded; for GSA, GSV
// and GST that is passed over in silence, for all others a message box tells it.
#pragma once

#include <string_view>

#include "base/dialogs.h"
#include "decoding/sentence_records.h"

namespace fathomline {

// For every record of sentence_records.h.
template <class Record>
void Extract(std::string_view& sentence, Record& record, Dialogs& dialogs);

// Radians from "ddmm.mm" or "dddmm.mm"; negative if the hemisphere is exactly "S" or "W".
double LatitudeFromText(std::string_view text, std::string_view hemisphere);
double LongitudeFromText(std::string_view text, std::string_view hemisphere);

// NoValue for the empty text, otherwise the lenient reading.
double ValueOrNoValue(std::string_view text);

}  // namespace fathomline
