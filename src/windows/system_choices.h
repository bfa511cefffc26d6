// A combo box of the systems that are enabled, in windows that stand for all of them.
#pragma once

#include <string_view>

#include "records/records.h"
#include "toolkit/choices.h"

namespace fathomline {

// Brings the entries in line with the records: "2 - Gyro", with the number of the system as data.
// `all`, where it is not empty, is an entry in front with data 0. What was chosen stays chosen; the
// first entry is where it has gone. Returns whether the choice is another one.
bool ShowSystems(Choices& combo, const Records& records, std::string_view all);

}  // namespace fathomline
