// What is known of each satellite in view, by system and slot; the slot is the satellite's PRN.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/datetime.h"
#include "base/fault.h"
#include "base/look.h"
#include "records/records.h"

namespace fathomline {

inline constexpr int kLastSlot = 151;
// The slots beyond have no window of their own.
inline constexpr int kLastSatelliteWindow = 149;

struct Satellite {
  bool Used = false;           // stands in the last GSA
  std::int16_t Channel = 0;    // row of the tracking table
  std::int16_t Elevation = 0;  // degrees, 0 when not in view
  std::int16_t ElevationPrev = 0;
  char ElevationTrend = ' ';  // 'u' or 'd'
  std::int16_t Azimuth = 0;   // degrees
  std::int16_t AzimuthPrev = 0;
  char AzimuthTrend = ' ';  // '>' or '<'
  std::int16_t SNR = 0;     // dB
  DateTime LastDrawn;       // of the computer, UTC; 0 before the first time
  fathomline::Colour Colour = 0;
};

constexpr bool IsSlot(int prn) {
  return prn >= 1 && prn <= kLastSlot;
}

class SatelliteTable {
 public:
  SatelliteTable() {
    for (auto& slots : systems_) {
      for (int slot = 0; slot <= kLastSlot; ++slot) {
        slots[static_cast<std::size_t>(slot)].Colour = SatelliteColour(slot);
      }
    }
  }

  // Slots 1 to kLastSlot; raises OutOfRange beyond.
  Satellite& operator()(int system, int slot) { return systems_[system][Index(slot)]; }
  const Satellite& operator()(int system, int slot) const { return systems_[system][Index(slot)]; }

 private:
  static std::size_t Index(int slot) {
    if (!IsSlot(slot)) Raise(FaultNumber::OutOfRange);
    return static_cast<std::size_t>(slot);
  }

  PerSystem<std::array<Satellite, kLastSlot + 1>> systems_;
};

}  // namespace fathomline
