#include "ais/position_records.h"

#include <cstdlib>

namespace fathomline {

float RateOfTurn(int raw) {
  const int size = std::abs(raw);
  if (size == 128) return NoValue;
  const double rate = size == 127 ? 720.0 : (size / 4.733) * (size / 4.733);
  return static_cast<float>(raw < 0 ? -rate : rate);
}

}  // namespace fathomline
