#include "analysis/statistics.h"

#include <cmath>
#include <tuple>
#include <type_traits>

#include "analysis/geodesy.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

// Height, and the heading and attitude before they are wrapped. Raises Overflow.
float Difference(float value, float reference) {
  return value == NoValue ? NoValue : SingleDifference(value, reference);
}

float WrapDegrees(float difference) {
  if (difference == NoValue) return difference;
  if (difference > 180.0F) return difference - 360.0F;
  if (difference < -180.0F) return difference + 360.0F;
  return difference;
}

float Limited(float difference, float limit) {
  return std::abs(difference) > limit ? NoValue : difference;
}

// Reads a quantity from whichever of its two sources it belongs to.
template <class Record>
struct Source {
  const Record& record;
  const Deviations& deviations;

  template <class Member>
  float Value(Member Record::*member) const {
    return static_cast<float>(record.*member);
  }
  float Value(float Deviations::*member) const { return deviations.*member; }
};

template <class Record>
void AccumulateQuantities(SystemStatistics& statistics, const Record& record, const Stamp& stamp) {
  const Source<Record> source{record, statistics.Present};
  auto* stat = statistics.Of<Record>().data();
  std::apply(
      [&](const auto&... row) {
        (AccumulateDeviation(source.Value(row.member), *stat++, stamp), ...);
      },
      QuantitiesOf<Record>::kRows);
}

}  // namespace

std::span<const DeviationStat> SystemStatistics::Of(SentenceType type) const {
  std::span<const DeviationStat> found;
  const auto look = [&]<class Record>(const Figures<Record>& figures) {
    if (kTypeOf<Record> == type) found = figures.Stats;
  };
  std::apply([&](const auto&... figures) { (look(figures), ...); }, Sentences);
  return found;
}

void SystemStatistics::Reset() {
  ResetDoubleStat(LatitudeMean);
  ResetDoubleStat(LongitudeMean);
  for (SingleStat* mean : {&HeightMean, &HeadingMean, &PitchMean, &RollMean}) {
    ResetSingleStat(*mean);
  }
  const auto resetAll = [](auto& figures) {
    for (DeviationStat& stat : figures.Stats) ResetDeviationStat(stat);
  };
  std::apply([&](auto&... figures) { (resetAll(figures), ...); }, Sentences);
  ResetSNRStat(SatellitesInView);
}

void Statistics::AccumulateStatistics(int system, SentenceType type, std::string_view messageTime) {
  if (!records_.CommSetups[system].Analyses(type)) return;
  const Stamp stamp{messageTime, clock_};
  if (type == SentenceType::GSV) return AccumulateGSV(system, stamp);
  const SystemMessages& messages = records_.Messages[system];
  SystemStatistics& statistics = systems_[system];
  const auto take = [&]<class Record>(const Figures<Record>&) {
    if (kTypeOf<Record> != type) return false;
    const Record& record = (messages.*kSentenceOf<Record>.message).Record;
    if (Prepare(system, record)) {
      // Of these two the figures carry the sentence's own time.
      if constexpr (std::is_same_v<Record, GGARecord> || std::is_same_v<Record, GNSRecord>) {
        AccumulateQuantities(statistics, record, {record.Time, clock_});
      } else {
        AccumulateQuantities(statistics, record, stamp);
      }
    }
    return true;
  };
  std::apply([&](const auto&... figures) { (take(figures) || ...); }, statistics.Sentences);
}

// A position at exactly 0, 0 is an empty field, not a place.
void Statistics::SetPositionDeviation(int system, double latitude, double longitude, bool usable) {
  Deviations& present = systems_[system].Present;
  if (!usable || (latitude == 0.0 && longitude == 0.0) || latitude == NoValue) {
    present.dRad = present.dN = present.dE = NoValue;
    return;
  }
  const ReferenceSetup& reference = records_.References[system];
  const NorthEast difference = DifferenceToNorthEast(
      reference.ReferenceLatitude, reference.ReferenceLongitude, latitude, longitude);
  present.dN = difference.North;
  present.dE = difference.East;
  const double north = difference.North;
  const double east = difference.East;
  present.dRad = ToSingle(std::sqrt(east * east + north * north));
}

bool Statistics::Prepare(int system, const GGARecord& record) {
  SetPositionDeviation(system, record.Latitude, record.Longitude, record.Quality != 0);
  systems_[system].Present.dHgt =
      Difference(record.Altitude, records_.References[system].ReferenceHeight);
  return record.Quality >= 1;
}

bool Statistics::Prepare(int system, const GNSRecord& record) {
  const bool fix = record.Mode != "NN";
  SetPositionDeviation(system, record.Latitude, record.Longitude, fix);
  systems_[system].Present.dHgt =
      Difference(record.Altitude, records_.References[system].ReferenceHeight);
  return fix;
}

bool Statistics::Prepare(int system, const GLLRecord& record) {
  if (record.Status != 'A') return false;
  SetPositionDeviation(system, record.Latitude, record.Longitude, true);
  return true;
}

bool Statistics::Prepare(int system, const RMCRecord& record) {
  if (record.Status != "A") return false;
  SetPositionDeviation(system, record.Latitude, record.Longitude, true);
  return true;
}

bool Statistics::Prepare(int system, const HDTRecord& record) {
  systems_[system].Present.deltaHdg =
      WrapDegrees(Difference(record.Heading, records_.References[system].ReferenceHeading));
  return true;
}

bool Statistics::Prepare(int system, const ATTRecord& record) {
  const ReferenceSetup& reference = records_.References[system];
  const float limit = records_.OutlierLimit;
  Deviations& present = systems_[system].Present;
  present.deltaHdg =
      Limited(WrapDegrees(Difference(record.Heading, reference.ReferenceHeading)), limit);
  present.deltaPitch = Limited(Difference(record.Pitch, reference.ReferencePitch), limit);
  present.deltaRoll = Limited(Difference(record.Roll, reference.ReferenceRoll), limit);
  return true;
}

void Statistics::AccumulateGSV(int system, const Stamp& stamp) {
  const GSVRecord& record = records_.Messages[system].GSV.Record;
  SystemStatistics& statistics = systems_[system];
  if (record.MessageNumber == record.MessageCount) {
    AccumulateSNR(record.SatellitesInView, statistics.SatellitesInView, stamp);
  }
  for (std::size_t slot = 0; slot < record.PRN.size(); ++slot) {
    const int prn = record.PRN[slot];
    for (std::size_t g = 0; g < kSatelliteGroups.size(); ++g) {
      const SatelliteGroup& group = kSatelliteGroups[g];
      if (prn < group.From || prn > group.To) continue;
      if (prn < group.FirstPRN) Raise(FaultNumber::OutOfRange);
      AccumulateSNR(record.SNR[slot],
                    statistics.Satellites[g][static_cast<std::size_t>(prn - group.FirstPRN)],
                    stamp);
    }
  }
}

}  // namespace fathomline
