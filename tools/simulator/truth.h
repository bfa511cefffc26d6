// What a simulated recording was made from, so that figures got from it can be judged.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "simulator/geography.h"
#include "simulator/scenario.h"

namespace fathomline::simulator {

// Mean, sample standard deviation and extremes of the numbers given to it.
class RunningFigure {
 public:
  void Add(double value);

  std::int64_t Count() const { return count_; }
  double Mean() const { return mean_; }
  double Sdev() const {
    return count_ > 1 ? std::sqrt(squares_ / static_cast<double>(count_ - 1)) : 0.0;
  }
  double Min() const { return min_; }
  double Max() const { return max_; }

 private:
  std::int64_t count_ = 0;
  double mean_ = 0.0;
  double squares_ = 0.0;
  double min_ = 0.0;
  double max_ = 0.0;
};

// What is told about each sentence type, over all its sentences: the numbers as they were written,
// after rounding. Position figures take usable fixes only. An error is what was written less the
// truth; those of position are metres on the WGS 84 ellipsoid, by its radii of curvature.
enum class TruthFigure {
  GGALatitude,
  GGALongitude,
  GGANorthError,
  GGAEastError,
  GGAAltitude,
  GGAHeightError,
  GGASatellites,
  GGAHDOP,
  GGAAge,
  GNSLatitude,
  GNSLongitude,
  GNSNorthError,
  GNSEastError,
  GNSAltitude,
  GNSHeightError,
  GLLLatitude,
  GLLLongitude,
  GLLNorthError,
  GLLEastError,
  RMCLatitude,
  RMCLongitude,
  RMCNorthError,
  RMCEastError,
  RMCSOG,
  RMCCOG,
  VTGSOG,
  VTGCOG,
  GSAPDOP,
  GSAHDOP,
  GSAVDOP,
  GSTRMS,
  GSTSdLatitude,
  GSTSdLongitude,
  GSTSdAltitude,
  HDTHeading,
  HDTHeadingError,
  ROTRate,
  ATTHeading,
  ATTHeadingError,
  ATTPitch,
  ATTPitchError,
  ATTRoll,
  ATTRollError,
  VHWHeading,
  VHWSpeed,
  DBTDepth,
};

inline constexpr auto kTruthFigureNames = std::to_array<std::string_view>({
    "GGA.latitude",     "GGA.longitude",    "GGA.north_error",   "GGA.east_error",
    "GGA.altitude",     "GGA.height_error", "GGA.satellites",    "GGA.hdop",
    "GGA.age",          "GNS.latitude",     "GNS.longitude",     "GNS.north_error",
    "GNS.east_error",   "GNS.altitude",     "GNS.height_error",  "GLL.latitude",
    "GLL.longitude",    "GLL.north_error",  "GLL.east_error",    "RMC.latitude",
    "RMC.longitude",    "RMC.north_error",  "RMC.east_error",    "RMC.sog",
    "RMC.cog",          "VTG.sog",          "VTG.cog",           "GSA.pdop",
    "GSA.hdop",         "GSA.vdop",         "GST.rms",           "GST.sd_latitude",
    "GST.sd_longitude", "GST.sd_altitude",  "HDT.heading",       "HDT.heading_error",
    "ROT.rate",         "ATT.heading",      "ATT.heading_error", "ATT.pitch",
    "ATT.pitch_error",  "ATT.roll",         "ATT.roll_error",    "VHW.heading",
    "VHW.speed",        "DBT.depth",
});
static_assert(kTruthFigureNames.size() == static_cast<std::size_t>(TruthFigure::DBTDepth) + 1);

// One fix of the receiver.
struct FixTruth {
  double seconds = 0.0;     // since the start
  GeoPoint position;        // true
  double height = 0.0;      // true, metres above the geoid
  double northNoise = 0.0;  // metres added to the truth ...
  double eastNoise = 0.0;
  double upNoise = 0.0;
  int quality = 0;   // GGA quality indicator; 0 is no fix, and then there is no noise
  double age = 0.0;  // seconds, of differential corrections
  int station = 0;
};

// The attitude and place of a vessel that lies still, or those at the start of one that moves.
struct ReferenceTruth {
  GeoPoint position;
  double height = 0.0;   // metres above the geoid
  double heading = 0.0;  // degrees
  double pitch = 0.0;
  double roll = 0.0;
};

struct SimulationTruth {
  bool moored = false;
  ReferenceTruth reference;
  std::int64_t fixes = 0;
  std::int64_t usableFixes = 0;
  std::array<std::int64_t, kSentenceKinds.size()> sentences{};
  std::array<RunningFigure, kTruthFigureNames.size()> figures;

  void Note(TruthFigure figure, double value) {
    figures[static_cast<std::size_t>(figure)].Add(value);
  }
  const RunningFigure& operator[](TruthFigure figure) const {
    return figures[static_cast<std::size_t>(figure)];
  }
};

}  // namespace fathomline::simulator
