// The ids of AIS messages (ITU-R M.1371).
#pragma once

namespace fathomline {

// Ids are 1 to this; a payload may name others, up to 63, which carry nothing.
inline constexpr int kAISMessageIds = 27;

}  // namespace fathomline
