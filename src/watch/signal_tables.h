// The constellations of satellites, how receivers number their satellites, and the signals that
// they send. Talkers, system ids, ranges of numbers and signal ids are those of NMEA 0183 version
// 4.11 (sentences GSA and GSV); beside them stand numberings that receivers really use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fathomline {

// In the order of the table of colours and marks.
enum class GnssSystem : std::uint8_t { GPS, GLONASS, Galileo, BeiDou, QZSS, NavIC, SBAS };
inline constexpr std::size_t kGnssSystems = 7;

// A satellite by the number within its own system: G07, R12 (the slot), J02 (PRN 194), S20 (PRN
// 120), as receivers of today and RINEX files name them.
struct SatelliteId {
  GnssSystem system = GnssSystem::GPS;
  int number = 0;  // 1 to kHighestSatellite

  // NOLINTNEXTLINE(modernize-use-nullptr)
  constexpr auto operator<=>(const SatelliteId&) const = default;
};
inline constexpr int kHighestSatellite = 63;

// "G07".
std::string NameOf(SatelliteId satellite);

// The system of a talker: GP, GL, GA, GB or BD, GQ or QZ, GI. None for GN and all others.
std::optional<GnssSystem> SystemOfTalker(std::string_view talker);
// The system of a system id of GSA, 1 to 6.
std::optional<GnssSystem> SystemOfId(int systemId);

// The satellite that a sentence of a system means by a number. Without a system, by the ranges that
// no two systems share. None for a number that means nothing there.
std::optional<SatelliteId> SatelliteOf(std::optional<GnssSystem> system, int number);

// A signal by its id in GSV: "L1 C/A"; "not told" for id 0, "signal 9" for one that has no name.
// SBAS has the signals of GPS.
std::string SignalName(GnssSystem system, int id);

}  // namespace fathomline
