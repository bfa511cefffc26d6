// The texts in which the numerics window shows a decoded sentence, one per row of its grid.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "decoding/sentence_records.h"

namespace fathomline {

struct CoordinateForm {
  bool isDMS = false;
  int decimals = 4;
};

// A copy of the latest sentence of a type.
using NumericsRecord =
    std::variant<std::monostate, GGARecord, GNSRecord, GLLRecord, RMCRecord, VTGRecord, ZDARecord,
                 HDTRecord, ATTRecord, ROTRecord, VHWRecord, DBTRecord, GSTRecord>;

// Metres; NoValue where either is. Raises Overflow.
float EllipsoidalHeight(float altitude, float separation);

std::vector<std::string> NumericsValues(const NumericsRecord& record, const CoordinateForm& form);

}  // namespace fathomline
