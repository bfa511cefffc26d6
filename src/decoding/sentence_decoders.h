// The decoders: one sentence in, its record filled.
//
// A decoder judges nothing: no status, unit, quality, range or checksum is looked at. It consumes
// its sentence: what it did not cut off is left in the argument. A field that cannot be stored (a
// number too large for its width) keeps its old value and the rest is still decoded; the decoders
// of GSA, GSV and GST pass that over in silence, all others show a message box.
#pragma once

#include <string_view>

#include "base/dialogs.h"
#include "decoding/sentence_records.h"

namespace fathomline {

void ExtractGGA(std::string_view& sentence, GGARecord& record, Dialogs& dialogs);
void ExtractGNS(std::string_view& sentence, GNSRecord& record, Dialogs& dialogs);
void ExtractGLL(std::string_view& sentence, GLLRecord& record, Dialogs& dialogs);
void ExtractRMC(std::string_view& sentence, RMCRecord& record, Dialogs& dialogs);
void ExtractVTG(std::string_view& sentence, VTGRecord& record, Dialogs& dialogs);
void ExtractZDA(std::string_view& sentence, ZDARecord& record, Dialogs& dialogs);
void ExtractHDT(std::string_view& sentence, HDTRecord& record, Dialogs& dialogs);
void ExtractATT(std::string_view& sentence, ATTRecord& record, Dialogs& dialogs);
void ExtractROT(std::string_view& sentence, ROTRecord& record, Dialogs& dialogs);
void ExtractVHW(std::string_view& sentence, VHWRecord& record, Dialogs& dialogs);
void ExtractDBT(std::string_view& sentence, DBTRecord& record, Dialogs& dialogs);
void ExtractGSA(std::string_view& sentence, GSARecord& record, Dialogs& dialogs);
// A slot with PRN 1 and no elevation is no satellite: its PRN becomes NoValue.
void ExtractGSV(std::string_view& sentence, GSVRecord& record, Dialogs& dialogs);
void ExtractGST(std::string_view& sentence, GSTRecord& record, Dialogs& dialogs);
// With sixteen commas or more the record stays as it was.
void ExtractTTM(std::string_view& sentence, TTMRecord& record, Dialogs& dialogs);
// With seven commas or more the record stays as it was.
void ExtractVDM(std::string_view& sentence, VDMRecord& record, Dialogs& dialogs);

// Radians from "ddmm.mm" or "dddmm.mm"; negative if the hemisphere is exactly "S" or "W".
double LatitudeFromText(std::string_view text, std::string_view hemisphere);
double LongitudeFromText(std::string_view text, std::string_view hemisphere);

// NoValue for the empty text, otherwise the lenient reading.
double ValueOrNoValue(std::string_view text);

}  // namespace fathomline
