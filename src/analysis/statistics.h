// All running figures of all systems, and the tables that say which quantities they are of.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "analysis/running_statistics.h"
#include "records/records.h"

namespace fathomline {

// The present deviations of a system from its reference; NoValue where one could not be formed.
// Metres for the first four, degrees for the angles. Each sentence overwrites what it computes.
struct Deviations {
  float dRad = 0.0F;  // horizontal
  float dN = 0.0F;
  float dE = 0.0F;
  float dHgt = 0.0F;
  float deltaHdg = 0.0F;
  float deltaPitch = 0.0F;
  float deltaRoll = 0.0F;
};

// One quantity of a sentence: its name, and the member of the decoded record or of the deviations
// that it is read from.
template <class Source, class Member>
struct Quantity {
  std::string_view name;
  Member Source::*member;
};
template <class Source, class Member>
Quantity(const char*, Member Source::*) -> Quantity<Source, Member>;

// Which quantities are kept for a sentence, in the order of their records.
template <class Record>
struct QuantitiesOf;

template <>
struct QuantitiesOf<GGARecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"dRad", &Deviations::dRad},
                 Quantity{"dN", &Deviations::dN},
                 Quantity{"dE", &Deviations::dE},
                 Quantity{"dHgt", &Deviations::dHgt},
                 Quantity{"GeoidalSeparation", &GGARecord::GeoidalSeparation},
                 Quantity{"Quality", &GGARecord::Quality},
                 Quantity{"Satellites", &GGARecord::Satellites},
                 Quantity{"HDOP", &GGARecord::HDOP},
                 Quantity{"DGPSAge", &GGARecord::DGPSAge}};
};

template <>
struct QuantitiesOf<GNSRecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"dRad", &Deviations::dRad},
                 Quantity{"dN", &Deviations::dN},
                 Quantity{"dE", &Deviations::dE},
                 Quantity{"dHgt", &Deviations::dHgt},
                 Quantity{"GeoidalSeparation", &GNSRecord::GeoidalSeparation},
                 Quantity{"Satellites", &GNSRecord::Satellites},
                 Quantity{"HDOP", &GNSRecord::HDOP},
                 Quantity{"DGPSAge", &GNSRecord::DGPSAge}};
};

template <>
struct QuantitiesOf<GLLRecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"dRad", &Deviations::dRad}, Quantity{"dN", &Deviations::dN},
                 Quantity{"dE", &Deviations::dE}};
};

template <>
struct QuantitiesOf<RMCRecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"dRad", &Deviations::dRad}, Quantity{"dN", &Deviations::dN},
                 Quantity{"dE", &Deviations::dE}, Quantity{"SOG", &RMCRecord::SOG},
                 Quantity{"COG", &RMCRecord::COG}};
};

template <>
struct QuantitiesOf<VTGRecord> {
  static constexpr auto kRows = std::tuple{Quantity{"SOGKnots", &VTGRecord::SOGKnots},
                                           Quantity{"COGTrue", &VTGRecord::COGTrue}};
};

template <>
struct QuantitiesOf<HDTRecord> {
  static constexpr auto kRows = std::tuple{Quantity{"deltaHdg", &Deviations::deltaHdg}};
};

template <>
struct QuantitiesOf<ATTRecord> {
  static constexpr auto kRows = std::tuple{Quantity{"deltaHdg", &Deviations::deltaHdg},
                                           Quantity{"deltaPitch", &Deviations::deltaPitch},
                                           Quantity{"deltaRoll", &Deviations::deltaRoll}};
};

template <>
struct QuantitiesOf<ROTRecord> {
  static constexpr auto kRows = std::tuple{Quantity{"RateOfTurn", &ROTRecord::RateOfTurn}};
};

template <>
struct QuantitiesOf<VHWRecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"SpeedKnots", &VHWRecord::SpeedKnots},
                 Quantity{"HeadingTrue", &VHWRecord::HeadingTrue},
                 Quantity{"HeadingMagnetic", &VHWRecord::HeadingMagnetic}};
};

template <>
struct QuantitiesOf<DBTRecord> {
  static constexpr auto kRows = std::tuple{Quantity{"DepthMetres", &DBTRecord::DepthMetres}};
};

template <>
struct QuantitiesOf<GSARecord> {
  static constexpr auto kRows =
      std::tuple{Quantity{"PDOP", &GSARecord::PDOP}, Quantity{"HDOP", &GSARecord::HDOP},
                 Quantity{"VDOP", &GSARecord::VDOP}};
};

template <>
struct QuantitiesOf<GSTRecord> {
  static constexpr auto kRows = std::tuple{
      Quantity{"RMS", &GSTRecord::RMS},         Quantity{"SdMajor", &GSTRecord::SdMajor},
      Quantity{"SdMinor", &GSTRecord::SdMinor}, Quantity{"DirMajor", &GSTRecord::DirMajor},
      Quantity{"SdLat", &GSTRecord::SdLat},     Quantity{"SdLon", &GSTRecord::SdLon},
      Quantity{"SdAlt", &GSTRecord::SdAlt}};
};

template <class Record>
inline constexpr std::size_t kQuantityCount =
    std::tuple_size_v<decltype(QuantitiesOf<Record>::kRows)>;

// The place of the quantity that is read from a member, among those of its sentence. A member of
// which no figures are kept does not compile.
template <class Record, auto Member>
consteval std::size_t PlaceOfQuantity() {
  std::size_t place = 0;
  bool found = false;
  const auto look = [&](auto member) {
    if constexpr (std::is_same_v<decltype(member), std::remove_const_t<decltype(Member)>>) {
      found = found || member == Member;
    }
    if (!found) ++place;
  };
  std::apply([&](const auto&... row) { (look(row.member), ...); }, QuantitiesOf<Record>::kRows);
  if (!found) throw "no figures are kept of this member";
  return place;
}

// The running figures of one sentence type.
template <class Record>
struct Figures {
  std::array<DeviationStat, kQuantityCount<Record>> Stats;
};

// The satellites of a group by PRN: entry k is PRN FirstPRN + k.
struct SatelliteGroup {
  std::string_view Name;
  int FirstPRN;  // the index of a satellite is its PRN less this
  int From;      // the PRNs that are counted here, both inclusive
  int To;
  std::size_t Entries;
};

// The ranges from which an SNR is filed. PRN 64 and PRN 100 fall before the first entry of their
// group, which is a fault.
inline constexpr auto kSatelliteGroups =
    std::to_array<SatelliteGroup>({{"GPS", 1, 1, 32, 32},
                                   {"SBAS", 33, 33, 63, 32},
                                   {"GLONASS", 65, 64, 99, 46},
                                   {"BeiDou", 101, 100, 149, 50}});

struct SystemStatistics {
  DoubleStat LatitudeMean;   // radians
  DoubleStat LongitudeMean;  // radians
  SingleStat HeightMean;     // metres
  SingleStat HeadingMean;    // degrees, and the two below
  SingleStat PitchMean;
  SingleStat RollMean;
  Deviations Present;

  std::tuple<Figures<GGARecord>, Figures<GNSRecord>, Figures<GLLRecord>, Figures<RMCRecord>,
             Figures<VTGRecord>, Figures<HDTRecord>, Figures<ATTRecord>, Figures<ROTRecord>,
             Figures<VHWRecord>, Figures<DBTRecord>, Figures<GSARecord>, Figures<GSTRecord>>
      Sentences;

  SNRStat SatellitesInView;
  std::array<std::array<SNRStat, 50>, kSatelliteGroups.size()> Satellites;

  template <class Record>
  std::array<DeviationStat, kQuantityCount<Record>>& Of() {
    return std::get<Figures<Record>>(Sentences).Stats;
  }
  template <class Record>
  const std::array<DeviationStat, kQuantityCount<Record>>& Of() const {
    return std::get<Figures<Record>>(Sentences).Stats;
  }

  // The figures of one quantity: Of<GGARecord, &GGARecord::HDOP>(), Of<GGARecord,
  // &Deviations::dRad>().
  template <class Record, auto Member>
  const DeviationStat& Of() const {
    return std::get<PlaceOfQuantity<Record, Member>()>(Of<Record>());
  }

  // The figures of a type, empty for one that has none.
  std::span<const DeviationStat> Of(SentenceType type) const;

  // Calls visit(type, name, stat) for every DeviationStat.
  template <class Visitor>
  void Visit(Visitor&& visit) const {
    std::apply([&](const auto&... figures) { (VisitFigures(figures, visit), ...); }, Sentences);
  }

  // Everything but the records of single satellites, which run for the life of the program.
  void Reset();

 private:
  template <class Record, class Visitor>
  static void VisitFigures(const Figures<Record>& figures, Visitor& visit) {
    std::size_t i = 0;
    std::apply(
        [&](const auto&... row) { (visit(kTypeOf<Record>, row.name, figures.Stats[i++]), ...); },
        QuantitiesOf<Record>::kRows);
  }
};

// Where the figures of one quantity are, of whichever system: what tables hold.
using StatSource = const DeviationStat& (*)(const SystemStatistics& statistics);
template <class Record, auto Member>
const DeviationStat& StatOf(const SystemStatistics& statistics) {
  return statistics.Of<Record, Member>();
}

// What is kept of every sentence with a position.
struct PositionStats {
  SentenceType type;
  StatSource dRad;
  StatSource dN;
  StatSource dE;
};
template <class Record>
constexpr PositionStats PositionStatsOf() {
  return {kTypeOf<Record>, StatOf<Record, &Deviations::dRad>, StatOf<Record, &Deviations::dN>,
          StatOf<Record, &Deviations::dE>};
}
inline constexpr auto kPositionStats =
    std::to_array<PositionStats>({PositionStatsOf<GGARecord>(), PositionStatsOf<GNSRecord>(),
                                  PositionStatsOf<GLLRecord>(), PositionStatsOf<RMCRecord>()});
// None for a type without a position.
constexpr const PositionStats* FindPositionStats(SentenceType type) {
  for (const PositionStats& row : kPositionStats) {
    if (row.type == type) return &row;
  }
  return nullptr;
}

// The figures of the four systems, and the step that feeds them from the decoded records.
class Statistics {
 public:
  Statistics(const Records& records, const Clock& clock) : records_(records), clock_(clock) {}

  SystemStatistics& operator[](int system) { return systems_[system]; }
  const SystemStatistics& operator[](int system) const { return systems_[system]; }
  auto begin() { return systems_.begin(); }
  auto end() { return systems_.end(); }

  // Takes the latest sentence of a type into the figures, where the type is analysed and the
  // sentence is good. `messageTime` is the sentence time as "hh:mm:ss", the stamp of all types
  // that carry no time in their record. Raises OutOfRange for a GSV with PRN 64 or 100.
  void AccumulateStatistics(int system, SentenceType type, std::string_view messageTime);

 private:
  // Forms the present deviations that a sentence gives; false where it is not good enough for the
  // figures.
  bool Prepare(int system, const GGARecord& record);
  bool Prepare(int system, const GNSRecord& record);
  bool Prepare(int system, const GLLRecord& record);
  bool Prepare(int system, const RMCRecord& record);
  bool Prepare(int system, const HDTRecord& record);
  bool Prepare(int system, const ATTRecord& record);
  static bool Prepare(int /*system*/, const ROTRecord& record) { return record.Status == 'A'; }
  template <class Record>
  static bool Prepare(int /*system*/, const Record& /*record*/) {
    return true;
  }
  void AccumulateGSV(int system, const Stamp& stamp);
  void SetPositionDeviation(int system, double latitude, double longitude, bool usable);

  const Records& records_;
  const Clock& clock_;
  PerSystem<SystemStatistics> systems_;
};

}  // namespace fathomline
