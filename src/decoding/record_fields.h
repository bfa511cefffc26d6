// One walk over the fields of a decoded record, for everything that treats all records alike.
//
// A record lists its fields once, in `static constexpr auto Layout()`: a tuple whose elements each
// have a `name` and a `member` (a pointer to member) beside whatever its decoder needs to fill it.
#pragma once

#include <tuple>

namespace fathomline {

// Calls visit(name, value) for each field of the record, in the order of its layout.
template <class Record, class Visitor>
void VisitFields(const Record& record, Visitor&& visit) {
  std::apply([&](const auto&... field) { (visit(field.name, record.*(field.member)), ...); },
             Record::Layout());
}

}  // namespace fathomline
