#pragma once

#include <string>
#include <string_view>

#include "decoding/checksum.h"

namespace fathomline {

// "$GPGGA,..." from "GPGGA,...", with its checksum.
inline std::string Sentence(std::string_view body, char start = '$') {
  std::string text(1, start);
  text.append(body).append("*");
  return text.append(std::string_view(ComputeChecksum(text)));
}

}  // namespace fathomline
