// Named reference positions, in one file that all systems share.
//
// One position a line: name in double quotes, latitude and longitude in radians, height in metres
// above mean sea level; the values as in a setup file. The name is the key, compared exactly and as
// the file has it. Blank lines are passed over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/dialogs.h"

namespace fathomline {

struct ReferencePosition {
  std::string name;
  double latitude = 0.0;   // radians
  double longitude = 0.0;  // radians
  float height = 0.0F;     // metres
};

// In the program folder.
inline constexpr std::string_view kReferenceFileName = "Reference Positions.txt";
inline constexpr std::string_view kReferenceBufferName = "BufferFile.txt";

// The positions in the order of the file; none where there is no file. A line that cannot be read
// is told in a box, and the list ends before it.
std::vector<ReferencePosition> ReadReferencePositions(const std::string& programFolder,
                                                      Dialogs& dialogs);

// Puts the position in place of every line of its name, with a box for each, or at the end where
// there is none. The file is written beside the old one and renamed over it. Raises the fault of
// the file.
void StoreReferencePosition(const std::string& programFolder, const ReferencePosition& position,
                            Dialogs& dialogs);

}  // namespace fathomline
