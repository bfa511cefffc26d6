// One walk over the fields of a decoded record, for everything that treats all records alike.
//
// A record lists its fields once, in `static constexpr auto Layout()`: a tuple whose elements each
// have a `name` and a `member` (a pointer to member) beside whatever its decoder needs to fill it.
#pragma once

#include <tuple>

#include "base/text.h"

namespace fathomline {

// Calls visit(name, value) for each field of the record, in the order of its layout. A field of
// bytes, marked by `kBytes`, is given as the text that they are in Latin-1.
template <class Record, class Visitor>
void VisitFields(const Record& record, Visitor&& visit) {
  const auto visitOne = [&](const auto& field) {
    const auto& value = record.*(field.member);
    if constexpr (requires { field.kBytes; }) {
      visit(field.name, FromLatin1(value));
    } else {
      visit(field.name, value);
    }
  };
  std::apply([&](const auto&... field) { (visitOne(field), ...); }, Record::Layout());
}

}  // namespace fathomline
