#pragma once

namespace fathomline {

// COM1 to COM16.
inline constexpr int kSerialPorts = 16;

}  // namespace fathomline
