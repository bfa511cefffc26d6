#include "watch/signal_tables.h"

#include <array>

#include "base/numbers.h"

namespace fathomline {
namespace {

using S = GnssSystem;

constexpr std::string_view kLetters = "GRECJIS";
static_assert(kLetters.size() == kGnssSystems);

struct Talker {
  std::string_view talker;
  GnssSystem system;
};
constexpr std::array kTalkers = std::to_array<Talker>({{"GP", S::GPS},
                                                       {"GL", S::GLONASS},
                                                       {"GA", S::Galileo},
                                                       {"GB", S::BeiDou},
                                                       {"BD", S::BeiDou},
                                                       {"GQ", S::QZSS},
                                                       {"QZ", S::QZSS},
                                                       {"GI", S::NavIC}});

constexpr std::array kSystemIds = {S::GPS, S::GLONASS, S::Galileo, S::BeiDou, S::QZSS, S::NavIC};

// Numbers first to last are the satellites of `satellites` from `number` on.
struct Range {
  int first;
  int last;
  GnssSystem satellites;
  int number;
};

// What holds whoever says it.
constexpr std::array kShared = std::to_array<Range>({{33, 64, S::SBAS, 20},
                                                     {65, 96, S::GLONASS, 1},
                                                     {120, 158, S::SBAS, 20},
                                                     {193, 202, S::QZSS, 1},
                                                     {301, 336, S::Galileo, 1},
                                                     {401, 463, S::BeiDou, 1}});

struct OwnRange {
  GnssSystem system;
  Range range;
};
// What goes before that in the sentences of a system. Numbers of BeiDou above a hundred are those
// of receivers that keep clear of the other systems.
constexpr std::array kOwn = std::to_array<OwnRange>({{S::GPS, {1, 32, S::GPS, 1}},
                                                     {S::GLONASS, {1, 32, S::GLONASS, 1}},
                                                     {S::GLONASS, {97, 99, S::GLONASS, 33}},
                                                     {S::Galileo, {1, 63, S::Galileo, 1}},
                                                     {S::BeiDou, {1, 63, S::BeiDou, 1}},
                                                     {S::BeiDou, {101, 163, S::BeiDou, 1}},
                                                     {S::BeiDou, {201, 263, S::BeiDou, 1}},
                                                     {S::QZSS, {1, 10, S::QZSS, 1}},
                                                     {S::NavIC, {1, 32, S::NavIC, 1}}});

constexpr std::optional<SatelliteId> Within(const Range& range, int number) {
  if (number < range.first || number > range.last) return {};
  return SatelliteId{range.satellites, range.number + number - range.first};
}

constexpr bool RangesFit() {
  for (const Range& range : kShared) {
    if (range.number + range.last - range.first > kHighestSatellite) return false;
  }
  for (const OwnRange& own : kOwn) {
    if (own.range.number + own.range.last - own.range.first > kHighestSatellite) return false;
  }
  return true;
}
static_assert(RangesFit());

struct Signal {
  GnssSystem system;
  int id;
  std::string_view name;
};
constexpr std::array kSignals = std::to_array<Signal>({
    {S::GPS, 1, "L1 C/A"},    {S::GPS, 2, "L1 P(Y)"},    {S::GPS, 3, "L1 M"},
    {S::GPS, 4, "L2 P(Y)"},   {S::GPS, 5, "L2C-M"},      {S::GPS, 6, "L2C-L"},
    {S::GPS, 7, "L5-I"},      {S::GPS, 8, "L5-Q"},       {S::GLONASS, 1, "G1 C/A"},
    {S::GLONASS, 2, "G1 P"},  {S::GLONASS, 3, "G2 C/A"}, {S::GLONASS, 4, "G2 P"},
    {S::Galileo, 1, "E5a"},   {S::Galileo, 2, "E5b"},    {S::Galileo, 3, "E5 a+b"},
    {S::Galileo, 4, "E6-A"},  {S::Galileo, 5, "E6-BC"},  {S::Galileo, 6, "E1-A"},
    {S::Galileo, 7, "E1-BC"}, {S::BeiDou, 1, "B1I"},     {S::BeiDou, 2, "B1Q"},
    {S::BeiDou, 3, "B1C"},    {S::BeiDou, 4, "B1A"},     {S::BeiDou, 5, "B2a"},
    {S::BeiDou, 6, "B2b"},    {S::BeiDou, 7, "B2 a+b"},  {S::BeiDou, 8, "B3I"},
    {S::BeiDou, 9, "B3Q"},    {S::BeiDou, 10, "B3A"},    {S::BeiDou, 11, "B2I"},
    {S::BeiDou, 12, "B2Q"},   {S::QZSS, 1, "L1 C/A"},    {S::QZSS, 2, "L1C (D)"},
    {S::QZSS, 3, "L1C (P)"},  {S::QZSS, 4, "L1S"},       {S::QZSS, 5, "L2C-M"},
    {S::QZSS, 6, "L2C-L"},    {S::QZSS, 7, "L5-I"},      {S::QZSS, 8, "L5-Q"},
    {S::QZSS, 9, "L6D"},      {S::QZSS, 10, "L6E"},      {S::NavIC, 1, "L5-SPS"},
    {S::NavIC, 2, "S-SPS"},   {S::NavIC, 3, "L5-RS"},    {S::NavIC, 4, "S-RS"},
    {S::NavIC, 5, "L1-SPS"},
});

constexpr bool SignalsStandInOrder() {
  for (std::size_t i = 1; i < kSignals.size(); ++i) {
    const Signal& before = kSignals[i - 1];
    const Signal& here = kSignals[i];
    const bool follows = here.system == before.system ? here.id == before.id + 1
                                                      : here.system > before.system && here.id == 1;
    if (!follows) return false;
  }
  return true;
}
static_assert(SignalsStandInOrder());

}  // namespace

std::string NameOf(SatelliteId satellite) {
  std::string name(1, kLetters[static_cast<std::size_t>(satellite.system)]);
  if (satellite.number < 10) name += '0';
  return name + PlainText(std::int32_t{satellite.number});
}

std::optional<GnssSystem> SystemOfTalker(std::string_view talker) {
  for (const Talker& row : kTalkers) {
    if (row.talker == talker) return row.system;
  }
  return {};
}

std::optional<GnssSystem> SystemOfId(int systemId) {
  if (systemId < 1 || systemId > static_cast<int>(kSystemIds.size())) return {};
  return kSystemIds[static_cast<std::size_t>(systemId - 1)];
}

std::optional<SatelliteId> SatelliteOf(std::optional<GnssSystem> system, int number) {
  for (const OwnRange& own : kOwn) {
    if (own.system != system) continue;
    if (const auto satellite = Within(own.range, number)) return satellite;
  }
  for (const Range& range : kShared) {
    if (const auto satellite = Within(range, number)) return satellite;
  }
  return {};
}

std::string SignalName(GnssSystem system, int id) {
  if (id == 0) return "not told";
  if (system == S::SBAS) system = S::GPS;
  for (const Signal& signal : kSignals) {
    if (signal.system == system && signal.id == id) return std::string(signal.name);
  }
  return "signal " + PlainText(std::int32_t{id});
}

}  // namespace fathomline
