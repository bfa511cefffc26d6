#include "simulator/instrument_sentences.h"

#include <algorithm>
#include <cmath>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

using enum TruthFigure;

// Standard deviations of what the instruments read.
constexpr double kGyroNoise = 0.10;      // degrees
constexpr double kAttitudeNoise = 0.05;  // degrees
constexpr double kRateNoise = 0.4;       // degrees per minute
constexpr double kLogNoise = 0.06;       // knots
constexpr double kDepthNoise = 0.004;    // of the depth
constexpr double kLostEchoes = 0.01;     // of all soundings
constexpr double kRangeNoise = 0.004;    // nautical miles
constexpr double kBearingNoise = 0.15;   // degrees

constexpr double kMetresPerFoot = 0.3048;
constexpr double kFeetPerFathom = 6.0;

constexpr double kAcquireRange = 5.0;  // nautical miles
constexpr double kLoseRange = 6.0;

double RangeInMiles(MapPoint from, MapPoint to) {
  const double east = to.east - from.east;
  const double north = to.north - from.north;
  return std::sqrt(east * east + north * north) / kMetresPerNauticalMile;
}

}  // namespace

Instruments::Instruments(const Scenario& scenario, std::uint64_t seed)
    : scenario_(scenario),
      gyroRandom_(seed, RandomStream::Gyro),
      attitudeRandom_(seed, RandomStream::Attitude),
      logRandom_(seed, RandomStream::Log),
      sounderRandom_(seed, RandomStream::EchoSounder),
      radarRandom_(seed, RandomStream::Radar) {}

void Instruments::Write(SentenceKind kind, SentenceWriter& writer, const VesselState& vessel,
                        const Traffic& traffic, double seconds, const UtcMoment& moment,
                        SimulationTruth& truth) {
  switch (kind) {
    case SentenceKind::HDT:
      return WriteHDT(writer, vessel, truth);
    case SentenceKind::ROT:
      return WriteROT(writer, vessel, truth);
    case SentenceKind::ATT:
      return WriteATT(writer, vessel, truth);
    case SentenceKind::VHW:
      return WriteVHW(writer, vessel, truth);
    case SentenceKind::DBT:
      return WriteDBT(writer, vessel, truth);
    case SentenceKind::TTM:
      return WriteTTM(writer, vessel, traffic, seconds, moment);
    default:
      return;
  }
}

void Instruments::WriteHDT(SentenceWriter& writer, const VesselState& vessel,
                           SimulationTruth& truth) {
  writer.Begin("$HEHDT");
  const double heading =
      writer.Angle(FullCircle(vessel.heading + kGyroNoise * gyroRandom_.Normal()), 2);
  truth.Note(HDTHeading, heading);
  truth.Note(HDTHeadingError, HalfCircle(heading - vessel.heading));
  writer.Letter('T');
  writer.End();
}

void Instruments::WriteROT(SentenceWriter& writer, const VesselState& vessel,
                           SimulationTruth& truth) {
  writer.Begin("$HEROT");
  truth.Note(ROTRate, writer.Number(vessel.rateOfTurn + kRateNoise * gyroRandom_.Normal(), 1));
  writer.Letter('A');
  writer.End();
}

void Instruments::WriteATT(SentenceWriter& writer, const VesselState& vessel,
                           SimulationTruth& truth) {
  const auto noise = [this] { return kAttitudeNoise * attitudeRandom_.Normal(); };
  writer.Begin("$PFEC,GPatt");
  const double heading = writer.Angle(FullCircle(vessel.heading + noise()), 2);
  const double pitch = writer.Number(vessel.pitch + noise(), 2);
  const double roll = writer.Number(vessel.roll + noise(), 2);
  writer.End();
  truth.Note(ATTHeading, heading);
  truth.Note(ATTHeadingError, HalfCircle(heading - vessel.heading));
  truth.Note(ATTPitch, pitch);
  truth.Note(ATTPitchError, pitch - vessel.pitch);
  truth.Note(ATTRoll, roll);
  truth.Note(ATTRollError, roll - vessel.roll);
}

void Instruments::WriteVHW(SentenceWriter& writer, const VesselState& vessel,
                           SimulationTruth& truth) {
  const double speed = std::max(0.0, vessel.waterSpeed + kLogNoise * logRandom_.Normal());
  writer.Begin("$VWVHW");
  truth.Note(VHWHeading, writer.Angle(vessel.heading, 1));
  writer.Letter('T');
  writer.Angle(FullCircle(vessel.heading - scenario_.magneticVariation), 1);
  writer.Letter('M');
  truth.Note(VHWSpeed, writer.Number(speed, 2));
  writer.Letter('N');
  writer.Number(speed * 1.852, 2);
  writer.Letter('K');
  writer.End();
}

void Instruments::WriteDBT(SentenceWriter& writer, const VesselState& vessel,
                           SimulationTruth& truth) {
  const double depth = vessel.depth * (1.0 + kDepthNoise * sounderRandom_.Normal());
  writer.Begin("$SDDBT");
  if (sounderRandom_.Uniform() < kLostEchoes) {
    writer.Empty().Letter('f').Empty().Letter('M').Empty().Letter('F');
  } else {
    const double feet = depth / kMetresPerFoot;
    writer.Number(feet, 1);
    writer.Letter('f');
    truth.Note(DBTDepth, writer.Number(depth, 2));
    writer.Letter('M');
    writer.Number(feet / kFeetPerFathom, 1);
    writer.Letter('F');
  }
  writer.End();
}

void Instruments::AcquireTargets(const VesselState& vessel, const Traffic& traffic,
                                 double seconds) {
  for (Track& track : tracks_) {
    if (track.target >= 0) continue;
    double nearest = kAcquireRange;
    for (int target = 0; target < traffic.ShipCount(); ++target) {
      const double range = RangeInMiles(vessel.place, traffic.Motion(target, seconds).place);
      const bool followed = std::any_of(tracks_.begin(), tracks_.end(),
                                        [&](const Track& other) { return other.target == target; });
      if (range >= nearest || followed) continue;
      nearest = range;
      track = {target, true};
    }
    if (track.target < 0) return;
  }
}

void Instruments::WriteTTM(SentenceWriter& writer, const VesselState& vessel,
                           const Traffic& traffic, double seconds, const UtcMoment& moment) {
  AcquireTargets(vessel, traffic, seconds);
  const auto own = SineCosineOfDegrees(vessel.course);
  for (std::size_t number = 0; number < tracks_.size(); ++number) {
    Track& track = tracks_[number];
    if (track.target < 0) continue;
    const TargetMotion motion = traffic.Motion(track.target, seconds);
    const double range = RangeInMiles(vessel.place, motion.place);
    const double east = (motion.place.east - vessel.place.east) / kMetresPerNauticalMile;
    const double north = (motion.place.north - vessel.place.north) / kMetresPerNauticalMile;
    const auto theirs = SineCosineOfDegrees(motion.course);
    const double closingEast = motion.speed * theirs.sine - vessel.speed * own.sine;
    const double closingNorth = motion.speed * theirs.cosine - vessel.speed * own.cosine;
    const double squaredSpeed = closingEast * closingEast + closingNorth * closingNorth;
    const double hours =
        squaredSpeed > 1e-6 ? -(east * closingEast + north * closingNorth) / squaredSpeed : 0.0;
    const double passEast = east + closingEast * hours;
    const double passNorth = north + closingNorth * hours;
    const bool lost = range > kLoseRange;

    writer.Begin("$RATTM");
    writer.Integer(static_cast<std::int64_t>(number) + 1, 2);
    writer.Number(std::max(0.0, range + kRangeNoise * radarRandom_.Normal()), 2);
    writer.Angle(FullCircle(DirectionDegrees(east, north) + kBearingNoise * radarRandom_.Normal()),
                 1, 3);
    writer.Letter('T');
    writer.Number(motion.speed, 1);
    writer.Angle(motion.course, 1, 3);
    writer.Letter('T');
    writer.Number(std::sqrt(passEast * passEast + passNorth * passNorth), 2);
    writer.Number(std::clamp(hours * 60.0, -999.0, 999.0), 1);
    writer.Letter('N');
    writer.Text("");
    writer.Letter(lost ? 'L' : track.isNew ? 'Q' : 'T');
    writer.Text("");
    writer.TimeOfDay(moment);
    writer.Letter('A');
    writer.End();
    track.isNew = false;
    if (lost) track.target = -1;
  }
}

}  // namespace fathomline::simulator
