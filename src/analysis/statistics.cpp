#include "analysis/statistics.h"

#include <cmath>

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
    if (QuantitiesOf<Record>::kType == type) found = figures.Stats;
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
  const SystemMessages& messages = records_.Messages[system];
  SystemStatistics& statistics = systems_[system];
  const Stamp stamp{messageTime, clock_};
  switch (type) {
    case SentenceType::GGA:
      return AccumulateGGA(system);
    case SentenceType::GNS:
      return AccumulateGNS(system);
    case SentenceType::GLL:
      return AccumulateGLL(system, stamp);
    case SentenceType::RMC:
      return AccumulateRMC(system, stamp);
    case SentenceType::VTG:
      return AccumulateQuantities(statistics, messages.VTG.Record, stamp);
    case SentenceType::HDT:
      return AccumulateHDT(system, stamp);
    case SentenceType::ATT:
      return AccumulateATT(system, stamp);
    case SentenceType::ROT:
      if (messages.ROT.Record.Status == 'A') {
        AccumulateQuantities(statistics, messages.ROT.Record, stamp);
      }
      return;
    case SentenceType::VHW:
      return AccumulateQuantities(statistics, messages.VHW.Record, stamp);
    case SentenceType::DBT:
      return AccumulateQuantities(statistics, messages.DBT.Record, stamp);
    case SentenceType::GSA:
      return AccumulateQuantities(statistics, messages.GSA.Record, stamp);
    case SentenceType::GST:
      return AccumulateQuantities(statistics, messages.GST.Record, stamp);
    case SentenceType::GSV:
      return AccumulateGSV(system, stamp);
    default:
      return;
  }
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

void Statistics::AccumulateGGA(int system) {
  const GGARecord& record = records_.Messages[system].GGA.Record;
  SetPositionDeviation(system, record.Latitude, record.Longitude, record.Quality != 0);
  systems_[system].Present.dHgt =
      Difference(record.Altitude, records_.References[system].ReferenceHeight);
  if (record.Quality < 1) return;
  AccumulateQuantities(systems_[system], record, {record.Time, clock_});
}

void Statistics::AccumulateGNS(int system) {
  const GNSRecord& record = records_.Messages[system].GNS.Record;
  const bool fix = record.Mode != "NN";
  SetPositionDeviation(system, record.Latitude, record.Longitude, fix);
  systems_[system].Present.dHgt =
      Difference(record.Altitude, records_.References[system].ReferenceHeight);
  if (!fix) return;
  AccumulateQuantities(systems_[system], record, {record.Time, clock_});
}

void Statistics::AccumulateGLL(int system, const Stamp& stamp) {
  const GLLRecord& record = records_.Messages[system].GLL.Record;
  if (record.Status != 'A') return;
  SetPositionDeviation(system, record.Latitude, record.Longitude, true);
  AccumulateQuantities(systems_[system], record, stamp);
}

void Statistics::AccumulateRMC(int system, const Stamp& stamp) {
  const RMCRecord& record = records_.Messages[system].RMC.Record;
  if (record.Status != "A") return;
  SetPositionDeviation(system, record.Latitude, record.Longitude, true);
  AccumulateQuantities(systems_[system], record, stamp);
}

void Statistics::AccumulateHDT(int system, const Stamp& stamp) {
  const HDTRecord& record = records_.Messages[system].HDT.Record;
  systems_[system].Present.deltaHdg =
      WrapDegrees(Difference(record.Heading, records_.References[system].ReferenceHeading));
  AccumulateQuantities(systems_[system], record, stamp);
}

void Statistics::AccumulateATT(int system, const Stamp& stamp) {
  const ATTRecord& record = records_.Messages[system].ATT.Record;
  const ReferenceSetup& reference = records_.References[system];
  const float limit = records_.OutlierLimit;
  Deviations& present = systems_[system].Present;
  present.deltaHdg =
      Limited(WrapDegrees(Difference(record.Heading, reference.ReferenceHeading)), limit);
  present.deltaPitch = Limited(Difference(record.Pitch, reference.ReferencePitch), limit);
  present.deltaRoll = Limited(Difference(record.Roll, reference.ReferenceRoll), limit);
  AccumulateQuantities(systems_[system], record, stamp);
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
