// Positions and bearings as the user types them.
//
// Degrees, minutes and seconds with or without their marks, a decimal comma or point in the last
// one, a minus in front or a hemisphere letter behind. A parser refuses nothing: what cannot stand
// is repaired and told in a message box. The text is rewritten in its normal form. Text that holds
// a number beyond its width is told too, stays as it is, and gives 0.
//
// The type is "LAT", "LON" or, for ParseCoordinateDM, "BRG", in either case. Results are degrees,
// south and west negative.
#pragma once

#include <string>
#include <string_view>

#include "base/dialogs.h"

namespace fathomline {

// Degrees, minutes and seconds; rewritten as 59°30'12.2500"N.
double ParseCoordinateDMS(std::string& text, std::string_view type, Dialogs& dialogs);

// Degrees and minutes; rewritten by FormatCoordinateDM with the given decimals. A bearing comes
// back within 0 to 360.
double ParseCoordinateDM(std::string& text, std::string_view type, int decimals, Dialogs& dialogs);

}  // namespace fathomline
