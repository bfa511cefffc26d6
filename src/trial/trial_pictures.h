// The columns of samples that the pictures of a trial are drawn from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "trial/moment.h"

namespace fathomline::trial {

constexpr bool IsFix(int quality) {
  return (quality >= 1 && quality <= 5) || quality == 9;
}

// Places about the reference, in order of time, one for each time. What is not there is NaN.
struct PositionTrack {
  std::vector<std::int64_t> times;  // as Moment::milliseconds
  std::vector<double> north, east, up;
  std::vector<std::uint8_t> quality;  // 0 to 9; only those that are IsFix stand in the figures
};

// Deviations of one name from its reference, in order of time.
struct AngleTrack {
  std::string name;
  std::vector<std::int64_t> times;
  std::vector<double> deviations;
};

// A satellite as a whole GSV group lists it, to whole degrees.
struct SatelliteSample {
  static constexpr std::int8_t kNoElevation = -128;
  static constexpr std::int16_t kNoAzimuth = -1;

  std::uint32_t epoch = 0;
  float cn0 = 0.0F;                      // 0: not tracked
  std::int16_t azimuth = kNoAzimuth;     // else 0 to 360
  std::int8_t elevation = kNoElevation;  // else -90 to 90
  bool inUse = false;
};

// In order of arrival. Looks into the samples that the figures were made of, which must outlive it.
struct SatelliteTrack {
  std::string constellation;
  std::optional<std::string> signal;
  std::int64_t number = 0;
  const std::vector<SatelliteSample>* samples = nullptr;
  const std::vector<std::int64_t>* epochTimes = nullptr;
  std::int64_t offset = 0;

  // As Moment::milliseconds.
  std::int64_t TimeOf(const SatelliteSample& sample) const {
    return (*epochTimes)[sample.epoch] + offset;
  }
};

// The spans between gaps in which a name was heard.
struct NameSpans {
  struct Span {
    std::int64_t from, to;
  };
  std::string name;
  std::vector<Span> spans;
};

struct SystemPictures {
  PositionTrack positions;  // of the chosen stream
  std::vector<AngleTrack> headings, pitches, rolls;
  std::vector<SatelliteTrack> satellites;
  std::vector<NameSpans> availability;
};

}  // namespace fathomline::trial
