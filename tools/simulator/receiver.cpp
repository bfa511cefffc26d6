#include "simulator/receiver.h"

#include <algorithm>
#include <cmath>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

// Part of the variance of the position that changes slowly, and how slowly.
constexpr double kDriftShare = 0.7;
constexpr double kDriftSeconds = 45.0;
constexpr double kVelocityNoise = 0.04;  // knots, in each direction
constexpr double kCorrectionInterval = 5.0;
constexpr double kCorrectionLatency = 1.2;
constexpr std::array kStations{120, 121, 731};
constexpr double kUseElevation = 10.0;
constexpr double kTrackElevation = 4.0;
// The satellites move by less than their sentences can tell in this time.
constexpr std::int64_t kSkySeconds = 5;
constexpr std::size_t kGSAEntries = 12;

CorrelatedNoise Drift(Random& random) {
  return {random, kDriftSeconds};
}

}  // namespace

GNSSReceiver::GNSSReceiver(const Scenario& scenario, std::uint64_t seed, std::int64_t startSecond)
    : scenario_(scenario),
      startSecond_(startSecond),
      sky_(scenario.origin),
      positionRandom_(seed, RandomStream::PositionNoise),
      qualityRandom_(seed, RandomStream::FixQuality),
      velocityRandom_(seed, RandomStream::Velocity),
      signalRandom_(seed, RandomStream::SignalStrength),
      drift_{Drift(positionRandom_), Drift(positionRandom_), Drift(positionRandom_)} {
  BeginPhase(0.0);
}

void GNSSReceiver::BeginPhase(double seconds) {
  const bool first = phase_.end == 0.0;
  const auto& weights = scenario_.qualityWeights;
  double total = 0.0;
  for (const double weight : weights) total += weight;
  std::size_t chosen;
  do {
    double rest = qualityRandom_.Uniform(0.0, total);
    chosen = 0;
    while (chosen + 1 < weights.size() && rest >= weights[chosen]) rest -= weights[chosen++];
  } while (first ? chosen == 0 : chosen == phase_.quality);
  const double duration = kFixQualities[chosen].meanSeconds * qualityRandom_.Uniform(0.5, 1.5);
  const bool growing = qualityRandom_.Uniform() < 0.5;
  phase_.quality = chosen;
  phase_.start = seconds;
  phase_.end = seconds + duration;
  phase_.correctionsEnd = growing ? phase_.end - std::min(25.0, duration / 3.0) : phase_.end;
  phase_.station = kStations[static_cast<std::size_t>(qualityRandom_.Index(kStations.size()))];
  phase_.emptyFields = qualityRandom_.Uniform() < 0.5;
}

double GNSSReceiver::CorrectionAge(double seconds) const {
  const double until = std::min(seconds, phase_.correctionsEnd) - phase_.start;
  const double received = std::floor(until / kCorrectionInterval) * kCorrectionInterval;
  return kCorrectionLatency + seconds - (phase_.start + received);
}

const ReceiverFix& GNSSReceiver::Measure(SimulatedTime time, const VesselState& vessel) {
  const double seconds = ToSeconds(time);
  while (seconds >= phase_.end) BeginPhase(phase_.end);
  WatchSky(time);

  const double step = ToSeconds(time - lastTime_);
  lastTime_ = time;
  fix_.quality = &kFixQualities[phase_.quality];
  fix_.satellites = static_cast<int>(usedViews_.size());
  fix_.dilution = dilution_;
  fix_.truth = {};
  fix_.truth.seconds = seconds;
  fix_.truth.position = vessel.position;
  fix_.truth.height = vessel.antennaHeight;
  fix_.truth.quality = fix_.quality->indicator;
  if (fix_.Differential()) {
    fix_.truth.age = CorrectionAge(seconds);
    fix_.truth.station = phase_.station;
  }
  Position(vessel, step);
  return fix_;
}

void GNSSReceiver::Position(const VesselState& vessel, double step) {
  std::array<double, 3> noise{};
  for (std::size_t i = 0; i < noise.size(); ++i) {
    noise[i] = std::sqrt(kDriftShare) * drift_[i].Next(positionRandom_, step) +
               std::sqrt(1.0 - kDriftShare) * positionRandom_.Normal();
  }
  const auto [sine, cosine] = SineCosineOfDegrees(vessel.course);
  const double east = vessel.speed * sine + kVelocityNoise * velocityRandom_.Normal();
  const double north = vessel.speed * cosine + kVelocityNoise * velocityRandom_.Normal();
  if (!fix_.Usable()) {
    // Some outages leave the last position standing, as some receivers do.
    fix_.hasPosition = fix_.hasPosition && !phase_.emptyFields;
    return;
  }
  fix_.hasPosition = true;
  fix_.truth.eastNoise = fix_.quality->horizontal * noise[0];
  fix_.truth.northNoise = fix_.quality->horizontal * noise[1];
  fix_.truth.upNoise = fix_.quality->vertical * noise[2];
  const DegreeLengths lengths = DegreeLengthsAt(vessel.position.latitude);
  fix_.position.latitude = vessel.position.latitude + fix_.truth.northNoise / lengths.latitude;
  fix_.position.longitude = vessel.position.longitude + fix_.truth.eastNoise / lengths.longitude;
  fix_.altitude = vessel.antennaHeight + fix_.truth.upNoise;
  fix_.speed = std::sqrt(east * east + north * north);
  fix_.course = FullCircle(DirectionDegrees(east, north));
}

void GNSSReceiver::WatchSky(SimulatedTime time) {
  const std::int64_t second = startSecond_ + time / kOneSecond;
  const bool lost = kFixQualities[phase_.quality].indicator == 0;
  if (second == signalSecond_ && lost == signalsLost_) return;
  signalSecond_ = second;
  signalsLost_ = lost;
  const bool moved = second / kSkySeconds != skyInterval_;
  if (moved) {
    skyInterval_ = second / kSkySeconds;
    sky_.Update(static_cast<double>(skyInterval_ * kSkySeconds));
  }
  usedViews_.clear();
  for (std::size_t c = 0; c < kConstellationCount; ++c) {
    satellites_[c].clear();
    std::size_t used = 0;
    for (const VisibleSatellite& view : sky_.Visible(c)) {
      // Strong overhead and weak near the horizon, with the fading that reflections bring.
      const double fading =
          1.8 * SineCosineOfTurns(static_cast<double>(second) / 611.0 + view.id * 0.37).sine;
      double snr = 29.0 + 20.0 * std::sqrt(view.up) + fading + 0.8 * signalRandom_.Normal();
      if (lost) snr -= 33.0;
      TrackedSatellite satellite{view, 0, false};
      if (view.elevation >= kTrackElevation && snr >= 12.0) {
        satellite.snr = static_cast<int>(std::lround(std::min(snr, 99.0)));
      }
      satellite.used =
          satellite.snr >= 25 && view.elevation >= kUseElevation && used < kGSAEntries && !lost;
      if (satellite.used) {
        ++used;
        usedViews_.push_back(view);
      }
      satellites_[c].push_back(satellite);
    }
  }
  dilution_ = DilutionOf(usedViews_);
}

}  // namespace fathomline::simulator
