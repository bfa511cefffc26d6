// The format language of numbers.
#pragma once

#include <string>
#include <string_view>

namespace fathomline {

// A number through a picture: "0" a digit that is always shown, "#" one shown only where it is
// significant, "." the point, "%" multiplies by 100 and stands as itself; anything else stands for
// itself ("#0.00 m"). Rounds half away from zero on the exact binary value; a negative number that
// rounds to zero keeps its minus sign, which stands in front of everything else.
std::string Format(double value, std::string_view picture);

}  // namespace fathomline
